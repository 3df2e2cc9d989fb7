// The wheel picture: sectors with their labels and icons, the transparent
// centre hole, the wheel counter and arrows, the wheel's name, the virtual
// cursor and the dwell ring, redrawn whole from the engine state.
#pragma once

#include "engine/canvas.h"
#include "engine/engine_state.h"
#include "engine/icon_cache.h"

namespace zirvel {

// Draws the current wheel on a canvas of engine.wheel.width x height pixels,
// every length scaled by the wheel's DPI.
void DrawWheel(const EngineState& engine, Canvas& canvas, IconCache& icons);

}  // namespace zirvel
