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
    // something; the parts never hold more than the line did.
    if (request.valid) {
        ZIRVEL_FUZZ_CHECK(!request.command.isEmpty() && !request.argument.isEmpty());
        ZIRVEL_FUZZ_CHECK(!request.command.contains(QLatin1Char(' ')));
        ZIRVEL_FUZZ_CHECK(request.command.size() + 1 + request.argument.size() <= line.size());
    }
    return 0;
}
