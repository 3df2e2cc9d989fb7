#include "platform/win32/mouse_hook_thread.h"

#include "platform/win32/injection_signature.h"

namespace zirvel::win32 {
namespace {

// The one hook thread of the process, for the hook procedure.
std::atomic<MouseHookThread*> current{nullptr};

// Commands to the thread; each is answered through the event.
constexpr UINT kInstallCommand = WM_APP + 1;
constexpr UINT kRemoveCommand = WM_APP + 2;
constexpr UINT kReinstallCommand = WM_APP + 3;

// Raw input saw the mouse this long ago and the hook has not run since:
// the hook had time to see the same event.
constexpr std::uint64_t kHookGrace = 250;

}  // namespace

HookVerdict JudgeMouseEvent(bool capturing, WPARAM message, ULONG_PTR extraInfo) {
    if (!capturing || extraInfo == kInjectedByZirvel) return HookVerdict::Pass;
    return message == WM_LBUTTONDOWN ? HookVerdict::SwallowAndSelect : HookVerdict::Swallow;
}

bool HookLooksRemoved(std::uint64_t rawTick, std::uint64_t hookTick, std::uint64_t now) {
    return rawTick > hookTick && now >= rawTick + kHookGrace;
}

MouseHookThread::MouseHookThread(HWND selectWindow, UINT selectMessage)
    : selectWindow_(selectWindow), selectMessage_(selectMessage) {
    answered_ = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    current = this;
    thread_ = std::thread([this] { Run(); });
    WaitForSingleObject(answered_, INFINITE);  // its message queue exists
}

MouseHookThread::~MouseHookThread() {
    if (const DWORD id = threadId_.load()) PostThreadMessageW(id, WM_QUIT, 0, 0);
    if (thread_.joinable()) thread_.join();
    if (current == this) current = nullptr;
    CloseHandle(answered_);
}

void MouseHookThread::Run() {
    MSG message;
    PeekMessageW(&message, nullptr, WM_USER, WM_USER, PM_NOREMOVE);  // makes the queue
    threadId_ = GetCurrentThreadId();
    SetEvent(answered_);
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        switch (message.message) {
            case kInstallCommand:
                Install();
                SetEvent(answered_);
                break;
            case kRemoveCommand:
                Remove();
                SetEvent(answered_);
                break;
            case kReinstallCommand:
                Remove();
                Install();
                SetEvent(answered_);
                break;
            default:
                DispatchMessageW(&message);
                break;
        }
    }
    Remove();
}

void MouseHookThread::Ask(UINT command) {
    const DWORD id = threadId_.load();
    if (id == 0 || !PostThreadMessageW(id, command, 0, 0)) return;
    WaitForSingleObject(answered_, INFINITE);
}

void MouseHookThread::Install() {
    if (!hook_) hook_ = SetWindowsHookExW(WH_MOUSE_LL, Procedure, GetModuleHandleW(nullptr), 0);
    installed_ = hook_ != nullptr;
}

void MouseHookThread::Remove() {
    if (hook_) UnhookWindowsHookEx(hook_);
    hook_ = nullptr;
    installed_ = false;
}

bool MouseHookThread::Capture() {
    capturing_ = true;
    if (!installed_) Ask(kInstallCommand);  // one that failed is tried again at the next show
    return installed_;
}

void MouseHookThread::Release() {
    capturing_ = false;
    Ask(kRemoveCommand);
}

void MouseHookThread::Reinstall() { Ask(kReinstallCommand); }

LRESULT CALLBACK MouseHookThread::Procedure(int code, WPARAM wParam, LPARAM lParam) {
    MouseHookThread* self = current.load();
    if (code == HC_ACTION && self) {
        self->lastEventTick_ = GetTickCount64();
        const auto* event = reinterpret_cast<const MSLLHOOKSTRUCT*>(lParam);
        switch (JudgeMouseEvent(self->capturing_.load(), wParam, event->dwExtraInfo)) {
            case HookVerdict::Pass:
                break;
            case HookVerdict::SwallowAndSelect:
                PostMessageW(self->selectWindow_, self->selectMessage_, 0, 0);
                return 1;
            case HookVerdict::Swallow:
                return 1;
        }
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

}  // namespace zirvel::win32
