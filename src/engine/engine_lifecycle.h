// Starting, stopping and reloading the engine, and activating a wheels file.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "config/wheel.h"

#include "engine/background_thread.h"

namespace zirvel {

// Makes the body of a thread on the GUI thread as the thread starts, so the
// body can take a copy of the settings it runs with.
using ThreadBodyMaker = std::function<BackgroundBody()>;

// The bodies of the eye-tracker and voice threads; without one installed
// the thread is not started.
void SetGazeThreadMaker(ThreadBodyMaker maker);
void SetVoiceThreadMaker(ThreadBodyMaker maker);
// The same body every time (tests).
void SetGazeThreadBody(BackgroundBody body);
void SetVoiceThreadBody(BackgroundBody body);

// Loads the configuration, registers the hot key, builds the voice phrases
// and starts the enabled threads. `showMessages` is the stand-alone host's
// flag: configuration problems in a box and a tray icon of its own.
bool StartEngine(bool showMessages);
// StartEngine the first time it is called; afterwards true at once, also
// after StopEngine (the exports' and the stand-alone host's start).
bool StartEngineOnce(bool showMessages);
void StopEngine();
// What the engine's main window does when it is destroyed ("Zakończ" in
// its tray menu): hides the wheel, stops the threads and lets go of the
// hot key, leaving the pictures and the process to the host.
void DetachEngineFromSystem();
// The tip of the stand-alone host's tray icon.
std::u16string TrayIconTip(const std::u16string& toggleKey);
void ReloadEngineConfiguration();
// The files alone (settings, wheels, global voice functions) and the voice
// phrases: what the function editor's save of default.json or voice.json
// does. No thread starts or stops and a visible wheel is not redrawn.
void ReloadEngineFiles();
// Replaces the engine's wheels with these (each with functions) and starts
// at the first.
void ActivateWheels(std::vector<Wheel> wheels);
// True when the file held a wheel with functions; otherwise nothing changes.
bool ActivateWheelFile(const std::u16string& path);
// A wheels file handed over by another process (a second start of the
// program, `zirvel-activate`): activated as above; on success the host's
// tray, when it has one, says which file. True when it was activated.
bool ActivateHandedOverWheelFile(const std::u16string& path);

}  // namespace zirvel
