// The real cursor pinned while the wheel shows, with ClipCursor. A windowed
// game may confine the cursor to its window: the confinement in force
// before the pin is put back afterwards, not wiped. Windows resets the clip
// when the foreground changes, so the pin is checked and put back while it
// holds.
#pragma once

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include "core/geometry.h"

namespace zirvel::win32 {

class CursorPin {
public:
    // GUI. Remembers the clip in force and pins the cursor at `point`.
    void Pin(ScreenPoint point);
    // GUI. Pins again when something released the pin; true when it did.
    bool Keep();
    // GUI. Puts back the clip that was in force before Pin.
    void Release();
    bool Pinned() const { return pinned_; }

private:
    bool pinned_ = false;
    RECT pin_{};
    RECT before_{};
    // Nothing confined the cursor before: ClipCursor(NULL) afterwards, so a
    // later change of the desktop's size is not clipped to the old one.
    bool freeBefore_ = true;
};

}  // namespace zirvel::win32
