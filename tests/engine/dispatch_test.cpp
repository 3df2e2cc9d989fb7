#include "config/text.h"
#include "engine/function_runner.h"
#include "engine_fixture.h"
#include "navigation/grid_geometry.h"

namespace zirvel_test {
namespace {

using zirvel::Concat;

using zirvel::EngineMessage;
using zirvel::EngineMessageKind;

constexpr char kThreeWheels[] = R"({"wheels": [
  {"name": "A", "actions": [{"name": "a", "voice": "alfa", "key": "a"}, {"name": "empty"}]},
  {"name": "B", "actions": [{"name": "b", "key": "b"}]},
  {"name": "C", "actions": [{"name": "c", "key": "c"}]}]})";

TEST_F(EngineTest, NextWheelWrapsFromTheLastToTheFirst) {
    Start("{}", kThreeWheels);
    PostVoice(platform_, 3);
    platform_.Advance(15);
    EXPECT_EQ(engine().configuration.currentWheel, 0);  // hidden: nothing happens
    PostVoice(platform_, 1);
    PostVoice(platform_, 3);
    PostVoice(platform_, 3);
    platform_.Advance(15);
    EXPECT_EQ(engine().configuration.currentWheel, 2);
    PostVoice(platform_, 3);
    platform_.Advance(15);
    EXPECT_EQ(engine().configuration.currentWheel, 0);
    PostVoice(platform_, 4);
    platform_.Advance(15);
    EXPECT_EQ(engine().configuration.currentWheel, 2);
}

TEST_F(EngineTest, NextWheelWithASingleWheelDoesNothing) {
    Start("{}", R"({"actions": [{"name": "a", "key": "a"}]})");
    PostVoice(platform_, 1);
    platform_.Advance(15);
    const int redraws = engine().wheelRedraws;
    PostVoice(platform_, 3);
    platform_.Advance(15);
    EXPECT_EQ(engine().configuration.currentWheel, 0);
    EXPECT_EQ(engine().wheelRedraws, redraws);
}

TEST_F(EngineTest, ShowWheelCommandWhileTheWheelShowsChangesNothing) {
    Start("{}", kThreeWheels);
    PostVoice(platform_, 1);
    platform_.DispatchPosted();
    MoveVirtualCursorTo(294, 100);
    ASSERT_EQ(engine().hoveredField, 0);
    platform_.SetCursor({10, 10});  // where a second show would find the real cursor
    const int redraws = engine().wheelRedraws;
    PostVoice(platform_, 1);
    platform_.DispatchPosted();
    EXPECT_EQ(platform_.SurfaceAt(zirvel::Surface::Wheel).showCount, 1);
    EXPECT_EQ(engine().wheelRedraws, redraws);
    EXPECT_EQ(engine().cursorX, 294);
    EXPECT_EQ(engine().cursorY, 100);
    EXPECT_EQ(engine().hoveredField, 0);
    EXPECT_EQ(engine().savedCursor, kStartCursor);
}

TEST_F(EngineTest, HideWheelCommandRestoresCursorAndFocusOnlyWhenTheWheelShows) {
    Start("{}", kThreeWheels);
    PostVoice(platform_, 1);
    platform_.DispatchPosted();
    platform_.SetForeground(kOtherWindow);
    MoveVirtualCursorTo(400, 300);
    PostVoice(platform_, 2);
    platform_.DispatchPosted();
    EXPECT_EQ(OverlayIsWheelVisible(), 0);
    EXPECT_FALSE(platform_.PointerCaptured());
    ExpectCursorAndFocusRestored();

    // The engine's stop hides the wheel without restoring; the command then
    // finds it hidden and leaves cursor and focus alone.
    PostVoice(platform_, 1);
    platform_.DispatchPosted();
    OverlayEngineStop();
    platform_.SetForeground(kOtherWindow);
    PostVoice(platform_, 2);
    platform_.DispatchPosted();
    EXPECT_EQ(platform_.CursorMoves().size(), 1u);
    EXPECT_EQ(platform_.ForegroundRequests().size(), 1u);
}

TEST_F(EngineTest, SwitchingWheelsByVoiceHitTestsTheNewWheel) {
    Start("{}", R"({"wheels": [
      {"name": "A", "actions": [{"name": "right half", "key": "a"}, {"name": "left half", "key": "b"}]},
      {"name": "B", "actions": [{"name": "whole", "key": "c"}]}]})");
    PostVoice(platform_, 1);
    platform_.DispatchPosted();
    MoveVirtualCursorTo(194, 230);
    ASSERT_EQ(engine().hoveredField, 1);
    PostVoice(platform_, 3);
    platform_.DispatchPosted();  // no timer tick in between
    EXPECT_EQ(engine().configuration.currentWheel, 1);
    EXPECT_EQ(engine().hoveredField, 0);
    PostVoice(platform_, 4);
    platform_.DispatchPosted();
    EXPECT_EQ(engine().configuration.currentWheel, 0);
    EXPECT_EQ(engine().hoveredField, 1);
}

TEST_F(EngineTest, VoiceFunctionStartsAfter100MsWhenHiddenAndAfterSendDelayWhenVisible) {
    Start(R"({"sendDelay": 400, "keyHold": 10})", kThreeWheels);
    PostRun(platform_, EngineMessageKind::RunWheelFunction, 1, 0);
    platform_.DispatchPosted();
    const std::uint64_t hiddenStart = platform_.Now();
    platform_.Advance(1000);
    ASSERT_EQ(platform_.Injected().size(), 2u);
    EXPECT_EQ(platform_.Injected()[0].time - hiddenStart, 100u);
    EXPECT_EQ(platform_.Injected()[0].vk, 'B');  // not the current wheel, still runs

    PostVoice(platform_, 1);
    platform_.DispatchPosted();
    PostRun(platform_, EngineMessageKind::RunWheelFunction, 2, 0);
    platform_.DispatchPosted();
    const std::uint64_t visibleStart = platform_.Now();
    EXPECT_EQ(OverlayIsWheelVisible(), 0);
    platform_.Advance(1000);
    ASSERT_EQ(platform_.Injected().size(), 4u);
    EXPECT_EQ(platform_.Injected()[2].time - visibleStart, 400u);
}

TEST_F(EngineTest, VoiceFunctionOfAVisibleWheelRestoresFocusBeforeItRuns) {
    Start(R"({"sendDelay": 200, "keyHold": 10})", kThreeWheels);
    PostVoice(platform_, 1);
    platform_.DispatchPosted();
    platform_.SetForeground(kOtherWindow);
    PostRun(platform_, EngineMessageKind::RunWheelFunction, 1, 0);
    platform_.DispatchPosted();
    ExpectFocusBackThenKeyAfter('B', 200);
}

TEST_F(EngineTest, VoiceFunctionOfAnotherWheelLeavesTheCurrentWheel) {
    Start(R"({"keyHold": 10})", kThreeWheels);
    PostRun(platform_, EngineMessageKind::RunWheelFunction, 2, 0);
    platform_.DispatchPosted();
    EXPECT_EQ(engine().configuration.currentWheel, 0);

    PostVoice(platform_, 1);
    PostVoice(platform_, 3);
    platform_.DispatchPosted();
    ASSERT_EQ(engine().configuration.currentWheel, 1);
    PostRun(platform_, EngineMessageKind::RunWheelFunction, 2, 0);
    platform_.DispatchPosted();
    EXPECT_EQ(OverlayIsWheelVisible(), 0);
    EXPECT_EQ(engine().configuration.currentWheel, 1);
    platform_.Advance(1000);
    ASSERT_EQ(platform_.Injected().size(), 4u);
    EXPECT_EQ(platform_.Injected()[0].vk, 'C');
    EXPECT_EQ(platform_.Injected()[2].vk, 'C');
}

TEST_F(EngineTest, RunMessagesOutOfRangeAreIgnored) {
    Start("{}", kThreeWheels);
    PostRun(platform_, EngineMessageKind::RunWheelFunction, 0, 2);  // == field count
    PostRun(platform_, EngineMessageKind::RunWheelFunction, 3, 0);
    PostRun(platform_, EngineMessageKind::RunWheelFunction, -1, 0);
    PostRun(platform_, EngineMessageKind::RunGlobalFunction, 0);  // voice.json has none
    platform_.Advance(1000);
    EXPECT_TRUE(platform_.Injected().empty());
    EXPECT_EQ(platform_.DetachedJobsStarted(), 0u);
}

TEST_F(EngineTest, AFunctionWithoutStepsOnlyClosesTheWheel) {
    Start("{}", kThreeWheels);
    PostVoice(platform_, 1);
    PostRun(platform_, EngineMessageKind::RunWheelFunction, 0, 1);
    platform_.Advance(1000);
    EXPECT_EQ(OverlayIsWheelVisible(), 0);
    EXPECT_EQ(platform_.DetachedJobsStarted(), 0u);
}

TEST_F(EngineTest, GlobalVoiceFunctionRuns) {
    WriteFile("voice.json", R"({"actions": [{"name": "g", "voice": "gamma", "key": "g"}]})");
    Start(R"({"keyHold": 10})", kThreeWheels);
    PostRun(platform_, EngineMessageKind::RunGlobalFunction, 0);
    platform_.Advance(1000);
    ASSERT_EQ(platform_.Injected().size(), 2u);
    EXPECT_EQ(platform_.Injected()[0].vk, 'G');
    EXPECT_EQ(platform_.Injected()[0].time, 100u);
}

TEST_F(EngineTest, GlobalVoiceFunctionWithTheWheelShowingClosesItFirst) {
    WriteFile("voice.json", R"({"actions": [{"name": "g", "voice": "gamma", "key": "g"},
                                            {"name": "h", "voice": "eta", "key": "h"}]})");
    Start(R"({"sendDelay": 200, "keyHold": 10})", kThreeWheels);
    PostVoice(platform_, 1);
    platform_.DispatchPosted();
    platform_.SetForeground(kOtherWindow);

    PostRun(platform_, EngineMessageKind::RunGlobalFunction, 2);  // == the count
    PostRun(platform_, EngineMessageKind::RunGlobalFunction, -1);
    platform_.DispatchPosted();
    EXPECT_EQ(OverlayIsWheelVisible(), 1);
    EXPECT_TRUE(platform_.CursorMoves().empty());
    EXPECT_EQ(platform_.DetachedJobsStarted(), 0u);

    PostRun(platform_, EngineMessageKind::RunGlobalFunction, 1);
    platform_.DispatchPosted();
    ExpectFocusBackThenKeyAfter('H', 200);
}

TEST_F(EngineTest, ClickCommandSelectsWhileTheWheelShowsAndClicksOtherwise) {
    Start(R"({"sendDelay": 0, "keyHold": 10})", kThreeWheels);
    PostVoice(platform_, 7);
    platform_.Advance(200);
    ASSERT_EQ(platform_.Injected().size(), 2u);
    EXPECT_EQ(platform_.Injected()[0].kind, zirvel::InjectedInput::Kind::MouseButton);
    EXPECT_EQ(platform_.Injected()[0].time, 60u);

    PostVoice(platform_, 1);
    platform_.Advance(15);
    MoveVirtualCursorTo(294, 100);  // field 0 of wheel A
    PostVoice(platform_, 7);
    platform_.Advance(200);
    EXPECT_EQ(OverlayIsWheelVisible(), 0);
    ASSERT_EQ(platform_.Injected().size(), 4u);
    EXPECT_EQ(platform_.Injected()[2].vk, 'A');
}

TEST_F(EngineTest, DoubleAndRightClickCommands) {
    Start(R"({"keyHold": 10})");
    PostVoice(platform_, 8);
    platform_.Advance(200);
    ASSERT_EQ(platform_.Injected().size(), 4u);
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(platform_.Injected()[i].kind, zirvel::InjectedInput::Kind::MouseButton) << i;
        EXPECT_EQ(platform_.Injected()[i].button, zirvel::kMouseLeft) << i;
        EXPECT_EQ(platform_.Injected()[i].press, i % 2 == 0) << i;
    }
    PostVoice(platform_, 9);
    platform_.Advance(200);
    ASSERT_EQ(platform_.Injected().size(), 6u);
    EXPECT_EQ(platform_.Injected()[4].button, zirvel::kMouseRight);
}

TEST_F(EngineTest, GridNarrowsBySpokenNumbersAndMovesTheCursor) {
    platform_.SetCursor({100, 100});
    Start();
    PostVoice(platform_, 5);
    platform_.DispatchPosted();
    EXPECT_TRUE(engine().gridVisible);
    EXPECT_EQ(engine().gridRect, (zirvel::ScreenRect{0, 0, 1920, 1080}));
    EXPECT_EQ(platform_.CursorPosition(), (zirvel::ScreenPoint{960, 540}));
    PostVoice(platform_, 107);  // "siedem"
    platform_.DispatchPosted();
    EXPECT_EQ(engine().gridRect, (zirvel::ScreenRect{960, 270, 1440, 540}));
    EXPECT_EQ(platform_.CursorPosition(), (zirvel::ScreenPoint{1200, 405}));
    EXPECT_EQ(engine().gridLevel, 2);
    PostVoice(platform_, 105);  // 2 x 2 now: ignored
    platform_.DispatchPosted();
    EXPECT_EQ(engine().gridLevel, 2);
    EXPECT_EQ(engine().gridRedraws, 2);
    PostVoice(platform_, 6);
    platform_.DispatchPosted();
    EXPECT_FALSE(engine().gridVisible);
    EXPECT_FALSE(platform_.SurfaceAt(zirvel::Surface::Grid).visible);
    PostVoice(platform_, 101);  // no grid, no hints: nothing
    platform_.DispatchPosted();
    EXPECT_EQ(engine().gridLevel, 2);
}

TEST_F(EngineTest, GridCoversTheMonitorOfTheCursorOrElseThePrimary) {
    UseTwoMonitors();
    platform_.SetCursor({2500, 300});
    Start();
    PostVoice(platform_, 5);
    platform_.DispatchPosted();
    EXPECT_EQ(engine().gridRect, kRightMonitor);
    EXPECT_EQ(platform_.CursorPosition(), (zirvel::ScreenPoint{2560, 512}));

    platform_.SetCursor({5000, 300});  // right of every monitor, nearest to the second
    PostVoice(platform_, 5);
    platform_.DispatchPosted();
    EXPECT_EQ(engine().gridRect, kPrimaryMonitor);
    EXPECT_EQ(platform_.CursorPosition(), (zirvel::ScreenPoint{960, 540}));
}

TEST_F(EngineTest, ShowingTheGridAgainStartsOverWhereTheCursorIsNow) {
    UseTwoMonitors();
    platform_.SetCursor({100, 100});
    Start();
    PostVoice(platform_, 5);
    PostVoice(platform_, 107);
    platform_.DispatchPosted();
    ASSERT_EQ(engine().gridLevel, 2);
    platform_.SetCursor({2500, 300});
    PostVoice(platform_, 5);
    platform_.DispatchPosted();
    EXPECT_TRUE(engine().gridVisible);
    EXPECT_EQ(engine().gridLevel, 1);
    EXPECT_EQ(engine().gridRect, kRightMonitor);
    EXPECT_EQ(platform_.CursorPosition(), (zirvel::ScreenPoint{2560, 512}));
    PostVoice(platform_, 116);  // 4 x 4 again: the bottom-right cell exists
    platform_.DispatchPosted();
    EXPECT_EQ(engine().gridRect, (zirvel::ScreenRect{1920 + 960, 768, 3200, 1024}));
}

TEST_F(EngineTest, ClickAfterNarrowingHidesTheGridAndClicksAtTheAreaCentre) {
    Start(R"({"keyHold": 10})");
    PostVoice(platform_, 5);
    PostVoice(platform_, 107);
    platform_.DispatchPosted();
    const std::size_t moves = platform_.CursorMoves().size();
    const std::uint64_t said = platform_.Now();
    PostVoice(platform_, 7);
    platform_.DispatchPosted();
    EXPECT_FALSE(engine().gridVisible);
    EXPECT_FALSE(platform_.SurfaceAt(zirvel::Surface::Grid).visible);
    platform_.Advance(200);
    ASSERT_EQ(platform_.Injected().size(), 2u);
    EXPECT_EQ(platform_.Injected()[0].button, zirvel::kMouseLeft);
    EXPECT_EQ(platform_.Injected()[0].time - said, 60u);
    EXPECT_EQ(platform_.CursorPosition(), (zirvel::ScreenPoint{1200, 405}));
    EXPECT_EQ(platform_.CursorMoves().size(), moves);
}

TEST_F(EngineTest, NarrowingBelowOnePixelStillMovesTheCursor) {
    platform_.SetMonitors({{0, 0, 8, 4096}});
    platform_.SetCursor({4, 4});
    Start();
    PostVoice(platform_, 5);
    PostVoice(platform_, 101);  // {0, 0, 2, 1024}
    PostVoice(platform_, 103);  // {0, 512, 1, 1024}
    PostVoice(platform_, 103);  // {0, 768, 0, 1024}: no width left
    platform_.DispatchPosted();
    ASSERT_FALSE(zirvel::GridAreaDrawable(engine().gridRect));
    ASSERT_EQ(engine().gridLevel, 4);
    ASSERT_EQ(platform_.CursorPosition(), (zirvel::ScreenPoint{0, 896}));
    PostVoice(platform_, 103);
    platform_.DispatchPosted();
    EXPECT_EQ(engine().gridLevel, 5);
    EXPECT_EQ(engine().gridRect, (zirvel::ScreenRect{0, 896, 0, 1024}));
    EXPECT_EQ(platform_.CursorPosition(), (zirvel::ScreenPoint{0, 960}));
}

TEST_F(EngineTest, ScanCommandsHideAShowingGrid) {
    Start();
    for (const std::int32_t code : {10, 12}) {
        PostVoice(platform_, 5);
        platform_.DispatchPosted();
        ASSERT_TRUE(engine().gridVisible) << code;
        PostVoice(platform_, code);
        platform_.Advance(50);
        EXPECT_FALSE(engine().gridVisible) << code;
        EXPECT_FALSE(platform_.SurfaceAt(zirvel::Surface::Grid).visible) << code;
        EXPECT_EQ(engine().hintScanRunning, 0) << code;  // the empty result came
    }
}

TEST_F(EngineTest, ElementClickNumbersDoNothingOnTheGrid) {
    Start(R"({"keyHold": 10})");
    PostVoice(platform_, 5);
    platform_.DispatchPosted();
    const std::size_t moves = platform_.CursorMoves().size();
    Say("kliknij dwa razy na pięć");
    Say("kliknij prawy na pięć");
    platform_.Advance(200);
    EXPECT_TRUE(engine().gridVisible);
    EXPECT_TRUE(platform_.SurfaceAt(zirvel::Surface::Grid).visible);
    EXPECT_EQ(engine().gridLevel, 1);
    EXPECT_EQ(engine().gridRect, kPrimaryMonitor);
    EXPECT_EQ(platform_.CursorMoves().size(), moves);
    EXPECT_TRUE(platform_.Injected().empty());
    EXPECT_EQ(platform_.DetachedJobsStarted(), 0u);
}

TEST_F(HintsTest, TwoQuickRequestsStartOneScan) {
    Start(R"({"keyHold": 10})");
    PostVoice(platform_, 10);
    PostVoice(platform_, 12);
    platform_.Advance(50);
    EXPECT_EQ(platform_.DetachedJobsStarted(), 1u);
    EXPECT_EQ(scanner_.scans.load(), 1);
    EXPECT_TRUE(engine().hintsVisible);
    EXPECT_EQ(engine().hintRects.size(), 5u);
    EXPECT_EQ(engine().hintRedraws, 1);
    EXPECT_TRUE(platform_.SurfaceAt(zirvel::Surface::Grid).visible);
}

TEST_F(HintsTest, ANumberClicksTheCentreOfItsElement) {
    Start(R"({"keyHold": 10})");
    PostVoice(platform_, 12);
    platform_.Advance(50);
    EXPECT_EQ(scanner_.lastMode, zirvel::ElementScanMode::BrowserPage);
    PostVoice(platform_, 105);  // "pięć"
    platform_.Advance(200);
    EXPECT_FALSE(engine().hintsVisible);
    EXPECT_EQ(platform_.CursorPosition(), (zirvel::ScreenPoint{425, 25}));
    ASSERT_EQ(platform_.Injected().size(), 2u);
    EXPECT_EQ(platform_.Injected()[0].button, zirvel::kMouseLeft);
}

TEST_F(HintsTest, NumbersBeyondTheHintsDoNothing) {
    Start();
    PostVoice(platform_, 10);
    platform_.Advance(50);
    PostVoice(platform_, 106);
    PostVoice(platform_, 306);
    PostVoice(platform_, 506);
    platform_.Advance(200);
    EXPECT_TRUE(engine().hintsVisible);
    EXPECT_TRUE(platform_.Injected().empty());
    PostVoice(platform_, 502);
    platform_.Advance(200);
    ASSERT_EQ(platform_.Injected().size(), 2u);
    EXPECT_EQ(platform_.Injected()[0].button, zirvel::kMouseRight);
}

TEST_F(HintsTest, HidingDuringAScanDropsItsResult) {
    Start();
    PostVoice(platform_, 10);
    PostVoice(platform_, 11);  // arrives before the result
    platform_.Advance(50);
    EXPECT_FALSE(engine().hintsVisible);
    EXPECT_EQ(engine().hintRedraws, 0);
}

TEST_F(HintsTest, HidingTheGridKeepsHintsClickable) {
    Start(R"({"keyHold": 10})");
    PostVoice(platform_, 10);
    platform_.Advance(50);
    PostVoice(platform_, 6);
    platform_.Advance(15);
    EXPECT_FALSE(platform_.SurfaceAt(zirvel::Surface::Grid).visible);
    EXPECT_TRUE(engine().hintsVisible);
    PostVoice(platform_, 101);
    platform_.Advance(200);
    EXPECT_EQ(platform_.Injected().size(), 2u);
}

TEST_F(HintsTest, ShowingTheGridHidesTheHints) {
    Start();
    PostVoice(platform_, 10);
    platform_.Advance(50);
    PostVoice(platform_, 5);
    platform_.Advance(15);
    EXPECT_FALSE(engine().hintsVisible);
    EXPECT_TRUE(engine().gridVisible);
}

TEST_F(HintsTest, ShowElementsScansTheForegroundWindow) {
    Start();
    PostVoice(platform_, 10);
    platform_.Advance(50);
    EXPECT_EQ(scanner_.lastMode, zirvel::ElementScanMode::ForegroundWindow);
}

TEST_F(HintsTest, HideElementsHidesShownHints) {
    Start();
    ShowHints();
    ASSERT_TRUE(platform_.SurfaceAt(zirvel::Surface::Grid).visible);
    PostVoice(platform_, 11);
    platform_.DispatchPosted();
    EXPECT_FALSE(engine().hintsVisible);
    EXPECT_FALSE(platform_.SurfaceAt(zirvel::Surface::Grid).visible);
}

TEST_F(HintsTest, DoubleClickNumberClicksLeftTwiceAtTheElementCentre) {
    Start(R"({"keyHold": 10})");
    ShowHints();
    PostVoice(platform_, 303);
    platform_.Advance(200);
    EXPECT_FALSE(engine().hintsVisible);
    EXPECT_EQ(platform_.CursorPosition(), (zirvel::ScreenPoint{225, 25}));
    ASSERT_EQ(platform_.Injected().size(), 4u);
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(platform_.Injected()[i].button, zirvel::kMouseLeft) << i;
        EXPECT_EQ(platform_.Injected()[i].press, i % 2 == 0) << i;
    }
}

TEST_F(HintsTest, AnEmptyScanShowsNothingAndTheNextRequestScansAgain) {
    Start();
    ShowHints();
    PostVoice(platform_, 11);
    scanner_.elements = 0;
    PostVoice(platform_, 10);
    platform_.Advance(50);
    EXPECT_FALSE(engine().hintsVisible);  // not even the previous elements
    EXPECT_TRUE(engine().hintRects.empty());
    EXPECT_FALSE(platform_.SurfaceAt(zirvel::Surface::Grid).visible);
    EXPECT_EQ(engine().hintScanRunning, 0);
    EXPECT_EQ(engine().hintRedraws, 1);

    scanner_.elements = 3;
    PostVoice(platform_, 10);
    platform_.Advance(50);
    EXPECT_EQ(scanner_.scans, 3);
    EXPECT_TRUE(engine().hintsVisible);
    EXPECT_EQ(engine().hintRects.size(), 3u);
}

TEST_F(HintsTest, AResultAfterTheGridWasShownAgainReplacesTheGrid) {
    Start();
    PostVoice(platform_, 10);
    PostVoice(platform_, 5);  // handled before the scan's result
    platform_.Advance(50);
    EXPECT_EQ(engine().gridRedraws, 1);
    EXPECT_FALSE(engine().gridVisible);
    EXPECT_TRUE(engine().hintsVisible);
    EXPECT_TRUE(platform_.SurfaceAt(zirvel::Surface::Grid).visible);
    EXPECT_EQ(engine().hintRedraws, 1);
}

TEST_F(HintsTest, AStuckScanFlagIgnoresScanRequestsUntilHideElements) {
    Start();
    PostVoice(platform_, 5);
    platform_.DispatchPosted();
    engine().hintScanRunning = 1;  // as after a scan thread that could not start
    PostVoice(platform_, 10);
    PostVoice(platform_, 12);
    platform_.Advance(50);
    EXPECT_EQ(platform_.DetachedJobsStarted(), 0u);
    EXPECT_TRUE(engine().gridVisible);  // an ignored request leaves the grid
    PostVoice(platform_, 11);
    platform_.DispatchPosted();
    EXPECT_EQ(engine().hintScanRunning, 0);
    PostVoice(platform_, 10);
    platform_.Advance(50);
    EXPECT_EQ(scanner_.scans, 1);
    EXPECT_TRUE(engine().hintsVisible);
}

void PostScanResult(zirvel::NullPlatform& platform, std::unique_ptr<zirvel::ElementScanResult> result) {
    EngineMessage message;
    message.kind = EngineMessageKind::ElementScanResult;
    message.scanResult = std::move(result);
    platform.Post(std::move(message));
}

TEST_F(HintsTest, AfterAHintClickNumbersDoNothingUntilHintsShowAgain) {
    Start(R"({"keyHold": 10})");
    ShowHints();
    PostVoice(platform_, 101);
    platform_.Advance(200);
    ASSERT_EQ(platform_.Injected().size(), 2u);
    EXPECT_FALSE(engine().hintsVisible);
    PostVoice(platform_, 102);
    platform_.Advance(200);
    EXPECT_EQ(platform_.Injected().size(), 2u);
    EXPECT_EQ(platform_.CursorMoves().size(), 1u);

    // A scan that ends without a record shows the elements it had before.
    engine().hintScanRunning = 1;
    PostScanResult(platform_, nullptr);
    platform_.DispatchPosted();
    EXPECT_EQ(engine().hintScanRunning, 0);
    EXPECT_TRUE(engine().hintsVisible);
    EXPECT_EQ(engine().hintRects.size(), 5u);
    EXPECT_TRUE(platform_.SurfaceAt(zirvel::Surface::Grid).visible);
    EXPECT_EQ(engine().hintRedraws, 2);
}

TEST_F(HintsTest, IgnoredCommandCodesChangeNothing) {
    Start(R"({"keyHold": 10})", kThreeWheels);
    const std::int32_t ignored[] = {0, 13, 100, 200, 300, 400, 600, 1000};
    PostVoice(platform_, 1);
    PostVoice(platform_, 5);
    platform_.DispatchPosted();
    const int wheelRedraws = engine().wheelRedraws;
    for (const std::int32_t code : ignored) PostVoice(platform_, code);
    platform_.DispatchPosted();
    EXPECT_EQ(OverlayIsWheelVisible(), 1);
    EXPECT_EQ(engine().configuration.currentWheel, 0);
    EXPECT_EQ(engine().wheelRedraws, wheelRedraws);
    EXPECT_TRUE(engine().gridVisible);
    EXPECT_EQ(engine().gridLevel, 1);
    EXPECT_EQ(engine().gridRect, kPrimaryMonitor);
    EXPECT_EQ(engine().gridRedraws, 1);

    PostVoice(platform_, 2);
    ShowHints();
    const std::size_t moves = platform_.CursorMoves().size();
    for (const std::int32_t code : ignored) PostVoice(platform_, code);
    platform_.Advance(200);
    EXPECT_TRUE(engine().hintsVisible);
    EXPECT_EQ(platform_.CursorMoves().size(), moves);
    EXPECT_TRUE(platform_.Injected().empty());
    EXPECT_EQ(platform_.DetachedJobsStarted(), 1u);  // the scan only
    EXPECT_EQ(OverlayIsWheelVisible(), 0);
}

void PostSkipped(zirvel::NullPlatform& platform, std::u16string phrases) {
    EngineMessage message;
    message.kind = EngineMessageKind::SkippedPhrases;
    message.text = std::move(phrases);
    platform.Post(std::move(message));
}

// The engine started by the stand-alone host, which has a tray icon.
class HostEngineTest : public EngineTest {};

TEST_F(HostEngineTest, SkippedPhrasesShowAWarningNotice) {
    StartStandAlone();
    PostSkipped(platform_, u"\u201Eskok w bok\u201D, \u201Equux\u201D");
    platform_.DispatchPosted();
    ASSERT_EQ(platform_.TrayNotices().size(), 1u);
    EXPECT_EQ(platform_.TrayNotices()[0],
              u"Zirvel \u2014 komendy g\u0142osowe|Pomini\u0119to frazy ze s\u0142owami spoza s\u0142ownika modelu: "
              u"\u201Eskok w bok\u201D, \u201Equux\u201D");
}

TEST_F(HostEngineTest, ALongSkippedListIsCutTo255Units) {
    StartStandAlone();
    PostSkipped(platform_, std::u16string(400, u'x'));
    platform_.DispatchPosted();
    ASSERT_EQ(platform_.TrayNotices().size(), 1u);
    const std::u16string notice = platform_.TrayNotices()[0];
    const std::u16string text = notice.substr(notice.find(u'|') + 1);
    EXPECT_EQ(text.size(), 255u);
    EXPECT_EQ(text.substr(0, 50), u"Pomini\u0119to frazy ze s\u0142owami spoza s\u0142ownika modelu: ");
}

TEST_F(EngineTest, SkippedPhrasesShowNothingUnderTheFrontEnd) {
    Start();
    PostSkipped(platform_, u"\u201Equux\u201D");
    platform_.DispatchPosted();
    EXPECT_TRUE(platform_.TrayNotices().empty());
}

TEST_F(HostEngineTest, AHandedOverWheelFileIsActivatedAndNamedInTheTray) {
    StartStandAlone();
    WriteFile("games.json", R"({"wheels": [{"name": "G", "actions": [{"name": "g", "key": "g"}]}]})");
    EXPECT_TRUE(zirvel::ActivateHandedOverWheelFile(PathOf("games.json")));
    EXPECT_EQ(engine().Wheels()[0].name, u"G");
    ASSERT_EQ(platform_.TrayNotices().size(), 1u);
    EXPECT_EQ(platform_.TrayNotices()[0], Concat({u"Zirvel|Aktywowano konfigurację: ", PathOf("games.json")}));
}

TEST_F(HostEngineTest, AHandedOverFileWithoutFunctionsChangesNothing) {
    StartStandAlone();
    WriteFile("empty.json", R"({"wheels": [{"name": "E", "actions": []}]})");
    EXPECT_FALSE(zirvel::ActivateHandedOverWheelFile(PathOf("empty.json")));
    EXPECT_FALSE(zirvel::ActivateHandedOverWheelFile(u""));
    EXPECT_FALSE(zirvel::ActivateHandedOverWheelFile(PathOf("missing.json")));
    EXPECT_TRUE(platform_.TrayNotices().empty());
    EXPECT_EQ(engine().Wheels().size(), 1u);  // the first-run wheel stays
}

TEST_F(HostEngineTest, AHandedOverPathWithANulInsideIsRefused) {
    StartStandAlone();
    WriteFile("games.json", R"({"wheels": [{"name": "G", "actions": [{"name": "g", "key": "g"}]}]})");
    // The system would open the file named before the NUL; no file's name holds one.
    std::u16string path = PathOf("games.json");
    path += u'\0';
    path += u"whatever";
    EXPECT_FALSE(zirvel::ActivateHandedOverWheelFile(path));
    EXPECT_NE(engine().Wheels()[0].name, u"G");
    EXPECT_TRUE(platform_.TrayNotices().empty());
}

TEST_F(EngineTest, AHandedOverFileShowsNoNoticeUnderTheFrontEnd) {
    Start();
    WriteFile("games.json", R"({"actions": [{"name": "g", "key": "g"}]})");
    EXPECT_TRUE(zirvel::ActivateHandedOverWheelFile(PathOf("games.json")));
    EXPECT_TRUE(platform_.TrayNotices().empty());
}

TEST_F(EngineTest, WithoutVoiceGlobalAWheelPhraseRunsOnlyWhileTheWheelShows) {
    Start(R"({"voiceGlobal": false, "sendDelay": 0, "keyHold": 10})", kThreeWheels);
    Say("alfa");
    platform_.Advance(500);
    EXPECT_TRUE(platform_.Injected().empty());
    EXPECT_EQ(platform_.DetachedJobsStarted(), 0u);

    platform_.PressHotKey();
    Say("alfa");
    platform_.Advance(500);
    EXPECT_EQ(OverlayIsWheelVisible(), 0);
    ASSERT_EQ(platform_.Injected().size(), 2u);
    EXPECT_EQ(platform_.Injected()[0].vk, 'A');

    WriteFile("config.json", R"({"voiceGlobal": true, "keyHold": 10})");
    OverlayReloadConfig();
    Say("alfa");
    platform_.Advance(500);
    EXPECT_EQ(platform_.Injected().size(), 4u);
}

}  // namespace
}  // namespace zirvel_test
