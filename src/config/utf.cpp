#include "config/utf.h"

#include <cstdint>

namespace zirvel {

namespace {
constexpr char16_t kReplacement = 0xFFFD;

bool IsContinuation(unsigned char byte) { return (byte & 0xC0) == 0x80; }
}  // namespace

std::u16string Utf8ToUtf16(std::string_view bytes) {
    // Never more UTF-16 units than UTF-8 bytes; written by index, then cut.
    std::u16string text(bytes.size(), u'\0');
    std::size_t length = 0;
    auto put = [&text, &length](char16_t unit) { text[length++] = unit; };
    const std::size_t size = bytes.size();
    std::size_t i = 0;
    while (i < size) {
        const auto lead = static_cast<unsigned char>(bytes[i]);
        if (lead < 0x80) {
            put(static_cast<char16_t>(lead));
            ++i;
            continue;
        }
        // Sequence length and the allowed range of the second byte, which
        // rules out overlong forms, surrogates and values above U+10FFFF.
        std::size_t sequenceLength = 0;
        unsigned char low = 0x80, high = 0xBF;
        std::uint32_t codePoint = 0;
        if (lead >= 0xC2 && lead <= 0xDF) {
            sequenceLength = 2;
            codePoint = lead & 0x1F;
        } else if (lead >= 0xE0 && lead <= 0xEF) {
            sequenceLength = 3;
            codePoint = lead & 0x0F;
            if (lead == 0xE0) low = 0xA0;
            if (lead == 0xED) high = 0x9F;
        } else if (lead >= 0xF0 && lead <= 0xF4) {
            sequenceLength = 4;
            codePoint = lead & 0x07;
            if (lead == 0xF0) low = 0x90;
            if (lead == 0xF4) high = 0x8F;
        } else {
            put(kReplacement);
            ++i;
            continue;
        }
        // Consume the longest valid prefix; a broken sequence gives one
        // replacement for that prefix and decoding resumes behind it.
        std::size_t consumed = 1;
        bool complete = true;
        for (; consumed < sequenceLength; ++consumed) {
            if (i + consumed >= size) {
                complete = false;
                break;
            }
            const auto byte = static_cast<unsigned char>(bytes[i + consumed]);
            const bool inRange = consumed == 1 ? (byte >= low && byte <= high) : IsContinuation(byte);
            if (!inRange) {
                complete = false;
                break;
            }
            codePoint = (codePoint << 6) | (byte & 0x3F);
        }
        i += consumed;
        if (!complete) {
            put(kReplacement);
        } else if (codePoint >= 0x10000) {
            codePoint -= 0x10000;
            put(static_cast<char16_t>(0xD800 + (codePoint >> 10)));
            put(static_cast<char16_t>(0xDC00 + (codePoint & 0x3FF)));
        } else {
            put(static_cast<char16_t>(codePoint));
        }
    }
    text.resize(length);
    return text;
}

std::string Utf16ToUtf8(std::u16string_view text) {
    std::string bytes;
    AppendUtf8(bytes, text);
    return bytes;
}

void AppendUtf8(std::string& bytes, std::u16string_view text) {
    bytes.reserve(bytes.size() + text.size() + text.size() / 2);
    const std::size_t size = text.size();
    for (std::size_t i = 0; i < size; ++i) {
        std::uint32_t codePoint = text[i];
        if (codePoint < 0x80) {
            bytes += static_cast<char>(codePoint);
            continue;
        }
        if (codePoint >= 0xD800 && codePoint <= 0xDBFF && i + 1 < size &&
            text[i + 1] >= 0xDC00 && text[i + 1] <= 0xDFFF) {
            codePoint = 0x10000 + ((codePoint - 0xD800) << 10) + (text[i + 1] - 0xDC00);
            ++i;
        } else if (codePoint >= 0xD800 && codePoint <= 0xDFFF) {
            codePoint = kReplacement;
        }
        if (codePoint < 0x800) {
            bytes += static_cast<char>(0xC0 | (codePoint >> 6));
        } else if (codePoint < 0x10000) {
            bytes += static_cast<char>(0xE0 | (codePoint >> 12));
            bytes += static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F));
        } else {
            bytes += static_cast<char>(0xF0 | (codePoint >> 18));
            bytes += static_cast<char>(0x80 | ((codePoint >> 12) & 0x3F));
            bytes += static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F));
        }
        bytes += static_cast<char>(0x80 | (codePoint & 0x3F));
    }
}

}  // namespace zirvel
