#include "engine/engine_voice_thread.h"

#include <utility>

#include "engine/engine_lifecycle.h"
#include "engine/engine_state.h"
#include "engine/engine_voice_target.h"
#include "voice/voice_thread.h"

namespace zirvel {
namespace {

struct VoiceThreadStart {
    EngineState* engine;
    std::u16string programDirectory;
    std::u16string voiceModel;
    std::u16string voiceDllPath;
};

void RunVoiceThread(const VoiceThreadStart& start, const MicrophoneMaker& makeMicrophone,
                    const std::atomic<bool>& stop) {
    EngineState& engine = *start.engine;
    Platform& platform = *engine.platform;
    const std::unique_ptr<AudioCapture> microphone = makeMicrophone();
    VoiceThreadHost host{stop, engine.voiceStatus, engine.phrases, EngineVoiceTarget(engine), *microphone,
                         start.programDirectory, start.voiceModel, start.voiceDllPath,
                         [&platform] { platform.StatusChanged(); },
                         [&platform](std::u16string phrases) {
                             EngineMessage message;
                             message.kind = EngineMessageKind::SkippedPhrases;
                             message.text = std::move(phrases);
                             platform.Post(std::move(message));
                         }};
    VoiceThreadMain(host);
}

}  // namespace

void InstallEngineVoiceThread(MicrophoneMaker makeMicrophone) {
    SetVoiceThreadMaker([makeMicrophone = std::move(makeMicrophone)]() -> BackgroundBody {
        EngineState& engine = Engine();
        const EngineSettings& settings = engine.Settings();
        VoiceThreadStart start{&engine, engine.configuration.programDirectory, settings.voiceModel,
                               settings.voiceDllPath};
        return [start = std::move(start), makeMicrophone](const std::atomic<bool>& stop) {
            RunVoiceThread(start, makeMicrophone, stop);
        };
    });
}

}  // namespace zirvel
