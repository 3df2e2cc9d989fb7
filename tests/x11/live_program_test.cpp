// The real program on a private X server, used as a person would: the hot
// key, mouse motion and clicks played with XTest, a stand-in application
// receiving what the wheel sends, voice phrases through the control socket.
#include <gtest/gtest.h>

#include <X11/Xatom.h>
#include <X11/extensions/Xrandr.h>
#include <X11/keysym.h>

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <utility>

#include "private_wayland_compositor.h"
#include "program_windows.h"
#include "framebuffer.h"
#include "x_session.h"

namespace zirvel_test {
namespace {

using namespace std::chrono_literals;

constexpr char kConfig[] = R"({"toggleKey": "f8", "sendDelay": 150, "keyHold": 40, "gazeEnabled": false,
                               "voiceEnabled": false})";
// Up: "a"; right: "b"; down: hold Shift; left: release Shift.
constexpr char kWheels[] = R"({"actions": [
  {"name": "A", "key": "a"},
  {"name": "B", "key": "b"},
  {"name": "Shift down", "steps": [{"key": "shift", "action": "hold"}]},
  {"name": "Shift up", "steps": [{"key": "shift", "action": "release"}]}]})";

constexpr char kWheelTitle[] = "Zirvel — koło";

// The wheel window: 588 x 460, its centre 294, 230 from its corner.
constexpr int kWheelWidth = 588;
constexpr int kWheelHeight = 460;

class LiveProgramTest : public ::testing::Test {
protected:
    explicit LiveProgramTest(int width = 1920, int height = 1080, const std::filesystem::path& framebuffer = {})
        : server_(width, height, framebuffer),
          user_(server_.Name()),
          application_(server_.Name(), 0, 0, width, height),
          program_(server_.Name(), kConfig, kWheels) {}

    void SetUp() override {
        ASSERT_TRUE(server_.Running());
        ASSERT_NE(user_.Get(), nullptr);
        application_.Focus();
        user_.MoveMouseTo(700, 500);
    }

    void StartProgram() { ASSERT_TRUE(program_.Start()) << "the program did not start"; }

    bool WheelShows() { return user_.IsMapped(user_.FindWindow(kWheelTitle)); }

    void ShowWheel() {
        user_.PressKey(XK_F8);
        WaitForTheWheelToTakeThePointer();
    }

    // The wheel's window may map before the program has taken the pointer
    // (two connections): motion played earlier would be lost. The pointer
    // grab hides the pointer, and it comes after raw motion is selected.
    void WaitForTheWheelToTakeThePointer() {
        ASSERT_TRUE(WaitUntil([this] { return WheelShows(); }, 3000ms)) << "the wheel did not show";
        ASSERT_TRUE(WaitUntil([this] { return !user_.PointerVisible(); }, 3000ms)) << "the wheel took no pointer";
        cursorX_ = 0;  // every show starts with the virtual cursor at the centre
        cursorY_ = 0;
    }

    // Moves the virtual cursor and clicks, as the user does with a mouse:
    // once the wheel shows the cursor at its new place (a click picks what
    // the wheel shows).
    void PickAt(int dx, int dy) {
        MoveVirtualCursor(dx, dy);
        user_.ClickButton(1);
    }

    // Waits until the wheel has changed and shows the cursor's white arrow
    // at the new place (a first picture painting late is not enough).
    void MoveVirtualCursor(int dx, int dy) {
        cursorX_ += dx;
        cursorY_ += dy;
        EXPECT_TRUE(MoveWheelCursor(user_, user_.WindowGeometry(user_.FindWindow(kWheelTitle)), dx, dy, cursorX_,
                                    cursorY_))
            << "no redraw";
    }

    PrivateXServer server_;
    XConnection user_;
    int cursorX_ = 0;  // the virtual cursor, from the wheel's centre
    int cursorY_ = 0;
    TestApplication application_;
    ProgramUnderTest program_;
};

TEST_F(LiveProgramTest, TheHotKeyShowsTheWheelCentredAndHidesItAgain) {
    StartProgram();
    ShowWheel();
    const XConnection::Geometry wheel = user_.WindowGeometry(user_.FindWindow(kWheelTitle));
    EXPECT_EQ(wheel.x, (1920 - kWheelWidth) / 2);
    EXPECT_EQ(wheel.y, (1080 - kWheelHeight) / 2);
    EXPECT_EQ(wheel.width, kWheelWidth);
    EXPECT_EQ(wheel.height, kWheelHeight);

    user_.PressKey(XK_F8);
    EXPECT_TRUE(WaitUntil([this] { return !WheelShows(); }, 3000ms));
    EXPECT_TRUE(WaitUntil([this] { return application_.FocusedWindow() == application_.Id(); }, 2000ms));
}

// The virtual cursor is drawn in the wheel; the real pointer shows nothing
// while the wheel does.
TEST_F(LiveProgramTest, NoPointerShowsWhileTheWheelDoes) {
    StartProgram();
    ASSERT_TRUE(user_.PointerVisible());
    ShowWheel();
    EXPECT_TRUE(WaitUntil([&] { return !user_.PointerVisible(); }, 2000ms)) << "the pointer still shows";
    user_.PressKey(XK_F8);
    ASSERT_TRUE(WaitUntil([this] { return !WheelShows(); }, 3000ms));
    EXPECT_TRUE(WaitUntil([&] { return user_.PointerVisible(); }, 2000ms)) << "the pointer did not come back";
}

TEST_F(LiveProgramTest, TheHotKeyCountsWithNumLockButNotWithShift) {
    StartProgram();
    user_.PressKey(XK_Num_Lock);
    ShowWheel();
    user_.PressKey(XK_F8);
    ASSERT_TRUE(WaitUntil([this] { return !WheelShows(); }, 3000ms));
    user_.PressKey(XK_Num_Lock);

    user_.HoldKey(XK_Shift_L, true);
    user_.PressKey(XK_F8);
    user_.HoldKey(XK_Shift_L, false);
    EXPECT_FALSE(WaitUntil([this] { return WheelShows(); }, 500ms));
}

// A layout switch, a new keyboard or a tool that uploads a keymap can move
// the toggle key to another keycode: the hot key follows it.
TEST_F(LiveProgramTest, TheHotKeyFollowsItsKeyToANewKeycodeAndLeavesTheOldOne) {
    StartProgram();
    const std::optional<std::pair<unsigned, unsigned>> moved = user_.MoveKeySymbol(XK_F8, XK_F9);
    ASSERT_TRUE(moved) << "the test server's keymap has no free keycode";
    const auto [oldKeycode, newKeycode] = *moved;
    ASSERT_TRUE(WaitUntil([&] { return user_.KeyGrabbedByAnother(newKeycode); }, 3000ms))
        << "the program did not grab the new keycode";
    EXPECT_FALSE(user_.KeyGrabbedByAnother(oldKeycode)) << "the old keycode is still grabbed";

    for (int round = 0; round < 2; ++round) {
        user_.PressKeycode(newKeycode);
        ASSERT_TRUE(WaitUntil([this] { return WheelShows(); }, 3000ms)) << "round " << round;
        user_.PressKeycode(newKeycode);
        ASSERT_TRUE(WaitUntil([this] { return !WheelShows(); }, 3000ms)) << "round " << round;
    }
    // The old keycode types for the application again.
    ASSERT_TRUE(WaitUntil([this] { return application_.FocusedWindow() == application_.Id(); }, 2000ms));
    const std::size_t pressesBefore = application_.Events(KeyPress).size();
    user_.PressKeycode(oldKeycode);
    EXPECT_TRUE(application_.WaitForEvents(KeyPress, pressesBefore + 1, 2000ms)) << "the old keycode is swallowed";
    EXPECT_FALSE(WheelShows());
}

// In a Wayland session (XDG_SESSION_TYPE=wayland, a compositor at
// WAYLAND_DISPLAY) Qt would choose its Wayland backend: the wheel must still
// be an X11 overlay that the X11 hot key toggles. The same without a
// compositor, where a session's variables name one that is gone.
class WaylandSessionTest : public LiveProgramTest {
protected:
    void StartInASessionWith(const std::string& waylandDisplay) {
        program_.AddEnvironment("XDG_SESSION_TYPE=wayland");
        program_.AddEnvironment("WAYLAND_DISPLAY=" + waylandDisplay);
        StartProgram();
    }

    void ExpectAnX11OverlayTheHotKeyTogglesTwice() {
        for (int round = 0; round < 2; ++round) {
            ShowWheel();
            XWindowAttributes attributes{};
            ASSERT_TRUE(XGetWindowAttributes(user_.Get(), user_.FindWindow(kWheelTitle), &attributes));
            EXPECT_TRUE(attributes.override_redirect) << "round " << round;
            user_.PressKey(XK_F8);
            ASSERT_TRUE(WaitUntil([this] { return !WheelShows(); }, 3000ms)) << "round " << round;
        }
    }
};

TEST_F(WaylandSessionTest, WithACompositorTheWheelIsAnX11OverlayAndTheHotKeyTogglesIt) {
    PrivateWaylandCompositor compositor;
    ASSERT_TRUE(compositor.Running()) << "weston did not start";
    StartInASessionWith(compositor.SocketPath());
    ExpectAnX11OverlayTheHotKeyTogglesTwice();
}

TEST_F(WaylandSessionTest, WithoutACompositorTheWheelIsAnX11OverlayAndTheHotKeyTogglesIt) {
    StartInASessionWith("zirvel-test-no-compositor");
    ExpectAnX11OverlayTheHotKeyTogglesTwice();
}

TEST_F(LiveProgramTest, RawMotionMovesTheVirtualCursorOnePixelPerCountWhileThePointerStaysPinned) {
    StartProgram();
    ShowWheel();
    // 45 pixels up is still the centre hole: a click there does nothing.
    PickAt(0, -45);
    std::this_thread::sleep_for(100ms);
    EXPECT_TRUE(WheelShows());
    EXPECT_EQ(user_.Pointer(), std::make_pair(700, 500));
    // One more count reaches the ring's top field.
    PickAt(0, -1);
    EXPECT_TRUE(WaitUntil([this] { return !WheelShows(); }, 2000ms));
    ASSERT_TRUE(application_.WaitForEvents(KeyRelease, 1, 2000ms));
    EXPECT_EQ(application_.Events(KeyPress).at(0).symbol, static_cast<KeySym>(XK_a));
    EXPECT_EQ(user_.Pointer(), std::make_pair(700, 500));
}

TEST_F(LiveProgramTest, AClickedFieldSendsItsKeyAfterSendDelayHeldForKeyHold) {
    StartProgram();
    ShowWheel();
    MoveVirtualCursor(120, 0);  // the right-hand field
    const auto clicked = std::chrono::steady_clock::now();
    user_.ClickButton(1);
    ASSERT_TRUE(application_.WaitForEvents(KeyRelease, 1, 3000ms));
    const auto press = application_.Events(KeyPress).at(0);
    const auto release = application_.Events(KeyRelease).at(0);
    EXPECT_EQ(press.symbol, static_cast<KeySym>(XK_b));
    const auto delay = std::chrono::duration_cast<std::chrono::milliseconds>(press.arrived - clicked).count();
    // Never early; late only by what a busy machine's scheduler adds.
    EXPECT_GE(delay, 150 - 2);
    EXPECT_LE(delay, 150 + 250);
    // (The server stamps an event when it takes it, which may be a few ms
    // after it was sent when the machine is busy.)
    EXPECT_GE(release.time - press.time, 40u - 10u);
    EXPECT_LE(release.time - press.time, 40u + 250u);
    EXPECT_EQ(application_.FocusedWindow(), application_.Id());
}

TEST_F(LiveProgramTest, HoldAndReleaseWorkAcrossTwoFunctions) {
    StartProgram();
    ShowWheel();
    PickAt(0, 120);  // down: hold Shift
    ASSERT_TRUE(application_.WaitForEvents(KeyPress, 1, 3000ms));
    std::this_thread::sleep_for(300ms);
    EXPECT_TRUE(application_.Events(KeyRelease).empty()) << "Shift went up by itself";

    // With Shift down the hot key is Shift+F8, which is not ours: the
    // voice opens the wheel instead.
    EXPECT_EQ(program_.Say("pokaż koło"), 0);
    WaitForTheWheelToTakeThePointer();
    PickAt(-120, 0);  // left: release Shift
    ASSERT_TRUE(application_.WaitForEvents(KeyRelease, 1, 3000ms));
    for (const auto& event : application_.Events()) {
        EXPECT_EQ(event.symbol, static_cast<KeySym>(XK_Shift_L)) << "event type " << event.type;
    }
    EXPECT_EQ(application_.Events(KeyPress).size(), 1u);
    EXPECT_EQ(application_.Events(KeyRelease).size(), 1u);
}

TEST_F(LiveProgramTest, GridPhrasesPutThePointerAtTheCentresAndClickThere) {
    StartProgram();
    EXPECT_EQ(program_.Say("pokaż siatkę"), 0);
    EXPECT_TRUE(WaitUntil([this] { return user_.Pointer() == std::make_pair(960, 540); }, 2000ms));
    EXPECT_EQ(program_.Say("siedem"), 0);
    EXPECT_TRUE(WaitUntil([this] { return user_.Pointer() == std::make_pair(1200, 405); }, 2000ms));
    EXPECT_EQ(program_.Say("kliknij"), 0);
    ASSERT_TRUE(application_.WaitForEvents(ButtonPress, 1, 3000ms));
    const auto click = application_.Events(ButtonPress).at(0);
    EXPECT_EQ(click.button, 1u);
    EXPECT_EQ(click.x, 1200);
    EXPECT_EQ(click.y, 405);
    EXPECT_EQ(program_.Say("to nie jest komenda"), 1);
}

// The grid window keeps its picture while hidden; shown again, the same
// grid looks exactly as it did.
TEST_F(LiveProgramTest, TheGridShownAgainLooksAsItDid) {
    StartProgram();
    const XConnection::Geometry screen{0, 0, 1920, 1080};
    const std::uint64_t before = user_.ScreenChecksum(screen);
    EXPECT_EQ(program_.Say("pokaż siatkę"), 0);
    ASSERT_TRUE(WaitUntil([this] { return user_.Pointer() == std::make_pair(960, 540); }, 2000ms));
    // The grid as painted, not the screen before its first paint.
    ASSERT_TRUE(WaitUntil([&] { return user_.ScreenChecksum(screen) != before; }, 2000ms)) << "the grid did not show";
    const std::uint64_t grid = SettledChecksum(user_, screen);
    EXPECT_EQ(program_.Say("schowaj siatkę"), 0);
    EXPECT_TRUE(WaitUntil([&] { return user_.ScreenChecksum(screen) != grid; }, 2000ms)) << "the grid did not hide";
    EXPECT_EQ(program_.Say("pokaż siatkę"), 0);
    EXPECT_TRUE(WaitUntil([&] { return user_.ScreenChecksum(screen) == grid; }, 2000ms))
        << "the grid shown again differs from the first";
}

TEST_F(LiveProgramTest, TheControlSocketActivatesAWheelsFileAndRefusesOneWithoutFunctions) {
    StartProgram();
    const auto games = program_.Directory() / "games.json";
    std::ofstream(games) << R"({"wheels": [{"name": "G", "actions": [{"name": "Z", "key": "z"}]}]})";
    const auto empty = program_.Directory() / "empty.json";
    std::ofstream(empty) << R"({"wheels": [{"name": "E", "actions": []}]})";
    EXPECT_EQ(program_.Activate(empty), 1);
    EXPECT_EQ(program_.Activate(games), 0);
    ShowWheel();
    PickAt(0, -100);  // the only field covers the whole ring
    ASSERT_TRUE(application_.WaitForEvents(KeyPress, 1, 3000ms));
    EXPECT_EQ(application_.Events(KeyPress).at(0).symbol, static_cast<KeySym>(XK_z));
}

// Files no person meant as wheels, handed over as if they were: each is
// refused, the program goes on with the wheels it had; then one of 10,000
// wheels is taken.
TEST_F(LiveProgramTest, ActivatingAFolderAMissingOrAnOversizedFileIsRefusedAndTheWheelsStay) {
    StartProgram();
    const auto folder = program_.Directory() / "folder.json";
    std::filesystem::create_directory(folder);
    const auto big = program_.Directory() / "big.json";
    std::ofstream(big) << std::string(100 * 1024 * 1024, ' ');
    const auto pipe = program_.Directory() / "pipe.json";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    for (const auto& file : {folder, big, pipe, program_.Directory() / "missing.json"}) {
        const auto started = std::chrono::steady_clock::now();
        EXPECT_EQ(program_.Activate(file), 1) << file;
        // A program held up by the file (a pipe nobody writes) never answers.
        EXPECT_LT(std::chrono::steady_clock::now() - started, 5s) << file << " held the program up";
    }
    std::filesystem::remove(big);
    ShowWheel();
    PickAt(0, -100);  // still the first wheel: its top field types "a"
    ASSERT_TRUE(application_.WaitForEvents(KeyPress, 1, 3000ms));
    EXPECT_EQ(application_.Events(KeyPress).at(0).symbol, static_cast<KeySym>(XK_a));

    std::string many = R"({"wheels": [)";
    for (int i = 0; i < 10000; ++i) many += std::string(i ? "," : "") + R"({"name": "W", "actions": [{"name": "Z", "key": "z"}]})";
    std::ofstream(program_.Directory() / "many.json") << many << "]}";
    EXPECT_EQ(program_.Activate(program_.Directory() / "many.json"), 0);
    EXPECT_TRUE(program_.Process()->Alive());
}

TEST_F(LiveProgramTest, ASecondInstanceSaysSoAndEndsWithZero) {
    StartProgram();
    // The first instance's own main window is also called "Zirvel".
    const std::vector<Window> before = user_.FindWindows("Zirvel");
    auto second = program_.StartAnother();
    // Its message box: dismiss it with Enter, as a user would.
    const Window box = WaitForMessageBox(user_, before, 5000ms);
    ASSERT_NE(box, 0u);
    XSetInputFocus(user_.Get(), box, RevertToParent, CurrentTime);
    std::this_thread::sleep_for(200ms);
    user_.PressKey(XK_Return);
    EXPECT_EQ(second->WaitForExit(5000ms), std::optional<int>(0));
    EXPECT_TRUE(program_.Process()->Alive());
    EXPECT_EQ(program_.Say("pokaż koło"), 0);  // the first one still answers
    EXPECT_TRUE(WaitUntil([this] { return WheelShows(); }, 3000ms));
}

// What the program's main window shows once it has settled, started with
// the given front-end theme; 0 when it did not show.
std::uint64_t MainWindowPicture(ProgramUnderTest& program, XConnection& user, const std::string& theme) {
    program.SetFrontEndSetting("theme", theme);
    if (!program.Start()) return 0;
    const Window window = FindMainWindow(user);
    const std::uint64_t picture = window != 0 ? SettledChecksum(user, user.WindowGeometry(window)) : 0;
    EXPECT_TRUE(program.Stop()) << "the program did not end with 0 on SIGTERM";
    return picture;
}

// The program is started from the build folder, not its own: the themes are
// found beside the program all the same.
TEST_F(LiveProgramTest, TheStoredThemeAppliesAtStartAndAnUnknownOneFallsBackToFluent) {
    const std::uint64_t fluent = MainWindowPicture(program_, user_, "fluent");
    const std::uint64_t unknown = MainWindowPicture(program_, user_, "unknown");
    const std::uint64_t neon = MainWindowPicture(program_, user_, "neon");
    ASSERT_NE(fluent, 0u);
    EXPECT_EQ(unknown, fluent);
    EXPECT_NE(neon, fluent);
}

TEST_F(LiveProgramTest, TheCloseButtonHidesTheWindowAndTheProgramGoesOn) {
    StartProgram();
    const Window window = FindMainWindow(user_);
    ASSERT_NE(window, 0u);
    PressCloseButton(user_, window);
    EXPECT_TRUE(WaitUntil([&] { return !user_.IsMapped(window); }, 3000ms)) << "the window still shows";
    std::this_thread::sleep_for(300ms);
    EXPECT_TRUE(program_.Process()->Alive());
    application_.Focus();
    ShowWheel();
}

TEST_F(LiveProgramTest, TheTrayMenusZakonczEndsTheProgramWithZero) {
    NotificationArea tray(server_.Name());
    ASSERT_TRUE(WaitUntil([&] { return !user_.FindWindows("panel").empty(); }, 5000ms)) << "no notification area";
    StartProgram();
    const Window icon = tray.WaitForIcon(user_, 10000ms);
    ASSERT_NE(icon, 0u) << "the tray icon did not dock";
    std::string trail;
    const Window menu = tray.OpenIconMenu(user_, 10000ms, &trail);
    ASSERT_NE(menu, 0u) << "a right click on the icon opened no menu:\n" << trail;
    ClickLastMenuItem(user_, menu);  // "Zakończ"
    EXPECT_EQ(program_.Process()->WaitForExit(5000ms), std::optional<int>(0));
}

// One X screen split into two monitors, the right one not primary.
class TwoMonitorTest : public LiveProgramTest {
protected:
    TwoMonitorTest() : LiveProgramTest(3840, 1080) {}

    void SplitScreen() {
        Display* display = user_.Get();
        XRRScreenResources* resources = XRRGetScreenResources(display, user_.Root());
        ASSERT_NE(resources, nullptr);
        ASSERT_GT(resources->noutput, 0);
        for (int half = 0; half < 2; ++half) {
            XRRMonitorInfo* monitor = XRRAllocateMonitor(display, half == 0 ? 1 : 0);
            monitor->name = XInternAtom(display, half == 0 ? "LEFT" : "RIGHT", False);
            monitor->primary = half == 0;
            monitor->x = half * 1920;
            monitor->y = 0;
            monitor->width = 1920;
            monitor->height = 1080;
            monitor->mwidth = 500;
            monitor->mheight = 280;
            // The left monitor takes the screen's output, replacing the
            // monitor that covers the whole screen.
            if (half == 0) monitor->outputs[0] = resources->outputs[0];
            XRRSetMonitor(display, user_.Root(), monitor);
            XRRFreeMonitors(monitor);
        }
        XRRFreeScreenResources(resources);
        XSync(display, False);
        int count = 0;
        XRRMonitorInfo* monitors = XRRGetMonitors(display, user_.Root(), True, &count);
        XRRFreeMonitors(monitors);
        ASSERT_EQ(count, 2);
    }
};

TEST_F(TwoMonitorTest, TheWheelShowsOnTheMonitorThatHoldsThePointer) {
    SplitScreen();
    StartProgram();
    user_.MoveMouseTo(2500, 300);
    ShowWheel();
    const XConnection::Geometry wheel = user_.WindowGeometry(user_.FindWindow(kWheelTitle));
    EXPECT_EQ(wheel.x, 1920 + (1920 - kWheelWidth) / 2);
    EXPECT_EQ(wheel.y, (1080 - kWheelHeight) / 2);
    EXPECT_EQ(user_.Pointer(), std::make_pair(2500, 300));

    user_.PressKey(XK_F8);
    ASSERT_TRUE(WaitUntil([this] { return !WheelShows(); }, 3000ms));
    user_.MoveMouseTo(300, 300);
    ShowWheel();
    EXPECT_EQ(user_.WindowGeometry(user_.FindWindow(kWheelTitle)).x, (1920 - kWheelWidth) / 2);
}

// A compositing manager blends the translucent wheel with what lies under it.
class CompositedTest : public LiveProgramTest {
protected:
    CompositedTest() : LiveProgramTest(1920, 1080, MakeFramebufferFolder()) {}
    ~CompositedTest() override {
        compositor_.reset();
        std::error_code ignored;
        std::filesystem::remove_all(framebuffer_, ignored);
    }

    static std::filesystem::path MakeFramebufferFolder() {
        framebuffer_ = std::filesystem::temp_directory_path() / ("zirvel_fb_" + std::to_string(getpid()));
        std::filesystem::create_directories(framebuffer_);
        return framebuffer_;
    }

    std::uint32_t Screen(int x, int y) { return FramebufferPixel(framebuffer_, x, y).value_or(0xFFFFFFFF); }

    static inline std::filesystem::path framebuffer_;
    std::unique_ptr<ChildProcess> compositor_;
};

TEST_F(CompositedTest, TheDesktopShowsThroughTheCentreHoleAndTheRingIsTranslucent) {
    compositor_ = std::make_unique<ChildProcess>(std::vector<std::string>{"xcompmgr"},
                                                 std::vector<std::string>{"DISPLAY=" + server_.Name()},
                                                 program_.Directory() / "xcompmgr.txt");
    StartProgram();
    // The program's window goes to the tray, so the wheel shows over the application.
    const Window window = FindMainWindow(user_);
    ASSERT_NE(window, 0u);
    PressCloseButton(user_, window);
    ASSERT_TRUE(WaitUntil([&] { return !user_.IsMapped(window); }, 3000ms));
    const int centreX = (1920 - kWheelWidth) / 2 + 294;
    const int centreY = (1080 - kWheelHeight) / 2 + 230;
    // The stand-in application is mid grey everywhere.
    ASSERT_TRUE(WaitUntil([&] { return Screen(centreX, centreY - 35) == 0x808080; }, 3000ms));
    ShowWheel();
    // A point of the top field clear of its label.
    const int ringX = centreX + 68;
    const int ringY = centreY - 188;
    ASSERT_TRUE(WaitUntil([&] { return Screen(ringX, ringY) != 0x808080; }, 3000ms))
        << "the wheel never reached the screen";
    std::this_thread::sleep_for(200ms);
    // The hole, 35 px above the centre (clear of the texts and the cursor).
    EXPECT_EQ(Screen(centreX, centreY - 35), 0x808080u);
    // A field at alpha 135 mixes its colour with the grey: neither the grey
    // nor the raw premultiplied colour the window holds.
    // #3498db at alpha 135 over grey 0x80, channel by channel.
    const std::uint32_t ring = Screen(ringX, ringY);
    const std::uint32_t colour[] = {0x34, 0x98, 0xDB};
    for (int channel = 0; channel < 3; ++channel) {
        const std::uint32_t blended = (colour[channel] * 135 + 0x80 * (255 - 135)) / 255;
        EXPECT_NEAR(static_cast<double>((ring >> (16 - 8 * channel)) & 0xFF), blended, 3.0) << "channel " << channel;
    }
    // The picture of the wheel over an application that the user guide shows.
    EXPECT_TRUE(SaveFramebuffer(framebuffer_, std::filesystem::path(ZIRVEL_SCREENSHOTS) / "wheel-over-application.png"));
}

}  // namespace
}  // namespace zirvel_test

namespace zirvel_test {
namespace {

// The desktop at 144 DPI (150 %), as its settings daemon says it to Qt and
// GTK: Xft.dpi in the root window's resources.
class HighDpiProgramTest : public LiveProgramTest {
protected:
    void SetUp() override {
        LiveProgramTest::SetUp();
        constexpr char kResources[] = "Xft.dpi:\t144\nXft.antialias:\t1\n";
        XChangeProperty(user_.Get(), user_.Root(), XA_RESOURCE_MANAGER, XA_STRING, 8, PropModeReplace,
                        reinterpret_cast<const unsigned char*>(kResources), sizeof kResources - 1);
        XSync(user_.Get(), False);
    }
};

TEST_F(HighDpiProgramTest, TheWheelIs882By690AndFiftyCountsUpPickTheTopField) {
    StartProgram();
    ShowWheel();
    const XConnection::Geometry wheel = user_.WindowGeometry(user_.FindWindow(kWheelTitle));
    EXPECT_EQ(wheel.x, (1920 - 882) / 2);
    EXPECT_EQ(wheel.y, (1080 - 690) / 2);
    EXPECT_EQ(wheel.width, 882);
    EXPECT_EQ(wheel.height, 690);
    // 44 counts are 66 pixels: still in the hole of radius 69.
    EXPECT_TRUE(MoveWheelCursor(user_, wheel, 0, -44, 0, -66, 144)) << "no redraw";
    user_.ClickButton(1);
    std::this_thread::sleep_for(100ms);
    EXPECT_TRUE(WheelShows());
    // 50 counts are 75 pixels: the top field, as 50 pixels are at 96 DPI.
    EXPECT_TRUE(MoveWheelCursor(user_, wheel, 0, -6, 0, -75, 144)) << "no redraw";
    user_.ClickButton(1);
    EXPECT_TRUE(WaitUntil([this] { return !WheelShows(); }, 2000ms));
    ASSERT_TRUE(application_.WaitForEvents(KeyRelease, 1, 2000ms));
    EXPECT_EQ(application_.Events(KeyPress).at(0).symbol, static_cast<KeySym>(XK_a));
}

}  // namespace
}  // namespace zirvel_test
