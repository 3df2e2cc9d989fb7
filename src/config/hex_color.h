// Colours written as "#RRGGBB".
#pragma once

#include <cstdint>
#include <string_view>

namespace zirvel {

// Exactly "#" and six hexadecimal digits of either case, nothing else. The
// colour keeps red in the low byte, as Windows' COLORREF does.
bool ParseHexColor(std::u16string_view text, std::uint32_t& color);

}  // namespace zirvel
