#include "engine/screen_scan_picture.h"

#include <algorithm>
#include <string_view>

#include "core/dpi_scale.h"
#include "engine/scan_highlight.h"
#include "engine/screen_scan.h"
#include "navigation/grid_geometry.h"

namespace zirvel {
namespace {

// At 96 DPI.
constexpr float kNameBoxWidth = 130.0f;
constexpr float kNameBoxHeight = 34.0f;
constexpr float kNameSize = 16.0f;
constexpr float kNameMargin = 8.0f;
constexpr std::uint8_t kLit = 255;
constexpr std::uint8_t kUnlit = 135;

float ScaleOf(std::uint32_t dpi) { return static_cast<float>(dpi) / static_cast<float>(kDefaultDpi); }

// The outline drawn inside `box`, so that the picture's edge never cuts it.
void OutlineInside(Canvas& canvas, const RectF& box, std::uint32_t fill, float scale) {
    const float inset = kHighlightEdgedWidth * scale / 2.0f;
    const RectF inner{box.x + inset, box.y + inset, std::max(box.width - 2.0f * inset, 0.0f),
                      std::max(box.height - 2.0f * inset, 0.0f)};
    DrawHighlightRectangle(canvas, inner, fill, scale);
}

// A named box, lit when highlighted, at most as large as the picture.
void DrawNameBox(Canvas& canvas, std::u16string_view name, const RectF& box, bool lit, std::uint32_t color,
                 float scale) {
    canvas.FillRectangle(box, ArgbFromColorRef(color, lit ? kLit : kUnlit));
    const CanvasFont font{std::u16string(kLabelFontFamily), kNameSize * scale, FontWeight::Bold};
    canvas.DrawCentredText(name, font, box, kOpaqueWhite);
    if (lit) OutlineInside(canvas, box, color, scale);
}

RectF NameBoxCentredIn(const ScreenRect& area, float scale) {
    const auto width = static_cast<float>(area.Width());
    const auto height = static_cast<float>(area.Height());
    const float boxWidth = std::min(kNameBoxWidth * scale, width);
    const float boxHeight = std::min(kNameBoxHeight * scale, height);
    return RectF{(width - boxWidth) / 2.0f, (height - boxHeight) / 2.0f, boxWidth, boxHeight};
}

}  // namespace

void DrawGridScan(Canvas& canvas, const ScreenRect& area, std::int32_t gridLevel, ScanEntry highlight,
                  std::uint32_t segmentColor, std::uint32_t dpi) {
    if (highlight.count <= 0 || !GridAreaDrawable(area)) return;
    const float scale = ScaleOf(dpi);
    const int side = GridCellsPerSide(gridLevel);
    const std::int32_t cells = side * side;
    const float cellWidth = static_cast<float>(area.Width()) / static_cast<float>(side);
    const float cellHeight = static_cast<float>(area.Height()) / static_cast<float>(side);
    if (highlight.first >= cells) {
        const auto action = static_cast<std::size_t>(highlight.first - cells);
        if (action < std::size(kGridActions)) {
            DrawNameBox(canvas, GridActionName(kGridActions[action]), NameBoxCentredIn(area, scale), true,
                        segmentColor, scale);
        }
        return;
    }
    // A row (its cells as one group) or one cell.
    const int row = highlight.first / side;
    const int col = highlight.count > 1 ? 0 : highlight.first % side;
    const float width = highlight.count > 1 ? static_cast<float>(area.Width()) : cellWidth;
    OutlineInside(canvas, RectF{static_cast<float>(col) * cellWidth, static_cast<float>(row) * cellHeight, width,
                                cellHeight},
                  segmentColor, scale);
}

void DrawHintScan(Canvas& canvas, const ScreenRect& area, std::span<const ScreenRect> hints,
                  std::span<const std::int32_t> order, ScanEntry highlight, std::uint32_t segmentColor,
                  std::uint32_t dpi) {
    if (highlight.count <= 0 || !GridAreaDrawable(area)) return;
    const float scale = ScaleOf(dpi);
    const auto count = static_cast<std::int32_t>(order.size());
    const float boxWidth = std::min(kNameBoxWidth * scale, static_cast<float>(area.Width()));
    const float boxHeight = std::min(kNameBoxHeight * scale, static_cast<float>(area.Height()));
    const RectF closeBox{(static_cast<float>(area.Width()) - boxWidth) / 2.0f, kNameMargin * scale, boxWidth,
                         boxHeight};
    DrawNameBox(canvas, u"zamknij", closeBox, highlight.first == count, segmentColor, scale);
    for (std::int32_t c = highlight.first; c < highlight.first + highlight.count && c < count; ++c) {
        const auto index = static_cast<std::size_t>(order[static_cast<std::size_t>(c)]);
        if (index >= hints.size()) continue;
        const ScreenRect& hint = hints[index];
        OutlineInside(canvas,
                      RectF{static_cast<float>(hint.left - area.left), static_cast<float>(hint.top - area.top),
                            static_cast<float>(hint.Width()), static_cast<float>(hint.Height())},
                      segmentColor, scale);
    }
}

}  // namespace zirvel
