#include "app/control_request.h"

#include <QStringDecoder>

namespace zirvel::app {

ControlRequest ParseControlRequest(QByteArray line) {
    if (line.endsWith('\n')) line.chop(1);
    ControlRequest parsed;
    // Not UTF-8: no path or phrase was meant, and none is guessed at.
    // Stateless, so that a sequence cut off at the line's end is an error
    // too; a stateful decoder keeps those bytes back for a next call that
    // never comes, and "say abc\xDB" would pass as "say abc".
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString request = utf8(line);
    if (utf8.hasError()) return parsed;
    const qsizetype space = request.indexOf(QLatin1Char(' '));
    if (space <= 0) return parsed;
    parsed.command = request.left(space);
    parsed.argument = request.mid(space + 1);
    parsed.valid = !parsed.argument.isEmpty();
    return parsed;
}

}  // namespace zirvel::app
