#include "config/hex_color.h"

namespace zirvel {
namespace {

int HexDigitValue(char16_t c) {
    if (c >= u'0' && c <= u'9') return c - u'0';
    if (c >= u'a' && c <= u'f') return c - u'a' + 10;
    if (c >= u'A' && c <= u'F') return c - u'A' + 10;
    return -1;
}

}  // namespace

bool ParseHexColor(std::u16string_view text, std::uint32_t& color) {
    if (text.size() != 7 || text[0] != u'#') return false;
    std::uint32_t rgb = 0;
    for (std::size_t i = 1; i < 7; ++i) {
        const int digit = HexDigitValue(text[i]);
        if (digit < 0) return false;
        rgb = (rgb << 4) | static_cast<std::uint32_t>(digit);
    }
    // The text is red-green-blue; the colour keeps red in the low byte.
    color = ((rgb >> 16) & 0xFF) | (rgb & 0xFF00) | ((rgb & 0xFF) << 16);
    return true;
}

}  // namespace zirvel
