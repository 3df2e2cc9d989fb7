// Switch scanning of the grid and the element hints on the null platform's
// virtual clock: rows, then cells or hints, down to a click; the grid's
// actions; giving up; voice while scanning.
#include "engine/screen_scan.h"

#include "engine/switch_scan.h"
#include "engine_fixture.h"

namespace zirvel_test {
namespace {

using zirvel::ScanEntry;
using zirvel::ScanTarget;

constexpr std::uint64_t kInterval = 300;
constexpr char kScanning[] = R"({"scanEnabled": true, "scanInterval": 300, "scanLoops": 2})";

class ScreenScanTest : public HintsTest {
protected:
    ScanEntry Highlight() { return engine().scan.scanner.Highlighted(); }
    ScanTarget Target() { return engine().scan.target; }
    void WaitSteps(std::uint64_t steps) { platform_.Advance(steps * kInterval); }
    void Press() { platform_.PressHotKey(); }
    // The hot key, then `steps` intervals to the wheel's extra choice, taken.
    void TakeWheelChoice(std::uint64_t steps) {
        Start(kScanning, kFourDirectionFields);  // fields 0-3, "siatka" 4, "elementy" 5
        Press();
        WaitSteps(steps);
        Press();
    }
    // The injected mouse events: (button, press) in order.
    std::vector<std::pair<std::uint32_t, bool>> Buttons() {
        std::vector<std::pair<std::uint32_t, bool>> buttons;
        for (const auto& input : platform_.Injected()) {
            if (input.kind == zirvel::InjectedInput::Kind::MouseButton) buttons.emplace_back(input.button, input.press);
        }
        return buttons;
    }
};

TEST_F(ScreenScanTest, GridFromTheWheelScansItsRowsOnTheWheelsTimer) {
    TakeWheelChoice(4);
    EXPECT_EQ(OverlayIsWheelVisible(), 0);
    EXPECT_TRUE(engine().gridVisible);
    EXPECT_EQ(Target(), ScanTarget::Grid);
    EXPECT_EQ(Highlight(), (ScanEntry{0, 4}));
    EXPECT_TRUE(platform_.WheelTimerRunning());
    const int redraws = engine().gridRedraws;
    platform_.Advance(kInterval - 1);
    EXPECT_EQ(Highlight(), (ScanEntry{0, 4}));
    platform_.Advance(1);
    EXPECT_EQ(Highlight(), (ScanEntry{4, 4}));
    EXPECT_EQ(engine().gridRedraws, redraws + 1);
}

TEST_F(ScreenScanTest, RowThenCellNarrowsAsANumberDoesDownToAClickAtTheCentre) {
    TakeWheelChoice(4);
    WaitSteps(1);
    Press();  // the second row: cells 5 to 8
    EXPECT_EQ(Highlight(), (ScanEntry{4, 1}));
    WaitSteps(2);
    Press();  // cell 7
    EXPECT_EQ(engine().gridRect, (zirvel::ScreenRect{960, 270, 1440, 540}));
    EXPECT_EQ(platform_.CursorMoves().back().point, (zirvel::ScreenPoint{1200, 405}));
    EXPECT_EQ(engine().gridLevel, 2);
    EXPECT_EQ(Highlight(), (ScanEntry{0, 2}));  // the 2 x 2 grid's first row
    WaitSteps(1);
    Press();
    WaitSteps(1);
    Press();  // cell 4 of the 2 x 2 grid
    EXPECT_EQ(engine().gridRect, (zirvel::ScreenRect{1200, 405, 1440, 540}));
    EXPECT_EQ(engine().gridLevel, 3);
    WaitSteps(2);
    EXPECT_EQ(Highlight(), (ScanEntry{4, 1}));  // "kliknij"
    Press();
    EXPECT_FALSE(engine().gridVisible);
    EXPECT_EQ(Target(), ScanTarget::None);
    EXPECT_FALSE(platform_.WheelTimerRunning());
    platform_.Advance(500);
    EXPECT_EQ(platform_.CursorMoves().back().point, (zirvel::ScreenPoint{1320, 472}));
    EXPECT_EQ(Buttons(), (std::vector<std::pair<std::uint32_t, bool>>{{0, true}, {0, false}}));
}

TEST_F(ScreenScanTest, DoubleAndRightClickAreTheNextActions) {
    TakeWheelChoice(4);
    WaitSteps(5);  // four rows, "kliknij", "dwuklik"
    Press();
    platform_.Advance(1000);
    EXPECT_EQ(Buttons(), (std::vector<std::pair<std::uint32_t, bool>>{{0, true}, {0, false}, {0, true}, {0, false}}));
}

TEST_F(ScreenScanTest, RightClick) {
    TakeWheelChoice(4);
    WaitSteps(6);
    Press();
    platform_.Advance(1000);
    EXPECT_EQ(Buttons(), (std::vector<std::pair<std::uint32_t, bool>>{{1, true}, {1, false}}));
}

TEST_F(ScreenScanTest, CloseHidesTheGridWithoutAClick) {
    TakeWheelChoice(4);
    WaitSteps(7);
    Press();
    EXPECT_FALSE(engine().gridVisible);
    platform_.Advance(1000);
    EXPECT_TRUE(Buttons().empty());
}

TEST_F(ScreenScanTest, TheGridHidesAfterTheRoundsWithoutAPress) {
    TakeWheelChoice(4);  // 4 rows and 4 actions, 2 rounds
    platform_.Advance(2 * 8 * kInterval - 1);
    EXPECT_TRUE(engine().gridVisible);
    platform_.Advance(1);
    EXPECT_FALSE(engine().gridVisible);
    EXPECT_EQ(Target(), ScanTarget::None);
    EXPECT_FALSE(platform_.WheelTimerRunning());
}

TEST_F(ScreenScanTest, VoiceNarrowingRestartsTheScanAndHidingTheGridEndsIt) {
    TakeWheelChoice(4);
    WaitSteps(2);
    PostVoice(platform_, zirvel::kNumberCommandBase + 7);
    platform_.Advance(zirvel::kWheelTimerPeriod);
    EXPECT_EQ(engine().gridLevel, 2);
    EXPECT_EQ(Highlight(), (ScanEntry{0, 2}));
    PostVoice(platform_, zirvel::kHideGridCommand);
    platform_.Advance(zirvel::kWheelTimerPeriod);
    EXPECT_EQ(Target(), ScanTarget::None);
    // The hot key shows the wheel again.
    Press();
    EXPECT_EQ(OverlayIsWheelVisible(), 1);
}

TEST_F(ScreenScanTest, StepModeHoldsTheStepKeyWhileTheGridIsScanned) {
    Start(R"({"scanEnabled": true, "scanMode": "step", "scanStepKey": "space"})", kFourDirectionFields);
    Press();
    for (int i = 0; i < 4; ++i) platform_.PressStepKey();
    Press();  // "siatka"
    ASSERT_TRUE(platform_.RegisteredStepKey().has_value());
    platform_.Advance(10000);
    EXPECT_EQ(Highlight(), (ScanEntry{0, 4}));
    platform_.PressStepKey();
    EXPECT_EQ(Highlight(), (ScanEntry{4, 4}));
    for (int i = 0; i < 6; ++i) platform_.PressStepKey();
    Press();  // "zamknij"
    EXPECT_FALSE(engine().gridVisible);
    EXPECT_FALSE(platform_.RegisteredStepKey().has_value());
}

TEST_F(ScreenScanTest, HintsFromTheWheelAreScannedByRowsAndAPressClicksTheHint) {
    TakeWheelChoice(5);  // "elementy"
    platform_.Advance(50);
    ASSERT_TRUE(engine().hintsVisible);
    EXPECT_EQ(Target(), ScanTarget::Hints);
    EXPECT_EQ(Highlight(), (ScanEntry{0, 3}));  // five hints: rows of 3 and 2, then "zamknij"
    platform_.Advance(kInterval - 50);
    EXPECT_EQ(Highlight(), (ScanEntry{3, 2}));
    Press();
    WaitSteps(1);
    EXPECT_EQ(Highlight(), (ScanEntry{4, 1}));
    Press();
    EXPECT_FALSE(engine().hintsVisible);
    EXPECT_EQ(Target(), ScanTarget::None);
    platform_.Advance(500);
    EXPECT_EQ(platform_.CursorMoves().back().point, (zirvel::ScreenPoint{425, 25}));
    EXPECT_EQ(Buttons(), (std::vector<std::pair<std::uint32_t, bool>>{{0, true}, {0, false}}));
}

TEST_F(ScreenScanTest, CloseHidesTheHints) {
    TakeWheelChoice(5);
    platform_.Advance(50);
    platform_.Advance(2 * kInterval - 50);
    EXPECT_EQ(Highlight(), (ScanEntry{5, 1}));
    Press();
    EXPECT_FALSE(engine().hintsVisible);
    platform_.Advance(1000);
    EXPECT_TRUE(Buttons().empty());
}

TEST_F(ScreenScanTest, HintsShownByVoiceAreNotScanned) {
    Start(kScanning, kFourDirectionFields);
    ShowHints();
    EXPECT_EQ(Target(), ScanTarget::None);
}

TEST(HintReadingOrder, RowsFromTheTopThenLeftToRight) {
    const std::vector<zirvel::ScreenRect> hints = {
        {500, 300, 540, 320}, {100, 10, 140, 30}, {300, 300, 340, 320}, {900, 10, 940, 30}};
    EXPECT_EQ(zirvel::HintReadingOrder(hints), (std::vector<std::int32_t>{1, 3, 2, 0}));
}

TEST(HintScanEntries, NinetyNineHintsTakeAtMostEighteenStepsAndCloseComesLast) {
    const auto entries = zirvel::HintScanEntries(99);
    ASSERT_EQ(entries.size(), 11u);
    EXPECT_EQ(entries.front(), (ScanEntry{0, 10}));
    EXPECT_EQ(entries[9], (ScanEntry{90, 9}));
    EXPECT_EQ(entries.back(), (ScanEntry{99, 1}));
}

}  // namespace
}  // namespace zirvel_test
