// The voice thread: loads the recogniser and the model, records the
// microphone, feeds the recogniser and dispatches every final result.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <string>

#include "voice/audio_capture.h"
#include "voice/voice_dispatch.h"
#include "voice/voice_phrases.h"

namespace zirvel {

// voiceStatus codes the thread sets (0, switched off, is the engine's).
inline constexpr std::int32_t kVoiceLoading = 1;
inline constexpr std::int32_t kVoiceLibraryMissing = 2;
inline constexpr std::int32_t kVoiceModelMissing = 3;
inline constexpr std::int32_t kVoiceNoMicrophone = 4;
inline constexpr std::int32_t kVoiceListening = 5;
inline constexpr std::int32_t kVoiceInitialisationError = 6;

// While there is no microphone it is tried again every 3 s, the stop flag
// looked at every 100 ms; while listening a block is waited for 250 ms.
inline constexpr std::uint32_t kMicrophoneRetryPause = 3000;
inline constexpr std::uint32_t kMicrophoneRetryStep = 100;
inline constexpr std::uint32_t kCaptureWait = 250;

// Everything the thread touches. The settings are a copy taken when the
// thread started: a later change of the model or library path does not
// reach a running thread.
struct VoiceThreadHost {
    const std::atomic<bool>& stop;
    std::atomic<std::int32_t>& status;
    const VoicePhraseTable& phrases;
    VoiceDispatchTarget dispatch;
    AudioCapture& microphone;
    std::u16string programDirectory;
    std::u16string voiceModel;
    std::u16string voiceDllPath;
    // After every change of status (the main window repaints its lines).
    std::function<void()> statusChanged;
    // The phrases the model cannot say, as „a”, „b” (a notice for the user).
    std::function<void(std::u16string)> skippedPhrases;
};

// Runs until host.stop is set or the thread cannot go on; the status keeps
// its last value.
void VoiceThreadMain(VoiceThreadHost& host);

}  // namespace zirvel
