// An engine on the null platform whose pictures are drawn on recording
// canvases by the installed canvas renderer.
#pragma once

#include "engine_fixture.h"

#include "engine/canvas_renderer.h"
#include "support/recording_canvas.h"

namespace zirvel_test {

class CanvasRendererTest : public EngineTest {
protected:
    void SetUp() override {
        EngineTest::SetUp();
        zirvel::InstallCanvasRenderer(factory_);
    }
    void TearDown() override {
        zirvel::RemoveCanvasRenderer();
        EngineTest::TearDown();
    }
    RecordingCanvasFactory factory_;
};

}  // namespace zirvel_test
