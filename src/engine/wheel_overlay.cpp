#include "engine/wheel_overlay.h"

#include <cmath>
#include <numbers>

#include "core/engine_message.h"
#include "engine/engine_state.h"
#include "engine/function_runner.h"
#include "engine/reach_warning.h"
#include "engine/renderer.h"
#include "engine/switch_scan.h"
#include "engine/wheel_choice.h"

namespace zirvel {
namespace {

// The gaze steers only while fresh and while the mouse has been still.
constexpr std::uint64_t kGazeFreshness = 250;
constexpr std::uint64_t kMouseStillness = 700;
constexpr float kGazePull = 0.35f;
constexpr std::int32_t kArrowDwellBase = 100;

Platform& System() { return *Engine().platform; }

std::size_t CurrentFieldCount() {
    const EngineState& engine = Engine();
    const auto& wheels = engine.Wheels();
    const auto index = static_cast<std::size_t>(engine.configuration.currentWheel);
    return index < wheels.size() ? wheels[index].functions.size() : 0;
}

// Moves the virtual cursor towards the gaze point; true when it moved.
bool SteerByGaze(EngineState& engine) {
    const ScreenPoint screen = System().PrimaryScreenSize();
    const float gazeX = static_cast<float>(engine.gazePointX.load()) / 10000.0f;
    const float gazeY = static_cast<float>(engine.gazePointY.load()) / 10000.0f;
    const float targetX = static_cast<float>(screen.x) * gazeX - static_cast<float>(engine.wheelOrigin.x);
    const float targetY = static_cast<float>(screen.y) * gazeY - static_cast<float>(engine.wheelOrigin.y);
    const auto stepX = static_cast<std::int32_t>(kGazePull * (targetX - static_cast<float>(engine.cursorX)));
    const auto stepY = static_cast<std::int32_t>(kGazePull * (targetY - static_cast<float>(engine.cursorY)));
    engine.cursorX += stepX;
    engine.cursorY += stepY;
    engine.gazeDriven = true;
    return stepX != 0 || stepY != 0;
}

}  // namespace

void RedrawWheel() { RenderWheel(); }

void PostSelect() {
    EngineMessage message;
    message.kind = EngineMessageKind::Select;
    System().Post(std::move(message));
}

void ShowWheel() {
    EngineState& engine = Engine();
    engine.savedCursor = System().CursorPosition();
    engine.savedForeground = System().ForegroundWindow();
    engine.focusSaved = true;
    WarnWhenOutOfReach(engine.savedForeground, ReachOccasion::WheelShown);
    ChooseWheelForProgram(engine.savedForeground);

    const ScreenRect monitor = System().MonitorRect(engine.savedCursor, true);
    engine.wheel = WheelGeometryAt(System().MonitorDpi(engine.savedCursor));
    const WheelGeometry& wheel = engine.wheel;
    engine.wheelOrigin = {(monitor.left + monitor.right - wheel.width) / 2,
                          (monitor.top + monitor.bottom - wheel.height) / 2};
    System().PlaceSurface(Surface::Wheel, {engine.wheelOrigin.x, engine.wheelOrigin.y,
                                           engine.wheelOrigin.x + wheel.width, engine.wheelOrigin.y + wheel.height});

    engine.hoveredField = -1;
    engine.hoveredArrow = -1;
    engine.dwellTarget = -1;
    engine.dwellProgress = 0.0f;
    engine.gazeDriven = false;
    engine.lastMouseMoveTick = 0;
    engine.pendingDX = 0;
    engine.pendingDY = 0;
    engine.motionRemainderX = 0;
    engine.motionRemainderY = 0;
    engine.cursorX = wheel.centreX;
    engine.cursorY = wheel.centreY;

    RedrawWheel();  // the first frame is ready before the window shows
    System().ShowSurface(Surface::Wheel);
    engine.wheelVisible = true;

    if (engine.Settings().takeFocus && engine.savedForeground != 0) {
        System().TakeForegroundForWheel(engine.savedForeground);
    }
    System().BeginPointerCapture(engine.savedCursor);
    System().StartWheelTimer(kWheelTimerPeriod);
}

void HideWheel() {
    EngineState& engine = Engine();
    System().StopWheelTimer();
    System().EndPointerCapture();
    System().HideSurface(Surface::Wheel);
    engine.wheelVisible = false;
    RememberGeneralWheel();
    engine.hoveredField = -1;
    engine.gazeDriven = false;
    engine.dwellTarget = -1;
    engine.dwellProgress = 0.0f;
    EndWheelScan();
}

std::int32_t HitTestField(std::int32_t x, std::int32_t y) {
    const WheelGeometry& wheel = Engine().wheel;
    const double dx = static_cast<double>(x - wheel.centreX);
    const double dy = static_cast<double>(y - wheel.centreY);
    const double radius = std::sqrt(dx * dx + dy * dy);
    if (radius < wheel.ringInnerRadius || radius > wheel.ringOuterRadius) return -1;
    const std::size_t count = CurrentFieldCount();
    if (count == 0) return -1;
    const double sectorWidth = 360.0 / static_cast<double>(count);
    // 0 degrees straight up, growing clockwise on screen.
    double angle = std::atan2(dy, dx) * 180.0 / std::numbers::pi + 90.0;
    if (angle < 0.0) angle += 360.0;
    return static_cast<std::int32_t>(static_cast<std::size_t>(std::trunc(angle / sectorWidth)) % count);
}

std::int32_t HitTestArrow(std::int32_t x, std::int32_t y) {
    const EngineState& engine = Engine();
    if (engine.Wheels().size() < 2) return -1;
    const ScreenPoint point{x, y};
    if (engine.wheel.leftArrow.Contains(point)) return 0;
    if (engine.wheel.rightArrow.Contains(point)) return 1;
    return -1;
}

void AddRawMotion(std::int32_t dx, std::int32_t dy) {
    EngineState& engine = Engine();
    if (!engine.wheelVisible) return;
    engine.pendingDX += dx;
    engine.pendingDY += dy;
}

void WheelTimerTick() {
    EngineState& engine = Engine();
    if (!engine.wheelVisible) return;
    const std::uint64_t now = System().TickCount();
    const EngineSettings& settings = engine.Settings();
    bool changed = false;

    if (engine.pendingDX != 0 || engine.pendingDY != 0) {
        // Counts scale with the wheel: one hand movement reaches one field at any DPI.
        engine.cursorX += CountsToPixels(engine.pendingDX, engine.wheel.dpi, engine.motionRemainderX);
        engine.cursorY += CountsToPixels(engine.pendingDY, engine.wheel.dpi, engine.motionRemainderY);
        engine.pendingDX = 0;
        engine.pendingDY = 0;
        engine.lastMouseMoveTick = now;
        engine.gazeDriven = false;
        changed = true;
    } else if (settings.gazeEnabled && engine.gazeStatus.load() == kGazeActive &&
               now - engine.lastGazeTick.load() < kGazeFreshness && now - engine.lastMouseMoveTick > kMouseStillness) {
        changed = SteerByGaze(engine);
    }

    if (engine.cursorX < 0) engine.cursorX = 0;
    if (engine.cursorX > engine.wheel.width - 1) engine.cursorX = engine.wheel.width - 1;
    if (engine.cursorY < 0) engine.cursorY = 0;
    if (engine.cursorY > engine.wheel.height - 1) engine.cursorY = engine.wheel.height - 1;

    const std::int32_t field = HitTestField(engine.cursorX, engine.cursorY);
    const std::int32_t arrow = HitTestArrow(engine.cursorX, engine.cursorY);
    if (field != engine.hoveredField || arrow != engine.hoveredArrow) {
        engine.hoveredField = field;
        engine.hoveredArrow = arrow;
        changed = true;
    }

    const std::int32_t target = field >= 0 ? field : (arrow >= 0 ? kArrowDwellBase + arrow : -1);
    if (engine.gazeDriven && settings.gazeDwell >= 1 && target >= 0) {
        if (target != engine.dwellTarget) {
            engine.dwellTarget = target;
            engine.dwellStartTick = now;
        }
        const float progress =
            static_cast<float>(now - engine.dwellStartTick) / static_cast<float>(settings.gazeDwell);
        if (progress < 1.0f) {
            const bool progressChanged = progress != engine.dwellProgress;
            engine.dwellProgress = progress;
            if (progressChanged || changed) RedrawWheel();
            return;
        }
        engine.dwellTarget = -1;
        engine.dwellProgress = 0.0f;
        PostSelect();
        return;
    }

    const bool hadProgress = engine.dwellProgress != 0.0f;
    engine.dwellTarget = -1;
    engine.dwellProgress = 0.0f;
    if (hadProgress || changed) RedrawWheel();
}

void SwitchWheel(int direction) {
    EngineState& engine = Engine();
    const auto count = static_cast<std::int32_t>(engine.Wheels().size());
    std::int32_t& current = engine.configuration.currentWheel;
    current = direction > 0 ? (current + 1) % count : (current + count - 1) % count;
    engine.hoveredField = HitTestField(engine.cursorX, engine.cursorY);
    RestartWheelScan();
    RedrawWheel();
}

void SelectUnderCursor() {
    EngineState& engine = Engine();
    if (!engine.wheelVisible) return;  // a late duplicate of the same click
    const std::int32_t arrow = HitTestArrow(engine.cursorX, engine.cursorY);
    if (arrow >= 0) {
        SwitchWheel(arrow == 1 ? +1 : -1);
        return;
    }
    const std::int32_t field = HitTestField(engine.cursorX, engine.cursorY);
    if (field >= 0) ChooseField(field);
}

void ChooseField(std::int32_t field) {
    EngineState& engine = Engine();
    if (!engine.wheelVisible || field < 0 || static_cast<std::size_t>(field) >= CurrentFieldCount()) return;
    const WheelFunction function =
        engine.Wheels()[static_cast<std::size_t>(engine.configuration.currentWheel)].functions[static_cast<std::size_t>(field)];
    HideWheel();
    RestoreFocus();
    if (!function.steps.empty()) RunFunction(function, static_cast<std::uint32_t>(engine.Settings().sendDelay));
}

}  // namespace zirvel
