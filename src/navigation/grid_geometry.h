// The screen grid: how a spoken cell number narrows the grid area, where the
// cursor goes, and how the numbered cells are laid out in the grid picture.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "core/dpi_scale.h"
#include "core/geometry.h"

namespace zirvel {

// Cells per row and per column: 4 on the first, full-monitor grid (level 1),
// 2 on every deeper level.
int GridCellsPerSide(std::int32_t gridLevel);

// Makes cell `cell` (numbered row by row from the top left, 1 to k * k) of
// `area` the new area. Each edge is the old left/top plus the truncated
// quotient of size * index / k, so the cells tile the old area exactly.
// Returns false and leaves `area` unchanged when `cell` is out of range.
// Increasing the grid level is the caller's business.
bool NarrowGridArea(ScreenRect& area, std::int32_t gridLevel, int cell);

// ((left + right) / 2, (top + bottom) / 2), integer division truncating
// toward zero. Also computed for an empty or inverted area.
ScreenPoint GridAreaCentre(const ScreenRect& area);

// The grid picture needs at least one pixel each way; otherwise the window
// keeps its previous picture.
bool GridAreaDrawable(const ScreenRect& area);

// A rectangle in the grid picture, relative to the area's top left.
using GridRectF = RectF;

struct GridCellLayout {
    int label = 0;       // k * row + col + 1
    int row = 0;
    int col = 0;
    GridRectF cell;      // filled, bordered, and the label centred in it
    GridRectF shadow;    // the cell moved by (+2, +2) at 96 DPI: the label's shadow
};

struct GridLayout {
    int cellsPerSide = 0;
    float cellWidth = 0.0f;
    float cellHeight = 0.0f;
    float labelFontSize = 0.0f;          // pixels
    std::vector<GridCellLayout> cells;   // row by row, left to right
};

inline constexpr float kGridLabelShadowOffset = 2.0f;
inline constexpr float kGridLabelMinFontSize = 12.0f;
inline constexpr float kGridLabelMaxFontSize = 64.0f;

// min(cellWidth, cellHeight) * 0.3, kept within 12..64 pixels at 96 DPI
// (bounds that scale with `dpi`).
float GridLabelFontSize(float cellWidth, float cellHeight, std::uint32_t dpi = kDefaultDpi);

// The cells of the grid picture for `area` at `gridLevel` on a monitor of
// `dpi`; nothing when the area is not drawable. The cells divide the area
// in screen pixels whatever the DPI; only the labels scale.
std::optional<GridLayout> LayOutGrid(const ScreenRect& area, std::int32_t gridLevel,
                                     std::uint32_t dpi = kDefaultDpi);

}  // namespace zirvel
