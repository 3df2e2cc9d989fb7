#include "engine/engine_gaze_thread.h"

#include "engine/engine_lifecycle.h"
#include "engine/engine_state.h"
#include "gaze/gaze_thread.h"

namespace zirvel {

void InstallEngineGazeThread() {
    SetGazeThreadMaker([]() -> BackgroundBody {
        EngineState* state = &Engine();
        std::u16string programDirectory = state->configuration.programDirectory;
        std::u16string gazeDllPath = state->Settings().gazeDllPath;
        return [state, programDirectory, gazeDllPath](const std::atomic<bool>& stop) {
            Platform& platform = *state->platform;
            GazeThreadHost host{stop,
                                state->gazeStatus,
                                state->gazePointX,
                                state->gazePointY,
                                state->lastGazeTick,
                                programDirectory,
                                gazeDllPath,
                                TrackerSearchRoots(),
                                [&platform] { return platform.TickCount(); },
                                [&platform] { platform.StatusChanged(); }};
            GazeThreadMain(host);
        };
    });
}

}  // namespace zirvel
