// The engine's own voice thread, on the null platform with the stand-in
// recogniser and a scripted microphone: what is heard reaches the GUI
// thread, and start, reload and stop treat the thread as they should.
#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <thread>

#include "config/json_escape.h"
#include "engine/engine_voice_thread.h"
#include "engine_fixture.h"
#include "voice/scripted_microphone.h"
#include "voice/stand_in_model.h"
#include "voice/voice_thread.h"

namespace {

using namespace std::chrono_literals;
using zirvel::voice_test::StandInLibrary;
using zirvel::voice_test::StandInModel;
using zirvel::voice_test::WaitFor;

class EngineVoiceThreadTest : public zirvel_test::EngineTest {
protected:
    EngineVoiceThreadTest() : EngineTest(zirvel::NullPlatform::Clock::Real) {}

    void SetUp() override {
        EngineTest::SetUp();
        microphone_ = std::make_shared<zirvel::voice_test::ScriptedMicrophone>();
        zirvel::InstallEngineVoiceThread([microphone = microphone_] {
            // The thread owns what it is given; this one forwards to the test's.
            return std::make_unique<Forwarding>(microphone);
        });
    }

    void TearDown() override {
        OverlayEngineStop();
        EngineTest::TearDown();
    }

    static std::string Quoted(const std::u16string& text) { return '"' + zirvel::EscapeJsonString(text) + '"'; }

    // config.json with voice on, the stand-in library and this model folder.
    std::string VoiceConfig(const StandInModel& model, bool enabled = true) const {
        return "{\"voiceEnabled\": " + std::string(enabled ? "true" : "false") + ", \"voiceDllPath\": " +
               Quoted(StandInLibrary("full")) +
               ", \"voiceModel\": " + Quoted(model.Folder().u16string()) + "}";
    }

    // Runs the GUI thread's loop until `done` holds (at most 5 s).
    template <class Condition>
    bool PumpUntil(Condition done) {
        return WaitFor([&] {
            platform_.DispatchPosted();
            return done();
        });
    }

    bool VoiceStatusBecomes(std::int32_t code) {
        const bool became = WaitFor([&] { return engine().voiceStatus.load() == code; });
        EXPECT_TRUE(became) << "the voice status stayed " << engine().voiceStatus.load();
        return became;
    }

    class Forwarding final : public zirvel::AudioCapture {
    public:
        explicit Forwarding(std::shared_ptr<zirvel::voice_test::ScriptedMicrophone> target) : target_(std::move(target)) {}
        bool Open() override { return target_->Open(); }
        void Wait(std::uint32_t milliseconds) override { target_->Wait(milliseconds); }
        void TakeBlocks(const BlockConsumer& consume) override { target_->TakeBlocks(consume); }
        void Close() override { target_->Close(); }

    private:
        std::shared_ptr<zirvel::voice_test::ScriptedMicrophone> target_;
    };

    std::shared_ptr<zirvel::voice_test::ScriptedMicrophone> microphone_;
};

TEST_F(EngineVoiceThreadTest, WhatIsHeardShowsTheGridAndMovesThePointer) {
    const StandInModel model(directory_, "model", {"every 2", "result pokaż siatkę", "result siedem"});
    Start(VoiceConfig(model));
    ASSERT_TRUE(VoiceStatusBecomes(zirvel::kVoiceListening));
    EXPECT_EQ(std::u16string(OverlayVoiceStatus()), u"aktywny");
    // Loading, then listening: the repaint is asked for just after the status is set.
    EXPECT_TRUE(PumpUntil([this] { return platform_.StatusRepaints() >= 2; }));

    // Showing the grid puts the pointer in its middle; "siedem" then in the
    // middle of the third cell of its second row (4 x 4 on 1920 x 1080).
    ASSERT_TRUE(PumpUntil([this] { return platform_.CursorMoves().size() >= 2; }));
    EXPECT_TRUE(engine().gridVisible);
    EXPECT_EQ(platform_.CursorMoves()[0].point, (zirvel::ScreenPoint{960, 540}));
    EXPECT_EQ(platform_.CursorMoves()[1].point, (zirvel::ScreenPoint{1200, 405}));
}

TEST_F(EngineVoiceThreadTest, ReloadWithVoiceOffStopsTheThreadAndSaysSo) {
    const StandInModel model(directory_, "model", {});
    Start(VoiceConfig(model));
    ASSERT_TRUE(VoiceStatusBecomes(zirvel::kVoiceListening));

    WriteFile("config.json", VoiceConfig(model, false));
    const auto reloaded = std::chrono::steady_clock::now();
    OverlayReloadConfig();
    EXPECT_LT(std::chrono::steady_clock::now() - reloaded, 2000ms);
    EXPECT_EQ(std::u16string(OverlayVoiceStatus()), u"wyłączony (voiceEnabled = false)");
    EXPECT_EQ(model.Count("model_free"), 1);
    EXPECT_FALSE(microphone_->open);
}

TEST_F(EngineVoiceThreadTest, AChangedModelDoesNotRestartARunningThread) {
    const StandInModel model(directory_, "model", {});
    const StandInModel other(directory_, "other", {});
    Start(VoiceConfig(model));
    ASSERT_TRUE(VoiceStatusBecomes(zirvel::kVoiceListening));
    WriteFile("config.json", VoiceConfig(other));
    OverlayReloadConfig();
    std::this_thread::sleep_for(300ms);
    EXPECT_EQ(model.Count("model_new"), 1);
    EXPECT_EQ(other.Count("model_new"), 0);
}

TEST_F(EngineVoiceThreadTest, AThreadThatEndedByItselfIsNotStartedAgainWhileVoiceStaysOn) {
    const StandInModel model(directory_, "model", {});
    Start("{\"voiceEnabled\": true, \"voiceDllPath\": " + Quoted(StandInLibrary("full")) + "}");
    ASSERT_TRUE(VoiceStatusBecomes(3));
    EXPECT_EQ(std::u16string(OverlayVoiceStatus()), u"brak katalogu modelu języka");
    WriteFile("config.json", VoiceConfig(model));
    OverlayReloadConfig();
    std::this_thread::sleep_for(300ms);
    EXPECT_EQ(engine().voiceStatus, 3);
    EXPECT_EQ(model.Count("model_new"), 0);
}

TEST_F(EngineVoiceThreadTest, PhrasesTheModelCannotSayAreShownInTheStandAloneTray) {
    const StandInModel model(directory_, "model", {"reject dal"});
    WriteFile("default.json",
              R"({"wheels": [{"name": "Gra", "actions": [{"name": "Skok", "key": "a", "voice": "skok w dal"}]}]})");
    StartStandAlone(VoiceConfig(model));
    ASSERT_TRUE(PumpUntil([this] { return !platform_.TrayNotices().empty(); }));
    EXPECT_EQ(platform_.TrayNotices()[0],
              u"Zirvel — komendy głosowe|Pominięto frazy ze słowami spoza słownika modelu: „skok w dal”");
}

}  // namespace
