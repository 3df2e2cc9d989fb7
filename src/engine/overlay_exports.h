// The engine's exported interface, with unmangled C names. The front-end
// drives the engine through these only. Strings are UTF-16.
#pragma once

#include <cstdint>

#ifdef _WIN32
#define ZIRVEL_EXPORT __declspec(dllexport)
#else
#define ZIRVEL_EXPORT __attribute__((visibility("default")))
#endif

extern "C" {

ZIRVEL_EXPORT std::uint8_t OverlayEngineStart(void);
ZIRVEL_EXPORT void OverlayEngineStop(void);
ZIRVEL_EXPORT void OverlayReloadConfig(void);
ZIRVEL_EXPORT std::uint8_t OverlayActivateWheelFile(const char16_t* path);
ZIRVEL_EXPORT void OverlayToggleWheel(void);
ZIRVEL_EXPORT std::uint8_t OverlayIsWheelVisible(void);
ZIRVEL_EXPORT std::int32_t OverlayWheelCount(void);
ZIRVEL_EXPORT std::int32_t OverlayVoicePhraseCount(void);
ZIRVEL_EXPORT const char16_t* OverlayVoiceStatus(void);
ZIRVEL_EXPORT const char16_t* OverlayGazeStatus(void);

}  // extern "C"
