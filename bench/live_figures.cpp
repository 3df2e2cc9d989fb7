#include "live_figures.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>
#include <unistd.h>

namespace zirvel_bench {

std::string TwentyFourWheelsFile(bool named) {
    const std::string actions(kEightLetterWheel);
    const std::string fields = actions.substr(actions.find('['), actions.rfind(']') - actions.find('[') + 1);
    std::string file = R"({"wheels": [)";
    for (int wheel = 0; wheel < 24; ++wheel) {
        file += wheel ? ",\n" : "\n";
        file += R"(  {"name": "W)" + std::to_string(wheel) + "\", ";
        if (named) {
            file += R"("apps": [)";
            for (int app = 0; app < 64; ++app) {
                file += (app ? ", \"" : "\"") + std::string("program_") + std::to_string(wheel) + "_" +
                        std::to_string(app) + ".exe\"";
            }
            file += "], ";
        }
        file += R"("actions": )" + fields + "}";
    }
    return file + "]}";
}

double Milliseconds(std::chrono::steady_clock::duration duration) {
    return std::chrono::duration<double, std::milli>(duration).count();
}

void ReportLatency(const char* what, std::vector<double> samples) {
    if (samples.empty()) {
        std::printf("%-50s no samples\n", what);
        return;
    }
    std::sort(samples.begin(), samples.end());
    const auto at = [&samples](double q) { return samples[static_cast<std::size_t>(q * (samples.size() - 1))]; };
    std::printf("%-50s median %7.2f ms   p90 %7.2f ms   max %7.2f ms   (n = %zu)\n", what, at(0.5), at(0.9),
                samples.back(), samples.size());
}

double CpuSeconds(pid_t pid) {
    std::ifstream stat("/proc/" + std::to_string(pid) + "/stat");
    std::string line;
    std::getline(stat, line);
    if (line.empty()) return 0;
    // Fields 14 and 15 (utime, stime) follow the command name in parentheses.
    std::istringstream fields(line.substr(line.rfind(')') + 2));
    std::string field;
    double ticks = 0;
    for (int index = 3; fields >> field; ++index) {
        if (index == 14 || index == 15) ticks += std::stod(field);
        if (index == 15) break;
    }
    return ticks / static_cast<double>(sysconf(_SC_CLK_TCK));
}

double CpuPercentOver(pid_t pid, std::chrono::seconds span) {
    const double before = CpuSeconds(pid);
    std::this_thread::sleep_for(span);
    return 100.0 * (CpuSeconds(pid) - before) / static_cast<double>(span.count());
}

}  // namespace zirvel_bench
