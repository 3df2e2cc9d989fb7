// A stand-in for the game or application the user works in, for the live
// tests under Wine. It covers most of the screen, and writes one line per
// observation to the log file named on its command line:
//   key down|up vk=HH scan=HH ext=0|1 t=MS     keys as the window receives them, with
//                                               the time they were sent
//   button left|right|middle|x1|x2 down|up X Y t=MS   at screen X, Y
//   focus in|out                                keyboard focus of its window
//   foreground CLASS|none                       the window class in the foreground
//   engine up                                   the engine's main window exists
//   wheel shown L T R B t=MS | wheel hidden t=MS after=MS (between the two)
//   window Zirvel shown | window Zirvel hidden  the engine's help window
//   box TITLE|TEXT                              a message box (then closed with OK)
//   hotkey taken|refused                        with --take-hotkey
//   grid shown L T R B | grid hidden            the engine's grid and hint window
//   control ID clicked|focus                    with --controls: a control was clicked
//   raw DX DY | raw left down                   with --raw-input: raw mouse input it got
//   clip L T R B                                the cursor's clip, for report-clip
//   engine stalled | engine resumed             around stall-engine
// Lines of the file named by --commands are carried out once each:
//   post-main MESSAGE WPARAM LPARAM             posted to the engine's main window
//   sync-main N                                 sent to it (WM_NULL), then logged as
//                                               "main answered N": its thread has
//                                               finished what it was doing
//   inject-click                                a left click by SendInput, as assistive
//                                               software sends one (not marked as Zirvel's)
//   clip L T R B | clip none                    confines the cursor (a windowed game)
//   report-clip                                 logs the cursor's clip
//   stall-engine MS                             suspends the engine's GUI thread for MS
//                                               (a thread busy drawing or joining)
//   quit
// Options: --take-hotkey VK (hex) registers that hot key first, --swap-buttons
// swaps the mouse buttons for the session, --controls puts the controls of
// kControls on the window, --raw-input registers for raw mouse input as a
// game does (only while in the foreground; --raw-input-sink: always),
// --lock-engine-mutex holds the engine's mutex with a DACL that lets nobody
// open it, as an engine run as administrator holds it for a standard user
// ("engine mutex locked").
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <cstdio>
#include <cwchar>
#include <string>
#include <thread>
#include <vector>

namespace {

// The child controls of --controls, at client (= screen) coordinates. The
// disabled and the 7 pixel wide button are never numbered, so the others
// are hints 1 to 4 in this order.
struct ControlSpec {
    int id;
    const wchar_t* className;
    const wchar_t* text;
    DWORD style;
    RECT rect;
};
constexpr ControlSpec kControls[] = {
    {101, L"BUTTON", L"Pierwszy", BS_PUSHBUTTON, {100, 100, 220, 130}},
    {102, L"BUTTON", L"Wyłączony", BS_PUSHBUTTON | WS_DISABLED, {100, 150, 220, 180}},
    {103, L"BUTTON", L"", BS_PUSHBUTTON, {100, 200, 107, 230}},
    {104, L"EDIT", L"", WS_BORDER | ES_AUTOHSCROLL, {100, 250, 300, 274}},
    {105, L"BUTTON", L"Opcja", BS_AUTOCHECKBOX, {100, 300, 250, 324}},
    {106, L"BUTTON", L"Drugi", BS_PUSHBUTTON, {100, 350, 220, 380}},
};

FILE* logFile = nullptr;
std::wstring commandsPath;
std::size_t commandsDone = 0;
HWND self = nullptr;

void Log(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    std::vfprintf(logFile, format, arguments);
    va_end(arguments);
    std::fputc('\n', logFile);
    std::fflush(logFile);
}

std::string Utf8(const std::wstring& text) {
    std::string bytes;
    for (wchar_t c : text) {
        if (c == L'\n') {
            bytes += "\\n";
            continue;
        }
        char buffer[8];
        const int length = WideCharToMultiByte(CP_UTF8, 0, &c, 1, buffer, sizeof buffer, nullptr, nullptr);
        bytes.append(buffer, static_cast<std::size_t>(length > 0 ? length : 0));
    }
    return bytes;
}

std::wstring WindowText(HWND window) {
    wchar_t text[1024] = {};
    GetWindowTextW(window, text, 1024);
    return text;
}

// When the current message was made (GetMessageTime, 32 bits of the tick
// count) on GetTickCount64's scale: a key's time is when it was sent, not
// when this window came round to it.
unsigned long long MessageTime() {
    const unsigned long long now = GetTickCount64();
    unsigned long long made = (now & ~0xFFFFFFFFull) | static_cast<DWORD>(GetMessageTime());
    if (made > now) made -= 0x100000000ull;  // made before the low 32 bits wrapped
    return made;
}

void LogKey(const char* direction, WPARAM wParam, LPARAM lParam) {
    Log("key %s vk=%02X scan=%02X ext=%d t=%llu", direction, static_cast<unsigned>(wParam),
        static_cast<unsigned>((lParam >> 16) & 0xFF), static_cast<int>((lParam >> 24) & 1), MessageTime());
}

void LogButton(const char* button, const char* direction, LPARAM lParam) {
    POINT at{static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
    ClientToScreen(self, &at);
    Log("button %s %s %ld %ld t=%llu", button, direction, at.x, at.y, GetTickCount64());
}

// Message boxes titled "Zirvel": logged with their text, then answered OK.
BOOL CALLBACK LogMessageBox(HWND window, LPARAM) {
    wchar_t className[64] = {};
    GetClassNameW(window, className, 64);
    if (std::wcscmp(className, L"#32770") != 0 || !IsWindowVisible(window)) return TRUE;
    std::wstring text;
    for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        wchar_t childClass[64] = {};
        GetClassNameW(child, childClass, 64);
        if (_wcsicmp(childClass, L"Static") == 0 && !WindowText(child).empty()) text = WindowText(child);
    }
    Log("box %s|%s", Utf8(WindowText(window)).c_str(), Utf8(text).c_str());
    PostMessageW(window, WM_COMMAND, IDOK, 0);
    return TRUE;
}

// Suspends the thread of the engine's windows for `milliseconds`, then lets it go on.
void StallEngine(unsigned milliseconds) {
    const DWORD thread = GetWindowThreadProcessId(FindWindowW(L"RadialOverlayMain", nullptr), nullptr);
    const HANDLE handle = thread ? OpenThread(THREAD_SUSPEND_RESUME, FALSE, thread) : nullptr;
    if (!handle || SuspendThread(handle) == static_cast<DWORD>(-1)) {
        Log("engine not stalled");
        if (handle) CloseHandle(handle);
        return;
    }
    Log("engine stalled");
    std::thread([handle, milliseconds] {
        Sleep(milliseconds);
        ResumeThread(handle);
        CloseHandle(handle);
        Log("engine resumed");
    }).detach();
}

void OnRawInput(HRAWINPUT input) {
    RAWINPUT raw{};
    UINT size = sizeof raw;
    if (GetRawInputData(input, RID_INPUT, &raw, &size, sizeof(RAWINPUTHEADER)) == static_cast<UINT>(-1)) return;
    if (raw.header.dwType != RIM_TYPEMOUSE) return;
    if (raw.data.mouse.lLastX != 0 || raw.data.mouse.lLastY != 0) {
        Log("raw %ld %ld", raw.data.mouse.lLastX, raw.data.mouse.lLastY);
    }
    if (raw.data.mouse.usButtonFlags & RI_MOUSE_LEFT_BUTTON_DOWN) Log("raw left down");
}

void RunCommands() {
    if (commandsPath.empty()) return;
    FILE* file = _wfopen(commandsPath.c_str(), L"r");
    if (!file) return;
    std::vector<std::string> lines;
    char line[512];
    while (std::fgets(line, sizeof line, file)) lines.emplace_back(line);
    std::fclose(file);
    for (; commandsDone < lines.size(); ++commandsDone) {
        const std::string& command = lines[commandsDone];
        unsigned message = 0;
        unsigned long long wParam = 0;
        long long lParam = 0;
        if (std::sscanf(command.c_str(), "post-main %u %llu %lld", &message, &wParam, &lParam) == 3) {
            PostMessageW(FindWindowW(L"RadialOverlayMain", nullptr), message, static_cast<WPARAM>(wParam),
                         static_cast<LPARAM>(lParam));
        } else if (unsigned long long number = 0; std::sscanf(command.c_str(), "sync-main %llu", &number) == 1) {
            DWORD_PTR ignored = 0;
            if (SendMessageTimeoutW(FindWindowW(L"RadialOverlayMain", nullptr), WM_NULL, 0, 0, SMTO_NORMAL, 5000,
                                    &ignored) != 0) {
                Log("main answered %llu", number);
            }
        } else if (command.rfind("inject-click", 0) == 0) {
            INPUT click[2] = {};
            click[0].type = click[1].type = INPUT_MOUSE;
            click[0].mi.dwFlags = MOUSEEVENTF_LEFTDOWN;
            click[1].mi.dwFlags = MOUSEEVENTF_LEFTUP;
            Log("injected %u", SendInput(2, click, sizeof(INPUT)));
        } else if (RECT clip{}; std::sscanf(command.c_str(), "clip %ld %ld %ld %ld", &clip.left, &clip.top,
                                              &clip.right, &clip.bottom) == 4) {
            ClipCursor(&clip);
        } else if (command.rfind("clip none", 0) == 0) {
            ClipCursor(nullptr);
        } else if (command.rfind("report-clip", 0) == 0) {
            RECT clip{};
            GetClipCursor(&clip);
            Log("clip %ld %ld %ld %ld", clip.left, clip.top, clip.right, clip.bottom);
        } else if (unsigned milliseconds = 0; std::sscanf(command.c_str(), "stall-engine %u", &milliseconds) == 1) {
            StallEngine(milliseconds);
        } else if (command.rfind("quit", 0) == 0) {
            PostQuitMessage(0);
        }
    }
}

// What other windows show, polled every 5 ms.
struct Watched {
    HWND foreground = nullptr;
    bool engineUp = false;
    bool wheelShown = false;
    bool helpShown = false;
    bool gridShown = false;
    unsigned long long lastLook = 0;  // GetTickCount64 of the last look
};
Watched watched;

void NoteForeground(HWND foreground) {
    if (foreground == watched.foreground) return;
    wchar_t className[64] = {};
    if (foreground) GetClassNameW(foreground, className, 64);
    Log("foreground %s", foreground ? Utf8(className).c_str() : "none");
    watched.foreground = foreground;
}

// Every foreground change as the system reports it; the watch timer alone
// can miss one that lasts less than its period.
void CALLBACK OnForegroundEvent(HWINEVENTHOOK, DWORD, HWND window, LONG, LONG, DWORD, DWORD) {
    NoteForeground(window);
}

void Watch() {
    HWND main = FindWindowW(L"RadialOverlayMain", nullptr);
    if (main && !watched.engineUp) Log("engine up");
    watched.engineUp = main != nullptr;
    const bool helpShown = main && IsWindowVisible(main);
    if (helpShown != watched.helpShown) Log("window Zirvel %s", helpShown ? "shown" : "hidden");
    watched.helpShown = helpShown;
    HWND grid = FindWindowW(L"RadialOverlayGrid", nullptr);
    const bool gridShown = grid && IsWindowVisible(grid);
    if (gridShown && !watched.gridShown) {
        RECT rect{};
        GetWindowRect(grid, &rect);
        Log("grid shown %ld %ld %ld %ld t=%llu", rect.left, rect.top, rect.right, rect.bottom, GetTickCount64());
    } else if (!gridShown && watched.gridShown) {
        Log("grid hidden t=%llu", GetTickCount64());
    }
    watched.gridShown = gridShown;
    HWND wheel = FindWindowW(L"RadialOverlayWheel", nullptr);
    const bool wheelShown = wheel && IsWindowVisible(wheel);
    if (wheelShown && !watched.wheelShown) {
        RECT rect{};
        GetWindowRect(wheel, &rect);
        Log("wheel shown %ld %ld %ld %ld t=%llu", rect.left, rect.top, rect.right, rect.bottom, GetTickCount64());
    } else if (!wheelShown && watched.wheelShown) {
        // It went between the last look (after=) and this one (t=).
        Log("wheel hidden t=%llu after=%llu", GetTickCount64(), watched.lastLook);
    }
    watched.wheelShown = wheelShown;
    watched.lastLook = GetTickCount64();
    NoteForeground(GetForegroundWindow());
    EnumWindows(LogMessageBox, 0);
    RunCommands();
}

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_KEYDOWN:
        case WM_SYSKEYDOWN:
            LogKey("down", wParam, lParam);
            return 0;
        case WM_KEYUP:
        case WM_SYSKEYUP:
            LogKey("up", wParam, lParam);
            return 0;
        case WM_LBUTTONDOWN: LogButton("left", "down", lParam); return 0;
        case WM_LBUTTONUP: LogButton("left", "up", lParam); return 0;
        case WM_RBUTTONDOWN: LogButton("right", "down", lParam); return 0;
        case WM_RBUTTONUP: LogButton("right", "up", lParam); return 0;
        case WM_MBUTTONDOWN: LogButton("middle", "down", lParam); return 0;
        case WM_MBUTTONUP: LogButton("middle", "up", lParam); return 0;
        case WM_XBUTTONDOWN: LogButton(HIWORD(wParam) == XBUTTON1 ? "x1" : "x2", "down", lParam); return TRUE;
        case WM_XBUTTONUP: LogButton(HIWORD(wParam) == XBUTTON1 ? "x1" : "x2", "up", lParam); return TRUE;
        case WM_COMMAND:
            if (HIWORD(wParam) == BN_CLICKED) Log("control %u clicked t=%llu", LOWORD(wParam), GetTickCount64());
            if (HIWORD(wParam) == EN_SETFOCUS) Log("control %u focus t=%llu", LOWORD(wParam), GetTickCount64());
            return 0;
        case WM_SETFOCUS: Log("focus in"); return 0;
        case WM_KILLFOCUS: Log("focus out"); return 0;
        case WM_TIMER: Watch(); return 0;
        case WM_INPUT:
            OnRawInput(reinterpret_cast<HRAWINPUT>(lParam));
            return DefWindowProcW(window, message, wParam, lParam);
        case WM_DESTROY: PostQuitMessage(0); return 0;
        default: return DefWindowProcW(window, message, wParam, lParam);
    }
}

}  // namespace

int main() {
    int count = 0;
    LPWSTR* arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    if (count < 2) return 2;
    logFile = _wfopen(arguments[1], L"wb");
    if (!logFile) return 2;
    unsigned takeHotKey = 0;
    bool swapped = false;
    bool controls = false;
    DWORD rawInput = 0;
    bool wantsRawInput = false;
    bool lockEngineMutex = false;
    for (int i = 2; i < count; ++i) {
        if (std::wcscmp(arguments[i], L"--commands") == 0 && i + 1 < count) commandsPath = arguments[++i];
        else if (std::wcscmp(arguments[i], L"--take-hotkey") == 0 && i + 1 < count) takeHotKey = std::wcstoul(arguments[++i], nullptr, 16);
        else if (std::wcscmp(arguments[i], L"--controls") == 0) controls = true;
        else if (std::wcscmp(arguments[i], L"--raw-input") == 0) wantsRawInput = true;
        else if (std::wcscmp(arguments[i], L"--lock-engine-mutex") == 0) lockEngineMutex = true;
        else if (std::wcscmp(arguments[i], L"--raw-input-sink") == 0) {
            wantsRawInput = true;
            rawInput = RIDEV_INPUTSINK;
        }
        else if (std::wcscmp(arguments[i], L"--swap-buttons") == 0) {
            SwapMouseButton(TRUE);
            swapped = true;
        }
    }
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = Procedure;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.hbrBackground = reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(COLOR_WINDOW + 1));
    windowClass.lpszClassName = L"ZirvelTestApplication";
    RegisterClassW(&windowClass);
    self = CreateWindowExW(0, L"ZirvelTestApplication", L"Zirvel test application", WS_POPUP | WS_VISIBLE, 0, 0,
                           1280, 1000, nullptr, nullptr, windowClass.hInstance, nullptr);
    if (controls) {
        for (const ControlSpec& control : kControls) {
            CreateWindowExW(0, control.className, control.text, WS_CHILD | WS_VISIBLE | WS_TABSTOP | control.style,
                            control.rect.left, control.rect.top, control.rect.right - control.rect.left,
                            control.rect.bottom - control.rect.top, self,
                            reinterpret_cast<HMENU>(static_cast<INT_PTR>(control.id)), windowClass.hInstance, nullptr);
        }
    }
    if (lockEngineMutex) {
        // An empty DACL grants nothing: every other open is refused.
        static ACL nobody;
        static SECURITY_DESCRIPTOR descriptor;
        InitializeAcl(&nobody, sizeof nobody, ACL_REVISION);
        InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION);
        SetSecurityDescriptorDacl(&descriptor, TRUE, &nobody, FALSE);
        SECURITY_ATTRIBUTES attributes{sizeof attributes, &descriptor, FALSE};
        if (CreateMutexW(&attributes, TRUE, L"ZirvelEngineRunning")) Log("engine mutex locked");
    }
    if (wantsRawInput) {
        const RAWINPUTDEVICE mouse{1, 2, rawInput, self};
        Log("raw input %s", RegisterRawInputDevices(&mouse, 1, sizeof mouse) ? "registered" : "refused");
    }
    if (takeHotKey != 0) Log("hotkey %s", RegisterHotKey(self, 7, MOD_NOREPEAT, takeHotKey) ? "taken" : "refused");
    SetForegroundWindow(self);
    SetWinEventHook(EVENT_SYSTEM_FOREGROUND, EVENT_SYSTEM_FOREGROUND, nullptr, OnForegroundEvent, 0, 0,
                    WINEVENT_OUTOFCONTEXT);
    SetTimer(self, 1, 5, nullptr);
    Log("ready");
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    if (swapped) SwapMouseButton(FALSE);
    std::fclose(logFile);
    return 0;
}
