// The engine's gaze thread: the eye tracker's gaze points kept in the
// engine's state for the wheel's timer.
#pragma once

namespace zirvel {

// Installs the gaze thread that the engine starts when gaze is on. It runs
// with the library path the settings held at its start.
void InstallEngineGazeThread();

}  // namespace zirvel
