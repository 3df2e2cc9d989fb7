#include "voice/speech_api.h"

#include <cstring>

namespace zirvel {
namespace {

template <class Function>
void Resolve(LibraryHandle library, const char* name, Function& entry) {
    entry = reinterpret_cast<Function>(ResolveSymbol(library, name));
}

}  // namespace

bool SpeechApi::HasRequired() const {
    return modelNew && modelFree && recognizerNewGrm && recognizerAcceptWaveform && recognizerResult &&
           recognizerFree;
}

SpeechApi ResolveSpeechApi(LibraryHandle library) {
    SpeechApi api;
    Resolve(library, "vosk_set_log_level", api.setLogLevel);
    Resolve(library, "vosk_model_new", api.modelNew);
    Resolve(library, "vosk_model_free", api.modelFree);
    Resolve(library, "vosk_recognizer_new_grm", api.recognizerNewGrm);
    Resolve(library, "vosk_recognizer_set_grm", api.recognizerSetGrm);
    Resolve(library, "vosk_recognizer_accept_waveform", api.recognizerAcceptWaveform);
    Resolve(library, "vosk_recognizer_result", api.recognizerResult);
    Resolve(library, "vosk_recognizer_free", api.recognizerFree);
    Resolve(library, "vosk_model_find_word", api.modelFindWord);
    return api;
}

LibraryHandle LoadSpeechLibrary(const std::u16string& voiceDllPath, const std::u16string& programDirectory) {
    if (!voiceDllPath.empty()) {
        if (LibraryHandle library = LoadLibraryFromPath(voiceDllPath)) return library;
    }
    if (LibraryHandle library = LoadLibraryFromPath(programDirectory + kPathSeparator + kSpeechLibraryFileName)) {
        return library;
    }
    return LoadLibraryByName(kSpeechLibraryFileName);
}

std::u16string SpeechModelPath(const std::u16string& voiceModel, const std::u16string& programDirectory) {
    if (IsFullPath(voiceModel)) return voiceModel;
    return programDirectory + kPathSeparator + voiceModel;
}

std::string ExtractResultText(const char* result) {
    if (!result) return {};
    const char* key = std::strstr(result, "\"text\"");
    if (!key) return {};
    const char* colon = std::strchr(key + 6, ':');
    if (!colon) return {};
    const char* open = std::strchr(colon, '"');
    if (!open) return {};
    const char* close = std::strchr(open + 1, '"');
    if (!close) return {};
    return std::string(open + 1, close);
}

}  // namespace zirvel
