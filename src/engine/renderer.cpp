#include "engine/renderer.h"

#include "engine/engine_state.h"

namespace zirvel {
namespace {

Renderer installed;

}  // namespace

void SetRenderer(const Renderer& renderer) { installed = renderer; }

void RenderWheel() {
    EngineState& engine = Engine();
    ++engine.wheelRedraws;
    if (installed.drawWheel) installed.drawWheel(engine);
}

void RenderGrid() {
    EngineState& engine = Engine();
    ++engine.gridRedraws;
    if (installed.drawGrid) installed.drawGrid(engine);
}

void RenderHints() {
    EngineState& engine = Engine();
    ++engine.hintRedraws;
    if (installed.drawHints) installed.drawHints(engine);
}

}  // namespace zirvel
