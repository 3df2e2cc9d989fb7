// zirvel-engine.exe steered by the eyes under Wine: the stand-in tracker
// DLL reports a gaze point, the cursor goes there, a dwell runs the field,
// and a dwell on the arrow switches the wheel.
#include <gtest/gtest.h>

#include <X11/keysym.h>

#include <filesystem>
#include <set>
#include <thread>

#include "gaze/stand_in_tracker.h"
#include "program_windows.h"
#include "wine_session.h"

namespace zirvel_test {
namespace {

using namespace std::chrono_literals;
using zirvel::gaze_test::StandInTracker;

// The wheel (588 × 460) centred on Xvfb's 1280 × 1024 lies at (346, 282).
constexpr double kWheelLeft = 346;
constexpr double kWheelTop = 282;
constexpr double kFirstFieldX = 380, kFirstFieldY = 150;
constexpr double kRightArrowX = 556, kRightArrowY = 230;
constexpr char kTwoWheels[] = R"({"wheels": [
  {"name": "Pierwsze", "actions": [{"name": "A", "key": "a"}, {"name": "B", "key": "b"}, {"name": "C", "key": "c"},
                                   {"name": "D", "key": "d"}]},
  {"name": "Drugie", "actions": [{"name": "E", "key": "e"}, {"name": "F", "key": "f"}, {"name": "G", "key": "g"},
                                 {"name": "H", "key": "h"}]}]})";

std::string LookAt(double x, double y) {
    return "look " + std::to_string((kWheelLeft + x) / 1280.0) + " " + std::to_string((kWheelTop + y) / 1024.0);
}

std::string GazeConfig() {
    const std::filesystem::path library =
        std::filesystem::path(ZIRVEL_WINDOWS_BUILD) / "tests/gaze/stand_in_tracker/full/tobii_stream_engine.dll";
    return R"({"toggleKey": "x", "gazeEnabled": true, "gazeDwell": 1200, "sendDelay": 50, "keyHold": 20,
               "voiceEnabled": false, "gazeDllPath": ")" +
           WineSession::WindowsPathInJson(library) + "\"}";
}

class WindowsGazeTest : public ::testing::Test {
protected:
    WindowsGazeTest() : session_(GazeConfig(), kTwoWheels), tracker_(session_.Directory() / "tracker.txt") {
        session_.AddEnvironment("ZIRVEL_STAND_IN_TRACKER=" + WineSession::WindowsPath(session_.Directory() / "tracker.txt"));
    }

    void SetUp() override {
        ASSERT_TRUE(session_.Ready());
        tracker_.Script({"device tobii-ttp://stand-in", "look invalid"});
        ASSERT_TRUE(session_.StartApplication());
        session_.User().MoveMouseTo(200, 150);
        ASSERT_TRUE(session_.StartEngine());
        ASSERT_TRUE(WaitUntil([this] { return tracker_.Count("subscribe") == 1; }, 10000ms)) << "the tracker was not opened";
        // The wheel as drawn is what the tests compare with.
        const XConnection::Geometry wheel{static_cast<int>(kWheelLeft), static_cast<int>(kWheelTop), 588, 460};
        const std::uint64_t before = session_.User().ScreenChecksum(wheel);
        session_.User().PressKey(XK_x);
        ASSERT_TRUE(session_.WaitForLine("wheel shown", 5000ms)) << "the wheel did not show";
        ASSERT_TRUE(WaitUntil([&] { return session_.User().ScreenChecksum(wheel) != before; }, 5000ms))
            << "the wheel is not painted";
    }

    // The first key the application received, by its virtual key.
    bool KeyArrives(int vk) {
        const auto key = session_.WaitForLine("key down", 8000ms);
        return key && Field(*key, "vk") == vk;
    }

    WineSession session_;
    StandInTracker tracker_;
};

TEST_F(WindowsGazeTest, ADwellOnAFieldRunsIt) {
    tracker_.Script({"device tobii-ttp://stand-in", LookAt(kFirstFieldX, kFirstFieldY)});
    EXPECT_TRUE(session_.WaitForLine("wheel hidden", 8000ms)) << "the dwell did not close the wheel";
    EXPECT_TRUE(KeyArrives(0x41)) << "the dwell ran nothing";
}

TEST_F(WindowsGazeTest, ADwellOnTheRightArrowSwitchesTheWheel) {
    XConnection& user = session_.User();
    const XConnection::Geometry arrow{346 + 534, 282 + 186, 44, 88};
    const XConnection::Geometry centre{346 + 294 - 35, 282 + 230 - 20, 70, 40};
    // The wheel as drawn, not the screen before its first paint.
    const std::uint64_t arrowAtRest = SettledChecksum(user, arrow);
    tracker_.Script({"device tobii-ttp://stand-in", LookAt(kRightArrowX, kRightArrowY)});
    const bool reached = WaitUntil([&] { return user.ScreenChecksum(arrow) != arrowAtRest; }, 5000ms, 5ms);
    if (!reached) {
        std::filesystem::create_directories(ZIRVEL_SCREENSHOTS);
        session_.Screenshot(std::filesystem::path(ZIRVEL_SCREENSHOTS) / "gaze-arrow-not-reached.png");
    }
    ASSERT_TRUE(reached) << "the cursor did not reach the arrow; the log:\n" << session_.LogText();
    std::this_thread::sleep_for(100ms);
    const std::uint64_t firstWheel = user.ScreenChecksum(centre);
    ASSERT_TRUE(WaitUntil([&] { return user.ScreenChecksum(centre) != firstWheel; }, 3000ms, 1ms))
        << "the wheel did not switch";
    tracker_.Script({"device tobii-ttp://stand-in", LookAt(kFirstFieldX, kFirstFieldY)});
    EXPECT_TRUE(KeyArrives(0x45)) << "the second wheel's first field did not run";
}

}  // namespace
}  // namespace zirvel_test
