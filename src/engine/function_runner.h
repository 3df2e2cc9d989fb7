// Running a wheel function: its steps become injected key and button events
// on a detached worker thread, so the GUI thread never waits.
#pragma once

#include <cstdint>

#include "config/wheel.h"

namespace zirvel {

// A run's own copy of its function, independent of later reloads.
struct FunctionJob {
    WheelFunction function;
    std::uint32_t startDelay = 0;
};

struct MouseClickJob {
    std::uint32_t button = 0;
    std::uint32_t count = 0;
};

// Starts a detached run that waits `startDelay` ms and then plays the steps.
void RunFunction(const WheelFunction& function, std::uint32_t startDelay);

// One press or release of a key or mouse button; nothing for invalid keys.
// Left and right follow the system's primary-button swap. False when the
// system refused it.
bool SendKeyEvent(const KeyCode& key, bool press);

// Hides the grid if it shows, then clicks `button` `count` times at the real
// cursor on a detached thread, 60 ms later.
void ClickMouse(std::uint32_t button, std::uint32_t count);

// Puts the real cursor back where it was when the wheel showed and gives the
// foreground back to the window that had it. Once per show.
void RestoreFocus();

// The worker bodies, exposed for tests that run them directly.
void RunFunctionJob(const FunctionJob& job);
void RunMouseClickJob(const MouseClickJob& job);

}  // namespace zirvel
