#include "engine/canvas_renderer.h"

#include <memory>

#include "engine/engine_state.h"
#include "engine/icon_cache.h"
#include "engine/renderer.h"
#include "engine/wheel_picture.h"
#include "navigation/grid_picture.h"
#include "navigation/hint_picture.h"

namespace zirvel {
namespace {

struct InstalledCanvases {
    explicit InstalledCanvases(CanvasFactory& f) : factory(f), icons(f) {}
    CanvasFactory& factory;
    IconCache icons;
};

std::unique_ptr<InstalledCanvases> installed;

void PresentWheel(EngineState& engine) {
    auto canvas = installed->factory.CreateCanvas(kWheelWidth, kWheelHeight);
    DrawWheel(engine, *canvas, installed->icons);
    const ScreenRect window = engine.platform->SurfaceRect(Surface::Wheel);
    engine.platform->PresentPicture(Surface::Wheel, {window.left, window.top}, canvas->TakePicture());
}

// Draws a picture covering `area` and shows it in the grid window, which
// moves and resizes to it. An area below one pixel keeps the previous
// picture.
template <typename Draw>
void PresentOnGridSurface(EngineState& engine, const ScreenRect& area, Draw draw) {
    if (area.Width() < 1 || area.Height() < 1) return;
    auto canvas = installed->factory.CreateCanvas(area.Width(), area.Height());
    draw(*canvas);
    engine.platform->PresentPicture(Surface::Grid, {area.left, area.top}, canvas->TakePicture());
}

void PresentGrid(EngineState& engine) {
    PresentOnGridSurface(engine, engine.gridRect, [&](Canvas& canvas) {
        DrawGrid(canvas, engine.gridRect, engine.gridLevel, engine.Settings().segmentColor);
    });
}

void PresentHints(EngineState& engine) {
    PresentOnGridSurface(engine, engine.hintArea, [&](Canvas& canvas) {
        DrawHints(canvas, engine.hintArea, engine.hintRects, engine.Settings().segmentColor);
    });
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
