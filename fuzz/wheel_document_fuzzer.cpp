// The front-end's WheelDocument::Load on any wheels file, read from a real
// file, then the editor's own JSON form of every function it loaded.
#include <QString>
#include <cstddef>
#include <cstdint>
#include <string>

#include "frontend/wheel_document.h"
#include "fuzz_check.h"
#include "scratch_file.h"

namespace {

using zirvel::frontend::FunctionFromJson;
using zirvel::frontend::FunctionToJson;
using zirvel::frontend::WheelDocument;
using zirvel::frontend::WheelFunction;

// A document with content, to see that a failed load leaves it alone.
WheelDocument EarlierDocument() {
    WheelDocument document;
    document.path = QStringLiteral("/earlier/default.json");
    document.multiWheel = true;
    document.wheels.append({QStringLiteral("Koło"), {WheelFunction{QStringLiteral("f"), {}, {}, {}, 30, {}}}});
    return document;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::u16string path = zirvel::fuzz::WriteScratchFile("wheels.json", data, size);
    const QString filePath = QString::fromStdU16String(path);

    WheelDocument document = EarlierDocument();
    QString error;
    if (!document.Load(filePath, error)) {
        ZIRVEL_FUZZ_CHECK(!error.isEmpty());
        const WheelDocument earlier = EarlierDocument();
        ZIRVEL_FUZZ_CHECK(document.path == earlier.path && document.multiWheel == earlier.multiWheel &&
                          document.wheels == earlier.wheels);
        return 0;
    }
    ZIRVEL_FUZZ_CHECK(document.path == filePath && !document.wheels.isEmpty());

    // What the editor writes, it reads back as it was: a function written
    // once (which settles what the form cannot hold, such as a colour's
    // alpha) survives a second write and read unchanged.
    for (const zirvel::frontend::Wheel& wheel : document.wheels) {
        for (const WheelFunction& function : wheel.functions) {
            const WheelFunction settled = FunctionFromJson(FunctionToJson(function));
            ZIRVEL_FUZZ_CHECK(FunctionFromJson(FunctionToJson(settled)) == settled);
            for (const zirvel::frontend::Step& step : function.steps) StepSummary(step);
        }
    }
    return 0;
}
