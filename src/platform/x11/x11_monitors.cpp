#include "platform/x11/x11_monitors.h"

#include <X11/extensions/Xrandr.h>

namespace zirvel::x11 {

std::vector<ScreenRect> ReadMonitors(Display* display) {
    std::vector<ScreenRect> monitors;
    int count = 0;
    if (XRRMonitorInfo* info = XRRGetMonitors(display, DefaultRootWindow(display), True, &count)) {
        for (int i = 0; i < count; ++i) {
            const ScreenRect rect{info[i].x, info[i].y, info[i].x + info[i].width, info[i].y + info[i].height};
            if (info[i].primary) {
                monitors.insert(monitors.begin(), rect);
            } else {
                monitors.push_back(rect);
            }
        }
        XRRFreeMonitors(info);
    }
    if (monitors.empty()) {
        const int screen = DefaultScreen(display);
        monitors.push_back({0, 0, DisplayWidth(display, screen), DisplayHeight(display, screen)});
    }
    return monitors;
}

}  // namespace zirvel::x11
