// What the grid and hint pictures add while they are scanned: the scan
// highlight round a row or a cell of the grid, round a row of hints or one
// hint, and the highlighted action's name ("kliknij"…, "zamknij").
#pragma once

#include <cstdint>
#include <span>

#include "core/canvas.h"
#include "engine/switch_scanner.h"

namespace zirvel {

// Over the grid of `area` at `gridLevel`: choices are its cells row by
// row, then the grid's actions. Nothing for a highlight of count 0.
void DrawGridScan(Canvas& canvas, const ScreenRect& area, std::int32_t gridLevel, ScanEntry highlight,
                  std::uint32_t segmentColor, std::uint32_t dpi);

// Over the hints of `area`: choice c is hint order[c]; after the hints
// "zamknij", drawn at the top of the area while scanning.
void DrawHintScan(Canvas& canvas, const ScreenRect& area, std::span<const ScreenRect> hints,
                  std::span<const std::int32_t> order, ScanEntry highlight, std::uint32_t segmentColor,
                  std::uint32_t dpi);

}  // namespace zirvel
