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
#include "fuzz_text.h"

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
    zirvel_fuzz::ReadAsUtf8AndAsUtf16(data, size, [](const std::u16string& text) { ParseAll(text); });
    return 0;
}
