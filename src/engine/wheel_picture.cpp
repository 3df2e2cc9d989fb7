#include "engine/wheel_picture.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "config/text.h"

namespace zirvel {
namespace {

// The sector disc and the centre hole share the hit tests' centre.
constexpr RectF kSectorDisc{70.0f, 6.0f, 448.0f, 448.0f};
constexpr RectF kCentreHole{248.0f, 184.0f, 92.0f, 92.0f};
constexpr float kLabelRadius = 145.0f;
constexpr float kIconSize = 42.0f;
constexpr float kIconLift = 11.0f;  // the icon sits above a name, the name below it
constexpr float kLabelBoxWidth = 124.0f;
constexpr float kLabelBoxHeightUnderIcon = 34.0f;
constexpr float kLabelBoxHeight = 68.0f;
constexpr float kShadowOffset = 1.5f;
constexpr RectF kCounterBox{248.0f, 210.0f, 92.0f, 22.0f};
constexpr RectF kWheelNameBox{248.0f, 232.0f, 92.0f, 18.0f};
constexpr float kArrowBoxWidth = 44.0f;
constexpr float kArrowBoxHeight = 88.0f;
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

constexpr std::array<float, 2> kArrowLefts = {10.0f, 534.0f};
constexpr float kArrowTop = 186.0f;

CanvasFont BoldFont(float pixelSize) { return CanvasFont{std::u16string(kLabelFontFamily), pixelSize, FontWeight::Bold}; }

// A label: its shadow 1.5 px right and down first, then the text.
void DrawShadowedText(Canvas& canvas, std::u16string_view text, const CanvasFont& font, const RectF& box,
                      bool hovered) {
    if (text.empty()) return;
    const RectF shadowBox{box.x + kShadowOffset, box.y + kShadowOffset, box.width, box.height};
    canvas.DrawCentredText(text, font, shadowBox, hovered ? kHoveredShadowColor : kShadowColor);
    canvas.DrawCentredText(text, font, box, hovered ? kOpaqueWhite : kLabelColor);
}

void DrawSectors(const EngineState& engine, const Wheel& wheel, Canvas& canvas, float sectorWidth) {
    for (std::size_t i = 0; i < wheel.functions.size(); ++i) {
        const WheelFunction& function = wheel.functions[i];
        const bool hovered = static_cast<std::int32_t>(i) == engine.hoveredField;
        const std::uint32_t color = function.hasColor ? function.color : engine.Settings().segmentColor;
        const float start = static_cast<float>(i) * sectorWidth - 90.0f;
        canvas.FillPie(kSectorDisc, start, sectorWidth, ArgbFromColorRef(color, hovered ? kOpaque : kNotHovered));
        canvas.DrawPie(kSectorDisc, start, sectorWidth, hovered ? kOpaqueWhite : kOutlineColor, kSectorPenWidth);
    }
}

void DrawLabels(const EngineState& engine, const Wheel& wheel, Canvas& canvas, float sectorWidth,
                IconCache& icons) {
    const std::size_t count = wheel.functions.size();
    const float nameOnlySize = count < kManyFields ? kLargeLabelSize : kSmallLabelSize;
    for (std::size_t i = 0; i < count; ++i) {
        const WheelFunction& function = wheel.functions[i];
        const bool hovered = static_cast<std::int32_t>(i) == engine.hoveredField;
        const float theta = (static_cast<float>(i) * sectorWidth - 90.0f + sectorWidth / 2.0f) *
                            std::numbers::pi_v<float> / 180.0f;
        const PointF p{static_cast<float>(kWheelCentreX) + kLabelRadius * std::cos(theta),
                       static_cast<float>(kWheelCentreY) + kLabelRadius * std::sin(theta)};
        const CanvasImage* icon = icons.GetIcon(function.icon, engine.configuration.programDirectory,
                                                     engine.configuration.shippedDirectory);
        if (icon != nullptr) {
            const float iconCentreY = function.name.empty() ? p.y : p.y - kIconLift;
            const RectF iconBox{p.x - kIconSize / 2.0f, iconCentreY - kIconSize / 2.0f, kIconSize, kIconSize};
            canvas.DrawImage(*icon, iconBox, hovered ? 1.0f : kNotHoveredIconAlpha);
            const RectF nameBox{p.x - kLabelBoxWidth / 2.0f, p.y + kIconLift, kLabelBoxWidth,
                                kLabelBoxHeightUnderIcon};
            DrawShadowedText(canvas, function.name, BoldFont(kLabelUnderIconSize), nameBox, hovered);
        } else {
            const RectF nameBox{p.x - kLabelBoxWidth / 2.0f, p.y - kLabelBoxHeight / 2.0f, kLabelBoxWidth,
                                kLabelBoxHeight};
            DrawShadowedText(canvas, function.name, BoldFont(nameOnlySize), nameBox, hovered);
        }
    }
}

// The counter "current/count" and the two arrows, each pointing outwards.
void DrawWheelSwitch(const EngineState& engine, Canvas& canvas) {
    const auto& wheels = engine.Wheels();
    const std::u16string counter = Concat({DecimalText(engine.configuration.currentWheel + 1), u"/",
                                           DecimalText(static_cast<std::int64_t>(wheels.size()))});
    canvas.DrawCentredText(counter, BoldFont(kCounterSize), kCounterBox, kCounterColor);
    for (std::size_t a = 0; a < kArrowLefts.size(); ++a) {
        const bool hovered = static_cast<std::int32_t>(a) == engine.hoveredArrow;
        const float x = kArrowLefts[a];
        const RectF box{x, kArrowTop, kArrowBoxWidth, kArrowBoxHeight};
        canvas.FillRectangle(box, ArgbFromColorRef(engine.Settings().segmentColor, hovered ? kOpaque : kNotHovered));
        canvas.DrawRectangle(box, hovered ? kOpaqueWhite : kOutlineColor, kArrowPenWidth);
        const float m = x + kArrowBoxWidth / 2.0f;
        const float back = a == 0 ? 8.0f : -8.0f;   // the flat side, towards the wheel
        const float tip = a == 0 ? -10.0f : 10.0f;  // the point, away from it
        const std::array<PointF, 3> triangle = {PointF{m + back, 214.0f}, PointF{m + back, 246.0f},
                                                PointF{m + tip, 230.0f}};
        canvas.FillPolygon(triangle, hovered ? kOpaqueWhite : kTriangleColor);
    }
}

// An arrow pointer whose tip (x, y) is the hit-test point.
void DrawVirtualCursor(Canvas& canvas, float x, float y) {
    const std::array<PointF, 7> arrow = {PointF{x, y},          PointF{x, y + 23.0f},  PointF{x + 5.5f, y + 18.5f},
                                         PointF{x + 9.5f, y + 27.0f}, PointF{x + 13.0f, y + 25.5f},
                                         PointF{x + 9.0f, y + 17.0f}, PointF{x + 16.0f, y + 17.0f}};
    canvas.FillPolygon(arrow, kOpaqueWhite);
    canvas.DrawPolygon(arrow, kOpaqueBlack, kCursorPenWidth);
}

// A faint circle round the cursor tip and, from twelve o'clock clockwise,
// the part of the dwell time that has passed.
void DrawDwellRing(Canvas& canvas, float x, float y, float progress) {
    const RectF ring{x - kDwellRingRadius, y - kDwellRingRadius, 2.0f * kDwellRingRadius, 2.0f * kDwellRingRadius};
    canvas.DrawEllipse(ring, kDwellTrackColor, kDwellPenWidth);
    canvas.DrawArc(ring, -90.0f, std::min(progress, 1.0f) * 360.0f, kDwellArcColor, kDwellPenWidth);
}

}  // namespace

void DrawWheel(const EngineState& engine, Canvas& canvas, IconCache& icons) {
    canvas.SetTextHint(TextHint::AntiAliasGridFit);
    canvas.Clear();
    const auto& wheels = engine.Wheels();
    const auto current = static_cast<std::size_t>(engine.configuration.currentWheel);
    if (current >= wheels.size() || wheels[current].functions.empty()) return;
    const Wheel& wheel = wheels[current];
    const float sectorWidth = 360.0f / static_cast<float>(wheel.functions.size());

    DrawSectors(engine, wheel, canvas, sectorWidth);
    DrawLabels(engine, wheel, canvas, sectorWidth, icons);
    // Cleared after the sectors: the desktop shows through the hole.
    canvas.ClearEllipse(kCentreHole);
    if (wheels.size() >= 2) DrawWheelSwitch(engine, canvas);
    if (!wheel.name.empty()) {
        canvas.DrawCentredText(wheel.name, CanvasFont{std::u16string(kLabelFontFamily), kWheelNameSize, FontWeight::Regular},
                               kWheelNameBox, kLabelColor);
    }
    const auto x = static_cast<float>(engine.cursorX);
    const auto y = static_cast<float>(engine.cursorY);
    DrawVirtualCursor(canvas, x, y);
    if (engine.dwellProgress > kDwellRingMinimum) DrawDwellRing(canvas, x, y, engine.dwellProgress);
}

}  // namespace zirvel
