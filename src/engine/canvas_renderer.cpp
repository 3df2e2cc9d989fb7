#include "engine/canvas_renderer.h"

#include <memory>

#include "engine/engine_state.h"
#include "engine/icon_cache.h"
#include "engine/renderer.h"
#include "engine/wheel_picture.h"
#include "navigation/element_filter.h"
#include "navigation/grid_geometry.h"
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

// The grid window moves and resizes to the grid area. An area below one
// pixel keeps the previous picture.
void PresentGrid(EngineState& engine) {
    const ScreenRect area = engine.gridRect;
    if (!GridAreaDrawable(area)) return;
    auto canvas = installed->factory.CreateCanvas(area.Width(), area.Height());
    DrawGrid(*canvas, area, engine.gridLevel, engine.Settings().segmentColor);
    engine.platform->PresentPicture(Surface::Grid, {area.left, area.top}, canvas->TakePicture());
}

void PresentHints(EngineState& engine) {
    const ScreenRect area = engine.hintArea;
    if (!HintAreaDrawable(area)) return;
    auto canvas = installed->factory.CreateCanvas(area.Width(), area.Height());
    DrawHints(*canvas, area, engine.hintRects, engine.Settings().segmentColor);
    engine.platform->PresentPicture(Surface::Grid, {area.left, area.top}, canvas->TakePicture());
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
