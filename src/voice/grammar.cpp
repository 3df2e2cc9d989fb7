#include "voice/grammar.h"

#include <string_view>

#include "config/utf.h"

namespace zirvel {
namespace {

// Whether the model knows every word of the phrase. The words are the
// pieces between ASCII spaces; the first unknown word ends the checks.
bool ModelKnowsAllWords(std::string_view phrase, void* model, VocabularyLookup lookup) {
    std::string word;
    std::size_t start = 0;
    while (start <= phrase.size()) {
        std::size_t end = phrase.find(' ', start);
        if (end == std::string_view::npos) end = phrase.size();
        if (end > start) {
            word.assign(phrase.substr(start, end - start));
            if (lookup(model, word.c_str()) < 0) return false;
        }
        start = end + 1;
    }
    return true;
}

void AppendQuoted(std::string& grammar, std::string_view phrase) {
    grammar += '"';
    for (char c : phrase) {
        if (c == '"' || c == '\\') grammar += '\\';
        grammar += c;
    }
    grammar += "\",";
}

void AppendSkipped(std::u16string& skipped, std::string_view phrase) {
    if (!skipped.empty()) skipped += u", ";
    skipped += u'\u201E';
    skipped += Utf8ToUtf16(phrase);
    skipped += u'\u201D';
}

}  // namespace

std::string BuildGrammar(const VoicePhraseTable& table, void* model, VocabularyLookup lookup,
                         std::u16string* skipped) {
    const bool filter = model != nullptr && lookup != nullptr;
    std::string grammar = "[";
    {
        std::lock_guard<std::mutex> lock(table.phraseLock);
        for (const VoicePhrase& phrase : table.voicePhrases) {
            if (filter && !ModelKnowsAllWords(phrase.text, model, lookup)) {
                if (skipped != nullptr) AppendSkipped(*skipped, phrase.text);
                continue;
            }
            AppendQuoted(grammar, phrase.text);
        }
    }
    grammar += "\"[unk]\"]";
    return grammar;
}

}  // namespace zirvel
