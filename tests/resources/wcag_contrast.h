// WCAG 2 contrast between two sRGB colours: (L1 + 0.05) / (L2 + 0.05) with
// L the relative luminance of the lighter and the darker colour; AA asks
// 4.5 for text (3 for large text and for what is not text).
#pragma once

#include <optional>
#include <string>

namespace zirvel_test {

struct Rgb {
    int red = 0;
    int green = 0;
    int blue = 0;
    friend bool operator==(const Rgb&, const Rgb&) = default;
};

// "#RRGGBB" or "#RGB", nothing else.
std::optional<Rgb> ParseHexColour(const std::string& text);
std::string HexOf(const Rgb& colour);

double RelativeLuminance(const Rgb& colour);
double ContrastRatio(const Rgb& one, const Rgb& other);

}  // namespace zirvel_test
