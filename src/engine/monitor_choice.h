// Which monitor a screen point belongs to, as MonitorFromPoint decides it.
#pragma once

#include <vector>

#include "core/geometry.h"

namespace zirvel {

// The monitor holding `point`; when none does, the nearest one (`nearest`)
// or the primary one, which is the first. `monitors` is not empty.
ScreenRect ChooseMonitor(const std::vector<ScreenRect>& monitors, ScreenPoint point, bool nearest);

}  // namespace zirvel
