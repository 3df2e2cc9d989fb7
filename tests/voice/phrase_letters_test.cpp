// The letters of voice phrases lowered the same way on every platform.
#include <gtest/gtest.h>

#include <string>

#include "voice/phrase_letters.h"

namespace zirvel {
namespace {

TEST(PhraseLetters, PolishCapitalsBecomeTheirSmallLetters) {
    const std::u16string capitals = u"AĄBCĆDEĘFGHIJKLŁMNŃOÓPRSŚTUWYZŹŻ";
    const std::u16string small = u"aąbcćdeęfghijklłmnńoóprsśtuwyzźż";
    ASSERT_EQ(capitals.size(), small.size());
    for (std::size_t i = 0; i < capitals.size(); ++i) {
        EXPECT_EQ(LowerPhraseLetter(capitals[i]), small[i]) << "capital " << static_cast<int>(capitals[i]);
        EXPECT_EQ(LowerPhraseLetter(small[i]), small[i]) << "small " << static_cast<int>(small[i]);
    }
}

TEST(PhraseLetters, EveryLatin1CapitalIsLoweredAndTheTimesSignStays) {
    for (char16_t c = u'\u00C0'; c <= u'\u00DE'; ++c) {
        if (c == u'\u00D7') continue;
        EXPECT_EQ(LowerPhraseLetter(c), static_cast<char16_t>(c + 0x20)) << static_cast<int>(c);
    }
    EXPECT_EQ(LowerPhraseLetter(u'\u00D7'), u'\u00D7');  // ×
    EXPECT_EQ(LowerPhraseLetter(u'\u00DF'), u'\u00DF');  // ß has no single capital
    EXPECT_EQ(LowerPhraseLetter(u'\u00F7'), u'\u00F7');  // ÷
}

TEST(PhraseLetters, LatinExtendedACapitalsAreLoweredWhereverTheirPairsStart) {
    // Capitals on even code points, each followed by its small letter.
    for (char16_t c = u'\u0100'; c <= u'\u0137'; c += 2) {
        if (c == u'\u0130') continue;
        EXPECT_EQ(LowerPhraseLetter(c), static_cast<char16_t>(c + 1)) << static_cast<int>(c);
        EXPECT_EQ(LowerPhraseLetter(static_cast<char16_t>(c + 1)), c + 1) << static_cast<int>(c + 1);
    }
    for (char16_t c = u'\u014A'; c <= u'\u0177'; c += 2) {
        EXPECT_EQ(LowerPhraseLetter(c), static_cast<char16_t>(c + 1)) << static_cast<int>(c);
    }
    // Capitals on odd code points: Ĺ … Ň and Ź Ż Ž.
    for (char16_t c = u'\u0139'; c <= u'\u0147'; c += 2) {
        EXPECT_EQ(LowerPhraseLetter(c), static_cast<char16_t>(c + 1)) << static_cast<int>(c);
        EXPECT_EQ(LowerPhraseLetter(static_cast<char16_t>(c + 1)), c + 1) << static_cast<int>(c + 1);
    }
    for (char16_t c = u'\u0179'; c <= u'\u017D'; c += 2) {
        EXPECT_EQ(LowerPhraseLetter(c), static_cast<char16_t>(c + 1)) << static_cast<int>(c);
    }
    EXPECT_EQ(LowerPhraseLetter(u'\u0130'), u'i');       // İ
    EXPECT_EQ(LowerPhraseLetter(u'\u0178'), u'\u00FF');  // Ÿ
    EXPECT_EQ(LowerPhraseLetter(u'\u0131'), u'\u0131');  // ı is small already
    EXPECT_EQ(LowerPhraseLetter(u'\u0138'), u'\u0138');  // ĸ has no capital
    EXPECT_EQ(LowerPhraseLetter(u'\u0149'), u'\u0149');  // ŉ neither
    EXPECT_EQ(LowerPhraseLetter(u'\u017F'), u'\u017F');  // ſ is small
}

TEST(PhraseLetters, GreekAndCyrillicCapitalsAreLowered) {
    EXPECT_EQ(LowerPhraseLetter(u'Α'), u'α');
    EXPECT_EQ(LowerPhraseLetter(u'Ω'), u'ω');
    EXPECT_EQ(LowerPhraseLetter(u'Ά'), u'ά');
    EXPECT_EQ(LowerPhraseLetter(u'Ώ'), u'ώ');
    EXPECT_EQ(LowerPhraseLetter(u'Д'), u'д');
    EXPECT_EQ(LowerPhraseLetter(u'Я'), u'я');
    EXPECT_EQ(LowerPhraseLetter(u'Ё'), u'ё');
    EXPECT_EQ(LowerPhraseLetter(u'Џ'), u'џ');
}

TEST(PhraseLetters, DigitsSignsAndSmallLettersStayAsTheyAre) {
    for (char16_t c : std::u16string(u"0123456789 -_.,!?\"\\ąz€")) EXPECT_EQ(LowerPhraseLetter(c), c);
}

}  // namespace
}  // namespace zirvel
