// The wheel overlay: showing and hiding it, the virtual cursor that raw
// motion and the gaze move, hover, dwell and selection.
#pragma once

#include <cstdint>

namespace zirvel {

// Shows the wheel centred on the monitor of the real cursor, pins the real
// cursor and starts the 15 ms timer.
void ShowWheel();
// Hides it; the caller restores cursor and focus when the user closed it.
void HideWheel();

// The field of the current wheel at a wheel-window point, or -1.
std::int32_t HitTestField(std::int32_t x, std::int32_t y);
// 0 for the left arrow, 1 for the right one, -1 (always with one wheel).
std::int32_t HitTestArrow(std::int32_t x, std::int32_t y);

// One tick of the wheel timer: motion, gaze steering, clamping, hover, dwell.
void WheelTimerTick();
// Raw relative motion while the wheel shows.
void AddRawMotion(std::int32_t dx, std::int32_t dy);
// Selects what is under the virtual cursor: an arrow switches wheels, a
// field closes the wheel and runs its function.
void SelectUnderCursor();
// Takes field `field` of the wheel that shows as a click on it does: the
// wheel hides, focus goes back and the function runs after sendDelay.
void ChooseField(std::int32_t field);
// Asks (through the GUI thread's queue) for the selection above; what the
// mouse, the dwell and the voice's click command do.
void PostSelect();
// Switches to the next (+1) or previous (-1) wheel and re-hit-tests.
void SwitchWheel(int direction);

// Asks for the wheel picture to be drawn again.
void RedrawWheel();

}  // namespace zirvel
