#include "voice/voice_phrases.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "voice_test_support.h"

namespace zirvel {
namespace {

using voice_test::FunctionWithPhrase;
using voice_test::GlobalFunctions;
using voice_test::WheelWithPhrases;

std::vector<VoicePhrase> Snapshot(const VoicePhraseTable& table) {
    std::lock_guard<std::mutex> lock(table.phraseLock);
    return table.voicePhrases;
}

void ExpectEntry(const VoicePhrase& entry, const std::string& text, std::int32_t command,
                 std::int32_t wheel, std::int32_t function) {
    EXPECT_EQ(entry.text, text);
    EXPECT_EQ(entry.command, command) << text;
    EXPECT_EQ(entry.wheelIndex, wheel) << text;
    EXPECT_EQ(entry.functionIndex, function) << text;
}

TEST(VoicePhrases, NoWheelsAndNoGlobalsGiveTheCommandEntriesOnly) {
    VoicePhraseTable table;
    RebuildVoicePhrases(table, {}, {});
    EXPECT_EQ(VoicePhraseCount(table), 311u);
    EXPECT_EQ(kVoiceCommandPhraseCount, 311u);
}

TEST(VoicePhrases, BuiltInCommandsComeFirstInTheirOrder) {
    VoicePhraseTable table;
    RebuildVoicePhrases(table, {}, {});
    const std::vector<VoicePhrase> phrases = Snapshot(table);
    ASSERT_GE(phrases.size(), 14u);
    ExpectEntry(phrases[0], "pokaż koło", 1, -1, -1);
    ExpectEntry(phrases[1], "schowaj koło", 2, -1, -1);
    ExpectEntry(phrases[2], "następne koło", 3, -1, -1);
    ExpectEntry(phrases[3], "poprzednie koło", 4, -1, -1);
    ExpectEntry(phrases[4], "pokaż siatkę", 5, -1, -1);
    ExpectEntry(phrases[5], "schowaj siatkę", 6, -1, -1);
    ExpectEntry(phrases[6], "pokaż elementy", 10, -1, -1);
    ExpectEntry(phrases[7], "pokaż elementy strony", 12, -1, -1);
    ExpectEntry(phrases[8], "elementy strony", 12, -1, -1);
    ExpectEntry(phrases[9], "ukryj elementy", 11, -1, -1);
    ExpectEntry(phrases[10], "schowaj elementy", 11, -1, -1);
    ExpectEntry(phrases[11], "kliknij", 7, -1, -1);
    ExpectEntry(phrases[12], "dwuklik", 8, -1, -1);
    ExpectEntry(phrases[13], "prawy klik", 9, -1, -1);
}

TEST(VoicePhrases, NumberCommandsAreInterleavedPerNumber) {
    VoicePhraseTable table;
    RebuildVoicePhrases(table, {}, {});
    const std::vector<VoicePhrase> phrases = Snapshot(table);
    ASSERT_EQ(phrases.size(), 311u);
    ExpectEntry(phrases[14], "jeden", 101, -1, -1);
    ExpectEntry(phrases[15], "kliknij dwa razy na jeden", 301, -1, -1);
    ExpectEntry(phrases[16], "kliknij prawy na jeden", 501, -1, -1);
    ExpectEntry(phrases[17], "dwa", 102, -1, -1);
    ExpectEntry(phrases[18], "kliknij dwa razy na dwa", 302, -1, -1);
    ExpectEntry(phrases[19], "kliknij prawy na dwa", 502, -1, -1);
    ExpectEntry(phrases[308], "dziewięćdziesiąt dziewięć", 199, -1, -1);
    ExpectEntry(phrases[309], "kliknij dwa razy na dziewięćdziesiąt dziewięć", 399, -1, -1);
    ExpectEntry(phrases[310], "kliknij prawy na dziewięćdziesiąt dziewięć", 599, -1, -1);
    for (int n = 1; n <= 99; ++n) {
        const std::size_t base = 14 + 3 * static_cast<std::size_t>(n - 1);
        EXPECT_EQ(phrases[base].command, 100 + n);
        EXPECT_EQ(phrases[base + 1].command, 300 + n);
        EXPECT_EQ(phrases[base + 2].command, 500 + n);
    }
}

TEST(VoicePhrases, NumberPhrasesCarryTheirValues) {
    VoicePhraseTable table;
    RebuildVoicePhrases(table, {}, {});
    const std::vector<VoicePhrase> phrases = Snapshot(table);
    auto commandOf = [&phrases](const std::string& text) {
        for (const VoicePhrase& phrase : phrases) {
            if (phrase.text == text) return phrase.command;
        }
        return -1;
    };
    EXPECT_EQ(commandOf("dziesięć"), 110);
    EXPECT_EQ(commandOf("dwadzieścia"), 120);
    EXPECT_EQ(commandOf("dwadzieścia jeden"), 121);
    EXPECT_EQ(commandOf("kliknij dwa razy na pięć"), 305);
    EXPECT_EQ(commandOf("kliknij prawy na pięć"), 505);
    for (const VoicePhrase& phrase : phrases) {
        EXPECT_NE(phrase.command, 100) << phrase.text;
        EXPECT_NE(phrase.command, 300) << phrase.text;
        EXPECT_NE(phrase.command, 500) << phrase.text;
        EXPECT_NE(phrase.text, "zero");
        EXPECT_NE(phrase.text, "sto");
    }
}

TEST(VoicePhrases, FunctionPhrasesFollowInWheelThenGlobalOrder) {
    std::vector<Wheel> wheels = {
        WheelWithPhrases({u"alfa", u"", u"gamma"}),
        WheelWithPhrases({}),
        WheelWithPhrases({u"", u"delta"}),
    };
    VoicePhraseTable table;
    RebuildVoicePhrases(table, wheels, GlobalFunctions({u"omega", u"psi"}));
    const std::vector<VoicePhrase> phrases = Snapshot(table);
    ASSERT_EQ(phrases.size(), 311u + 5u);
    ExpectEntry(phrases[311], "alfa", 0, 0, 0);
    ExpectEntry(phrases[312], "gamma", 0, 0, 2);
    ExpectEntry(phrases[313], "delta", 0, 2, 1);
    ExpectEntry(phrases[314], "omega", 0, kGlobalVoiceWheel, 0);
    ExpectEntry(phrases[315], "psi", 0, kGlobalVoiceWheel, 1);
}

TEST(VoicePhrases, DuplicatesAreKept) {
    std::vector<Wheel> wheels = {WheelWithPhrases({u"kliknij", u"skok"}), WheelWithPhrases({u"skok"})};
    VoicePhraseTable table;
    RebuildVoicePhrases(table, wheels, GlobalFunctions({u"skok"}));
    const std::vector<VoicePhrase> phrases = Snapshot(table);
    ASSERT_EQ(phrases.size(), 315u);
    ExpectEntry(phrases[311], "kliknij", 0, 0, 0);
    ExpectEntry(phrases[312], "skok", 0, 0, 1);
    ExpectEntry(phrases[313], "skok", 0, 1, 0);
    ExpectEntry(phrases[314], "skok", 0, kGlobalVoiceWheel, 0);
}

TEST(VoicePhrases, FunctionPhrasesAreLoweredPolishCapitalsIncluded) {
    std::vector<Wheel> wheels = {WheelWithPhrases({u"Skok", u"ŁUK", u"ŻÓŁW W Górę"})};
    VoicePhraseTable table;
    RebuildVoicePhrases(table, wheels, GlobalFunctions({u"OTWÓRZ Pocztę"}));
    const std::vector<VoicePhrase> phrases = Snapshot(table);
    ASSERT_EQ(phrases.size(), 315u);
    EXPECT_EQ(phrases[311].text, "skok");
    EXPECT_EQ(phrases[312].text, "łuk");
    EXPECT_EQ(phrases[313].text, "żółw w górę");
    EXPECT_EQ(phrases[314].text, "otwórz pocztę");
}

TEST(VoicePhrases, EveryPolishCapitalIsLowered) {
    EXPECT_EQ(LowerVoicePhrase(u"ĄĆĘŁŃÓŚŹŻ Zażółć GĘŚLĄ Jaźń"), "ąćęłńóśźż zażółć gęślą jaźń");
}

TEST(VoicePhrases, AddLowersAndConvertsToUtf8) {
    VoicePhraseTable table;
    {
        std::lock_guard<std::mutex> lock(table.phraseLock);
        AddVoicePhrase(table, u"Pokaż KOŁO", 1);
        AddVoicePhrase(table, u"", 42);
        AddVoicePhrase(table, u"A\"B\\C", 7);
    }
    const std::vector<VoicePhrase> phrases = Snapshot(table);
    ASSERT_EQ(phrases.size(), 3u);
    ExpectEntry(phrases[0], "pokaż koło", 1, -1, -1);
    ExpectEntry(phrases[1], "", 42, -1, -1);
    ExpectEntry(phrases[2], "a\"b\\c", 7, -1, -1);
    EXPECT_EQ(phrases[0].text, "pok\x61\xC5\xBC ko\xC5\x82o");
}

TEST(VoicePhrases, RebuildReplacesTheWholeTable) {
    VoicePhraseTable table;
    RebuildVoicePhrases(table, {WheelWithPhrases({u"alfa", u"beta"})}, GlobalFunctions({u"gamma"}));
    EXPECT_EQ(VoicePhraseCount(table), 314u);
    RebuildVoicePhrases(table, {WheelWithPhrases({u"delta"})}, {});
    const std::vector<VoicePhrase> phrases = Snapshot(table);
    ASSERT_EQ(phrases.size(), 312u);
    ExpectEntry(phrases[0], "pokaż koło", 1, -1, -1);
    ExpectEntry(phrases[311], "delta", 0, 0, 0);
}

TEST(VoicePhrases, EachRebuildBumpsTheGenerationOnce) {
    VoicePhraseTable table;
    EXPECT_EQ(table.phraseGeneration.load(), 0u);
    RebuildVoicePhrases(table, {}, {});
    EXPECT_EQ(table.phraseGeneration.load(), 1u);
    RebuildVoicePhrases(table, {WheelWithPhrases({u"alfa"})}, {});
    EXPECT_EQ(table.phraseGeneration.load(), 2u);
    for (int i = 0; i < 5; ++i) RebuildVoicePhrases(table, {}, GlobalFunctions({u"beta"}));
    EXPECT_EQ(table.phraseGeneration.load(), 7u);
}

TEST(VoicePhrases, AddingAPhraseLeavesTheGenerationAlone) {
    VoicePhraseTable table;
    std::lock_guard<std::mutex> lock(table.phraseLock);
    AddVoicePhrase(table, u"alfa", 3);
    EXPECT_EQ(table.phraseGeneration.load(), 0u);
}

}  // namespace
}  // namespace zirvel
