#include "navigation/grid_picture.h"

#include "config/text.h"
#include "navigation/grid_geometry.h"

namespace zirvel {
namespace {

constexpr std::uint8_t kCellFillAlpha = 0x1C;
constexpr Argb kCellBorderColor = 0xBEFFFFFFu;
constexpr float kCellBorderWidth = 2.0f;
constexpr Argb kLabelColor = 0xEBFFFFFFu;
constexpr Argb kLabelShadowColor = 0x82000000u;

}  // namespace

void DrawGrid(Canvas& canvas, const ScreenRect& area, std::int32_t gridLevel, std::uint32_t segmentColor,
              std::uint32_t dpi) {
    canvas.SetTextHint(TextHint::AntiAlias);
    canvas.Clear();
    const auto layout = LayOutGrid(area, gridLevel, dpi);
    const float borderWidth = kCellBorderWidth * DpiScale(dpi);
    if (!layout) return;
    const Argb fill = ArgbFromColorRef(segmentColor, kCellFillAlpha);
    const CanvasFont font{std::u16string(kLabelFontFamily), layout->labelFontSize, FontWeight::Bold};
    for (const GridCellLayout& cell : layout->cells) {
        const RectF& box = cell.cell;
        canvas.FillRectangle(box, fill);
        canvas.DrawRectangle(box, kCellBorderColor, borderWidth);
        const std::u16string label = DecimalText(cell.label);
        canvas.DrawCentredText(label, font, cell.shadow, kLabelShadowColor);
        canvas.DrawCentredText(label, font, box, kLabelColor);
    }
}

}  // namespace zirvel
