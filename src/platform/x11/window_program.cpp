#include "platform/x11/window_program.h"

#include <unistd.h>

#include <string>

#include "config/utf.h"
#include "platform/x11/x_error_trap.h"

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>

namespace zirvel::x11 {
namespace {

// Parents above a focused child window: never more in practice.
constexpr int kMaxAncestors = 16;

std::u16string FromLatin1(const char* text) {
    std::u16string result;
    for (const char* c = text; c && *c; ++c) result += static_cast<char16_t>(static_cast<unsigned char>(*c));
    return result;
}

// One 32-bit property; items arrive as longs.
std::vector<unsigned long> ReadLongs(Display* display, Window window, Atom property, Atom type, long maxItems) {
    std::vector<unsigned long> values;
    Atom actualType = 0;
    int format = 0;
    unsigned long count = 0;
    unsigned long remaining = 0;
    unsigned char* data = nullptr;
    if (XGetWindowProperty(display, window, property, 0, maxItems, False, type, &actualType, &format, &count,
                           &remaining, &data) == Success &&
        data) {
        if (actualType == type && format == 32) {
            const auto* items = reinterpret_cast<const unsigned long*>(data);
            values.assign(items, items + count);
        }
        XFree(data);
    }
    return values;
}

bool ReadClassNames(Display* display, Window window, std::vector<std::u16string>& names) {
    XClassHint hint{};
    if (XGetClassHint(display, window, &hint) == 0) return false;
    for (char* name : {hint.res_name, hint.res_class}) {
        if (name && *name) names.push_back(FromLatin1(name));
        if (name) XFree(name);
    }
    return true;
}

ProgramIdentity ProgramOfTopLevel(Display* display, Window window, Atom pidAtom) {
    ProgramIdentity program;
    ReadClassNames(display, window, program.windowClasses);
    const std::vector<unsigned long> pid = ReadLongs(display, window, pidAtom, XA_CARDINAL, 1);
    if (pid.size() == 1) program.executable = ExecutableOfProcess(pid[0]);
    return program;
}

// The window itself or the nearest ancestor that carries WM_CLASS.
Window NamedWindowAbove(Display* display, Window window) {
    for (int depth = 0; depth < kMaxAncestors && window != 0; ++depth) {
        XClassHint hint{};
        if (XGetClassHint(display, window, &hint) != 0) {
            if (hint.res_name) XFree(hint.res_name);
            if (hint.res_class) XFree(hint.res_class);
            return window;
        }
        Window root = 0;
        Window parent = 0;
        Window* children = nullptr;
        unsigned count = 0;
        if (XQueryTree(display, window, &root, &parent, &children, &count) == 0) return 0;
        if (children) XFree(children);
        if (parent == root) return window;
        window = parent;
    }
    return window;
}

}  // namespace

// /proc/PID/exe names the executable even when the program changed its argv.
std::u16string ExecutableOfProcess(unsigned long pid) {
    if (pid == 0) return {};
    const std::string link = "/proc/" + std::to_string(pid) + "/exe";
    char target[4096];
    const ssize_t length = readlink(link.c_str(), target, sizeof target);
    if (length <= 0 || static_cast<std::size_t>(length) >= sizeof target) return {};
    return Utf8ToUtf16(std::string_view(target, static_cast<std::size_t>(length)));
}

ProgramIdentity ReadWindowProgram(Display* display, unsigned long window) {
    if (!display || window == 0) return {};
    XErrorTrap trap(display);  // the window may be gone by now
    const Window named = NamedWindowAbove(display, window);
    ProgramIdentity program;
    if (named != 0) program = ProgramOfTopLevel(display, named, XInternAtom(display, "_NET_WM_PID", False));
    if (!trap.Succeeded()) return {};
    return program;
}

}  // namespace zirvel::x11
