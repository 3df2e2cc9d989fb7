// The engine's own gaze thread, on the null platform with the stand-in
// tracker: its gaze points steer the wheel and a dwell selects; start and
// reload treat the thread as they should.
#include <gtest/gtest.h>

#include <chrono>
#include <memory>

#include "config/json_escape.h"
#include "engine/engine_gaze_thread.h"
#include "engine_fixture.h"
#include "gaze/gaze_thread.h"
#include "gaze/stand_in_tracker.h"
#include "support/wait_for.h"

namespace {

using namespace std::chrono_literals;
using zirvel::gaze_test::StandInTracker;
using zirvel::gaze_test::StandInTrackerLibrary;
using zirvel::test_support::WaitFor;

constexpr char kFourFields[] = R"({"actions": [
  {"name": "up", "key": "a"}, {"name": "right", "key": "b"}, {"name": "down", "key": "c"}, {"name": "left", "key": "d"}]})";
// The top field of the wheel centred on 1920 x 1080: window (294, 80) at
// screen (960, 390).
const std::vector<std::string> kLookingAtTheTopField{"device tobii-ttp://stand-in", "look 0.5 0.3611"};

class EngineGazeThreadTest : public zirvel_test::EngineTest {
protected:
    EngineGazeThreadTest() : EngineTest(zirvel::NullPlatform::Clock::Real) {}

    void SetUp() override {
        EngineTest::SetUp();
        tracker_ = std::make_unique<StandInTracker>(directory_ / "tracker.txt");
        tracker_->UseInThisProcess();
        zirvel::InstallEngineGazeThread();
    }

    void TearDown() override {
        OverlayEngineStop();
        EngineTest::TearDown();
    }

    std::string GazeConfig(bool enabled, const std::string& more = "") const {
        return std::string("{\"gazeEnabled\": ") + (enabled ? "true" : "false") + ", \"voiceEnabled\": false, " +
               "\"gazeDllPath\": \"" + zirvel::EscapeJsonString(StandInTrackerLibrary("full").u16string()) + "\"" +
               more + "}";
    }

    std::unique_ptr<StandInTracker> tracker_;
};

TEST_F(EngineGazeThreadTest, TheTrackersGazeSteersTheWheelAndADwellSelects) {
    tracker_->Script(kLookingAtTheTopField);
    Start(GazeConfig(true, R"(, "gazeDwell": 300, "sendDelay": 0, "keyHold": 0)"), kFourFields);
    ASSERT_TRUE(WaitFor([this] { return engine().gazeStatus.load() == zirvel::kGazeStreaming; }));
    EXPECT_EQ(std::u16string(OverlayGazeStatus()), u"aktywny");
    // The repaint is asked for just after the status is set.
    EXPECT_TRUE(WaitFor([this] { return platform_.StatusRepaints() >= 1; }));
    platform_.Advance(800);  // the mouse has been still for long
    platform_.PressHotKey();
    ASSERT_TRUE(OverlayIsWheelVisible());
    for (int tick = 0; tick < 200 && platform_.Injected().empty(); ++tick) platform_.Advance(15);
    EXPECT_EQ(OverlayIsWheelVisible(), 0);
    ASSERT_FALSE(platform_.Injected().empty()) << "the dwell selected nothing";
    EXPECT_EQ(platform_.Injected()[0].vk, 'A');
}

TEST_F(EngineGazeThreadTest, ReloadWithGazeOffStopsTheThreadAndSaysSo) {
    tracker_->Script(kLookingAtTheTopField);
    Start(GazeConfig(true));
    ASSERT_TRUE(WaitFor([this] { return engine().gazeStatus.load() == zirvel::kGazeStreaming; }));
    WriteFile("config.json", GazeConfig(false));
    const auto reloaded = std::chrono::steady_clock::now();
    OverlayReloadConfig();
    EXPECT_LT(std::chrono::steady_clock::now() - reloaded, 1500ms);
    EXPECT_EQ(std::u16string(OverlayGazeStatus()), u"wyłączony (gazeEnabled = false)");
    EXPECT_EQ(tracker_->Count("unsubscribe"), 1);
    EXPECT_EQ(tracker_->Count("api_destroy"), 1);
}

TEST_F(EngineGazeThreadTest, WithoutATrackerTheStatusStaysNoDeviceUntilGazeIsSwitchedOffAndOn) {
    tracker_->Script({"look 0.5 0.5"});
    Start(GazeConfig(true));
    ASSERT_TRUE(WaitFor([this] { return engine().gazeStatus.load() == zirvel::kGazeNoDevice; }));
    EXPECT_EQ(std::u16string(OverlayGazeStatus()), u"nie wykryto urządzenia");
    tracker_->Script(kLookingAtTheTopField);
    OverlayReloadConfig();  // still on: the ended thread is not started again
    EXPECT_EQ(engine().gazeStatus, zirvel::kGazeNoDevice);
    WriteFile("config.json", GazeConfig(false));
    OverlayReloadConfig();
    WriteFile("config.json", GazeConfig(true));
    OverlayReloadConfig();
    ASSERT_TRUE(WaitFor([this] { return engine().gazeStatus.load() == zirvel::kGazeStreaming; }));
}

}  // namespace
