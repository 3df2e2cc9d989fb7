// The engine's platform on an X server: Xlib for the hot key, the pointer
// grab, XInput2 raw motion, XTest injection and focus; Qt for the overlay
// windows, the timer and the GUI thread's event loop.
#pragma once

#include <QObject>
#include <QTimer>

#include <atomic>
#include <memory>
#include <mutex>
#include <optional>

#include "engine/platform.h"
#include "platform/x11/virtual_keys.h"

class QSocketNotifier;
struct _XDisplay;   // Xlib's Display; its headers stay out of Qt's way
union _XEvent;

namespace zirvel::x11 {

class OverlayWindow;

// Xlib's Window and Atom (both XIDs).
using XWindow = unsigned long;
using XAtom = unsigned long;
using XCursor = unsigned long;

class X11Platform final : public QObject, public Platform {
public:
    // Call first thing in main, before Qt or Xlib run: makes Xlib safe for
    // the injection threads and tells whether the display can be opened.
    static bool PrepareProcess();

    // Opens its own connection to the display Qt uses. Construct after the
    // QGuiApplication, on its thread.
    X11Platform();
    ~X11Platform() override;
    X11Platform(const X11Platform&) = delete;
    X11Platform& operator=(const X11Platform&) = delete;

    // False when the display could not be opened or lacks XInput2 or XTest.
    bool Ready() const { return display_ != nullptr && ready_; }
    _XDisplay* XDisplay() const { return display_; }
    // Called after each picture of a surface reaches the screen.
    void SetPresentedCallback(Surface surface, std::function<void()> presented);

    void SetEventSink(PlatformEvents* events) override;
    void Post(EngineMessage message) override;
    std::uint64_t TickCount() override;
    void Sleep(std::uint32_t milliseconds) override;
    void RunDetached(std::function<void()> job) override;
    void StartWheelTimer(std::uint32_t periodMilliseconds) override;
    void StopWheelTimer() override;
    void StartScanTimer(std::uint32_t delayMilliseconds) override;
    void StopScanTimer() override;
    bool RegisterHotKey(const KeyCode& key) override;
    void UnregisterHotKey() override;
    bool RegisterStepKey(const KeyCode& key) override;
    void UnregisterStepKey() override;
    void BeginPointerCapture(ScreenPoint pinned) override;
    void EndPointerCapture() override;
    ScreenPoint CursorPosition() override;
    void SetCursorPosition(ScreenPoint point) override;
    WindowHandle ForegroundWindow() override;
    bool IsWindow(WindowHandle window) override;
    void GiveForeground(WindowHandle window) override;
    void TakeForegroundForWheel(WindowHandle current) override;
    // X clients of one display all reach each other.
    bool OutOfReach(WindowHandle) override { return false; }
    ProgramIdentity ProgramOf(WindowHandle window) override;
    ScreenRect MonitorRect(ScreenPoint point, bool nearest) override;
    ScreenRect ForegroundMonitorRect() override;
    ScreenPoint PrimaryScreenSize() override;
    // Xft.dpi of the desktop: X11 has one for every monitor.
    std::uint32_t MonitorDpi(ScreenPoint point) override;
    void PlaceSurface(Surface surface, ScreenRect rect) override;
    void ShowSurface(Surface surface) override;
    void HideSurface(Surface surface) override;
    void PresentPicture(Surface surface, ScreenPoint position, const Picture& picture) override;
    ScreenRect SurfaceRect(Surface surface) override;
    bool InjectKey(std::uint16_t vk, bool extended, bool press) override;
    bool InjectMouseButton(std::uint32_t button, bool press) override;
    bool MouseButtonsSwapped() override;
    void OpenTarget(const std::u16string& target) override;
    void ShowWarning(const std::u16string& text) override;
    void AddTrayIcon(const std::u16string& tip) override;
    void ShowTrayNotice(const std::u16string& title, const std::u16string& text, bool warning) override;
    void StatusChanged() override;

private:
    // Handles every event Xlib has queued (the socket notifier and the
    // moment before the event loop sleeps both call it).
    void DrainEvents();
    void HandleEvent(_XEvent& event);
    void HandleRawEvent(_XEvent& event);
    void GrabKeyOnRoot(unsigned keycode, bool grab);
    void GrabHotKey(bool grab);
    // Grabs the hot key on `keycode` instead of the one held; false (and no
    // grab) when there is no such key or another program holds it.
    bool GrabHotKeyOn(unsigned keycode);
    // After a new keyboard mapping: the layout for typing is read again and
    // the hot key's grab follows its key symbol to its new keycode.
    void KeyboardMappingChanged();
    void RefreshMonitors();
    OverlayWindow& SurfaceWindow(Surface surface);
    XWindow ActiveWindowLocked();

    _XDisplay* display_ = nullptr;
    bool ready_ = false;
    // Every Xlib call on display_ happens under this lock: the injection
    // calls come from worker threads.
    mutable std::recursive_mutex xLock_;
    int xinputOpcode_ = 0;
    int randrEventBase_ = 0;
    int xkbEventBase_ = 0;
    XAtom activeWindowAtom_ = 0;
    XAtom supportedAtom_ = 0;

    PlatformEvents* events_ = nullptr;
    QSocketNotifier* notifier_ = nullptr;
    QTimer wheelTimer_;
    QTimer scanTimer_;  // one-shot: the switch scan's next step

    unsigned hotKeycode_ = 0;
    KeySymbol hotKeySymbol_ = kNoKeySymbol;  // what the hot key types; kept across mapping changes
    bool hotKeyDown_ = false;
    unsigned stepKeycode_ = 0;  // the scan's step key while a scan holds it
    bool stepKeyDown_ = false;

    XWindow pinWindow_ = 0;  // 1 x 1 input-only window the grab confines to
    XCursor blankCursor_ = 0;  // shown during the grab: the wheel draws its own cursor
    bool captured_ = false;

    std::mutex monitorsLock_;
    std::vector<ScreenRect> monitors_;

    std::unique_ptr<OverlayWindow> wheelWindow_;
    std::unique_ptr<OverlayWindow> gridWindow_;
};

}  // namespace zirvel::x11
