#include "engine/element_hints.h"

#include <atomic>

#include "engine/engine_state.h"
#include "engine/function_runner.h"
#include "engine/grid.h"
#include "engine/renderer.h"
#include "navigation/element_scanner.h"
#include "navigation/grid_geometry.h"

namespace zirvel {
namespace {

std::atomic<ElementScanner*> installedScanner{nullptr};

}  // namespace

void HideHints() {
    EngineState& engine = Engine();
    if (!engine.hintsVisible) return;
    engine.platform->HideSurface(Surface::Grid);
    engine.hintsVisible = false;
}

void SetElementScanner(ElementScanner* scanner) { installedScanner = scanner; }

void StartElementScan(bool browserPageOnly) {
    EngineState& engine = Engine();
    if (engine.hintScanRunning.exchange(1) == 1) return;  // one scan at a time
    HideGrid();
    Platform* platform = engine.platform;
    const ElementScanMode mode = browserPageOnly ? ElementScanMode::BrowserPage : ElementScanMode::ForegroundWindow;
    // The scan thread touches no engine state: it only posts its result.
    platform->RunDetached([platform, mode] {
        EngineMessage message;
        message.kind = EngineMessageKind::ElementScanResult;
        message.scanResult = std::make_unique<ElementScanResult>();
        if (ElementScanner* scanner = installedScanner.load()) *message.scanResult = scanner->Scan(mode);
        platform->Post(std::move(message));
    });
}

void CancelElementHints() {
    Engine().hintScanRunning.exchange(0);
    HideHints();
}

void HandleElementScanResult(std::unique_ptr<ElementScanResult> result) {
    EngineState& engine = Engine();
    if (engine.hintScanRunning.exchange(0) == 0) return;  // cancelled meanwhile
    if (result) {
        engine.hintRects = std::move(result->elements);
        engine.hintArea = result->area;
    }
    if (engine.hintRects.empty()) return;
    engine.hintDpi = engine.platform->MonitorDpi(GridAreaCentre(engine.hintArea));
    HideGrid();
    RenderHints();
    engine.platform->ShowSurface(Surface::Grid);
    engine.hintsVisible = true;
}

void ClickHint(int number, std::uint32_t button, std::uint32_t count) {
    EngineState& engine = Engine();
    if (!engine.hintsVisible || number < 1 || static_cast<std::size_t>(number) > engine.hintRects.size()) return;
    const ScreenRect& r = engine.hintRects[static_cast<std::size_t>(number) - 1];
    engine.platform->HideSurface(Surface::Grid);
    engine.hintsVisible = false;
    engine.platform->SetCursorPosition({(r.left + r.right) / 2, (r.top + r.bottom) / 2});
    ClickMouse(button, count);
}

}  // namespace zirvel
