#include "voice/grammar.h"

#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <string>
#include <vector>

#include "voice_test_support.h"

namespace zirvel {
namespace {

using voice_test::GlobalFunctions;
using voice_test::WheelWithPhrases;

// A stand-in for the speech model: knows every word except the rejected
// ones and records each lookup.
struct FakeModel {
    std::set<std::string> unknown;
    std::vector<std::string> asked;
};

int FakeLookup(void* model, const char* word) {
    FakeModel& fake = *static_cast<FakeModel*>(model);
    fake.asked.emplace_back(word);
    return fake.unknown.count(word) != 0 ? -1 : static_cast<int>(std::strlen(word));
}

int RejectEverything(void*, const char*) {
    return -1;
}

void Fill(VoicePhraseTable& table, std::initializer_list<std::u16string> phrases) {
    std::lock_guard<std::mutex> lock(table.phraseLock);
    std::int32_t command = 1;
    for (const std::u16string& phrase : phrases) AddVoicePhrase(table, phrase, command++);
}

TEST(Grammar, SmallTableIsACompactJsonArray) {
    VoicePhraseTable table;
    Fill(table, {u"pokaż koło", u"powiedz \"tak\"", u"a\\b", u"kliknij"});
    EXPECT_EQ(BuildGrammar(table, nullptr, nullptr, nullptr),
              "[\"pokaż koło\",\"powiedz \\\"tak\\\"\",\"a\\\\b\",\"kliknij\",\"[unk]\"]");
}

TEST(Grammar, EmptyTableHoldsOnlyUnk) {
    const VoicePhraseTable table;
    EXPECT_EQ(BuildGrammar(table, nullptr, nullptr, nullptr), "[\"[unk]\"]");
}

TEST(Grammar, OnlyQuotesAndBackslashesAreEscaped) {
    VoicePhraseTable table;
    Fill(table, {u"tab\there/ł\u00e9"});
    EXPECT_EQ(BuildGrammar(table, nullptr, nullptr, nullptr), "[\"tab\there/ł\u00e9\",\"[unk]\"]");
}

TEST(Grammar, FullTableStartsWithTheBuiltInsAndEndsWithUnk) {
    VoicePhraseTable table;
    RebuildVoicePhrases(table, {WheelWithPhrases({u"Skok"})}, GlobalFunctions({u"poczta"}));
    const std::string grammar = BuildGrammar(table, nullptr, nullptr, nullptr);
    const std::string start = "[\"pokaż koło\",\"schowaj koło\",";
    const std::string end = ",\"jeden\",\"kliknij dwa razy na jeden\",";
    ASSERT_GT(grammar.size(), start.size());
    EXPECT_EQ(grammar.compare(0, start.size(), start), 0);
    EXPECT_NE(grammar.find(end), std::string::npos);
    const std::string tail = ",\"skok\",\"poczta\",\"[unk]\"]";
    ASSERT_GT(grammar.size(), tail.size());
    EXPECT_EQ(grammar.compare(grammar.size() - tail.size(), tail.size(), tail), 0);
    EXPECT_EQ(grammar.find('\n'), std::string::npos);
    EXPECT_EQ(grammar.find("\", "), std::string::npos);
    EXPECT_EQ(grammar.find(" \""), std::string::npos);
    std::size_t items = 0;
    for (std::size_t at = grammar.find("\",\""); at != std::string::npos; at = grammar.find("\",\"", at + 1)) {
        ++items;
    }
    EXPECT_EQ(items, 313u);  // separators between 311 + 2 + 1 items
}

TEST(Grammar, PhrasesWithUnknownWordsAreLeftOutAndListed) {
    VoicePhraseTable table;
    Fill(table, {u"a", u"b x", u"c", u"d x e"});
    FakeModel model;
    model.unknown = {"x"};
    std::u16string skipped;
    EXPECT_EQ(BuildGrammar(table, &model, FakeLookup, &skipped), "[\"a\",\"c\",\"[unk]\"]");
    EXPECT_EQ(skipped, u"„b x”, „d x e”");
}

TEST(Grammar, SingleSkippedPhraseHasNoSeparator) {
    VoicePhraseTable table;
    Fill(table, {u"znane", u"nieznane"});
    FakeModel model;
    model.unknown = {"nieznane"};
    std::u16string skipped;
    EXPECT_EQ(BuildGrammar(table, &model, FakeLookup, &skipped), "[\"znane\",\"[unk]\"]");
    EXPECT_EQ(skipped, u"„nieznane”");
}

TEST(Grammar, SkippedPhrasesAreAppendedToExistingText) {
    VoicePhraseTable table;
    Fill(table, {u"żółw"});
    FakeModel model;
    model.unknown = {"żółw"};
    std::u16string skipped = u"„wcześniej”";
    BuildGrammar(table, &model, FakeLookup, &skipped);
    EXPECT_EQ(skipped, u"„wcześniej”, „żółw”");
}

TEST(Grammar, SkippedListIsOptional) {
    VoicePhraseTable table;
    Fill(table, {u"a", u"x"});
    FakeModel model;
    model.unknown = {"x"};
    EXPECT_EQ(BuildGrammar(table, &model, FakeLookup, nullptr), "[\"a\",\"[unk]\"]");
}

TEST(Grammar, LookupStopsAtTheFirstUnknownWord) {
    VoicePhraseTable table;
    Fill(table, {u"jeden dwa trzy", u"cztery x pięć sześć"});
    FakeModel model;
    model.unknown = {"x"};
    std::u16string skipped;
    BuildGrammar(table, &model, FakeLookup, &skipped);
    const std::vector<std::string> expected = {"jeden", "dwa", "trzy", "cztery", "x"};
    EXPECT_EQ(model.asked, expected);
}

TEST(Grammar, WordsAreSplitAtAsciiSpacesIgnoringEmptyPieces) {
    VoicePhraseTable table;
    Fill(table, {u"  alfa   beta ", u"gamma\tdelta", u"   "});
    FakeModel model;
    std::u16string skipped;
    EXPECT_EQ(BuildGrammar(table, &model, FakeLookup, &skipped),
              "[\"  alfa   beta \",\"gamma\tdelta\",\"   \",\"[unk]\"]");
    const std::vector<std::string> expected = {"alfa", "beta", "gamma\tdelta"};
    EXPECT_EQ(model.asked, expected);
    EXPECT_EQ(skipped, u"");
}

TEST(Grammar, NoModelMeansNoFiltering) {
    VoicePhraseTable table;
    Fill(table, {u"a", u"b"});
    std::u16string skipped;
    EXPECT_EQ(BuildGrammar(table, nullptr, RejectEverything, &skipped), "[\"a\",\"b\",\"[unk]\"]");
    EXPECT_EQ(skipped, u"");
}

TEST(Grammar, NoLookupMeansNoFiltering) {
    VoicePhraseTable table;
    Fill(table, {u"a", u"x"});
    FakeModel model;
    model.unknown = {"a", "x"};
    std::u16string skipped;
    EXPECT_EQ(BuildGrammar(table, &model, nullptr, &skipped), "[\"a\",\"x\",\"[unk]\"]");
    EXPECT_EQ(skipped, u"");
    EXPECT_TRUE(model.asked.empty());
}

TEST(Grammar, DroppedPhrasesStayInTheTable) {
    VoicePhraseTable table;
    RebuildVoicePhrases(table, {WheelWithPhrases({u"zzz"})}, {});
    FakeModel model;
    model.unknown = {"zzz"};
    std::u16string skipped;
    const std::string grammar = BuildGrammar(table, &model, FakeLookup, &skipped);
    EXPECT_EQ(grammar.find("zzz"), std::string::npos);
    EXPECT_EQ(skipped, u"„zzz”");
    EXPECT_EQ(VoicePhraseCount(table), 312u);
}

}  // namespace
}  // namespace zirvel
