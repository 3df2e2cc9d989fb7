// The engine's one process-wide state. Everything here belongs to the GUI
// thread unless marked atomic or guarded; other threads reach it only by
// posting messages through the platform.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "config/engine_settings.h"
#include "core/geometry.h"
#include "engine/background_thread.h"
#include "engine/platform.h"
#include "engine/switch_scan_state.h"
#include "engine/wheel_geometry.h"
#include "voice/voice_phrases.h"

namespace zirvel {

inline constexpr std::uint32_t kWheelTimerPeriod = 15;

// Status codes of the eye tracker and the voice threads.
inline constexpr std::int32_t kGazeActive = 4;
inline constexpr std::int32_t kVoiceActive = 5;

struct EngineState {
    Platform* platform = nullptr;
    bool engineStarted = false;
    bool showMessages = false;  // the stand-alone host: own tray and boxes

    // Configuration (settings, wheels, currentWheel, globalVoiceFunctions and
    // where the files are).
    EngineConfiguration configuration;
    VoicePhraseTable phrases;

    // Wheel overlay. Its geometry is that of the monitor it last showed on.
    WheelGeometry wheel;
    std::int32_t hoveredField = -1;
    std::int32_t hoveredArrow = -1;
    std::atomic<bool> wheelVisible{false};  // read by the voice thread
    std::int32_t cursorX = kWheelCentreX;
    std::int32_t cursorY = kWheelCentreY;
    std::int32_t pendingDX = 0;
    std::int32_t pendingDY = 0;
    // Fractions of a pixel of raw motion not yet applied, in 1/96 pixels.
    std::int32_t motionRemainderX = 0;
    std::int32_t motionRemainderY = 0;
    std::uint64_t lastMouseMoveTick = 0;
    bool gazeDriven = false;
    std::int32_t dwellTarget = -1;
    std::uint64_t dwellStartTick = 0;
    float dwellProgress = 0.0f;
    ScreenPoint savedCursor;
    WindowHandle savedForeground = 0;
    bool focusSaved = false;
    // The last program out of Zirvel's reach that the user was warned about.
    WindowHandle lastOutOfReachWindow = 0;
    std::uint64_t lastOutOfReachWarning = 0;
    ScreenPoint wheelOrigin;  // screen position of the wheel window
    // The wheel shown in front of programs without a wheel of their own
    // (-1: none yet), and whether the wheel now showing was chosen for the
    // program in front.
    std::int32_t generalWheel = -1;
    bool programWheelShown = false;

    // Screen navigation.
    bool gridVisible = false;
    bool hintsVisible = false;
    std::atomic<std::int32_t> hintScanRunning{0};
    ScreenRect gridRect;
    std::int32_t gridLevel = 0;
    std::uint32_t gridDpi = kDefaultDpi;  // of the monitor the grid shows on
    std::vector<ScreenRect> hintRects;
    ScreenRect hintArea;
    std::uint32_t hintDpi = kDefaultDpi;  // of the monitor holding the hints' area

    // Switch scanning.
    SwitchScanState scan;

    // Eye tracker, written by its thread.
    BackgroundThread gazeThread;
    std::atomic<std::int32_t> gazeStatus{0};
    std::atomic<std::int32_t> gazePointX{0};
    std::atomic<std::int32_t> gazePointY{0};
    std::atomic<std::uint64_t> lastGazeTick{0};

    // Voice, written by its thread.
    BackgroundThread voiceThread;
    std::atomic<std::int32_t> voiceStatus{0};
    // settings.voiceGlobal as the voice thread reads it, set at every load.
    std::atomic<bool> voiceGlobal{true};

    // Redraw requests by picture, counted whether or not a renderer draws.
    int wheelRedraws = 0;
    int gridRedraws = 0;
    int hintRedraws = 0;

    const EngineSettings& Settings() const { return configuration.settings; }
    const std::vector<Wheel>& Wheels() const { return configuration.wheels; }
};

// The process-wide state.
EngineState& Engine();

// Replaces the state with a fresh one on `platform` whose files live in
// `programDirectory` (tests; and the hosts, before the first start), and
// whose shipped icons lie in `shippedDirectory` (empty: the same folder).
void ResetEngineState(Platform& platform, std::u16string programDirectory, std::u16string shippedDirectory = {});

}  // namespace zirvel
