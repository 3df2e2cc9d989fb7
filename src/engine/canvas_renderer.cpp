#include "engine/canvas_renderer.h"

#include <cstdint>
#include <memory>
#include <optional>

#include "engine/engine_state.h"
#include "engine/icon_cache.h"
#include "engine/renderer.h"
#include "engine/screen_scan.h"
#include "engine/screen_scan_picture.h"
#include "engine/wheel_picture.h"
#include "navigation/grid_picture.h"
#include "navigation/hint_picture.h"

namespace zirvel {
namespace {

// A grid picture is decided by these alone.
struct GridPictureKey {
    ScreenRect area;
    std::int32_t level = 0;
    std::uint32_t segmentColor = 0;
    std::uint32_t dpi = 0;
    ScanEntry scanHighlight{-1, 0};  // while switch scanning
    bool operator==(const GridPictureKey&) const = default;
};

struct InstalledCanvases {
    explicit InstalledCanvases(CanvasFactory& f) : factory(f), icons(f) {}
    CanvasFactory& factory;
    IconCache icons;
    // The wheel's body as last drawn: while the user steers within a field
    // only the pointer is drawn anew, over a copy of it.
    std::optional<WheelBodyKey> wheelBodyKey;
    Picture wheelBody;
    // The grid picture the grid surface holds, if it holds one: the
    // surface keeps its picture while hidden, so showing the same grid
    // again draws and hands over nothing (a full-screen picture costs
    // milliseconds of both).
    std::optional<GridPictureKey> gridSurfaceHolds;
};

std::unique_ptr<InstalledCanvases> installed;

void PresentWheel(EngineState& engine) {
    WheelBodyKey key = WheelBodyKeyOf(engine);
    if (installed->wheelBodyKey != key) {
        auto body = installed->factory.CreateCanvas(engine.wheel.width, engine.wheel.height);
        DrawWheelBody(engine, *body, installed->icons);
        installed->wheelBody = body->TakePicture();
        installed->wheelBodyKey = std::move(key);
    }
    auto canvas = installed->factory.CreateCanvas(engine.wheel.width, engine.wheel.height);
    canvas->SetPicture(installed->wheelBody);
    DrawWheelPointer(engine, *canvas);
    const ScreenRect window = engine.platform->SurfaceRect(Surface::Wheel);
    engine.platform->PresentPicture(Surface::Wheel, {window.left, window.top}, canvas->TakePicture());
}

// Draws a picture covering `area` and shows it in the grid window, which
// moves and resizes to it. An area below one pixel keeps the previous
// picture.
template <typename Draw>
bool PresentOnGridSurface(EngineState& engine, const ScreenRect& area, Draw draw) {
    if (area.Width() < 1 || area.Height() < 1) return false;
    auto canvas = installed->factory.CreateCanvas(area.Width(), area.Height());
    draw(*canvas);
    engine.platform->PresentPicture(Surface::Grid, {area.left, area.top}, canvas->TakePicture());
    return true;
}

void PresentGrid(EngineState& engine) {
    const GridPictureKey key{engine.gridRect, engine.gridLevel, engine.Settings().segmentColor, engine.gridDpi,
                             GridScanHighlight(engine)};
    if (installed->gridSurfaceHolds == key) return;
    const bool presented = PresentOnGridSurface(engine, engine.gridRect, [&](Canvas& canvas) {
        DrawGrid(canvas, key.area, key.level, key.segmentColor, key.dpi);
        DrawGridScan(canvas, key.area, key.level, key.scanHighlight, key.segmentColor, key.dpi);
    });
    if (presented) installed->gridSurfaceHolds = key;
}

void PresentHints(EngineState& engine) {
    const bool presented = PresentOnGridSurface(engine, engine.hintArea, [&](Canvas& canvas) {
        DrawHints(canvas, engine.hintArea, engine.hintRects, engine.Settings().segmentColor, engine.hintDpi);
        DrawHintScan(canvas, engine.hintArea, engine.hintRects, engine.scan.hintOrder, HintScanHighlight(engine),
                     engine.Settings().segmentColor, engine.hintDpi);
    });
    if (presented) installed->gridSurfaceHolds.reset();
}

}  // namespace

void InstallCanvasRenderer(CanvasFactory& factory) {
    installed = std::make_unique<InstalledCanvases>(factory);
    SetRenderer(Renderer{PresentWheel, PresentGrid, PresentHints});
}

void RemoveCanvasRenderer() {
    SetRenderer(Renderer{});
    installed.reset();
}

}  // namespace zirvel
