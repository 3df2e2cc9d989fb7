// ParseControlRequest on any line the control socket may receive.
#include <QByteArray>
#include <QString>
#include <cstddef>
#include <cstdint>

#include "app/control_request.h"
#include "fuzz_check.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray line(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const zirvel::app::ControlRequest request = zirvel::app::ParseControlRequest(line);
    // A valid request is "COMMAND ARGUMENT": a space-free command, then
    // something, and together exactly the line's text without its line feed
    // (bytes that are not UTF-8 are refused, never replaced).
    if (request.valid) {
        ZIRVEL_FUZZ_CHECK(!request.command.isEmpty() && !request.argument.isEmpty());
        ZIRVEL_FUZZ_CHECK(!request.command.contains(QLatin1Char(' ')));
        QByteArray text = line;
        if (text.endsWith('\n')) text.chop(1);
        ZIRVEL_FUZZ_CHECK((request.command + QLatin1Char(' ') + request.argument).toUtf8() == text);
    }
    return 0;
}
