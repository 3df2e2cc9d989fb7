#include "voice/number_words.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace zirvel {
namespace {

TEST(NumberWord, UnitsAndTeens) {
    EXPECT_EQ(NumberWord(1), u"jeden");
    EXPECT_EQ(NumberWord(5), u"pięć");
    EXPECT_EQ(NumberWord(9), u"dziewięć");
    EXPECT_EQ(NumberWord(10), u"dziesięć");
    EXPECT_EQ(NumberWord(11), u"jedenaście");
    EXPECT_EQ(NumberWord(15), u"piętnaście");
    EXPECT_EQ(NumberWord(19), u"dziewiętnaście");
}

TEST(NumberWord, TensStandAloneOrWithOneSpaceAndAUnit) {
    EXPECT_EQ(NumberWord(20), u"dwadzieścia");
    EXPECT_EQ(NumberWord(21), u"dwadzieścia jeden");
    EXPECT_EQ(NumberWord(30), u"trzydzieści");
    EXPECT_EQ(NumberWord(44), u"czterdzieści cztery");
    EXPECT_EQ(NumberWord(56), u"pięćdziesiąt sześć");
    EXPECT_EQ(NumberWord(67), u"sześćdziesiąt siedem");
    EXPECT_EQ(NumberWord(78), u"siedemdziesiąt osiem");
    EXPECT_EQ(NumberWord(80), u"osiemdziesiąt");
    EXPECT_EQ(NumberWord(99), u"dziewięćdziesiąt dziewięć");
}

TEST(NumberWord, OutsideOneToNinetyNineIsEmpty) {
    EXPECT_EQ(NumberWord(0), u"");
    EXPECT_EQ(NumberWord(100), u"");
    EXPECT_EQ(NumberWord(-1), u"");
    EXPECT_EQ(NumberWord(1000), u"");
}

TEST(NumberWord, EveryNumberHasItsOwnWord) {
    std::set<std::u16string> words;
    for (int n = 1; n <= 99; ++n) {
        const std::u16string word = NumberWord(n);
        EXPECT_FALSE(word.empty()) << n;
        EXPECT_EQ(word.find(u"  "), std::u16string::npos) << n;
        EXPECT_NE(word.front(), u' ') << n;
        EXPECT_NE(word.back(), u' ') << n;
        words.insert(word);
    }
    EXPECT_EQ(words.size(), 99u);
}

}  // namespace
}  // namespace zirvel
