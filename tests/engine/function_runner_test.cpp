#include "engine/function_runner.h"

#include "engine_fixture.h"

namespace zirvel_test {
namespace {

using zirvel::InjectedInput;
using zirvel::StepKind;
using zirvel::WheelFunction;

// A step as the function editor may hold it, outside the reader's clamps.
zirvel::Step KeyStep(std::u16string_view key, StepKind kind, std::int32_t value) {
    zirvel::Step step;
    step.key = zirvel::ParseKeyName(key);
    step.kind = kind;
    step.value = value;
    return step;
}


class RunnerTest : public EngineTest {
protected:
    // Runs a function given as a wheels-file "actions" entry.
    void Run(const std::string& functionJson, std::uint32_t startDelay, const std::string& config = R"({"keyHold": 10})") {
        Start(config, R"({"actions": [)" + functionJson + "]}");
        zirvel::RunFunction(engine().Wheels()[0].functions[0], startDelay);
    }
    std::vector<InjectedInput> Injected() const { return platform_.Injected(); }
};

TEST_F(RunnerTest, StartDelayThenClickHeldForKeyHold) {
    Run(R"({"name": "f", "steps": [{"key": "a"}]})", 250);
    platform_.Advance(1000);
    const auto events = Injected();
    ASSERT_EQ(events.size(), 2u);
    EXPECT_EQ(events[0].time, 250u);
    EXPECT_TRUE(events[0].press);
    EXPECT_EQ(events[0].vk, 'A');
    EXPECT_EQ(events[1].time, 260u);
    EXPECT_FALSE(events[1].press);
}

TEST_F(RunnerTest, DelayPausesBetweenStepsOnly) {
    Run(R"({"name": "f", "delay": 500, "steps": [{"key": "a"}, {"key": "b"}, {"key": "c"}]})", 0);
    platform_.Advance(5000);
    const auto events = Injected();
    ASSERT_EQ(events.size(), 6u);
    EXPECT_EQ(events[0].time, 0u);    // no pause before the first step
    EXPECT_EQ(events[2].time, 510u);  // 10 ms hold, then 500 ms
    EXPECT_EQ(events[4].time, 1020u);
    EXPECT_EQ(events[5].time, 1030u);  // and none after the last
}

TEST_F(RunnerTest, ClickCountRepeatsKeyHoldApartAndZeroPressesOnce) {
    Run(R"({"name": "f", "steps": [{"key": "a", "value": 3}, {"key": "b", "value": 0}]})", 0);
    platform_.Advance(1000);
    const auto events = Injected();
    ASSERT_EQ(events.size(), 8u);
    // The default 30 ms between steps.
    const std::uint64_t expected[] = {0, 10, 20, 30, 40, 50, 80, 90};
    for (std::size_t i = 0; i < events.size(); ++i) {
        EXPECT_EQ(events[i].time, expected[i]) << i;
        EXPECT_EQ(events[i].press, i % 2 == 0) << i;
    }
    EXPECT_EQ(events[7].vk, 'B');
}

TEST_F(RunnerTest, HoldWithTimeReleasesAfterIt) {
    Run(R"({"name": "f", "steps": [{"key": "shift", "action": "hold", "value": 700}]})", 0);
    platform_.Advance(1000);
    const auto events = Injected();
    ASSERT_EQ(events.size(), 2u);
    EXPECT_EQ(events[1].time, 700u);
    EXPECT_FALSE(events[1].press);
}

TEST_F(RunnerTest, HoldOfZeroStaysDownUntilAnotherFunctionReleases) {
    Start(R"({"keyHold": 10})", R"({"actions": [
        {"name": "down", "steps": [{"key": "ctrl", "action": "hold"}]},
        {"name": "up", "steps": [{"key": "ctrl", "action": "release"}]}]})");
    zirvel::RunFunction(engine().Wheels()[0].functions[0], 0);
    platform_.Advance(5000);
    ASSERT_EQ(Injected().size(), 1u);
    EXPECT_TRUE(Injected()[0].press);
    zirvel::RunFunction(engine().Wheels()[0].functions[1], 0);
    platform_.Advance(10);
    ASSERT_EQ(Injected().size(), 2u);
    EXPECT_EQ(Injected()[1].vk, 0x11);
    EXPECT_FALSE(Injected()[1].press);
}

TEST_F(RunnerTest, ClickValuesBelowOnePressOnceAndHoldsBelowOneStayDown) {
    Start(R"({"keyHold": 10})");
    WheelFunction function;
    function.delay = 0;
    function.steps = {KeyStep(u"a", StepKind::Click, -3), KeyStep(u"b", StepKind::Click, 0),
                      KeyStep(u"shift", StepKind::Hold, -200)};
    zirvel::RunFunction(function, 0);
    platform_.Advance(5000);
    const auto events = Injected();
    ASSERT_EQ(events.size(), 5u);
    EXPECT_EQ(events[0].vk, 'A');
    EXPECT_FALSE(events[1].press);
    EXPECT_EQ(events[2].vk, 'B');
    EXPECT_FALSE(events[3].press);
    EXPECT_EQ(events[4].vk, 0x10);
    EXPECT_TRUE(events[4].press);  // and no release
}

TEST_F(RunnerTest, ARunKeepsItsStepsWhenTheWheelsChangeBeforeItStarts) {
    Start(R"({"keyHold": 10})", R"({"actions": [{"name": "f", "key": "a"}]})");
    PostRun(platform_, zirvel::EngineMessageKind::RunWheelFunction, 0, 0);  // starts in 100 ms
    platform_.DispatchPosted();
    WriteFile("other.json", R"({"actions": [{"name": "f", "key": "z"}]})");
    ASSERT_EQ(OverlayActivateWheelFile(PathOf("other.json").c_str()), 1);
    platform_.Advance(500);
    ASSERT_EQ(Injected().size(), 2u);
    EXPECT_EQ(Injected()[0].vk, 'A');

    PostRun(platform_, zirvel::EngineMessageKind::RunWheelFunction, 0, 0);
    platform_.DispatchPosted();
    WriteFile("default.json", R"({"actions": [{"name": "f", "key": "q"}]})");
    OverlayReloadConfig();
    ASSERT_EQ(engine().Wheels()[0].functions[0].steps[0].key.vk, 'Q');
    platform_.Advance(500);
    ASSERT_EQ(Injected().size(), 4u);
    EXPECT_EQ(Injected()[2].vk, 'Z');
}

TEST_F(RunnerTest, KeyHoldIsReadAgainAtEveryPause) {
    Run(R"({"name": "f", "steps": [{"key": "a", "value": 3}]})", 0, R"({"keyHold": 100})");
    platform_.Advance(150);  // in the pause after the first release
    WriteFile("config.json", R"({"keyHold": 10})");
    OverlayReloadConfig();
    platform_.Advance(500);
    const auto events = Injected();
    ASSERT_EQ(events.size(), 6u);
    const std::uint64_t expected[] = {0, 100, 200, 210, 220, 230};
    for (std::size_t i = 0; i < events.size(); ++i) EXPECT_EQ(events[i].time, expected[i]) << i;
}

TEST_F(RunnerTest, ExtendedKeysCarryTheFlagBothWays) {
    Run(R"({"name": "f", "steps": [{"key": "up"}, {"key": "a"}]})", 0);
    platform_.Advance(100);
    const auto events = Injected();
    ASSERT_EQ(events.size(), 4u);
    EXPECT_TRUE(events[0].extended);
    EXPECT_TRUE(events[1].extended);
    EXPECT_FALSE(events[2].extended);
}

TEST_F(RunnerTest, SwappedButtonsSendTheOtherButtonForLeftAndRight) {
    platform_.SetButtonsSwapped(true);
    Run(R"({"name": "f", "steps": [{"key": "lpm"}, {"key": "ppm"}, {"key": "mmb"}, {"key": "mb5"}]})", 0);
    platform_.Advance(500);
    const auto events = Injected();
    ASSERT_EQ(events.size(), 8u);
    EXPECT_EQ(events[0].kind, InjectedInput::Kind::MouseButton);
    EXPECT_EQ(events[0].button, zirvel::kMouseRight);
    EXPECT_EQ(events[2].button, zirvel::kMouseLeft);
    EXPECT_EQ(events[4].button, zirvel::kMouseMiddle);
    EXPECT_EQ(events[6].button, zirvel::kMouseX2);
}

TEST_F(RunnerTest, OpenStepsOpenTheirTarget) {
    Run(R"({"name": "f", "steps": [{"open": "https://example.org"}, {"key": "a"}]})", 40);
    platform_.Advance(100);
    ASSERT_EQ(platform_.Opened().size(), 1u);
    EXPECT_EQ(platform_.Opened()[0].target, u"https://example.org");
    EXPECT_EQ(platform_.Opened()[0].time, 40u);
}

TEST_F(RunnerTest, InvalidKeysSendNothingButKeepTheirPauses) {
    Start(R"({"keyHold": 10})", R"({"actions": [{"name": "f", "key": "a"}]})");
    WheelFunction function;
    function.delay = 100;
    zirvel::Step invalid;  // key not recognised
    function.steps = {invalid, KeyStep(u"b", StepKind::Click, 1)};
    zirvel::RunFunction(function, 0);
    platform_.Advance(500);
    ASSERT_EQ(Injected().size(), 2u);
    EXPECT_EQ(Injected()[0].time, 110u);
}

TEST_F(RunnerTest, ClickMouseWaitsSixtyMillisecondsAndHidesTheGrid) {
    Start(R"({"keyHold": 25})");
    engine().gridVisible = true;
    platform_.ShowSurface(zirvel::Surface::Grid);
    zirvel::ClickMouse(zirvel::kMouseLeft, 2);
    EXPECT_FALSE(engine().gridVisible);
    EXPECT_FALSE(platform_.SurfaceAt(zirvel::Surface::Grid).visible);
    platform_.Advance(500);
    const auto events = Injected();
    ASSERT_EQ(events.size(), 4u);
    const std::uint64_t expected[] = {60, 85, 110, 135};
    for (std::size_t i = 0; i < 4; ++i) EXPECT_EQ(events[i].time, expected[i]) << i;
}

TEST_F(RunnerTest, ClickMouseFollowsSwappedButtons) {
    Start(R"({"keyHold": 10})");
    platform_.SetButtonsSwapped(true);
    zirvel::ClickMouse(zirvel::kMouseLeft, 1);
    platform_.Advance(200);
    zirvel::ClickMouse(zirvel::kMouseRight, 1);
    platform_.Advance(200);
    zirvel::ClickMouse(zirvel::kMouseMiddle, 1);
    platform_.Advance(200);
    const auto events = Injected();
    ASSERT_EQ(events.size(), 6u);
    EXPECT_EQ(events[0].button, zirvel::kMouseRight);
    EXPECT_EQ(events[1].button, zirvel::kMouseRight);
    EXPECT_EQ(events[2].button, zirvel::kMouseLeft);
    EXPECT_EQ(events[4].button, zirvel::kMouseMiddle);
}

TEST_F(RunnerTest, ClickMouseOfNoClicksSendsNothingButStillHidesTheGrid) {
    Start(R"({"keyHold": 10})");
    PostVoice(platform_, zirvel::kShowGridCommand);
    platform_.DispatchPosted();
    ASSERT_TRUE(platform_.SurfaceAt(zirvel::Surface::Grid).visible);
    zirvel::ClickMouse(zirvel::kMouseLeft, 0);
    EXPECT_FALSE(engine().gridVisible);
    EXPECT_FALSE(platform_.SurfaceAt(zirvel::Surface::Grid).visible);
    platform_.Advance(500);
    EXPECT_TRUE(Injected().empty());
}

TEST_F(HintsTest, ClickMouseLeavesTheElementHintsShown) {
    Start(R"({"keyHold": 10})");
    ShowHints();
    PostVoice(platform_, zirvel::kClickCommand);
    platform_.Advance(200);
    EXPECT_TRUE(engine().hintsVisible);
    EXPECT_TRUE(platform_.SurfaceAt(zirvel::Surface::Grid).visible);
    EXPECT_TRUE(platform_.CursorMoves().empty());  // clicked where the cursor was
    ASSERT_EQ(platform_.Injected().size(), 2u);
    EXPECT_EQ(platform_.Injected()[0].button, zirvel::kMouseLeft);
}

TEST_F(RunnerTest, RestoreFocusActsOncePerShow) {
    Start();
    platform_.PressHotKey();
    platform_.SetForeground(kOtherWindow);
    zirvel::HideWheel();
    zirvel::RestoreFocus();
    ExpectCursorAndFocusRestored();
    platform_.SetForeground(kOtherWindow);
    platform_.SetCursor({1, 1});
    zirvel::RestoreFocus();
    EXPECT_EQ(platform_.CursorMoves().size(), 1u);
    EXPECT_EQ(platform_.ForegroundRequests().size(), 1u);
    EXPECT_EQ(platform_.CursorPosition(), (zirvel::ScreenPoint{1, 1}));
}

TEST_F(RunnerTest, RestoreFocusWithoutASavedForegroundOnlyMovesTheCursor) {
    Start();
    platform_.SetForeground(0);
    platform_.PressHotKey();
    platform_.SetForeground(kOtherWindow);
    zirvel::HideWheel();
    zirvel::RestoreFocus();
    ASSERT_EQ(platform_.CursorMoves().size(), 1u);
    EXPECT_EQ(platform_.CursorMoves()[0].point, kStartCursor);
    EXPECT_TRUE(platform_.ForegroundRequests().empty());
}

TEST_F(RunnerTest, RunsOverlapOnTheirOwnThreads) {
    Start(R"({"keyHold": 10})", R"({"actions": [{"name": "f", "steps": [{"key": "a", "value": 2}]}]})");
    zirvel::RunFunction(engine().Wheels()[0].functions[0], 0);
    platform_.Advance(5);
    zirvel::RunFunction(engine().Wheels()[0].functions[0], 0);
    platform_.Advance(100);
    EXPECT_EQ(Injected().size(), 8u);
    EXPECT_EQ(platform_.DetachedJobsStarted(), 2u);
}

}  // namespace
}  // namespace zirvel_test
