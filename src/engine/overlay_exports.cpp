#include "engine/overlay_exports.h"

#include "engine/engine_dispatch.h"
#include "engine/engine_lifecycle.h"
#include "engine/engine_state.h"
#include "engine/status_texts.h"
#include "voice/voice_phrases.h"

using namespace zirvel;

extern "C" {

std::uint8_t OverlayEngineStart(void) {
    return StartEngineOnce(false) ? 1 : 0;
}

void OverlayEngineStop(void) {
    if (Engine().platform) StopEngine();
}

void OverlayReloadConfig(void) {
    if (Engine().platform) ReloadEngineConfiguration();
}

std::uint8_t OverlayActivateWheelFile(const char16_t* path) {
    if (!path || !Engine().platform) return 0;
    return ActivateWheelFile(path) ? 1 : 0;
}

void OverlayToggleWheel(void) {
    if (Engine().platform) ToggleWheel();
}

std::uint8_t OverlayIsWheelVisible(void) { return Engine().wheelVisible ? 1 : 0; }

std::int32_t OverlayWheelCount(void) { return static_cast<std::int32_t>(Engine().Wheels().size()); }

std::int32_t OverlayVoicePhraseCount(void) {
    return static_cast<std::int32_t>(VoicePhraseCount(Engine().phrases));
}

const char16_t* OverlayVoiceStatus(void) { return VoiceStatusText(Engine().voiceStatus.load()); }

const char16_t* OverlayGazeStatus(void) { return GazeStatusText(Engine().gazeStatus.load()); }

}  // extern "C"
