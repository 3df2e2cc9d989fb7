// Key and mouse-button names as users write them in config.json and in the
// wheels files.
#include <gtest/gtest.h>

#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "config/key_code.h"
#include "config/keyboard_layout.h"

namespace zirvel {
namespace {

void ExpectKey(const KeyCode& code, std::uint16_t vk, bool extended = false) {
    EXPECT_TRUE(code.valid);
    EXPECT_FALSE(code.isMouse);
    EXPECT_EQ(code.vk, vk);
    EXPECT_EQ(code.extended, extended);
}

void ExpectButton(const KeyCode& code, std::uint32_t button) {
    EXPECT_TRUE(code.valid);
    EXPECT_TRUE(code.isMouse);
    EXPECT_EQ(code.button, button);
    EXPECT_EQ(code.vk, 0);
    EXPECT_FALSE(code.extended);
}

std::u16string Ascii(std::string_view text) {
    return std::u16string(text.begin(), text.end());
}

std::u16string UpperAscii(std::u16string text) {
    for (char16_t& c : text) {
        if (c >= u'a' && c <= u'z') c = static_cast<char16_t>(c - u'a' + u'A');
    }
    return text;
}

// ---------------------------------------------------------------------------
// Named keys

struct NamedKeyCase {
    const char* name;
    std::uint16_t vk;
    bool extended;
};

const NamedKeyCase kNamedKeys[] = {
    {"space", 0x20, false},      {"spacja", 0x20, false},     {"enter", 0x0D, false},
    {"tab", 0x09, false},        {"esc", 0x1B, false},        {"escape", 0x1B, false},
    {"capslock", 0x14, false},   {"caps", 0x14, false},       {"backspace", 0x08, false},
    {"shift", 0x10, false},      {"ctrl", 0x11, false},       {"alt", 0x12, false},
    {"up", 0x26, true},          {"down", 0x28, true},        {"left", 0x25, true},
    {"right", 0x27, true},       {"insert", 0x2D, true},      {"delete", 0x2E, true},
    {"home", 0x24, true},        {"end", 0x23, true},         {"pageup", 0x21, true},
    {"pagedown", 0x22, true},    {"win", 0x5B, true},         {"printscreen", 0x2C, true},
    {"prtsc", 0x2C, true},       {"volumeup", 0xAF, true},    {"volumedown", 0xAE, true},
    {"volumemute", 0xAD, true},  {"playpause", 0xB3, true},   {"nexttrack", 0xB0, true},
    {"prevtrack", 0xB1, true},
};

TEST(KeyNames, TableHasThirtyOneNames) {
    EXPECT_EQ(std::size(kNamedKeys), 31u);
}

class NamedKeyTest : public ::testing::TestWithParam<NamedKeyCase> {};

TEST_P(NamedKeyTest, LowerCase) {
    const NamedKeyCase& c = GetParam();
    const KeyCode code = ParseKeyName(Ascii(c.name));
    ExpectKey(code, c.vk, c.extended);
    EXPECT_EQ(code.name, Ascii(c.name));
}

TEST_P(NamedKeyTest, UpperCase) {
    const NamedKeyCase& c = GetParam();
    const std::u16string upper = UpperAscii(Ascii(c.name));
    const KeyCode code = ParseKeyName(upper);
    ExpectKey(code, c.vk, c.extended);
    EXPECT_EQ(code.name, upper);
}

TEST_P(NamedKeyTest, MixedCaseWithWhiteSpaceAround) {
    const NamedKeyCase& c = GetParam();
    std::u16string mixed = Ascii(c.name);
    mixed[0] = static_cast<char16_t>(mixed[0] - u'a' + u'A');
    const KeyCode code = ParseKeyName(u" \t" + mixed + u"\r\n ");
    ExpectKey(code, c.vk, c.extended);
    EXPECT_EQ(code.name, mixed);
}

INSTANTIATE_TEST_SUITE_P(AllNames, NamedKeyTest, ::testing::ValuesIn(kNamedKeys),
                         [](const ::testing::TestParamInfo<NamedKeyCase>& info) {
                             return std::string(info.param.name);
                         });

TEST(KeyNames, EnterWithSpacesAroundAndInCapitals) {
    const KeyCode spaced = ParseKeyName(u"  Enter  ");
    ExpectKey(spaced, 0x0D);
    EXPECT_EQ(spaced.name, u"Enter");
    ExpectKey(ParseKeyName(u"ENTER"), 0x0D);
    ExpectKey(ParseKeyName(u"Spacja"), 0x20);
}

TEST(KeyNames, TrimmingUsesTheRuntimeSpaceSet) {
    const KeyCode code = ParseKeyName(u"\u00A0\vtab\f\u3000");
    ExpectKey(code, 0x09);
    EXPECT_EQ(code.name, u"tab");
}

TEST(KeyNames, CombinationsAreNotSplit) {
    EXPECT_FALSE(ParseKeyName(u"ctrl+c").valid);
    EXPECT_FALSE(ParseKeyName(u"alt tab").valid);
    EXPECT_FALSE(ParseKeyName(u"control").valid);
    EXPECT_FALSE(ParseKeyName(u"lctrl").valid);
    EXPECT_FALSE(ParseKeyName(u"page up").valid);
}

TEST(KeyNames, EmptyAndUnknownTextsAreInvalid) {
    for (std::u16string_view text : {u"", u" ", u"   ", u"\t\r\n", u"xx", u"spac", u"numpad1",
                                     u"enterx", u"ąę"}) {
        const KeyCode code = ParseKeyName(text);
        EXPECT_FALSE(code.valid);
        EXPECT_FALSE(code.isMouse);
        EXPECT_EQ(code.vk, 0);
    }
    EXPECT_TRUE(ParseKeyName(u"   ").name.empty());
}

// ---------------------------------------------------------------------------
// Mouse buttons

struct MouseCase {
    const char* name;
    std::uint32_t button;
};

const MouseCase kMouseNames[] = {
    {"lmb", kMouseLeft},   {"lpm", kMouseLeft},    {"rmb", kMouseRight}, {"ppm", kMouseRight},
    {"mmb", kMouseMiddle}, {"mpm", kMouseMiddle},  {"mb4", kMouseX1},    {"mouse4", kMouseX1},
    {"mb5", kMouseX2},     {"mouse5", kMouseX2},
};

TEST(MouseNames, ButtonNumbers) {
    EXPECT_EQ(kMouseLeft, 0u);
    EXPECT_EQ(kMouseRight, 1u);
    EXPECT_EQ(kMouseMiddle, 2u);
    EXPECT_EQ(kMouseX1, 3u);
    EXPECT_EQ(kMouseX2, 4u);
}

TEST(MouseNames, EveryNameInAnyCase) {
    for (const MouseCase& c : kMouseNames) {
        SCOPED_TRACE(c.name);
        const KeyCode lower = ParseKeyName(Ascii(c.name));
        ExpectButton(lower, c.button);
        EXPECT_EQ(lower.name, Ascii(c.name));
        const KeyCode upper = ParseKeyName(u" " + UpperAscii(Ascii(c.name)) + u" ");
        ExpectButton(upper, c.button);
        EXPECT_EQ(upper.name, UpperAscii(Ascii(c.name)));
    }
}

TEST(MouseNames, PolishLeftAndFifthButton) {
    ExpectButton(ParseKeyName(u"LPM"), kMouseLeft);
    ExpectButton(ParseKeyName(u"mouse5"), kMouseX2);
    ExpectButton(ParseKeyName(u"Mouse4"), kMouseX1);
}

TEST(MouseNames, NearMissesAreInvalid) {
    EXPECT_FALSE(ParseKeyName(u"mb3").valid);
    EXPECT_FALSE(ParseKeyName(u"mouse").valid);
    EXPECT_FALSE(ParseKeyName(u"mouse1").valid);
    EXPECT_FALSE(ParseKeyName(u"lmbx").valid);
}

// ---------------------------------------------------------------------------
// Function keys

TEST(FunctionKeys, OneToTwentyFourInAnyCase) {
    for (int n = 1; n <= 24; ++n) {
        SCOPED_TRACE(n);
        const std::u16string digits = Ascii(std::to_string(n));
        const std::uint16_t vk = static_cast<std::uint16_t>(0x70 + n - 1);
        const KeyCode upper = ParseKeyName(u"F" + digits);
        ExpectKey(upper, vk);
        EXPECT_EQ(upper.name, u"F" + digits);
        ExpectKey(ParseKeyName(u"f" + digits), vk);
    }
}

TEST(FunctionKeys, Examples) {
    ExpectKey(ParseKeyName(u"F12"), 0x7B);
    ExpectKey(ParseKeyName(u"f24"), 0x87);
    ExpectKey(ParseKeyName(u"F1"), 0x70);
    ExpectKey(ParseKeyName(u" F5 "), 0x74);
}

TEST(FunctionKeys, OutOfRangeNumbersAreInvalid) {
    for (std::u16string_view text : {u"F0", u"f0", u"F25", u"f25", u"F99", u"f00"}) {
        SCOPED_TRACE(std::string(text.begin(), text.end()));
        const KeyCode code = ParseKeyName(text);
        EXPECT_FALSE(code.valid);
        EXPECT_EQ(code.vk, 0);
    }
}

TEST(FunctionKeys, TooLongIsInvalid) {
    EXPECT_FALSE(ParseKeyName(u"F100").valid);
    EXPECT_FALSE(ParseKeyName(u"f123").valid);
    EXPECT_FALSE(ParseKeyName(u"F001").valid);
}

TEST(FunctionKeys, NumberConversionStopsAtTheFirstNonDigit) {
    ExpectKey(ParseKeyName(u"f1x"), 0x70);
    ExpectKey(ParseKeyName(u"F2a"), 0x71);
    ExpectKey(ParseKeyName(u"f01"), 0x70);
}

TEST(FunctionKeys, SecondCharacterMustBeADigit) {
    EXPECT_FALSE(ParseKeyName(u"Fx").valid);
    EXPECT_FALSE(ParseKeyName(u"f-1").valid);
    EXPECT_FALSE(ParseKeyName(u"f 5").valid);
    ExpectKey(ParseKeyName(u"f"), 0x46);
}

// ---------------------------------------------------------------------------
// Single characters

std::vector<char16_t> g_askedCharacters;

// A layout that types "!" (Shift+1), "ą" (AltGr+A) and "é" (a key of its own),
// and nothing else.
std::uint16_t FakeLayout(char16_t character) {
    g_askedCharacters.push_back(character);
    switch (character) {
    case u'!': return 0x0131;
    case u'ą': return 0x0641;
    case u'é': return 0x00C0;
    case u'%': return 0x0042;
    default: return kNoKeyForCharacter;
    }
}

std::uint16_t OtherFakeLayout(char16_t) { return 0x0077; }

class SingleCharacterTest : public ::testing::Test {
protected:
    void SetUp() override {
        g_askedCharacters.clear();
        SetKeyScanFunction(&FakeLayout);
    }
    void TearDown() override { SetKeyScanFunction(nullptr); }
};

TEST_F(SingleCharacterTest, LettersAndDigitsNeedNoLayout) {
    for (char16_t c = u'a'; c <= u'z'; ++c) {
        ExpectKey(ParseKeyName(std::u16string(1, c)), static_cast<std::uint16_t>(c - u'a' + 0x41));
    }
    for (char16_t c = u'A'; c <= u'Z'; ++c) {
        ExpectKey(ParseKeyName(std::u16string(1, c)), c);
    }
    for (char16_t c = u'0'; c <= u'9'; ++c) {
        ExpectKey(ParseKeyName(std::u16string(1, c)), c);
    }
    EXPECT_TRUE(g_askedCharacters.empty());
}

TEST_F(SingleCharacterTest, Examples) {
    ExpectKey(ParseKeyName(u"a"), 0x41);
    ExpectKey(ParseKeyName(u"A"), 0x41);
    ExpectKey(ParseKeyName(u"Z"), 0x5A);
    ExpectKey(ParseKeyName(u"0"), 0x30);
    ExpectKey(ParseKeyName(u"5"), 0x35);
}

TEST_F(SingleCharacterTest, NameKeepsTheCharacterAsWritten) {
    EXPECT_EQ(ParseKeyName(u"a").name, u"a");
    EXPECT_EQ(ParseKeyName(u"  q\t").name, u"q");
    ExpectKey(ParseKeyName(u"  q\t"), 0x51);
    EXPECT_EQ(ParseKeyName(u" ! ").name, u"!");
}

TEST_F(SingleCharacterTest, OtherCharactersUseTheLayoutKeyWithoutShiftState) {
    const KeyCode bang = ParseKeyName(u"!");
    ExpectKey(bang, 0x31);
    ASSERT_EQ(g_askedCharacters.size(), 1u);
    EXPECT_EQ(g_askedCharacters[0], u'!');

    ExpectKey(ParseKeyName(u"é"), 0xC0);
}

TEST_F(SingleCharacterTest, NationalLetterIsAskedUnchanged) {
    const KeyCode code = ParseKeyName(u"ą");
    ExpectKey(code, 0x41);
    EXPECT_EQ(code.name, u"ą");
    ASSERT_EQ(g_askedCharacters.size(), 1u);
    EXPECT_EQ(g_askedCharacters[0], u'ą');
}

TEST_F(SingleCharacterTest, CharacterTheLayoutCannotTypeIsInvalid) {
    for (std::u16string_view text : {u"#", u"中", u"Ą", u"ß", u"€"}) {
        const KeyCode code = ParseKeyName(text);
        EXPECT_FALSE(code.valid);
        EXPECT_EQ(code.vk, 0);
        EXPECT_FALSE(code.isMouse);
    }
    EXPECT_EQ(g_askedCharacters.size(), 5u);
}

TEST_F(SingleCharacterTest, WhiteSpaceAloneDoesNotReachTheLayout) {
    EXPECT_FALSE(ParseKeyName(u" ").valid);
    EXPECT_FALSE(ParseKeyName(u"\t").valid);
    EXPECT_TRUE(g_askedCharacters.empty());
}

TEST_F(SingleCharacterTest, LookupCanBeReplacedAndRestored) {
    EXPECT_EQ(ScanKeyForCharacter(u'%'), 0x0042);
    EXPECT_EQ(SetKeyScanFunction(&OtherFakeLayout), &FakeLayout);
    EXPECT_EQ(ScanKeyForCharacter(u'%'), 0x0077);
    ExpectKey(ParseKeyName(u"%"), 0x77);
    SetKeyScanFunction(nullptr);
    EXPECT_NE(ScanKeyForCharacter(u'%'), 0x0042);
    EXPECT_NE(ScanKeyForCharacter(u'%'), 0x0077);
}

#ifndef _WIN32
TEST(KeyboardLayout, DefaultLookupIsTheBuiltInTableOffWindows) {
    SetKeyScanFunction(nullptr);
    for (char16_t c : {u'!', u';', u'/', u'ą', u'ź', u'€', u'中', u'a'}) {
        EXPECT_EQ(ScanKeyForCharacter(c), BuiltInKeyScan(c)) << static_cast<int>(c);
    }
}
#endif

// ---------------------------------------------------------------------------
// The built-in layout table

int LowByte(std::uint16_t scan) { return scan & 0xFF; }

TEST(BuiltInLayout, UsPunctuation) {
    struct Case {
        char16_t character;
        int vk;
    };
    const Case cases[] = {
        {u'!', 0x31}, {u'@', 0x32}, {u'#', 0x33}, {u'$', 0x34}, {u'%', 0x35}, {u'^', 0x36},
        {u'&', 0x37}, {u'*', 0x38}, {u'(', 0x39}, {u')', 0x30}, {u';', 0xBA}, {u':', 0xBA},
        {u'=', 0xBB}, {u'+', 0xBB}, {u',', 0xBC}, {u'<', 0xBC}, {u'-', 0xBD}, {u'_', 0xBD},
        {u'.', 0xBE}, {u'>', 0xBE}, {u'/', 0xBF}, {u'?', 0xBF}, {u'`', 0xC0}, {u'~', 0xC0},
        {u'[', 0xDB}, {u'{', 0xDB}, {u'\\', 0xDC}, {u'|', 0xDC}, {u']', 0xDD}, {u'}', 0xDD},
        {u'\'', 0xDE}, {u'"', 0xDE}, {u' ', 0x20},
    };
    for (const Case& c : cases) {
        const std::uint16_t scan = BuiltInKeyScan(c.character);
        EXPECT_NE(scan, kNoKeyForCharacter) << static_cast<int>(c.character);
        EXPECT_EQ(LowByte(scan), c.vk) << static_cast<int>(c.character);
    }
}

TEST(BuiltInLayout, LettersAndDigits) {
    for (char16_t c = u'a'; c <= u'z'; ++c) {
        EXPECT_EQ(LowByte(BuiltInKeyScan(c)), c - u'a' + 0x41) << static_cast<int>(c);
        const char16_t upper = static_cast<char16_t>(c - u'a' + u'A');
        EXPECT_EQ(LowByte(BuiltInKeyScan(upper)), upper) << static_cast<int>(upper);
    }
    for (char16_t c = u'0'; c <= u'9'; ++c) {
        EXPECT_EQ(LowByte(BuiltInKeyScan(c)), c) << static_cast<int>(c);
    }
}

TEST(BuiltInLayout, PolishProgrammersLetters) {
    struct Case {
        char16_t character;
        int vk;
    };
    const Case cases[] = {
        {u'ą', 0x41}, {u'ć', 0x43}, {u'ę', 0x45}, {u'ł', 0x4C}, {u'ń', 0x4E}, {u'ó', 0x4F},
        {u'ś', 0x53}, {u'ż', 0x5A}, {u'ź', 0x58}, {u'Ą', 0x41}, {u'Ć', 0x43}, {u'Ę', 0x45},
        {u'Ł', 0x4C}, {u'Ń', 0x4E}, {u'Ó', 0x4F}, {u'Ś', 0x53}, {u'Ż', 0x5A}, {u'Ź', 0x58},
        {u'€', 0x55},
    };
    for (const Case& c : cases) {
        const std::uint16_t scan = BuiltInKeyScan(c.character);
        EXPECT_NE(scan, kNoKeyForCharacter) << static_cast<int>(c.character);
        EXPECT_EQ(LowByte(scan), c.vk) << static_cast<int>(c.character);
    }
}

TEST(BuiltInLayout, CharactersWithoutAKey) {
    EXPECT_EQ(BuiltInKeyScan(u'中'), kNoKeyForCharacter);
    EXPECT_EQ(BuiltInKeyScan(u'あ'), kNoKeyForCharacter);
    EXPECT_EQ(BuiltInKeyScan(u'ж'), kNoKeyForCharacter);
    EXPECT_EQ(kNoKeyForCharacter, 0xFFFF);
}

TEST(BuiltInLayout, ParseKeyNameFollowsTheInstalledLayout) {
    SetKeyScanFunction(&BuiltInKeyScan);
    ExpectKey(ParseKeyName(u"!"), 0x31);
    ExpectKey(ParseKeyName(u";"), 0xBA);
    ExpectKey(ParseKeyName(u"/"), 0xBF);
    ExpectKey(ParseKeyName(u"ą"), 0x41);
    ExpectKey(ParseKeyName(u"ł"), 0x4C);
    ExpectKey(ParseKeyName(u"ż"), 0x5A);
    ExpectKey(ParseKeyName(u"ź"), 0x58);
    ExpectKey(ParseKeyName(u"€"), 0x55);
    EXPECT_FALSE(ParseKeyName(u"中").valid);
    SetKeyScanFunction(nullptr);
}

}  // namespace
}  // namespace zirvel
