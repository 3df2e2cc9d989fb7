// The lenient JSON reader behind config.json and the wheels files.
#pragma once

#include <string>
#include <string_view>

#include "config/json_value.h"

namespace zirvel {

// Whole file as UTF-16: a UTF-8 byte-order mark is skipped, invalid UTF-8 is
// replaced. False only when the file cannot be read (see ReadFileBytes).
bool ReadTextFile(const std::u16string& path, std::u16string& text);

// Parses one value at the cursor (leading white space skipped) and leaves the
// cursor behind it. Nesting depth is limited only by memory.
bool ParseJsonValue(JsonCursor& cursor, JsonValue& value);

// Space, tab, carriage return and line feed only.
void SkipJsonWhitespace(JsonCursor& cursor);

// What every file reader does: one value, then only white space to the end.
bool ParseJsonDocument(std::u16string_view text, JsonValue& root);

// ReadTextFile followed by ParseJsonDocument.
bool ReadJsonFile(const std::u16string& path, JsonValue& root);

}  // namespace zirvel
