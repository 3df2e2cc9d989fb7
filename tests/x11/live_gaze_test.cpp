// The real program steered by the eyes: the stand-in tracker reports a gaze
// point, the virtual cursor goes there, the dwell ring grows, and after
// gazeDwell the field runs or the arrow switches the wheel.
#include <gtest/gtest.h>

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/keysym.h>

#include <chrono>
#include <filesystem>
#include <set>
#include <thread>

#include "gaze/stand_in_tracker.h"
#include "screen_picture.h"
#include "x_session.h"

namespace zirvel_test {
namespace {

using namespace std::chrono_literals;
using zirvel::gaze_test::StandInTracker;
using zirvel::gaze_test::StandInTrackerLibrary;

constexpr char kWheelTitle[] = "Zirvel — koło";
// The wheel (588 × 460) centred on 1920 × 1080 lies at (666, 310).
constexpr double kWheelLeft = 666;
constexpr double kWheelTop = 310;
// Four fields each: the first is the upper right quarter.
constexpr char kTwoWheels[] = R"({"wheels": [
  {"name": "Pierwsze", "actions": [{"name": "A", "key": "a"}, {"name": "B", "key": "b"}, {"name": "C", "key": "c"},
                                   {"name": "D", "key": "d"}]},
  {"name": "Drugie", "actions": [{"name": "E", "key": "e"}, {"name": "F", "key": "f"}, {"name": "G", "key": "g"},
                                 {"name": "H", "key": "h"}]}]})";
// The wheel window's points the tests look at.
constexpr double kFirstFieldX = 380, kFirstFieldY = 150;
constexpr double kRightArrowX = 556, kRightArrowY = 230;

// The tracker's line for a point of the wheel window.
std::string LookAt(double x, double y) {
    return "look " + std::to_string((kWheelLeft + x) / 1920.0) + " " + std::to_string((kWheelTop + y) / 1080.0);
}

std::string GazeConfig() {
    return R"({"toggleKey": "F8", "gazeEnabled": true, "gazeDwell": 1200, "sendDelay": 50, "keyHold": 20,
               "voiceEnabled": false, "gazeDllPath": ")" +
           StandInTrackerLibrary("full").string() + "\"}";
}

class LiveGazeTest : public ::testing::Test {
protected:
    LiveGazeTest()
        : server_(1920, 1080),
          user_(server_.Name()),
          application_(server_.Name(), 0, 0, 1920, 1080),
          program_(server_.Name(), GazeConfig(), kTwoWheels),
          tracker_(program_.Directory() / "tracker.txt") {
        program_.AddEnvironment(tracker_.Variable());
    }

    void SetUp() override {
        ASSERT_TRUE(server_.Running());
        application_.Focus();
        user_.MoveMouseTo(700, 500);
        tracker_.Script({"device tobii-ttp://stand-in", "look invalid"});
        ASSERT_TRUE(program_.Start());
        ASSERT_TRUE(WaitUntil([this] { return tracker_.Count("subscribe") == 1; }, 5000ms)) << "the tracker was not opened";
    }

    // Shows the wheel and waits until it is painted: what the tests compare
    // with is the wheel as drawn, not the screen before its first paint.
    void ShowWheel() {
        const XConnection::Geometry wheel{static_cast<int>(kWheelLeft), static_cast<int>(kWheelTop), 588, 460};
        const std::uint64_t before = user_.ScreenChecksum(wheel);
        user_.PressKey(XK_F8);
        ASSERT_TRUE(WaitUntil([this] { return user_.IsMapped(user_.FindWindow(kWheelTitle)); }, 3000ms));
        ASSERT_TRUE(WaitUntil([&] { return user_.ScreenChecksum(wheel) != before; }, 3000ms)) << "the wheel is not painted";
    }

    bool KeyArrives(KeySym symbol, std::size_t count) {
        if (!application_.WaitForEvents(KeyPress, count, 5000ms)) return false;
        return application_.Events(KeyPress).back().symbol == symbol;
    }

    PrivateXServer server_;
    XConnection user_;
    TestApplication application_;
    ProgramUnderTest program_;
    StandInTracker tracker_;
};

TEST_F(LiveGazeTest, ADwellOnAFieldRunsIt) {
    ShowWheel();
    const XConnection::Geometry wheel = user_.WindowGeometry(user_.FindWindow(kWheelTitle));
    ASSERT_EQ(wheel.x, 666);
    ASSERT_EQ(wheel.y, 310);
    const std::uint64_t before = user_.ScreenChecksum(wheel);
    tracker_.Script({"device tobii-ttp://stand-in", LookAt(kFirstFieldX, kFirstFieldY)});
    // The cursor follows, then the ring grows: the picture keeps changing
    // until the dwell ends and the wheel hides.
    const auto looked = std::chrono::steady_clock::now();
    // At once, although the program started moments ago: the mouse counts
    // as still since long before.
    // (Within 0.6 s: a mouse still for less than 0.7 s would hold the gaze off.)
    EXPECT_TRUE(WaitUntil([&] { return user_.ScreenChecksum(wheel) != before; }, 600ms, 1ms))
        << "the cursor did not follow at once";
    std::set<std::uint64_t> pictures;
    bool saved = false;  // one picture for the README
    while (user_.IsMapped(user_.FindWindow(kWheelTitle)) && std::chrono::steady_clock::now() - looked < 3s) {
        pictures.insert(user_.ScreenChecksum(wheel));
        if (!saved && pictures.size() == 6) {  // on the field, the ring part grown
            SaveScreen(user_.Get(), std::filesystem::path(ZIRVEL_SCREENSHOTS) / "gaze-dwell.png");
            saved = true;
        }
        std::this_thread::sleep_for(30ms);
    }
    // The cursor at rest, on the field, and the ring growing in steps: a busy
    // machine draws (and a look sees) fewer of them, never fewer than four.
    EXPECT_GE(pictures.size(), 4u) << "the cursor and the ring did not move";
    EXPECT_TRUE(KeyArrives(XK_a, 1)) << "the dwell ran nothing";
    EXPECT_FALSE(user_.IsMapped(user_.FindWindow(kWheelTitle)));
}

TEST_F(LiveGazeTest, ADwellOnTheRightArrowSwitchesTheWheel) {
    ShowWheel();
    // The arrow lights up while the cursor is on it; the centre shows the
    // wheel's number and name, so it changes only when the wheel does.
    const XConnection::Geometry arrow{666 + 534, 310 + 186, 44, 88};
    const XConnection::Geometry centre{666 + 294 - 35, 310 + 230 - 20, 70, 40};
    const std::uint64_t arrowAtRest = user_.ScreenChecksum(arrow);
    tracker_.Script({"device tobii-ttp://stand-in", LookAt(kRightArrowX, kRightArrowY)});
    ASSERT_TRUE(WaitUntil([&] { return user_.ScreenChecksum(arrow) != arrowAtRest; }, 2000ms, 1ms))
        << "the cursor did not reach the arrow";
    std::this_thread::sleep_for(100ms);  // settled on it, far from the centre
    const std::uint64_t firstWheel = user_.ScreenChecksum(centre);
    ASSERT_TRUE(WaitUntil([&] { return user_.ScreenChecksum(centre) != firstWheel; }, 2000ms, 1ms))
        << "the wheel did not switch";
    // Away from the arrow before a second dwell could switch again.
    tracker_.Script({"device tobii-ttp://stand-in", LookAt(kFirstFieldX, kFirstFieldY)});
    EXPECT_TRUE(KeyArrives(XK_e, 1)) << "the second wheel's first field did not run";
}

TEST_F(LiveGazeTest, WithTheGazeLostTheCursorStopsFollowing) {
    ShowWheel();
    const XConnection::Geometry wheel = user_.WindowGeometry(user_.FindWindow(kWheelTitle));
    tracker_.Script({"device tobii-ttp://stand-in", "look invalid"});
    std::this_thread::sleep_for(300ms);
    const std::uint64_t still = user_.ScreenChecksum(wheel);
    std::this_thread::sleep_for(1000ms);
    EXPECT_EQ(user_.ScreenChecksum(wheel), still) << "the wheel moved without a gaze";
    EXPECT_TRUE(application_.Events(KeyPress).empty());
}

}  // namespace
}  // namespace zirvel_test
