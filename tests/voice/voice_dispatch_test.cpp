#include "voice/voice_dispatch.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "voice/voice_phrases.h"
#include "voice_test_support.h"

namespace zirvel {
namespace {

using voice_test::GlobalFunctions;
using voice_test::RecordingTarget;
using voice_test::WheelWithPhrases;

class VoiceDispatch : public ::testing::Test {
protected:
    void Rebuild(const std::vector<Wheel>& wheels, const std::vector<WheelFunction>& globals) {
        RebuildVoicePhrases(table, wheels, globals);
    }

    void Say(std::string_view text) { DispatchRecognizedText(table, text, recorder.Target()); }

    void ExpectOnlyPosted(EngineMessageKind kind, std::int64_t first, std::int64_t second = 0) {
        ASSERT_EQ(recorder.posted.size(), 1u);
        EXPECT_EQ(recorder.posted[0].kind, kind);
        EXPECT_EQ(recorder.posted[0].first, first);
        EXPECT_EQ(recorder.posted[0].second, second);
    }

    void ExpectNothingPosted() { EXPECT_TRUE(recorder.posted.empty()); }

    VoicePhraseTable table;
    RecordingTarget recorder;
};

TEST_F(VoiceDispatch, BuiltInPhrasesPostTheirCommand) {
    Rebuild({}, {});
    const std::vector<std::pair<std::string, std::int64_t>> cases = {
        {"pokaż koło", 1},      {"schowaj koło", 2},   {"następne koło", 3},
        {"poprzednie koło", 4}, {"pokaż siatkę", 5},   {"schowaj siatkę", 6},
        {"kliknij", 7},         {"dwuklik", 8},        {"prawy klik", 9},
        {"pokaż elementy", 10}, {"ukryj elementy", 11}, {"schowaj elementy", 11},
        {"pokaż elementy strony", 12}, {"elementy strony", 12},
    };
    for (const auto& [text, command] : cases) {
        recorder.posted.clear();
        Say(text);
        ASSERT_EQ(recorder.posted.size(), 1u) << text;
        EXPECT_EQ(recorder.posted[0].kind, EngineMessageKind::VoiceCommand) << text;
        EXPECT_EQ(recorder.posted[0].first, command) << text;
        EXPECT_EQ(recorder.posted[0].second, 0) << text;
    }
}

TEST_F(VoiceDispatch, NumberPhrasesPostNumberCommands) {
    Rebuild({}, {});
    Say("dziesięć");
    Say("dwadzieścia");
    Say("dwadzieścia jeden");
    Say("kliknij dwa razy na pięć");
    Say("kliknij prawy na pięć");
    Say("dziewięćdziesiąt dziewięć");
    ASSERT_EQ(recorder.posted.size(), 6u);
    const std::int64_t expected[] = {110, 120, 121, 305, 505, 199};
    for (std::size_t i = 0; i < 6; ++i) {
        EXPECT_EQ(recorder.posted[i].kind, EngineMessageKind::VoiceCommand);
        EXPECT_EQ(recorder.posted[i].first, expected[i]);
    }
}

TEST_F(VoiceDispatch, NoNumberPhraseForZeroOrAHundred) {
    Rebuild({}, {});
    Say("zero");
    Say("sto");
    Say("kliknij dwa razy na zero");
    Say("kliknij prawy na sto");
    ExpectNothingPosted();
}

TEST_F(VoiceDispatch, WheelFunctionPostsWheelAndFunction) {
    Rebuild({WheelWithPhrases({u"alfa"}), WheelWithPhrases({u"", u"beta", u"gamma"})}, {});
    Say("gamma");
    ExpectOnlyPosted(EngineMessageKind::RunWheelFunction, 1, 2);
}

TEST_F(VoiceDispatch, GlobalFunctionPostsItsIndex) {
    Rebuild({}, GlobalFunctions({u"poczta", u"przeglądarka"}));
    Say("przeglądarka");
    ExpectOnlyPosted(EngineMessageKind::RunGlobalFunction, 1);
}

TEST_F(VoiceDispatch, BuiltInPhraseWinsOverAFunctionWithTheSamePhrase) {
    Rebuild({WheelWithPhrases({u"kliknij", u"Dwa"})}, GlobalFunctions({u"pokaż koło"}));
    Say("kliknij");
    Say("dwa");
    Say("pokaż koło");
    ASSERT_EQ(recorder.posted.size(), 3u);
    EXPECT_EQ(recorder.posted[0].kind, EngineMessageKind::VoiceCommand);
    EXPECT_EQ(recorder.posted[0].first, 7);
    EXPECT_EQ(recorder.posted[1].kind, EngineMessageKind::VoiceCommand);
    EXPECT_EQ(recorder.posted[1].first, 102);
    EXPECT_EQ(recorder.posted[2].kind, EngineMessageKind::VoiceCommand);
    EXPECT_EQ(recorder.posted[2].first, 1);
}

TEST_F(VoiceDispatch, EarlierFunctionWinsAmongDuplicates) {
    Rebuild({WheelWithPhrases({u"inne", u"skok", u"skok"}), WheelWithPhrases({u"skok"})}, {});
    Say("skok");
    ExpectOnlyPosted(EngineMessageKind::RunWheelFunction, 0, 1);
}

TEST_F(VoiceDispatch, LowerWheelIndexWinsAmongDuplicates) {
    Rebuild({WheelWithPhrases({u"inne"}), WheelWithPhrases({u"x", u"skok"}), WheelWithPhrases({u"skok"})},
            {});
    Say("skok");
    ExpectOnlyPosted(EngineMessageKind::RunWheelFunction, 1, 1);
}

TEST_F(VoiceDispatch, WheelPhrasesComeBeforeGlobalOnes) {
    Rebuild({WheelWithPhrases({u"poczta"})}, GlobalFunctions({u"poczta"}));
    Say("poczta");
    ExpectOnlyPosted(EngineMessageKind::RunWheelFunction, 0, 0);
}

TEST_F(VoiceDispatch, FunctionPhrasesMatchTheirLoweredForm) {
    Rebuild({WheelWithPhrases({u"Skok", u"ŁUK"})}, {});
    Say("Skok");
    ExpectNothingPosted();
    Say("skok");
    ExpectOnlyPosted(EngineMessageKind::RunWheelFunction, 0, 0);
    recorder.posted.clear();
    Say("Łuk");
    ExpectNothingPosted();
    Say("łuk");
    ExpectOnlyPosted(EngineMessageKind::RunWheelFunction, 0, 1);
}

TEST_F(VoiceDispatch, MatchIsExactByteForByte) {
    Rebuild({WheelWithPhrases({u"skok"})}, {});
    Say(" kliknij");
    Say("kliknij ");
    Say("KLIKNIJ");
    Say("klik");
    Say("kliknijj");
    Say("skok\n");
    Say(std::string_view("skok\0", 5));
    Say("pokaz kolo");
    ExpectNothingPosted();
}

TEST_F(VoiceDispatch, EmptyTextAndUnkMatchNothing) {
    VoicePhraseTable& t = table;
    {
        std::lock_guard<std::mutex> lock(t.phraseLock);
        AddVoicePhrase(t, u"", 1);
    }
    Say("");
    Say("[unk]");
    ExpectNothingPosted();
    Rebuild({}, {});
    Say("");
    Say("[unk]");
    ExpectNothingPosted();
}

TEST_F(VoiceDispatch, PhraseWithAQuoteStillMatches) {
    Rebuild({WheelWithPhrases({u"powiedz \"tak\"", u"a\\b"})}, {});
    Say("powiedz \"tak\"");
    Say("a\\b");
    ASSERT_EQ(recorder.posted.size(), 2u);
    EXPECT_EQ(recorder.posted[0].first, 0);
    EXPECT_EQ(recorder.posted[0].second, 0);
    EXPECT_EQ(recorder.posted[1].first, 0);
    EXPECT_EQ(recorder.posted[1].second, 1);
}

TEST_F(VoiceDispatch, HiddenWheelWithoutVoiceGlobalIgnoresWheelPhrases) {
    Rebuild({WheelWithPhrases({u"skok"})}, GlobalFunctions({u"poczta"}));
    recorder.voiceGlobal = false;
    recorder.wheelVisible = false;
    Say("skok");
    ExpectNothingPosted();
    Say("poczta");
    ExpectOnlyPosted(EngineMessageKind::RunGlobalFunction, 0);
    recorder.posted.clear();
    Say("kliknij");
    Say("trzy");
    ASSERT_EQ(recorder.posted.size(), 2u);
    EXPECT_EQ(recorder.posted[0].first, 7);
    EXPECT_EQ(recorder.posted[1].first, 103);
}

TEST_F(VoiceDispatch, VisibleWheelWithoutVoiceGlobalRunsWheelPhrases) {
    Rebuild({WheelWithPhrases({u"skok"})}, {});
    recorder.voiceGlobal = false;
    recorder.wheelVisible = true;
    Say("skok");
    ExpectOnlyPosted(EngineMessageKind::RunWheelFunction, 0, 0);
}

TEST_F(VoiceDispatch, VoiceGlobalRunsWheelPhrasesWithTheWheelHidden) {
    Rebuild({WheelWithPhrases({u"skok"})}, {});
    recorder.voiceGlobal = true;
    recorder.wheelVisible = false;
    Say("skok");
    ExpectOnlyPosted(EngineMessageKind::RunWheelFunction, 0, 0);
}

TEST_F(VoiceDispatch, MissingSettingsCountAsFalse) {
    Rebuild({WheelWithPhrases({u"skok"})}, {});
    std::vector<EngineMessageKind> posted;
    VoiceDispatchTarget target;
    target.post = [&posted](EngineMessage message) { posted.push_back(message.kind); };
    DispatchRecognizedText(table, "skok", target);
    EXPECT_TRUE(posted.empty());
    DispatchRecognizedText(table, "dwuklik", target);
    ASSERT_EQ(posted.size(), 1u);
    EXPECT_EQ(posted[0], EngineMessageKind::VoiceCommand);
}

TEST_F(VoiceDispatch, EmptyTableMatchesNothing) {
    Say("kliknij");
    ExpectNothingPosted();
}

}  // namespace
}  // namespace zirvel
