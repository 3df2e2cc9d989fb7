// The live program on a private X server, measured from outside as a user
// would notice it:
//   - hot key pressed → the wheel's first picture on the screen, also with
//     24 wheels naming 64 programs each, and what the wheel choice costs
//     there (reading the program in front, comparing every name);
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

#include "config/wheels_file.h"
#include "engine/wheel_choice.h"
#include "live_figures.h"
#include "live_session.h"
#include "platform/x11/window_program.h"

#include <X11/Xlib.h>

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

// The top field of the wheel centred on the 1920 x 1080 screen.
constexpr int kProbeX = (1920 - 588) / 2 + 294;
constexpr int kProbeY = (1080 - 460) / 2 + 80;

// Hot key → the wheel's top field on the screen, kRounds times.
std::vector<double> HotKeyLatencies(zirvel_test::XConnection& user) {
    const std::uint32_t desktop = user.ScreenPixel(kProbeX, kProbeY);
    std::vector<double> latencies;
    for (int round = 0; round < kRounds; ++round) {
        const auto pressed = Clock::now();
        user.PressKey(XK_F8);
        if (WaitUntil([&] { return user.ScreenPixel(kProbeX, kProbeY) != desktop; }, 2000ms, 200us)) {
            latencies.push_back(Milliseconds(Clock::now() - pressed));
        }
        user.PressKey(XK_F8);
        WaitUntil([&] { return user.ScreenPixel(kProbeX, kProbeY) == desktop; }, 2000ms);
        std::this_thread::sleep_for(30ms);
    }
    return latencies;
}

// The wheel choice as a show makes it, `rounds` times: the program of the
// window in front read over Xlib, then every wheel's names compared.
std::vector<double> WheelChoiceCosts(const std::string& display, unsigned long window, int rounds) {
    std::vector<double> costs;
    const std::string path = "/tmp/zirvel-bench-programs-" + std::to_string(getpid()) + ".json";
    std::ofstream(path) << zirvel_bench::TwentyFourWheelsFile(true);
    std::vector<zirvel::Wheel> wheels;
    std::u16string messages;
    const bool read = zirvel::ReadWheelsFile(std::u16string(path.begin(), path.end()), wheels, messages);
    std::remove(path.c_str());
    Display* connection = XOpenDisplay(display.c_str());
    if (!read || !connection) return costs;
    // A program that reads and matches nothing: every name is compared.
    const zirvel::ProgramIdentity program = zirvel::x11::ReadWindowProgram(connection, window);
    if (!program.windowClasses.empty() && zirvel::WheelNamingProgram(wheels, program) == -1) {
        for (int round = 0; round < rounds; ++round) {
            const auto start = Clock::now();
            const std::int32_t chosen = zirvel::WheelNamingProgram(wheels, zirvel::x11::ReadWindowProgram(connection, window));
            costs.push_back(Milliseconds(Clock::now() - start));
            if (chosen != -1) std::fprintf(stderr, "a wheel named the stand-in\n");
        }
    }
    XCloseDisplay(connection);
    return costs;
}

// Hot key latencies in a session of its own with 24 wheels, `named` or not;
// with `choiceCosts`, also what the wheel choice costs there.
std::vector<double> TwentyFourWheelsLatencies(bool named, std::vector<double>* choiceCosts) {
    zirvel_bench::LiveSession session(kConfig, zirvel_bench::TwentyFourWheelsFile(named));
    if (!session.Ready()) return {};
    // Named, so that every name of the file is compared with it.
    session.Application().NameProgram("stand-in", "Stand-in");
    std::this_thread::sleep_for(300ms);
    std::vector<double> latencies = HotKeyLatencies(session.User());
    if (choiceCosts) *choiceCosts = WheelChoiceCosts(session.DisplayName(), session.Application().Id(), 1000);
    return latencies;
}

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

    const int probeX = kProbeX;
    const int probeY = kProbeY;
    const std::uint32_t desktop = user.ScreenPixel(probeX, probeY);

    const std::vector<double> latencies = HotKeyLatencies(user);

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

    // 24 wheels (the picture has arrows and a counter), first without and
    // then with programs: with them the foreground program is read and
    // every name compared before the wheel is drawn.
    const std::vector<double> wheelsLatencies = TwentyFourWheelsLatencies(false, nullptr);
    std::vector<double> choiceCosts;
    const std::vector<double> programLatencies = TwentyFourWheelsLatencies(true, &choiceCosts);

    std::printf("Zirvel on Xvfb 1920 x 1080, %d rounds each\n", kRounds);
    ReportLatency("hot key -> first wheel picture on screen", latencies);
    ReportLatency("the same, 24 wheels", wheelsLatencies);
    ReportLatency("the same, 24 wheels x 64 programs, none in front", programLatencies);
    ReportLatency("its wheel choice (program read, 1536 names)", choiceCosts);
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
