// Character tests and conversions with the Windows C runtime's results in
// its classic "C" locale, computed by our own code so that both platforms
// read the configuration files identically whatever the user's locale.
#pragma once

#include <cstdint>
#include <string_view>

namespace zirvel {

// iswdigit: ASCII digits, the superscripts ¹ ² ³ and the Unicode decimal
// digit blocks that the runtime's character table marks as digits.
bool IsClassicDigit(char16_t c);

// iswspace: tab to carriage return, space, no-break space and the Unicode
// space separators.
bool IsClassicSpace(char16_t c);

// towupper / towlower: the classic locale maps ASCII letters only.
char16_t ClassicToUpper(char16_t c);
char16_t ClassicToLower(char16_t c);

// wcstod: optional white space and sign, digits with one optional point,
// an optional exponent; only ASCII digits count. Out-of-range values give
// an infinity or zero. What is not used is ignored; no number gives 0.
double ClassicWcstod(std::u16string_view text);

// _wtoi: white space, sign, then decimal digits of any of the runtime's
// eighteen digit scripts (ASCII, Arabic-Indic, Devanagari, fullwidth...).
int ClassicWtoi(std::u16string_view text);

// wcstoul(text, base 16): white space, sign, optional "0x", then hex digits
// (the same digit scripts plus a-f / A-F). A minus sign negates modulo 2^32.
std::uint32_t ClassicWcstoulHex(std::u16string_view text);

}  // namespace zirvel
