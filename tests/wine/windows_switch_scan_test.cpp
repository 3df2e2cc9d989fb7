// Switch access to zirvel-engine.exe under Wine: one switch (the hot key,
// the highlight moving by itself) and two (the hot key and a step key that
// RegisterHotKey holds while scanning), down to a field's key and a click
// through the grid at the stand-in application.
#include "windows_program_fixture.h"

namespace zirvel_test {
namespace {

using namespace std::chrono_literals;

constexpr char kOneSwitch[] = R"({"toggleKey": "x", "sendDelay": 150, "keyHold": 40,
  "scanEnabled": true, "scanInterval": 1000, "scanLoops": 3})";
constexpr char kTwoSwitches[] = R"({"toggleKey": "x", "sendDelay": 150, "keyHold": 40,
  "scanEnabled": true, "scanMode": "step", "scanStepKey": "F9"})";

// The key lines after `skip` other than the switches' own releases: a
// registered hot key takes its key's press, and Windows hands the release
// to the window with the focus, which types nothing.
std::vector<std::string> KeysBesideTheSwitches(const WineSession& session, std::size_t skip) {
    std::vector<std::string> keys;
    for (const std::string& line : session.Lines("key ", skip)) {
        const bool switchRelease = line.rfind("key up vk=58 ", 0) == 0 || line.rfind("key up vk=78 ", 0) == 0;
        if (!switchRelease) keys.push_back(line);
    }
    return keys;
}

class WindowsOneSwitchTest : public WindowsProgramTest {
protected:
    WindowsOneSwitchTest() : WindowsProgramTest(kOneSwitch) {}
};

class WindowsTwoSwitchTest : public WindowsProgramTest {
protected:
    WindowsTwoSwitchTest() : WindowsProgramTest(kTwoSwitches) {}

    // One press of a switch, handled by the engine before the next.
    void Press(KeySym key) {
        session_.User().PressKey(key);
        ASSERT_TRUE(session_.EngineCaughtUp()) << "the engine did not answer";
    }
};

TEST_F(WindowsOneSwitchTest, AfterAMoveOfTheHighlightTheHotKeyRunsTheSecondField) {
    ShowWheel();
    const std::uint64_t first = SettledChecksum(session_.User(), kWheelArea);
    ASSERT_TRUE(WaitUntil([&] { return session_.User().ScreenChecksum(kWheelArea) != first; }, 3000ms))
        << "the highlight did not move";
    const std::size_t before = session_.Log().size();
    session_.User().PressKey(XK_x);
    ASSERT_TRUE(session_.WaitForLine("wheel hidden", 5000ms, before)) << session_.LogText();
    std::vector<std::string> keys;
    WaitUntil([&] { return (keys = KeysBesideTheSwitches(session_, before)).size() >= 2; }, 5000ms);
    ASSERT_EQ(keys.size(), 2u) << session_.LogText();
    EXPECT_EQ(keys[0].substr(0, 15), "key down vk=26 ");  // the Up arrow of the right-hand field
}

TEST_F(WindowsTwoSwitchTest, TheStepKeyMovesTheHighlightAndTheHotKeyTakesIt) {
    ShowWheel();
    const std::size_t before = session_.Log().size();
    Press(XK_F9);
    Press(XK_F9);
    Press(XK_F9);
    session_.User().PressKey(XK_x);
    ASSERT_TRUE(session_.WaitForLine("wheel hidden", 5000ms, before)) << session_.LogText();
    // "Shift up": a release of Shift only; neither switch typed anything.
    std::vector<std::string> keys;
    WaitUntil([&] { return !(keys = KeysBesideTheSwitches(session_, before)).empty(); }, 5000ms);
    ASSERT_EQ(keys.size(), 1u) << session_.LogText();
    EXPECT_EQ(keys[0].substr(0, 13), "key up vk=10 ");
}

TEST_F(WindowsTwoSwitchTest, TheGridRowThenCellDownToAClickAtItsCentre) {
    ShowWheel();
    for (int step = 0; step < 4; ++step) Press(XK_F9);  // "siatka"
    Press(XK_x);
    ASSERT_TRUE(WaitUntil([this] { return session_.User().Pointer() == std::make_pair(640, 512); }, 3000ms));
    Press(XK_F9);  // the second row
    Press(XK_x);
    Press(XK_F9);
    Press(XK_F9);  // cell 7
    Press(XK_x);
    ASSERT_TRUE(WaitUntil([this] { return session_.User().Pointer() == std::make_pair(800, 384); }, 3000ms));
    Press(XK_F9);
    Press(XK_F9);  // "kliknij", after the two rows of the 2 x 2 grid
    Press(XK_x);
    const auto down = session_.WaitForLine("button left down", 5000ms);
    ASSERT_TRUE(down) << session_.LogText();
    EXPECT_EQ(down->substr(0, 25), "button left down 800 384 ");
    EXPECT_TRUE(KeysBesideTheSwitches(session_, 0).empty()) << session_.LogText();
}

}  // namespace
}  // namespace zirvel_test
