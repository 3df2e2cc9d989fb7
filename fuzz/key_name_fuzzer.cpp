// ParseKeyName on any text, with the built-in keyboard layout (the US keys
// and the Polish programmer's AltGr letters) that needs no desktop.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "config/key_code.h"
#include "config/keyboard_layout.h"
#include "config/utf.h"
#include "fuzz_check.h"
#include "fuzz_text.h"

namespace {

void ParseName(std::u16string_view text) {
    const zirvel::KeyCode code = zirvel::ParseKeyName(text);
    // The name kept is part of the text; a button is one of the five.
    ZIRVEL_FUZZ_CHECK(code.name.size() <= text.size());
    ZIRVEL_FUZZ_CHECK(text.find(code.name) != std::u16string_view::npos);
    if (code.valid && code.isMouse) ZIRVEL_FUZZ_CHECK(code.button <= zirvel::kMouseX2 && code.vk == 0);
    if (code.valid && !code.isMouse) ZIRVEL_FUZZ_CHECK(code.vk != 0 && code.vk <= 0xFF);
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    zirvel::SetKeyScanFunction(&zirvel::BuiltInKeyScan);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    zirvel_fuzz::ReadAsUtf8AndAsUtf16(data, size, [](const std::u16string& text) { ParseName(text); });
    return 0;
}
