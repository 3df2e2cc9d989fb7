// ParseJsonValue on any text: as a file's UTF-8 reaches it, and as raw
// UTF-16 units (lone surrogates, NULs) that no file decoding produces.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "config/json_reader.h"
#include "config/utf.h"
#include "fuzz_check.h"

namespace {

void ParseAll(std::u16string_view text) {
    zirvel::JsonCursor cursor{text, 0};
    zirvel::JsonValue value;
    const bool parsed = zirvel::ParseJsonValue(cursor, value);
    // The cursor never runs past the text; a value was read from something.
    ZIRVEL_FUZZ_CHECK(cursor.position <= text.size());
    if (parsed) ZIRVEL_FUZZ_CHECK(cursor.position > 0);

    zirvel::JsonValue root;
    zirvel::ParseJsonDocument(text, root);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ParseAll(zirvel::Utf8ToUtf16(std::string_view(reinterpret_cast<const char*>(data), size)));

    std::u16string units(size / 2, u'\0');
    if (!units.empty()) std::memcpy(units.data(), data, units.size() * sizeof(char16_t));
    ParseAll(units);
    return 0;
}
