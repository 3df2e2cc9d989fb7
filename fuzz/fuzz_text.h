// The two ways a fuzz input becomes text for the readers that take UTF-16:
// as UTF-8 (what files and configuration give) and as raw UTF-16 units.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "config/utf.h"

namespace zirvel_fuzz {

template <typename Reader>
void ReadAsUtf8AndAsUtf16(const std::uint8_t* data, std::size_t size, Reader&& read) {
    read(zirvel::Utf8ToUtf16(std::string_view(reinterpret_cast<const char*>(data), size)));
    std::u16string units(size / 2, u'\0');
    if (!units.empty()) std::memcpy(units.data(), data, units.size() * sizeof(char16_t));
    read(units);
}

}  // namespace zirvel_fuzz
