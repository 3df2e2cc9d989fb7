// The configuration reader's character rules: fixed expectations that hold
// on every platform, and on Windows a comparison with the C runtime itself
// over every UTF-16 unit.
#include "config/classic_text.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <cstdint>
#include <string>

#ifdef _WIN32
#include <cstdlib>
#include <cwchar>
#include <cwctype>
#endif

namespace zirvel {
namespace {

TEST(ClassicText, DigitsIncludeSuperscriptsAndOtherScripts) {
    for (char16_t c = u'0'; c <= u'9'; ++c) EXPECT_TRUE(IsClassicDigit(c));
    EXPECT_TRUE(IsClassicDigit(u'²'));
    EXPECT_TRUE(IsClassicDigit(u'³'));
    EXPECT_TRUE(IsClassicDigit(u'¹'));
    EXPECT_TRUE(IsClassicDigit(u'\u0663'));  // Arabic-Indic three
    EXPECT_TRUE(IsClassicDigit(u'\uFF19'));  // fullwidth nine
    EXPECT_FALSE(IsClassicDigit(u'¼'));
    EXPECT_FALSE(IsClassicDigit(u'a'));
    EXPECT_FALSE(IsClassicDigit(u'/'));
    EXPECT_FALSE(IsClassicDigit(u':'));
}

TEST(ClassicText, SpacesAreTheRuntimeSet) {
    for (char16_t c : {u'\t', u'\n', u'\v', u'\f', u'\r', u' ', u'\u00A0', u'\u2003', u'\u3000'}) {
        EXPECT_TRUE(IsClassicSpace(c)) << static_cast<int>(c);
    }
    for (char16_t c : {u'\0', u'\u0085', u'\u200B', u'\uFEFF', u'x', u'\u001F'}) {
        EXPECT_FALSE(IsClassicSpace(c)) << static_cast<int>(c);
    }
}

TEST(ClassicText, CaseMappingTouchesAsciiLettersOnly) {
    EXPECT_EQ(ClassicToUpper(u'a'), u'A');
    EXPECT_EQ(ClassicToUpper(u'z'), u'Z');
    EXPECT_EQ(ClassicToLower(u'Q'), u'q');
    EXPECT_EQ(ClassicToUpper(u'ą'), u'ą');
    EXPECT_EQ(ClassicToLower(u'Ł'), u'Ł');
    EXPECT_EQ(ClassicToUpper(u'\u0131'), u'\u0131');  // dotless i stays
    EXPECT_EQ(ClassicToLower(u'\u0130'), u'\u0130');  // dotted capital I stays
    EXPECT_EQ(ClassicToLower(u'\u212A'), u'\u212A');  // Kelvin sign stays
}

TEST(ClassicText, WcstodConvertsTheLongestNumberPrefix) {
    EXPECT_EQ(ClassicWcstod(u"+5"), 5.0);
    EXPECT_EQ(ClassicWcstod(u"-"), 0.0);
    EXPECT_EQ(ClassicWcstod(u"+"), 0.0);
    EXPECT_EQ(ClassicWcstod(u"1e5"), 100000.0);
    EXPECT_EQ(ClassicWcstod(u"1-2"), 1.0);
    EXPECT_EQ(ClassicWcstod(u"1.2.3"), 1.2);
    EXPECT_EQ(ClassicWcstod(u"1e"), 1.0);
    EXPECT_EQ(ClassicWcstod(u"1e+"), 1.0);
    EXPECT_EQ(ClassicWcstod(u".5"), 0.5);
    EXPECT_EQ(ClassicWcstod(u"5."), 5.0);
    EXPECT_EQ(ClassicWcstod(u"."), 0.0);
    EXPECT_EQ(ClassicWcstod(u"e5"), 0.0);
    EXPECT_EQ(ClassicWcstod(u"-2.5E-1"), -0.25);
    EXPECT_EQ(ClassicWcstod(u"1\u00B2"), 1.0);  // only ASCII digits convert
    EXPECT_EQ(ClassicWcstod(u"\u0663"), 0.0);
    EXPECT_EQ(ClassicWcstod(u"0.1"), 0.1);
    EXPECT_EQ(ClassicWcstod(u"9007199254740993"), 9007199254740992.0);
    EXPECT_EQ(ClassicWcstod(u"1.7976931348623157e308"), 1.7976931348623157e308);
    EXPECT_TRUE(std::isinf(ClassicWcstod(u"1e999")));
    EXPECT_TRUE(std::isinf(ClassicWcstod(u"1.7976931348623159e308")));
    EXPECT_LT(ClassicWcstod(u"-1e999"), 0.0);
    EXPECT_EQ(ClassicWcstod(u"1e-400"), 0.0);
    EXPECT_EQ(ClassicWcstod(u"0.000001e-320"), 0.0);
    EXPECT_EQ(ClassicWcstod(u"4.9e-324"), 4.9406564584124654e-324);
    EXPECT_EQ(ClassicWcstod(u"0e99999999999"), 0.0);
    EXPECT_EQ(ClassicWcstod(u"0.00000000000000000000000000000000000001e-30"), 1e-68);
}

TEST(ClassicText, WcstodIgnoresTheUserLocale) {
    // A locale with a decimal comma must not change how "1.5" reads.
    const std::string previous = std::setlocale(LC_ALL, nullptr);
    for (const char* name : {"pl_PL.UTF-8", "de_DE.UTF-8", "Polish_Poland.1250", "German_Germany.1252"}) {
        if (std::setlocale(LC_ALL, name)) break;
    }
    EXPECT_EQ(ClassicWcstod(u"1.5"), 1.5);
    EXPECT_EQ(ClassicWcstod(u"1,5"), 1.0);
    std::setlocale(LC_ALL, previous.c_str());
}

TEST(ClassicText, WtoiReadsEveryRuntimeDigitScript) {
    EXPECT_EQ(ClassicWtoi(u"1x"), 1);
    EXPECT_EQ(ClassicWtoi(u"24"), 24);
    EXPECT_EQ(ClassicWtoi(u" 7"), 7);
    EXPECT_EQ(ClassicWtoi(u"+3"), 3);
    EXPECT_EQ(ClassicWtoi(u"-12"), -12);
    EXPECT_EQ(ClassicWtoi(u"\u0663"), 3);
    EXPECT_EQ(ClassicWtoi(u"\uFF11\uFF12"), 12);
    EXPECT_EQ(ClassicWtoi(u"\u00B2"), 0);  // a digit to iswdigit, not to _wtoi
    EXPECT_EQ(ClassicWtoi(u"x"), 0);
    EXPECT_EQ(ClassicWtoi(u"99999999999"), 2147483647);
    EXPECT_EQ(ClassicWtoi(u"-99999999999"), -2147483647 - 1);
}

TEST(ClassicText, WcstoulHexTakesWhatTheRuntimeTakes) {
    EXPECT_EQ(ClassicWcstoulHex(u"0041"), 0x41u);
    EXPECT_EQ(ClassicWcstoulHex(u"00zz"), 0u);
    EXPECT_EQ(ClassicWcstoulHex(u" 041"), 0x41u);
    EXPECT_EQ(ClassicWcstoulHex(u"+041"), 0x41u);
    EXPECT_EQ(ClassicWcstoulHex(u"-001"), 0xFFFFFFFFu);
    EXPECT_EQ(ClassicWcstoulHex(u"0x1A"), 0x1Au);
    EXPECT_EQ(ClassicWcstoulHex(u"ffff"), 0xFFFFu);
    EXPECT_EQ(ClassicWcstoulHex(u"FfFf"), 0xFFFFu);
    EXPECT_EQ(ClassicWcstoulHex(u"\uFF11\uFF10"), 0x10u);
    EXPECT_EQ(ClassicWcstoulHex(u"\u0663\u0663"), 0x33u);
    EXPECT_EQ(ClassicWcstoulHex(u"\uFF21"), 0u);  // fullwidth A is no digit
    EXPECT_EQ(ClassicWcstoulHex(u"123456789"), 0xFFFFFFFFu);
}

#ifdef _WIN32
// The same answers as the Windows C runtime in the "C" locale.
TEST(ClassicTextAgainstRuntime, EveryUnitMatchesIswdigitIswspaceAndCaseMapping) {
    std::setlocale(LC_ALL, "C");
    for (std::uint32_t unit = 0; unit <= 0xFFFF; ++unit) {
        const auto c = static_cast<char16_t>(unit);
        const auto w = static_cast<wint_t>(unit);
        ASSERT_EQ(IsClassicDigit(c), std::iswdigit(w) != 0) << std::hex << unit;
        ASSERT_EQ(IsClassicSpace(c), std::iswspace(w) != 0) << std::hex << unit;
        ASSERT_EQ(ClassicToUpper(c), static_cast<char16_t>(std::towupper(w))) << std::hex << unit;
        ASSERT_EQ(ClassicToLower(c), static_cast<char16_t>(std::towlower(w))) << std::hex << unit;
    }
}

TEST(ClassicTextAgainstRuntime, IntegerConversionsMatchForEveryUnit) {
    for (std::uint32_t unit = 1; unit <= 0xFFFF; ++unit) {
        const wchar_t one[] = {static_cast<wchar_t>(unit), 0};
        const std::u16string text(1, static_cast<char16_t>(unit));
        ASSERT_EQ(ClassicWtoi(text), _wtoi(one)) << std::hex << unit;
        ASSERT_EQ(ClassicWcstoulHex(text), static_cast<std::uint32_t>(std::wcstoul(one, nullptr, 16)))
            << std::hex << unit;
        const wchar_t withDigit[] = {L'1', static_cast<wchar_t>(unit), L'5', 0};
        const std::u16string text3 = u"1" + text + u"5";
        ASSERT_EQ(ClassicWtoi(text3), _wtoi(withDigit)) << std::hex << unit;
        ASSERT_EQ(ClassicWcstod(text3), std::wcstod(withDigit, nullptr)) << std::hex << unit;
    }
}

TEST(ClassicTextAgainstRuntime, NumberTokensMatchWcstod) {
    const char16_t* tokens[] = {
        u"+5", u"-", u"+", u"1e5", u"1-2", u"1.2.3", u"1e", u"1e+", u".5", u"5.", u".", u"e5",
        u"-2.5E-1", u"0.1", u"9007199254740993", u"1.7976931348623157e308", u"1e999", u"-1e999",
        u"1e-400", u"4.9e-324", u"2.2250738585072011e-308", u"123456789012345678901234567890",
        u"0.30000000000000004", u"1e0000000000000000000000005", u"--5", u"+-5", u"5e-5e5",
    };
    for (const char16_t* token : tokens) {
        const std::u16string text(token);
        const std::wstring wide(text.begin(), text.end());
        const double expected = std::wcstod(wide.c_str(), nullptr);
        const double actual = ClassicWcstod(text);
        if (std::isnan(expected)) {
            EXPECT_TRUE(std::isnan(actual));
        } else {
            EXPECT_EQ(actual, expected) << std::string(text.begin(), text.end());
        }
    }
}

TEST(ClassicTextAgainstRuntime, WtoiSaturatesLikeTheRuntime) {
    EXPECT_EQ(ClassicWtoi(u"99999999999"), _wtoi(L"99999999999"));
    EXPECT_EQ(ClassicWtoi(u"-99999999999"), _wtoi(L"-99999999999"));
    EXPECT_EQ(ClassicWtoi(u"\u3000\u2003-\uFF17"), _wtoi(L"\u3000\u2003-\uFF17"));
}

TEST(ClassicTextAgainstRuntime, HexEscapesMatchWcstoul) {
    const char16_t* quads[] = {u"0041", u"00zz", u" 041", u"-001", u"0x1A", u"+041", u"ffff", u"FFFF",
                               u"\uFF11\uFF10", u"\u0663\u0663", u"\uFF21\uFF22", u"0X0f", u"\t\t1f", u"-0x1"};
    for (const char16_t* quad : quads) {
        const std::u16string text(quad);
        const std::wstring wide(text.begin(), text.end());
        EXPECT_EQ(ClassicWcstoulHex(text), static_cast<std::uint32_t>(std::wcstoul(wide.c_str(), nullptr, 16)))
            << std::string(text.begin(), text.end());
    }
}
#endif

}  // namespace
}  // namespace zirvel
