// The engine's voice thread: the recogniser listening to the microphone
// each platform provides, its results going to the GUI thread.
#pragma once

#include <functional>
#include <memory>

#include "voice/audio_capture.h"

namespace zirvel {

// Makes the microphone of one voice thread (called on that thread).
using MicrophoneMaker = std::function<std::unique_ptr<AudioCapture>()>;

// Installs the voice thread that the engine starts when voice is on. It
// runs with the model and library paths the settings held at its start.
void InstallEngineVoiceThread(MicrophoneMaker makeMicrophone);

}  // namespace zirvel
