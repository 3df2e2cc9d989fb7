// zirvel-engine.exe under Wine on a private X server, measured from outside
// as the Linux program is by live_x11_benchmark:
//   - hot key pressed → the wheel's first picture on the screen;
//   - a click on a field → the wheel gone from the screen;
//   - the first key of the clicked field, as the stand-in application logs
//     it (the log polled every 2 ms), against sendDelay;
//   - CPU use of the engine's process with the wheel hidden and shown.
// It runs the Windows build's programs in its Wine prefix (build/windows,
// made by the windows test preset).
// Usage: live_wine_benchmark [idle seconds, default 30] [shown seconds, default 10] [wheels|programs]
// With "wheels" the wheels file has 24 wheels; with "programs" they name
// 64 programs each, none of them the application in front (the wheel
// choice's longest search).
#include <X11/keysym.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

#include "live_figures.h"
#include "wine_session.h"

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using zirvel_test::WaitUntil;
using zirvel_bench::CpuSeconds;
using zirvel_bench::Milliseconds;
using zirvel_bench::ReportLatency;

constexpr int kRounds = 30;
constexpr int kSendDelay = 150;

constexpr char kConfig[] = R"({"toggleKey": "f8", "sendDelay": 150, "keyHold": 20, "takeFocus": false,
                               "gazeEnabled": false, "voiceEnabled": false})";

// The Linux process that runs a Windows program of this name (Wine keeps
// the program's path in the command line).
pid_t ProcessRunning(const std::string& program) {
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
        const std::string name = entry.path().filename().string();
        if (name.find_first_not_of("0123456789") != std::string::npos) continue;
        std::ifstream file(entry.path() / "cmdline", std::ios::binary);
        const std::string commandLine((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
        if (commandLine.find(program) != std::string::npos) return static_cast<pid_t>(std::stol(name));
    }
    return 0;
}

// Prints the CPU use of the engine and of the wineserver (which carries
// every message and input event of Wine's processes) over one span.
void ReportCpu(const char* what, pid_t engine, pid_t server, std::chrono::seconds span) {
    const double engineBefore = CpuSeconds(engine);
    const double serverBefore = CpuSeconds(server);
    std::this_thread::sleep_for(span);
    const auto percent = [&span](double seconds) { return 100.0 * seconds / static_cast<double>(span.count()); };
    std::printf("%-50s %.3f %% of one core over %lld s (wineserver %.3f %%)\n", what,
                percent(CpuSeconds(engine) - engineBefore), static_cast<long long>(span.count()),
                percent(CpuSeconds(server) - serverBefore));
}

}  // namespace

int main(int argc, char* argv[]) {
    const std::chrono::seconds idleSpan(argc > 1 ? std::stoi(argv[1]) : 30);
    const std::chrono::seconds shownSpan(argc > 2 ? std::stoi(argv[2]) : 10);

    const std::string file = argc > 3 ? argv[3] : "";
    const bool twentyFour = file == "wheels" || file == "programs";
    zirvel_test::WineSession session(kConfig, twentyFour ? zirvel_bench::TwentyFourWheelsFile(file == "programs")
                                                         : std::string(zirvel_bench::kEightLetterWheel));
    if (!session.Ready()) {
        std::fprintf(stderr, "no Xvfb, or no Wine prefix in the Windows build (run its tests first)\n");
        return 1;
    }
    if (!session.StartApplication()) {
        std::fprintf(stderr, "the test application did not start\n");
        return 1;
    }
    auto& user = session.User();
    user.MoveMouseTo(200, 150);
    if (!session.StartEngine()) {
        std::fprintf(stderr, "zirvel-engine.exe did not start\n");
        return 1;
    }
    std::this_thread::sleep_for(500ms);

    // The top field of the wheel centred on the 1280 x 1024 screen.
    const int probeX = (1280 - 588) / 2 + 294;
    const int probeY = (1024 - 460) / 2 + 80;
    const std::uint32_t desktop = user.ScreenPixel(probeX, probeY);
    const auto wheelOnScreen = [&] { return user.ScreenPixel(probeX, probeY) != desktop; };

    std::vector<double> latencies;
    for (int round = 0; round < kRounds; ++round) {
        const auto pressed = Clock::now();
        user.PressKey(XK_F8);
        if (WaitUntil(wheelOnScreen, 3000ms, 200us)) latencies.push_back(Milliseconds(Clock::now() - pressed));
        user.PressKey(XK_F8);
        WaitUntil([&] { return !wheelOnScreen(); }, 3000ms);
        std::this_thread::sleep_for(50ms);
    }

    std::vector<double> hiding;
    std::vector<double> keys;
    for (int round = 0; round < kRounds; ++round) {
        const std::size_t before = session.Log().size();
        user.PressKey(XK_F8);
        WaitUntil(wheelOnScreen, 3000ms);
        std::this_thread::sleep_for(100ms);  // the raw input is registered once the show returned
        user.MoveMouseBy(0, -120);
        std::this_thread::sleep_for(60ms);
        const auto clicked = Clock::now();
        user.ClickButton(1);
        if (WaitUntil([&] { return !wheelOnScreen(); }, 3000ms, 200us)) {
            hiding.push_back(Milliseconds(Clock::now() - clicked));
        }
        const auto key = session.WaitForLine("key down", 3000ms, before);
        if (key) keys.push_back(Milliseconds(Clock::now() - clicked) - kSendDelay);
        session.WaitForLine("key up", 3000ms, before);
        std::this_thread::sleep_for(50ms);
    }

    std::printf("zirvel-engine.exe under Wine on Xvfb 1280 x 1024, %d rounds each%s\n", kRounds,
                file == "programs" ? ", 24 wheels x 64 programs, none in front"
                                   : (twentyFour ? ", 24 wheels" : ""));
    ReportLatency("hot key -> first wheel picture on screen", latencies);
    ReportLatency("click -> wheel gone from the screen", hiding);
    ReportLatency("first key after click - sendDelay (150 ms)", keys);
    const pid_t engine = ProcessRunning("zirvel-engine.exe");
    const pid_t server = ProcessRunning("wineserver");
    ReportCpu("CPU, wheel hidden (idle)", engine, server, idleSpan);
    user.PressKey(XK_F8);
    ReportCpu("CPU, wheel shown", engine, server, shownSpan);
    user.PressKey(XK_F8);
    return 0;
}
