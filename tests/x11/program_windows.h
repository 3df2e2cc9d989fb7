// Zirvel's own top-level windows as a user meets them on the X server,
// whichever platform draws them (the Linux program, or Zirvel.exe under
// Wine): the main window, its message boxes, the close button, and the
// icon in the notification area with its menu.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "x_session.h"

namespace zirvel_test {

// The main window: called "Zirvel", like the program's message boxes, but
// the only one this wide; 0 when it does not show within `timeout`.
Window FindMainWindow(XConnection& user, std::chrono::milliseconds timeout = std::chrono::seconds(5));

// A message box titled "Zirvel" that is not among `before`; 0 when none
// shows within `timeout`.
Window WaitForMessageBox(XConnection& user, const std::vector<Window>& before, std::chrono::milliseconds timeout);

// The window manager's close button: WM_DELETE_WINDOW to the window.
void PressCloseButton(XConnection& user, Window window);

// A checksum of what the screen shows in `area`, once something is painted
// there (more than two colours) and two looks 100 ms apart agree (or after
// `timeout`). A window not painted yet is one colour for as long as it
// likes, and two looks at it agree too.
std::uint64_t SettledChecksum(XConnection& user, const XConnection::Geometry& area,
                              std::chrono::milliseconds timeout = std::chrono::seconds(5));

// The bounding box of the runs of at least `minimumRun` screen pixels in
// `area` that are exactly `colour` (0xRRGGBB): a filled button or row, not
// text drawn in that colour. Width 0 when there are none.
XConnection::Geometry FilledBounds(XConnection& user, const XConnection::Geometry& area, std::uint32_t colour,
                                   int minimumRun = 60);

// The centre of an area.
inline std::pair<int, int> Centre(const XConnection::Geometry& area) {
    return {area.x + area.width / 2, area.y + area.height / 2};
}

// A notification area (an XEmbed system tray) at the screen's bottom right,
// as a desktop panel would offer; programs dock their tray icons into it.
class NotificationArea {
public:
    explicit NotificationArea(const std::string& display);
    NotificationArea(const NotificationArea&) = delete;
    NotificationArea& operator=(const NotificationArea&) = delete;

    bool Running();
    // The first icon docked in it, once the panel has stopped moving it; 0
    // when none docks within `timeout`.
    Window WaitForIcon(XConnection& user, std::chrono::milliseconds timeout);

    // Right-clicks the icon as a person would, the pointer resting on it
    // first, until a menu pops up: the menu's window, 0 when none did. Each
    // try is noted in `trail`, for a failing test to print.
    Window OpenIconMenu(XConnection& user, std::chrono::milliseconds timeout, std::string* trail = nullptr);

private:
    std::unique_ptr<ChildProcess> tray_;
};

// Clicks a menu's last item once the menu has settled on the screen.
void ClickLastMenuItem(XConnection& user, Window menu);

}  // namespace zirvel_test
