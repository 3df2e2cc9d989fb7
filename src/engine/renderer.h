// Where pictures come from. The engine asks for a wheel, grid or hint
// picture whenever one changes; the installed renderer draws it and presents
// it through the platform (InstallCanvasRenderer in canvas_renderer.h is the
// one every platform installs). Without a renderer the requests are only
// counted.
#pragma once

namespace zirvel {

struct EngineState;

struct Renderer {
    void (*drawWheel)(EngineState& engine) = nullptr;
    void (*drawGrid)(EngineState& engine) = nullptr;
    void (*drawHints)(EngineState& engine) = nullptr;
};

void SetRenderer(const Renderer& renderer);

// Count the request, then draw when a renderer is installed.
void RenderWheel();
void RenderGrid();
void RenderHints();

}  // namespace zirvel
