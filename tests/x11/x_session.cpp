#include "x_session.h"

#include <X11/Xatom.h>
#include <X11/Xutil.h>
#include <X11/extensions/Xfixes.h>
#include <X11/extensions/XTest.h>

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <stdexcept>
#include <string_view>
#include <thread>

extern char** environ;

namespace zirvel_test {
namespace {

using namespace std::chrono_literals;

// A test that needs a program nobody installed stops at once and says
// which, instead of waiting for what the program would have done.
void RequireInstalled(const std::string& program) {
    if (program.find('/') != std::string::npos) {
        if (access(program.c_str(), X_OK) == 0) return;
    } else if (const char* path = std::getenv("PATH")) {
        std::string_view folders(path);
        while (!folders.empty()) {
            const std::size_t end = std::min(folders.find(':'), folders.size());
            const std::string candidate = std::string(folders.substr(0, end)) + "/" + program;
            if (access(candidate.c_str(), X_OK) == 0) return;
            folders.remove_prefix(std::min(end + 1, folders.size()));
        }
    }
    throw std::runtime_error("the program " + program +
                             " is not installed: scripts/install-dependencies.sh test installs it");
}

pid_t Spawn(const std::vector<std::string>& command, const std::vector<std::string>& environment,
            posix_spawn_file_actions_t* actions) {
    RequireInstalled(command.at(0));
    std::vector<char*> arguments;
    for (const std::string& argument : command) arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    // The given variables replace the inherited ones of the same name.
    const auto overridden = [&environment](const char* inherited) {
        const std::string_view name(inherited, std::strcspn(inherited, "="));
        return std::any_of(environment.begin(), environment.end(), [&name](const std::string& variable) {
            return variable.size() > name.size() && variable.compare(0, name.size(), name) == 0 &&
                   variable[name.size()] == '=';
        });
    };
    std::vector<char*> variables;
    for (char** variable = environ; *variable; ++variable) {
        if (!overridden(*variable)) variables.push_back(*variable);
    }
    for (const std::string& variable : environment) variables.push_back(const_cast<char*>(variable.c_str()));
    variables.push_back(nullptr);
    pid_t pid = -1;
    if (posix_spawnp(&pid, arguments[0], actions, nullptr, arguments.data(), variables.data()) != 0) return -1;
    return pid;
}

void StopProcess(pid_t pid) {
    if (pid <= 0) return;
    kill(pid, SIGTERM);
    for (int i = 0; i < 300; ++i) {
        if (waitpid(pid, nullptr, WNOHANG) == pid) return;
        std::this_thread::sleep_for(10ms);
    }
    kill(pid, SIGKILL);
    waitpid(pid, nullptr, 0);
}

void WriteText(const std::filesystem::path& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
}

}  // namespace

std::filesystem::path ScratchDirectory(const std::string& prefix) {
    static std::atomic<int> counter{0};
    std::filesystem::path path = std::filesystem::temp_directory_path() /
                                 (prefix + std::to_string(getpid()) + "_" + std::to_string(++counter));
    std::filesystem::remove_all(path);
    std::filesystem::create_directories(path);
    std::filesystem::permissions(path, std::filesystem::perms::owner_all);
    return path;
}

// --- PrivateXServer ------------------------------------------------------------

PrivateXServer::PrivateXServer(int width, int height, const std::filesystem::path& framebufferFolder) {
    int displayPipe[2];
    if (pipe(displayPipe) != 0) return;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addclose(&actions, displayPipe[0]);
    posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
    const std::string screen = std::to_string(width) + "x" + std::to_string(height) + "x24";
    // -noreset: without it Xvfb resets when its last client leaves and
    // refuses a client that connects at that moment.
    std::vector<std::string> command = {"Xvfb", "-displayfd", std::to_string(displayPipe[1]), "-noreset", "-screen",
                                        "0", screen, "-nolisten", "tcp", "+extension", "RANDR"};
    if (!framebufferFolder.empty()) {
        command.push_back("-fbdir");
        command.push_back(framebufferFolder.string());
    }
    pid_ = Spawn(command, {}, &actions);
    posix_spawn_file_actions_destroy(&actions);
    close(displayPipe[1]);
    // Xvfb writes its display number once it accepts connections.
    std::string number;
    char c = 0;
    while (read(displayPipe[0], &c, 1) == 1 && c != '\n') number += c;
    close(displayPipe[0]);
    if (!number.empty()) name_ = ":" + number;
}

PrivateXServer::~PrivateXServer() { StopProcess(pid_); }

// --- ChildProcess -----------------------------------------------------------------

ChildProcess::ChildProcess(const std::vector<std::string>& command, const std::vector<std::string>& environment,
                           const std::filesystem::path& output) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, output.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0644);
    posix_spawn_file_actions_adddup2(&actions, 1, 2);
    pid_ = Spawn(command, environment, &actions);
    posix_spawn_file_actions_destroy(&actions);
}

ChildProcess::~ChildProcess() {
    if (!exitCode_) StopProcess(pid_);
}

std::optional<int> ChildProcess::WaitForExit(std::chrono::milliseconds timeout) {
    if (exitCode_ || pid_ <= 0) return exitCode_;
    WaitUntil(
        [this] {
            int status = 0;
            if (waitpid(pid_, &status, WNOHANG) != pid_) return false;
            exitCode_ = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
            return true;
        },
        timeout);
    return exitCode_;
}

bool ChildProcess::Alive() { return pid_ > 0 && !WaitForExit(0ms); }

void ChildProcess::Terminate() {
    if (!exitCode_ && pid_ > 0) kill(pid_, SIGTERM);
}

bool WaitUntil(const std::function<bool()>& condition, std::chrono::milliseconds timeout,
               std::chrono::microseconds poll) {
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    for (;;) {
        if (condition()) return true;
        if (std::chrono::steady_clock::now() >= deadline) return false;
        std::this_thread::sleep_for(poll);
    }
}

// --- XConnection --------------------------------------------------------------------

namespace {

// Other programs' windows come and go while a test looks at them: a window
// that vanished between two requests is no reason to end the test process,
// which Xlib's default handler would do. Anything else is printed.
int TolerateVanishedWindows(Display* display, XErrorEvent* error) {
    if (error->error_code == BadWindow || error->error_code == BadDrawable || error->error_code == BadMatch) return 0;
    char text[256] = {};
    XGetErrorText(display, error->error_code, text, sizeof text);
    std::fprintf(stderr, "X error: %s (request %d)\n", text, error->request_code);
    return 0;
}

}  // namespace

XConnection::XConnection(const std::string& display) {
    XSetErrorHandler(TolerateVanishedWindows);
    display_ = XOpenDisplay(display.c_str());
}

XConnection::~XConnection() {
    if (display_) XCloseDisplay(display_);
}

void XConnection::PressKey(KeySym symbol) { PressKeycode(XKeysymToKeycode(display_, symbol)); }

void XConnection::PressKeycode(unsigned keycode) {
    XTestFakeKeyEvent(display_, keycode, True, CurrentTime);
    XTestFakeKeyEvent(display_, keycode, False, CurrentTime);
    XSync(display_, False);
}

std::optional<std::pair<unsigned, unsigned>> XConnection::MoveKeySymbol(KeySym symbol, KeySym left) {
    int minKeycode = 0;
    int maxKeycode = 0;
    XDisplayKeycodes(display_, &minKeycode, &maxKeycode);
    int perKeycode = 0;
    KeySym* map = XGetKeyboardMapping(display_, static_cast<KeyCode>(minKeycode), maxKeycode - minKeycode + 1,
                                      &perKeycode);
    if (!map) return std::nullopt;
    const auto typesNothing = [&](int keycode) {
        const KeySym* row = map + static_cast<std::ptrdiff_t>(keycode - minKeycode) * perKeycode;
        return std::all_of(row, row + perKeycode, [](KeySym s) { return s == NoSymbol; });
    };
    const unsigned oldKeycode = XKeysymToKeycode(display_, symbol);
    unsigned newKeycode = 0;
    for (int keycode = maxKeycode; keycode > minKeycode && newKeycode == 0; --keycode) {
        if (typesNothing(keycode)) newKeycode = static_cast<unsigned>(keycode);
    }
    XFree(map);
    if (oldKeycode == 0 || newKeycode == 0) return std::nullopt;
    KeySym moved = symbol;
    XChangeKeyboardMapping(display_, static_cast<int>(newKeycode), 1, &moved, 1);
    XChangeKeyboardMapping(display_, static_cast<int>(oldKeycode), 1, &left, 1);
    XSync(display_, False);
    return std::pair{oldKeycode, newKeycode};
}

namespace {

std::atomic<bool> accessRefused{false};

int NoteAccessRefused(Display* display, XErrorEvent* error) {
    if (error->error_code == BadAccess) {
        accessRefused = true;
        return 0;
    }
    return TolerateVanishedWindows(display, error);
}

}  // namespace

bool XConnection::KeyGrabbedByAnother(unsigned keycode) {
    XSync(display_, False);
    accessRefused = false;
    XErrorHandler previous = XSetErrorHandler(NoteAccessRefused);
    XGrabKey(display_, static_cast<int>(keycode), 0, Root(), False, GrabModeAsync, GrabModeAsync);
    XSync(display_, False);
    const bool refused = accessRefused;
    if (!refused) XUngrabKey(display_, static_cast<int>(keycode), 0, Root());
    XSync(display_, False);
    XSetErrorHandler(previous);
    return refused;
}

void XConnection::HoldKey(KeySym symbol, bool down) {
    XTestFakeKeyEvent(display_, XKeysymToKeycode(display_, symbol), down ? True : False, CurrentTime);
    XSync(display_, False);
}

void XConnection::MoveMouseBy(int dx, int dy) {
    XTestFakeRelativeMotionEvent(display_, dx, dy, CurrentTime);
    XSync(display_, False);
}

void XConnection::MoveMouseTo(int x, int y) {
    XTestFakeMotionEvent(display_, -1, x, y, CurrentTime);
    XSync(display_, False);
}

void XConnection::ClickButton(unsigned button) {
    XTestFakeButtonEvent(display_, button, True, CurrentTime);
    XTestFakeButtonEvent(display_, button, False, CurrentTime);
    XSync(display_, False);
}

std::pair<int, int> XConnection::Pointer() {
    Window root = 0;
    Window child = 0;
    int x = 0;
    int y = 0;
    int wx = 0;
    int wy = 0;
    unsigned mask = 0;
    XQueryPointer(display_, Root(), &root, &child, &x, &y, &wx, &wy, &mask);
    return {x, y};
}

Window XConnection::FindWindow(const std::string& name) {
    const std::vector<Window> windows = FindWindows(name);
    return windows.empty() ? 0 : windows.front();
}

std::vector<Window> XConnection::FindWindows(const std::string& name) {
    std::vector<Window> found;
    std::vector<Window> pending{Root()};
    for (std::size_t visited = 0; !pending.empty() && visited < 10000; ++visited) {
        const Window window = pending.back();
        pending.pop_back();
        XTextProperty text{};
        if (XGetWMName(display_, window, &text) && text.value) {
            char** list = nullptr;
            int count = 0;
            bool same = false;
            if (Xutf8TextPropertyToTextList(display_, &text, &list, &count) == Success && count > 0) {
                same = name == list[0];
                XFreeStringList(list);
            }
            XFree(text.value);
            if (same) found.push_back(window);
        }
        Window root = 0;
        Window parent = 0;
        Window* children = nullptr;
        unsigned count = 0;
        if (XQueryTree(display_, window, &root, &parent, &children, &count)) {
            for (unsigned i = 0; i < count; ++i) pending.push_back(children[i]);
            if (children) XFree(children);
        }
    }
    return found;
}

bool XConnection::IsMapped(Window window) {
    XWindowAttributes attributes{};
    return window != 0 && XGetWindowAttributes(display_, window, &attributes) && attributes.map_state == IsViewable;
}

XConnection::Geometry XConnection::WindowGeometry(Window window) {
    XWindowAttributes attributes{};
    Geometry geometry;
    if (!XGetWindowAttributes(display_, window, &attributes)) return geometry;
    Window child = 0;
    XTranslateCoordinates(display_, window, Root(), 0, 0, &geometry.x, &geometry.y, &child);
    geometry.width = attributes.width;
    geometry.height = attributes.height;
    return geometry;
}

std::uint32_t XConnection::ScreenPixel(int x, int y) {
    XImage* image = XGetImage(display_, Root(), x, y, 1, 1, AllPlanes, ZPixmap);
    if (!image) return 0xFFFFFFFF;
    const std::uint32_t pixel = static_cast<std::uint32_t>(XGetPixel(image, 0, 0)) & 0xFFFFFF;
    XDestroyImage(image);
    return pixel;
}

bool XConnection::PointerVisible() {
    XFixesCursorImage* image = XFixesGetCursorImage(display_);
    if (!image) return true;
    bool visible = false;
    for (int i = 0; i < image->width * image->height && !visible; ++i) visible = (image->pixels[i] >> 24) != 0;
    XFree(image);
    return visible;
}

XConnection::Geometry XConnection::OnScreen(const Geometry& area) {
    const int screenWidth = DisplayWidth(display_, DefaultScreen(display_));
    const int screenHeight = DisplayHeight(display_, DefaultScreen(display_));
    Geometry clipped;
    clipped.x = std::clamp(area.x, 0, screenWidth);
    clipped.y = std::clamp(area.y, 0, screenHeight);
    clipped.width = std::max(0, std::min(area.x + area.width, screenWidth) - clipped.x);
    clipped.height = std::max(0, std::min(area.y + area.height, screenHeight) - clipped.y);
    return clipped;
}

std::uint64_t XConnection::ScreenChecksum(const Geometry& wanted) {
    const Geometry area = OnScreen(wanted);
    if (area.width == 0 || area.height == 0) return 0;
    XImage* image = XGetImage(display_, Root(), area.x, area.y, static_cast<unsigned>(area.width),
                              static_cast<unsigned>(area.height), AllPlanes, ZPixmap);
    if (!image) return 0;
    std::uint64_t sum = 1469598103934665603ULL;  // FNV-1a over the pixels
    for (int y = 0; y < area.height; ++y) {
        for (int x = 0; x < area.width; ++x) {
            sum = (sum ^ static_cast<std::uint64_t>(XGetPixel(image, x, y))) * 1099511628211ULL;
        }
    }
    XDestroyImage(image);
    return sum;
}

// --- TestApplication ------------------------------------------------------------------

TestApplication::TestApplication(const std::string& display, int x, int y, int width, int height) {
    display_ = XOpenDisplay(display.c_str());
    if (!display_) return;
    XSetWindowAttributes attributes{};
    attributes.event_mask = KeyPressMask | KeyReleaseMask | ButtonPressMask | ButtonReleaseMask;
    attributes.background_pixel = 0x808080;
    window_ = XCreateWindow(display_, DefaultRootWindow(display_), x, y, static_cast<unsigned>(width),
                            static_cast<unsigned>(height), 0, CopyFromParent, InputOutput, CopyFromParent,
                            CWEventMask | CWBackPixel, &attributes);
    XStoreName(display_, window_, "Zirvel test application");
    XMapWindow(display_, window_);
    XSync(display_, False);
    WaitUntil([this] {
        XWindowAttributes state{};
        return XGetWindowAttributes(display_, window_, &state) && state.map_state == IsViewable;
    }, 2000ms);
}

TestApplication::~TestApplication() {
    if (display_) XCloseDisplay(display_);
}

void TestApplication::NameProgram(const std::string& instance, const std::string& className) {
    XClassHint hint{};
    std::string name = instance;
    std::string kind = className;
    hint.res_name = name.data();
    hint.res_class = kind.data();
    XSetClassHint(display_, window_, &hint);
    const unsigned long pid = static_cast<unsigned long>(getpid());
    XChangeProperty(display_, window_, XInternAtom(display_, "_NET_WM_PID", False), XA_CARDINAL, 32, PropModeReplace,
                    reinterpret_cast<const unsigned char*>(&pid), 1);
    XSync(display_, False);
}

void TestApplication::Focus() {
    XSetInputFocus(display_, window_, RevertToParent, CurrentTime);
    XSync(display_, False);
}

Window TestApplication::FocusedWindow() {
    Window focus = 0;
    int revert = 0;
    XGetInputFocus(display_, &focus, &revert);
    return focus;
}

const std::vector<TestApplication::Received>& TestApplication::Events() {
    while (display_ && XPending(display_) > 0) {
        XEvent event;
        XNextEvent(display_, &event);
        Received received{event.type, 0, 0, 0, 0, 0, std::chrono::steady_clock::now()};
        if (event.type == KeyPress || event.type == KeyRelease) {
            received.symbol = XLookupKeysym(&event.xkey, 0);
            received.time = event.xkey.time;
        } else if (event.type == ButtonPress || event.type == ButtonRelease) {
            received.button = event.xbutton.button;
            received.x = event.xbutton.x_root;
            received.y = event.xbutton.y_root;
            received.time = event.xbutton.time;
        } else {
            continue;
        }
        events_.push_back(received);
    }
    return events_;
}

bool TestApplication::WaitForEvents(int type, std::size_t count, std::chrono::milliseconds timeout) {
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    while (Events(type).size() < count) {
        if (std::chrono::steady_clock::now() >= deadline) return false;
        std::this_thread::sleep_for(200us);
    }
    return true;
}

std::vector<TestApplication::Received> TestApplication::Events(int type) {
    std::vector<Received> matching;
    for (const Received& event : Events()) {
        if (event.type == type) matching.push_back(event);
    }
    return matching;
}

bool MoveWheelCursor(XConnection& user, const XConnection::Geometry& wheel, int dx, int dy, int x, int y,
                     int dpi) {
    // At 96 DPI the wheel is 588 x 460 with its centre at (294, 230); a
    // point just inside the arrow's tip is white.
    const auto scaled = [dpi](int length) { return (length * dpi + 48) / 96; };
    const std::uint64_t before = user.ScreenChecksum(wheel);
    user.MoveMouseBy(dx, dy);
    const int insideArrowX = wheel.x + scaled(294) + x + scaled(2);
    const int insideArrowY = wheel.y + scaled(230) + y + scaled(6);
    return WaitUntil(
        [&] { return user.ScreenChecksum(wheel) != before && user.ScreenPixel(insideArrowX, insideArrowY) == 0xFFFFFF; },
        std::chrono::milliseconds(3000));
}

// --- ProgramUnderTest --------------------------------------------------------------------

ProgramUnderTest::ProgramUnderTest(const std::string& display, const std::string& config, const std::string& wheels)
    : display_(display), directory_(ScratchDirectory("zirvel_x11_")) {
    // The program reads its files from the folder it lives in.
    std::filesystem::copy_file(ZIRVEL_PROGRAM, directory_ / "zirvel");
    // With the files the build puts beside it: themes, icons, the program's
    // icon and the speech recogniser library.
    const std::filesystem::path built = std::filesystem::path(ZIRVEL_PROGRAM).parent_path();
    for (const char* name : {"themes", "icons", "zirvel.ico", "libvosk.so"}) {
        if (std::filesystem::exists(built / name)) {
            std::filesystem::copy(built / name, directory_ / name, std::filesystem::copy_options::recursive);
        }
    }
    std::filesystem::create_directories(directory_ / "runtime");
    std::filesystem::permissions(directory_ / "runtime", std::filesystem::perms::owner_all);
    WriteText(directory_ / "config.json", config);
    if (!wheels.empty()) WriteText(directory_ / "default.json", wheels);
    WriteText(directory_ / "voice.json", R"({"actions": []})");
}

ProgramUnderTest::~ProgramUnderTest() {
    process_.reset();
    std::error_code ignored;
    std::filesystem::remove_all(directory_, ignored);
}

std::vector<std::string> ProgramUnderTest::Environment() const {
    // Its own runtime folder and its own front-end settings, never the
    // developer's. No Qt platform: the program chooses its own, as it does
    // for a user who set none.
    std::vector<std::string> variables{"DISPLAY=" + display_, "XDG_RUNTIME_DIR=" + (directory_ / "runtime").string(),
                                       "XDG_CONFIG_HOME=" + (directory_ / "settings").string(), "QT_QPA_PLATFORM="};
    // Never the developer's session bus either (the program switches its
    // accessibility on): a test that wants one passes its private bus.
    const bool ownBus = std::any_of(extraEnvironment_.begin(), extraEnvironment_.end(), [](const std::string& variable) {
        return variable.rfind("DBUS_SESSION_BUS_ADDRESS=", 0) == 0;
    });
    if (!ownBus) variables.push_back("DBUS_SESSION_BUS_ADDRESS=unix:path=" + (directory_ / "no-bus").string());
    variables.insert(variables.end(), extraEnvironment_.begin(), extraEnvironment_.end());
    return variables;
}

std::unique_ptr<ChildProcess> ProgramUnderTest::StartAnother() {
    return std::make_unique<ChildProcess>(std::vector<std::string>{(directory_ / "zirvel").string()}, Environment(),
                                          directory_ / ("output" + std::to_string(++started_) + ".txt"));
}

bool ProgramUnderTest::Start() {
    process_ = StartAnother();
    // The socket listens once the engine has started.
    return WaitUntil([this] { return std::filesystem::exists(directory_ / "runtime" / "ZirvelEngineRunning"); },
                     10000ms) &&
           process_->Alive();
}

bool ProgramUnderTest::Stop() {
    if (!process_) return false;
    process_->Terminate();
    const std::optional<int> code = process_->WaitForExit(std::chrono::milliseconds(10000));
    process_.reset();
    return code == std::optional<int>(0);
}

void ProgramUnderTest::SetFrontEndSetting(const std::string& key, const std::string& value) {
    std::filesystem::create_directories(directory_ / "settings" / "Zirvel");
    WriteText(directory_ / "settings" / "Zirvel" / "UI.conf", "[General]\n" + key + "=" + value + "\n");
}

int ProgramUnderTest::RunTool(const std::string& tool, const std::string& argument) {
    ChildProcess child({tool, argument}, Environment(), directory_ / "tools.txt");
    return child.WaitForExit(10000ms).value_or(-1);
}

int ProgramUnderTest::Activate(const std::filesystem::path& file) { return RunTool(ZIRVEL_ACTIVATE, file.string()); }

int ProgramUnderTest::Say(const std::string& phrase) { return RunTool(ZIRVEL_SAY, phrase); }

}  // namespace zirvel_test
