// The speech recogniser's C interface, loaded at run time: its entry points
// by their published names and signatures, where the library is looked
// for, and the text of a final result.
#pragma once

#include <string>
#include <string_view>

#include "system/runtime_library.h"

namespace zirvel {

struct VoskModel;
struct VoskRecognizer;

#ifdef _WIN32
inline constexpr char16_t kSpeechLibraryFileName[] = u"libvosk.dll";
#else
inline constexpr char16_t kSpeechLibraryFileName[] = u"libvosk.so";
#endif

// The recogniser's audio: 16 kHz, 16-bit, mono.
inline constexpr float kSpeechSampleRate = 16000.0f;

struct SpeechApi {
    void (*setLogLevel)(int level) = nullptr;  // optional
    VoskModel* (*modelNew)(const char* utf8Path) = nullptr;
    void (*modelFree)(VoskModel* model) = nullptr;
    VoskRecognizer* (*recognizerNewGrm)(VoskModel* model, float sampleRate, const char* grammar) = nullptr;
    // Optional: many published builds lack it; the recogniser is then
    // created anew for a new grammar.
    void (*recognizerSetGrm)(VoskRecognizer* recognizer, const char* grammar) = nullptr;
    // 1 when a final result is ready.
    int (*recognizerAcceptWaveform)(VoskRecognizer* recognizer, const char* data, int length) = nullptr;
    // UTF-8 JSON owned by the recogniser.
    const char* (*recognizerResult)(VoskRecognizer* recognizer) = nullptr;
    void (*recognizerFree)(VoskRecognizer* recognizer) = nullptr;
    // Optional: negative when the model does not know the word.
    int (*modelFindWord)(VoskModel* model, const char* word) = nullptr;

    // Every entry the voice thread cannot do without was found.
    bool HasRequired() const;
};

// Resolves every entry point by name; missing ones stay null.
SpeechApi ResolveSpeechApi(LibraryHandle library);

// The first that loads: `voiceDllPath` when set, the library in the program
// directory, then the system's search. Null when none loads.
LibraryHandle LoadSpeechLibrary(const std::u16string& voiceDllPath, const std::u16string& programDirectory);

// The model folder: `voiceModel` itself when it is a full path, otherwise
// inside the program directory.
std::u16string SpeechModelPath(const std::u16string& voiceModel, const std::u16string& programDirectory);

// The value of the first "text" key of a result, up to the next double
// quote, without unescaping; empty when there is none or result is null.
std::string ExtractResultText(const char* result);

}  // namespace zirvel
