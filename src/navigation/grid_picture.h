// The numbered grid picture: translucent cells with white borders and their
// numbers, shadowed.
#pragma once

#include <cstdint>

#include "core/canvas.h"
#include "core/dpi_scale.h"
#include "core/geometry.h"

namespace zirvel {

// Draws the grid of `area` at `gridLevel` on a canvas of the area's size;
// `segmentColor` (red in the low byte) tints the cells; labels and borders
// scale with the monitor's `dpi`. An area narrower or lower than one pixel
// draws nothing.
void DrawGrid(Canvas& canvas, const ScreenRect& area, std::int32_t gridLevel, std::uint32_t segmentColor,
              std::uint32_t dpi = kDefaultDpi);

}  // namespace zirvel
