// Per-monitor DPI on Windows: the process's awareness, the DPI of a monitor
// or window, and fonts at that DPI. The newer calls are looked up at run
// time: each exists only from some Windows version on.
#pragma once

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <cstdint>

namespace zirvel::win32 {

// Per-monitor (v2 where there is one) DPI awareness, in the order Microsoft
// documents: SetProcessDpiAwarenessContext, SetProcessDpiAwareness, then
// SetProcessDPIAware. A manifest or Qt may have set it already; then the
// calls fail and the awareness set first stays.
void MakeProcessPerMonitorDpiAware();

// The effective DPI of `monitor` (GetDpiForMonitor), or the screen's
// LOGPIXELSX where that call does not exist.
std::uint32_t DpiOfMonitor(HMONITOR monitor);

// The DPI `window` is drawn at (GetDpiForWindow), or that of its monitor.
std::uint32_t DpiOfWindow(HWND window);

// Segoe UI of `pixelHeight` pixels at 96 DPI, at `dpi`.
HFONT CreateUiFont(int pixelHeight, std::uint32_t dpi);

// WM_DPICHANGED: moves and sizes the top-level `window` to the rectangle
// Windows suggests in `lParam`; returns the new DPI (from `wParam`).
std::uint32_t AcceptDpiChange(HWND window, WPARAM wParam, LPARAM lParam);

}  // namespace zirvel::win32
