// What real Windows does to a program that hooks the mouse and clips the
// cursor, as far as Wine shows it: clicks that other programs inject, the
// clip a game had before the wheel, a pin something released, a GUI
// thread that stalls while the wheel shows, and games that read raw input.
#include "windows_program_fixture.h"

namespace zirvel_test {
namespace {

using namespace std::chrono_literals;

// The pin: the cursor's clip while the wheel shows.
const std::string kPinned = "clip " + std::to_string(kCursorX) + " " + std::to_string(kCursorY) + " " +
                            std::to_string(kCursorX + 1) + " " + std::to_string(kCursorY + 1);

class WindowsInputTest : public WindowsProgramTest {
protected:
    WindowsInputTest() = default;
    explicit WindowsInputTest(const std::string& config) : WindowsProgramTest(config) {}

    // The cursor's clip as the application reads it now.
    std::string Clip() {
        const std::size_t before = session_.Log().size();
        session_.Command("report-clip");
        const auto clip = session_.WaitForLine("clip ", 5000ms, before);
        return clip ? *clip : "no answer";
    }

    // Field 0, the top one: types "a".
    void PointAtTheTopField() { MoveBy(0, -100); }

    void ExpectTheTopFieldRan(std::size_t after) {
        ASSERT_TRUE(session_.WaitForLine("wheel hidden", 5000ms, after)) << session_.LogText();
        const std::vector<std::string> keys = WaitForKeys(2, after);
        ASSERT_EQ(keys.size(), 2u) << session_.LogText();
        EXPECT_EQ(keys[0].substr(0, 15), "key down vk=41 ");
        EXPECT_TRUE(session_.Lines("button ", after).empty()) << "the click reached the application";
    }
};

TEST_F(WindowsInputTest, AClickAnotherProgramInjectsSelectsLikeAPhysicalOne) {
    ShowWheel();
    PointAtTheTopField();
    const std::size_t before = session_.Log().size();
    session_.Command("inject-click");
    const auto injected = session_.WaitForLine("injected ", 5000ms, before);
    ASSERT_TRUE(injected);
    ASSERT_EQ(*injected, "injected 2");
    ExpectTheTopFieldRan(before);
}

TEST_F(WindowsInputTest, TheClipAGameHadBeforeTheWheelIsPutBack) {
    session_.Command("clip 100 100 600 500");
    ASSERT_EQ(Clip(), "clip 100 100 600 500");
    ShowWheel();
    EXPECT_EQ(Clip(), kPinned);
    const std::size_t shown = session_.Log().size();
    session_.User().PressKey(XK_x);
    ASSERT_TRUE(session_.WaitForLine("wheel hidden", 5000ms, shown));
    ASSERT_TRUE(session_.EngineCaughtUp());
    EXPECT_EQ(Clip(), "clip 100 100 600 500");
}

TEST_F(WindowsInputTest, APinThatSomethingReleasedIsPutBackWhileTheWheelShows) {
    ShowWheel();
    ASSERT_EQ(Clip(), kPinned);
    session_.Command("clip none");
    EXPECT_TRUE(WaitUntil([&] { return Clip() == kPinned; }, 3000ms)) << Clip();
}

TEST_F(WindowsInputTest, ClicksWhileTheEnginesWindowsAreBusyAreSwallowedAndSelectAfterwards) {
    ShowWheel();
    PointAtTheTopField();
    const std::size_t before = session_.Log().size();
    session_.Command("stall-engine 2000");
    ASSERT_TRUE(session_.WaitForLine("engine stalled", 5000ms, before)) << session_.LogText();
    session_.User().ClickButton(1);
    ASSERT_TRUE(session_.WaitForLine("engine resumed", 5000ms, before));
    ExpectTheTopFieldRan(before);
}

// A game that registers for raw mouse input gets it while the wheel shows.
class RawInputGameTest : public WindowsInputTest {
protected:
    RawInputGameTest() { options_ = {"--raw-input"}; }
    explicit RawInputGameTest(const std::string& config) : WindowsInputTest(config) { options_ = {"--raw-input"}; }

    // The raw reports the application got while the user moved the mouse
    // with the wheel shown; the motion starts once the application logged
    // `settled` after the wheel showed.
    std::size_t RawReportsWhileTheWheelShows(const std::string& settled) {
        EXPECT_TRUE(session_.WaitForLine("raw input registered", 5000ms)) << session_.LogText();
        const std::size_t before = session_.Log().size();
        ShowWheel();
        EXPECT_TRUE(session_.WaitForLine(settled, 5000ms, before)) << session_.LogText();
        const std::size_t shown = session_.Log().size();
        session_.User().MoveMouseBy(30, 0);
        session_.User().MoveMouseBy(0, 30);
        // The application's commands run when its queue is empty: the motion came before.
        session_.Command("sync-main 1");
        EXPECT_TRUE(session_.WaitForLine("main answered 1", 5000ms, shown));
        return session_.Lines("raw ", shown).size();
    }
};

TEST_F(RawInputGameTest, AGameInTheForegroundReadsTheMotionThatSteersTheWheel) {
    ASSERT_TRUE(session_.WaitForLine("raw input registered", 5000ms)) << session_.LogText();
    ShowWheel();
    const std::size_t shown = session_.Log().size();
    MoveBy(30, 0);  // the wheel's cursor moved
    session_.Command("sync-main 1");
    ASSERT_TRUE(session_.WaitForLine("main answered 1", 5000ms, shown));
    EXPECT_FALSE(session_.Lines("raw ", shown).empty()) << session_.LogText();
}

class RawInputGameTakeFocusTest : public RawInputGameTest {
protected:
    RawInputGameTakeFocusTest()
        : RawInputGameTest(R"({"toggleKey": "x", "sendDelay": 150, "keyHold": 40, "takeFocus": true})") {}
};

TEST_F(RawInputGameTakeFocusTest, WithTakeFocusTheGameLosesTheForegroundAndItsRawInput) {
    // The foreground moves to the wheel by a message the game reads in its
    // own time: the motion is played once the game knows it lost the focus.
    EXPECT_EQ(RawReportsWhileTheWheelShows("focus out"), 0u) << session_.LogText();
}

}  // namespace
}  // namespace zirvel_test
