#include "engine/grid.h"

#include "engine/element_hints.h"
#include "engine/engine_state.h"
#include "engine/renderer.h"
#include "navigation/grid_geometry.h"

namespace zirvel {

void ShowGrid() {
    EngineState& engine = Engine();
    Platform& system = *engine.platform;
    HideHints();
    const ScreenPoint cursor = system.CursorPosition();
    engine.gridRect = system.MonitorRect(cursor, false);
    engine.gridDpi = system.MonitorDpi(GridAreaCentre(engine.gridRect));
    engine.gridLevel = 1;
    RenderGrid();
    system.ShowSurface(Surface::Grid);
    engine.gridVisible = true;
    system.SetCursorPosition(GridAreaCentre(engine.gridRect));
}

void NarrowGrid(int cell) {
    EngineState& engine = Engine();
    if (!NarrowGridArea(engine.gridRect, engine.gridLevel, cell)) return;
    ++engine.gridLevel;
    RenderGrid();
    engine.platform->SetCursorPosition(GridAreaCentre(engine.gridRect));
}

void HideGrid() {
    EngineState& engine = Engine();
    engine.platform->HideSurface(Surface::Grid);
    engine.gridVisible = false;
}

}  // namespace zirvel
