// UTF-8 <-> UTF-16 conversion at the file boundary.
#pragma once

#include <string>
#include <string_view>

namespace zirvel {

// Invalid or truncated sequences become U+FFFD; decoding never fails.
std::u16string Utf8ToUtf16(std::string_view bytes);

// Lone surrogates become U+FFFD.
std::string Utf16ToUtf8(std::u16string_view text);

// Utf16ToUtf8 appending to `bytes`.
void AppendUtf8(std::string& bytes, std::u16string_view text);

}  // namespace zirvel
