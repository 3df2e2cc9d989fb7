#include "platform/x11/x11_platform.h"

// Qt first: Xlib's macros (None, KeyPress, Bool...) would break its headers.
#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QMessageBox>
#include <QSocketNotifier>
#include <QSystemTrayIcon>

#include <chrono>
#include <cstdio>
#include <thread>

#include "config/utf.h"
#include "core/dpi_scale.h"
#include "engine/monitor_choice.h"
#include "platform/x11/desktop_dpi.h"
#include "platform/x11/live_keyboard_layout.h"
#include "platform/x11/open_target.h"
#include "platform/x11/overlay_window.h"
#include "platform/x11/virtual_keys.h"
#include "platform/x11/window_program.h"
#include "platform/x11/x11_monitors.h"
#include "platform/x11/x_error_trap.h"

#include <X11/XKBlib.h>
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/extensions/XInput2.h>
#include <X11/extensions/XTest.h>
#include <X11/extensions/Xrandr.h>

namespace zirvel::x11 {
namespace {

// X button numbers of the physical buttons: left, right, middle, side 1, 2.
constexpr unsigned kXButtons[] = {1, 3, 2, 8, 9};

// The hot key counts with CapsLock and NumLock on, and with no other
// modifier.
constexpr unsigned kLockModifierSets[] = {0, LockMask, Mod2Mask, LockMask | Mod2Mask};

constexpr long kActiveWindowFromPager = 2;

QString ToQString(const std::u16string& text) {
    return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace

bool X11Platform::PrepareProcess() {
    XInitThreads();
    Display* probe = XOpenDisplay(nullptr);
    if (!probe) return false;
    XCloseDisplay(probe);
    return true;
}

X11Platform::X11Platform() {
    display_ = XOpenDisplay(nullptr);
    if (!display_) return;
    int event = 0;
    int error = 0;
    int major = 2;
    int minor = 2;
    int xtestEvent = 0;
    int xtestError = 0;
    int xtestMajor = 0;
    int xtestMinor = 0;
    if (!XQueryExtension(display_, "XInputExtension", &xinputOpcode_, &event, &error) ||
        XIQueryVersion(display_, &major, &minor) != Success ||
        !XTestQueryExtension(display_, &xtestEvent, &xtestError, &xtestMajor, &xtestMinor)) {
        return;
    }
    int randrError = 0;
    if (XRRQueryExtension(display_, &randrEventBase_, &randrError)) {
        XRRSelectInput(display_, DefaultRootWindow(display_), RRScreenChangeNotifyMask);
    }
    Bool detectable = False;
    XkbSetDetectableAutoRepeat(display_, True, &detectable);
    // A layout switch, a new keyboard or an uploaded keymap can move the hot
    // key to another keycode: these events say so.
    int xkbOpcode = 0;
    int xkbError = 0;
    int xkbMajor = XkbMajorVersion;
    int xkbMinor = XkbMinorVersion;
    if (XkbQueryExtension(display_, &xkbOpcode, &xkbEventBase_, &xkbError, &xkbMajor, &xkbMinor)) {
        constexpr unsigned kKeymapChanges = XkbNewKeyboardNotifyMask | XkbMapNotifyMask;
        XkbSelectEvents(display_, XkbUseCoreKbd, kKeymapChanges, kKeymapChanges);
    }
    activeWindowAtom_ = XInternAtom(display_, "_NET_ACTIVE_WINDOW", False);
    supportedAtom_ = XInternAtom(display_, "_NET_SUPPORTED", False);
    RefreshMonitors();
    InstallLiveKeyboardLayout(display_);

    notifier_ = new QSocketNotifier(ConnectionNumber(display_), QSocketNotifier::Read, this);
    connect(notifier_, &QSocketNotifier::activated, this, [this] { DrainEvents(); });
    // Replies can pull events into Xlib's queue without the socket becoming
    // readable again; look there before the loop sleeps.
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
            [this] { DrainEvents(); });
    wheelTimer_.setTimerType(Qt::PreciseTimer);
    connect(&wheelTimer_, &QTimer::timeout, this, [this] {
        if (events_) events_->OnWheelTimer();
    });
    scanTimer_.setTimerType(Qt::PreciseTimer);
    scanTimer_.setSingleShot(true);
    connect(&scanTimer_, &QTimer::timeout, this, [this] {
        if (events_) events_->OnScanTimer();
    });

    wheelWindow_ = std::make_unique<OverlayWindow>(QStringLiteral("Zirvel — koło"), OverlayWindow::Input::Taken);
    gridWindow_ = std::make_unique<OverlayWindow>(QStringLiteral("Zirvel — siatka"), OverlayWindow::Input::PassedThrough);
    ready_ = true;
}

X11Platform::~X11Platform() {
    wheelWindow_.reset();
    gridWindow_.reset();
    if (display_) {
        std::lock_guard lock(xLock_);
        if (captured_) EndPointerCapture();
        GrabHotKey(false);
        GrabKeyOnRoot(stepKeycode_, false);
        XCloseDisplay(display_);
    }
}

void X11Platform::SetPresentedCallback(Surface surface, std::function<void()> presented) {
    SurfaceWindow(surface).SetPaintedCallback(std::move(presented));
}

// --- Events ---------------------------------------------------------------------

void X11Platform::DrainEvents() {
    if (!display_) return;
    for (int handled = 0; handled < 10000; ++handled) {
        XEvent event;
        {
            std::lock_guard lock(xLock_);
            if (XPending(display_) == 0) return;
            XNextEvent(display_, &event);
        }
        HandleEvent(event);
    }
}

void X11Platform::HandleEvent(XEvent& event) {
    switch (event.type) {
        case KeyPress:
            if (event.xkey.keycode == hotKeycode_ && hotKeycode_ != 0) {
                // Auto-repeat sends presses without releases in between.
                const bool repeated = hotKeyDown_;
                hotKeyDown_ = true;
                if (!repeated && events_) events_->OnHotKey();
            } else if (event.xkey.keycode == stepKeycode_ && stepKeycode_ != 0) {
                const bool repeated = stepKeyDown_;
                stepKeyDown_ = true;
                if (!repeated && events_) events_->OnStepKey();
            }
            return;
        case KeyRelease:
            if (event.xkey.keycode == hotKeycode_) hotKeyDown_ = false;
            if (event.xkey.keycode == stepKeycode_) stepKeyDown_ = false;
            return;
        case MappingNotify: {
            std::lock_guard lock(xLock_);
            XRefreshKeyboardMapping(&event.xmapping);
            KeyboardMappingChanged();
            return;
        }
        case GenericEvent:
            HandleRawEvent(event);
            return;
        default:
            if (xkbEventBase_ != 0 && event.type == xkbEventBase_) {
                auto& xkb = reinterpret_cast<XkbEvent&>(event);
                if (xkb.any.xkb_type != XkbMapNotify && xkb.any.xkb_type != XkbNewKeyboardNotify) return;
                std::lock_guard lock(xLock_);
                if (xkb.any.xkb_type == XkbMapNotify) XkbRefreshKeyboardMapping(&xkb.map);
                KeyboardMappingChanged();
                return;
            }
            if (randrEventBase_ != 0 && event.type == randrEventBase_ + RRScreenChangeNotify) {
                std::lock_guard lock(xLock_);
                XRRUpdateConfiguration(&event);
                RefreshMonitors();
            }
            return;
    }
}

void X11Platform::HandleRawEvent(XEvent& event) {
    if (event.xcookie.extension != xinputOpcode_) return;
    int dx = 0;
    int dy = 0;
    bool leftDown = false;
    {
        std::lock_guard lock(xLock_);
        if (!XGetEventData(display_, &event.xcookie)) return;
        const auto* raw = static_cast<const XIRawEvent*>(event.xcookie.data);
        if (event.xcookie.evtype == XI_RawMotion) {
            // raw_values hold one value per set bit of the mask, in order:
            // unaccelerated device counts.
            const double* value = raw->raw_values;
            for (int axis = 0; axis < raw->valuators.mask_len * 8 && axis < 2; ++axis) {
                if (!XIMaskIsSet(raw->valuators.mask, axis)) continue;
                (axis == 0 ? dx : dy) = static_cast<int>(*value++);
            }
        } else if (event.xcookie.evtype == XI_RawButtonPress) {
            leftDown = raw->detail == 1;
        }
        XFreeEventData(display_, &event.xcookie);
    }
    if (!captured_ || !events_) return;
    if (dx != 0 || dy != 0) events_->OnRawMotion(dx, dy);
    if (leftDown) events_->OnCapturedLeftButtonDown();
}

void X11Platform::SetEventSink(PlatformEvents* events) { events_ = events; }

// --- Threads and time ---------------------------------------------------------------

void X11Platform::Post(EngineMessage message) {
    auto shared = std::make_shared<EngineMessage>(std::move(message));
    QMetaObject::invokeMethod(
        this,
        [this, shared] {
            if (events_) events_->OnMessage(std::move(*shared));
        },
        Qt::QueuedConnection);
}

// Milliseconds of the monotonic clock since the system started, as
// GetTickCount64 counts: "long ago" (0) is long ago from the first moment,
// so the gaze may steer right after the program starts.
std::uint64_t X11Platform::TickCount() {
    return static_cast<std::uint64_t>(
        std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now().time_since_epoch())
            .count());
}

void X11Platform::Sleep(std::uint32_t milliseconds) {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

void X11Platform::RunDetached(std::function<void()> job) { std::thread(std::move(job)).detach(); }

void X11Platform::StartWheelTimer(std::uint32_t periodMilliseconds) {
    wheelTimer_.start(static_cast<int>(periodMilliseconds));
}

void X11Platform::StopWheelTimer() { wheelTimer_.stop(); }

void X11Platform::StartScanTimer(std::uint32_t delayMilliseconds) {
    scanTimer_.start(static_cast<int>(delayMilliseconds));
}

void X11Platform::StopScanTimer() { scanTimer_.stop(); }

// --- Hot key ---------------------------------------------------------------------------

void X11Platform::GrabKeyOnRoot(unsigned keycode, bool grab) {
    if (keycode == 0) return;
    const ::Window root = DefaultRootWindow(display_);
    for (unsigned modifiers : kLockModifierSets) {
        if (grab) {
            XGrabKey(display_, static_cast<int>(keycode), modifiers, root, False, GrabModeAsync, GrabModeAsync);
        } else {
            XUngrabKey(display_, static_cast<int>(keycode), modifiers, root);
        }
    }
}

void X11Platform::GrabHotKey(bool grab) { GrabKeyOnRoot(hotKeycode_, grab); }

bool X11Platform::RegisterHotKey(const KeyCode& key) {
    if (!Ready() || !key.valid || key.isMouse) return false;
    std::lock_guard lock(xLock_);
    const KeySymbol symbol = KeySymbolForVirtualKey(key.vk);
    const bool grabbed = GrabHotKeyOn(symbol == kNoKeySymbol ? 0 : XKeysymToKeycode(display_, symbol));
    // The symbol a mapping change follows is that of the key held, if any.
    if (grabbed) hotKeySymbol_ = symbol;
    if (hotKeycode_ == 0) hotKeySymbol_ = kNoKeySymbol;
    return grabbed;
}

bool X11Platform::GrabHotKeyOn(unsigned keycode) {
    if (keycode == 0) return false;
    GrabHotKey(false);
    hotKeycode_ = keycode;
    hotKeyDown_ = false;
    XErrorTrap trap(display_);
    GrabHotKey(true);
    if (trap.Succeeded()) return true;
    // Another program holds the key (BadAccess): let go of what we got.
    GrabHotKey(false);
    hotKeycode_ = 0;
    return false;
}

void X11Platform::KeyboardMappingChanged() {
    InstallLiveKeyboardLayout(display_);
    if (hotKeySymbol_ == kNoKeySymbol) return;
    const unsigned keycode = XKeysymToKeycode(display_, hotKeySymbol_);
    if (keycode == hotKeycode_) return;
    // The key moved: the grab follows it, and the old keycode types again.
    // The symbol is kept, so a later mapping that has the key again grabs it.
    GrabHotKey(false);
    hotKeycode_ = 0;
    if (!GrabHotKeyOn(keycode)) {
        std::fprintf(stderr, "Zirvel: the new keyboard mapping has no hot key, or another program holds it\n");
    }
}

void X11Platform::UnregisterHotKey() {
    if (!Ready()) return;
    std::lock_guard lock(xLock_);
    XErrorTrap trap(display_);
    GrabHotKey(false);
    hotKeycode_ = 0;
    hotKeySymbol_ = kNoKeySymbol;
    hotKeyDown_ = false;
}

bool X11Platform::RegisterStepKey(const KeyCode& key) {
    if (!Ready() || !key.valid || key.isMouse) return false;
    std::lock_guard lock(xLock_);
    const KeySymbol symbol = KeySymbolForVirtualKey(key.vk);
    const unsigned keycode = symbol == kNoKeySymbol ? 0 : XKeysymToKeycode(display_, symbol);
    if (keycode == 0 || keycode == hotKeycode_) return false;
    GrabKeyOnRoot(stepKeycode_, false);
    stepKeycode_ = keycode;
    stepKeyDown_ = false;
    XErrorTrap trap(display_);
    GrabKeyOnRoot(stepKeycode_, true);
    if (trap.Succeeded()) return true;
    GrabKeyOnRoot(stepKeycode_, false);  // another program holds it
    stepKeycode_ = 0;
    return false;
}

void X11Platform::UnregisterStepKey() {
    if (!Ready()) return;
    std::lock_guard lock(xLock_);
    XErrorTrap trap(display_);
    GrabKeyOnRoot(stepKeycode_, false);
    stepKeycode_ = 0;
    stepKeyDown_ = false;
}

// --- Pointer ------------------------------------------------------------------------------

void X11Platform::BeginPointerCapture(ScreenPoint pinned) {
    if (!Ready()) return;
    std::lock_guard lock(xLock_);
    const ::Window root = DefaultRootWindow(display_);
    if (pinWindow_ == 0) {
        XSetWindowAttributes attributes{};
        attributes.override_redirect = True;
        pinWindow_ = XCreateWindow(display_, root, pinned.x, pinned.y, 1, 1, 0, 0, InputOnly, CopyFromParent,
                                   CWOverrideRedirect, &attributes);
        // No pointer while the wheel shows (without a window manager the
        // server's "×" would sit in the wheel's hole): the virtual cursor
        // is drawn in the wheel's picture.
        const char noBits[1] = {0};
        const Pixmap empty = XCreateBitmapFromData(display_, pinWindow_, noBits, 1, 1);
        XColor black{};
        blankCursor_ = XCreatePixmapCursor(display_, empty, empty, &black, &black, 0, 0);
        XFreePixmap(display_, empty);
        XDefineCursor(display_, pinWindow_, blankCursor_);
    }
    XMoveWindow(display_, pinWindow_, pinned.x, pinned.y);
    XMapRaised(display_, pinWindow_);
    XWarpPointer(display_, None, root, 0, 0, 0, 0, pinned.x, pinned.y);

    unsigned char maskBits[XIMaskLen(XI_LASTEVENT)] = {};
    XISetMask(maskBits, XI_RawMotion);
    XISetMask(maskBits, XI_RawButtonPress);
    XIEventMask mask{XIAllMasterDevices, sizeof maskBits, maskBits};
    XISelectEvents(display_, root, &mask, 1);

    // The grab sends every physical pointer event to the pin window and
    // keeps the pointer inside it.
    // A refused grab (another program holds one) is not fatal: raw motion
    // still steers the wheel.
    XGrabPointer(display_, pinWindow_, False, ButtonPressMask | ButtonReleaseMask | PointerMotionMask,
                 GrabModeAsync, GrabModeAsync, pinWindow_, blankCursor_, CurrentTime);
    XFlush(display_);
    captured_ = true;
}

void X11Platform::EndPointerCapture() {
    if (!Ready()) return;
    std::lock_guard lock(xLock_);
    captured_ = false;
    XUngrabPointer(display_, CurrentTime);
    unsigned char maskBits[XIMaskLen(XI_LASTEVENT)] = {};
    XIEventMask mask{XIAllMasterDevices, sizeof maskBits, maskBits};
    XISelectEvents(display_, DefaultRootWindow(display_), &mask, 1);
    if (pinWindow_ != 0) XUnmapWindow(display_, pinWindow_);
    XFlush(display_);
}

ScreenPoint X11Platform::CursorPosition() {
    if (!Ready()) return {};
    std::lock_guard lock(xLock_);
    ::Window rootReturn = 0;
    ::Window child = 0;
    int x = 0;
    int y = 0;
    int windowX = 0;
    int windowY = 0;
    unsigned buttons = 0;
    XQueryPointer(display_, DefaultRootWindow(display_), &rootReturn, &child, &x, &y, &windowX, &windowY, &buttons);
    return {x, y};
}

void X11Platform::SetCursorPosition(ScreenPoint point) {
    if (!Ready()) return;
    std::lock_guard lock(xLock_);
    XWarpPointer(display_, None, DefaultRootWindow(display_), 0, 0, 0, 0, point.x, point.y);
    XFlush(display_);
}

// --- Focus ---------------------------------------------------------------------------------

XWindow X11Platform::ActiveWindowLocked() {
    Atom type = 0;
    int format = 0;
    unsigned long count = 0;
    unsigned long remaining = 0;
    unsigned char* data = nullptr;
    ::Window active = 0;
    if (XGetWindowProperty(display_, DefaultRootWindow(display_), activeWindowAtom_, 0, 1, False, XA_WINDOW, &type,
                           &format, &count, &remaining, &data) == Success &&
        data) {
        if (type == XA_WINDOW && format == 32 && count == 1) active = *reinterpret_cast<::Window*>(data);
        XFree(data);
    }
    if (active != 0) return active;
    // No window manager tells us: the input focus itself.
    ::Window focus = 0;
    int revert = 0;
    XGetInputFocus(display_, &focus, &revert);
    return focus == PointerRoot ? 0 : focus;
}

WindowHandle X11Platform::ForegroundWindow() {
    if (!Ready()) return 0;
    std::lock_guard lock(xLock_);
    return ActiveWindowLocked();
}

ProgramIdentity X11Platform::ProgramOf(WindowHandle window) {
    if (!Ready() || window == 0) return {};
    std::lock_guard lock(xLock_);
    return ReadWindowProgram(display_, window);
}

bool X11Platform::IsWindow(WindowHandle window) {
    if (!Ready() || window == 0) return false;
    std::lock_guard lock(xLock_);
    XErrorTrap trap(display_);
    XWindowAttributes attributes;
    const Status status = XGetWindowAttributes(display_, window, &attributes);
    return trap.Succeeded() && status != 0;
}

void X11Platform::GiveForeground(WindowHandle window) {
    if (!Ready() || window == 0) return;
    std::lock_guard lock(xLock_);
    XErrorTrap trap(display_);
    // Ask the window manager, which raises and focuses the window, as a
    // pager would...
    XEvent request{};
    request.xclient.type = ClientMessage;
    request.xclient.window = window;
    request.xclient.message_type = activeWindowAtom_;
    request.xclient.format = 32;
    request.xclient.data.l[0] = kActiveWindowFromPager;
    request.xclient.data.l[1] = CurrentTime;
    XSendEvent(display_, DefaultRootWindow(display_), False, SubstructureRedirectMask | SubstructureNotifyMask,
               &request);
    // ...and set the focus directly for when there is none.
    XSetInputFocus(display_, window, RevertToParent, CurrentTime);
}

void X11Platform::TakeForegroundForWheel(WindowHandle) {
    if (!Ready()) return;
    const WindowHandle wheel = wheelWindow_->winId();
    std::lock_guard lock(xLock_);
    XErrorTrap trap(display_);
    XSetInputFocus(display_, wheel, RevertToParent, CurrentTime);
}

// --- Screens ------------------------------------------------------------------------------

void X11Platform::RefreshMonitors() {
    std::vector<ScreenRect> monitors = ReadMonitors(display_);
    std::lock_guard lock(monitorsLock_);
    monitors_ = std::move(monitors);
}

ScreenRect X11Platform::MonitorRect(ScreenPoint point, bool nearest) {
    std::lock_guard lock(monitorsLock_);
    if (monitors_.empty()) return {};
    return ChooseMonitor(monitors_, point, nearest);
}

ScreenRect X11Platform::ForegroundMonitorRect() {
    if (!Ready()) return {};
    ScreenPoint centre{};
    bool found = false;
    {
        std::lock_guard lock(xLock_);
        const ::Window active = ActiveWindowLocked();
        XErrorTrap trap(display_);
        XWindowAttributes attributes;
        ::Window child = 0;
        if (active != 0 && XGetWindowAttributes(display_, active, &attributes) &&
            XTranslateCoordinates(display_, active, DefaultRootWindow(display_), attributes.width / 2,
                                  attributes.height / 2, &centre.x, &centre.y, &child)) {
            found = trap.Succeeded();
        }
    }
    std::lock_guard lock(monitorsLock_);
    if (monitors_.empty()) return {};
    return found ? ChooseMonitor(monitors_, centre, true) : monitors_.front();
}

ScreenPoint X11Platform::PrimaryScreenSize() {
    std::lock_guard lock(monitorsLock_);
    if (monitors_.empty()) return {};
    return {monitors_.front().Width(), monitors_.front().Height()};
}

std::uint32_t X11Platform::MonitorDpi(ScreenPoint) {
    if (!Ready()) return kDefaultDpi;
    std::lock_guard lock(xLock_);
    // Read anew at every show: the desktop's settings change it while we run.
    Atom type = 0;
    int format = 0;
    unsigned long count = 0;
    unsigned long remaining = 0;
    unsigned char* data = nullptr;
    constexpr long kLongestDatabase = 1 << 20;  // in 32-bit units
    if (XGetWindowProperty(display_, DefaultRootWindow(display_), XA_RESOURCE_MANAGER, 0, kLongestDatabase, False,
                           XA_STRING, &type, &format, &count, &remaining, &data) != Success) {
        return kDefaultDpi;
    }
    const std::uint32_t dpi = type == XA_STRING && format == 8 && data
                                  ? DpiFromResources({reinterpret_cast<const char*>(data), count})
                                  : kDefaultDpi;
    if (data) XFree(data);
    return dpi;
}

// --- Overlay surfaces -------------------------------------------------------------------

OverlayWindow& X11Platform::SurfaceWindow(Surface surface) {
    return surface == Surface::Wheel ? *wheelWindow_ : *gridWindow_;
}

void X11Platform::PlaceSurface(Surface surface, ScreenRect rect) {
    if (!Ready()) return;
    SurfaceWindow(surface).Place(rect);
}

void X11Platform::ShowSurface(Surface surface) {
    if (!Ready()) return;
    OverlayWindow& window = SurfaceWindow(surface);
    window.show();
    window.raise();
}

void X11Platform::HideSurface(Surface surface) {
    if (!Ready()) return;
    SurfaceWindow(surface).hide();
}

void X11Platform::PresentPicture(Surface surface, ScreenPoint position, const Picture& picture) {
    if (!Ready() || picture.width <= 0 || picture.height <= 0) return;
    SurfaceWindow(surface).ShowPicture(position, picture);
}

ScreenRect X11Platform::SurfaceRect(Surface surface) {
    if (!Ready()) return {};
    return SurfaceWindow(surface).Placed();
}

// --- Injection ------------------------------------------------------------------------------

// A key or button the system has no code for is left out, not refused.
bool X11Platform::InjectKey(std::uint16_t vk, bool, bool press) {
    if (!Ready()) return false;
    const KeySymbol symbol = KeySymbolForVirtualKey(vk);
    if (symbol == kNoKeySymbol) return true;
    std::lock_guard lock(xLock_);
    const unsigned keycode = XKeysymToKeycode(display_, symbol);
    if (keycode == 0) return true;  // the layout has no such key
    const bool sent = XTestFakeKeyEvent(display_, keycode, press ? True : False, CurrentTime) != 0;
    XFlush(display_);
    return sent;
}

bool X11Platform::InjectMouseButton(std::uint32_t button, bool press) {
    if (!Ready()) return false;
    if (button >= std::size(kXButtons)) return true;
    std::lock_guard lock(xLock_);
    const bool sent = XTestFakeButtonEvent(display_, kXButtons[button], press ? True : False, CurrentTime) != 0;
    XFlush(display_);
    return sent;
}

bool X11Platform::MouseButtonsSwapped() {
    if (!Ready()) return false;
    std::lock_guard lock(xLock_);
    unsigned char map[3] = {1, 2, 3};
    return XGetPointerMapping(display_, map, 3) >= 1 && map[0] == 3;
}

void X11Platform::OpenTarget(const std::u16string& target) {
    LaunchDetached(OpenCommandFor(Utf16ToUtf8(target)));
}

// --- Messages ---------------------------------------------------------------------------------

void X11Platform::ShowWarning(const std::u16string& text) {
    // Not modal: the engine goes on starting while the box waits.
    auto* box = new QMessageBox(QMessageBox::Warning, QStringLiteral("Zirvel"), ToQString(text), QMessageBox::Ok);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setObjectName(QStringLiteral("ZirvelWarning"));
    box->show();
}

// The Linux program always runs under the front-end, whose tray icon is the
// program's; the engine adds none of its own.
void X11Platform::AddTrayIcon(const std::u16string&) {}

void X11Platform::ShowTrayNotice(const std::u16string& title, const std::u16string& text, bool warning) {
    if (!QSystemTrayIcon::isSystemTrayAvailable()) {
        std::fprintf(stderr, "%s: %s\n", Utf16ToUtf8(title).c_str(), Utf16ToUtf8(text).c_str());
        return;
    }
    static QSystemTrayIcon* tray = new QSystemTrayIcon(QGuiApplication::windowIcon(), qApp);
    tray->show();
    tray->showMessage(ToQString(title), ToQString(text),
                      warning ? QSystemTrayIcon::Warning : QSystemTrayIcon::Information);
}

// The front-end's pages read the status on their own timer.
void X11Platform::StatusChanged() {}

}  // namespace zirvel::x11
