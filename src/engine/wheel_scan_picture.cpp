#include "engine/wheel_scan_picture.h"

#include <string_view>
#include <vector>

namespace zirvel {
namespace {

// Lengths at 96 DPI. The corner boxes stay outside the sector disc.
constexpr float kChoiceBoxWidth = 110.0f;
constexpr float kChoiceBoxHeight = 34.0f;
constexpr float kChoiceBoxMargin = 6.0f;
constexpr float kChoiceLabelSize = 15.0f;
constexpr float kChoiceBoxPenWidth = 2.0f;

constexpr std::uint8_t kLit = 255;
constexpr std::uint8_t kUnlit = 135;
constexpr Argb kBoxOutline = 0xB4FFFFFFu;
constexpr Argb kBoxLabel = 0xEBFFFFFFu;

std::u16string_view ChoiceLabel(WheelExtra extra) {
    switch (extra) {
        case WheelExtra::Grid:
            return u"siatka";
        case WheelExtra::Hints:
            return u"elementy";
        case WheelExtra::Close:
            return u"zamknij";
        case WheelExtra::RightArrow:
        case WheelExtra::LeftArrow:
            break;
    }
    return {};
}

RectF ArrowBox(const WheelGeometry& wheel, bool right) {
    const ScreenRect& r = right ? wheel.rightArrow : wheel.leftArrow;
    return RectF{static_cast<float>(r.left), static_cast<float>(r.top), static_cast<float>(r.Width()),
                 static_cast<float>(r.Height())};
}


// The scan highlight's choice, if it is one of the extras.
bool HighlightedExtra(const EngineState& engine, WheelExtra& extra) {
    const ScanEntry entry = WheelScanHighlight(engine);
    const auto& wheels = engine.Wheels();
    const auto current = static_cast<std::size_t>(engine.configuration.currentWheel);
    if (entry.count != 1 || current >= wheels.size()) return false;
    const auto fields = static_cast<std::int32_t>(wheels[current].functions.size());
    const std::vector<WheelExtra> extras = WheelScanExtras(wheels.size());
    const std::int32_t index = entry.first - fields;
    if (index < 0 || static_cast<std::size_t>(index) >= extras.size()) return false;
    extra = extras[static_cast<std::size_t>(index)];
    return true;
}

}  // namespace

RectF ScanChoiceBox(WheelExtra extra, const WheelGeometry& wheel) {
    const float s = wheel.scale;
    const float width = kChoiceBoxWidth * s;
    const float height = kChoiceBoxHeight * s;
    const float margin = kChoiceBoxMargin * s;
    const auto right = static_cast<float>(wheel.width) - margin - width;
    const auto bottom = static_cast<float>(wheel.height) - margin - height;
    switch (extra) {
        case WheelExtra::Grid:
            return RectF{margin, margin, width, height};
        case WheelExtra::Hints:
            return RectF{right, margin, width, height};
        case WheelExtra::Close:
            return RectF{right, bottom, width, height};
        case WheelExtra::RightArrow:
            return ArrowBox(wheel, true);
        case WheelExtra::LeftArrow:
            return ArrowBox(wheel, false);
    }
    return {};
}

bool FieldLit(const EngineState& engine, std::int32_t field) {
    if (field == engine.hoveredField) return true;
    const ScanEntry entry = WheelScanHighlight(engine);
    return entry.count > 0 && field >= entry.first && field < entry.first + entry.count;
}

bool ArrowLit(const EngineState& engine, std::int32_t arrow) {
    if (arrow == engine.hoveredArrow) return true;
    WheelExtra extra{};
    return HighlightedExtra(engine, extra) &&
           extra == (arrow == 1 ? WheelExtra::RightArrow : WheelExtra::LeftArrow);
}

void DrawSectorHighlight(Canvas& canvas, const EngineState& engine, std::int32_t first, std::int32_t count,
                         float sectorWidth, std::uint32_t fill) {
    const WheelGeometry& wheel = engine.wheel;
    const float radius = kSectorDiscRadius * wheel.scale;
    const RectF disc{static_cast<float>(wheel.centreX) - radius, static_cast<float>(wheel.centreY) - radius,
                     2.0f * radius, 2.0f * radius};
    const float start = static_cast<float>(first) * sectorWidth - 90.0f;
    const float sweep = static_cast<float>(count) * sectorWidth;
    const HighlightColours colours = HighlightColoursFor(fill);
    canvas.DrawPie(disc, start, sweep, colours.edge, kHighlightEdgedWidth * wheel.scale);
    canvas.DrawPie(disc, start, sweep, colours.band, kHighlightBandWidth * wheel.scale);
}

void DrawWheelScanChoices(const EngineState& engine, Canvas& canvas) {
    if (!WheelScanRunning(engine)) return;
    const WheelGeometry& wheel = engine.wheel;
    const std::uint32_t color = engine.Settings().segmentColor;
    WheelExtra highlighted{};
    const bool extraLit = HighlightedExtra(engine, highlighted);
    const CanvasFont font{std::u16string(kLabelFontFamily), kChoiceLabelSize * wheel.scale, FontWeight::Bold};
    for (WheelExtra extra : {WheelExtra::Grid, WheelExtra::Hints, WheelExtra::Close}) {
        const RectF box = ScanChoiceBox(extra, wheel);
        const bool lit = extraLit && extra == highlighted;
        canvas.FillRectangle(box, ArgbFromColorRef(color, lit ? kLit : kUnlit));
        canvas.DrawRectangle(box, lit ? kOpaqueWhite : kBoxOutline, kChoiceBoxPenWidth * wheel.scale);
        canvas.DrawCentredText(ChoiceLabel(extra), font, box, lit ? kOpaqueWhite : kBoxLabel);
    }
    if (extraLit) DrawHighlightRectangle(canvas, ScanChoiceBox(highlighted, wheel), color, wheel.scale);
    if (engine.hoveredArrow >= 0) {
        DrawHighlightRectangle(canvas, ScanChoiceBox(engine.hoveredArrow == 1 ? WheelExtra::RightArrow : WheelExtra::LeftArrow,
                                                 wheel),
                         color, wheel.scale);
    }
}

}  // namespace zirvel
