// The configuration reader's JSON tree. Objects keep the file's order and
// every duplicate key; lookups take the first match.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zirvel {

enum class JsonKind : std::int32_t {
    Null = 0,
    Bool = 1,
    Number = 2,
    String = 3,
    Array = 4,
    Object = 5,
};

struct JsonValue {
    JsonKind kind = JsonKind::Null;
    bool boolean = false;
    double number = 0.0;
    std::u16string string;
    std::vector<JsonValue> items;
    std::vector<std::pair<std::u16string, JsonValue>> members;

    JsonValue() = default;
    JsonValue(JsonValue&&) noexcept = default;
    JsonValue& operator=(JsonValue&& other) noexcept;
    // Trees are never copied; a deep tree would need a deep copy.
    JsonValue(const JsonValue&) = delete;
    JsonValue& operator=(const JsonValue&) = delete;
    // Tears the tree down without recursion, so any depth is safe.
    ~JsonValue();

    // The first member with exactly this key, or null.
    const JsonValue* Find(std::u16string_view key) const;
};

// A position in a UTF-16 text, in code units.
struct JsonCursor {
    std::u16string_view text;
    std::size_t position = 0;

    bool AtEnd() const { return position >= text.size(); }
    char16_t Current() const { return text[position]; }
};

}  // namespace zirvel
