#include "engine/function_runner.h"

#include "engine/engine_state.h"
#include "navigation/grid.h"

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

void SendButton(std::uint32_t button, bool press) {
    if (button > kMouseX2) return;  // no such button: nothing happens
    System().InjectMouseButton(PhysicalButton(button), press);
}

// Press and release `count` times, keyHold apart; used by Click steps and by
// the click jobs.
template <typename Send>
void ClickRepeatedly(std::int32_t count, Send send) {
    for (std::int32_t i = 0; i < count; ++i) {
        if (i > 0) System().Sleep(KeyHold());
        send(true);
        System().Sleep(KeyHold());
        send(false);
    }
}

void RunStep(const Step& step) {
    auto send = [&step](bool press) { SendKeyEvent(step.key, press); };
    switch (step.kind) {
        case StepKind::Click:
            ClickRepeatedly(step.value < 1 ? 1 : step.value, send);
            break;
        case StepKind::Hold:
            send(true);
            if (step.value >= 1) {  // 0 keeps it down until a Release step
                System().Sleep(static_cast<std::uint32_t>(step.value));
                send(false);
            }
            break;
        case StepKind::Release:
            send(false);
            break;
        case StepKind::Open:
            System().OpenTarget(step.target);
            break;
    }
}

}  // namespace

void SendKeyEvent(const KeyCode& key, bool press) {
    if (!key.valid) return;
    if (key.isMouse) {
        SendButton(key.button, press);
    } else {
        System().InjectKey(key.vk, key.extended, press);
    }
}

void RunFunctionJob(const FunctionJob& job) {
    System().Sleep(job.startDelay);
    const std::vector<Step>& steps = job.function.steps;
    for (std::size_t i = 0; i < steps.size(); ++i) {
        if (i > 0 && job.function.delay > 0) System().Sleep(static_cast<std::uint32_t>(job.function.delay));
        RunStep(steps[i]);
    }
}

void RunFunction(const WheelFunction& function, std::uint32_t startDelay) {
    FunctionJob job{function, startDelay};
    System().RunDetached([job = std::move(job)] { RunFunctionJob(job); });
}

void RunMouseClickJob(const MouseClickJob& job) {
    System().Sleep(kClickJobDelay);
    ClickRepeatedly(static_cast<std::int32_t>(job.count), [&job](bool press) { SendButton(job.button, press); });
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
