// Small helpers for building UTF-16 text.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

namespace zirvel {

// The pieces joined in order.
std::u16string Concat(std::initializer_list<std::u16string_view> pieces);

// A number in decimal, as "%d" writes it.
std::u16string DecimalText(std::int64_t number);

}  // namespace zirvel
