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
constexpr UINT kRemoveAfterReleaseCommand = WM_APP + 4;
// Posted by the hook procedure to its own thread: the held press was released.
constexpr UINT kPressReleased = WM_APP + 5;

// How long a hidden wheel's hook waits for the release of the press that
// selected.
constexpr UINT kReleaseWait = 1000;

// Raw input saw the mouse this long ago and the hook has not run since:
// the hook had time to see the same event.
constexpr std::uint64_t kHookGrace = 250;

}  // namespace

HookVerdict JudgeMouseEvent(bool capturing, bool selectingPressHeld, WPARAM message, ULONG_PTR extraInfo) {
    if (extraInfo == kInjectedByZirvel) return HookVerdict::Pass;
    if (capturing) return message == WM_LBUTTONDOWN ? HookVerdict::SwallowAndSelect : HookVerdict::Swallow;
    return selectingPressHeld && message == WM_LBUTTONUP ? HookVerdict::Swallow : HookVerdict::Pass;
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
            case kRemoveAfterReleaseCommand:
                RemoveAfterRelease();
                SetEvent(answered_);
                break;
            case kPressReleased:
                if (removeAfterRelease_) Remove();
                break;
            case WM_TIMER:  // the release never came
                selectingPressHeld_ = false;
                if (removeAfterRelease_) Remove();
                StopReleaseTimer();
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
    removeAfterRelease_ = false;
    StopReleaseTimer();
    if (!hook_) hook_ = SetWindowsHookExW(WH_MOUSE_LL, Procedure, GetModuleHandleW(nullptr), 0);
    installed_ = hook_ != nullptr;
}

void MouseHookThread::Remove() {
    removeAfterRelease_ = false;
    StopReleaseTimer();
    if (hook_) UnhookWindowsHookEx(hook_);
    hook_ = nullptr;
    installed_ = false;
}

void MouseHookThread::RemoveAfterRelease() {
    if (!selectingPressHeld_) {
        Remove();
        return;
    }
    removeAfterRelease_ = true;
    // A thread timer: WM_TIMER arrives in this thread's own loop.
    if (releaseTimer_ == 0) releaseTimer_ = SetTimer(nullptr, 0, kReleaseWait, nullptr);
}

void MouseHookThread::StopReleaseTimer() {
    if (releaseTimer_ != 0) KillTimer(nullptr, releaseTimer_);
    releaseTimer_ = 0;
}

bool MouseHookThread::Capture() {
    capturing_ = true;
    // Also when installed: a removal waiting for a release is called off.
    Ask(kInstallCommand);  // one that failed is tried again at the next show
    return installed_;
}

void MouseHookThread::Release() {
    capturing_ = false;
    Ask(kRemoveAfterReleaseCommand);
}

void MouseHookThread::Reinstall() { Ask(kReinstallCommand); }

LRESULT CALLBACK MouseHookThread::Procedure(int code, WPARAM wParam, LPARAM lParam) {
    MouseHookThread* self = current.load();
    if (code == HC_ACTION && self) {
        self->lastEventTick_ = GetTickCount64();
        const auto* event = reinterpret_cast<const MSLLHOOKSTRUCT*>(lParam);
        const bool held = self->selectingPressHeld_.load();
        const HookVerdict verdict = JudgeMouseEvent(self->capturing_.load(), held, wParam, event->dwExtraInfo);
        if (held && wParam == WM_LBUTTONUP && event->dwExtraInfo != kInjectedByZirvel) {
            self->selectingPressHeld_ = false;
            PostThreadMessageW(GetCurrentThreadId(), kPressReleased, 0, 0);
        }
        switch (verdict) {
            case HookVerdict::Pass:
                break;
            case HookVerdict::SwallowAndSelect:
                self->selectingPressHeld_ = true;
                PostMessageW(self->selectWindow_, self->selectMessage_, 0, 0);
                return 1;
            case HookVerdict::Swallow:
                return 1;
        }
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

}  // namespace zirvel::win32
