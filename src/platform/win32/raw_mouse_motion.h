// Motion from raw mouse reports. Mice report relative counts; tablets,
// remote desktop, virtual machines and many assistive devices report
// absolute positions (0..65535 across the primary monitor, or across the
// whole desktop with MOUSE_VIRTUAL_DESKTOP). An absolute report becomes the
// motion since the same device's previous one, in pixels, so every kind of
// pointer steers the wheel.
#pragma once

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <cstdint>
#include <map>

#include "core/geometry.h"

namespace zirvel::win32 {

class RawMouseMotion {
public:
    // The motion a report carries; `normalisedArea` is the screen area its
    // absolute coordinates span (the primary monitor or the whole desktop,
    // as its flags say).
    ScreenPoint Motion(HANDLE device, const RAWMOUSE& report, const ScreenRect& normalisedArea);
    // A new capture: the next absolute report of each device is where it
    // starts, not a movement.
    void Reset() { lastAbsolute_.clear(); }

private:
    std::map<HANDLE, ScreenPoint> lastAbsolute_;
};

// The area an absolute report's 0..65535 span: the whole desktop with
// MOUSE_VIRTUAL_DESKTOP, the primary monitor without.
ScreenRect NormalisedArea(const RAWMOUSE& report);

}  // namespace zirvel::win32
