// The pieces of a live X11 test: a private Xvfb, the real program started
// in a scratch program directory, a test application window that records
// what it receives, and a "user" who types and moves the mouse with XTest.
#pragma once

#include <X11/Xlib.h>

#include <sys/types.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <utility>
#include <string>
#include <vector>

namespace zirvel_test {

// A fresh folder of the test's own in the temporary folder.
std::filesystem::path ScratchDirectory(const std::string& prefix);

// Every program these start must be installed: starting one that is not
// throws std::runtime_error naming it and the command that installs it.

// Xvfb on a display number it picks itself (-displayfd), with RandR. With
// a framebuffer folder, Xvfb keeps its screen there as an XWD file: what a
// compositing manager really painted, which GetImage does not show.
class PrivateXServer {
public:
    PrivateXServer(int width, int height, const std::filesystem::path& framebufferFolder = {});
    ~PrivateXServer();
    PrivateXServer(const PrivateXServer&) = delete;
    PrivateXServer& operator=(const PrivateXServer&) = delete;

    bool Running() const { return pid_ > 0 && !name_.empty(); }
    const std::string& Name() const { return name_; }  // ":N"

private:
    pid_t pid_ = -1;
    std::string name_;
};


// A child process with its own environment; killed when destroyed.
class ChildProcess {
public:
    ChildProcess(const std::vector<std::string>& command, const std::vector<std::string>& environment,
                 const std::filesystem::path& output);
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    bool Started() const { return pid_ > 0; }
    pid_t Pid() const { return pid_; }
    // The exit code once it ended within `timeout`, else nothing.
    std::optional<int> WaitForExit(std::chrono::milliseconds timeout);
    bool Alive();
    void Terminate();

private:
    pid_t pid_ = -1;
    std::optional<int> exitCode_;
};

// Polls `condition` every `poll` for at most `timeout`.
bool WaitUntil(const std::function<bool()>& condition, std::chrono::milliseconds timeout,
               std::chrono::microseconds poll = std::chrono::milliseconds(10));

// One connection to the test display, for the test's own client and user.
class XConnection {
public:
    explicit XConnection(const std::string& display);
    ~XConnection();
    XConnection(const XConnection&) = delete;
    XConnection& operator=(const XConnection&) = delete;

    Display* Get() const { return display_; }
    Window Root() const { return DefaultRootWindow(display_); }

    // The user.
    void PressKey(KeySym symbol);
    void PressKeycode(unsigned keycode);
    void HoldKey(KeySym symbol, bool down);
    // The keyboard mapping changed as a layout switch or xmodmap would:
    // `symbol` moves to a keycode that typed nothing, its old keycode then
    // types `left`. The old and the new keycode, or nothing when the
    // mapping has no free keycode or no such symbol.
    std::optional<std::pair<unsigned, unsigned>> MoveKeySymbol(KeySym symbol, KeySym left);
    // Whether a client holds a grab of `keycode` without modifiers on the
    // root, seen from the BadAccess an attempt to grab it too gets.
    bool KeyGrabbedByAnother(unsigned keycode);
    void MoveMouseBy(int dx, int dy);
    void MoveMouseTo(int x, int y);
    void ClickButton(unsigned button);
    std::pair<int, int> Pointer();
    // Whether the pointer's current cursor image has any pixel that shows.
    bool PointerVisible();

    // Every window (at any depth) whose name is `name`.
    std::vector<Window> FindWindows(const std::string& name);
    // The first of them, 0 if none.
    Window FindWindow(const std::string& name);
    bool IsMapped(Window window);
    // Position on the root and size.
    struct Geometry {
        int x = 0;
        int y = 0;
        int width = 0;
        int height = 0;
    };
    Geometry WindowGeometry(Window window);
    // The part of `area` that lies on the screen (a window may reach past its edge).
    Geometry OnScreen(const Geometry& area);
    // The pixel of the root window (what the screen shows) as 0xRRGGBB.
    std::uint32_t ScreenPixel(int x, int y);
    // A checksum of a screen rectangle, to notice any redraw in it.
    std::uint64_t ScreenChecksum(const Geometry& area);

private:
    Display* display_ = nullptr;
};

// Plays raw motion (dx, dy) while a wheel shows in `wheel`, and waits at
// most 3 s until the wheel has drawn again with its virtual cursor's white
// arrow at (x, y) from the wheel's centre, where the motion should have put
// it: a click then picks what the wheel shows. `dpi` is that of the wheel
// (its centre and arrow scale with it; x and y are in screen pixels).
bool MoveWheelCursor(XConnection& user, const XConnection::Geometry& wheel, int dx, int dy, int x, int y,
                     int dpi = 96);

// A plain window that stands in for a game: it takes the focus and records
// the key and button events that reach it.
class TestApplication {
public:
    struct Received {
        int type;          // KeyPress, KeyRelease, ButtonPress, ButtonRelease
        KeySym symbol;     // keys
        unsigned button;   // buttons
        int x;             // buttons: root position
        int y;
        Time time;         // server milliseconds
        std::chrono::steady_clock::time_point arrived;
    };

    TestApplication(const std::string& display, int x, int y, int width, int height);
    ~TestApplication();

    Window Id() const { return window_; }
    // Names the window as a program's own would be: WM_CLASS, and
    // _NET_WM_PID of this process.
    void NameProgram(const std::string& instance, const std::string& className);
    void Focus();
    Window FocusedWindow();
    // Reads what arrived so far.
    const std::vector<Received>& Events();
    // Waits (polling every 0.2 ms) until `count` events of `type` came.
    bool WaitForEvents(int type, std::size_t count, std::chrono::milliseconds timeout);
    std::vector<Received> Events(int type);

private:
    Display* display_ = nullptr;
    Window window_ = 0;
    std::vector<Received> events_;
};

// The real program in a scratch program directory with its own runtime
// folder (lock and control socket).
class ProgramUnderTest {
public:
    ProgramUnderTest(const std::string& display, const std::string& config, const std::string& wheels);
    ~ProgramUnderTest();

    // Starts a (further) instance; true when its control socket answers.
    bool Start();
    std::unique_ptr<ChildProcess> StartAnother();
    // Ends the running instance as the session would (SIGTERM); true when it
    // exited with 0 in time.
    bool Stop();
    // The front-end's own setting (QSettings "Zirvel"/"UI"), read at the next start.
    void SetFrontEndSetting(const std::string& key, const std::string& value);
    // Runs zirvel-activate or zirvel-say; their exit code.
    int Activate(const std::filesystem::path& file);
    int Say(const std::string& phrase);
    // Further variables for the program's environment ("NAME=value").
    void AddEnvironment(std::string variable) { extraEnvironment_.push_back(std::move(variable)); }
    const std::filesystem::path& Directory() const { return directory_; }
    ChildProcess* Process() const { return process_.get(); }

private:
    std::vector<std::string> Environment() const;
    int RunTool(const std::string& tool, const std::string& argument);

    std::string display_;
    std::filesystem::path directory_;
    std::unique_ptr<ChildProcess> process_;
    int started_ = 0;
    std::vector<std::string> extraEnvironment_;
};

}  // namespace zirvel_test
