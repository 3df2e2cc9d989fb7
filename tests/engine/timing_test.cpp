// Every timing rule of the engine, run twice: exactly on the virtual clock,
// and on the real clock with a tolerance for the scheduler.
#include "core/engine_message.h"
#include "engine/function_runner.h"
#include "engine_fixture.h"

namespace zirvel_test {
namespace {

using zirvel::NullPlatform;

constexpr char kFourFields[] = R"({"actions": [
  {"name": "up", "key": "a"}, {"name": "right", "key": "b"}, {"name": "down", "key": "c"}, {"name": "left", "key": "d"}]})";

// How late a real-clock event may be: one wheel tick plus the late wake-ups
// of a loaded machine (and of ThreadSanitizer or Wine). The virtual clock
// checks the times exactly.
constexpr std::uint64_t kRealTimeTolerance = 250;

class TimingTest : public EngineTest, public ::testing::WithParamInterface<NullPlatform::Clock> {
protected:
    TimingTest() : EngineTest(GetParam()) {}

    bool Virtual() const { return GetParam() == NullPlatform::Clock::Virtual; }

    // `actual` happened `expected` ms after `origin`: exactly on the virtual
    // clock; on the real one never early and at most the tolerance late.
    void ExpectAfter(std::uint64_t origin, std::uint64_t actual, std::uint64_t expected, const char* what) {
        ASSERT_GE(actual, origin) << what;
        const std::uint64_t elapsed = actual - origin;
        if (Virtual()) {
            EXPECT_EQ(elapsed, expected) << what;
        } else {
            EXPECT_GE(elapsed + 1, expected) << what;  // the tick clock rounds down
            EXPECT_LE(elapsed, expected + kRealTimeTolerance) << what;
        }
    }

    std::vector<zirvel::InjectedInput> Injected() const { return platform_.Injected(); }

    // Runs the clock for `ms`, and on the real clock on (at most 3 s more)
    // until `count` events were injected; what was injected.
    std::vector<zirvel::InjectedInput> InjectedWithin(std::uint64_t ms, std::size_t count) {
        platform_.Advance(ms);
        for (int extra = 0; !Virtual() && Injected().size() < count && extra < 300; ++extra) platform_.Advance(10);
        return Injected();
    }

    // Gaze at a point of the wheel window on the 1920 x 1080 primary screen
    // and keep the sample fresh for one tick.
    void GazeFor(int x, int y, std::uint64_t ms) {
        const zirvel::ScreenRect wheel = platform_.SurfaceAt(zirvel::Surface::Wheel).rect;
        engine().gazePointX = (wheel.left + x) * 10000 / 1920;
        engine().gazePointY = (wheel.top + y) * 10000 / 1080;
        engine().lastGazeTick = platform_.Now();
        platform_.Advance(ms);
    }
};

TEST_P(TimingTest, StartDelayKeyHoldAndStepDelay) {
    Start(R"({"keyHold": 20})", R"({"actions": [{"name": "f", "delay": 100, "steps": [{"key": "a"}, {"key": "b"}]}]})");
    const std::uint64_t start = platform_.Now();
    zirvel::RunFunction(engine().Wheels()[0].functions[0], 150);
    const auto events = InjectedWithin(600, 4);
    ASSERT_EQ(events.size(), 4u);
    ExpectAfter(start, events[0].time, 150, "start delay");
    ExpectAfter(events[0].time, events[1].time, 20, "key hold");
    ExpectAfter(events[1].time, events[2].time, 100, "step delay");
    ExpectAfter(events[2].time, events[3].time, 20, "key hold of the last step");
}

TEST_P(TimingTest, RepeatedClicksAreKeyHoldApart) {
    Start(R"({"keyHold": 40})", R"({"actions": [{"name": "f", "steps": [{"key": "a", "value": 3}]}]})");
    const std::uint64_t start = platform_.Now();
    zirvel::RunFunction(engine().Wheels()[0].functions[0], 0);
    const auto events = InjectedWithin(400, 6);
    ASSERT_EQ(events.size(), 6u);
    ExpectAfter(start, events[0].time, 0, "first press");
    for (std::size_t i = 1; i < events.size(); ++i) ExpectAfter(events[i - 1].time, events[i].time, 40, "repeat");
}

TEST_P(TimingTest, HoldWithTimeReleasesAfterIt) {
    Start(R"({"keyHold": 20})", R"({"actions": [{"name": "f", "steps": [{"key": "shift", "action": "hold", "value": 250}]}]})");
    zirvel::RunFunction(engine().Wheels()[0].functions[0], 0);
    const auto events = InjectedWithin(500, 2);
    ASSERT_EQ(events.size(), 2u);
    ExpectAfter(events[0].time, events[1].time, 250, "hold time");
}

TEST_P(TimingTest, MouseClickJobWaitsSixtyMilliseconds) {
    Start(R"({"keyHold": 30})");
    const std::uint64_t start = platform_.Now();
    zirvel::ClickMouse(zirvel::kMouseLeft, 1);
    const auto events = InjectedWithin(300, 2);
    ASSERT_EQ(events.size(), 2u);
    ExpectAfter(start, events[0].time, 60, "click wait");
    ExpectAfter(events[0].time, events[1].time, 30, "button hold");
}

TEST_P(TimingTest, VoiceFunctionWaitsAHundredMillisecondsWithTheWheelHidden) {
    Start(R"({"keyHold": 10, "sendDelay": 300})", kFourFields);
    const std::uint64_t start = platform_.Now();
    PostRun(platform_, zirvel::EngineMessageKind::RunWheelFunction, 0, 1);
    ASSERT_EQ(InjectedWithin(400, 2).size(), 2u);
    EXPECT_EQ(Injected()[0].vk, 'B');
    ExpectAfter(start, Injected()[0].time, 100, "hidden-wheel start delay");
}

TEST_P(TimingTest, VoiceFunctionWaitsSendDelayAfterClosingTheWheel) {
    Start(R"({"keyHold": 10, "sendDelay": 300})", kFourFields);
    platform_.PressHotKey();
    const std::uint64_t start = platform_.Now();
    PostRun(platform_, zirvel::EngineMessageKind::RunWheelFunction, 0, 1);
    ASSERT_EQ(InjectedWithin(500, 2).size(), 2u);
    EXPECT_EQ(OverlayIsWheelVisible(), 0);
    ExpectAfter(start, Injected()[0].time, 300, "send delay");
}

TEST_P(TimingTest, DwellSelectsAfterGazeDwellThenSendDelay) {
    Start(R"({"gazeDwell": 300, "sendDelay": 90, "keyHold": 0})", kFourFields);
    engine().gazeStatus = zirvel::kGazeActive;
    platform_.Advance(750);  // the mouse has been still for long enough
    platform_.PressHotKey();
    GazeFor(294, 80, zirvel::kWheelTimerPeriod * 2);
    ASSERT_EQ(engine().dwellTarget, 0);
    const std::uint64_t dwellStart = engine().dwellStartTick;
    for (int tick = 0; tick < 60 && Injected().empty(); ++tick) GazeFor(294, 80, zirvel::kWheelTimerPeriod);
    ASSERT_FALSE(Injected().empty());
    EXPECT_EQ(Injected()[0].vk, 'A');
    // Selection on the first tick at gazeDwell (a multiple of the period),
    // then the function's start delay.
    ExpectAfter(dwellStart, Injected()[0].time, 300 + 90, "dwell and send delay");
}

TEST_P(TimingTest, GazeSteersAgainOnlyAfterSevenHundredMillisecondsOfStillness) {
    Start(R"({"gazeDwell": 0})", kFourFields);
    engine().gazeStatus = zirvel::kGazeActive;
    platform_.Advance(750);
    platform_.PressHotKey();
    GazeFor(294, 80, zirvel::kWheelTimerPeriod * 2);
    ASSERT_TRUE(engine().gazeDriven);
    platform_.MoveMouse(5, 5);
    GazeFor(294, 80, zirvel::kWheelTimerPeriod);
    ASSERT_FALSE(engine().gazeDriven);
    const std::uint64_t moved = engine().lastMouseMoveTick;
    std::uint64_t steeredAgain = 0;
    for (int tick = 0; tick < 100 && steeredAgain == 0; ++tick) {
        GazeFor(294, 80, zirvel::kWheelTimerPeriod);
        if (engine().gazeDriven) steeredAgain = platform_.Now();
    }
    ASSERT_NE(steeredAgain, 0u);
    // The first tick more than 700 ms after the motion: 705 on the virtual
    // clock's 15 ms grid; on the real clock ticks fall anywhere, so any
    // tick past 700 ms is on time.
    ExpectAfter(moved, steeredAgain, Virtual() ? 705 : 701, "stillness");
}

INSTANTIATE_TEST_SUITE_P(Clocks, TimingTest,
                         ::testing::Values(NullPlatform::Clock::Virtual, NullPlatform::Clock::Real),
                         [](const ::testing::TestParamInfo<NullPlatform::Clock>& info) {
                             return info.param == NullPlatform::Clock::Virtual ? std::string("Virtual")
                                                                               : std::string("Real");
                         });

}  // namespace
}  // namespace zirvel_test
