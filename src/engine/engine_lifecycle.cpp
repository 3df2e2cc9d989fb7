#include "engine/engine_lifecycle.h"

#include <mutex>

#include "config/text.h"
#include "config/wheels_file.h"
#include "engine/element_hints.h"
#include "engine/engine_dispatch.h"
#include "engine/engine_state.h"
#include "engine/grid.h"
#include "engine/host_notice.h"
#include "engine/switch_scan.h"
#include "engine/wheel_overlay.h"
#include "voice/voice_phrases.h"

namespace zirvel {
namespace {

constexpr std::uint32_t kGazeStopWait = 1500;
constexpr std::uint32_t kVoiceStopWait = 2000;
// The tray tip's fixed field holds 128 units with its terminator.
constexpr std::size_t kTrayTipLimit = 127;

std::mutex makersLock;
ThreadBodyMaker gazeMaker;
ThreadBodyMaker voiceMaker;

BackgroundBody MakeBody(const ThreadBodyMaker& installed) {
    ThreadBodyMaker maker;
    {
        std::lock_guard lock(makersLock);
        maker = installed;
    }
    return maker ? maker() : BackgroundBody();
}

ThreadBodyMaker Always(BackgroundBody body) {
    if (!body) return nullptr;
    return [body = std::move(body)] { return body; };
}

// Loads the files and publishes the one setting the voice thread reads.
void LoadConfiguration(EngineState& engine, std::u16string& problems) {
    LoadEngineConfiguration(engine.configuration, problems);
    engine.voiceGlobal = engine.Settings().voiceGlobal;
}

void RebuildPhrases(EngineState& engine) {
    RebuildVoicePhrases(engine.phrases, engine.configuration.wheels, engine.configuration.globalVoiceFunctions);
}

// Starts the thread when enabled and not running; stops it (bounded wait)
// and reports it switched off when disabled.
void MatchThreadToSetting(bool enabled, BackgroundThread& thread, const ThreadBodyMaker& installed,
                          std::atomic<std::int32_t>& status, std::uint32_t stopWait) {
    if (!enabled) {
        if (thread.Running()) {
            thread.Stop(stopWait);
            status = 0;
        }
        return;
    }
    if (thread.Running()) return;
    if (BackgroundBody body = MakeBody(installed)) thread.Start(std::move(body));
}

}  // namespace

void SetGazeThreadMaker(ThreadBodyMaker maker) {
    std::lock_guard lock(makersLock);
    gazeMaker = std::move(maker);
}

void SetVoiceThreadMaker(ThreadBodyMaker maker) {
    std::lock_guard lock(makersLock);
    voiceMaker = std::move(maker);
}

void SetGazeThreadBody(BackgroundBody body) { SetGazeThreadMaker(Always(std::move(body))); }

void SetVoiceThreadBody(BackgroundBody body) { SetVoiceThreadMaker(Always(std::move(body))); }

bool StartEngine(bool showMessages) {
    EngineState& engine = Engine();
    Platform& system = *engine.platform;
    engine.showMessages = showMessages;
    std::u16string problems;
    LoadConfiguration(engine, problems);
    system.SetEventSink(&EngineEventSink());

    const EngineSettings& settings = engine.Settings();
    if (!system.RegisterHotKey(settings.toggleKeyCode)) {
        system.ShowWarning(Concat({u"Nie udało się zarejestrować globalnego skrótu '", settings.toggleKey,
                                   u"'.\nByć może inny program już go używa."}));
    }
    if (!problems.empty() && showMessages) {
        system.ShowWarning(Concat({u"Problemy z konfiguracją:\n\n", problems}));
    }
    if (showMessages) system.AddTrayIcon(TrayIconTip(settings.toggleKey));

    if (settings.gazeEnabled) {
        MatchThreadToSetting(true, engine.gazeThread, gazeMaker, engine.gazeStatus, kGazeStopWait);
    } else {
        engine.gazeStatus = 0;
    }
    RebuildPhrases(engine);
    if (settings.voiceEnabled) {
        MatchThreadToSetting(true, engine.voiceThread, voiceMaker, engine.voiceStatus, kVoiceStopWait);
    } else {
        engine.voiceStatus = 0;
    }
    return true;
}

bool StartEngineOnce(bool showMessages) {
    EngineState& engine = Engine();
    if (engine.engineStarted) return true;  // stays set for the life of the process
    if (!engine.platform) return false;
    engine.engineStarted = StartEngine(showMessages);
    return engine.engineStarted;
}

std::u16string TrayIconTip(const std::u16string& toggleKey) {
    std::u16string tip = Concat({u"Zirvel — '", toggleKey, u"' pokazuje nakładkę"});
    if (tip.size() > kTrayTipLimit) tip.resize(kTrayTipLimit);
    return tip;
}

void StopEngine() {
    // The wheel first, then the grid and hints, then threads and the hot key.
    if (Engine().wheelVisible) HideWheel();
    HideGrid();
    HideHints();
    DetachEngineFromSystem();
}

void DetachEngineFromSystem() {
    EngineState& engine = Engine();
    if (engine.wheelVisible) HideWheel();
    StopSwitchScan();
    engine.gazeThread.Stop(kGazeStopWait);
    engine.voiceThread.Stop(kVoiceStopWait);
    engine.platform->UnregisterHotKey();
}

void ReloadEngineFiles() {
    EngineState& engine = Engine();
    std::u16string ignored;
    LoadConfiguration(engine, ignored);
    RebuildPhrases(engine);
}

void ReloadEngineConfiguration() {
    ReloadEngineFiles();
    EngineState& engine = Engine();
    const EngineSettings& settings = engine.Settings();
    MatchThreadToSetting(settings.gazeEnabled, engine.gazeThread, gazeMaker, engine.gazeStatus, kGazeStopWait);
    MatchThreadToSetting(settings.voiceEnabled, engine.voiceThread, voiceMaker, engine.voiceStatus, kVoiceStopWait);
    // A changed toggleKey takes effect at the next start of the program.
    MatchScanToSettings();
    if (engine.wheelVisible) RedrawWheel();
}

void ActivateWheels(std::vector<Wheel> wheels) {
    EngineState& engine = Engine();
    engine.configuration.wheels = std::move(wheels);
    engine.configuration.currentWheel = 0;
    engine.generalWheel = -1;
    engine.hoveredField = -1;
    RebuildPhrases(engine);
    RestartWheelScan();
    if (engine.wheelVisible) RedrawWheel();
}

bool ActivateWheelFile(const std::u16string& path) {
    std::vector<Wheel> wheels;
    std::u16string ignored;
    ReadWheelsFile(path, wheels, ignored);
    std::erase_if(wheels, [](const Wheel& wheel) { return wheel.functions.empty(); });
    if (wheels.empty()) return false;
    ActivateWheels(std::move(wheels));
    return true;
}

bool ActivateHandedOverWheelFile(const std::u16string& path) {
    if (path.empty() || !ActivateWheelFile(path)) return false;
    ShowHostNotice(u"Zirvel", Concat({u"Aktywowano konfigurację: ", path}), false);
    return true;
}

}  // namespace zirvel
