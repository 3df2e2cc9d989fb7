#include "wcag_contrast.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>

namespace zirvel_test {

namespace {

int HexDigit(char c) {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    c = char(std::tolower(static_cast<unsigned char>(c)));
    return c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
}

double Linear(int channel) {
    const double srgb = channel / 255.0;
    return srgb <= 0.04045 ? srgb / 12.92 : std::pow((srgb + 0.055) / 1.055, 2.4);
}

}  // namespace

std::optional<Rgb> ParseHexColour(const std::string& text) {
    if ((text.size() != 7 && text.size() != 4) || text[0] != '#') {
        return std::nullopt;
    }
    int digits[6];
    const bool shortForm = text.size() == 4;
    for (int i = 0; i < 6; ++i) {
        digits[i] = HexDigit(text[shortForm ? 1 + i / 2 : 1 + i]);
        if (digits[i] < 0) {
            return std::nullopt;
        }
    }
    return Rgb{digits[0] * 16 + digits[1], digits[2] * 16 + digits[3], digits[4] * 16 + digits[5]};
}

std::string HexOf(const Rgb& colour) {
    char text[8];
    std::snprintf(text, sizeof text, "#%02X%02X%02X", colour.red, colour.green, colour.blue);
    return text;
}

double RelativeLuminance(const Rgb& colour) {
    return 0.2126 * Linear(colour.red) + 0.7152 * Linear(colour.green) + 0.0722 * Linear(colour.blue);
}

double ContrastRatio(const Rgb& one, const Rgb& other) {
    const double a = RelativeLuminance(one);
    const double b = RelativeLuminance(other);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

}  // namespace zirvel_test
