#include "voice/voice_phrases.h"

#include <array>

#include "config/utf.h"
#include "voice/phrase_letters.h"

namespace zirvel {
namespace {

struct BuiltInPhrase {
    std::u16string_view phrase;
    std::int32_t command;
};

constexpr std::array<BuiltInPhrase, 14> kBuiltInPhrases = {{
    {u"pokaż koło", kShowWheelCommand},
    {u"schowaj koło", kHideWheelCommand},
    {u"następne koło", kNextWheelCommand},
    {u"poprzednie koło", kPreviousWheelCommand},
    {u"pokaż siatkę", kShowGridCommand},
    {u"schowaj siatkę", kHideGridCommand},
    {u"pokaż elementy", kScanElementsCommand},
    {u"pokaż elementy strony", kScanPageElementsCommand},
    {u"elementy strony", kScanPageElementsCommand},
    {u"ukryj elementy", kHideElementsCommand},
    {u"schowaj elementy", kHideElementsCommand},
    {u"kliknij", kClickCommand},
    {u"dwuklik", kDoubleClickCommand},
    {u"prawy klik", kRightClickCommand},
}};

std::u16string Prefixed(std::u16string_view prefix, std::u16string_view word) {
    std::u16string phrase(prefix);
    phrase += word;
    return phrase;
}

void AddFunctionPhrase(VoicePhraseTable& table, std::u16string_view phrase, std::int32_t wheel,
                       std::int32_t function) {
    table.voicePhrases.push_back(
        VoicePhrase{LowerVoicePhrase(phrase), kRunFunctionCommand, wheel, function});
}

}  // namespace

std::string LowerVoicePhrase(std::u16string_view phrase) {
    std::u16string lowered(phrase);
    for (char16_t& c : lowered) c = LowerPhraseLetter(c);
    return Utf16ToUtf8(lowered);
}

void AddVoicePhrase(VoicePhraseTable& table, std::u16string_view phrase, std::int32_t command) {
    table.voicePhrases.push_back(
        VoicePhrase{LowerVoicePhrase(phrase), command, kNoVoiceIndex, kNoVoiceIndex});
}

void RebuildVoicePhrases(VoicePhraseTable& table, const std::vector<Wheel>& wheels,
                         const std::vector<WheelFunction>& globalVoiceFunctions) {
    {
        std::lock_guard<std::mutex> lock(table.phraseLock);
        table.voicePhrases.clear();
        for (const BuiltInPhrase& builtIn : kBuiltInPhrases) {
            AddVoicePhrase(table, builtIn.phrase, builtIn.command);
        }
        for (int n = kFirstVoiceNumber; n <= kLastVoiceNumber; ++n) {
            const std::u16string word = NumberWord(n);
            AddVoicePhrase(table, word, kNumberCommandBase + n);
            AddVoicePhrase(table, Prefixed(u"kliknij dwa razy na ", word),
                           kDoubleClickNumberCommandBase + n);
            AddVoicePhrase(table, Prefixed(u"kliknij prawy na ", word),
                           kRightClickNumberCommandBase + n);
        }
        for (std::size_t w = 0; w < wheels.size(); ++w) {
            const std::vector<WheelFunction>& functions = wheels[w].functions;
            for (std::size_t f = 0; f < functions.size(); ++f) {
                if (functions[f].voice.empty()) continue;
                AddFunctionPhrase(table, functions[f].voice, static_cast<std::int32_t>(w),
                                  static_cast<std::int32_t>(f));
            }
        }
        // The loader keeps only global functions with a phrase; an empty one
        // could never be spoken, so it is left out like an empty wheel phrase.
        for (std::size_t g = 0; g < globalVoiceFunctions.size(); ++g) {
            if (globalVoiceFunctions[g].voice.empty()) continue;
            AddFunctionPhrase(table, globalVoiceFunctions[g].voice, kGlobalVoiceWheel,
                              static_cast<std::int32_t>(g));
        }
    }
    table.phraseGeneration.fetch_add(1);
}

std::size_t VoicePhraseCount(const VoicePhraseTable& table) {
    std::lock_guard<std::mutex> lock(table.phraseLock);
    return table.voicePhrases.size();
}

}  // namespace zirvel
