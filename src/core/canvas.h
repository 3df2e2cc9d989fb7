// What the pictures are drawn on. The wheel, grid and hint pictures are
// written once against this interface; each platform supplies a canvas
// (GDI+ on Windows, QPainter on Linux) that ends in a premultiplied Picture.
//
// Conventions, those of GDI+: coordinates are picture pixels with y growing
// downwards; angles are degrees with 0 at three o'clock, growing clockwise
// on screen; colours are straight (not premultiplied) 0xAARRGGBB; pens are
// centred on the outline. Everything after Clear is drawn over what is
// already there (source-over), except ClearEllipse.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "core/geometry.h"
#include "core/picture.h"

namespace zirvel {

using Argb = std::uint32_t;

inline constexpr Argb kOpaqueWhite = 0xFFFFFFFFu;
inline constexpr Argb kOpaqueBlack = 0xFF000000u;

// An ARGB colour from a colour kept with red in the low byte (COLORREF).
constexpr Argb ArgbFromColorRef(std::uint32_t color, std::uint8_t alpha) {
    const std::uint32_t red = color & 0xFFu;
    const std::uint32_t green = (color >> 8) & 0xFFu;
    const std::uint32_t blue = (color >> 16) & 0xFFu;
    return (static_cast<std::uint32_t>(alpha) << 24) | (red << 16) | (green << 8) | blue;
}

// Every label asks for this family first; a canvas whose system lacks it
// uses a sans-serif family it has, at the same pixel size and weight.
inline constexpr std::u16string_view kLabelFontFamily = u"Segoe UI";

enum class FontWeight { Regular, Bold };

struct CanvasFont {
    std::u16string family{kLabelFontFamily};
    float pixelSize = 0.0f;
    FontWeight weight = FontWeight::Regular;
    friend bool operator==(const CanvasFont&, const CanvasFont&) = default;
};

// How glyphs are rasterised: the wheel fits them to the pixel grid, the grid
// and hint pictures do not.
enum class TextHint { AntiAliasGridFit, AntiAlias };

// A decoded image, made by the canvas factory of the same platform and drawn
// only by its canvases.
class CanvasImage {
public:
    virtual ~CanvasImage() = default;
    virtual std::int32_t Width() const = 0;
    virtual std::int32_t Height() const = 0;
};

class Canvas {
public:
    virtual ~Canvas() = default;

    virtual std::int32_t Width() const = 0;
    virtual std::int32_t Height() const = 0;

    virtual void SetTextHint(TextHint hint) = 0;
    // Every pixel fully transparent.
    virtual void Clear() = 0;
    // Every pixel as in `picture`, which has the canvas's size: drawing
    // goes on over a picture taken before.
    virtual void SetPicture(const Picture& picture) = 0;

    // The pie of the ellipse in `bounds` from `startAngle` over `sweepAngle`.
    virtual void FillPie(const RectF& bounds, float startAngle, float sweepAngle, Argb color) = 0;
    virtual void DrawPie(const RectF& bounds, float startAngle, float sweepAngle, Argb color, float penWidth) = 0;
    virtual void DrawEllipse(const RectF& bounds, Argb color, float penWidth) = 0;
    virtual void DrawArc(const RectF& bounds, float startAngle, float sweepAngle, Argb color, float penWidth) = 0;
    virtual void FillRectangle(const RectF& rect, Argb color) = 0;
    virtual void DrawRectangle(const RectF& rect, Argb color, float penWidth) = 0;
    virtual void FillPolygon(std::span<const PointF> points, Argb color) = 0;
    virtual void DrawPolygon(std::span<const PointF> points, Argb color, float penWidth) = 0;

    // Replaces the pixels of the ellipse with transparent black (source
    // copy): what lies below does not show through.
    virtual void ClearEllipse(const RectF& bounds) = 0;

    // `text` centred horizontally and vertically in `box`, wrapped and
    // clipped as the platform's default text layout does.
    virtual void DrawCentredText(std::u16string_view text, const CanvasFont& font, const RectF& box, Argb color) = 0;

    // The whole image scaled into `destination`, its alpha multiplied by
    // `alphaFactor` (0 to 1).
    virtual void DrawImage(const CanvasImage& image, const RectF& destination, float alphaFactor) = 0;

    // The finished picture; the canvas is not drawn on afterwards.
    virtual Picture TakePicture() = 0;
};

}  // namespace zirvel
