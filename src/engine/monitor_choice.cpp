#include "engine/monitor_choice.h"

#include <algorithm>
#include <cstdint>

namespace zirvel {
namespace {

// Squared distance from the point to the closest pixel of the rectangle.
std::int64_t DistanceSquared(const ScreenRect& r, ScreenPoint p) {
    const std::int64_t dx = p.x < r.left ? r.left - p.x : (p.x >= r.right ? p.x - r.right + 1 : 0);
    const std::int64_t dy = p.y < r.top ? r.top - p.y : (p.y >= r.bottom ? p.y - r.bottom + 1 : 0);
    return dx * dx + dy * dy;
}

}  // namespace

ScreenRect ChooseMonitor(const std::vector<ScreenRect>& monitors, ScreenPoint point, bool nearest) {
    for (const ScreenRect& monitor : monitors) {
        if (monitor.Contains(point)) return monitor;
    }
    if (!nearest) return monitors.front();
    return *std::min_element(monitors.begin(), monitors.end(), [&point](const ScreenRect& a, const ScreenRect& b) {
        return DistanceSquared(a, point) < DistanceSquared(b, point);
    });
}

}  // namespace zirvel
