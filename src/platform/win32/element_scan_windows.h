// The windows an element scan starts from, shared by the UI Automation scan
// and its child window fallback: the scan area, the foreground window as a
// root, the taskbar, and a browser's content window.
#pragma once

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <functional>

#include "core/geometry.h"

namespace zirvel::win32 {

// The engine's own windows: a scan never numbers their controls. They do
// not change while the engine runs.
struct EngineWindows {
    HWND main = nullptr;
    HWND grid = nullptr;
    HWND wheel = nullptr;

    bool Contains(HWND window) const { return window && (window == main || window == grid || window == wheel); }
};

// Where a scan learns which windows the system has; tests put their own
// windows in.
struct ScanWindowSource {
    std::function<HWND()> foreground = [] { return GetForegroundWindow(); };
    std::function<HWND()> taskbar = [] { return FindWindowW(L"Shell_TrayWnd", nullptr); };
};

ScreenRect ToScreenRect(const RECT& rect);
// GetWindowRect; all zero when it fails.
ScreenRect WindowScreenRect(HWND window);

// The full rectangle of the monitor that holds `foreground`, or the engine's
// main window when there is no foreground window; the primary monitor when
// neither lies on one.
ScreenRect ScanArea(HWND foreground, HWND mainWindow);

// The foreground window as a scan root: null when it is missing, invisible
// or one of the engine's own windows.
HWND ForegroundRoot(HWND foreground, const EngineWindows& engineWindows);

// The taskbar when it exists and is visible; else null.
HWND VisibleTaskbar(HWND taskbar);

// The first child of `window`, in EnumChildWindows order, that is a
// browser's page area (IsBrowserContentWindow); null when none is.
HWND FindBrowserContent(HWND window);

}  // namespace zirvel::win32
