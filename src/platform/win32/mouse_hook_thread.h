// The low-level mouse hook on a thread of its own. Windows calls a
// low-level hook on the thread that installed it, and removes a hook
// without notice when its procedure keeps the system waiting longer than
// LowLevelHooksTimeout. The GUI thread can be busy for seconds (drawing,
// joining threads on a reload, a focus change); this thread does nothing
// but answer the hook, so the wheel never loses the mouse to it.
#pragma once

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <atomic>
#include <cstdint>
#include <thread>

namespace zirvel::win32 {

// What the hook does with one mouse event.
enum class HookVerdict {
    Pass,              // not capturing, or an event Zirvel injected itself
    Swallow,           // the user's: it never reaches the program under the pinned cursor
    SwallowAndSelect,  // the user's left press: it selects on the wheel
};
// `selectingPressHeld`: a left press selected and its release has not come
// yet. That release is the user's too, although the selection hid the wheel
// before it came: it never reaches the program the wheel hid from.
HookVerdict JudgeMouseEvent(bool capturing, bool selectingPressHeld, WPARAM message, ULONG_PTR extraInfo);

// The hook has missed events that raw input saw: it was removed. `rawTick`
// is when raw input last saw the mouse, `hookTick` when the hook last ran,
// `now` the time of the check (GetTickCount64 scale).
bool HookLooksRemoved(std::uint64_t rawTick, std::uint64_t hookTick, std::uint64_t now);

class MouseHookThread {
public:
    // Starts the thread; the user's left presses are posted to
    // `selectWindow` as `selectMessage` while capturing.
    MouseHookThread(HWND selectWindow, UINT selectMessage);
    // Removes the hook and ends the thread.
    ~MouseHookThread();
    MouseHookThread(const MouseHookThread&) = delete;
    MouseHookThread& operator=(const MouseHookThread&) = delete;

    // GUI. Installs the hook (when it is not) and swallows the user's
    // events from now on; false when the hook could not be installed.
    bool Capture();
    // GUI. Lets every event through and removes the hook; while a press
    // that selected is held, once its release has been swallowed (or
    // after a second, when it never comes).
    void Release();
    // GUI. Removes and installs the hook again (Windows dropped it).
    void Reinstall();
    bool Installed() const { return installed_.load(); }
    // When the hook procedure last ran (GetTickCount64), 0 before it ran.
    std::uint64_t LastEventTick() const { return lastEventTick_.load(); }

private:
    static LRESULT CALLBACK Procedure(int code, WPARAM wParam, LPARAM lParam);
    void Run();
    // Asks the thread to carry out `command` and waits until it has.
    void Ask(UINT command);
    void Install();
    void Remove();
    // On the thread: the hook goes once the held press is released.
    void RemoveAfterRelease();
    void StopReleaseTimer();

    HWND selectWindow_;
    UINT selectMessage_;
    std::atomic<bool> capturing_{false};
    std::atomic<bool> selectingPressHeld_{false};
    std::atomic<bool> installed_{false};
    std::atomic<std::uint64_t> lastEventTick_{0};
    HHOOK hook_ = nullptr;  // the thread's own
    bool removeAfterRelease_ = false;  // the thread's own
    UINT_PTR releaseTimer_ = 0;        // the thread's own
    HANDLE answered_ = nullptr;
    std::atomic<DWORD> threadId_{0};
    std::thread thread_;
};

}  // namespace zirvel::win32
