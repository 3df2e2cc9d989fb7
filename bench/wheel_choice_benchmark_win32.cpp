// What choosing the wheel costs as the wheel shows, on Windows: the program
// of the window in front read with QueryFullProcessImageNameW, then 24
// wheels of 64 program names each compared with it, none matching (the
// longest search). The window is one of this program's own.
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

#include "config/text.h"
#include "engine/wheel_choice.h"
#include "platform/win32/window_program.h"

int main() {
    std::vector<zirvel::Wheel> wheels(24);
    for (std::size_t w = 0; w < wheels.size(); ++w) {
        wheels[w].functions.resize(8);
        for (int app = 0; app < 64; ++app) {
            wheels[w].apps.push_back(zirvel::Concat({u"program_", zirvel::DecimalText(static_cast<std::int64_t>(w)), u"_",
                                                     zirvel::DecimalText(app), u".exe"}));
        }
    }
    HWND window = CreateWindowExW(0, L"STATIC", L"Zirvel benchmark", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 10, 10, 200, 100,
                                  nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    if (!window || zirvel::win32::ReadWindowProgram(window).executable.empty()) {
        std::fprintf(stderr, "no window, or its program cannot be read\n");
        return 1;
    }
    constexpr int kRounds = 1000;
    std::vector<double> costs;
    for (int round = 0; round < kRounds; ++round) {
        const auto start = std::chrono::steady_clock::now();
        const std::int32_t chosen = zirvel::WheelNamingProgram(wheels, zirvel::win32::ReadWindowProgram(window));
        costs.push_back(std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
        if (chosen != -1) return 1;
    }
    std::sort(costs.begin(), costs.end());
    std::printf("wheel choice (program read, 1536 names): median %.3f ms   p90 %.3f ms   max %.3f ms   (n = %d)\n",
                costs[kRounds / 2], costs[kRounds * 9 / 10], costs.back(), kRounds);
    DestroyWindow(window);
    return 0;
}
