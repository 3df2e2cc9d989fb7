#include "frontend/step_key_names.h"

namespace zirvel::frontend {
namespace {

QStringList BuildNames() {
    QStringList names;
    for (char digit : QByteArrayLiteral("1234567890")) names.append(QString(QLatin1Char(digit)));
    for (char letter : QByteArrayLiteral("qwertyuiopasdfghjklzxcvbnm")) names.append(QString(QLatin1Char(letter)));
    for (int number = 1; number <= 12; ++number) names.append(QStringLiteral("F") + QString::number(number));
    const char* const others =
        "space enter esc tab backspace shift ctrl alt win capslock up down left right insert delete home end "
        "pageup pagedown printscreen volumeup volumedown volumemute playpause nexttrack prevtrack "
        "lmb rmb mmb mb4 mb5";
    names.append(QString::fromLatin1(others).split(QLatin1Char(' ')));
    return names;
}

}  // namespace

const QStringList& stepKeyNames() {
    static const QStringList names = BuildNames();
    return names;
}

}  // namespace zirvel::frontend
