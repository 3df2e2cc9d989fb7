// Switch scanning of the wheel on the null platform's virtual clock: the
// toggle key as the select switch, the order of the choices, groups,
// rounds, step mode, and the mouse and voice while a scan runs.
#include "engine/switch_scan.h"

#include "engine_fixture.h"

namespace zirvel_test {
namespace {

using zirvel::ScanEntry;

// An interval of whole wheel-timer periods, so steps land on ticks exactly.
constexpr std::uint64_t kInterval = 300;
constexpr char kScanning[] = R"({"scanEnabled": true, "scanInterval": 300, "scanLoops": 2})";
constexpr char kStepping[] =
    R"({"scanEnabled": true, "scanMode": "step", "scanStepKey": "space", "scanInterval": 300})";

std::string LetterFields(int count) {
    std::string actions;
    for (int i = 0; i < count; ++i) {
        actions += (i ? ", " : "") + std::string(R"({"name": "f", "key": ")") + static_cast<char>('a' + i % 26) + "\"}";
    }
    return R"({"actions": [)" + actions + "]}";
}

class SwitchScanTest : public EngineTest {
protected:
    // The hot key shows the wheel, and a window takes the foreground meanwhile.
    void Show() {
        platform_.PressHotKey();
        platform_.SetForeground(kOtherWindow);
    }
    ScanEntry Highlight() { return zirvel::WheelScanHighlight(engine()); }
    bool Scanning() { return zirvel::WheelScanRunning(engine()); }
    // `steps` intervals after the scan started (or last restarted).
    void WaitSteps(std::uint64_t steps) { platform_.Advance(steps * kInterval); }
};

TEST_F(SwitchScanTest, WithScanningOffTheHotKeyShowsAndHidesTheWheelOnly) {
    Start("{}", kFourDirectionFields);
    Show();
    EXPECT_EQ(OverlayIsWheelVisible(), 1);
    EXPECT_FALSE(Scanning());
    platform_.Advance(10000);
    EXPECT_EQ(OverlayIsWheelVisible(), 1);
    platform_.PressHotKey();
    EXPECT_EQ(OverlayIsWheelVisible(), 0);
}

TEST_F(SwitchScanTest, TheHotKeyShowsTheWheelAndTheHighlightMovesEveryIntervalExactly) {
    Start(kScanning, kFourDirectionFields);
    Show();
    EXPECT_EQ(OverlayIsWheelVisible(), 1);
    EXPECT_EQ(Highlight(), (ScanEntry{0, 1}));
    const int redraws = engine().wheelRedraws;
    platform_.Advance(kInterval - 1);
    EXPECT_EQ(Highlight(), (ScanEntry{0, 1}));
    platform_.Advance(1);
    EXPECT_EQ(Highlight(), (ScanEntry{1, 1}));
    EXPECT_EQ(engine().wheelRedraws, redraws + 1);
    platform_.Advance(kInterval);
    EXPECT_EQ(Highlight(), (ScanEntry{2, 1}));
}

TEST_F(SwitchScanTest, StepsFallDueOnTheScansOwnTimerNotOnTheWheelsTicks) {
    Start(R"({"scanEnabled": true, "scanInterval": 250})", kFourDirectionFields);  // not whole 15 ms ticks
    Show();
    ASSERT_TRUE(platform_.ScanTimerDue().has_value());
    EXPECT_EQ(*platform_.ScanTimerDue(), platform_.Now() + 250);
    platform_.Advance(249);
    EXPECT_EQ(Highlight(), (ScanEntry{0, 1}));
    platform_.Advance(1);
    EXPECT_EQ(Highlight(), (ScanEntry{1, 1}));
    platform_.Advance(250);
    EXPECT_EQ(Highlight(), (ScanEntry{2, 1}));
    platform_.PressHotKey();
    EXPECT_FALSE(platform_.ScanTimerDue().has_value());
}

TEST_F(SwitchScanTest, StepModeStartsNoScanTimer) {
    Start(kStepping, kFourDirectionFields);
    Show();
    EXPECT_FALSE(platform_.ScanTimerDue().has_value());
}

TEST_F(SwitchScanTest, AfterKIntervalsTheHotKeyRunsFieldKAsAClickDoes) {
    Start(kScanning, kFourDirectionFields);
    Show();
    WaitSteps(2);
    platform_.PressHotKey();
    EXPECT_FALSE(Scanning());
    ExpectFocusBackThenKeyAfter('C', 250);
}

TEST_F(SwitchScanTest, AfterTheFieldsComeGridHintsAndCloseWhichHidesTheWheel) {
    Start(kScanning, kFourDirectionFields);
    Show();
    WaitSteps(4);
    EXPECT_EQ(Highlight(), (ScanEntry{4, 1}));  // "siatka"
    WaitSteps(2);
    EXPECT_EQ(Highlight(), (ScanEntry{6, 1}));  // "zamknij"
    platform_.PressHotKey();
    EXPECT_EQ(OverlayIsWheelVisible(), 0);
    ExpectCursorAndFocusRestored();
    platform_.Advance(1000);
    EXPECT_TRUE(platform_.Injected().empty());
}

TEST_F(SwitchScanTest, GridChoiceHidesTheWheelAndShowsTheGrid) {
    Start(kScanning, kFourDirectionFields);
    Show();
    WaitSteps(4);
    platform_.PressHotKey();
    EXPECT_EQ(OverlayIsWheelVisible(), 0);
    EXPECT_TRUE(engine().gridVisible);
    EXPECT_EQ(engine().gridLevel, 1);
}

TEST_F(SwitchScanTest, AfterTheRoundsWithoutAPressTheWheelHides) {
    Start(kScanning, kFourDirectionFields);  // 7 choices, 2 rounds
    Show();
    platform_.Advance(2 * 7 * kInterval - 1);
    EXPECT_EQ(OverlayIsWheelVisible(), 1);
    EXPECT_EQ(Highlight(), (ScanEntry{6, 1}));
    platform_.Advance(1);
    EXPECT_EQ(OverlayIsWheelVisible(), 0);
    EXPECT_FALSE(Scanning());
    ExpectCursorAndFocusRestored();
    // The next press starts again from the first field.
    platform_.PressHotKey();
    EXPECT_EQ(Highlight(), (ScanEntry{0, 1}));
}

TEST_F(SwitchScanTest, TheRightArrowSwitchesTheWheelAndTheScanStartsAgainOnItsFirstField) {
    Start(kScanning, kTwoOneFieldWheels);  // field, right, left, grid, hints, close
    Show();
    WaitSteps(1);
    EXPECT_EQ(Highlight(), (ScanEntry{1, 1}));
    platform_.PressHotKey();
    EXPECT_EQ(OverlayIsWheelVisible(), 1);
    EXPECT_EQ(engine().configuration.currentWheel, 1);
    EXPECT_EQ(Highlight(), (ScanEntry{0, 1}));
    platform_.Advance(kInterval - 1);
    EXPECT_EQ(Highlight(), (ScanEntry{0, 1}));
    platform_.PressHotKey();
    ExpectFocusBackThenKeyAfter('B', 250);
}

TEST_F(SwitchScanTest, TheLeftArrowGoesToThePreviousWheel) {
    WriteFile("default.json", R"({"wheels": [{"actions": [{"key": "a"}]}, {"actions": [{"key": "b"}]},
                                              {"actions": [{"key": "c"}]}]})");
    Start(kScanning);
    Show();
    WaitSteps(2);
    platform_.PressHotKey();
    EXPECT_EQ(engine().configuration.currentWheel, 2);
}

TEST_F(SwitchScanTest, MoreThanEightFieldsAreScannedByQuartersFirst) {
    Start(kScanning, LetterFields(24));
    Show();
    EXPECT_EQ(Highlight(), (ScanEntry{0, 6}));
    WaitSteps(2);
    EXPECT_EQ(Highlight(), (ScanEntry{12, 6}));
    platform_.PressHotKey();
    EXPECT_EQ(OverlayIsWheelVisible(), 1);
    EXPECT_EQ(Highlight(), (ScanEntry{12, 1}));
    WaitSteps(3);
    platform_.PressHotKey();
    ExpectFocusBackThenKeyAfter('P', 250);  // field 15 types the sixteenth letter
}

TEST_F(SwitchScanTest, ARoundInAGroupWithoutAPressGoesBackToTheGroups) {
    Start(kScanning, LetterFields(12));
    Show();
    WaitSteps(1);
    platform_.PressHotKey();  // fields 3 to 5
    WaitSteps(3);
    EXPECT_EQ(Highlight(), (ScanEntry{3, 3}));
    EXPECT_EQ(OverlayIsWheelVisible(), 1);
}

TEST_F(SwitchScanTest, StepModeMovesOnlyOnTheStepKeyWhichIsHeldOnlyWhileScanning) {
    Start(kStepping, kFourDirectionFields);
    EXPECT_FALSE(platform_.RegisteredStepKey().has_value());
    Show();
    ASSERT_TRUE(platform_.RegisteredStepKey().has_value());
    EXPECT_EQ(platform_.RegisteredStepKey()->vk, 0x20);
    platform_.Advance(100 * kInterval);
    EXPECT_EQ(OverlayIsWheelVisible(), 1);
    EXPECT_EQ(Highlight(), (ScanEntry{0, 1}));
    platform_.PressStepKey();
    platform_.PressStepKey();
    platform_.PressStepKey();
    EXPECT_EQ(Highlight(), (ScanEntry{3, 1}));
    platform_.PressHotKey();
    EXPECT_FALSE(platform_.RegisteredStepKey().has_value());
    ExpectFocusBackThenKeyAfter('D', 250);
}

TEST_F(SwitchScanTest, AStepKeyAnotherProgramHoldsLeavesTheHighlightMovingByItself) {
    platform_.SetStepKeyTaken(true);
    Start(kStepping, kFourDirectionFields);
    Show();
    EXPECT_FALSE(platform_.RegisteredStepKey().has_value());
    WaitSteps(2);
    EXPECT_EQ(Highlight(), (ScanEntry{2, 1}));
}

TEST_F(SwitchScanTest, AutoModeHoldsNoStepKey) {
    Start(R"({"scanEnabled": true, "scanStepKey": "space"})", kFourDirectionFields);
    Show();
    EXPECT_FALSE(platform_.RegisteredStepKey().has_value());
    platform_.PressStepKey();
    EXPECT_EQ(Highlight(), (ScanEntry{0, 1}));
}

TEST_F(SwitchScanTest, AMouseClickOnAFieldTakesItAndEndsTheScan) {
    Start(kStepping, kFourDirectionFields);
    Show();
    MoveVirtualCursorTo(294 + 100, 230);  // field 1, while the scan is on field 0
    EXPECT_TRUE(Scanning());
    platform_.PressLeftButton();
    platform_.DispatchPosted();
    EXPECT_FALSE(Scanning());
    EXPECT_FALSE(platform_.RegisteredStepKey().has_value());
    EXPECT_EQ(OverlayIsWheelVisible(), 0);
    platform_.Advance(1000);
    ASSERT_FALSE(platform_.Injected().empty());
    EXPECT_EQ(platform_.Injected()[0].vk, 'B');
}

TEST_F(SwitchScanTest, AClickOnAnArrowSwitchesTheWheelAndTheScanStartsOnItsFirstField) {
    Start(kScanning, kTwoOneFieldWheels);
    Show();
    WaitSteps(3);
    MoveVirtualCursorTo(20, 230);  // the left arrow
    platform_.PressLeftButton();
    platform_.DispatchPosted();
    EXPECT_EQ(engine().configuration.currentWheel, 1);
    EXPECT_TRUE(Scanning());
    EXPECT_EQ(Highlight(), (ScanEntry{0, 1}));
}

TEST_F(SwitchScanTest, VoiceKeepsWorkingWhileScanning) {
    Start(kScanning, kTwoOneFieldWheels);
    Show();
    WaitSteps(2);
    PostVoice(platform_, zirvel::kNextWheelCommand);
    platform_.DispatchPosted();
    EXPECT_EQ(engine().configuration.currentWheel, 1);
    EXPECT_EQ(Highlight(), (ScanEntry{0, 1}));
    PostVoice(platform_, zirvel::kHideWheelCommand);
    platform_.DispatchPosted();
    EXPECT_EQ(OverlayIsWheelVisible(), 0);
    EXPECT_FALSE(Scanning());
}

TEST_F(SwitchScanTest, AWheelShownWithoutTheHotKeyIsNotScannedAndTheHotKeyHidesIt) {
    Start(kScanning, kFourDirectionFields);
    OverlayToggleWheel();
    EXPECT_FALSE(Scanning());
    Show();
    EXPECT_EQ(OverlayIsWheelVisible(), 0);
}

TEST_F(SwitchScanTest, AReloadWithScanningOffEndsTheScanAndReleasesTheStepKey) {
    Start(kStepping, kFourDirectionFields);
    Show();
    ASSERT_TRUE(platform_.RegisteredStepKey().has_value());
    WriteFile("config.json", R"({"scanEnabled": false})");
    OverlayReloadConfig();
    EXPECT_FALSE(Scanning());
    EXPECT_FALSE(platform_.RegisteredStepKey().has_value());
    EXPECT_EQ(OverlayIsWheelVisible(), 1);
    platform_.PressHotKey();
    EXPECT_EQ(OverlayIsWheelVisible(), 0);
}

TEST_F(SwitchScanTest, StoppingTheEngineReleasesTheStepKey) {
    Start(kStepping, kFourDirectionFields);
    Show();
    OverlayEngineStop();
    EXPECT_FALSE(platform_.RegisteredStepKey().has_value());
}

}  // namespace
}  // namespace zirvel_test
