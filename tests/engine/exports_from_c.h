/* What a C caller of the engine's exports saw. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

struct ExportsSeenFromC {
    uint8_t started;
    uint8_t visibleAfterToggle;
    uint8_t activated;
    int32_t wheelCount;
    int32_t phraseCount;
    int32_t voiceStatusLength;
    int32_t gazeStatusLength;
    int32_t wheelCountAfterReload;
};

/* Starts the engine, toggles the wheel twice, activates `wheelsFile`,
   reads the counts and statuses, reloads, counts again, then stops. */
struct ExportsSeenFromC CallExportsFromC(const uint16_t* wheelsFile);

#ifdef __cplusplus
}
#endif
