// Switch scanning of the live program on a private X server, measured from
// outside:
//   - the highlight's step jitter: the time between two highlight changes
//     on the screen against scanInterval, over 100 steps (auto mode);
//   - a step-key press -> the highlight moved on the screen (step mode).
// Usage: switch_scan_benchmark [steps, default 100]
#include <X11/keysym.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <string>
#include <thread>
#include <vector>

#include "live_figures.h"
#include "live_session.h"

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using zirvel_test::WaitUntil;
using zirvel_bench::Milliseconds;
using zirvel_bench::ReportLatency;

constexpr int kInterval = 250;
constexpr char kAutoConfig[] = R"({"toggleKey": "f8", "gazeEnabled": false, "voiceEnabled": false,
  "scanEnabled": true, "scanInterval": 250, "scanLoops": 20})";
constexpr char kStepConfig[] = R"({"toggleKey": "f8", "gazeEnabled": false, "voiceEnabled": false,
  "scanEnabled": true, "scanMode": "step", "scanStepKey": "f9"})";

// One screen pixel inside each field of the eight-field wheel centred on the
// 1920 x 1080 screen (radius 100 at the field's middle angle), and inside
// each corner box: a lit choice is drawn opaque, an unlit one translucent.
std::vector<std::pair<int, int>> Probes() {
    const int left = (1920 - 588) / 2;
    const int top = (1080 - 460) / 2;
    std::vector<std::pair<int, int>> probes;
    for (int field = 0; field < 8; ++field) {
        const double angle = (field * 45.0 + 22.5 - 90.0) * 3.14159265358979 / 180.0;
        probes.emplace_back(left + 294 + static_cast<int>(100 * std::cos(angle)),
                            top + 230 + static_cast<int>(100 * std::sin(angle)));
    }
    for (const auto& [x, y] : {std::pair{12, 12}, std::pair{478, 12}, std::pair{478, 426}}) {
        probes.emplace_back(left + x, top + y);
    }
    return probes;
}

std::vector<std::uint32_t> Look(zirvel_test::XConnection& user, const std::vector<std::pair<int, int>>& probes) {
    std::vector<std::uint32_t> pixels;
    for (const auto& [x, y] : probes) pixels.push_back(user.ScreenPixel(x, y));
    return pixels;
}

// Waits until what the probes show differs from `before`; the time it was
// first seen. A picture reaches the screen in parts, so the look goes on
// until two looks agree: one change of the highlight counts once.
bool WaitForChange(zirvel_test::XConnection& user, const std::vector<std::pair<int, int>>& probes,
                   std::vector<std::uint32_t>& before, Clock::time_point& seen, std::chrono::milliseconds timeout) {
    const auto end = Clock::now() + timeout;
    while (Clock::now() < end) {
        std::vector<std::uint32_t> now = Look(user, probes);
        if (now == before) continue;
        seen = Clock::now();
        for (std::vector<std::uint32_t> again = Look(user, probes); again != now; again = Look(user, probes)) {
            now = std::move(again);
        }
        before = std::move(now);
        return true;
    }
    return false;
}

double Quantile(std::vector<double> samples, double q) {
    std::sort(samples.begin(), samples.end());
    return samples.empty() ? 0.0 : samples[static_cast<std::size_t>(q * static_cast<double>(samples.size() - 1))];
}

}  // namespace

int main(int argc, char* argv[]) {
    const int steps = argc > 1 ? std::stoi(argv[1]) : 100;
    const std::vector<std::pair<int, int>> probes = Probes();

    std::vector<double> errors;
    {
        zirvel_bench::LiveSession session(kAutoConfig);
        if (!session.Ready()) return 1;
        zirvel_test::XConnection& user = session.User();
        std::this_thread::sleep_for(300ms);
        user.PressKey(XK_F8);
        std::vector<std::uint32_t> seen = Look(user, probes);
        Clock::time_point last;
        // The first change is the wheel showing; steps are timed from it on.
        if (!WaitForChange(user, probes, seen, last, 2000ms)) return 1;
        std::this_thread::sleep_for(50ms);
        seen = Look(user, probes);
        Clock::time_point previous;
        if (!WaitForChange(user, probes, seen, previous, 2000ms)) return 1;
        for (int step = 0; step < steps; ++step) {
            Clock::time_point now;
            if (!WaitForChange(user, probes, seen, now, 2000ms)) break;
            errors.push_back(Milliseconds(now - previous) - kInterval);
            previous = now;
        }
    }

    std::vector<double> latencies;
    {
        zirvel_bench::LiveSession session(kStepConfig);
        if (!session.Ready()) return 1;
        zirvel_test::XConnection& user = session.User();
        std::this_thread::sleep_for(300ms);
        user.PressKey(XK_F8);
        std::vector<std::uint32_t> seen = Look(user, probes);
        Clock::time_point shown;
        if (!WaitForChange(user, probes, seen, shown, 2000ms)) return 1;
        const unsigned keycode = XKeysymToKeycode(user.Get(), XK_F9);
        WaitUntil([&] { return user.KeyGrabbedByAnother(keycode); }, 2000ms);
        std::this_thread::sleep_for(100ms);
        seen = Look(user, probes);
        for (int step = 0; step < steps; ++step) {
            const auto pressed = Clock::now();
            user.PressKey(XK_F9);
            Clock::time_point moved;
            if (!WaitForChange(user, probes, seen, moved, 2000ms)) break;
            latencies.push_back(Milliseconds(moved - pressed));
            std::this_thread::sleep_for(20ms);
            seen = Look(user, probes);
        }
    }

    std::printf("Zirvel switch scanning on Xvfb 1920 x 1080, %d steps\n", steps);
    std::vector<double> absolute;
    for (double error : errors) absolute.push_back(std::fabs(error));
    std::printf("%-50s median %7.2f ms   p99 %7.2f ms   (n = %zu)\n", "|step interval - scanInterval (250 ms)|",
                Quantile(absolute, 0.5), Quantile(absolute, 0.99), absolute.size());
    ReportLatency("step key -> highlight moved on screen", latencies);
    return 0;
}
