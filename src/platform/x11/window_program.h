// The program behind an X11 window: its executable (through _NET_WM_PID and
// /proc/PID/exe) and the window's WM_CLASS names. Reads the X server and the
// kernel only; the program itself is never asked.
#pragma once

#include <string>
#include <vector>

#include "engine/platform.h"

struct _XDisplay;

namespace zirvel::x11 {

// `window` may be the client window or one inside it (the input focus
// without a window manager); the names are looked for up to the top level.
// The caller serialises its use of the display.
ProgramIdentity ReadWindowProgram(_XDisplay* display, unsigned long window);

// The executable of a process: /proc/PID/exe, empty when it cannot be read
// (gone, another user's).
std::u16string ExecutableOfProcess(unsigned long pid);

}  // namespace zirvel::x11
