#include "platform/win32/win32_platform.h"

#include <objbase.h>

#include <chrono>
#include <thread>

#include "engine/wheel_geometry.h"
#include "platform/win32/dpi_awareness.h"
#include "platform/win32/engine_window_protocol.h"
#include "config/key_stroke.h"
#include "platform/win32/injection_signature.h"
#include "platform/win32/process_privilege.h"
#include "platform/win32/window_program.h"

namespace zirvel::win32 {
namespace {

// The one platform of the process, for the window and hook procedures.
Win32Platform* current = nullptr;

constexpr DWORD kMainWindowStyle = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX;
constexpr DWORD kWheelExStyle = WS_EX_TOPMOST | WS_EX_TOOLWINDOW | WS_EX_LAYERED | WS_EX_NOACTIVATE;
constexpr DWORD kGridExStyle = kWheelExStyle | WS_EX_TRANSPARENT;  // the mouse goes through

const wchar_t* Wide(const std::u16string& text) { return reinterpret_cast<const wchar_t*>(text.c_str()); }

ScreenRect FromRect(const RECT& rect) { return {rect.left, rect.top, rect.right, rect.bottom}; }

ScreenRect WholeMonitor(HMONITOR monitor) {
    MONITORINFO info{};
    info.cbSize = sizeof info;
    if (!monitor || !GetMonitorInfoW(monitor, &info)) return {};
    return FromRect(info.rcMonitor);  // the whole monitor, taskbar included
}

void RegisterClass(HINSTANCE instance, const wchar_t* name, WNDPROC procedure, bool cursor, bool icon,
                   HBRUSH background = nullptr) {
    WNDCLASSEXW windowClass{};
    windowClass.cbSize = sizeof windowClass;
    windowClass.lpfnWndProc = procedure;
    windowClass.hInstance = instance;
    windowClass.hCursor = cursor ? LoadCursorW(nullptr, IDC_ARROW) : nullptr;
    windowClass.hIcon = icon ? LoadIconW(nullptr, IDI_APPLICATION) : nullptr;
    windowClass.hbrBackground = background;
    windowClass.lpszClassName = name;
    RegisterClassExW(&windowClass);
}

// SendInput answers how many records it put in the input stream; 0 when
// another thread blocked the input (not when UIPI dropped it: nothing says so).
bool Send(INPUT& input) { return SendInput(1, &input, sizeof input) == 1; }

// Brings `window` to the foreground with the input of `attachTo`'s thread
// attached to this one, which Windows requires of a background process.
void ForegroundThroughAttachedInput(HWND attachTo, HWND window) {
    const DWORD self = GetCurrentThreadId();
    const DWORD other = attachTo ? GetWindowThreadProcessId(attachTo, nullptr) : 0;
    const bool attached = other != 0 && other != self && AttachThreadInput(self, other, TRUE);
    SetForegroundWindow(window);
    if (attached) AttachThreadInput(self, other, FALSE);
}

}  // namespace

Win32Platform::Win32Platform(HINSTANCE instance) : instance_(instance) {
    current = this;
    MakeProcessPerMonitorDpiAware();  // the engine works in physical pixels
    RegisterClass(instance, kMainWindowClass, MainWindowProcedure, true, true);
    RegisterClass(instance, kWheelWindowClass, WheelWindowProcedure, true, false);
    RegisterClass(instance, kGridWindowClass, DefWindowProcW, false, false);
    RegisterClass(instance, kEditorWindowClass, FunctionEditorWindow::Procedure, true, true,
                  reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(COLOR_BTNFACE + 1)));
    main_ = CreateWindowExW(0, kMainWindowClass, L"Zirvel", kMainWindowStyle, CW_USEDEFAULT, CW_USEDEFAULT, 560, 570,
                            nullptr, nullptr, instance, nullptr);
    ScaleMainWindow();
    wheel_ = CreateWindowExW(kWheelExStyle, kWheelWindowClass, L"", WS_POPUP, 0, 0, kWheelWidth, kWheelHeight,
                             nullptr, nullptr, instance, nullptr);
    grid_ = CreateWindowExW(kGridExStyle, kGridWindowClass, L"", WS_POPUP, 0, 0, 100, 100, nullptr, nullptr,
                            instance, nullptr);
    editor_ = std::make_unique<FunctionEditorWindow>(instance, main_);
    taskbarCreated_ = RegisterWindowMessageW(L"TaskbarCreated");
    // Explorer runs at medium integrity: an engine run as administrator
    // would not hear that the taskbar came back. Only this message is let in.
    if (taskbarCreated_ != 0) ChangeWindowMessageFilterEx(main_, taskbarCreated_, MSGFLT_ALLOW, nullptr);
    mouseHook_ = std::make_unique<MouseHookThread>(wheel_, WM_APP + static_cast<UINT>(EngineMessageKind::Select));
}

Win32Platform::~Win32Platform() {
    if (captured_) EndPointerCapture();
    mouseHook_.reset();
    RemoveTrayIcon();
    editor_.reset();  // owned by the main window: it goes first
    if (grid_) DestroyWindow(grid_);
    if (wheel_) DestroyWindow(wheel_);
    if (main_ && ::IsWindow(main_)) {
        destroyed_ = nullptr;
        DestroyWindow(main_);
    }
    if (uiFont_) DeleteObject(uiFont_);
    if (helpFont_) DeleteObject(helpFont_);
    if (current == this) current = nullptr;
}

LRESULT CALLBACK Win32Platform::MainWindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (!current) return DefWindowProcW(window, message, wParam, lParam);
    return current->OnMainWindowMessage(window, message, wParam, lParam);
}

LRESULT CALLBACK Win32Platform::WheelWindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (!current) return DefWindowProcW(window, message, wParam, lParam);
    return current->OnWheelWindowMessage(window, message, wParam, lParam);
}

void Win32Platform::SetEventSink(PlatformEvents* events) { events_ = events; }

void Win32Platform::Deliver(EngineMessage message) {
    if (events_) events_->OnMessage(std::move(message));
}

// --- Threads and time ------------------------------------------------------------

void Win32Platform::Post(EngineMessage message) {
    const UINT code = WM_APP + static_cast<UINT>(message.kind);
    switch (message.kind) {
        case EngineMessageKind::Select:
            PostMessageW(wheel_, code, 0, 0);
            return;
        case EngineMessageKind::ElementScanResult: {
            // The receiver owns and frees the record; a failed post frees it here.
            ElementScanResult* result = message.scanResult.release();
            if (!PostMessageW(main_, code, 0, reinterpret_cast<LPARAM>(result))) delete result;
            return;
        }
        case EngineMessageKind::SkippedPhrases: {
            auto* text = new std::u16string(std::move(message.text));
            if (!PostMessageW(main_, code, 0, reinterpret_cast<LPARAM>(text))) delete text;
            return;
        }
        case EngineMessageKind::VoiceCommand:
        case EngineMessageKind::RunWheelFunction:
        case EngineMessageKind::RunGlobalFunction:
        case EngineMessageKind::InputRefused:
            PostMessageW(main_, code, static_cast<WPARAM>(message.first), static_cast<LPARAM>(message.second));
            return;
    }
}

std::uint64_t Win32Platform::TickCount() { return GetTickCount64(); }

void Win32Platform::Sleep(std::uint32_t milliseconds) { ::Sleep(milliseconds); }

void Win32Platform::RunDetached(std::function<void()> job) { std::thread(std::move(job)).detach(); }

void Win32Platform::StartWheelTimer(std::uint32_t periodMilliseconds) {
    SetTimer(wheel_, kWheelTimerId, periodMilliseconds, nullptr);
}

void Win32Platform::StopWheelTimer() { KillTimer(wheel_, kWheelTimerId); }

void Win32Platform::StartScanTimer(std::uint32_t delayMilliseconds) {
    SetTimer(main_, kScanTimerId, delayMilliseconds, nullptr);
}

void Win32Platform::StopScanTimer() { KillTimer(main_, kScanTimerId); }

// --- Hot key --------------------------------------------------------------------------

bool Win32Platform::RegisterHotKey(const KeyCode& key) {
    return ::RegisterHotKey(main_, kHotKeyId, MOD_NOREPEAT, key.vk) != FALSE;
}

void Win32Platform::UnregisterHotKey() { ::UnregisterHotKey(main_, kHotKeyId); }

bool Win32Platform::RegisterStepKey(const KeyCode& key) {
    return ::RegisterHotKey(main_, kStepKeyId, MOD_NOREPEAT, key.vk) != FALSE;
}

void Win32Platform::UnregisterStepKey() { ::UnregisterHotKey(main_, kStepKeyId); }

// --- Pointer ----------------------------------------------------------------------------

void Win32Platform::BeginPointerCapture(ScreenPoint pinned) {
    captured_ = true;
    hooked_ = mouseHook_->Capture();
    pin_.Pin(pinned);
    rawMotion_.Reset();
    rawActivityTick_ = 0;
    RAWINPUTDEVICE mouse{1, 2, RIDEV_INPUTSINK, wheel_};  // generic desktop, mouse
    rawInputRegistered_ = RegisterRawInputDevices(&mouse, 1, sizeof mouse) != FALSE;
}

void Win32Platform::EndPointerCapture() {
    RAWINPUTDEVICE mouse{1, 2, RIDEV_REMOVE, nullptr};
    RegisterRawInputDevices(&mouse, 1, sizeof mouse);
    rawInputRegistered_ = false;
    pin_.Release();
    mouseHook_->Release();
    hooked_ = false;
    captured_ = false;
}

void Win32Platform::KeepCapture() {
    pin_.Keep();
    if (hooked_ && HookLooksRemoved(rawActivityTick_, mouseHook_->LastEventTick(), GetTickCount64())) {
        mouseHook_->Reinstall();
        hooked_ = mouseHook_->Installed();
        rawActivityTick_ = 0;
    }
}

ScreenPoint Win32Platform::CursorPosition() {
    POINT point{};
    GetCursorPos(&point);
    return {point.x, point.y};
}

void Win32Platform::SetCursorPosition(ScreenPoint point) { SetCursorPos(point.x, point.y); }

// --- Focus -------------------------------------------------------------------------------

WindowHandle Win32Platform::ForegroundWindow() { return reinterpret_cast<WindowHandle>(GetForegroundWindow()); }

bool Win32Platform::IsWindow(WindowHandle window) { return ::IsWindow(reinterpret_cast<HWND>(window)) != FALSE; }

void Win32Platform::GiveForeground(WindowHandle window) {
    // Attached to the input of whoever holds the foreground now.
    ForegroundThroughAttachedInput(GetForegroundWindow(), reinterpret_cast<HWND>(window));
}

bool Win32Platform::OutOfReach(WindowHandle window) { return WindowOutOfReach(reinterpret_cast<HWND>(window)); }

ProgramIdentity Win32Platform::ProgramOf(WindowHandle window) {
    return ReadWindowProgram(reinterpret_cast<HWND>(window));
}

void Win32Platform::TakeForegroundForWheel(WindowHandle foreground) {
    ForegroundThroughAttachedInput(reinterpret_cast<HWND>(foreground), wheel_);
}

// --- Screens ------------------------------------------------------------------------------

ScreenRect Win32Platform::MonitorRect(ScreenPoint point, bool nearest) {
    return WholeMonitor(
        MonitorFromPoint(POINT{point.x, point.y}, nearest ? MONITOR_DEFAULTTONEAREST : MONITOR_DEFAULTTOPRIMARY));
}

ScreenRect Win32Platform::ForegroundMonitorRect() {
    return WholeMonitor(MonitorFromWindow(GetForegroundWindow(), MONITOR_DEFAULTTOPRIMARY));
}

ScreenPoint Win32Platform::PrimaryScreenSize() { return {GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)}; }

std::uint32_t Win32Platform::MonitorDpi(ScreenPoint point) {
    return DpiOfMonitor(MonitorFromPoint(POINT{point.x, point.y}, MONITOR_DEFAULTTONEAREST));
}

// --- Overlay surfaces ---------------------------------------------------------------------

void Win32Platform::PlaceSurface(Surface surface, ScreenRect rect) {
    SetWindowPos(SurfaceWindow(surface), HWND_TOPMOST, rect.left, rect.top, rect.Width(), rect.Height(),
                 SWP_NOACTIVATE);
}

void Win32Platform::ShowSurface(Surface surface) {
    HWND window = SurfaceWindow(surface);
    if (surface == Surface::Wheel) {
        ShowWindow(window, SW_SHOWNOACTIVATE);
        SetWindowPos(window, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    } else {
        SetWindowPos(window, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOACTIVATE | SWP_SHOWWINDOW);
    }
}

void Win32Platform::HideSurface(Surface surface) { ShowWindow(SurfaceWindow(surface), SW_HIDE); }

void Win32Platform::PresentPicture(Surface surface, ScreenPoint position, const Picture& picture) {
    (surface == Surface::Wheel ? wheelPicture_ : gridPicture_).Present(SurfaceWindow(surface), position, picture);
}

ScreenRect Win32Platform::SurfaceRect(Surface surface) {
    RECT rect{};
    GetWindowRect(SurfaceWindow(surface), &rect);
    return FromRect(rect);
}

// --- Injection ------------------------------------------------------------------------------

bool Win32Platform::InjectKey(std::uint16_t vk, bool extended, bool press) {
    const KeyStroke stroke = StrokeForKey(vk, extended, MapVirtualKeyW(vk, MAPVK_VK_TO_VSC_EX));
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = stroke.vk;  // ignored when the scan code is sent
    input.ki.wScan = stroke.scan;
    input.ki.dwFlags = (stroke.byScanCode ? KEYEVENTF_SCANCODE : 0) | (stroke.extended ? KEYEVENTF_EXTENDEDKEY : 0) |
                       (press ? 0 : KEYEVENTF_KEYUP);
    input.ki.dwExtraInfo = kInjectedByZirvel;
    return Send(input);
}

bool Win32Platform::InjectMouseButton(std::uint32_t button, bool press) {
    INPUT input{};
    input.type = INPUT_MOUSE;  // no move flag: at the real cursor
    input.mi.dwExtraInfo = kInjectedByZirvel;
    switch (button) {
        case 0:
            input.mi.dwFlags = press ? MOUSEEVENTF_LEFTDOWN : MOUSEEVENTF_LEFTUP;
            break;
        case 1:
            input.mi.dwFlags = press ? MOUSEEVENTF_RIGHTDOWN : MOUSEEVENTF_RIGHTUP;
            break;
        case 2:
            input.mi.dwFlags = press ? MOUSEEVENTF_MIDDLEDOWN : MOUSEEVENTF_MIDDLEUP;
            break;
        case 3:
        case 4:
            input.mi.dwFlags = press ? MOUSEEVENTF_XDOWN : MOUSEEVENTF_XUP;
            input.mi.mouseData = button == 3 ? XBUTTON1 : XBUTTON2;
            break;
        default:
            break;  // no such button: a record without effect
    }
    return Send(input);
}

bool Win32Platform::MouseButtonsSwapped() { return GetSystemMetrics(SM_SWAPBUTTON) != 0; }

void Win32Platform::OpenTarget(const std::u16string& target) {
    // The shell may hand the target to COM objects; the run's thread is new.
    const HRESULT com = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE);
    SHELLEXECUTEINFOW open{};
    open.cbSize = sizeof open;
    // The thread ends as soon as this returns: the shell must finish its
    // work (DDE, a handler's thread) before, not after.
    open.fMask = SEE_MASK_NOASYNC;
    open.lpVerb = L"open";
    open.lpFile = Wide(target);
    open.nShow = SW_SHOWNORMAL;
    ShellExecuteExW(&open);
    if (SUCCEEDED(com)) CoUninitialize();
}

// --- Messages ---------------------------------------------------------------------------------

void Win32Platform::ShowWarning(const std::u16string& text) {
    MessageBoxW(nullptr, Wide(text), L"Zirvel", MB_ICONWARNING);
}

}  // namespace zirvel::win32
