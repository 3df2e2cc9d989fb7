// ReadWheelsFile on any wheels file (default.json, voice.json or a user's
// file), read from a real file.
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "config/wheels_file.h"
#include "fuzz_check.h"
#include "scratch_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::u16string path = zirvel::fuzz::WriteScratchFile("default.json", data, size);
    std::vector<zirvel::Wheel> wheels;
    std::u16string messages;
    const bool ok = zirvel::ReadWheelsFile(path, wheels, messages);
    // Every problem appends a line, and only problems do.
    ZIRVEL_FUZZ_CHECK(ok == messages.empty());

    // What was read can be written back and describes its steps.
    const std::string written = zirvel::WriteWheelsFile(wheels);
    ZIRVEL_FUZZ_CHECK(!written.empty());
    for (const zirvel::Wheel& wheel : wheels) {
        ZIRVEL_FUZZ_CHECK(!wheel.functions.empty() && wheel.functions.size() <= zirvel::kMaxFunctionsPerWheel);
        for (const zirvel::WheelFunction& function : wheel.functions) {
            for (const zirvel::Step& step : function.steps) zirvel::StepDisplayText(step);
        }
    }
    return 0;
}
