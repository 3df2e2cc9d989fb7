// What the wheel picture adds while switch scanning runs: the choices
// "siatka", "elementy" and "zamknij" in the window's corners, outside the
// ring, and the scan highlight, a thick two-tone outline.
#pragma once

#include <cstdint>

#include "core/canvas.h"
#include "engine/engine_state.h"
#include "engine/scan_highlight.h"
#include "engine/switch_scan.h"

namespace zirvel {

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
