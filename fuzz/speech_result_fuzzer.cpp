// ExtractResultText on any recogniser result. The recogniser hands over a
// NUL-terminated string, so the input gets its terminator here; inputs
// with an inner NUL stand for a shorter result.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "fuzz_check.h"
#include "voice/speech_api.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string result(reinterpret_cast<const char*>(data), size);
    const std::string text = zirvel::ExtractResultText(result.c_str());
    // The text is a quote-free piece of the result, found after a "text" key.
    const std::string_view whole(result.c_str());
    ZIRVEL_FUZZ_CHECK(text.find('"') == std::string::npos);
    if (!text.empty()) {
        ZIRVEL_FUZZ_CHECK(whole.find("\"text\"") != std::string_view::npos);
        ZIRVEL_FUZZ_CHECK(whole.find(text) != std::string_view::npos);
    }
    return 0;
}
