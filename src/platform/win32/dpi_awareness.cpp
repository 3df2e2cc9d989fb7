#include "platform/win32/dpi_awareness.h"

#include "core/dpi_scale.h"

namespace zirvel::win32 {
namespace {

// Values from the Windows SDK, spelled out because MinGW's headers declare
// them only for newer _WIN32_WINNT targets.
using AwarenessContext = HANDLE;
const auto kPerMonitorAwareV2 = reinterpret_cast<AwarenessContext>(static_cast<INT_PTR>(-4));
constexpr int kProcessPerMonitorDpiAware = 2;  // PROCESS_PER_MONITOR_DPI_AWARE
constexpr int kEffectiveDpi = 0;               // MDT_EFFECTIVE_DPI
constexpr HRESULT kAccessDenied = static_cast<HRESULT>(0x80070005L);  // E_ACCESSDENIED

using SetContextFunction = BOOL(WINAPI*)(AwarenessContext);
using SetAwarenessFunction = HRESULT(WINAPI*)(int);
using DpiForMonitorFunction = HRESULT(WINAPI*)(HMONITOR, int, UINT*, UINT*);
using DpiForWindowFunction = UINT(WINAPI*)(HWND);

template <typename Function>
Function Lookup(HMODULE module, const char* name) {
    if (!module) return nullptr;
    // GetProcAddress returns a generic FARPROC; its real type is the documented one.
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

HMODULE User32() { return GetModuleHandleW(L"user32.dll"); }

// shcore.dll from the system folder only (Windows 8.1 and later have it).
HMODULE Shcore() {
    static const HMODULE module = LoadLibraryExW(L"shcore.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    return module;
}

std::uint32_t ScreenDpi() {
    HDC screen = GetDC(nullptr);
    const int dpi = screen ? GetDeviceCaps(screen, LOGPIXELSX) : 0;
    if (screen) ReleaseDC(nullptr, screen);
    return UsableDpi(dpi > 0 ? static_cast<std::uint32_t>(dpi) : 0);
}

}  // namespace

void MakeProcessPerMonitorDpiAware() {
    if (const auto setContext = Lookup<SetContextFunction>(User32(), "SetProcessDpiAwarenessContext")) {
        if (setContext(kPerMonitorAwareV2)) return;
        // Already set (manifest, Qt): that awareness stays, whatever it is.
        if (GetLastError() == ERROR_ACCESS_DENIED) return;
    }
    if (const auto setAwareness = Lookup<SetAwarenessFunction>(Shcore(), "SetProcessDpiAwareness")) {
        const HRESULT result = setAwareness(kProcessPerMonitorDpiAware);
        if (SUCCEEDED(result) || result == kAccessDenied) return;
    }
    SetProcessDPIAware();
}

std::uint32_t DpiOfMonitor(HMONITOR monitor) {
    static const auto dpiForMonitor = Lookup<DpiForMonitorFunction>(Shcore(), "GetDpiForMonitor");
    UINT x = 0;
    UINT y = 0;
    if (monitor && dpiForMonitor && SUCCEEDED(dpiForMonitor(monitor, kEffectiveDpi, &x, &y)) && x > 0) return x;
    return ScreenDpi();
}

std::uint32_t DpiOfWindow(HWND window) {
    static const auto dpiForWindow = Lookup<DpiForWindowFunction>(User32(), "GetDpiForWindow");
    if (dpiForWindow && window) {
        if (const UINT dpi = dpiForWindow(window); dpi > 0) return dpi;
    }
    return DpiOfMonitor(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST));
}

HFONT CreateUiFont(int pixelHeight, std::uint32_t dpi) {
    return CreateFontW(-ScaleByDpi(pixelHeight, dpi), 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET,
                       OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, CLEARTYPE_QUALITY, DEFAULT_PITCH | FF_DONTCARE,
                       L"Segoe UI");
}

std::uint32_t AcceptDpiChange(HWND window, WPARAM wParam, LPARAM lParam) {
    const auto* suggested = reinterpret_cast<const RECT*>(lParam);
    SetWindowPos(window, nullptr, suggested->left, suggested->top, suggested->right - suggested->left,
                 suggested->bottom - suggested->top, SWP_NOZORDER | SWP_NOACTIVATE);
    return UsableDpi(LOWORD(wParam));
}

}  // namespace zirvel::win32
