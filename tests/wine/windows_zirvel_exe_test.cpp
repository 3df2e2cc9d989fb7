// Zirvel.exe, the front-end's window and the engine in one program, under
// Wine as a person uses it: the main window and its pages, the start
// page's button and the hot key showing the real wheel, the close button,
// the tray menu's "Zakończ", a second start, and "Aktywuj" in the editor.
#include <gtest/gtest.h>

#include <X11/keysym.h>

#include <fstream>
#include <set>
#include <thread>

#include "program_windows.h"
#include "wine_session.h"

namespace zirvel_test {
namespace {

using namespace std::chrono_literals;

constexpr char kConfig[] = R"({"toggleKey": "x", "sendDelay": 60, "takeFocus": false})";
constexpr char kWheels[] = R"({"wheels": [{"name": "Test", "actions": [{"name": "A", "key": "a"}]}]})";
// The wheel's 588 x 460 window centred on Xvfb's one 1280 x 1024 monitor.
constexpr char kWheelCentred[] = "wheel shown 346 282 934 742";
constexpr XConnection::Geometry kWheelArea{346, 282, 588, 460};
// The fluent theme's primary colour: the selected page in the sidebar and
// each page's main button.
constexpr std::uint32_t kPrimaryBlue = 0x185FA5;
// The sidebar's fixed width.
constexpr int kSidebarWidth = 190;

class ZirvelExeTest : public ::testing::Test {
protected:
    ZirvelExeTest() : session_(kConfig, kWheels) {}

    void SetUp() override {
        ASSERT_TRUE(session_.Ready()) << "no Xvfb, or no Wine prefix in the Windows build (run its tests first)";
        session_.ClearFrontEndSettings();
        PrepareStart();
        ASSERT_TRUE(session_.StartApplication()) << "the test application did not start";
        session_.User().MoveMouseTo(200, 150);
        ASSERT_TRUE(session_.StartEngine("Zirvel.exe")) << "Zirvel.exe's engine did not start";
        window_ = FindMainWindow(session_.User(), 20s);
        ASSERT_NE(window_, 0u) << "Zirvel.exe's main window did not show";
    }

    void TearDown() override {
        // Zirvel.exe never shows the engine's own window: its main window is the Qt one.
        EXPECT_TRUE(session_.Lines("window Zirvel shown").empty());
        session_.ClearFrontEndSettings();
    }

    // Before Zirvel.exe starts.
    virtual void PrepareStart() {}

    XConnection& User() { return session_.User(); }
    XConnection::Geometry Window() { return User().WindowGeometry(window_); }

    void Click(const XConnection::Geometry& area) {
        const auto [x, y] = Centre(area);
        User().MoveMouseTo(x, y);
        std::this_thread::sleep_for(100ms);
        User().ClickButton(1);
    }

    // The window as a window manager would hand it over: raised, with the
    // keyboard, and painted.
    void FocusMainWindow() {
        XRaiseWindow(User().Get(), window_);
        XSetInputFocus(User().Get(), window_, RevertToParent, CurrentTime);
        XSync(User().Get(), False);
        SettledChecksum(User(), Window());
    }

    // Gives the sidebar the keyboard by clicking its selected row.
    void FocusSidebar() {
        FocusMainWindow();
        const XConnection::Geometry area = Window();
        const XConnection::Geometry selected =
            FilledBounds(User(), {area.x, area.y, kSidebarWidth, area.height}, kPrimaryBlue);
        ASSERT_GT(selected.width, 0) << "no selected page in the sidebar";
        Click(selected);
    }

    void ExpectWheelShown(std::size_t skip) {
        const auto shown = session_.WaitForLine("wheel shown", 5000ms, skip);
        ASSERT_TRUE(shown) << "the wheel did not show";
        EXPECT_EQ(shown->substr(0, std::string(kWheelCentred).size()), kWheelCentred);
    }

    void SaveScreenshot(const std::string& name) {
        std::filesystem::create_directories(ZIRVEL_SCREENSHOTS);
        EXPECT_TRUE(session_.Screenshot(std::filesystem::path(ZIRVEL_SCREENSHOTS) / name));
    }

    WineSession session_;
    ::Window window_ = 0;
};

TEST_F(ZirvelExeTest, TheMainWindowShowsFivePagesAndItsButtonShowsTheRealWheel) {
    const XConnection::Geometry area = Window();
    EXPECT_GE(area.width, 800);
    FocusMainWindow();
    SaveScreenshot("zirvel-exe-main-window.png");

    FocusSidebar();
    std::uint64_t page = SettledChecksum(User(), area);
    std::set<std::uint64_t> pages{page};
    for (int row = 1; row < 5; ++row) {
        User().PressKey(XK_Down);
        // The next page as painted, not the last one before it was.
        WaitUntil([&] { return User().ScreenChecksum(area) != page; }, 3000ms);
        page = SettledChecksum(User(), area);
        pages.insert(page);
    }
    EXPECT_EQ(pages.size(), 5u) << "the sidebar's rows do not show five different pages";

    User().PressKey(XK_Home);
    SettledChecksum(User(), area);
    // The start page's "Pokaż koło (X)": the primary button of its left column.
    const XConnection::Geometry button = FilledBounds(
        User(), {area.x + kSidebarWidth, area.y, (area.width - kSidebarWidth) / 2, area.height}, kPrimaryBlue);
    ASSERT_GT(button.width, 100) << "no primary button on the start page";
    const std::size_t before = session_.Log().size();
    Click(button);
    ExpectWheelShown(before);
    const std::size_t shown = session_.Log().size();
    User().PressKey(XK_x);
    EXPECT_TRUE(session_.WaitForLine("wheel hidden", 5000ms, shown)) << "the hot key did not hide the wheel";
}

TEST_F(ZirvelExeTest, TheCloseButtonHidesTheWindowAndTheEngineGoesOn) {
    PressCloseButton(User(), window_);
    EXPECT_TRUE(WaitUntil([&] { return !User().IsMapped(window_); }, 3000ms)) << "the window still shows";
    std::this_thread::sleep_for(300ms);
    EXPECT_TRUE(session_.Engine()->Alive());
    session_.FocusApplication();
    const std::size_t before = session_.Log().size();
    User().PressKey(XK_x);
    ExpectWheelShown(before);
    User().PressKey(XK_x);
    EXPECT_TRUE(session_.WaitForLine("wheel hidden", 5000ms, before));
}

TEST_F(ZirvelExeTest, ASecondStartShowsOnlyItsMessageAndEndsWithZero) {
    const std::vector<::Window> before = User().FindWindows("Zirvel");
    auto second = session_.StartEngineProcess("Zirvel.exe");
    const ::Window box = WaitForMessageBox(User(), before, 30s);
    ASSERT_NE(box, 0u) << "no message box";
    std::this_thread::sleep_for(300ms);  // painted
    SaveScreenshot("zirvel-exe-second-start.png");
    // Dismissed with Enter, as a user would.
    XSetInputFocus(User().Get(), box, RevertToParent, CurrentTime);
    XSync(User().Get(), False);
    std::this_thread::sleep_for(200ms);
    User().PressKey(XK_Return);
    EXPECT_EQ(second->WaitForExit(10s), std::optional<int>(0));
    // No second main window came, and the first program still answers.
    EXPECT_EQ(FindMainWindow(User(), 0ms), window_);
    EXPECT_TRUE(session_.Engine()->Alive());
    EXPECT_EQ(session_.RunTool("zirvel-say.exe", "pokaż siatkę"), 0);
}

// With a desktop's notification area, where Zirvel.exe's tray icon docks.
class ZirvelExeTrayTest : public ZirvelExeTest {
protected:
    void PrepareStart() override {
        tray_ = std::make_unique<NotificationArea>(DisplayName());
        ASSERT_TRUE(WaitUntil([&] { return !User().FindWindows("panel").empty(); }, 5000ms)) << "no tray";
    }
    std::string DisplayName() { return DisplayString(User().Get()); }

    std::unique_ptr<NotificationArea> tray_;
};

TEST_F(ZirvelExeTrayTest, TheTrayMenusZakonczEndsTheProgramWithZero) {
    const ::Window icon = tray_->WaitForIcon(User(), 10s);
    ASSERT_NE(icon, 0u) << "the tray icon did not dock";
    std::string trail;
    const ::Window menu = tray_->OpenIconMenu(User(), 10s, &trail);
    if (menu == 0) SaveScreenshot("zirvel-exe-tray-no-menu.png");
    ASSERT_NE(menu, 0u) << "a right click on the icon opened no menu:\n" << trail << "the log:\n" << session_.LogText();
    std::this_thread::sleep_for(200ms);  // painted
    SaveScreenshot("zirvel-exe-tray-menu.png");
    ClickLastMenuItem(User(), menu);  // "Zakończ"
    EXPECT_EQ(session_.Engine()->WaitForExit(10s), std::optional<int>(0));
}

// The editor opens the wheels file it had last, as it does at every start.
class ZirvelExeEditorTest : public ZirvelExeTest {
protected:
    void PrepareStart() override {
        const std::filesystem::path games = session_.Directory() / "games.json";
        std::ofstream(games) << R"({"wheels": [{"name": "G", "actions": [{"name": "Z", "key": "z"}]}]})";
        session_.SetFrontEndSetting("lastWheelFile", WineSession::WindowsPath(games));
    }
};

TEST_F(ZirvelExeEditorTest, AktywujHandsTheEditorsFileToTheEngine) {
    FocusSidebar();
    User().PressKey(XK_Down);
    const XConnection::Geometry area = Window();
    // "Aktywuj": the primary button of the editor's tool row, once the
    // editor's page has been painted.
    const XConnection::Geometry toolRow{area.x + kSidebarWidth, area.y, area.width - kSidebarWidth, 80};
    WaitUntil([&] { return FilledBounds(User(), toolRow, kPrimaryBlue).width > 40; }, 5000ms, 50ms);
    SettledChecksum(User(), area);
    SaveScreenshot("zirvel-exe-editor.png");
    const XConnection::Geometry button = FilledBounds(User(), toolRow, kPrimaryBlue);
    ASSERT_GT(button.width, 40) << "no Aktywuj button";
    Click(button);
    std::this_thread::sleep_for(500ms);

    // The activated wheel has one field, "z", all round the ring; its key
    // goes to the application, brought to the front by a click.
    const std::size_t before = session_.Log().size();
    User().MoveMouseTo(100, 150);
    User().ClickButton(1);
    ASSERT_TRUE(session_.WaitForLine("foreground ZirvelTestApplication", 5000ms, before));
    User().PressKey(XK_x);
    ExpectWheelShown(before);
    // Raw input and the hook are in place once the show's handler returned.
    ASSERT_TRUE(session_.EngineCaughtUp()) << "the engine did not answer";
    EXPECT_TRUE(MoveWheelCursor(User(), kWheelArea, 0, 100, 0, 100)) << "the wheel did not show the cursor moved";
    User().ClickButton(1);
    const auto key = session_.WaitForLine("key down", 5000ms, before);
    ASSERT_TRUE(key) << "the field typed nothing";
    EXPECT_EQ(Field(*key, "vk"), 0x5A);
}

}  // namespace
}  // namespace zirvel_test
