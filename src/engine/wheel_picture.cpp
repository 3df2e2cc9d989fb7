#include "engine/wheel_picture.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "config/text.h"
#include "engine/wheel_scan_picture.h"

namespace zirvel {
namespace {

// Lengths at 96 DPI, scaled by the wheel's DPI when drawn. The sector disc,
// the centre hole and the boxes in it are placed from the hit tests'
// centre; the hole's radius is the ring's inner one.
constexpr float kCentreHoleRadius = 46.0f;
constexpr float kLabelRadius = 145.0f;
constexpr float kIconSize = 42.0f;
constexpr float kIconLift = 11.0f;  // the icon sits above a name, the name below it
constexpr float kLabelBoxWidth = 124.0f;
constexpr float kLabelBoxHeightUnderIcon = 34.0f;
constexpr float kLabelBoxHeight = 68.0f;
constexpr float kShadowOffset = 1.5f;
constexpr float kCounterTop = -20.0f;  // from the centre
constexpr float kCounterHeight = 22.0f;
constexpr float kWheelNameTop = 2.0f;
constexpr float kWheelNameHeight = 18.0f;
constexpr float kTriangleBack = 8.0f;   // the flat side, towards the wheel
constexpr float kTriangleTip = 10.0f;   // the point, away from it
constexpr float kTriangleHalfHeight = 16.0f;
constexpr float kDwellRingRadius = 17.0f;
constexpr float kDwellRingMinimum = 0.03f;

constexpr std::uint8_t kOpaque = 255;
constexpr std::uint8_t kNotHovered = 135;
constexpr float kNotHoveredIconAlpha = 0.5294118f;  // 135 / 255

constexpr Argb kOutlineColor = 0xB4FFFFFFu;
constexpr float kSectorPenWidth = 2.5f;
constexpr float kArrowPenWidth = 2.0f;
constexpr Argb kTriangleColor = 0xDCFFFFFFu;
constexpr Argb kCounterColor = 0xEBFFFFFFu;
constexpr Argb kLabelColor = 0xD7FFFFFFu;
constexpr Argb kHoveredShadowColor = 0xC8000000u;
constexpr Argb kShadowColor = 0x78000000u;
constexpr float kCursorPenWidth = 1.5f;
constexpr Argb kDwellTrackColor = 0x5AFFFFFFu;
constexpr Argb kDwellArcColor = 0xEBFFFFFFu;
constexpr float kDwellPenWidth = 3.5f;

// Label sizes: fewer fields leave room for larger names.
constexpr std::size_t kManyFields = 9;
constexpr float kLargeLabelSize = 19.0f;
constexpr float kSmallLabelSize = 16.0f;
constexpr float kLabelUnderIconSize = 14.0f;
constexpr float kCounterSize = 15.0f;
constexpr float kWheelNameSize = 13.0f;

// The wheel's lengths at its DPI, and the points it is drawn around.
struct Scaled {
    explicit Scaled(const WheelGeometry& wheel)
        : scale(wheel.scale), centreX(static_cast<float>(wheel.centreX)), centreY(static_cast<float>(wheel.centreY)) {}
    float operator()(float length) const { return length * scale; }
    // A square of `radius` (at 96 DPI) round the centre.
    RectF AroundCentre(float radius) const {
        return RectF{centreX - (*this)(radius), centreY - (*this)(radius), (*this)(2.0f * radius),
                     (*this)(2.0f * radius)};
    }
    float scale;
    float centreX;
    float centreY;
};

RectF ToRectF(const ScreenRect& rect) {
    return RectF{static_cast<float>(rect.left), static_cast<float>(rect.top), static_cast<float>(rect.Width()),
                 static_cast<float>(rect.Height())};
}

CanvasFont BoldFont(float pixelSize) { return CanvasFont{std::u16string(kLabelFontFamily), pixelSize, FontWeight::Bold}; }

// A label: its shadow 1.5 px right and down first, then the text.
void DrawShadowedText(Canvas& canvas, std::u16string_view text, const CanvasFont& font, const RectF& box,
                      bool hovered, const Scaled& s) {
    if (text.empty()) return;
    const RectF shadowBox{box.x + s(kShadowOffset), box.y + s(kShadowOffset), box.width, box.height};
    canvas.DrawCentredText(text, font, shadowBox, hovered ? kHoveredShadowColor : kShadowColor);
    canvas.DrawCentredText(text, font, box, hovered ? kOpaqueWhite : kLabelColor);
}

void DrawSectors(const EngineState& engine, const Wheel& wheel, Canvas& canvas, float sectorWidth, const Scaled& s) {
    const RectF disc = s.AroundCentre(kSectorDiscRadius);
    for (std::size_t i = 0; i < wheel.functions.size(); ++i) {
        const WheelFunction& function = wheel.functions[i];
        const bool hovered = FieldLit(engine, static_cast<std::int32_t>(i));
        const std::uint32_t color = function.hasColor ? function.color : engine.Settings().segmentColor;
        const float start = static_cast<float>(i) * sectorWidth - 90.0f;
        canvas.FillPie(disc, start, sectorWidth, ArgbFromColorRef(color, hovered ? kOpaque : kNotHovered));
        canvas.DrawPie(disc, start, sectorWidth, hovered ? kOpaqueWhite : kOutlineColor, s(kSectorPenWidth));
    }
}

void DrawLabels(const EngineState& engine, const Wheel& wheel, Canvas& canvas, float sectorWidth,
                IconCache& icons, const Scaled& s) {
    const std::size_t count = wheel.functions.size();
    const float nameOnlySize = s(count < kManyFields ? kLargeLabelSize : kSmallLabelSize);
    const float iconSize = s(kIconSize);
    const float lift = s(kIconLift);
    const float boxWidth = s(kLabelBoxWidth);
    for (std::size_t i = 0; i < count; ++i) {
        const WheelFunction& function = wheel.functions[i];
        const bool hovered = FieldLit(engine, static_cast<std::int32_t>(i));
        const float theta = (static_cast<float>(i) * sectorWidth - 90.0f + sectorWidth / 2.0f) *
                            std::numbers::pi_v<float> / 180.0f;
        const PointF p{s.centreX + s(kLabelRadius) * std::cos(theta), s.centreY + s(kLabelRadius) * std::sin(theta)};
        const CanvasImage* icon = icons.GetIcon(function.icon, engine.configuration.programDirectory,
                                                     engine.configuration.shippedDirectory);
        if (icon != nullptr) {
            const float iconCentreY = function.name.empty() ? p.y : p.y - lift;
            const RectF iconBox{p.x - iconSize / 2.0f, iconCentreY - iconSize / 2.0f, iconSize, iconSize};
            canvas.DrawImage(*icon, iconBox, hovered ? 1.0f : kNotHoveredIconAlpha);
            const RectF nameBox{p.x - boxWidth / 2.0f, p.y + lift, boxWidth, s(kLabelBoxHeightUnderIcon)};
            DrawShadowedText(canvas, function.name, BoldFont(s(kLabelUnderIconSize)), nameBox, hovered, s);
        } else {
            const float boxHeight = s(kLabelBoxHeight);
            const RectF nameBox{p.x - boxWidth / 2.0f, p.y - boxHeight / 2.0f, boxWidth, boxHeight};
            DrawShadowedText(canvas, function.name, BoldFont(nameOnlySize), nameBox, hovered, s);
        }
    }
}

// The counter "current/count" and the two arrows, each pointing outwards.
void DrawWheelSwitch(const EngineState& engine, Canvas& canvas, const Scaled& s) {
    const auto& wheels = engine.Wheels();
    const std::u16string counter = Concat({DecimalText(engine.configuration.currentWheel + 1), u"/",
                                           DecimalText(static_cast<std::int64_t>(wheels.size()))});
    const RectF hole = s.AroundCentre(kCentreHoleRadius);
    const RectF counterBox{hole.x, s.centreY + s(kCounterTop), hole.width, s(kCounterHeight)};
    canvas.DrawCentredText(counter, BoldFont(s(kCounterSize)), counterBox, kCounterColor);
    const std::array<RectF, 2> arrows = {ToRectF(engine.wheel.leftArrow), ToRectF(engine.wheel.rightArrow)};
    for (std::size_t a = 0; a < arrows.size(); ++a) {
        const bool hovered = ArrowLit(engine, static_cast<std::int32_t>(a));
        const RectF& box = arrows[a];
        canvas.FillRectangle(box, ArgbFromColorRef(engine.Settings().segmentColor, hovered ? kOpaque : kNotHovered));
        canvas.DrawRectangle(box, hovered ? kOpaqueWhite : kOutlineColor, s(kArrowPenWidth));
        const float m = box.x + box.width / 2.0f;
        const float back = a == 0 ? s(kTriangleBack) : -s(kTriangleBack);
        const float tip = a == 0 ? -s(kTriangleTip) : s(kTriangleTip);
        const float half = s(kTriangleHalfHeight);
        const std::array<PointF, 3> triangle = {PointF{m + back, s.centreY - half}, PointF{m + back, s.centreY + half},
                                                PointF{m + tip, s.centreY}};
        canvas.FillPolygon(triangle, hovered ? kOpaqueWhite : kTriangleColor);
    }
}

// An arrow pointer whose tip (x, y) is the hit-test point.
void DrawVirtualCursor(Canvas& canvas, float x, float y, const Scaled& s) {
    const std::array<PointF, 7> arrow = {
        PointF{x, y},
        PointF{x, y + s(23.0f)},
        PointF{x + s(5.5f), y + s(18.5f)},
        PointF{x + s(9.5f), y + s(27.0f)},
        PointF{x + s(13.0f), y + s(25.5f)},
        PointF{x + s(9.0f), y + s(17.0f)},
        PointF{x + s(16.0f), y + s(17.0f)}};
    canvas.FillPolygon(arrow, kOpaqueWhite);
    canvas.DrawPolygon(arrow, kOpaqueBlack, s(kCursorPenWidth));
}

// A faint circle round the cursor tip and, from twelve o'clock clockwise,
// the part of the dwell time that has passed.
void DrawDwellRing(Canvas& canvas, float x, float y, float progress, const Scaled& s) {
    const float radius = s(kDwellRingRadius);
    const RectF ring{x - radius, y - radius, 2.0f * radius, 2.0f * radius};
    canvas.DrawEllipse(ring, kDwellTrackColor, s(kDwellPenWidth));
    canvas.DrawArc(ring, -90.0f, std::min(progress, 1.0f) * 360.0f, kDwellArcColor, s(kDwellPenWidth));
}

// While scanning, the highlighted fields and the hovered one get the scan's
// outline; under the hole's clearing, which cuts the pies' inner ends.
void DrawFieldHighlights(const EngineState& engine, const Wheel& wheel, Canvas& canvas, float sectorWidth) {
    if (!WheelScanRunning(engine)) return;
    const auto count = static_cast<std::int32_t>(wheel.functions.size());
    const auto fill = [&](std::int32_t field) {
        const WheelFunction& function = wheel.functions[static_cast<std::size_t>(field)];
        return function.hasColor ? function.color : engine.Settings().segmentColor;
    };
    const ScanEntry entry = WheelScanHighlight(engine);
    if (entry.count > 0 && entry.first < count) {
        DrawSectorHighlight(canvas, engine, entry.first, entry.count, sectorWidth, fill(entry.first));
    }
    if (engine.hoveredField >= 0 && engine.hoveredField < count) {
        DrawSectorHighlight(canvas, engine, engine.hoveredField, 1, sectorWidth, fill(engine.hoveredField));
    }
}

// The wheel that shows, or none when there is nothing to draw.
const Wheel* ShownWheel(const EngineState& engine) {
    const auto& wheels = engine.Wheels();
    const auto current = static_cast<std::size_t>(engine.configuration.currentWheel);
    if (current >= wheels.size() || wheels[current].functions.empty()) return nullptr;
    return &wheels[current];
}

}  // namespace

void DrawWheel(const EngineState& engine, Canvas& canvas, IconCache& icons) {
    DrawWheelBody(engine, canvas, icons);
    DrawWheelPointer(engine, canvas);
}

void DrawWheelBody(const EngineState& engine, Canvas& canvas, IconCache& icons) {
    canvas.SetTextHint(TextHint::AntiAliasGridFit);
    canvas.Clear();
    const Wheel* shown = ShownWheel(engine);
    if (shown == nullptr) return;
    const Wheel& wheel = *shown;
    const auto& wheels = engine.Wheels();
    const float sectorWidth = 360.0f / static_cast<float>(wheel.functions.size());
    const Scaled s(engine.wheel);

    DrawSectors(engine, wheel, canvas, sectorWidth, s);
    DrawLabels(engine, wheel, canvas, sectorWidth, icons, s);
    DrawFieldHighlights(engine, wheel, canvas, sectorWidth);
    // Cleared after the sectors: the desktop shows through the hole.
    const RectF hole = s.AroundCentre(kCentreHoleRadius);
    canvas.ClearEllipse(hole);
    if (wheels.size() >= 2) DrawWheelSwitch(engine, canvas, s);
    if (!wheel.name.empty()) {
        const RectF nameBox{hole.x, s.centreY + s(kWheelNameTop), hole.width, s(kWheelNameHeight)};
        canvas.DrawCentredText(wheel.name,
                               CanvasFont{std::u16string(kLabelFontFamily), s(kWheelNameSize), FontWeight::Regular},
                               nameBox, kLabelColor);
    }
    DrawWheelScanChoices(engine, canvas);
}

void DrawWheelPointer(const EngineState& engine, Canvas& canvas) {
    if (ShownWheel(engine) == nullptr) return;
    const Scaled s(engine.wheel);
    const auto x = static_cast<float>(engine.cursorX);
    const auto y = static_cast<float>(engine.cursorY);
    DrawVirtualCursor(canvas, x, y, s);
    if (engine.dwellProgress > kDwellRingMinimum) DrawDwellRing(canvas, x, y, engine.dwellProgress, s);
}

WheelBodyKey WheelBodyKeyOf(const EngineState& engine) {
    WheelBodyKey key;
    key.geometry = engine.wheel;
    key.currentWheel = engine.configuration.currentWheel;
    key.wheelCount = engine.Wheels().size();
    key.hoveredField = engine.hoveredField;
    key.hoveredArrow = engine.hoveredArrow;
    key.scanning = WheelScanRunning(engine);
    key.scanHighlight = WheelScanHighlight(engine);
    key.segmentColor = engine.Settings().segmentColor;
    key.programDirectory = engine.configuration.programDirectory;
    key.shippedDirectory = engine.configuration.shippedDirectory;
    if (const Wheel* wheel = ShownWheel(engine)) {
        key.wheelName = wheel->name;
        key.fields.reserve(wheel->functions.size());
        for (const WheelFunction& function : wheel->functions) {
            key.fields.push_back({function.name, function.icon, function.color, function.hasColor});
        }
    }
    return key;
}

}  // namespace zirvel
