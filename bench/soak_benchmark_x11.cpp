// The live program on a private X server over a long session: thousands of
// wheel show/select/hide cycles and phrases through the control socket,
// with the program's resident memory, open file descriptors and X
// resources measured before and after. Growth beyond noise is a leak.
// Usage: soak_benchmark [cycles, default 10000] [phrases, default 10000]
#include <X11/Xlib.h>
#include <X11/extensions/XRes.h>
#include <X11/keysym.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

#include "live_figures.h"
#include "live_session.h"

namespace {

using namespace std::chrono_literals;
using zirvel_test::WaitUntil;

constexpr char kConfig[] = R"({"toggleKey": "f8", "sendDelay": 0, "keyHold": 1, "gazeEnabled": false,
                               "voiceEnabled": false})";
constexpr char kWheelTitle[] = "Zirvel — koło";

struct Usage {
    long residentKb = 0;
    int descriptors = 0;
    long xResources = 0;
    unsigned long xPixmapBytes = 0;
};

long ResidentKb(pid_t pid) {
    std::ifstream status("/proc/" + std::to_string(pid) + "/status");
    std::string line;
    while (std::getline(status, line)) {
        if (line.rfind("VmRSS:", 0) == 0) return std::stol(line.substr(6));
    }
    return -1;
}

int Descriptors(pid_t pid) {
    int count = 0;
    std::error_code error;
    for (auto it = std::filesystem::directory_iterator("/proc/" + std::to_string(pid) + "/fd", error);
         !error && it != std::filesystem::directory_iterator(); it.increment(error)) {
        ++count;
    }
    return count;
}

// The X server's count of the resources held by the clients of `pid`.
void XResourcesOf(Display* display, pid_t pid, Usage& usage) {
    int count = 0;
    XResClient* clients = nullptr;
    if (!XResQueryClients(display, &count, &clients)) return;
    for (int i = 0; i < count; ++i) {
        XResClientIdSpec spec{clients[i].resource_base, XRES_CLIENT_ID_PID_MASK};
        long idCount = 0;
        XResClientIdValue* ids = nullptr;
        // The version 1.2 call answers Success (0), unlike the older ones.
        if (XResQueryClientIds(display, 1, &spec, &idCount, &ids) != Success) continue;
        const bool ours = idCount > 0 && XResGetClientPid(&ids[0]) == pid;
        XResClientIdsDestroy(idCount, ids);
        if (!ours) continue;
        int typeCount = 0;
        XResType* types = nullptr;
        if (XResQueryClientResources(display, clients[i].resource_base, &typeCount, &types)) {
            for (int t = 0; t < typeCount; ++t) usage.xResources += types[t].count;
            XFree(types);
        }
        unsigned long bytes = 0;
        if (XResQueryClientPixmapBytes(display, clients[i].resource_base, &bytes)) usage.xPixmapBytes += bytes;
    }
    XFree(clients);
}

Usage Measure(Display* display, pid_t pid) {
    Usage usage;
    usage.residentKb = ResidentKb(pid);
    usage.descriptors = Descriptors(pid);
    XResourcesOf(display, pid, usage);
    return usage;
}

void Report(const char* when, const Usage& usage) {
    std::printf("%-28s RSS %7ld kB   descriptors %4d   X resources %5ld   X pixmaps %9lu bytes\n", when,
                usage.residentKb, usage.descriptors, usage.xResources, usage.xPixmapBytes);
}

}  // namespace

int main(int argc, char* argv[]) {
    const int cycles = argc > 1 ? std::stoi(argv[1]) : 10000;
    const int phrases = argc > 2 ? std::stoi(argv[2]) : 10000;

    zirvel_bench::LiveSession session(kConfig);
    if (!session.Ready()) return 1;
    zirvel_test::XConnection& user = session.User();
    zirvel_test::ProgramUnderTest& program = session.Program();
    const pid_t pid = program.Process()->Pid();

    // The wheel's window lives as long as the program: found once.
    Window wheel = 0;
    const auto wheelShows = [&] {
        if (wheel == 0) wheel = user.FindWindow(kWheelTitle);
        return user.IsMapped(wheel);
    };
    int missed = 0;
    const auto cycle = [&] {
        user.PressKey(XK_F8);
        if (!WaitUntil(wheelShows, 2000ms, 500us)) ++missed;
        std::this_thread::sleep_for(30ms);  // the pointer grab follows the first picture
        user.MoveMouseBy(0, -120);
        std::this_thread::sleep_for(40ms);  // a few ticks of the wheel's 15 ms timer move the virtual cursor
        user.ClickButton(1);
        if (!WaitUntil([&] { return !wheelShows(); }, 1000ms, 500us)) {
            ++missed;
            user.PressKey(XK_F8);  // closed by its key, so the next cycle starts from a hidden wheel
            WaitUntil([&] { return !wheelShows(); }, 1000ms, 500us);
        }
    };
    // Warm up: first pictures, caches, the grid window and its pictures at
    // full screen, the allocator's pools.
    for (int i = 0; i < 50; ++i) cycle();
    for (int i = 0; i < 100; ++i) program.Say(i % 2 ? "schowaj siatkę" : "pokaż siatkę");
    std::this_thread::sleep_for(500ms);
    const Usage start = Measure(user.Get(), pid);

    const auto began = std::chrono::steady_clock::now();
    for (int i = 0; i < cycles; ++i) cycle();
    const double cycleSeconds = zirvel_bench::Milliseconds(std::chrono::steady_clock::now() - began) / 1000;
    std::this_thread::sleep_for(500ms);
    const Usage afterCycles = Measure(user.Get(), pid);
    int refused = 0;
    const auto phrasesBegan = std::chrono::steady_clock::now();
    for (int i = 0; i < phrases; ++i) refused += program.Say(i % 2 ? "schowaj siatkę" : "pokaż siatkę") != 0;
    const double phraseSeconds = zirvel_bench::Milliseconds(std::chrono::steady_clock::now() - phrasesBegan) / 1000;
    std::this_thread::sleep_for(500ms);
    const Usage end = Measure(user.Get(), pid);

    std::printf("Zirvel on Xvfb 1920 x 1080: %d show/select/hide cycles in %.0f s (%d waits missed), "
                "%d phrases through zirvel-say in %.0f s (%d refused)\n",
                cycles, cycleSeconds, missed, phrases, phraseSeconds, refused);
    Report("after warming up", start);
    Report("after the cycles", afterCycles);
    Report("after the phrases (end)", end);
    std::printf("%-28s RSS %+7ld kB   descriptors %+4d   X resources %+5ld   X pixmaps %+9ld bytes\n", "growth",
                end.residentKb - start.residentKb, end.descriptors - start.descriptors,
                end.xResources - start.xResources,
                static_cast<long>(end.xPixmapBytes) - static_cast<long>(start.xPixmapBytes));
    return program.Process()->Alive() ? 0 : 1;
}
