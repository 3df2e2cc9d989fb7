// The desktop's top-level windows and their programs, for the front-end's
// list to pick a wheel's programs from. Uses an XCB connection of its own,
// so it may run on any thread, beside Xlib users, and a window that closes
// meanwhile costs one error reply and nothing else.
#pragma once

#include <vector>

#include "engine/platform.h"

namespace zirvel::x11 {

// The windows the window manager lists (_NET_CLIENT_LIST); without one, the
// root's mapped children. Windows whose program cannot be read are left out.
// `display` names the X server; null for DISPLAY's.
std::vector<OpenWindow> ListOpenWindows(const char* display = nullptr);

}  // namespace zirvel::x11
