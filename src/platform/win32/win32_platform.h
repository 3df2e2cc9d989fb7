// The engine's platform on Windows: its three windows (main, wheel, grid)
// and their procedures, the hot key, the low-level mouse hook, ClipCursor
// and raw input while the wheel shows, SendInput, focus, monitors, the
// shell and the tray. Construct it on the thread that pumps its messages
// (the GUI thread); it lives as long as the process runs the engine.
#pragma once

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#include <shellapi.h>

#include <atomic>
#include <functional>
#include <memory>

#include "engine/platform.h"
#include "platform/win32/cursor_pin.h"
#include "platform/win32/function_editor_window.h"
#include "platform/win32/layered_picture.h"
#include "platform/win32/mouse_hook_thread.h"
#include "platform/win32/raw_mouse_motion.h"

namespace zirvel::win32 {

class Win32Platform final : public Platform {
public:
    // Makes the process DPI-aware, registers the four window classes and
    // creates the hidden main, wheel and grid windows.
    explicit Win32Platform(HINSTANCE instance);
    ~Win32Platform() override;
    Win32Platform(const Win32Platform&) = delete;
    Win32Platform& operator=(const Win32Platform&) = delete;

    HWND MainWindow() const { return main_; }
    HWND WheelWindow() const { return wheel_; }
    HWND GridWindow() const { return grid_; }

    // The function editor that "Edytor funkcji…" opens.
    FunctionEditorWindow& Editor() { return *editor_; }
    // The main window was destroyed ("Zakończ"), after the engine let go of
    // the system; the stand-alone host ends its message loop here.
    void SetMainWindowDestroyedHandler(std::function<void()> handler) { destroyed_ = std::move(handler); }
    // Where warnings go while the engine has no tray icon of its own (under
    // the front-end, whose tray icon shows them).
    using WarningHandler = std::function<void(const std::u16string& title, const std::u16string& text)>;
    void SetWarningHandler(WarningHandler handler) { warningHandler_ = std::move(handler); }

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
    bool OutOfReach(WindowHandle window) override;
    ProgramIdentity ProgramOf(WindowHandle window) override;
    ScreenRect MonitorRect(ScreenPoint point, bool nearest) override;
    ScreenRect ForegroundMonitorRect() override;
    ScreenPoint PrimaryScreenSize() override;
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
    static LRESULT CALLBACK MainWindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    static LRESULT CALLBACK WheelWindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    // engine_main_window.cpp
    LRESULT OnMainWindowMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void PaintHelpPage(HWND window);
    // Sizes the main window, its font and its button for its monitor's DPI.
    void ScaleMainWindow();
    void OnMainWindowDpiChanged(std::uint32_t dpi);
    void ShowTrayMenu();
    void ShowMainWindow();
    LRESULT OnCopyData(const COPYDATASTRUCT& data);
    void RemoveTrayIcon();
    // Adds the icon of trayIcon_; while the shell refuses, tries again on a timer.
    void PutTrayIcon();
    // wheel_window.cpp
    LRESULT OnWheelWindowMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void OnRawInput(HRAWINPUT input);
    // The wheel's timer tick while captured: the pin and the hook still hold.
    void KeepCapture();

    void Deliver(EngineMessage message);
    HWND SurfaceWindow(Surface surface) const { return surface == Surface::Wheel ? wheel_ : grid_; }

    HINSTANCE instance_ = nullptr;
    HWND main_ = nullptr;
    HWND wheel_ = nullptr;
    HWND grid_ = nullptr;
    HFONT uiFont_ = nullptr;  // at the main window's DPI
    HFONT helpFont_ = nullptr;
    std::uint32_t mainDpi_ = 96;
    PlatformEvents* events_ = nullptr;
    std::unique_ptr<FunctionEditorWindow> editor_;
    std::function<void()> destroyed_;
    WarningHandler warningHandler_;

    std::unique_ptr<MouseHookThread> mouseHook_;
    // The user's mouse events belong to the wheel while it is set.
    bool captured_ = false;
    // One click selects once: the hook reports it while installed, raw input
    // when the hook could not be, the window's own button message when
    // neither could. Two reports of one click would switch wheels twice.
    bool hooked_ = false;
    bool rawInputRegistered_ = false;
    CursorPin pin_;
    RawMouseMotion rawMotion_;
    // When raw input last saw the mouse (GetTickCount64), to notice a hook
    // that Windows removed.
    std::uint64_t rawActivityTick_ = 0;

    NOTIFYICONDATAW trayIcon_{};
    bool trayWanted_ = false;  // AddTrayIcon was called and the icon not removed
    bool trayAdded_ = false;
    int trayRetries_ = 0;
    // Sent by Explorer when it (re)starts: every tray icon must be added again.
    UINT taskbarCreated_ = 0;

    LayeredPicture wheelPicture_;
    LayeredPicture gridPicture_;
};

}  // namespace zirvel::win32
