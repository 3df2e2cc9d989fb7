// Sizes at a monitor's DPI. Every size and distance the engine draws or
// measures is written at 96 DPI (100 %) and multiplied by dpi / 96 for the
// monitor it shows on, so a 144-DPI (150 %) monitor gets everything half as
// large again. At 96 DPI every scaled value equals the written one exactly.
#pragma once

#include <cstdint>

namespace zirvel {

inline constexpr std::uint32_t kDefaultDpi = 96;

// A DPI the platform could not tell (0) counts as 96.
constexpr std::uint32_t UsableDpi(std::uint32_t dpi) { return dpi == 0 ? kDefaultDpi : dpi; }

// dpi / 96: 1.0f exactly at 96 DPI.
constexpr float DpiScale(std::uint32_t dpi) {
    return static_cast<float>(UsableDpi(dpi)) / static_cast<float>(kDefaultDpi);
}

// value * dpi / 96, rounded to the nearest pixel (halves away from zero).
constexpr std::int32_t ScaleByDpi(std::int32_t value, std::uint32_t dpi) {
    const std::int64_t product = static_cast<std::int64_t>(value) * UsableDpi(dpi);
    const std::int64_t half = kDefaultDpi / 2;
    return static_cast<std::int32_t>(product >= 0 ? (product + half) / kDefaultDpi : (product - half) / kDefaultDpi);
}

}  // namespace zirvel
