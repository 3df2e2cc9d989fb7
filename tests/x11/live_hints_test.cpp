// The element hints through the real program, with phrases handed over by
// zirvel-say: on a private X server with a private session bus, over a
// zenity question and the project's Qt test window.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <thread>

#include "hint_test_window_layout.h"
#include "private_session_bus.h"
#include "x_session.h"

namespace zirvel_test {
namespace {

using namespace std::chrono_literals;
namespace layout = hint_window;

constexpr char kConfig[] = R"({"toggleKey": "f8", "gazeEnabled": false, "voiceEnabled": false})";
constexpr char kGridTitle[] = "Zirvel — siatka";
constexpr int kScreenWidth = 1280;
constexpr int kScreenHeight = 1024;

class LiveHintsTest : public ::testing::Test {
protected:
    LiveHintsTest()
        : server_(kScreenWidth, kScreenHeight),
          bus_(server_.Name()),
          user_(server_.Name()),
          program_(server_.Name(), kConfig, ""),
          folder_(ScratchDirectory("zirvel_hints_")) {
        for (const std::string& variable : bus_.ClientEnvironment()) program_.AddEnvironment(variable);
    }
    ~LiveHintsTest() override {
        applications_.clear();
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }

    void SetUp() override {
        ASSERT_TRUE(server_.Running());
        ASSERT_TRUE(bus_.Running());
        ASSERT_TRUE(program_.Start()) << "the program did not start";
        // The program switches the accessibility bus on at its start.
        ASSERT_TRUE(WaitUntil([this] { return AccessibilityBusSwitchedOn(); }, 5000ms, 100ms))
            << "the accessibility bus was not switched on";
    }

    bool AccessibilityBusSwitchedOn() {
        ChildProcess query({"dbus-send", "--session", "--print-reply", "--dest=org.a11y.Bus", "/org/a11y/bus",
                            "org.freedesktop.DBus.Properties.Get", "string:org.a11y.Status", "string:IsEnabled"},
                           bus_.ClientEnvironment(), folder_ / "query.txt");
        if (query.WaitForExit(3000ms) != std::optional<int>(0)) return false;
        std::ifstream file(folder_ / "query.txt");
        const std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
        std::filesystem::remove(folder_ / "query.txt");
        return text.find("boolean true") != std::string::npos;
    }

    ChildProcess& Launch(const std::vector<std::string>& command) {
        std::vector<std::string> environment = bus_.ClientEnvironment();
        environment.insert(environment.end(), {"DISPLAY=" + server_.Name(), "QT_QPA_PLATFORM=xcb", "LANG=C.UTF-8"});
        applications_.push_back(std::make_unique<ChildProcess>(command, environment, folder_ / "output.txt"));
        return *applications_.back();
    }

    // Shows it and gives it the input focus (no window manager runs).
    Window ShowAndFocus(const std::string& title) {
        Window window = 0;
        WaitUntil([&] { return (window = user_.FindWindow(title)) != 0 && user_.IsMapped(window); }, 8000ms);
        if (window == 0) return 0;
        XSetInputFocus(user_.Get(), window, RevertToParent, CurrentTime);
        XSync(user_.Get(), False);
        return window;
    }

    bool HintsShow() { return user_.IsMapped(user_.FindWindow(kGridTitle)); }

    // "pokaż elementy" until the hints show: the application registers on
    // the accessibility bus a little after its window appears.
    bool ShowHints() {
        return WaitUntil(
            [this] {
                if (program_.Say("pokaż elementy") != 0) return false;
                return WaitUntil([this] { return HintsShow(); }, 1500ms);
            },
            8000ms, 0ms);
    }

    std::string WindowLog() {
        std::ifstream file(folder_ / "log.txt");
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }

    PrivateXServer server_;
    PrivateSessionBus bus_;
    XConnection user_;
    ProgramUnderTest program_;
    std::filesystem::path folder_;
    std::vector<std::unique_ptr<ChildProcess>> applications_;
};

TEST_F(LiveHintsTest, HintsShowOverAZenityQuestionAndANumberClicksItsAnswer) {
    ChildProcess& zenity = Launch({"zenity", "--question", "--title=Pytanie", "--text=Czy?"});
    const Window dialog = ShowAndFocus("Pytanie");
    ASSERT_NE(dialog, 0u);
    ASSERT_TRUE(ShowHints()) << "no hints showed";
    // The picture covers the monitor of the dialog.
    const XConnection::Geometry picture = user_.WindowGeometry(user_.FindWindow(kGridTitle));
    EXPECT_EQ(picture.x, 0);
    EXPECT_EQ(picture.y, 0);
    EXPECT_EQ(picture.width, kScreenWidth);
    EXPECT_EQ(picture.height, kScreenHeight);
    // 1: the question's text, 2: "No", 3: "Yes".
    EXPECT_EQ(program_.Say("trzy"), 0);
    EXPECT_EQ(zenity.WaitForExit(5000ms), std::optional<int>(0)) << "the dialog was not answered with Yes";
    EXPECT_TRUE(WaitUntil([this] { return !HintsShow(); }, 2000ms)) << "the hints stayed after the click";
}

TEST_F(LiveHintsTest, DoubleAndRightClicksReachTheNumberedControls) {
    Launch({ZIRVEL_HINT_WINDOW, "--log", (folder_ / "log.txt").string()});
    ASSERT_NE(ShowAndFocus(layout::kTitle), 0u);
    // 1: the normal button, 2: the list, 3-5: its rows, 6: the edit.
    ASSERT_TRUE(ShowHints());
    EXPECT_EQ(program_.Say("kliknij dwa razy na jeden"), 0);
    EXPECT_TRUE(WaitUntil([this] { return WindowLog().find("double left normal") != std::string::npos; }, 3000ms))
        << WindowLog();
    ASSERT_TRUE(ShowHints());
    EXPECT_EQ(program_.Say("kliknij prawy na sześć"), 0);
    EXPECT_TRUE(WaitUntil([this] { return WindowLog().find("press right edit") != std::string::npos; }, 3000ms))
        << WindowLog();
    EXPECT_EQ(WindowLog().find("press right normal"), std::string::npos);
}

TEST_F(LiveHintsTest, PageHintsCoverOnlyTheWebDocumentAndClickInsideIt) {
    Launch({ZIRVEL_HINT_WINDOW, "--log", (folder_ / "log.txt").string()});
    const Window window = ShowAndFocus(layout::kTitle);
    ASSERT_NE(window, 0u);
    ASSERT_TRUE(ShowHints());  // the window is on the bus
    EXPECT_EQ(program_.Say("ukryj elementy"), 0);
    ASSERT_TRUE(WaitUntil([this] { return !HintsShow(); }, 2000ms));

    EXPECT_EQ(program_.Say("pokaż elementy strony"), 0);
    ASSERT_TRUE(WaitUntil([this] { return HintsShow(); }, 3000ms)) << "no page hints showed";
    // The picture covers the page only; its one hint is the page's button.
    const XConnection::Geometry frame = user_.WindowGeometry(window);
    const XConnection::Geometry picture = user_.WindowGeometry(user_.FindWindow(kGridTitle));
    EXPECT_EQ(picture.x, frame.x + layout::kPage.x);
    EXPECT_EQ(picture.y, frame.y + layout::kPage.y);
    EXPECT_EQ(picture.width, layout::kPage.width);
    EXPECT_EQ(picture.height, layout::kPage.height);
    EXPECT_EQ(program_.Say("dwa"), 0);  // there is no second hint: nothing happens
    EXPECT_EQ(program_.Say("jeden"), 0);
    EXPECT_TRUE(WaitUntil([this] { return WindowLog().find("press left pagebutton") != std::string::npos; }, 3000ms))
        << WindowLog();
    EXPECT_EQ(WindowLog().find("press left normal"), std::string::npos) << WindowLog();
}

TEST_F(LiveHintsTest, HidingTheHintsDuringASlowScanShowsNothingWhenItEnds) {
    Launch({ZIRVEL_HINT_WINDOW, "--log", (folder_ / "log.txt").string(), "--slow-ms", "1000"});
    ASSERT_NE(ShowAndFocus(layout::kTitle), 0u);
    ASSERT_TRUE(WaitUntil([this] { return WindowLog().find("ready") != std::string::npos; }, 5000ms));
    ASSERT_EQ(WindowLog().find("slow asked"), std::string::npos);
    // Once the application is on the bus (seen by a first, shown, scan),
    // a scan waits a second for the slow button's place.
    ASSERT_TRUE(ShowHints());
    EXPECT_EQ(program_.Say("ukryj elementy"), 0);
    ASSERT_TRUE(WaitUntil([this] { return !HintsShow(); }, 2000ms));
    const auto asked = [this] {
        const std::string log = WindowLog();
        std::size_t count = 0;
        for (std::size_t at = log.find("slow asked"); at != std::string::npos; at = log.find("slow asked", at + 1)) ++count;
        return count;
    };
    const std::size_t before = asked();
    EXPECT_EQ(program_.Say("pokaż elementy"), 0);
    EXPECT_EQ(program_.Say("ukryj elementy"), 0);
    ASSERT_TRUE(WaitUntil([&] { return asked() > before; }, 3000ms)) << "the scan did not reach the slow button: " << WindowLog();
    // The scan ends a second later; nothing may show meanwhile or after.
    const bool showed = WaitUntil([this] { return HintsShow(); }, 2500ms);
    EXPECT_FALSE(showed) << "hints showed after they were hidden";
    // The next scan shows them again.
    EXPECT_TRUE(ShowHints());
}

TEST_F(LiveHintsTest, WhenTheSessionBusEndsTheProgramGoesOn) {
    Launch({ZIRVEL_HINT_WINDOW, "--log", (folder_ / "log.txt").string()});
    ASSERT_NE(ShowAndFocus(layout::kTitle), 0u);
    ASSERT_TRUE(ShowHints());
    EXPECT_EQ(program_.Say("ukryj elementy"), 0);
    bus_.Stop();
    std::this_thread::sleep_for(300ms);
    // A scan now finds nothing or what is left, but never ends the program.
    EXPECT_EQ(program_.Say("pokaż elementy"), 0);
    std::this_thread::sleep_for(2000ms);
    ASSERT_TRUE(program_.Process()->Alive());
    EXPECT_EQ(program_.Say("pokaż siatkę"), 0);
    // The grid puts the pointer at the screen's centre.
    EXPECT_TRUE(WaitUntil([this] { return user_.Pointer() == std::make_pair(640, 512); }, 3000ms))
        << "the grid did not show";
    EXPECT_TRUE(program_.Process()->Alive());
}

}  // namespace
}  // namespace zirvel_test
