#include "config/text.h"

namespace zirvel {

std::u16string Concat(std::initializer_list<std::u16string_view> pieces) {
    std::size_t length = 0;
    for (std::u16string_view piece : pieces) length += piece.size();
    std::u16string text;
    text.reserve(length);
    for (std::u16string_view piece : pieces) text += piece;
    return text;
}

std::u16string DecimalText(std::int64_t number) {
    const std::string digits = std::to_string(number);
    return std::u16string(digits.begin(), digits.end());
}

}  // namespace zirvel
