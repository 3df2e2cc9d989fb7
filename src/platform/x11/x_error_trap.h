// Catches the X errors of a few requests instead of letting Xlib's default
// handler end the process (a window that vanished, a key already grabbed).
#pragma once

#include <X11/Xlib.h>

namespace zirvel::x11 {

// While alive, errors on every display are recorded, not fatal. Callers
// serialise their use of the display, so one trap at a time is active.
class XErrorTrap {
public:
    explicit XErrorTrap(Display* display);
    ~XErrorTrap();
    XErrorTrap(const XErrorTrap&) = delete;
    XErrorTrap& operator=(const XErrorTrap&) = delete;

    // Waits for the server to answer everything sent so far; true when no
    // error arrived since the trap was set.
    bool Succeeded();
    // The error code of the first error, 0 for none (after Succeeded).
    int FirstError() const;

private:
    Display* display_;
    XErrorHandler previous_;
};

}  // namespace zirvel::x11
