// Throughput of the wheels-file writer and reader on a large file:
// 200 wheels x 24 functions x 8 steps. Prints MB/s (10^6 bytes per second)
// as the median of several runs.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "config/file_io.h"
#include "config/wheels_file.h"

namespace {

using Clock = std::chrono::steady_clock;

std::vector<zirvel::Wheel> MakeLargeModel() {
    static const char16_t* keys[] = {u"a", u"ctrl", u"space", u"F5", u"lpm", u"enter", u"ą", u"shift"};
    std::vector<zirvel::Wheel> wheels(200);
    for (std::size_t w = 0; w < wheels.size(); ++w) {
        wheels[w].name = u"Koło gry numer " + std::u16string(1, static_cast<char16_t>(u'A' + w % 26));
        wheels[w].functions.resize(24);
        for (std::size_t f = 0; f < 24; ++f) {
            zirvel::WheelFunction& function = wheels[w].functions[f];
            function.name = u"Funkcja „leczenie” nr " + std::u16string(1, static_cast<char16_t>(u'a' + f));
            function.icon = u"heal.png";
            function.voice = u"lecz teraz";
            function.hasColor = f % 2 == 0;
            function.color = 0x00DB9834;
            function.delay = f % 3 == 0 ? 30 : 120;
            for (std::size_t s = 0; s < 8; ++s) {
                zirvel::Step step;
                step.key = zirvel::ParseKeyName(keys[s]);
                step.kind = static_cast<zirvel::StepKind>(s % 3);
                step.value = step.kind == zirvel::StepKind::Hold ? 500 : 2;
                if (s == 7) {
                    step.kind = zirvel::StepKind::Open;
                    step.target = u"https://example.org/mapa?x=1";
                }
                function.steps.push_back(step);
            }
        }
    }
    return wheels;
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

double Seconds(Clock::duration duration) { return std::chrono::duration<double>(duration).count(); }

}  // namespace

int main() {
    constexpr int kRuns = 9;
    const std::vector<zirvel::Wheel> model = MakeLargeModel();
    const std::u16string path =
        (std::filesystem::temp_directory_path() / "zirvel_wheels_benchmark.json").u16string();

    std::string text;
    std::vector<double> writeSeconds;
    for (int run = 0; run < kRuns; ++run) {
        const auto start = Clock::now();
        text = zirvel::WriteWheelsFile(model);
        writeSeconds.push_back(Seconds(Clock::now() - start));
    }
    if (!zirvel::WriteFileBytes(path, text)) {
        std::fprintf(stderr, "cannot write the benchmark file\n");
        return 1;
    }

    std::vector<double> readSeconds;
    std::size_t functionsRead = 0;
    for (int run = 0; run < kRuns; ++run) {
        std::vector<zirvel::Wheel> wheels;
        std::u16string messages;
        const auto start = Clock::now();
        const bool ok = zirvel::ReadWheelsFile(path, wheels, messages);
        readSeconds.push_back(Seconds(Clock::now() - start));
        if (!ok || wheels.size() != 200) {
            std::fprintf(stderr, "the benchmark file did not read back cleanly\n");
            return 1;
        }
        functionsRead = 0;
        for (const auto& wheel : wheels) functionsRead += wheel.functions.size();
    }
    std::filesystem::remove(std::filesystem::path(path));

    const double megabytes = static_cast<double>(text.size()) / 1e6;
    std::printf("wheels file: 200 wheels x 24 functions x 8 steps, %.2f MB, %zu functions read back\n", megabytes,
                functionsRead);
    std::printf("WriteWheelsFile: median %.2f ms, %.0f MB/s (target >= 100)\n", Median(writeSeconds) * 1e3,
                megabytes / Median(writeSeconds));
    std::printf("ReadWheelsFile:  median %.2f ms, %.0f MB/s (target >= 50)\n", Median(readSeconds) * 1e3,
                megabytes / Median(readSeconds));
    return 0;
}
