/* The engine's exports called from C, declared here by hand: this file only
   links when every export has its plain, unmangled name. */
#include <stdint.h>

#include "exports_from_c.h"

uint8_t OverlayEngineStart(void);
void OverlayEngineStop(void);
void OverlayReloadConfig(void);
uint8_t OverlayActivateWheelFile(const uint16_t* path);
void OverlayToggleWheel(void);
uint8_t OverlayIsWheelVisible(void);
int32_t OverlayWheelCount(void);
int32_t OverlayVoicePhraseCount(void);
const uint16_t* OverlayVoiceStatus(void);
const uint16_t* OverlayGazeStatus(void);

static int32_t TextLength(const uint16_t* text) {
    int32_t length = 0;
    if (!text) return -1;
    while (text[length] != 0 && length < 1000) ++length;
    return length;
}

struct ExportsSeenFromC CallExportsFromC(const uint16_t* wheelsFile) {
    struct ExportsSeenFromC seen;
    seen.started = OverlayEngineStart();
    OverlayToggleWheel();
    seen.visibleAfterToggle = OverlayIsWheelVisible();
    OverlayToggleWheel();
    seen.activated = OverlayActivateWheelFile(wheelsFile);
    seen.wheelCount = OverlayWheelCount();
    seen.phraseCount = OverlayVoicePhraseCount();
    seen.voiceStatusLength = TextLength(OverlayVoiceStatus());
    seen.gazeStatusLength = TextLength(OverlayGazeStatus());
    OverlayReloadConfig();
    seen.wheelCountAfterReload = OverlayWheelCount();
    OverlayEngineStop();
    return seen;
}
