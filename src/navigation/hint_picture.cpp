#include "navigation/hint_picture.h"

#include "config/text.h"
#include "navigation/element_filter.h"

namespace zirvel {
namespace {

constexpr std::uint8_t kElementFillAlpha = 0x16;
constexpr std::uint8_t kElementBorderAlpha = 0xD7;
constexpr float kElementBorderWidth = 2.0f;
constexpr std::uint8_t kLabelBoxAlpha = 0xEB;

RectF ToRectF(const HintBox& box) {
    return RectF{static_cast<float>(box.x), static_cast<float>(box.y), static_cast<float>(box.width),
                 static_cast<float>(box.height)};
}

}  // namespace

void DrawHints(Canvas& canvas, const ScreenRect& area, std::span<const ScreenRect> elements,
               std::uint32_t segmentColor, std::uint32_t dpi) {
    canvas.SetTextHint(TextHint::AntiAlias);
    canvas.Clear();
    const Argb fill = ArgbFromColorRef(segmentColor, kElementFillAlpha);
    const Argb border = ArgbFromColorRef(segmentColor, kElementBorderAlpha);
    const Argb labelBox = ArgbFromColorRef(segmentColor, kLabelBoxAlpha);
    const float scale = DpiScale(dpi);
    const CanvasFont font{std::u16string(kLabelFontFamily), kHintFontSize * scale, FontWeight::Bold};
    for (const HintLayout& hint : LayOutHints(area, elements, dpi)) {
        const RectF element = ToRectF(hint.element);
        canvas.FillRectangle(element, fill);
        canvas.DrawRectangle(element, border, kElementBorderWidth * scale);
        const RectF label = ToRectF(hint.label);
        canvas.FillRectangle(label, labelBox);
        canvas.DrawCentredText(DecimalText(hint.number), font, label, kOpaqueWhite);
    }
}

}  // namespace zirvel
