#include "app/win32_engine_host.h"

#include <memory>

#include "engine/canvas_renderer.h"
#include "engine/element_hints.h"
#include "engine/engine_gaze_thread.h"
#include "engine/engine_lifecycle.h"
#include "engine/engine_state.h"
#include "engine/engine_voice_thread.h"
#include "platform/win32/install_element_scanner.h"
#include "platform/win32/wave_in_capture.h"

namespace zirvel::app {

Win32EngineHost::Win32EngineHost(HINSTANCE instance, const std::u16string& programDirectory) : platform_(instance) {
    ResetEngineState(platform_, programDirectory);
    InstallCanvasRenderer(canvases_);
    InstallEngineVoiceThread([] { return std::make_unique<win32::WaveInCapture>(); });
    InstallEngineGazeThread();
    win32::InstallElementScanner(platform_);
}

Win32EngineHost::~Win32EngineHost() {
    // The scanner itself lives on: a scan thread may still be using it.
    SetElementScanner(nullptr);
    RemoveCanvasRenderer();
    SetVoiceThreadMaker(nullptr);
    SetGazeThreadMaker(nullptr);
}

}  // namespace zirvel::app
