#include "platform/win32/window_program.h"

#include <memory>

namespace zirvel::win32 {
namespace {

struct HandleCloser {
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using ProcessHandle = std::unique_ptr<void, HandleCloser>;

std::u16string ImageOf(DWORD processId) {
    // Limited information is granted across integrity levels (an elevated
    // program's name reads too); another session's or a protected process
    // may still refuse it.
    const ProcessHandle process(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, processId));
    if (!process) return {};
    wchar_t path[MAX_PATH * 4];
    DWORD length = static_cast<DWORD>(std::size(path));
    if (!QueryFullProcessImageNameW(process.get(), 0, path, &length)) return {};
    return std::u16string(reinterpret_cast<const char16_t*>(path), length);
}

// What the taskbar lists: visible, not owned by another window, no tool window.
bool IsTaskWindow(HWND window) {
    if (!IsWindowVisible(window) || GetWindow(window, GW_OWNER) != nullptr) return false;
    return (GetWindowLongPtrW(window, GWL_EXSTYLE) & WS_EX_TOOLWINDOW) == 0;
}

BOOL CALLBACK CollectWindow(HWND window, LPARAM context) {
    auto& windows = *reinterpret_cast<std::vector<OpenWindow>*>(context);
    if (!IsTaskWindow(window)) return TRUE;
    OpenWindow open;
    open.program = ReadWindowProgram(window);
    if (open.program.executable.empty()) return TRUE;
    // Another process's caption is read from the system's copy, without a
    // message to the (perhaps hung) window.
    wchar_t title[512];
    const int length = GetWindowTextW(window, title, static_cast<int>(std::size(title)));
    open.title.assign(reinterpret_cast<const char16_t*>(title), static_cast<std::size_t>(length > 0 ? length : 0));
    windows.push_back(std::move(open));
    return TRUE;
}

}  // namespace

ProgramIdentity ReadWindowProgram(HWND window) {
    DWORD processId = 0;
    if (!window || !GetWindowThreadProcessId(window, &processId) || processId == 0) return {};
    ProgramIdentity program;
    program.executable = ImageOf(processId);
    return program;
}

std::vector<OpenWindow> ListOpenWindows() {
    std::vector<OpenWindow> windows;
    EnumWindows(&CollectWindow, reinterpret_cast<LPARAM>(&windows));
    return windows;
}

}  // namespace zirvel::win32
