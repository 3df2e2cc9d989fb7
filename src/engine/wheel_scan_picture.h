// What the wheel picture adds while switch scanning runs: the choices
// "siatka", "elementy" and "zamknij" in the window's corners, outside the
// ring, and the scan highlight, a thick two-tone outline.
#pragma once

#include <cstdint>

#include "engine/canvas.h"
#include "engine/engine_state.h"
#include "engine/switch_scan.h"

namespace zirvel {

// The outline's middle band and its edges: the band is whichever of white
// and black contrasts more with `fill` (a colour with red in the low byte),
// at least 4.5 : 1 for any colour; the edges, the other one, part it from
// any background.
struct HighlightColours {
    Argb band = kOpaqueWhite;
    Argb edge = kOpaqueBlack;
};
HighlightColours HighlightColoursFor(std::uint32_t fill);

// WCAG contrast of two opaque colours, red in the low byte.
double ContrastRatio(std::uint32_t first, std::uint32_t second);

// Where an extra choice is drawn (the arrows keep their own boxes).
RectF ScanChoiceBox(WheelExtra extra, const WheelGeometry& wheel);

// Field `field` is drawn lit: hovered, or inside the scan highlight.
bool FieldLit(const EngineState& engine, std::int32_t field);
// Arrow `arrow` (0 left, 1 right) is drawn lit.
bool ArrowLit(const EngineState& engine, std::int32_t arrow);

// The thick outline round the sector(s) first .. first + count - 1.
void DrawSectorHighlight(Canvas& canvas, const EngineState& engine, std::int32_t first, std::int32_t count,
                         float sectorWidth, std::uint32_t fill);
// The extra choices and the highlight of arrows and extra choices; nothing
// unless the wheel is scanned.
void DrawWheelScanChoices(const EngineState& engine, Canvas& canvas);

}  // namespace zirvel
