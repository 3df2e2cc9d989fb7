// What one redraw costs: a whole DrawWheel (canvas, drawing, finished
// picture) with 8 and with 24 fields that all have icons and names, at 96
// and at 144 DPI (588 x 460 and 882 x 690), and
// DrawGrid and DrawHints on a 1920 x 1080 monitor. Presenting the picture is
// not included. Prints the median and the 99th percentile of many runs.
#include "picture_benchmark.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "config/text.h"
#include "engine/engine_state.h"
#include "engine/icon_cache.h"
#include "engine/picture_png.h"
#include "engine/wheel_picture.h"
#include "navigation/grid_picture.h"
#include "navigation/hint_picture.h"
#include "platform/null/null_platform.h"

namespace zirvel_bench {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int kWarmUpRuns = 20;

struct Figures {
    double median = 0.0;
    double p99 = 0.0;
};

Figures Time(int runs, const std::function<void()>& draw) {
    for (int i = 0; i < kWarmUpRuns; ++i) draw();
    std::vector<double> milliseconds;
    milliseconds.reserve(static_cast<std::size_t>(runs));
    for (int i = 0; i < runs; ++i) {
        const auto start = Clock::now();
        draw();
        milliseconds.push_back(std::chrono::duration<double, std::milli>(Clock::now() - start).count());
    }
    std::sort(milliseconds.begin(), milliseconds.end());
    const auto at = [&](double fraction) {
        return milliseconds[std::min(milliseconds.size() - 1, static_cast<std::size_t>(fraction * static_cast<double>(milliseconds.size())))];
    };
    return Figures{at(0.5), at(0.99)};
}

void Report(const char* what, int runs, const Figures& figures) {
    std::printf("%-46s %5d runs   median %7.3f ms   p99 %7.3f ms\n", what, runs, figures.median, figures.p99);
}

// Distinct 48 x 48 icons written as PNG files, so that each field decodes
// and draws an image of its own.
bool WriteIcons(const std::filesystem::path& directory, int count) {
    std::filesystem::create_directories(directory);
    for (int n = 0; n < count; ++n) {
        zirvel::Picture icon;
        icon.width = 48;
        icon.height = 48;
        icon.pixels.assign(48u * 48u, 0u);
        const std::uint32_t colour = 0xFF000000u | (static_cast<std::uint32_t>(40 + n * 9) << 16) | 0x8000u |
                                     static_cast<std::uint32_t>(200 - n * 7);
        for (int y = 4; y < 44; ++y) {
            for (int x = 4; x < 44; ++x) icon.pixels[static_cast<std::size_t>(y * 48 + x)] = colour;
        }
        const auto path = directory / ("icon_" + std::to_string(n) + ".png");
        if (!zirvel::WritePicturePng(icon, path.u16string())) return false;
    }
    return true;
}

// Three wheels on the engine's wheel geometry, the current one with `fields` functions that all have an
// icon and a name; a hovered field and a half-done dwell, as while steering.
void LoadWheels(zirvel::EngineState& engine, std::size_t fields) {
    std::vector<zirvel::Wheel> wheels(3);
    for (zirvel::Wheel& wheel : wheels) {
        wheel.name = u"Strategia";
        for (std::size_t i = 0; i < fields; ++i) {
            zirvel::WheelFunction function;
            function.name = zirvel::Concat({u"Akcja ", zirvel::DecimalText(static_cast<std::int64_t>(i + 1))});
            function.icon = zirvel::Concat({u"icons\\icon_", zirvel::DecimalText(static_cast<std::int64_t>(i)), u".png"});
            wheel.functions.push_back(function);
        }
    }
    engine.configuration.wheels = std::move(wheels);
    engine.configuration.currentWheel = 1;
    engine.hoveredField = 2;
    engine.cursorX = zirvel::ScaleByDpi(400, engine.wheel.dpi);  // the same place at any DPI
    engine.cursorY = zirvel::ScaleByDpi(150, engine.wheel.dpi);
    engine.dwellProgress = 0.5f;
}

}  // namespace

int RunPictureBenchmark(zirvel::CanvasFactory& factory, const char* canvasName) {
    constexpr int kWheelRuns = 500;
    constexpr int kScreenRuns = 100;
    const std::filesystem::path directory = std::filesystem::temp_directory_path() / "zirvel_picture_benchmark";
    if (!WriteIcons(directory / "icons", 24)) {
        std::fprintf(stderr, "cannot write the benchmark icons\n");
        return 1;
    }
    zirvel::NullPlatform platform;
    std::printf("Pictures on the %s canvas\n", canvasName);
    for (std::size_t fields : {8u, 24u}) {
        for (std::uint32_t dpi : {96u, 144u}) {
            zirvel::ResetEngineState(platform, directory.u16string());
            zirvel::EngineState& engine = zirvel::Engine();
            engine.wheel = zirvel::WheelGeometryAt(dpi);
            LoadWheels(engine, fields);
            zirvel::IconCache icons(factory);
            const Figures figures = Time(kWheelRuns, [&] {
                auto canvas = factory.CreateCanvas(engine.wheel.width, engine.wheel.height);
                zirvel::DrawWheel(engine, *canvas, icons);
                canvas->TakePicture();
            });
            const std::string size = std::to_string(fields) + " fields with icons, " +
                                     std::to_string(engine.wheel.width) + " x " +
                                     std::to_string(engine.wheel.height);
            Report(("DrawWheel, " + size).c_str(), kWheelRuns, figures);
            // A frame of steering within a field, as the renderer draws it:
            // the pointer over a copy of the body it keeps.
            auto bodyCanvas = factory.CreateCanvas(engine.wheel.width, engine.wheel.height);
            zirvel::DrawWheelBody(engine, *bodyCanvas, icons);
            const zirvel::Picture body = bodyCanvas->TakePicture();
            Report(("Steering frame (pointer over the kept body), " + size).c_str(), kWheelRuns,
                   Time(kWheelRuns, [&] {
                       auto canvas = factory.CreateCanvas(engine.wheel.width, engine.wheel.height);
                       canvas->SetPicture(body);
                       zirvel::DrawWheelPointer(engine, *canvas);
                       canvas->TakePicture();
                   }));
        }
    }
    const zirvel::ScreenRect screen{0, 0, 1920, 1080};
    Report("DrawGrid, 4 x 4 on 1920 x 1080", kScreenRuns, Time(kScreenRuns, [&] {
               auto canvas = factory.CreateCanvas(screen.Width(), screen.Height());
               zirvel::DrawGrid(*canvas, screen, 1, 0xDB9834);
               canvas->TakePicture();
           }));
    std::vector<zirvel::ScreenRect> elements;
    for (int i = 0; i < 99; ++i) {
        const int x = 20 + (i % 11) * 170;
        const int y = 20 + (i / 11) * 115;
        elements.push_back({x, y, x + 150, y + 40});
    }
    Report("DrawHints, 99 elements on 1920 x 1080", kScreenRuns, Time(kScreenRuns, [&] {
               auto canvas = factory.CreateCanvas(screen.Width(), screen.Height());
               zirvel::DrawHints(*canvas, screen, elements, 0xDB9834);
               canvas->TakePicture();
           }));
    std::error_code ignored;
    std::filesystem::remove_all(directory, ignored);
    return 0;
}

}  // namespace zirvel_bench
