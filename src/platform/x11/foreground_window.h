// Which top-level window the user works in, read from the X server for the
// element scan: the window manager's active window, or the input focus when
// no window manager runs. Uses its own XCB connection, whose errors (a
// window that vanished meanwhile) come back with each reply instead of
// reaching Xlib's process-wide error handler.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <optional>
#include <vector>

#include "core/geometry.h"

struct xcb_connection_t;

namespace zirvel::x11 {

struct TopLevelWindow {
    std::uint32_t window = 0;  // the client window (never a frame)
    pid_t pid = 0;             // _NET_WM_PID; 0 when not set
    ScreenRect rect;           // on the root, without the frame
};

class ForegroundWindowReader {
public:
    // Connects to the display named by DISPLAY.
    ForegroundWindowReader();
    ~ForegroundWindowReader();
    ForegroundWindowReader(const ForegroundWindowReader&) = delete;
    ForegroundWindowReader& operator=(const ForegroundWindowReader&) = delete;

    bool Connected() const;
    // The foreground window when one is mapped.
    std::optional<TopLevelWindow> Foreground();
    // The first mapped window of type _NET_WM_WINDOW_TYPE_DOCK (a panel).
    std::optional<TopLevelWindow> Dock();

private:
    std::uint32_t Atom(const char* name);
    std::vector<std::uint32_t> ReadCardinals(std::uint32_t window, std::uint32_t property, std::uint32_t type);
    bool WindowManagerRuns();
    std::optional<TopLevelWindow> Describe(std::uint32_t window);
    std::uint32_t TopLevelOf(std::uint32_t window);

    xcb_connection_t* connection_ = nullptr;
    std::uint32_t root_ = 0;
};

}  // namespace zirvel::x11
