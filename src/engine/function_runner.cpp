#include "engine/function_runner.h"

#include "engine/engine_state.h"
#include "engine/grid.h"
#include "engine/reach_warning.h"

namespace zirvel {
namespace {

// Lets the grid or hint picture disappear before the click lands.
constexpr std::uint32_t kClickJobDelay = 60;

Platform& System() { return *Engine().platform; }

// keyHold is read on every pause, so a reload changes running functions too.
std::uint32_t KeyHold() { return static_cast<std::uint32_t>(Engine().Settings().keyHold); }

// "Left" always means the primary button.
std::uint32_t PhysicalButton(std::uint32_t button) {
    if ((button == kMouseLeft || button == kMouseRight) && System().MouseButtonsSwapped()) {
        return button == kMouseLeft ? kMouseRight : kMouseLeft;
    }
    return button;
}

// The system refused a run's input: the GUI thread tells the user, once per run.
void ReportRefused() {
    EngineMessage message;
    message.kind = EngineMessageKind::InputRefused;
    System().Post(std::move(message));
}

bool SendButton(std::uint32_t button, bool press) {
    if (button > kMouseX2) return true;  // no such button: nothing happens
    return System().InjectMouseButton(PhysicalButton(button), press);
}

// Press and release `count` times, keyHold apart; used by Click steps and by
// the click jobs. False when the system refused any of it.
template <typename Send>
bool ClickRepeatedly(std::int32_t count, Send send) {
    bool taken = true;
    for (std::int32_t i = 0; i < count; ++i) {
        if (i > 0) System().Sleep(KeyHold());
        taken = send(true) && taken;
        System().Sleep(KeyHold());
        taken = send(false) && taken;
    }
    return taken;
}

// False when the system refused the step's input.
bool RunStep(const Step& step) {
    auto send = [&step](bool press) { return SendKeyEvent(step.key, press); };
    switch (step.kind) {
        case StepKind::Click:
            return ClickRepeatedly(step.value < 1 ? 1 : step.value, send);
        case StepKind::Hold: {
            bool taken = send(true);
            if (step.value >= 1) {  // 0 keeps it down until a Release step
                System().Sleep(static_cast<std::uint32_t>(step.value));
                taken = send(false) && taken;
            }
            return taken;
        }
        case StepKind::Release:
            return send(false);
        case StepKind::Open:
            System().OpenTarget(step.target);
            return true;
    }
    return true;
}

}  // namespace

bool SendKeyEvent(const KeyCode& key, bool press) {
    if (!key.valid) return true;
    if (key.isMouse) return SendButton(key.button, press);
    return System().InjectKey(key.vk, key.extended, press);
}

void RunFunctionJob(const FunctionJob& job) {
    System().Sleep(job.startDelay);
    const std::vector<Step>& steps = job.function.steps;
    bool taken = true;
    for (std::size_t i = 0; i < steps.size(); ++i) {
        if (i > 0 && job.function.delay > 0) System().Sleep(static_cast<std::uint32_t>(job.function.delay));
        taken = RunStep(steps[i]) && taken;
    }
    if (!taken) ReportRefused();
}

void RunFunction(const WheelFunction& function, std::uint32_t startDelay) {
    WarnWhenOutOfReach(System().ForegroundWindow(), ReachOccasion::FunctionRun);
    FunctionJob job{function, startDelay};
    System().RunDetached([job = std::move(job)] { RunFunctionJob(job); });
}

void RunMouseClickJob(const MouseClickJob& job) {
    System().Sleep(kClickJobDelay);
    const bool taken = ClickRepeatedly(static_cast<std::int32_t>(job.count),
                                       [&job](bool press) { return SendButton(job.button, press); });
    if (!taken) ReportRefused();
}

void ClickMouse(std::uint32_t button, std::uint32_t count) {
    if (Engine().gridVisible) HideGrid();
    const MouseClickJob job{button, count};
    System().RunDetached([job] { RunMouseClickJob(job); });
}

void RestoreFocus() {
    EngineState& engine = Engine();
    if (!engine.focusSaved) return;
    engine.focusSaved = false;
    System().SetCursorPosition(engine.savedCursor);
    const WindowHandle saved = engine.savedForeground;
    if (saved != 0 && System().IsWindow(saved) && System().ForegroundWindow() != saved) {
        System().GiveForeground(saved);
    }
}

}  // namespace zirvel
