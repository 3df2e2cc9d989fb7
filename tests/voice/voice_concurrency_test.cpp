// The GUI thread rebuilds the table while the voice thread builds grammars
// and dispatches: every result must come from one whole table.
#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "voice/grammar.h"
#include "voice/voice_dispatch.h"
#include "voice/voice_phrases.h"
#include "voice_test_support.h"

namespace zirvel {
namespace {

using voice_test::GlobalFunctions;
using voice_test::WheelWithPhrases;

TEST(VoiceConcurrency, DispatchAndGrammarDuringRebuilds) {
    // Two configurations: "skok" is wheel 0 function 0 in the first and the
    // global function 1 in the second; "lot" exists only in the first.
    const std::vector<Wheel> firstWheels = {WheelWithPhrases({u"skok", u"lot"})};
    const std::vector<WheelFunction> firstGlobals = {};
    const std::vector<Wheel> secondWheels = {WheelWithPhrases({u"inne"}), WheelWithPhrases({})};
    const std::vector<WheelFunction> secondGlobals = GlobalFunctions({u"poczta", u"skok"});
    const std::string firstGrammarTail = ",\"skok\",\"lot\",\"[unk]\"]";
    const std::string secondGrammarTail = ",\"inne\",\"poczta\",\"skok\",\"[unk]\"]";

    VoicePhraseTable table;
    RebuildVoicePhrases(table, firstWheels, firstGlobals);

    constexpr int kRebuilds = 400;
    constexpr int kDispatchRounds = 2000;
    std::atomic<bool> failed{false};

    std::thread rebuilder([&] {
        for (int i = 0; i < kRebuilds; ++i) {
            if (i % 2 == 0) {
                RebuildVoicePhrases(table, secondWheels, secondGlobals);
            } else {
                RebuildVoicePhrases(table, firstWheels, firstGlobals);
            }
        }
    });

    std::vector<voice_test::Posted> posted;
    VoiceDispatchTarget target;
    target.post = [&posted](EngineMessage message) {
        posted.push_back(voice_test::Posted{message.kind, message.first, message.second});
    };
    target.voiceGlobal = [] { return true; };
    target.wheelVisible = [] { return false; };

    for (int round = 0; round < kDispatchRounds; ++round) {
        posted.clear();
        DispatchRecognizedText(table, "kliknij", target);
        DispatchRecognizedText(table, "skok", target);
        DispatchRecognizedText(table, "lot", target);
        DispatchRecognizedText(table, "[unk]", target);
        if (posted.size() < 2 || posted.size() > 3) {
            failed = true;
            break;
        }
        if (posted[0].kind != EngineMessageKind::VoiceCommand || posted[0].first != 7) failed = true;
        const voice_test::Posted& skok = posted[1];
        const bool skokFirst = skok.kind == EngineMessageKind::RunWheelFunction && skok.first == 0 &&
                               skok.second == 0;
        const bool skokSecond = skok.kind == EngineMessageKind::RunGlobalFunction && skok.first == 1;
        if (!skokFirst && !skokSecond) failed = true;
        if (posted.size() == 3) {
            const voice_test::Posted& lot = posted[2];
            if (lot.kind != EngineMessageKind::RunWheelFunction || lot.first != 0 || lot.second != 1) {
                failed = true;
            }
        }

        if (round % 20 == 0) {
            const std::string grammar = BuildGrammar(table, nullptr, nullptr, nullptr);
            const bool endsFirst = grammar.size() > firstGrammarTail.size() &&
                                   grammar.compare(grammar.size() - firstGrammarTail.size(),
                                                   firstGrammarTail.size(), firstGrammarTail) == 0;
            const bool endsSecond = grammar.size() > secondGrammarTail.size() &&
                                    grammar.compare(grammar.size() - secondGrammarTail.size(),
                                                    secondGrammarTail.size(), secondGrammarTail) == 0;
            if (!endsFirst && !endsSecond) failed = true;
            const std::size_t count = VoicePhraseCount(table);
            if (count != 313u && count != 314u) failed = true;
        }
        if (failed) break;
    }
    rebuilder.join();

    EXPECT_FALSE(failed.load());
    EXPECT_EQ(table.phraseGeneration.load(), 1u + kRebuilds);
    // The last rebuild (odd index) restored the first configuration.
    posted.clear();
    DispatchRecognizedText(table, "lot", target);
    ASSERT_EQ(posted.size(), 1u);
    EXPECT_EQ(posted[0].kind, EngineMessageKind::RunWheelFunction);
    EXPECT_EQ(posted[0].second, 1);
}

}  // namespace
}  // namespace zirvel
