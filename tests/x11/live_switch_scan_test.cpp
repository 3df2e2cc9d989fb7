// Switch access to the real program on a private X server: one switch (the
// hot key) with the highlight moving by itself, and two switches (the hot
// key and a step key), down to a field's key and a click through the grid
// arriving at a stand-in application. No mouse and no voice.
#include <gtest/gtest.h>

#include <X11/keysym.h>

#include "program_windows.h"
#include "screen_picture.h"
#include "x_session.h"

namespace zirvel_test {
namespace {

using namespace std::chrono_literals;

// Up: "a", right: "b", down: "c", left: "d".
constexpr char kWheels[] = R"({"actions": [
  {"name": "A", "key": "a"}, {"name": "B", "key": "b"}, {"name": "C", "key": "c"}, {"name": "D", "key": "d"}]})";
constexpr char kOneSwitch[] = R"({"toggleKey": "f8", "sendDelay": 100, "keyHold": 30, "gazeEnabled": false,
  "voiceEnabled": false, "scanEnabled": true, "scanInterval": 1000, "scanLoops": 3})";
constexpr char kTwoSwitches[] = R"({"toggleKey": "f8", "sendDelay": 100, "keyHold": 30, "gazeEnabled": false,
  "voiceEnabled": false, "scanEnabled": true, "scanMode": "step", "scanStepKey": "f9"})";
constexpr char kWheelTitle[] = "Zirvel — koło";

class LiveSwitchScanTest : public ::testing::Test {
protected:
    explicit LiveSwitchScanTest(const char* config)
        : server_(1920, 1080), user_(server_.Name()), application_(server_.Name(), 0, 0, 1920, 1080),
          program_(server_.Name(), config, kWheels) {}

    void SetUp() override {
        ASSERT_TRUE(server_.Running());
        ASSERT_NE(user_.Get(), nullptr);
        application_.Focus();
        user_.MoveMouseTo(700, 500);
        ASSERT_TRUE(program_.Start()) << "the program did not start";
    }

    XConnection::Geometry Wheel() { return user_.WindowGeometry(user_.FindWindow(kWheelTitle)); }

    // The hot key shows the wheel; its first picture, settled, is returned.
    std::uint64_t ShowWheel() {
        user_.PressKey(XK_F8);
        EXPECT_TRUE(WaitUntil([this] { return user_.IsMapped(user_.FindWindow(kWheelTitle)); }, 3000ms));
        EXPECT_TRUE(WaitUntil([this] { return !user_.PointerVisible(); }, 3000ms)) << "the wheel took no pointer";
        return SettledChecksum(user_, user_.OnScreen(Wheel()));
    }

    // Waits for the wheel's picture to change from `before` (the highlight
    // moved) and returns the new one.
    std::uint64_t NextPicture(std::uint64_t before, std::chrono::milliseconds timeout) {
        std::uint64_t now = before;
        EXPECT_TRUE(WaitUntil([&] { return (now = user_.ScreenChecksum(user_.OnScreen(Wheel()))) != before; },
                              timeout))
            << "the highlight did not move";
        return now;
    }

    std::vector<KeySym> KeysTyped() {
        std::vector<KeySym> keys;
        for (const auto& event : application_.Events(KeyPress)) keys.push_back(event.symbol);
        return keys;
    }

    PrivateXServer server_;
    XConnection user_;
    TestApplication application_;
    ProgramUnderTest program_;
};

class OneSwitchTest : public LiveSwitchScanTest {
protected:
    OneSwitchTest() : LiveSwitchScanTest(kOneSwitch) {}
};

class TwoSwitchTest : public LiveSwitchScanTest {
protected:
    TwoSwitchTest() : LiveSwitchScanTest(kTwoSwitches) {}

    // The step key is grabbed only while a scan runs: presses before that
    // would go to the application.
    void WaitForTheStepKey() {
        const unsigned keycode = XKeysymToKeycode(user_.Get(), XK_F9);
        ASSERT_TRUE(WaitUntil([&] { return user_.KeyGrabbedByAnother(keycode); }, 3000ms)) << "no step key";
    }
};

TEST_F(OneSwitchTest, AfterTwoMovesOfTheHighlightTheHotKeyRunsTheThirdField) {
    std::uint64_t picture = ShowWheel();
    for (int move = 0; move < 2; ++move) picture = NextPicture(picture, 3000ms);
    user_.PressKey(XK_F8);
    ASSERT_TRUE(application_.WaitForEvents(KeyRelease, 1, 3000ms));
    EXPECT_EQ(KeysTyped(), std::vector<KeySym>{XK_c});
    EXPECT_TRUE(WaitUntil([this] { return !user_.IsMapped(user_.FindWindow(kWheelTitle)); }, 3000ms));
    EXPECT_EQ(application_.FocusedWindow(), application_.Id());
}

TEST_F(OneSwitchTest, TheHotKeyIsNeverTypedIntoTheApplication) {
    ShowWheel();
    user_.PressKey(XK_F8);  // the first field
    ASSERT_TRUE(application_.WaitForEvents(KeyRelease, 1, 3000ms));
    EXPECT_EQ(KeysTyped(), std::vector<KeySym>{XK_a});
}

TEST_F(TwoSwitchTest, TheStepKeyMovesTheHighlightAndTheHotKeyTakesIt) {
    std::uint64_t picture = ShowWheel();
    WaitForTheStepKey();
    user_.PressKey(XK_F9);
    picture = NextPicture(picture, 3000ms);
    user_.PressKey(XK_F9);
    picture = NextPicture(picture, 3000ms);
    user_.PressKey(XK_F9);
    NextPicture(picture, 3000ms);
    user_.PressKey(XK_F8);
    ASSERT_TRUE(application_.WaitForEvents(KeyRelease, 1, 3000ms));
    // Neither switch reached the application: only the fourth field's key.
    EXPECT_EQ(KeysTyped(), std::vector<KeySym>{XK_d});
}

TEST_F(TwoSwitchTest, TheGridRowThenCellDownToAClickAtItsCentre) {
    std::uint64_t picture = ShowWheel();
    WaitForTheStepKey();
    for (int step = 0; step < 4; ++step) user_.PressKey(XK_F9);  // "siatka"
    picture = NextPicture(picture, 3000ms);
    SettledChecksum(user_, user_.OnScreen(Wheel()));
    SaveScreen(user_.Get(), std::filesystem::path(ZIRVEL_SCREENSHOTS) / "scan-wheel.png");  // for the README
    user_.PressKey(XK_F8);
    ASSERT_TRUE(WaitUntil([this] { return user_.Pointer() == std::make_pair(960, 540); }, 3000ms))
        << "no grid";
    WaitForTheStepKey();
    user_.PressKey(XK_F9);  // the second row
    const XConnection::Geometry screen{0, 0, 1920, 1080};
    SettledChecksum(user_, screen);
    SaveScreen(user_.Get(), std::filesystem::path(ZIRVEL_SCREENSHOTS) / "scan-grid.png");
    user_.PressKey(XK_F8);
    user_.PressKey(XK_F9);
    user_.PressKey(XK_F9);  // its third cell: 7
    user_.PressKey(XK_F8);
    ASSERT_TRUE(WaitUntil([this] { return user_.Pointer() == std::make_pair(1200, 405); }, 3000ms))
        << "the grid did not narrow to cell 7";
    user_.PressKey(XK_F9);
    user_.PressKey(XK_F9);  // two rows of the 2 x 2 grid, then "kliknij"
    user_.PressKey(XK_F8);
    ASSERT_TRUE(application_.WaitForEvents(ButtonPress, 1, 3000ms));
    const auto click = application_.Events(ButtonPress).at(0);
    EXPECT_EQ(click.button, 1u);
    EXPECT_EQ(click.x, 1200);
    EXPECT_EQ(click.y, 405);
    EXPECT_TRUE(KeysTyped().empty());
}

}  // namespace
}  // namespace zirvel_test
