// What one element scan costs on Windows: Win32ElementScanner::Scan over a
// dialog of 5 controls and over a window of 400 list items, cold (the
// first scan in the process: COM start-up, the automation object or the
// failed attempt to make it) and warm (the median of later scans).
//   element_scan_benchmark 5|400
// The list items are 400 child buttons of 56 x 18 pixels in rows, which is
// what the child window scan sees; where UI Automation runs (real
// Windows) the same windows go through it instead. Prints which path ran.
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "platform/win32/com_ref.h"
#include "platform/win32/win32_element_scanner.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kWarmRuns = 30;

HWND MakeWindow(int controls) {
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = DefWindowProcW;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.lpszClassName = L"ZirvelScanBenchmark";
    RegisterClassW(&windowClass);
    const HWND window = CreateWindowExW(WS_EX_NOACTIVATE, L"ZirvelScanBenchmark", L"Scan benchmark", WS_POPUP, 0, 0,
                                        1280, 1000, nullptr, nullptr, windowClass.hInstance, nullptr);
    const auto add = [window](const wchar_t* className, DWORD style, int x, int y, int width, int height) {
        CreateWindowExW(0, className, L"x", WS_CHILD | WS_VISIBLE | WS_TABSTOP | style, x, y, width, height, window,
                        nullptr, GetModuleHandleW(nullptr), nullptr);
    };
    if (controls == 5) {
        add(L"BUTTON", BS_PUSHBUTTON, 20, 20, 100, 30);
        add(L"BUTTON", BS_PUSHBUTTON, 140, 20, 100, 30);
        add(L"EDIT", WS_BORDER, 20, 70, 220, 24);
        add(L"BUTTON", BS_AUTOCHECKBOX, 20, 110, 150, 24);
        add(L"BUTTON", BS_AUTORADIOBUTTON, 20, 150, 150, 24);
    } else {
        for (int i = 0; i < controls; ++i) add(L"BUTTON", BS_PUSHBUTTON, 10 + (i % 20) * 60, 10 + (i / 20) * 22, 56, 18);
    }
    ShowWindow(window, SW_SHOWNOACTIVATE);
    return window;
}

double Milliseconds(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

}  // namespace

int main(int argc, char* argv[]) {
    const int controls = argc > 1 ? std::atoi(argv[1]) : 0;
    if (controls != 5 && controls != 400) {
        std::fprintf(stderr, "Usage: element_scan_benchmark 5|400\n");
        return 2;
    }
    const HWND window = MakeWindow(controls);
    zirvel::win32::ElementScanSetup setup;
    setup.windows.foreground = [window] { return window; };
    zirvel::win32::Win32ElementScanner scanner(setup);

    auto start = Clock::now();
    const std::size_t found = scanner.Scan(zirvel::ElementScanMode::ForegroundWindow).elements.size();
    const double cold = Milliseconds(start);
    std::vector<double> warm;
    for (int i = 0; i < kWarmRuns; ++i) {
        start = Clock::now();
        scanner.Scan(zirvel::ElementScanMode::ForegroundWindow);
        warm.push_back(Milliseconds(start));
    }
    std::sort(warm.begin(), warm.end());

    CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    zirvel::win32::uia::IUIAutomation* automation = nullptr;
    const HRESULT made = zirvel::win32::CreateSystemAutomation(&automation);
    if (SUCCEEDED(made) && automation) automation->Release();
    CoUninitialize();

    std::printf("%d controls (%s): %zu numbered   cold %.2f ms   warm median %.2f ms (%d scans)\n", controls,
                SUCCEEDED(made) ? "UI Automation" : "child windows, no automation object", found, cold,
                warm[warm.size() / 2], kWarmRuns);
    return 0;
}
