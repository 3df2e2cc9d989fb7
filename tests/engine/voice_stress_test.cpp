// The voice thread dispatches recognised texts while the GUI thread reloads
// the configuration, activates wheel files and rebuilds the phrase table.
// Run under ThreadSanitizer (the linux-tsan preset) this must be clean.
#include <array>
#include <chrono>
#include <atomic>
#include <string>
#include <thread>

#include "engine/engine_voice_target.h"
#include "engine_fixture.h"
#include "voice/grammar.h"
#include "voice/voice_dispatch.h"

namespace zirvel_test {
namespace {

constexpr int kReloads = 150;
// The voice thread's texts, at most: the GUI thread must be able to keep up
// with what it posts.
constexpr int kMostTexts = 20000;

// What the recogniser might hear: commands, numbers, function phrases that
// come and go with the reloads, and words that match nothing.
constexpr std::array<const char*, 12> kHeard = {
    "pokaż koło", "alfa", "następne koło", "bravo", "schowaj koło", "pokaż siatkę",
    "siedem",     "schowaj siatkę", "poczta", "nic takiego", "", "charlie"};

class VoiceStressTest : public EngineTest {
protected:
    VoiceStressTest() : EngineTest(zirvel::NullPlatform::Clock::Real) {}

    // A voice thread that rebuilds its grammar whenever the table changes
    // and dispatches one heard text after another until stopped.
    void InstallVoiceBody() {
        zirvel::SetVoiceThreadBody([this](const std::atomic<bool>& stop) {
            zirvel::EngineState& state = zirvel::Engine();
            const zirvel::VoiceDispatchTarget target = zirvel::EngineVoiceTarget(state);
            state.voiceStatus = zirvel::kVoiceActive;
            std::uint32_t generation = state.phrases.phraseGeneration.load() + 1;
            for (std::size_t i = 0; !stop && i < kMostTexts; ++i) {
                if (state.phrases.phraseGeneration.load() != generation) {
                    generation = state.phrases.phraseGeneration.load();
                    std::u16string skipped;
                    if (zirvel::BuildGrammar(state.phrases, nullptr, nullptr, &skipped).empty()) return;
                    ++grammarsBuilt_;
                }
                zirvel::DispatchRecognizedText(state.phrases, kHeard[i % kHeard.size()], target);
                ++textsDispatched_;
                if (i % 8 == 0) std::this_thread::sleep_for(std::chrono::microseconds(100));
            }
            while (!stop) std::this_thread::sleep_for(std::chrono::milliseconds(1));
        });
    }

    void WriteConfiguration(int round) {
        const bool global = round % 2 == 0;
        WriteFile("config.json", std::string(R"({"sendDelay": 0, "keyHold": 0, "voiceGlobal": )") +
                                     (global ? "true" : "false") + "}");
        WriteFile("default.json", round % 3 == 0
                                      ? R"({"wheels": [{"name": "A", "actions": [{"name": "a", "voice": "alfa"}]},
                                                        {"name": "B", "actions": [{"name": "b", "voice": "bravo"}]}]})"
                                      : R"({"actions": [{"name": "c", "voice": "charlie"}]})");
        WriteFile("voice.json", round % 2 == 0 ? R"({"actions": [{"name": "p", "voice": "poczta"}]})"
                                               : R"({"actions": []})");
    }

    std::atomic<int> grammarsBuilt_{0};
    std::atomic<int> textsDispatched_{0};
};

TEST_F(VoiceStressTest, DispatchDuringReloadsAndRebuilds) {
    InstallVoiceBody();
    WriteConfiguration(0);
    WriteFile("activated.json", R"({"actions": [{"name": "d", "voice": "delta"}, {"name": "e", "voice": "alfa"}]})");
    ASSERT_EQ(OverlayEngineStart(), 1);

    for (int round = 1; round <= kReloads; ++round) {
        WriteConfiguration(round);
        OverlayReloadConfig();
        if (round % 5 == 0) {
            EXPECT_EQ(OverlayActivateWheelFile(PathOf("activated.json").c_str()), 1);
        }
        if (round % 7 == 0) {
            zirvel::RebuildVoicePhrases(engine().phrases, engine().configuration.wheels,
                                        engine().configuration.globalVoiceFunctions);
        }
        platform_.DispatchPosted();  // the commands the voice thread sent meanwhile
        EXPECT_GE(OverlayVoicePhraseCount(), 311);
    }
    WriteConfiguration(1);
    OverlayReloadConfig();
    // Let the voice thread see the last table before it stops (at most 10 s:
    // under ThreadSanitizer the thread is slow).
    for (int wait = 0; wait < 2000 && textsDispatched_ < 1000; ++wait) platform_.Advance(5);
    OverlayEngineStop();
    platform_.DispatchPosted();

    EXPECT_FALSE(engine().voiceThread.Running());
    EXPECT_GE(textsDispatched_.load(), 1000);
    EXPECT_GE(grammarsBuilt_.load(), 1);
    // The last configuration: one wheel with "charlie", no global phrases.
    EXPECT_EQ(OverlayVoicePhraseCount(), 312);
    EXPECT_FALSE(engine().voiceGlobal.load());
    EXPECT_GT(platform_.SurfaceAt(zirvel::Surface::Wheel).showCount, 0);  // "pokaż koło" arrived
}

}  // namespace
}  // namespace zirvel_test
