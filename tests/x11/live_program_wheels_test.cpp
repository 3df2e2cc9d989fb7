// Wheels of their own for programs, live on a private X server: the hot
// key over each of two applications with different WM_CLASS names shows
// that application's wheel, and a click sends that wheel's key to it; the
// window lists the editor's picker reads.
#include <gtest/gtest.h>

#include <X11/Xlib.h>
#include <X11/keysym.h>

#include <unistd.h>

#include <algorithm>
#include <filesystem>

#include "platform/x11/open_windows.h"
#include "platform/x11/window_program.h"
#include "x_session.h"

namespace zirvel_test {
namespace {

using namespace std::chrono_literals;

constexpr char kConfig[] = R"({"toggleKey": "f8", "sendDelay": 0, "keyHold": 20, "gazeEnabled": false,
                               "voiceEnabled": false})";
// One field each, which fills the whole ring: a general wheel typing "a",
// the editor's typing "e" and the game's typing "g".
constexpr char kWheels[] = R"({"wheels": [
  {"name": "Ogólne", "actions": [{"name": "A", "key": "a"}]},
  {"name": "Edytor", "apps": ["edytor"], "actions": [{"name": "E", "key": "e"}]},
  {"name": "Gra", "apps": ["GRA"], "actions": [{"name": "G", "key": "g"}]}]})";

constexpr char kWheelTitle[] = "Zirvel — koło";

std::u16string U16(std::string_view text) { return {text.begin(), text.end()}; }

class ProgramWheelsTest : public ::testing::Test {
protected:
    ProgramWheelsTest()
        : user_(server_.Name()),
          editor_(server_.Name(), 0, 0, 960, 1080),
          game_(server_.Name(), 960, 0, 960, 1080),
          program_(server_.Name(), kConfig, kWheels) {}

    void SetUp() override {
        ASSERT_TRUE(server_.Running());
        ASSERT_NE(user_.Get(), nullptr);
        editor_.NameProgram("edytor", "Edytor");
        game_.NameProgram("gra", "Gra");
    }

    bool WheelShows() { return user_.IsMapped(user_.FindWindow(kWheelTitle)); }

    // Focuses `application`, shows the wheel over it and clicks the ring's
    // top: the one field of whichever wheel shows.
    void PickTheFieldOver(TestApplication& application) {
        application.Focus();
        ASSERT_TRUE(WaitUntil([&] { return application.FocusedWindow() == application.Id(); }, 2000ms));
        user_.PressKey(XK_F8);
        ASSERT_TRUE(WaitUntil([this] { return WheelShows(); }, 3000ms)) << "the wheel did not show";
        ASSERT_TRUE(WaitUntil([this] { return !user_.PointerVisible(); }, 3000ms)) << "the wheel took no pointer";
        ASSERT_TRUE(MoveWheelCursor(user_, user_.WindowGeometry(user_.FindWindow(kWheelTitle)), 0, -120, 0, -120))
            << "no redraw";
        user_.ClickButton(1);
        ASSERT_TRUE(WaitUntil([this] { return !WheelShows(); }, 2000ms));
    }

    PrivateXServer server_{1920, 1080};
    XConnection user_;
    TestApplication editor_;
    TestApplication game_;
    ProgramUnderTest program_;
};

TEST_F(ProgramWheelsTest, TheHotKeyOverEachApplicationShowsItsWheelAndTheClickSendsItsKey) {
    ASSERT_TRUE(program_.Start()) << "the program did not start";
    user_.MoveMouseTo(480, 500);
    PickTheFieldOver(editor_);
    ASSERT_TRUE(editor_.WaitForEvents(KeyRelease, 1, 3000ms));
    EXPECT_EQ(editor_.Events(KeyPress).at(0).symbol, static_cast<KeySym>(XK_e));

    user_.MoveMouseTo(1440, 500);
    PickTheFieldOver(game_);
    ASSERT_TRUE(game_.WaitForEvents(KeyRelease, 1, 3000ms));
    EXPECT_EQ(game_.Events(KeyPress).at(0).symbol, static_cast<KeySym>(XK_g));

    // Back over the editor: its wheel again, not the game's.
    user_.MoveMouseTo(480, 500);
    PickTheFieldOver(editor_);
    ASSERT_TRUE(editor_.WaitForEvents(KeyRelease, 2, 3000ms));
    EXPECT_EQ(editor_.Events(KeyPress).at(1).symbol, static_cast<KeySym>(XK_e));
    EXPECT_EQ(game_.Events(KeyPress).size(), 1u);
}

TEST_F(ProgramWheelsTest, AnApplicationWithoutAWheelOfItsOwnGetsTheGeneralOne) {
    TestApplication other(server_.Name(), 0, 0, 300, 300);
    ASSERT_TRUE(program_.Start()) << "the program did not start";
    user_.MoveMouseTo(150, 150);
    PickTheFieldOver(other);
    ASSERT_TRUE(other.WaitForEvents(KeyRelease, 1, 3000ms));
    EXPECT_EQ(other.Events(KeyPress).at(0).symbol, static_cast<KeySym>(XK_a));
}

TEST_F(ProgramWheelsTest, AWindowsProgramIsItsClassNamesAndTheExecutableOfItsProcess) {
    Display* display = XOpenDisplay(server_.Name().c_str());
    ASSERT_NE(display, nullptr);
    const std::u16string self = std::filesystem::read_symlink("/proc/self/exe").u16string();
    const zirvel::ProgramIdentity game = zirvel::x11::ReadWindowProgram(display, game_.Id());
    EXPECT_EQ(game.executable, self);
    EXPECT_EQ(game.windowClasses, (std::vector<std::u16string>{u"gra", u"Gra"}));

    // A window inside the application (the focus without a window manager)
    // is the application's.
    const Window inner = XCreateSimpleWindow(display, editor_.Id(), 0, 0, 10, 10, 0, 0, 0);
    XSync(display, False);
    const zirvel::ProgramIdentity editor = zirvel::x11::ReadWindowProgram(display, inner);
    EXPECT_EQ(editor.windowClasses, (std::vector<std::u16string>{u"edytor", u"Edytor"}));

    // Gone, or never named: nothing.
    XDestroyWindow(display, inner);
    XSync(display, False);
    EXPECT_TRUE(zirvel::x11::ReadWindowProgram(display, inner).windowClasses.empty());
    TestApplication unnamed(server_.Name(), 0, 0, 100, 100);
    const zirvel::ProgramIdentity none = zirvel::x11::ReadWindowProgram(display, unnamed.Id());
    EXPECT_TRUE(none.executable.empty());
    EXPECT_TRUE(none.windowClasses.empty());
    XCloseDisplay(display);
}

TEST_F(ProgramWheelsTest, TheOpenWindowsListHoldsTheNamedApplicationsOnly) {
    TestApplication unnamed(server_.Name(), 0, 0, 100, 100);
    const std::vector<zirvel::OpenWindow> windows = zirvel::x11::ListOpenWindows(server_.Name().c_str());
    const std::u16string self = std::filesystem::read_symlink("/proc/self/exe").u16string();
    ASSERT_EQ(windows.size(), 2u);
    for (const zirvel::OpenWindow& window : windows) {
        EXPECT_EQ(window.program.executable, self);
        EXPECT_EQ(window.title, U16("Zirvel test application"));
    }
    std::vector<std::u16string> classes;
    for (const zirvel::OpenWindow& window : windows) classes.push_back(window.program.windowClasses.at(0));
    std::sort(classes.begin(), classes.end());
    EXPECT_EQ(classes, (std::vector<std::u16string>{u"edytor", u"gra"}));
}

}  // namespace
}  // namespace zirvel_test
