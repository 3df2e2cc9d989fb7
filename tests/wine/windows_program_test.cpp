// zirvel-engine.exe and its tools under Wine, used as a person would: the
// hot key, mouse motion and clicks played with XTest while a Win32
// application has the focus, phrases and files handed over by
// zirvel-say.exe and zirvel-activate.exe. The application's log says what
// reached it.
#include <fstream>
#include <thread>

#include "windows_program_fixture.h"

namespace zirvel_test {
namespace {

using namespace std::chrono_literals;

TEST_F(WindowsProgramTest, HotKeyShowsTheWheelCentredOnTheMonitorAndHidesIt) {
    ShowWheel();
    const std::size_t shown = session_.Log().size();
    session_.User().PressKey(XK_x);
    EXPECT_TRUE(session_.WaitForLine("wheel hidden", 5000ms, shown));
    // The hot key's presses never reach the application (its releases do, as on Windows).
    EXPECT_TRUE(session_.Lines("key down").empty());
}

TEST_F(WindowsProgramTest, RawMotionPicksTheTopFieldAt46CountsAndTheClickTypesItsKey) {
    ShowWheel();
    const std::size_t shown = session_.Log().size();
    MoveBy(0, -45);  // still in the centre hole
    session_.User().ClickButton(1);
    std::this_thread::sleep_for(300ms);
    EXPECT_TRUE(session_.Lines("wheel hidden", shown).empty()) << "a click in the hole closed the wheel";
    // The real pointer did not move, and the application saw no click.
    EXPECT_EQ(session_.User().Pointer(), std::make_pair(kCursorX, kCursorY));
    EXPECT_TRUE(session_.Lines("button ").empty());

    MoveBy(0, -1);  // 46 from the centre: the top field
    session_.User().ClickButton(1);
    const auto hidden = session_.WaitForLine("wheel hidden", 5000ms, shown);
    ASSERT_TRUE(hidden);
    const std::vector<std::string> keys = WaitForKeys(2, shown);
    ASSERT_EQ(keys.size(), 2u);
    EXPECT_EQ(keys[0].substr(0, 26), "key down vk=41 scan=1E ext");
    EXPECT_EQ(Field(keys[0], "ext"), 0);
    EXPECT_EQ(keys[1].substr(0, 24), "key up vk=41 scan=1E ext");
    // After sendDelay (150 ms), held keyHold (40 ms). The keys carry the
    // times they were sent; the hide happened between "after" and "t", so
    // each bound is checked against the end that cannot make it fail falsely.
    EXPECT_GE(Field(keys[0], "t") - Field(*hidden, "after"), 150 - 2);
    EXPECT_LE(Field(keys[0], "t") - Field(*hidden, "t"), 150 + 250);
    const long long held = Field(keys[1], "t") - Field(keys[0], "t");
    EXPECT_GE(held, 40 - 10);  // the times are taken as the system queues the keys, a little after they were sent
    EXPECT_LE(held, 40 + 250);
    EXPECT_TRUE(session_.Lines("button ").empty());
    EXPECT_EQ(session_.User().Pointer(), std::make_pair(kCursorX, kCursorY));
}

TEST_F(WindowsProgramTest, ExtendedKeysCarryTheExtendedFlagBothWays) {
    ShowWheel();
    const std::size_t shown = session_.Log().size();
    MoveBy(100, 0);  // right of the centre: field 1, the Up arrow
    session_.User().ClickButton(1);
    const std::vector<std::string> keys = WaitForKeys(2, shown);
    ASSERT_EQ(keys.size(), 2u);
    EXPECT_EQ(keys[0].substr(0, 26), "key down vk=26 scan=48 ext");
    EXPECT_EQ(keys[1].substr(0, 24), "key up vk=26 scan=48 ext");
    EXPECT_EQ(Field(keys[0], "ext"), 1);
    EXPECT_EQ(Field(keys[1], "ext"), 1);
}

class ThreeWheelsTest : public WindowsProgramTest {
protected:
    ThreeWheelsTest()
        : WindowsProgramTest(kConfig, R"({"wheels": [
            {"name": "1", "actions": [{"name": "A", "key": "a"}, {"name": "-", "key": "x"}]},
            {"name": "2", "actions": [{"name": "B", "key": "b"}, {"name": "-", "key": "x"}]},
            {"name": "3", "actions": [{"name": "C", "key": "c"}, {"name": "-", "key": "x"}]}]})") {}
};

TEST_F(ThreeWheelsTest, AClickOnTheRightArrowMovesOneWheelOn) {
    ShowWheel();
    const std::size_t shown = session_.Log().size();
    MoveBy(250, 0);  // from the centre (294, 230) into the right arrow (534..578, 186..274)
    session_.User().ClickButton(1);
    std::this_thread::sleep_for(200ms);
    EXPECT_TRUE(session_.Lines("wheel hidden", shown).empty()) << "an arrow click closed the wheel";
    MoveBy(-250, -100);  // the top field of whichever wheel shows now
    session_.User().ClickButton(1);
    const std::vector<std::string> keys = WaitForKeys(1, shown);
    ASSERT_FALSE(keys.empty());
    // The hook and raw input both see the click; one switch, so wheel 2's "b".
    EXPECT_EQ(keys[0].substr(0, 14), "key down vk=42");
}

TEST_F(WindowsProgramTest, HoldAndReleaseAcrossTwoFunctions) {
    ShowWheel();
    const std::size_t first = session_.Log().size();
    MoveBy(0, 100);  // below: hold Shift
    session_.User().ClickButton(1);
    std::vector<std::string> keys = WaitForKeys(1, first);
    ASSERT_EQ(keys.size(), 1u);
    EXPECT_EQ(keys[0].substr(0, 20), "key down vk=10 scan=");
    std::this_thread::sleep_for(300ms);
    EXPECT_EQ(session_.Lines("key ", first).size(), 1u) << "Shift went up without a release step";

    ShowWheel(true);  // Shift+X is not the hot key
    MoveBy(-100, 0);  // left: release Shift
    session_.User().ClickButton(1);
    keys = WaitForKeys(2, first);
    ASSERT_EQ(keys.size(), 2u);
    EXPECT_EQ(keys[1].substr(0, 18), "key up vk=10 scan=");
}

TEST_F(WindowsProgramTest, FocusReturnsToTheApplicationAfterTheWheel) {
    ShowWheel();
    const std::size_t shown = session_.Log().size();
    MoveBy(0, -100);
    session_.User().ClickButton(1);
    ASSERT_TRUE(session_.WaitForLine("key down", 5000ms, shown));
    const std::vector<std::string> focus = session_.Lines("focus ");
    ASSERT_FALSE(focus.empty());
    EXPECT_EQ(focus.back(), "focus in");
}

class TakeFocusTest : public WindowsProgramTest {
protected:
    TakeFocusTest()
        : WindowsProgramTest(R"({"toggleKey": "x", "sendDelay": 150, "keyHold": 40, "takeFocus": true})") {}
};

TEST_F(TakeFocusTest, TheWheelTakesTheForeground) {
    const std::size_t before = session_.Log().size();
    ShowWheel();
    EXPECT_TRUE(session_.WaitForLine("focus out", 3000ms, before)) << "the wheel did not take the foreground";
    // The foreground left the application: to the wheel, or, when Wine drops
    // the wheel's foreground at once (it does now and then without a window
    // manager), straight to nobody.
    const auto foreground = session_.WaitForLine("foreground ", 1000ms, before);
    ASSERT_TRUE(foreground);
    EXPECT_TRUE(*foreground == "foreground RadialOverlayWheel" || *foreground == "foreground none") << *foreground;
}

class SwappedButtonsTest : public WindowsProgramTest {
protected:
    SwappedButtonsTest()
        : WindowsProgramTest(kConfig, R"({"wheels": [{"name": "M", "actions": [{"name": "L", "key": "lpm"}]}]})") {
        options_ = {"--swap-buttons"};
    }
};

TEST_F(SwappedButtonsTest, ALeftClickStepClicksThePrimaryButton) {
    ShowWheel();
    const std::size_t shown = session_.Log().size();
    MoveBy(0, -100);
    session_.User().ClickButton(1);
    // The engine sends the physical right button, at the real cursor.
    // Windows turns it into the primary button's messages; Wine delivers the
    // physical button as it is, which shows what was sent.
    const auto down = session_.WaitForLine("button ", 5000ms, shown);
    ASSERT_TRUE(down);
    EXPECT_EQ(down->substr(0, 26), "button right down 200 150 ");
}

class OpenStepTest : public WindowsProgramTest {
protected:
    OpenStepTest()
        : WindowsProgramTest(kConfig, R"({"wheels": [{"name": "O", "actions": [
            {"name": "Notatnik", "steps": [{"open": "notepad.exe"}]}]}]})") {}
};

TEST_F(OpenStepTest, AnOpenStepStartsTheProgramThroughTheShell) {
    ShowWheel();
    MoveBy(0, -100);
    session_.User().ClickButton(1);
    EXPECT_TRUE(WaitUntil([this] { return session_.User().FindWindow("Untitled - Notepad") != 0; }, 20000ms))
        << "notepad did not open";
}

TEST_F(WindowsProgramTest, TheGridPutsTheCursorAtTheCentresAndClicksThere) {
    EXPECT_EQ(session_.RunTool("zirvel-say.exe", "pokaż siatkę"), 0);
    EXPECT_TRUE(WaitUntil([this] { return session_.User().Pointer() == std::make_pair(640, 512); }, 3000ms));
    EXPECT_EQ(session_.RunTool("zirvel-say.exe", "siedem"), 0);
    EXPECT_TRUE(WaitUntil([this] { return session_.User().Pointer() == std::make_pair(800, 384); }, 3000ms));
    EXPECT_EQ(session_.RunTool("zirvel-say.exe", "kliknij"), 0);
    const auto down = session_.WaitForLine("button left down", 5000ms);
    ASSERT_TRUE(down);
    EXPECT_EQ(down->substr(0, 25), "button left down 800 384 ");
    EXPECT_TRUE(session_.WaitForLine("button left up 800 384 ", 5000ms));
    EXPECT_EQ(session_.RunTool("zirvel-say.exe", "to nie jest komenda"), 1);
}

// The grid window keeps its picture while hidden; shown again, the same
// grid looks exactly as it did.
TEST_F(WindowsProgramTest, TheGridShownAgainLooksAsItDid) {
    XConnection& user = session_.User();
    const XConnection::Geometry screen{0, 0, 1280, 1024};
    const std::uint64_t before = user.ScreenChecksum(screen);
    EXPECT_EQ(session_.RunTool("zirvel-say.exe", "pokaż siatkę"), 0);
    ASSERT_TRUE(WaitUntil([&] { return user.Pointer() == std::make_pair(640, 512); }, 3000ms));
    // The grid as painted, not the screen before its first paint.
    ASSERT_TRUE(WaitUntil([&] { return user.ScreenChecksum(screen) != before; }, 3000ms)) << "the grid did not show";
    const std::uint64_t grid = SettledChecksum(user, screen);
    EXPECT_EQ(session_.RunTool("zirvel-say.exe", "schowaj siatkę"), 0);
    EXPECT_TRUE(WaitUntil([&] { return user.ScreenChecksum(screen) != grid; }, 3000ms)) << "the grid did not hide";
    EXPECT_EQ(session_.RunTool("zirvel-say.exe", "pokaż siatkę"), 0);
    EXPECT_TRUE(WaitUntil([&] { return user.ScreenChecksum(screen) == grid; }, 3000ms))
        << "the grid shown again differs from the first";
}

TEST_F(WindowsProgramTest, ActivatingAFileAnswersWhetherAWheelWasTaken) {
    std::ofstream(session_.Directory() / "games.json")
        << R"({"wheels": [{"name": "G", "actions": [{"name": "Z", "key": "z"}]}]})";
    std::ofstream(session_.Directory() / "empty.json") << R"({"wheels": [{"name": "E", "actions": []}]})";
    EXPECT_EQ(session_.RunTool("zirvel-activate.exe", WineSession::WindowsPath(session_.Directory() / "empty.json")), 1);
    EXPECT_EQ(session_.RunTool("zirvel-activate.exe", WineSession::WindowsPath(session_.Directory() / "games.json")), 0);
    // The activated wheel has one field, "z", all round the ring.
    ShowWheel();
    const std::size_t shown = session_.Log().size();
    MoveBy(0, 100);
    session_.User().ClickButton(1);
    const auto key = session_.WaitForLine("key down", 5000ms, shown);
    ASSERT_TRUE(key);
    EXPECT_EQ(Field(*key, "vk"), 0x5A);
}

TEST_F(WindowsProgramTest, ASecondStartSaysZirvelRunsAndEndsWithZero) {
    auto second = session_.StartEngineProcess();
    const auto box = session_.WaitForLine("box ", 30000ms);
    ASSERT_TRUE(box);
    EXPECT_EQ(*box, "box Zirvel|Zirvel już działa — sprawdź ikonę w zasobniku systemowym.");
    EXPECT_EQ(second->WaitForExit(10000ms), 0);
    // The first one still answers.
    EXPECT_EQ(session_.RunTool("zirvel-say.exe", "pokaż siatkę"), 0);
}

// An engine run as administrator holds the mutex where a standard user may
// not even open it: that is an engine running too, not a reason to start one.
TEST(EngineInstanceTest, AnEngineMutexThatCannotBeOpenedMeansZirvelRuns) {
    WineSession session(kConfig, kWheels);
    ASSERT_TRUE(session.Ready());
    ASSERT_TRUE(session.StartApplication({"--lock-engine-mutex"}));
    ASSERT_TRUE(session.WaitForLine("engine mutex locked", 5000ms)) << session.LogText();
    auto engine = session.StartEngineProcess();
    const auto box = session.WaitForLine("box ", 30000ms);
    ASSERT_TRUE(box) << session.LogText();
    EXPECT_EQ(*box, "box Zirvel|Zirvel już działa — sprawdź ikonę w zasobniku systemowym.");
    EXPECT_EQ(engine->WaitForExit(10000ms), 0);
    EXPECT_TRUE(session.Lines("engine up").empty()) << "a second engine started";
}

TEST_F(WindowsProgramTest, TheHelpWindowOpensFromItsCommandAndIsCaptured) {
    session_.Command("post-main 273 1001 0");  // WM_COMMAND "Pokaż okno"
    ASSERT_TRUE(session_.WaitForLine("window Zirvel shown", 5000ms));
    std::this_thread::sleep_for(500ms);  // painted
    std::filesystem::create_directories(ZIRVEL_SCREENSHOTS);
    EXPECT_TRUE(session_.Screenshot(std::filesystem::path(ZIRVEL_SCREENSHOTS) / "help-window.png"));
    session_.Command("post-main 16 0 0");  // WM_CLOSE hides it
    EXPECT_TRUE(session_.WaitForLine("window Zirvel hidden", 5000ms));
    EXPECT_EQ(session_.RunTool("zirvel-say.exe", "pokaż siatkę"), 0) << "closing the window stopped the engine";
}

TEST(WindowsToolsTest, WithoutARunningEngineTheToolsSaySoWithThree) {
    WineSession session("", "");
    ASSERT_TRUE(session.Ready());
    EXPECT_EQ(session.RunTool("zirvel-say.exe", "pokaż siatkę"), 3);
    EXPECT_EQ(session.RunTool("zirvel-activate.exe", "default.json"), 3);
}

class TakenHotKeyTest : public WindowsProgramTest {
protected:
    TakenHotKeyTest() { options_ = {"--take-hotkey", "58"}; }
};

TEST_F(TakenHotKeyTest, ATakenHotKeyGivesTheWarningAndTheEngineStillRuns) {
    ASSERT_TRUE(session_.WaitForLine("hotkey taken", 1000ms));
    const auto box = session_.WaitForLine("box ", 30000ms);
    ASSERT_TRUE(box);
    EXPECT_EQ(*box, "box Zirvel|Nie udało się zarejestrować globalnego skrótu 'x'.\\nByć może inny program już go używa.");
    EXPECT_EQ(session_.RunTool("zirvel-say.exe", "pokaż siatkę"), 0);
}

}  // namespace
}  // namespace zirvel_test
