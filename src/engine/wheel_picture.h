// The wheel picture: sectors with their labels and icons, the transparent
// centre hole, the wheel counter and arrows, the wheel's name, the virtual
// cursor and the dwell ring, redrawn whole from the engine state.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/canvas.h"
#include "engine/engine_state.h"
#include "engine/icon_cache.h"

namespace zirvel {

// Draws the current wheel on a canvas of engine.wheel.width x height pixels,
// every length scaled by the wheel's DPI.
void DrawWheel(const EngineState& engine, Canvas& canvas, IconCache& icons);

// The same in two layers. The body (sectors, labels, icons, hole, counter,
// arrows, name) changes only when the hovered field or arrow, the wheel or
// the DPI does; the pointer (virtual cursor, dwell ring) with every frame
// of steering. Drawing the pointer over a body taken before gives the
// pixels DrawWheel gives.
void DrawWheelBody(const EngineState& engine, Canvas& canvas, IconCache& icons);
void DrawWheelPointer(const EngineState& engine, Canvas& canvas);

// Everything the body is drawn from: equal keys give equal bodies.
struct WheelBodyKey {
    struct Field {
        std::u16string name;
        std::u16string icon;
        std::uint32_t color = 0;
        bool hasColor = false;
        friend bool operator==(const Field&, const Field&) = default;
    };
    WheelGeometry geometry;
    std::int32_t currentWheel = 0;
    std::size_t wheelCount = 0;
    std::int32_t hoveredField = -1;
    std::int32_t hoveredArrow = -1;
    bool scanning = false;
    ScanEntry scanHighlight;
    std::uint32_t segmentColor = 0;
    std::u16string programDirectory;
    std::u16string shippedDirectory;
    std::u16string wheelName;
    std::vector<Field> fields;
    friend bool operator==(const WheelBodyKey&, const WheelBodyKey&) = default;
};
WheelBodyKey WheelBodyKeyOf(const EngineState& engine);

}  // namespace zirvel
