#include "engine/scan_highlight.h"

#include <algorithm>
#include <cmath>

namespace zirvel {
namespace {

double Channel(std::uint32_t value) {
    const double c = static_cast<double>(value & 0xFFu) / 255.0;
    return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
}

double Luminance(std::uint32_t color) {
    return 0.2126 * Channel(color) + 0.7152 * Channel(color >> 8) + 0.0722 * Channel(color >> 16);
}

}  // namespace

double ContrastRatio(std::uint32_t first, std::uint32_t second) {
    const double a = Luminance(first);
    const double b = Luminance(second);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

HighlightColours HighlightColoursFor(std::uint32_t fill) {
    if (ContrastRatio(0x00FFFFFFu, fill) >= ContrastRatio(0x00000000u, fill)) return {kOpaqueWhite, kOpaqueBlack};
    return {kOpaqueBlack, kOpaqueWhite};
}

void DrawHighlightRectangle(Canvas& canvas, const RectF& box, std::uint32_t fill, float scale) {
    const HighlightColours colours = HighlightColoursFor(fill);
    canvas.DrawRectangle(box, colours.edge, kHighlightEdgedWidth * scale);
    canvas.DrawRectangle(box, colours.band, kHighlightBandWidth * scale);
}

}  // namespace zirvel
