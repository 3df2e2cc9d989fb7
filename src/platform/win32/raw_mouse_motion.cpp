#include "platform/win32/raw_mouse_motion.h"

namespace zirvel::win32 {
namespace {

// 0..65535 across `length` pixels.
std::int32_t ToPixels(LONG normalised, std::int32_t length) {
    return static_cast<std::int32_t>((static_cast<std::int64_t>(normalised) * length) / 65536);
}

}  // namespace

ScreenPoint RawMouseMotion::Motion(HANDLE device, const RAWMOUSE& report, const ScreenRect& normalisedArea) {
    if (!(report.usFlags & MOUSE_MOVE_ABSOLUTE)) return {report.lLastX, report.lLastY};
    const ScreenPoint at{ToPixels(report.lLastX, normalisedArea.Width()),
                         ToPixels(report.lLastY, normalisedArea.Height())};
    const auto [previous, first] = lastAbsolute_.try_emplace(device, at);
    if (first) return {0, 0};
    const ScreenPoint motion{at.x - previous->second.x, at.y - previous->second.y};
    previous->second = at;
    return motion;
}

ScreenRect NormalisedArea(const RAWMOUSE& report) {
    if (report.usFlags & MOUSE_VIRTUAL_DESKTOP) {
        const int left = GetSystemMetrics(SM_XVIRTUALSCREEN);
        const int top = GetSystemMetrics(SM_YVIRTUALSCREEN);
        return {left, top, left + GetSystemMetrics(SM_CXVIRTUALSCREEN), top + GetSystemMetrics(SM_CYVIRTUALSCREEN)};
    }
    return {0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
}

}  // namespace zirvel::win32
