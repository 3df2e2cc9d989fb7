// The wheel window's geometry: its size, centre, ring and arrows, at 96 DPI
// and on a monitor of any DPI. The picture and the hit tests both take it
// from here, so what is drawn is what is hit.
#pragma once

#include <cstdint>

#include "core/dpi_scale.h"
#include "core/geometry.h"

namespace zirvel {

// At 96 DPI, in window pixels.
inline constexpr std::int32_t kWheelWidth = 588;
inline constexpr std::int32_t kWheelHeight = 460;
inline constexpr std::int32_t kWheelCentreX = 294;
inline constexpr std::int32_t kWheelCentreY = 230;
inline constexpr double kRingInnerRadius = 46.0;
inline constexpr double kRingOuterRadius = 226.0;
// The sectors' disc as drawn (its edge inside the ring's outer radius).
inline constexpr float kSectorDiscRadius = 224.0f;
inline constexpr ScreenRect kLeftArrowRect{10, 186, 54, 274};
inline constexpr ScreenRect kRightArrowRect{534, 186, 578, 274};

struct WheelGeometry {
    std::uint32_t dpi = kDefaultDpi;
    float scale = 1.0f;  // dpi / 96: what every drawn length is multiplied by
    std::int32_t width = kWheelWidth;
    std::int32_t height = kWheelHeight;
    std::int32_t centreX = kWheelCentreX;
    std::int32_t centreY = kWheelCentreY;
    double ringInnerRadius = kRingInnerRadius;  // the hole's edge
    double ringOuterRadius = kRingOuterRadius;
    ScreenRect leftArrow = kLeftArrowRect;
    ScreenRect rightArrow = kRightArrowRect;
    friend bool operator==(const WheelGeometry&, const WheelGeometry&) = default;
};

// The wheel on a monitor of `dpi`: every length of the 96-DPI wheel times
// dpi / 96 (882 x 690 at 144 DPI); the arrows keep their distance from the
// window's edges and stay centred on the wheel's centre line.
WheelGeometry WheelGeometryAt(std::uint32_t dpi);

// Raw mouse counts into window pixels: counts * dpi / 96, the fraction
// carried in `remainder` (in 1/96 pixels) to the next call so that slow
// motion is not lost. At 96 DPI a count is a pixel and `remainder` stays 0.
std::int32_t CountsToPixels(std::int32_t counts, std::uint32_t dpi, std::int32_t& remainder);

}  // namespace zirvel
