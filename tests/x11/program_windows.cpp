#include "program_windows.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>

#include <algorithm>
#include <set>
#include <thread>
#include <utility>

namespace zirvel_test {
namespace {

using namespace std::chrono_literals;

constexpr int kMainWindowMinimumWidth = 800;

bool Contains(const std::vector<Window>& windows, Window window) {
    return std::find(windows.begin(), windows.end(), window) != windows.end();
}

std::vector<Window> Children(Display* display, Window window) {
    Window root = 0;
    Window parent = 0;
    Window* children = nullptr;
    unsigned count = 0;
    std::vector<Window> found;
    if (XQueryTree(display, window, &root, &parent, &children, &count) && children) {
        found.assign(children, children + count);
        XFree(children);
    }
    return found;
}

// Mapped top-level windows that bypass the window manager: menus and tooltips.
std::vector<Window> MappedPopups(XConnection& user) {
    std::vector<Window> popups;
    for (Window window : Children(user.Get(), user.Root())) {
        XWindowAttributes attributes{};
        if (XGetWindowAttributes(user.Get(), window, &attributes) && attributes.override_redirect &&
            attributes.map_state == IsViewable) {
            popups.push_back(window);
        }
    }
    return popups;
}

}  // namespace

Window FindMainWindow(XConnection& user, std::chrono::milliseconds timeout) {
    Window window = 0;
    WaitUntil(
        [&] {
            for (Window candidate : user.FindWindows("Zirvel")) {
                if (user.IsMapped(candidate) && user.WindowGeometry(candidate).width >= kMainWindowMinimumWidth) {
                    window = candidate;
                }
            }
            return window != 0;
        },
        timeout);
    return window;
}

Window WaitForMessageBox(XConnection& user, const std::vector<Window>& before, std::chrono::milliseconds timeout) {
    Window box = 0;
    WaitUntil(
        [&] {
            for (Window window : user.FindWindows("Zirvel")) {
                if (Contains(before, window) || !user.IsMapped(window)) continue;
                const int width = user.WindowGeometry(window).width;
                if (width > 100 && width < kMainWindowMinimumWidth) box = window;
            }
            return box != 0;
        },
        timeout);
    return box;
}

void PressCloseButton(XConnection& user, Window window) {
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = window;
    event.xclient.message_type = XInternAtom(user.Get(), "WM_PROTOCOLS", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = static_cast<long>(XInternAtom(user.Get(), "WM_DELETE_WINDOW", False));
    event.xclient.data.l[1] = CurrentTime;
    XSendEvent(user.Get(), window, False, NoEventMask, &event);
    XFlush(user.Get());
}

namespace {

// Whether a grid of 20 x 20 points of `area` shows more than two colours.
bool LooksPainted(XConnection& user, const XConnection::Geometry& area) {
    std::set<std::uint32_t> colours;
    for (int row = 0; row < 20; ++row) {
        for (int column = 0; column < 20; ++column) {
            colours.insert(user.ScreenPixel(area.x + (2 * column + 1) * area.width / 40,
                                            area.y + (2 * row + 1) * area.height / 40));
            if (colours.size() > 2) return true;
        }
    }
    return false;
}

}  // namespace

std::uint64_t SettledChecksum(XConnection& user, const XConnection::Geometry& area, std::chrono::milliseconds timeout) {
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    WaitUntil([&] { return LooksPainted(user, area); }, timeout, 20ms);
    std::uint64_t picture = 0;
    std::uint64_t previous = 1;
    WaitUntil(
        [&] {
            std::this_thread::sleep_for(100ms);
            picture = user.ScreenChecksum(area);
            return std::exchange(previous, picture) == picture;
        },
        std::max(std::chrono::duration_cast<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now()),
                 std::chrono::milliseconds(200)));
    return picture;
}

XConnection::Geometry FilledBounds(XConnection& user, const XConnection::Geometry& wanted, std::uint32_t colour,
                                   int minimumRun) {
    const XConnection::Geometry area = user.OnScreen(wanted);
    XConnection::Geometry bounds;
    if (area.width == 0 || area.height == 0) return bounds;
    XImage* image = XGetImage(user.Get(), user.Root(), area.x, area.y, static_cast<unsigned>(area.width),
                              static_cast<unsigned>(area.height), AllPlanes, ZPixmap);
    if (!image) return bounds;
    int left = area.width, top = area.height, right = -1, bottom = -1;
    for (int y = 0; y < area.height; ++y) {
        int runStart = 0;
        for (int x = 0; x <= area.width; ++x) {
            if (x < area.width && (XGetPixel(image, x, y) & 0xFFFFFFu) == colour) continue;
            if (x - runStart >= minimumRun) {
                left = std::min(left, runStart);
                right = std::max(right, x - 1);
                top = std::min(top, y);
                bottom = std::max(bottom, y);
            }
            runStart = x + 1;
        }
    }
    XDestroyImage(image);
    if (right < 0) return bounds;
    return {area.x + left, area.y + top, right - left + 1, bottom - top + 1};
}

NotificationArea::NotificationArea(const std::string& display)
    : tray_(std::make_unique<ChildProcess>(
          std::vector<std::string>{"trayer", "--edge", "bottom", "--align", "right", "--widthtype", "request",
                                   "--height", "32", "--transparent", "false"},
          std::vector<std::string>{"DISPLAY=" + display}, "/dev/null")) {}

bool NotificationArea::Running() { return tray_->Alive(); }

Window NotificationArea::WaitForIcon(XConnection& user, std::chrono::milliseconds timeout) {
    Window icon = 0;
    WaitUntil(
        [&] {
            // The panel's children hold the docked icons, each a mapped window without children.
            for (Window panel : user.FindWindows("panel")) {
                std::vector<Window> pending = Children(user.Get(), panel);
                while (!pending.empty() && icon == 0) {
                    const Window window = pending.back();
                    pending.pop_back();
                    const std::vector<Window> children = Children(user.Get(), window);
                    if (children.empty() && user.IsMapped(window) && user.WindowGeometry(window).width >= 16) {
                        icon = window;
                    }
                    pending.insert(pending.end(), children.begin(), children.end());
                }
            }
            return icon != 0;
        },
        timeout, 50ms);
    if (icon == 0) return 0;
    // Docked where it stays: the panel grows and moves as icons dock.
    XConnection::Geometry last{};
    WaitUntil(
        [&] {
            const XConnection::Geometry now = user.WindowGeometry(icon);
            const bool settled = now.x == last.x && now.y == last.y && now.width == last.width;
            last = now;
            return settled;
        },
        timeout, 200ms);
    return icon;
}

Window NotificationArea::OpenIconMenu(XConnection& user, std::chrono::milliseconds timeout, std::string* trail) {
    const auto start = std::chrono::steady_clock::now();
    const auto note = [&](const std::string& line) {
        if (!trail) return;
        const auto elapsed = std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start);
        *trail += std::to_string(elapsed.count()) + " ms: " + line + "\n";
    };
    Window menu = 0;
    WaitUntil(
        [&] {
            const std::vector<Window> before = MappedPopups(user);
            // Found again each time: a program may dock its icon anew.
            const Window icon = WaitForIcon(user, 2000ms);
            if (icon == 0) {
                note("no icon docked");
                return false;
            }
            const auto [x, y] = Centre(user.WindowGeometry(icon));
            user.MoveMouseTo(x, y);
            std::this_thread::sleep_for(300ms);
            XTestFakeButtonEvent(user.Get(), 3, True, CurrentTime);
            XSync(user.Get(), False);
            std::this_thread::sleep_for(150ms);
            XTestFakeButtonEvent(user.Get(), 3, False, CurrentTime);
            XSync(user.Get(), False);
            note("right click at " + std::to_string(x) + "," + std::to_string(y) + " with " +
                 std::to_string(before.size()) + " popups mapped");
            // A tooltip is a popup too, but far smaller than a menu.
            WaitUntil(
                [&] {
                    for (Window window : MappedPopups(user)) {
                        if (!Contains(before, window) && user.WindowGeometry(window).height >= 40) menu = window;
                    }
                    return menu != 0;
                },
                1500ms, 20ms);
            if (menu == 0) {
                note("no menu popped up");
                return false;
            }
            // Still open once the click is over and the menu has painted.
            SettledChecksum(user, user.WindowGeometry(menu));
            if (!user.IsMapped(menu)) {
                note("a menu popped up and closed again");
                menu = 0;
            }
            return menu != 0;
        },
        timeout, 0ms);
    return menu;
}

void ClickLastMenuItem(XConnection& user, Window menu) {
    const XConnection::Geometry area = user.WindowGeometry(menu);
    SettledChecksum(user, area);
    // Inside the last item whatever the theme's padding, clear of the frame.
    user.MoveMouseTo(area.x + area.width / 2, area.y + area.height - 16);
    std::this_thread::sleep_for(200ms);
    user.ClickButton(1);
}

}  // namespace zirvel_test
