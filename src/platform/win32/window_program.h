// The program behind a Windows window: its process's image file, read with
// QueryFullProcessImageNameW. Asks the kernel only, never the program, so a
// hung program cannot stall the caller.
#pragma once

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <string>
#include <vector>

#include "engine/platform.h"

namespace zirvel::win32 {

// Empty for no window and for a process that is gone or will not let this
// one query it (another user's, a protected one).
ProgramIdentity ReadWindowProgram(HWND window);

// The visible top-level windows the taskbar would show whose program can be
// read.
std::vector<OpenWindow> ListOpenWindows();

}  // namespace zirvel::win32
