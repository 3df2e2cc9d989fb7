#include "voice/voice_thread.h"

#include <algorithm>
#include <chrono>
#include <string>
#include <thread>

#include "config/utf.h"
#include "system/fault_guard.h"
#include "voice/grammar.h"
#include "voice/speech_api.h"

namespace zirvel {
namespace {

class VoiceSession {
public:
    explicit VoiceSession(VoiceThreadHost& host) : host_(host) {}
    void Run();

private:
    void Publish(std::int32_t code);
    bool Stopping() const { return host_.stop.load(); }
    std::string Grammar();
    // Null when creation fails or faults.
    VoskRecognizer* CreateRecognizer(const std::string& grammar);
    // False when the recogniser had to be created anew and could not be.
    bool ChangeGrammar();
    // Opens the microphone, waiting for one while there is none; false
    // when a stop came first.
    bool OpenMicrophone();
    void Listen();
    void Consume(const char* data, std::size_t bytes);

    VoiceThreadHost& host_;
    SpeechApi api_;
    VoskModel* model_ = nullptr;
    VoskRecognizer* recognizer_ = nullptr;
    std::uint32_t generation_ = 0;  // of the phrases the grammar was built from
};

void VoiceSession::Publish(std::int32_t code) {
    if (host_.status.exchange(code) != code && host_.statusChanged) host_.statusChanged();
}

std::string VoiceSession::Grammar() {
    std::u16string skipped;
    // The lookup's model argument is the recogniser's model handle.
    const auto lookup = reinterpret_cast<VocabularyLookup>(api_.modelFindWord);
    std::string grammar = BuildGrammar(host_.phrases, model_, lookup, &skipped);
    if (!skipped.empty() && host_.skippedPhrases) host_.skippedPhrases(std::move(skipped));
    return grammar;
}

VoskRecognizer* VoiceSession::CreateRecognizer(const std::string& grammar) {
    VoskRecognizer* created = nullptr;  // stays null when the call faults
    RunGuarded([&] { created = api_.recognizerNewGrm(model_, kSpeechSampleRate, grammar.c_str()); });
    return created;
}

bool VoiceSession::ChangeGrammar() {
    const std::string grammar = Grammar();
    if (api_.recognizerSetGrm &&
        RunGuarded([&] { api_.recognizerSetGrm(recognizer_, grammar.c_str()); })) {
        return true;
    }
    // No set-grammar entry, or it faulted: a new recogniser for the grammar.
    api_.recognizerFree(recognizer_);
    recognizer_ = CreateRecognizer(grammar);
    return recognizer_ != nullptr;
}

bool VoiceSession::OpenMicrophone() {
    while (!Stopping()) {
        if (host_.microphone.Open()) return true;
        Publish(kVoiceNoMicrophone);
        // 3 s in steps of 100 ms, by the clock: a busy machine's late
        // wake-ups do not add up.
        const auto retry = std::chrono::steady_clock::now() + std::chrono::milliseconds(kMicrophoneRetryPause);
        while (!Stopping() && std::chrono::steady_clock::now() < retry) {
            const auto left = retry - std::chrono::steady_clock::now();
            std::this_thread::sleep_for(std::min<std::chrono::steady_clock::duration>(
                left, std::chrono::milliseconds(kMicrophoneRetryStep)));
        }
    }
    return false;
}

void VoiceSession::Consume(const char* data, std::size_t bytes) {
    if (bytes == 0) return;
    int accepted = -1;  // a fault counts as a block without a final result
    RunGuarded([&] { accepted = api_.recognizerAcceptWaveform(recognizer_, data, static_cast<int>(bytes)); });
    if (accepted != 1) return;
    const std::string text = ExtractResultText(api_.recognizerResult(recognizer_));
    DispatchRecognizedText(host_.phrases, text, host_.dispatch);
}

void VoiceSession::Listen() {
    const auto consume = [this](const char* data, std::size_t bytes) { Consume(data, bytes); };
    while (!Stopping()) {
        host_.microphone.Wait(kCaptureWait);
        if (Stopping()) break;
        const std::uint32_t now = host_.phrases.phraseGeneration.load();
        if (now != generation_) {
            generation_ = now;
            if (!ChangeGrammar()) {
                Publish(kVoiceInitialisationError);
                break;
            }
        }
        host_.microphone.TakeBlocks(consume);
        if (host_.microphone.Lost()) {
            // The device went away: wait for one as at the start.
            host_.microphone.Close();
            if (!OpenMicrophone()) break;
            Publish(kVoiceListening);
        }
    }
    host_.microphone.Close();
}

void VoiceSession::Run() {
    Publish(kVoiceLoading);
    const LibraryHandle library = LoadSpeechLibrary(host_.voiceDllPath, host_.programDirectory);
    if (!library) {
        Publish(kVoiceLibraryMissing);
        return;
    }
    api_ = ResolveSpeechApi(library);
    if (!api_.HasRequired()) {
        Publish(kVoiceInitialisationError);
        return;
    }
    if (api_.setLogLevel) api_.setLogLevel(-1);
    const std::string modelPath = Utf16ToUtf8(SpeechModelPath(host_.voiceModel, host_.programDirectory));
    model_ = api_.modelNew(modelPath.c_str());
    if (!model_) {
        Publish(kVoiceModelMissing);
        return;
    }
    generation_ = host_.phrases.phraseGeneration.load();
    recognizer_ = CreateRecognizer(Grammar());
    if (recognizer_ && OpenMicrophone()) {
        Publish(kVoiceListening);
        Listen();
    } else if (!recognizer_) {
        Publish(kVoiceInitialisationError);
    }
    if (recognizer_) api_.recognizerFree(recognizer_);
    api_.modelFree(model_);
}

}  // namespace

void VoiceThreadMain(VoiceThreadHost& host) { VoiceSession(host).Run(); }

}  // namespace zirvel
