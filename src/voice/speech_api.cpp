#include "voice/speech_api.h"

#include <cstring>

namespace zirvel {

bool SpeechApi::HasRequired() const {
    return modelNew && modelFree && recognizerNewGrm && recognizerAcceptWaveform && recognizerResult &&
           recognizerFree;
}

SpeechApi ResolveSpeechApi(LibraryHandle library) {
    SpeechApi api;
    ResolveEntry(library, "vosk_set_log_level", api.setLogLevel);
    ResolveEntry(library, "vosk_model_new", api.modelNew);
    ResolveEntry(library, "vosk_model_free", api.modelFree);
    ResolveEntry(library, "vosk_recognizer_new_grm", api.recognizerNewGrm);
    ResolveEntry(library, "vosk_recognizer_set_grm", api.recognizerSetGrm);
    ResolveEntry(library, "vosk_recognizer_accept_waveform", api.recognizerAcceptWaveform);
    ResolveEntry(library, "vosk_recognizer_result", api.recognizerResult);
    ResolveEntry(library, "vosk_recognizer_free", api.recognizerFree);
    ResolveEntry(library, "vosk_model_find_word", api.modelFindWord);
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
