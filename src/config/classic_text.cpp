#include "config/classic_text.h"

#include <charconv>
#include <cmath>
#include <iterator>
#include <string>

namespace zirvel {
namespace {

struct CharRange {
    char16_t first;
    char16_t last;
};

// Characters the runtime's iswdigit accepts.
constexpr CharRange kDigitRanges[] = {
    {0x0030, 0x0039}, {0x00B2, 0x00B3}, {0x00B9, 0x00B9}, {0x0660, 0x0669},
    {0x06F0, 0x06F9}, {0x07C0, 0x07C9}, {0x0966, 0x096F}, {0x09E6, 0x09EF},
    {0x0A66, 0x0A6F}, {0x0AE6, 0x0AEF}, {0x0B66, 0x0B6F}, {0x0BE6, 0x0BEF},
    {0x0C66, 0x0C6F}, {0x0CE6, 0x0CEF}, {0x0D66, 0x0D6F}, {0x0DE6, 0x0DEF},
    {0x0E50, 0x0E59}, {0x0ED0, 0x0ED9}, {0x0F20, 0x0F29}, {0x1040, 0x1049},
    {0x1090, 0x1099}, {0x17E0, 0x17E9}, {0x1810, 0x1819}, {0x1946, 0x194F},
    {0x19D0, 0x19D9}, {0x1A80, 0x1A89}, {0x1A90, 0x1A99}, {0x1B50, 0x1B59},
    {0x1BB0, 0x1BB9}, {0x1C40, 0x1C49}, {0x1C50, 0x1C59}, {0xA620, 0xA629},
    {0xA8D0, 0xA8D9}, {0xA900, 0xA909}, {0xA9D0, 0xA9D9}, {0xA9F0, 0xA9F9},
    {0xAA50, 0xAA59}, {0xABF0, 0xABF9}, {0xFF10, 0xFF19},
};

// Characters the runtime's iswspace accepts.
constexpr CharRange kSpaceRanges[] = {
    {0x0009, 0x000D}, {0x0020, 0x0020}, {0x00A0, 0x00A0}, {0x1680, 0x1680},
    {0x2000, 0x200A}, {0x2028, 0x2029}, {0x202F, 0x202F}, {0x205F, 0x205F},
    {0x3000, 0x3000},
};

// The zeros of the digit scripts that _wtoi and wcstoul convert.
constexpr char16_t kIntegerDigitZeros[] = {
    0x0030, 0x0660, 0x06F0, 0x0966, 0x09E6, 0x0A66, 0x0AE6, 0x0B66, 0x0C66,
    0x0CE6, 0x0D66, 0x0E50, 0x0ED0, 0x0F20, 0x1040, 0x17E0, 0x1810, 0xFF10,
};

template <std::size_t N>
bool InRanges(const CharRange (&ranges)[N], char16_t c) {
    for (const CharRange& range : ranges) {
        if (c < range.first) return false;  // ranges are sorted
        if (c <= range.last) return true;
    }
    return false;
}

// The value of c as a digit in `base` (10 or 16), or -1.
int IntegerDigitValue(char16_t c, int base) {
    for (char16_t zero : kIntegerDigitZeros) {
        if (c >= zero && c <= zero + 9) return c - zero;
    }
    if (base == 16) {
        if (c >= u'a' && c <= u'f') return c - u'a' + 10;
        if (c >= u'A' && c <= u'F') return c - u'A' + 10;
    }
    return -1;
}

std::size_t SkipSpaces(std::u16string_view text, std::size_t i) {
    while (i < text.size() && IsClassicSpace(text[i])) ++i;
    return i;
}

bool IsAsciiDigit(char16_t c) { return c >= u'0' && c <= u'9'; }

// Decimal exponent of the first significant digit of a mantissa written as
// digits with at most one point, or 0 for an all-zero mantissa.
long LeadingDigitExponent(std::string_view mantissa) {
    long integerDigits = 0;
    bool afterPoint = false;
    long position = 0;  // digits after the point seen so far
    for (char c : mantissa) {
        if (c == '.') {
            afterPoint = true;
            continue;
        }
        if (afterPoint) ++position;
        if (c != '0') return afterPoint ? -position : integerDigits;
        if (!afterPoint) ++integerDigits;
    }
    return 0;
}

}  // namespace

bool IsClassicDigit(char16_t c) { return InRanges(kDigitRanges, c); }

bool IsClassicSpace(char16_t c) { return InRanges(kSpaceRanges, c); }

char16_t ClassicToUpper(char16_t c) {
    return (c >= u'a' && c <= u'z') ? static_cast<char16_t>(c - u'a' + u'A') : c;
}

char16_t ClassicToLower(char16_t c) {
    return (c >= u'A' && c <= u'Z') ? static_cast<char16_t>(c - u'A' + u'a') : c;
}

double ClassicWcstod(std::u16string_view text) {
    std::size_t i = SkipSpaces(text, 0);
    bool negative = false;
    if (i < text.size() && (text[i] == u'-' || text[i] == u'+')) {
        negative = text[i] == u'-';
        ++i;
    }
    // Collect the longest valid prefix as ASCII for std::from_chars, which is
    // correctly rounded and independent of the C library's locale.
    std::string number;
    std::size_t mantissaDigits = 0;
    while (i < text.size() && IsAsciiDigit(text[i])) {
        number += static_cast<char>(text[i++]);
        ++mantissaDigits;
    }
    if (i < text.size() && text[i] == u'.') {
        number += '.';
        ++i;
        while (i < text.size() && IsAsciiDigit(text[i])) {
            number += static_cast<char>(text[i++]);
            ++mantissaDigits;
        }
    }
    if (mantissaDigits == 0) return 0.0;
    const std::size_t mantissaLength = number.size();
    long exponent = 0;
    if (i < text.size() && (text[i] == u'e' || text[i] == u'E')) {
        std::size_t j = i + 1;
        bool negativeExponent = false;
        if (j < text.size() && (text[j] == u'-' || text[j] == u'+')) {
            negativeExponent = text[j] == u'-';
            ++j;
        }
        if (j < text.size() && IsAsciiDigit(text[j])) {
            while (j < text.size() && IsAsciiDigit(text[j])) {
                if (exponent < 100000) exponent = exponent * 10 + (text[j] - u'0');
                ++j;
            }
            if (negativeExponent) exponent = -exponent;
            number += 'e';
            number += std::to_string(exponent);
        }
    }
    double value = 0.0;
    const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
    if (result.ec == std::errc::result_out_of_range) {
        const long magnitude =
            LeadingDigitExponent(std::string_view(number).substr(0, mantissaLength)) + exponent;
        value = magnitude > 0 ? HUGE_VAL : 0.0;
    }
    return negative ? -value : value;
}

namespace {

// Shared by _wtoi and wcstoul: white space, sign, digits. The magnitude
// saturates just above 2^32 so that both callers can see an overflow.
struct IntegerScan {
    bool negative = false;
    std::uint64_t magnitude = 0;  // saturates at 2^33 to keep overflow visible
};

IntegerScan ScanInteger(std::u16string_view text, int base) {
    IntegerScan scan;
    std::size_t i = SkipSpaces(text, 0);
    if (i < text.size() && (text[i] == u'-' || text[i] == u'+')) {
        scan.negative = text[i] == u'-';
        ++i;
    }
    if (base == 16 && i + 1 < text.size() && text[i] == u'0' &&
        (text[i + 1] == u'x' || text[i + 1] == u'X')) {
        i += 2;
    }
    constexpr std::uint64_t kSaturation = std::uint64_t{1} << 33;
    for (; i < text.size(); ++i) {
        const int digit = IntegerDigitValue(text[i], base);
        if (digit < 0) break;
        scan.magnitude = scan.magnitude * static_cast<std::uint64_t>(base) + static_cast<std::uint64_t>(digit);
        if (scan.magnitude > kSaturation) scan.magnitude = kSaturation;
    }
    return scan;
}

}  // namespace

int ClassicWtoi(std::u16string_view text) {
    const IntegerScan scan = ScanInteger(text, 10);
    // _wtoi saturates like wcstol.
    if (scan.negative) {
        return scan.magnitude > 0x80000000ULL ? INT32_MIN : static_cast<int>(-static_cast<std::int64_t>(scan.magnitude));
    }
    return scan.magnitude > 0x7FFFFFFFULL ? INT32_MAX : static_cast<int>(scan.magnitude);
}

std::uint32_t ClassicWcstoulHex(std::u16string_view text) {
    const IntegerScan scan = ScanInteger(text, 16);
    if (scan.magnitude > 0xFFFFFFFFULL) return 0xFFFFFFFFu;
    const auto value = static_cast<std::uint32_t>(scan.magnitude);
    return scan.negative ? static_cast<std::uint32_t>(0u - value) : value;
}

}  // namespace zirvel
