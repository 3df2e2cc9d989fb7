// The scan highlight, the same on the wheel, the grid and the hints: a
// thick outline whose middle band is white or black, whichever contrasts
// more with what it outlines, between edges of the other one that part it
// from any background.
#pragma once

#include <cstdint>

#include "core/canvas.h"

namespace zirvel {

// Pen widths at 96 DPI: a band of 5 px between edges of 2 px.
inline constexpr float kHighlightBandWidth = 5.0f;
inline constexpr float kHighlightEdgedWidth = 9.0f;

struct HighlightColours {
    Argb band = kOpaqueWhite;
    Argb edge = kOpaqueBlack;
};
// For a field of `fill` (red in the low byte): the band contrasts at least
// 4.5 : 1 with any colour.
HighlightColours HighlightColoursFor(std::uint32_t fill);

// WCAG contrast of two opaque colours, red in the low byte.
double ContrastRatio(std::uint32_t first, std::uint32_t second);

// The outline on `box`, edge first, band over it.
void DrawHighlightRectangle(Canvas& canvas, const RectF& box, std::uint32_t fill, float scale);

}  // namespace zirvel
