#include "engine/switch_scan.h"

#include "engine/element_hints.h"
#include "engine/engine_dispatch.h"
#include "engine/engine_state.h"
#include "engine/function_runner.h"
#include "engine/grid.h"
#include "engine/renderer.h"
#include "engine/screen_scan.h"
#include "engine/wheel_overlay.h"

namespace zirvel {
namespace {

Platform& System() { return *Engine().platform; }

std::int32_t CurrentFieldCount(const EngineState& engine) {
    const auto& wheels = engine.Wheels();
    const auto index = static_cast<std::size_t>(engine.configuration.currentWheel);
    return index < wheels.size() ? static_cast<std::int32_t>(wheels[index].functions.size()) : 0;
}

// Holds the step key while a scan runs in step mode.
void HoldStepKey(EngineState& engine) {
    const EngineSettings& settings = engine.Settings();
    if (engine.scan.stepKeyRegistered || !settings.ScanSteppedByKey()) return;
    engine.scan.stepKeyRegistered = System().RegisterStepKey(settings.scanStepKeyCode);
}

// Step mode with its key held. A step key another program holds would
// leave the highlight stuck: it then moves by itself.
bool SteppedByKey(const EngineState& engine) {
    return engine.Settings().ScanSteppedByKey() && engine.scan.stepKeyRegistered;
}

void CloseWheel() {
    HideWheel();
    RestoreFocus();
}

// Auto mode: the scan's own timer falls due when the next step does; the
// wheel's 15 ms ticks alone would make steps up to 15 ms late.
void ScheduleNextStep() {
    EngineState& engine = Engine();
    if (engine.scan.target == ScanTarget::None || !engine.scan.scanner.Active() ||
        SteppedByKey(engine)) {
        return;
    }
    const std::uint64_t now = System().TickCount();
    const std::uint64_t due = engine.scan.scanner.NextStepAt();
    System().StartScanTimer(due > now ? static_cast<std::uint32_t>(due - now) : 0);
}

bool TimerSharedWithWheel(ScanTarget target) { return target == ScanTarget::Grid || target == ScanTarget::Hints; }

// No press for the set rounds: what the scan shows goes away.
void GiveUp() {
    const ScanTarget target = Engine().scan.target;
    StopSwitchScan();
    switch (target) {
        case ScanTarget::Wheel:
            if (Engine().wheelVisible) CloseWheel();
            break;
        case ScanTarget::Grid:
            HideGrid();
            break;
        case ScanTarget::Hints:
            HideHints();
            break;
        case ScanTarget::None:
            break;
    }
}

// A voice command changed the grid's level or hid what the scan shows.
void FollowScannedScreen() {
    if (ScannedScreenUnchanged()) return;
    const EngineState& engine = Engine();
    if (engine.scan.target == ScanTarget::Grid && engine.gridVisible && !engine.hintsVisible) {
        StartGridScan();
    } else {
        StopSwitchScan();
    }
}

void TakeWheelChoice(std::int32_t choice) {
    EngineState& engine = Engine();
    const std::int32_t fields = CurrentFieldCount(engine);
    if (choice < fields) {
        ChooseField(choice);
        return;
    }
    const std::vector<WheelExtra> extras = WheelScanExtras(engine.Wheels().size());
    const auto extra = static_cast<std::size_t>(choice - fields);
    if (extra >= extras.size()) return;
    switch (extras[extra]) {
        case WheelExtra::RightArrow:
            SwitchWheel(+1);
            break;
        case WheelExtra::LeftArrow:
            SwitchWheel(-1);
            break;
        case WheelExtra::Grid:
            CloseWheel();
            ShowGrid();
            StartGridScan();
            break;
        case WheelExtra::Hints:
            CloseWheel();
            engine.scan.scanHintsWhenShown = true;
            StartElementScan(false);
            break;
        case WheelExtra::Close:
            CloseWheel();
            break;
    }
}

}  // namespace

std::vector<WheelExtra> WheelScanExtras(std::size_t wheelCount) {
    std::vector<WheelExtra> extras;
    if (wheelCount >= 2) extras = {WheelExtra::RightArrow, WheelExtra::LeftArrow};
    extras.insert(extras.end(), {WheelExtra::Grid, WheelExtra::Hints, WheelExtra::Close});
    return extras;
}

void StartSwitchScan(ScanTarget target, std::vector<ScanEntry> entries) {
    EngineState& engine = Engine();
    const EngineSettings& settings = engine.Settings();
    engine.scan.target = target;
    engine.scan.scanner.Start(std::move(entries), System().TickCount(), settings.scanInterval, settings.scanLoops);
    HoldStepKey(engine);
    if (TimerSharedWithWheel(target) && !engine.wheelVisible) System().StartWheelTimer(kWheelTimerPeriod);
    ScheduleNextStep();
}

void RenderScanned() {
    switch (Engine().scan.target) {
        case ScanTarget::Wheel:
            RedrawWheel();
            break;
        case ScanTarget::Grid:
            RenderGrid();
            break;
        case ScanTarget::Hints:
            RenderHints();
            break;
        case ScanTarget::None:
            break;
    }
}

void StartWheelScan() {
    EngineState& engine = Engine();
    if (!engine.wheelVisible) return;
    const std::int32_t fields = CurrentFieldCount(engine);
    const auto choices = fields + static_cast<std::int32_t>(WheelScanExtras(engine.Wheels().size()).size());
    StartSwitchScan(ScanTarget::Wheel, GroupedEntries(choices, fields, kFieldGroupCount, kUngroupedFieldLimit));
    RedrawWheel();
}

void EndWheelScan() {
    const ScanTarget target = Engine().scan.target;
    if (target == ScanTarget::Wheel) StopSwitchScan();
    // Hiding the wheel stopped the timer a grid or hint scan steps on.
    if (TimerSharedWithWheel(target)) System().StartWheelTimer(kWheelTimerPeriod);
}

void RestartWheelScan() {
    if (Engine().scan.target == ScanTarget::Wheel) StartWheelScan();
}

void StopSwitchScan() {
    EngineState& engine = Engine();
    if (TimerSharedWithWheel(engine.scan.target) && !engine.wheelVisible) System().StopWheelTimer();
    engine.scan.target = ScanTarget::None;
    engine.scan.scanner.Stop();
    System().StopScanTimer();
    if (engine.scan.stepKeyRegistered) {
        System().UnregisterStepKey();
        engine.scan.stepKeyRegistered = false;
    }
}

void MatchScanToSettings() {
    EngineState& engine = Engine();
    if (engine.scan.target == ScanTarget::None) return;
    const ScanTarget target = engine.scan.target;
    StopSwitchScan();  // the step key may have changed
    if (engine.Settings().scanEnabled && target == ScanTarget::Wheel) StartWheelScan();
}

void PressSelectSwitch() {
    EngineState& engine = Engine();
    FollowScannedScreen();
    SwitchScanner& scanner = engine.scan.scanner;
    if (engine.scan.target == ScanTarget::None || !scanner.Active()) {
        ToggleWheel();
        if (engine.wheelVisible) StartWheelScan();
        return;
    }
    const ScanTarget target = engine.scan.target;
    const std::int32_t choice = scanner.Press(System().TickCount());
    if (choice < 0) {  // a group was entered
        RenderScanned();
        ScheduleNextStep();
        return;
    }
    switch (target) {
        case ScanTarget::Wheel:
            TakeWheelChoice(choice);
            break;
        case ScanTarget::Grid:
            TakeGridChoice(choice);
            break;
        case ScanTarget::Hints:
            TakeHintChoice(choice);
            break;
        case ScanTarget::None:
            break;
    }
}

void PressStepSwitch() {
    EngineState& engine = Engine();
    if (engine.scan.target == ScanTarget::None || !SteppedByKey(engine)) return;
    FollowScannedScreen();
    if (engine.scan.target == ScanTarget::None) return;
    if (engine.scan.scanner.Step(System().TickCount()) == SwitchScanner::Change::Moved) RenderScanned();
}

void SwitchScanTick() {
    EngineState& engine = Engine();
    if (engine.scan.target == ScanTarget::None) return;
    FollowScannedScreen();
    if (engine.scan.target == ScanTarget::None || SteppedByKey(engine)) return;
    switch (engine.scan.scanner.Tick(System().TickCount())) {
        case SwitchScanner::Change::Moved:
            RenderScanned();
            ScheduleNextStep();
            break;
        case SwitchScanner::Change::GaveUp:
            GiveUp();
            break;
        case SwitchScanner::Change::None:
            break;
    }
}

ScanEntry WheelScanHighlight(const EngineState& engine) {
    if (!WheelScanRunning(engine)) return {-1, 0};
    return engine.scan.scanner.Highlighted();
}

bool WheelScanRunning(const EngineState& engine) {
    return engine.scan.target == ScanTarget::Wheel && engine.scan.scanner.Active();
}

}  // namespace zirvel
