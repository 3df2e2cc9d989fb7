#include "engine/status_texts.h"

namespace zirvel {
namespace {

constexpr const char16_t* kInitialisationError = u"błąd inicjalizacji";

// A missing library is named by its file on the platform the program runs on.
#ifdef _WIN32
constexpr const char16_t* kNoTrackerLibrary = u"brak tobii_stream_engine.dll (zainstaluj oprogramowanie Tobii)";
constexpr const char16_t* kNoSpeechLibrary = u"brak libvosk.dll";
#else
constexpr const char16_t* kNoTrackerLibrary = u"brak libtobii_stream_engine.so (zainstaluj oprogramowanie Tobii)";
constexpr const char16_t* kNoSpeechLibrary = u"brak libvosk.so";
#endif

constexpr const char16_t* kGazeTexts[] = {
    u"wyłączony (gazeEnabled = false)",
    u"szukanie urządzenia…",
    kNoTrackerLibrary,
    u"nie wykryto urządzenia",
    u"aktywny",
};

// Voice code 4 is the missing microphone; 5 is active.
constexpr const char16_t* kVoiceTexts[] = {
    u"wyłączony (voiceEnabled = false)",
    u"ładowanie modelu…",
    kNoSpeechLibrary,
    u"brak katalogu modelu języka",
    u"brak mikrofonu",
    u"aktywny",
};

template <std::size_t N>
const char16_t* TextFor(const char16_t* const (&texts)[N], std::int32_t code) {
    if (code < 0 || static_cast<std::size_t>(code) >= N) return kInitialisationError;
    return texts[code];
}

}  // namespace

const char16_t* GazeStatusText(std::int32_t code) { return TextFor(kGazeTexts, code); }

const char16_t* VoiceStatusText(std::int32_t code) { return TextFor(kVoiceTexts, code); }

}  // namespace zirvel
