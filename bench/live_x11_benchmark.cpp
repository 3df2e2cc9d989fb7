// The live program on a private X server, measured from outside as a user
// would notice it:
//   - hot key pressed → the wheel's first picture on the screen;
//   - the first key of a clicked field against sendDelay;
//   - CPU use with the wheel hidden (idle) and shown.
// Usage: live_x11_benchmark [idle seconds, default 60] [shown seconds, default 10]
#include <X11/keysym.h>

#include <chrono>
#include <cstdio>
#include <fstream>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

#include "live_figures.h"
#include "live_session.h"

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using zirvel_test::WaitUntil;
using zirvel_bench::CpuPercentOver;
using zirvel_bench::Milliseconds;
using zirvel_bench::ReportLatency;

constexpr int kRounds = 40;
constexpr int kSendDelay = 150;

constexpr char kConfig[] = R"({"toggleKey": "f8", "sendDelay": 150, "keyHold": 20, "gazeEnabled": false,
                               "voiceEnabled": false})";

}  // namespace

int main(int argc, char* argv[]) {
    const std::chrono::seconds idleSpan(argc > 1 ? std::stoi(argv[1]) : 60);
    const std::chrono::seconds shownSpan(argc > 2 ? std::stoi(argv[2]) : 10);

    zirvel_bench::LiveSession session(kConfig);
    if (!session.Ready()) return 1;
    zirvel_test::XConnection& user = session.User();
    zirvel_test::TestApplication& application = session.Application();
    zirvel_test::ProgramUnderTest& program = session.Program();
    std::this_thread::sleep_for(300ms);

    // The top field of the wheel centred on the 1920 x 1080 screen.
    const int probeX = (1920 - 588) / 2 + 294;
    const int probeY = (1080 - 460) / 2 + 80;
    const std::uint32_t desktop = user.ScreenPixel(probeX, probeY);

    std::vector<double> latencies;
    for (int round = 0; round < kRounds; ++round) {
        const auto pressed = Clock::now();
        user.PressKey(XK_F8);
        if (WaitUntil([&] { return user.ScreenPixel(probeX, probeY) != desktop; }, 2000ms, 200us)) {
            latencies.push_back(Milliseconds(Clock::now() - pressed));
        }
        user.PressKey(XK_F8);
        WaitUntil([&] { return user.ScreenPixel(probeX, probeY) == desktop; }, 2000ms);
        std::this_thread::sleep_for(30ms);
    }

    std::vector<double> errors;
    for (int round = 0; round < kRounds; ++round) {
        const std::size_t before = application.Events(KeyPress).size();
        user.PressKey(XK_F8);
        WaitUntil([&] { return user.ScreenPixel(probeX, probeY) != desktop; }, 2000ms);
        user.MoveMouseBy(0, -120);
        std::this_thread::sleep_for(40ms);
        const auto clicked = Clock::now();
        user.ClickButton(1);
        if (application.WaitForEvents(KeyPress, before + 1, 2000ms)) {
            const auto arrived = application.Events(KeyPress)[before].arrived;
            errors.push_back(Milliseconds(arrived - clicked) - kSendDelay);
        }
        application.WaitForEvents(KeyRelease, before + 1, 2000ms);
        std::this_thread::sleep_for(30ms);
    }

    std::printf("Zirvel on Xvfb 1920 x 1080, %d rounds each\n", kRounds);
    ReportLatency("hot key -> first wheel picture on screen", latencies);
    ReportLatency("first key after click - sendDelay (150 ms)", errors);
    const pid_t pid = program.Process()->Pid();
    std::printf("%-50s %.3f %% of one core over %lld s\n", "CPU, wheel hidden (idle)",
                CpuPercentOver(pid, idleSpan), static_cast<long long>(idleSpan.count()));
    user.PressKey(XK_F8);
    std::printf("%-50s %.3f %% of one core over %lld s\n", "CPU, wheel shown", CpuPercentOver(pid, shownSpan),
                static_cast<long long>(shownSpan.count()));
    user.PressKey(XK_F8);
    return 0;
}
