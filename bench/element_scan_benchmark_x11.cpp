// How long the element scan (AT-SPI2) takes on a private X server with a
// private session bus:
//   - a dialog of a few controls (zenity --question), the Qt test window
//     (eight numbered elements) and windows with 400 list rows (Qt, GTK);
//   - cold: a fresh process's first scan (connecting to the accessibility
//     bus included), median of 5 processes;
//   - warm: the median of 20 scans in one process.
// Usage: element_scan_benchmark (Linux; bench/element_scan_benchmark.cpp is Windows's)
//        (element_scan_benchmark --once scans once and prints "ms count")
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "live_figures.h"
#include "platform/x11/accessibility_bus_switch.h"
#include "platform/x11/atspi_element_scanner.h"
#include "private_session_bus.h"
#include "x_session.h"

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using zirvel::ElementScanMode;
using zirvel_bench::Milliseconds;
using zirvel_test::ChildProcess;
using zirvel_test::WaitUntil;

constexpr int kWarmScans = 20;
constexpr int kColdProcesses = 5;

double Median(std::vector<double> samples) {
    std::sort(samples.begin(), samples.end());
    return samples.empty() ? 0.0 : samples[samples.size() / 2];
}

int ScanOnce() {
    zirvel::x11::AtspiElementScanner scanner;
    const auto start = Clock::now();
    const zirvel::ElementScanResult result = scanner.Scan(ElementScanMode::ForegroundWindow);
    std::printf("%.2f %zu\n", Milliseconds(Clock::now() - start), result.elements.size());
    return 0;
}

struct Target {
    std::string name;
    std::vector<std::string> command;
    std::string title;
};

}  // namespace

int main(int argc, char* argv[]) {
    if (argc > 1 && std::string(argv[1]) == "--once") return ScanOnce();

    zirvel_test::PrivateXServer server(1280, 1024);
    if (!server.Running()) return 1;
    zirvel_test::PrivateSessionBus bus(server.Name());
    if (!bus.Running()) return 1;
    setenv("DISPLAY", server.Name().c_str(), 1);
    setenv("DBUS_SESSION_BUS_ADDRESS", bus.Address().c_str(), 1);
    unsetenv("AT_SPI_BUS_ADDRESS");
    if (!zirvel::x11::SwitchAccessibilityBusOn()) std::printf("the accessibility bus did not switch on\n");
    zirvel_test::XConnection user(server.Name());
    const std::filesystem::path folder = zirvel_test::ScratchDirectory("zirvel_scan_bench_");
    const std::vector<std::string> environment = {"DISPLAY=" + server.Name(),
                                                  "DBUS_SESSION_BUS_ADDRESS=" + bus.Address(),
                                                  "QT_QPA_PLATFORM=xcb", "LANG=C.UTF-8"};
    std::vector<std::string> rows;
    for (int i = 1; i <= 400; ++i) rows.push_back("wiersz " + std::to_string(i));
    std::vector<std::string> gtkList = {"zenity", "--list", "--title=Lista", "--column=Nazwa"};
    gtkList.insert(gtkList.end(), rows.begin(), rows.end());
    const std::vector<Target> targets = {
        {"zenity question (GTK, 3 elements)", {"zenity", "--question", "--title=Pytanie", "--text=Czy?"}, "Pytanie"},
        {"Qt test window (8 elements)", {ZIRVEL_HINT_WINDOW}, "Zirvel hint test window"},
        {"Qt list of 400 rows", {ZIRVEL_HINT_WINDOW, "--rows", "400"}, "Zirvel hint test window"},
        {"GTK list of 400 rows (zenity --list)", gtkList, "Lista"},
    };

    zirvel::x11::AtspiElementScanner scanner;
    for (const Target& target : targets) {
        ChildProcess application(target.command, environment, folder / "output.txt");
        Window window = 0;
        WaitUntil([&] { return (window = user.FindWindow(target.title)) != 0 && user.IsMapped(window); }, 8000ms);
        if (window == 0) {
            std::printf("%s: the window did not show\n", target.name.c_str());
            continue;
        }
        XSetInputFocus(user.Get(), window, RevertToParent, CurrentTime);
        XSync(user.Get(), False);
        // Ready once the application answers on the bus.
        std::size_t count = 0;
        WaitUntil([&] { return (count = scanner.Scan(ElementScanMode::ForegroundWindow).elements.size()) > 0; },
                  8000ms, 100ms);
        std::vector<double> cold;
        for (int i = 0; i < kColdProcesses; ++i) {
            ChildProcess once({argv[0], "--once"}, {}, folder / "once.txt");
            once.WaitForExit(20000ms);
        }
        std::ifstream onceOutput(folder / "once.txt");
        double ms = 0;
        std::size_t found = 0;
        while (onceOutput >> ms >> found) cold.push_back(ms);
        std::filesystem::remove(folder / "once.txt");
        std::vector<double> warm;
        for (int i = 0; i < kWarmScans; ++i) {
            const auto start = Clock::now();
            count = scanner.Scan(ElementScanMode::ForegroundWindow).elements.size();
            warm.push_back(Milliseconds(Clock::now() - start));
        }
        std::printf("%-40s %3zu hints  cold (fresh process) median %7.1f ms (max %7.1f)  warm median %7.1f ms\n",
                    target.name.c_str(), count, Median(cold), cold.empty() ? 0.0 : *std::max_element(cold.begin(), cold.end()),
                    Median(warm));
    }
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
    return 0;
}
