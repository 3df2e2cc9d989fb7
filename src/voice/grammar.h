// The closed grammar handed to the recogniser: a JSON array of the table's
// phrases followed by "[unk]".
#pragma once

#include <string>

#include "voice/voice_phrases.h"

namespace zirvel {

// The recogniser's vocabulary lookup (vosk_model_find_word): a negative
// result means the model does not know the word.
using VocabularyLookup = int (*)(void* model, const char* word);

// The grammar as UTF-8, built inside phraseLock: every phrase in table
// order as a JSON string (only '"' and '\' escaped), then "[unk]", with no
// white space between the items. When both model and lookup are given,
// each phrase is split at ASCII spaces and a phrase with a word the lookup
// rejects is left out; if skipped is not null, each such phrase is appended
// to it as „phrase”, separated from what it already holds by ", ".
std::string BuildGrammar(const VoicePhraseTable& table, void* model, VocabularyLookup lookup,
                         std::u16string* skipped);

}  // namespace zirvel
