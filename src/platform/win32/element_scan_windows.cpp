#include "platform/win32/element_scan_windows.h"

#include <string_view>

#include "navigation/element_filter.h"

namespace zirvel::win32 {
namespace {

// Up to 128 UTF-16 units of a class name are compared.
constexpr int kClassNameUnits = 128;

BOOL CALLBACK FindBrowserContentChild(HWND child, LPARAM found) {
    wchar_t className[kClassNameUnits] = {};
    const int length = GetClassNameW(child, className, kClassNameUnits);
    const std::u16string_view name(reinterpret_cast<const char16_t*>(className),
                                   static_cast<std::size_t>(length > 0 ? length : 0));
    if (!IsBrowserContentWindow(name, IsWindowVisible(child) != FALSE, WindowScreenRect(child))) return TRUE;
    *reinterpret_cast<HWND*>(found) = child;
    return FALSE;  // the first one found wins
}

}  // namespace

ScreenRect ToScreenRect(const RECT& rect) {
    return {static_cast<std::int32_t>(rect.left), static_cast<std::int32_t>(rect.top),
            static_cast<std::int32_t>(rect.right), static_cast<std::int32_t>(rect.bottom)};
}

ScreenRect WindowScreenRect(HWND window) {
    RECT rect{};
    if (!GetWindowRect(window, &rect)) return {};
    return ToScreenRect(rect);
}

ScreenRect ScanArea(HWND foreground, HWND mainWindow) {
    MONITORINFO info{};
    info.cbSize = sizeof info;
    const HMONITOR monitor = MonitorFromWindow(foreground ? foreground : mainWindow, MONITOR_DEFAULTTOPRIMARY);
    if (!monitor || !GetMonitorInfoW(monitor, &info)) return {};
    return ToScreenRect(info.rcMonitor);
}

HWND ForegroundRoot(HWND foreground, const EngineWindows& engineWindows) {
    if (!foreground || !IsWindowVisible(foreground) || engineWindows.Contains(foreground)) return nullptr;
    return foreground;
}

HWND VisibleTaskbar(HWND taskbar) { return taskbar && IsWindowVisible(taskbar) ? taskbar : nullptr; }

HWND FindBrowserContent(HWND window) {
    HWND found = nullptr;
    if (window) EnumChildWindows(window, FindBrowserContentChild, reinterpret_cast<LPARAM>(&found));
    return found;
}

}  // namespace zirvel::win32
