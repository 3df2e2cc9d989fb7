// Escaping of strings for the JSON that the engine writes.
#pragma once

#include <string>
#include <string_view>

namespace zirvel {

// The text to put between double quotes in a written file, as UTF-8: tab,
// line feed, carriage return, quote and backslash get their short escapes,
// other control characters \u00xx; everything else is written as it is.
std::string EscapeJsonString(std::u16string_view text);

// EscapeJsonString appending to `bytes`.
void AppendEscapedJsonString(std::string& bytes, std::u16string_view text);

}  // namespace zirvel
