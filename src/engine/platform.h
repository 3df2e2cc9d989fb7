// Everything the engine asks of the operating system. Each platform layer
// (platform/win32, platform/x11, platform/null) implements this interface;
// the engine's logic is written once against it.
//
// Threads: "GUI" marks operations that only the GUI thread calls (the thread
// that started the engine and pumps its windows); "any" marks operations
// that worker, voice, gaze and scan threads call too.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "config/key_code.h"
#include "core/engine_message.h"
#include "core/geometry.h"
#include "core/picture.h"

namespace zirvel {

// The two overlay windows: the wheel, and the grid (which the element hints
// share).
enum class Surface { Wheel, Grid };

// A window of another program, or 0 for none.
using WindowHandle = std::uintptr_t;

// What a window's program goes by, for choosing the wheel made for it.
struct ProgramIdentity {
    // The executable's path (or file name); empty when it cannot be read.
    std::u16string executable;
    // Names the window itself carries: X11's WM_CLASS instance and class.
    std::vector<std::u16string> windowClasses;
};

// A top-level window as a task list shows it, and its program.
struct OpenWindow {
    std::u16string title;
    ProgramIdentity program;
};

// What the platform delivers to the engine, always on the GUI thread.
class PlatformEvents {
public:
    virtual ~PlatformEvents() = default;
    // The global hot key went down (never for auto-repeat).
    virtual void OnHotKey() = 0;
    // The step key of switch scanning went down (never for auto-repeat).
    virtual void OnStepKey() = 0;
    // Relative raw motion of a physical mouse while the pointer is captured.
    virtual void OnRawMotion(std::int32_t dx, std::int32_t dy) = 0;
    // A physical left-button press while the pointer is captured (raw input
    // and the swallowing hook both report it; duplicates are harmless).
    virtual void OnCapturedLeftButtonDown() = 0;
    // The wheel's periodic timer.
    virtual void OnWheelTimer() = 0;
    // The one-shot timer started with StartScanTimer fell due.
    virtual void OnScanTimer() = 0;
    // A message posted with Post.
    virtual void OnMessage(EngineMessage message) = 0;
};

class Platform {
public:
    virtual ~Platform() = default;

    // GUI. Where events go; set by the engine before it starts anything.
    virtual void SetEventSink(PlatformEvents* events) = 0;

    // --- Threads and time -------------------------------------------------
    // any. Queues a message for the GUI thread; never blocks, never runs it
    // inline.
    virtual void Post(EngineMessage message) = 0;
    // any. Milliseconds of a monotonic clock (GetTickCount64).
    virtual std::uint64_t TickCount() = 0;
    // any. Blocks the calling thread.
    virtual void Sleep(std::uint32_t milliseconds) = 0;
    // GUI. Runs a job on a new detached thread (function runs, clicks, scans).
    virtual void RunDetached(std::function<void()> job) = 0;
    // GUI. Starts / stops the wheel's periodic timer.
    virtual void StartWheelTimer(std::uint32_t periodMilliseconds) = 0;
    virtual void StopWheelTimer() = 0;
    // GUI. A one-shot timer `delayMilliseconds` from now, replacing one
    // that is pending: the switch scan's next step, as precisely as the
    // system's timers allow.
    virtual void StartScanTimer(std::uint32_t delayMilliseconds) = 0;
    virtual void StopScanTimer() = 0;

    // --- Hot key ------------------------------------------------------------
    // GUI. Registers the global hot key (no modifiers, no repeat); false when
    // another program holds it.
    virtual bool RegisterHotKey(const KeyCode& key) = 0;
    virtual void UnregisterHotKey() = 0;
    // GUI. A second global key, the step switch of switch scanning, held only
    // while a scan runs; false when another program holds it.
    virtual bool RegisterStepKey(const KeyCode& key) = 0;
    virtual void UnregisterStepKey() = 0;

    // --- Pointer ------------------------------------------------------------
    // GUI. Pins the real pointer at `pinned`, swallows physical pointer
    // events and reports raw motion and left presses through the events.
    virtual void BeginPointerCapture(ScreenPoint pinned) = 0;
    virtual void EndPointerCapture() = 0;
    // GUI (reads from any thread are harmless).
    virtual ScreenPoint CursorPosition() = 0;
    virtual void SetCursorPosition(ScreenPoint point) = 0;

    // --- Focus ---------------------------------------------------------------
    // GUI. The window that has the foreground (keyboard focus), or 0.
    virtual WindowHandle ForegroundWindow() = 0;
    virtual bool IsWindow(WindowHandle window) = 0;
    // GUI. Gives the foreground to `window`, attaching to the input of the
    // window that holds it now.
    virtual void GiveForeground(WindowHandle window) = 0;
    // GUI. Lets the wheel take the foreground from `current` (takeFocus).
    virtual void TakeForegroundForWheel(WindowHandle current) = 0;
    // any. The window belongs to a program that runs with higher privileges
    // than Zirvel (as administrator): the system silently drops the input
    // Zirvel injects there, and the element scan cannot read it. False for 0
    // and where the system has no such barrier.
    virtual bool OutOfReach(WindowHandle window) = 0;
    // GUI. The program that owns `window`, read from the system's records
    // alone (never by asking the program, which may hang); empty for 0 and
    // for a program that is gone or belongs to an administrator or another
    // user.
    virtual ProgramIdentity ProgramOf(WindowHandle window) = 0;

    // --- Screens -------------------------------------------------------------
    // GUI. The whole rectangle of the monitor holding `point`: the nearest
    // monitor, or the primary one when `nearest` is false and none holds it.
    virtual ScreenRect MonitorRect(ScreenPoint point, bool nearest) = 0;
    // GUI. The monitor holding the foreground window (primary if none).
    virtual ScreenRect ForegroundMonitorRect() = 0;
    // any. Width and height of the primary screen (SM_CXSCREEN, SM_CYSCREEN).
    virtual ScreenPoint PrimaryScreenSize() = 0;
    // GUI. The DPI of the monitor nearest `point` (96 is 100 %): what the
    // engine scales everything it draws there by.
    virtual std::uint32_t MonitorDpi(ScreenPoint point) = 0;

    // --- Overlay surfaces -----------------------------------------------------
    // GUI. Moves and sizes a surface, topmost, without activating it.
    virtual void PlaceSurface(Surface surface, ScreenRect rect) = 0;
    // GUI. Shows a surface topmost without activating it, or hides it.
    virtual void ShowSurface(Surface surface) = 0;
    virtual void HideSurface(Surface surface) = 0;
    // GUI. Shows `picture` in the surface with its top-left at `position`
    // (moving and resizing the surface to the picture).
    virtual void PresentPicture(Surface surface, ScreenPoint position, const Picture& picture) = 0;
    // GUI. The surface's screen rectangle.
    virtual ScreenRect SurfaceRect(Surface surface) = 0;

    // --- Injection -------------------------------------------------------------
    // any. One key press or release by virtual-key code (as a scan code);
    // false when the system refused it.
    virtual bool InjectKey(std::uint16_t vk, bool extended, bool press) = 0;
    // any. One press or release of a physical mouse button (0 left, 1 right,
    // 2 middle, 3 and 4 side) at the current pointer position; false when
    // the system refused it.
    virtual bool InjectMouseButton(std::uint32_t button, bool press) = 0;
    // any. The system's primary and secondary buttons are swapped.
    virtual bool MouseButtonsSwapped() = 0;
    // any. Opens an address, document or program; failures are silent.
    virtual void OpenTarget(const std::u16string& target) = 0;

    // --- Messages -------------------------------------------------------------
    // GUI. A modal warning box titled "Zirvel".
    virtual void ShowWarning(const std::u16string& text) = 0;
    // GUI. Adds the engine's own tray icon with `tip` (only the stand-alone
    // engine host asks for one; under the front-end its tray is the one).
    virtual void AddTrayIcon(const std::u16string& tip) = 0;
    // GUI. A balloon on the engine's own tray icon (only the stand-alone
    // engine host has one).
    virtual void ShowTrayNotice(const std::u16string& title, const std::u16string& text, bool warning) = 0;
    // any. The voice or eye-tracker status changed: the engine's main window
    // repaints its status lines (where the engine has a window of its own).
    virtual void StatusChanged() = 0;
};

}  // namespace zirvel
