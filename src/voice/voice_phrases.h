// The table of phrases the recogniser may answer with: the built-in
// commands, the number commands and the voice phrases of the functions.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "config/wheel.h"
#include "voice/number_words.h"

namespace zirvel {

// wheelIndex of a phrase that runs one of the global voice functions.
inline constexpr std::int32_t kGlobalVoiceWheel = -2;
// wheelIndex and functionIndex of a built-in or number command.
inline constexpr std::int32_t kNoVoiceIndex = -1;

// Command codes. 0 runs a function; the number commands are the base plus
// the number (1..99).
inline constexpr std::int32_t kRunFunctionCommand = 0;
inline constexpr std::int32_t kShowWheelCommand = 1;
inline constexpr std::int32_t kHideWheelCommand = 2;
inline constexpr std::int32_t kNextWheelCommand = 3;
inline constexpr std::int32_t kPreviousWheelCommand = 4;
inline constexpr std::int32_t kShowGridCommand = 5;
inline constexpr std::int32_t kHideGridCommand = 6;
inline constexpr std::int32_t kClickCommand = 7;
inline constexpr std::int32_t kDoubleClickCommand = 8;
inline constexpr std::int32_t kRightClickCommand = 9;
inline constexpr std::int32_t kScanElementsCommand = 10;
inline constexpr std::int32_t kHideElementsCommand = 11;
inline constexpr std::int32_t kScanPageElementsCommand = 12;
inline constexpr std::int32_t kNumberCommandBase = 100;
inline constexpr std::int32_t kDoubleClickNumberCommandBase = 300;
inline constexpr std::int32_t kRightClickNumberCommandBase = 500;

inline constexpr int kFirstVoiceNumber = 1;
inline constexpr int kLastVoiceNumber = 99;

// The 14 built-in phrases and the three phrases of each number 1..99.
inline constexpr std::size_t kVoiceCommandPhraseCount = 14 + 3 * 99;

struct VoicePhrase {
    std::string text;            // UTF-8, lowered
    std::int32_t command;        // 0: run a function
    std::int32_t wheelIndex;     // -1 for commands, kGlobalVoiceWheel for globals
    std::int32_t functionIndex;  // -1 for commands
};

// Lives in the engine's state. The GUI thread rebuilds it; the voice thread
// reads it for the grammar and for matching.
struct VoicePhraseTable {
    mutable std::mutex phraseLock;
    std::vector<VoicePhrase> voicePhrases;        // guarded by phraseLock; order matters
    std::atomic<std::uint32_t> phraseGeneration{0};  // bumped after every rebuild
};

// A phrase as the table stores it: every letter lowered (LowerPhraseLetter,
// Polish capitals included), then UTF-8.
std::string LowerVoicePhrase(std::u16string_view phrase);

// Appends one command entry (wheel and function -1) with the lowered phrase.
// The caller must hold table.phraseLock (RebuildVoicePhrases does), or
// otherwise own the table exclusively.
void AddVoicePhrase(VoicePhraseTable& table, std::u16string_view phrase, std::int32_t command);

// Replaces the whole table: the built-in commands, the number commands
// interleaved per number, then every non-empty voice phrase of the wheels'
// functions in order, then the global voice functions. Takes phraseLock for
// the rebuild and increments phraseGeneration once after releasing it.
void RebuildVoicePhrases(VoicePhraseTable& table, const std::vector<Wheel>& wheels,
                         const std::vector<WheelFunction>& globalVoiceFunctions);

// The number of entries, read inside phraseLock.
std::size_t VoicePhraseCount(const VoicePhraseTable& table);

}  // namespace zirvel
