#include "app/x11_engine_host.h"

#include <thread>

#include "engine/canvas_renderer.h"
#include "engine/element_hints.h"
#include "engine/engine_gaze_thread.h"
#include "engine/engine_lifecycle.h"
#include "engine/engine_state.h"
#include "engine/engine_voice_thread.h"
#include "engine/overlay_exports.h"
#include "platform/x11/accessibility_bus_switch.h"
#include "platform/x11/atspi_element_scanner.h"
#include "platform/x11/pulse_capture.h"

namespace zirvel::app {
namespace {

// A scan thread may still be running when the host stops (it ends within
// its own time bound): the scanner lives as long as the process.
x11::AtspiElementScanner& ElementScannerForProcess() {
    static auto* scanner = new x11::AtspiElementScanner();
    return *scanner;
}

}  // namespace

X11EngineHost::X11EngineHost(const QString& programDirectory, const QString& shippedDirectory) {
    if (platform_.Ready()) {
        ResetEngineState(platform_, programDirectory.toStdU16String(), shippedDirectory.toStdU16String());
    }
}

X11EngineHost::~X11EngineHost() { Stop(); }

void X11EngineHost::Start() {
    if (!platform_.Ready() || started_) return;
    InstallCanvasRenderer(canvases_);
    InstallEngineVoiceThread([] { return std::make_unique<x11::PulseCapture>(); });
    InstallEngineGazeThread();
    // As a screen reader does: toolkits that keep their accessibility trees
    // to themselves until asked (Qt) expose them from now on. Off the GUI
    // thread, since the bus may first have to start; silent on failure.
    std::thread([] { x11::SwitchAccessibilityBusOn(); }).detach();
    SetElementScanner(&ElementScannerForProcess());
    // The result is not looked at: the window opens anyway and shows what the engine reports.
    OverlayEngineStart();
    started_ = true;
}

void X11EngineHost::Stop() {
    if (!started_) return;
    OverlayEngineStop();
    SetElementScanner(nullptr);
    RemoveCanvasRenderer();
    SetVoiceThreadMaker(nullptr);
    SetGazeThreadMaker(nullptr);
    started_ = false;
}

}  // namespace zirvel::app
