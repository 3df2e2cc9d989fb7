#include "navigation/grid_geometry.h"

#include <algorithm>

namespace zirvel {

namespace {

// lo + size * index / k, with the product kept wide enough for any 32-bit
// rectangle. Integer division truncates toward zero.
std::int32_t GridEdge(std::int32_t lo, std::int64_t size, int index, int k) {
    const std::int64_t offset = size * index / k;
    return static_cast<std::int32_t>(lo + offset);
}

}  // namespace

int GridCellsPerSide(std::int32_t gridLevel) {
    return gridLevel == 1 ? 4 : 2;
}

bool NarrowGridArea(ScreenRect& area, std::int32_t gridLevel, int cell) {
    const int k = GridCellsPerSide(gridLevel);
    if (cell < 1 || cell > k * k) {
        return false;
    }
    const int row = (cell - 1) / k;
    const int col = (cell - 1) % k;
    const std::int64_t w = static_cast<std::int64_t>(area.right) - area.left;
    const std::int64_t h = static_cast<std::int64_t>(area.bottom) - area.top;
    ScreenRect narrowed;
    narrowed.left = GridEdge(area.left, w, col, k);
    narrowed.right = GridEdge(area.left, w, col + 1, k);
    narrowed.top = GridEdge(area.top, h, row, k);
    narrowed.bottom = GridEdge(area.top, h, row + 1, k);
    area = narrowed;
    return true;
}

ScreenPoint GridAreaCentre(const ScreenRect& area) {
    const std::int64_t x = (static_cast<std::int64_t>(area.left) + area.right) / 2;
    const std::int64_t y = (static_cast<std::int64_t>(area.top) + area.bottom) / 2;
    return ScreenPoint{static_cast<std::int32_t>(x), static_cast<std::int32_t>(y)};
}

bool GridAreaDrawable(const ScreenRect& area) {
    return area.Width() >= 1 && area.Height() >= 1;
}

float GridLabelFontSize(float cellWidth, float cellHeight, std::uint32_t dpi) {
    const float size = std::min(cellWidth, cellHeight) * 0.3f;
    const float scale = DpiScale(dpi);
    return std::clamp(size, kGridLabelMinFontSize * scale, kGridLabelMaxFontSize * scale);
}

std::optional<GridLayout> LayOutGrid(const ScreenRect& area, std::int32_t gridLevel, std::uint32_t dpi) {
    if (!GridAreaDrawable(area)) {
        return std::nullopt;
    }
    GridLayout layout;
    const int k = GridCellsPerSide(gridLevel);
    layout.cellsPerSide = k;
    layout.cellWidth = static_cast<float>(area.Width()) / static_cast<float>(k);
    layout.cellHeight = static_cast<float>(area.Height()) / static_cast<float>(k);
    layout.labelFontSize = GridLabelFontSize(layout.cellWidth, layout.cellHeight, dpi);
    const float shadowOffset = kGridLabelShadowOffset * DpiScale(dpi);
    layout.cells.reserve(static_cast<std::size_t>(k) * static_cast<std::size_t>(k));
    for (int row = 0; row < k; ++row) {
        for (int col = 0; col < k; ++col) {
            GridCellLayout cell;
            cell.label = k * row + col + 1;
            cell.row = row;
            cell.col = col;
            cell.cell = GridRectF{static_cast<float>(col) * layout.cellWidth,
                                  static_cast<float>(row) * layout.cellHeight, layout.cellWidth,
                                  layout.cellHeight};
            cell.shadow = cell.cell;
            cell.shadow.x += shadowOffset;
            cell.shadow.y += shadowOffset;
            layout.cells.push_back(cell);
        }
    }
    return layout;
}

}  // namespace zirvel
