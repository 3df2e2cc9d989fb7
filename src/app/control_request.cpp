#include "app/control_request.h"

namespace zirvel::app {

ControlRequest ParseControlRequest(QByteArray line) {
    if (line.endsWith('\n')) line.chop(1);
    const QString request = QString::fromUtf8(line);
    ControlRequest parsed;
    const qsizetype space = request.indexOf(QLatin1Char(' '));
    if (space <= 0) return parsed;
    parsed.command = request.left(space);
    parsed.argument = request.mid(space + 1);
    parsed.valid = !parsed.argument.isEmpty();
    return parsed;
}

}  // namespace zirvel::app
