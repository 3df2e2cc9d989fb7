// The monitors of the X screen, from RandR.
#pragma once

#include <X11/Xlib.h>

#include <vector>

#include "core/geometry.h"

namespace zirvel::x11 {

// Active RandR monitors with the primary one first; the whole root window
// when RandR reports none.
std::vector<ScreenRect> ReadMonitors(Display* display);

}  // namespace zirvel::x11
