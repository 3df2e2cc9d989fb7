#include "config/json_escape.h"

#include "config/utf.h"

namespace zirvel {

std::string EscapeJsonString(std::u16string_view text) {
    std::string bytes;
    AppendEscapedJsonString(bytes, text);
    return bytes;
}

void AppendEscapedJsonString(std::string& bytes, std::u16string_view text) {
    static constexpr char kHexDigits[] = "0123456789abcdef";
    // Runs of characters that need no escape are encoded in one go.
    std::size_t runStart = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t c = text[i];
        if (c >= 0x20 && c != u'"' && c != u'\\') continue;
        AppendUtf8(bytes, text.substr(runStart, i - runStart));
        runStart = i + 1;
        switch (c) {
            case u'\t': bytes += "\\t"; break;
            case u'\n': bytes += "\\n"; break;
            case u'\r': bytes += "\\r"; break;
            case u'"': bytes += "\\\""; break;
            case u'\\': bytes += "\\\\"; break;
            default:
                bytes += "\\u00";
                bytes += kHexDigits[c >> 4];
                bytes += kHexDigits[c & 0xF];
        }
    }
    AppendUtf8(bytes, text.substr(runStart));
}

}  // namespace zirvel
