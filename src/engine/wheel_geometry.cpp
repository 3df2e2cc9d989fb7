#include "engine/wheel_geometry.h"

namespace zirvel {

WheelGeometry WheelGeometryAt(std::uint32_t dpi) {
    dpi = UsableDpi(dpi);
    WheelGeometry wheel;
    wheel.dpi = dpi;
    wheel.scale = DpiScale(dpi);
    wheel.width = ScaleByDpi(kWheelWidth, dpi);
    wheel.height = ScaleByDpi(kWheelHeight, dpi);
    wheel.centreX = ScaleByDpi(kWheelCentreX, dpi);
    wheel.centreY = ScaleByDpi(kWheelCentreY, dpi);
    wheel.ringInnerRadius = kRingInnerRadius * dpi / kDefaultDpi;
    wheel.ringOuterRadius = kRingOuterRadius * dpi / kDefaultDpi;
    const std::int32_t margin = ScaleByDpi(kLeftArrowRect.left, dpi);
    const std::int32_t arrowWidth = ScaleByDpi(kLeftArrowRect.Width(), dpi);
    const std::int32_t halfHeight = ScaleByDpi(kLeftArrowRect.Height() / 2, dpi);
    const std::int32_t top = wheel.centreY - halfHeight;
    const std::int32_t bottom = wheel.centreY + halfHeight;
    wheel.leftArrow = {margin, top, margin + arrowWidth, bottom};
    wheel.rightArrow = {wheel.width - margin - arrowWidth, top, wheel.width - margin, bottom};
    return wheel;
}

std::int32_t CountsToPixels(std::int32_t counts, std::uint32_t dpi, std::int32_t& remainder) {
    const std::int64_t total = static_cast<std::int64_t>(counts) * UsableDpi(dpi) + remainder;
    const auto pixels = static_cast<std::int32_t>(total / kDefaultDpi);  // towards zero
    remainder = static_cast<std::int32_t>(total - static_cast<std::int64_t>(pixels) * kDefaultDpi);
    return pixels;
}

}  // namespace zirvel
