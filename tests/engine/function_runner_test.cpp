#include "engine/function_runner.h"

#include "engine_fixture.h"

namespace zirvel_test {
namespace {

using zirvel::InjectedInput;
using zirvel::WheelFunction;


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
    zirvel::Step valid;
    valid.key = zirvel::ParseKeyName(u"b");
    valid.value = 1;
    function.steps = {invalid, valid};
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
