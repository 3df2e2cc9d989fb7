#include "engine/engine_voice_target.h"

#include <utility>

#include "engine/engine_state.h"

namespace zirvel {

VoiceDispatchTarget EngineVoiceTarget(EngineState& engine) {
    VoiceDispatchTarget target;
    target.post = [&engine](EngineMessage message) { engine.platform->Post(std::move(message)); };
    target.voiceGlobal = [&engine] { return engine.voiceGlobal.load(); };
    target.wheelVisible = [&engine] { return engine.wheelVisible.load(); };
    return target;
}

bool DispatchHandedOverPhrase(EngineState& engine, std::u16string_view phrase) {
    return DispatchRecognizedText(engine.phrases, LowerVoicePhrase(phrase), EngineVoiceTarget(engine));
}

}  // namespace zirvel
