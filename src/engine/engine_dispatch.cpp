#include "engine/engine_dispatch.h"

#include "config/text.h"
#include "engine/element_hints.h"
#include "engine/engine_state.h"
#include "engine/function_runner.h"
#include "engine/grid.h"
#include "engine/host_notice.h"
#include "engine/reach_warning.h"
#include "engine/screen_scan.h"
#include "engine/switch_scan.h"
#include "engine/wheel_overlay.h"
#include "voice/voice_phrases.h"

namespace zirvel {
namespace {

// A voice-started function waits 100 ms when the wheel was hidden, or
// sendDelay after closing a visible wheel.
constexpr std::uint32_t kHiddenWheelStartDelay = 100;

void RunFromVoice(const WheelFunction& chosen) {
    EngineState& engine = Engine();
    const WheelFunction function = chosen;  // the list may change below
    const bool wasVisible = engine.wheelVisible;
    if (wasVisible) {
        HideWheel();
        RestoreFocus();
    }
    if (function.steps.empty()) return;
    RunFunction(function, wasVisible ? static_cast<std::uint32_t>(engine.Settings().sendDelay) : kHiddenWheelStartDelay);
}

void RunWheelFunction(std::int64_t wheel, std::int64_t field) {
    const auto& wheels = Engine().Wheels();
    if (wheel < 0 || static_cast<std::uint64_t>(wheel) >= wheels.size()) return;
    const auto& functions = wheels[static_cast<std::size_t>(wheel)].functions;
    if (field < 0 || static_cast<std::uint64_t>(field) >= functions.size()) return;
    RunFromVoice(functions[static_cast<std::size_t>(field)]);
}

void RunGlobalFunction(std::int64_t index) {
    const auto& functions = Engine().configuration.globalVoiceFunctions;
    if (index < 0 || static_cast<std::uint64_t>(index) >= functions.size()) return;
    RunFromVoice(functions[static_cast<std::size_t>(index)]);
}

void ShowSkippedPhrases(const std::u16string& phrases) {
    ShowHostNotice(u"Zirvel — komendy głosowe",
                   Concat({u"Pominięto frazy ze słowami spoza słownika modelu: ", phrases}), true);
}

class EngineEvents final : public PlatformEvents {
public:
    void OnHotKey() override {
        if (Engine().Settings().scanEnabled) {
            PressSelectSwitch();
        } else {
            ToggleWheel();
        }
    }
    void OnStepKey() override { PressStepSwitch(); }
    void OnRawMotion(std::int32_t dx, std::int32_t dy) override { AddRawMotion(dx, dy); }
    void OnCapturedLeftButtonDown() override { PostSelect(); }
    void OnWheelTimer() override {
        WheelTimerTick();
        SwitchScanTick();
    }
    void OnScanTimer() override { SwitchScanTick(); }
    void OnMessage(EngineMessage message) override { HandleEngineMessage(std::move(message)); }
};

}  // namespace

PlatformEvents& EngineEventSink() {
    static EngineEvents events;
    return events;
}

void ToggleWheel() {
    if (!Engine().wheelVisible) {
        ShowWheel();
        return;
    }
    HideWheel();
    RestoreFocus();
}

void HandleEngineMessage(EngineMessage message) {
    switch (message.kind) {
        case EngineMessageKind::Select:
            SelectUnderCursor();
            break;
        case EngineMessageKind::VoiceCommand:
            HandleVoiceCommand(static_cast<std::int32_t>(message.first));
            break;
        case EngineMessageKind::RunWheelFunction:
            RunWheelFunction(message.first, message.second);
            break;
        case EngineMessageKind::ElementScanResult:
            HandleElementScanResult(std::move(message.scanResult));
            ScanHintsIfAsked();
            break;
        case EngineMessageKind::SkippedPhrases:
            ShowSkippedPhrases(message.text);
            break;
        case EngineMessageKind::RunGlobalFunction:
            RunGlobalFunction(message.first);
            break;
        case EngineMessageKind::InputRefused:
            WarnInputRefused();
            break;
    }
}

void HandleVoiceCommand(std::int32_t code) {
    EngineState& engine = Engine();
    const bool visible = engine.wheelVisible;
    switch (code) {
        case kShowWheelCommand:
            if (!visible) ShowWheel();
            return;
        case kHideWheelCommand:
            if (visible) {
                HideWheel();
                RestoreFocus();
            }
            return;
        case kNextWheelCommand:
        case kPreviousWheelCommand:
            if (visible && engine.Wheels().size() >= 2) SwitchWheel(code == kNextWheelCommand ? +1 : -1);
            return;
        case kShowGridCommand:
            ShowGrid();
            return;
        case kHideGridCommand:
            HideGrid();
            return;
        case kClickCommand:
            if (visible) {
                PostSelect();
            } else {
                ClickMouse(kMouseLeft, 1);
            }
            return;
        case kDoubleClickCommand:
            ClickMouse(kMouseLeft, 2);
            return;
        case kRightClickCommand:
            ClickMouse(kMouseRight, 1);
            return;
        case kScanElementsCommand:
        case kScanPageElementsCommand:
            WarnWhenOutOfReach(engine.platform->ForegroundWindow(), ReachOccasion::ElementScan);
            StartElementScan(code == kScanPageElementsCommand);
            return;
        case kHideElementsCommand:
            CancelElementHints();
            return;
        default:
            break;
    }
    if (code > kNumberCommandBase && code <= kNumberCommandBase + kLastVoiceNumber) {
        const int number = code - kNumberCommandBase;
        if (engine.hintsVisible) {
            ClickHint(number, kMouseLeft, 1);
        } else if (engine.gridVisible) {
            NarrowGrid(number);
        }
    } else if (code > kDoubleClickNumberCommandBase && code <= kDoubleClickNumberCommandBase + kLastVoiceNumber) {
        ClickHint(code - kDoubleClickNumberCommandBase, kMouseLeft, 2);
    } else if (code > kRightClickNumberCommandBase && code <= kRightClickNumberCommandBase + kLastVoiceNumber) {
        ClickHint(code - kRightClickNumberCommandBase, kMouseRight, 1);
    }
}

}  // namespace zirvel
