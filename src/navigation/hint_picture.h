// The element hint picture: each element tinted and outlined, its number in
// a box at its top left.
#pragma once

#include <cstdint>
#include <span>

#include "core/canvas.h"
#include "core/dpi_scale.h"
#include "core/geometry.h"

namespace zirvel {

// Draws the hints of `elements` (screen rectangles, hint 1 first) on a
// canvas the size of `area`; `segmentColor` (red in the low byte) tints
// them; labels and borders scale with the monitor's `dpi`. An area narrower
// or lower than one pixel draws nothing.
void DrawHints(Canvas& canvas, const ScreenRect& area, std::span<const ScreenRect> elements,
               std::uint32_t segmentColor, std::uint32_t dpi = kDefaultDpi);

}  // namespace zirvel
