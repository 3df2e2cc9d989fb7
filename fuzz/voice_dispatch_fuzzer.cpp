// DispatchRecognizedText on any recognised text, against the full phrase
// table (built-in and number commands, two wheels' phrases, global voice
// functions) built with the voice tests' own helpers. The first byte sets
// voiceGlobal and wheel visibility; the rest is the text.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "../tests/voice/voice_test_support.h"
#include "fuzz_check.h"
#include "voice/voice_dispatch.h"
#include "voice/voice_phrases.h"

namespace {

using zirvel::voice_test::GlobalFunctions;
using zirvel::voice_test::WheelWithPhrases;

const zirvel::VoicePhraseTable& Table() {
    static zirvel::VoicePhraseTable table;
    static const bool built = [] {
        zirvel::RebuildVoicePhrases(table,
                                    {WheelWithPhrases({u"alfa", u"otwórz pocztę", u"", u"Skok W Bok"}),
                                     WheelWithPhrases({u"beta", u"kliknij"})},
                                    GlobalFunctions({u"OTWÓRZ Pocztę", u"gamma"}));
        return true;
    }();
    (void)built;
    return table;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    zirvel::voice_test::RecordingTarget recorder;
    recorder.voiceGlobal = (data[0] & 1) != 0;
    recorder.wheelVisible = (data[0] & 2) != 0;
    const std::string_view text(reinterpret_cast<const char*>(data + 1), size - 1);

    const bool posted = zirvel::DispatchRecognizedText(Table(), text, recorder.Target());
    // True exactly when one message went out, and it names something real.
    ZIRVEL_FUZZ_CHECK(recorder.posted.size() == (posted ? 1u : 0u));
    if (posted) {
        const zirvel::voice_test::Posted& message = recorder.posted[0];
        switch (message.kind) {
            case zirvel::EngineMessageKind::VoiceCommand:
                ZIRVEL_FUZZ_CHECK(message.first > 0 && message.first < zirvel::kRightClickNumberCommandBase + 100);
                break;
            case zirvel::EngineMessageKind::RunWheelFunction:
                ZIRVEL_FUZZ_CHECK(recorder.voiceGlobal || recorder.wheelVisible);
                ZIRVEL_FUZZ_CHECK(message.first >= 0 && message.first < 2 && message.second >= 0);
                break;
            case zirvel::EngineMessageKind::RunGlobalFunction:
                ZIRVEL_FUZZ_CHECK(message.first >= 0 && message.first < 2);
                break;
            default:
                ZIRVEL_FUZZ_CHECK(!"an unexpected message kind");
        }
    }
    return 0;
}
