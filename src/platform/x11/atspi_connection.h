// The one connection of this process to the accessibility bus (libatspi).
// libatspi keeps process-wide state, so it is set up once and then used by
// one scan thread at a time; its D-Bus traffic runs on a main context of its
// own, so that it never competes with the GUI thread's event loop.
#pragma once

namespace zirvel::x11 {

// Sets libatspi up on first use (false when there is no session bus or no
// accessibility bus: nothing can be scanned) and handles the events the
// bus sent since the last call, which keep libatspi's cache of the
// applications, their children and states current. Call before each scan,
// from the scanning thread; never from two threads at once.
bool PrepareAccessibilityConnection();

// How long one call to an application may take, and the bound on a whole
// scan: an application that does not answer delays a scan, never hangs it.
inline constexpr int kAccessibilityCallTimeoutMs = 1500;

}  // namespace zirvel::x11
