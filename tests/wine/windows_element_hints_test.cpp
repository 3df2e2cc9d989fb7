// "pokaż elementy" over a Win32 window of the project's own under Wine,
// through zirvel-say.exe: Wine cannot run UI Automation, so the scan reads
// the window's child controls. The stand-in application's --controls are
// a button, a disabled button, a 7 pixel wide button, an edit, a check box
// and another button; it logs which control was clicked.
#include <gtest/gtest.h>

#include <filesystem>

#include "wine_session.h"

namespace zirvel_test {
namespace {

using namespace std::chrono_literals;

// The grid and hint window covers Xvfb's one monitor.
constexpr char kHintsShown[] = "grid shown 0 0 1280 1024";
// Inside the label boxes (23 x 18 at an element's top left) of hint 1 (the
// first button, at 100, 100) and hint 4 (the last button, at 100, 350),
// clear of the number and of the element's border.
constexpr int kLabelX = 103;
constexpr int kFirstLabelY = 113;
constexpr int kLastLabelY = 363;

class WindowsElementHintsTest : public ::testing::Test {
protected:
    WindowsElementHintsTest() : session_(R"({"toggleKey": "x"})", "") {}

    void SetUp() override {
        ASSERT_TRUE(session_.Ready()) << "no Xvfb, or no Wine prefix in the Windows build (run its tests first)";
        ASSERT_TRUE(session_.StartApplication({"--controls"})) << "the test application did not start";
        ASSERT_TRUE(session_.StartEngine()) << "zirvel-engine.exe did not start";
        session_.User().MoveMouseTo(900, 700);
    }

    // Says "pokaż elementy" and waits for the hint picture.
    void ShowHints() {
        const std::size_t before = session_.Log().size();
        ASSERT_EQ(session_.RunTool("zirvel-say.exe", "pokaż elementy"), 0);
        ASSERT_TRUE(session_.WaitForLine(kHintsShown, 5000ms, before)) << "no hints showed";
    }

    WineSession session_;
};

TEST_F(WindowsElementHintsTest, ShownHintsNumberTheUsableControlsAndANumberClicksOne) {
    XConnection& screen = session_.User();
    const std::uint32_t firstButton = screen.ScreenPixel(kLabelX, kFirstLabelY);
    const std::uint32_t lastButton = screen.ScreenPixel(kLabelX, kLastLabelY);
    ShowHints();
    EXPECT_TRUE(WaitUntil([&] { return screen.ScreenPixel(kLabelX, kFirstLabelY) != firstButton; }, 2000ms))
        << "hint 1's label is not drawn over the first button";
    EXPECT_TRUE(WaitUntil([&] { return screen.ScreenPixel(kLabelX, kLastLabelY) != lastButton; }, 2000ms))
        << "hint 4's label is not drawn over the last button";
    std::filesystem::create_directories(ZIRVEL_SCREENSHOTS);
    EXPECT_TRUE(session_.Screenshot(std::filesystem::path(ZIRVEL_SCREENSHOTS) / "element-hints.png"));

    // Hint 3 is the check box: the disabled and the narrow button got no number.
    std::size_t before = session_.Log().size();
    ASSERT_EQ(session_.RunTool("zirvel-say.exe", "trzy"), 0);
    const auto clicked = session_.WaitForLine("control ", 5000ms, before);
    ASSERT_TRUE(clicked) << "no control was clicked";
    EXPECT_EQ(clicked->substr(0, std::string("control 105 clicked").size()), "control 105 clicked");
    EXPECT_TRUE(session_.WaitForLine("grid hidden", 2000ms, before)) << "the hints stayed after the click";

    // Hint 2 is the edit, which takes the focus when clicked.
    ShowHints();
    before = session_.Log().size();
    ASSERT_EQ(session_.RunTool("zirvel-say.exe", "dwa"), 0);
    const auto focused = session_.WaitForLine("control ", 5000ms, before);
    ASSERT_TRUE(focused) << "no control was clicked";
    EXPECT_EQ(focused->substr(0, std::string("control 104 focus").size()), "control 104 focus");
}

TEST_F(WindowsElementHintsTest, ANumberBeyondTheHintsClicksNothing) {
    ShowHints();
    const std::size_t before = session_.Log().size();
    ASSERT_EQ(session_.RunTool("zirvel-say.exe", "pięć"), 0);  // four hints
    ASSERT_EQ(session_.RunTool("zirvel-say.exe", "schowaj elementy"), 0);
    EXPECT_TRUE(session_.WaitForLine("grid hidden", 2000ms, before));
    EXPECT_TRUE(session_.Lines("control ", before).empty()) << session_.Lines("control ", before).front();
}

}  // namespace
}  // namespace zirvel_test
