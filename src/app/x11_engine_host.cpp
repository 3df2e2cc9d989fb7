#include "app/x11_engine_host.h"

#include "engine/canvas_renderer.h"
#include "engine/engine_gaze_thread.h"
#include "engine/engine_lifecycle.h"
#include "engine/engine_state.h"
#include "engine/engine_voice_thread.h"
#include "engine/overlay_exports.h"
#include "platform/x11/pulse_capture.h"

namespace zirvel::app {

X11EngineHost::X11EngineHost(const QString& programDirectory) {
    if (platform_.Ready()) ResetEngineState(platform_, programDirectory.toStdU16String());
}

X11EngineHost::~X11EngineHost() { Stop(); }

void X11EngineHost::Start() {
    if (!platform_.Ready() || started_) return;
    InstallCanvasRenderer(canvases_);
    InstallEngineVoiceThread([] { return std::make_unique<x11::PulseCapture>(); });
    InstallEngineGazeThread();
    // The result is not looked at: the window opens anyway and shows what the engine reports.
    OverlayEngineStart();
    started_ = true;
}

void X11EngineHost::Stop() {
    if (!started_) return;
    OverlayEngineStop();
    RemoveCanvasRenderer();
    SetVoiceThreadMaker(nullptr);
    SetGazeThreadMaker(nullptr);
    started_ = false;
}

}  // namespace zirvel::app
