// The one connection of this process to the accessibility bus (libatspi).
// libatspi keeps process-wide state, so it is set up once and then used by
// one scan thread at a time; its D-Bus traffic runs on a main context of its
// own, so that it never competes with the GUI thread's event loop.
#pragma once

#include <atspi/atspi.h>

namespace zirvel::x11 {

// Sets libatspi up on first use (false when there is no session bus or no
// accessibility bus: nothing can be scanned) and handles the events the
// bus sent since the last call, which keep libatspi's cache of the
// applications, their children and states current. Call before each scan,
// from the scanning thread; never from two threads at once.
bool PrepareAccessibilityConnection();

// libatspi talks to an application that offers it over a private
// connection, which it hands to the process's default main context: the
// GUI thread's event loop. That loop then reads the answers a scan waits
// for, and the scan sits out the whole call timeout (1.5 s, up to three
// times a scan with a browser). This moves the connection of `node`'s
// application over to the scans' own context. From the scanning thread.
void KeepApplicationOnScanContext(AtspiAccessible* node);

// How long one call to an application may take, and the bound on a whole
// scan: an application that does not answer delays a scan, never hangs it.
inline constexpr int kAccessibilityCallTimeoutMs = 1500;

}  // namespace zirvel::x11
