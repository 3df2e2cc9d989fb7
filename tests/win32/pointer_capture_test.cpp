// The pieces of the pointer capture on Windows: which mouse events the hook
// lets through, when it looks removed, motion from absolute raw reports,
// the cursor pin and whether a window is within reach.
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <gtest/gtest.h>

#include "platform/win32/cursor_pin.h"
#include "platform/win32/injection_signature.h"
#include "platform/win32/mouse_hook_thread.h"
#include "platform/win32/process_privilege.h"
#include "platform/win32/raw_mouse_motion.h"

namespace zirvel::win32 {
namespace {

TEST(MouseHookVerdictTest, WhileCapturingOnlyZirvelsOwnEventsPass) {
    // Physical events (no extra information) and other programs' injected ones.
    for (const ULONG_PTR extra : {ULONG_PTR{0}, ULONG_PTR{0x1234}, ULONG_PTR{0xFF515700}}) {
        EXPECT_EQ(JudgeMouseEvent(true, false, WM_LBUTTONDOWN, extra), HookVerdict::SwallowAndSelect) << extra;
        EXPECT_EQ(JudgeMouseEvent(true, true, WM_LBUTTONUP, extra), HookVerdict::Swallow) << extra;
        EXPECT_EQ(JudgeMouseEvent(true, false, WM_MOUSEMOVE, extra), HookVerdict::Swallow) << extra;
        EXPECT_EQ(JudgeMouseEvent(true, false, WM_RBUTTONDOWN, extra), HookVerdict::Swallow) << extra;
    }
    EXPECT_EQ(JudgeMouseEvent(true, false, WM_LBUTTONDOWN, kInjectedByZirvel), HookVerdict::Pass);
    EXPECT_EQ(JudgeMouseEvent(true, false, WM_MOUSEMOVE, kInjectedByZirvel), HookVerdict::Pass);
    EXPECT_EQ(JudgeMouseEvent(false, false, WM_LBUTTONDOWN, 0), HookVerdict::Pass);
}

TEST(MouseHookVerdictTest, TheReleaseOfThePressThatSelectedIsSwallowedAfterTheWheelHid) {
    for (const ULONG_PTR extra : {ULONG_PTR{0}, ULONG_PTR{0x1234}}) {
        EXPECT_EQ(JudgeMouseEvent(false, true, WM_LBUTTONUP, extra), HookVerdict::Swallow) << extra;
        // Everything else goes to the program the wheel hid from.
        EXPECT_EQ(JudgeMouseEvent(false, true, WM_MOUSEMOVE, extra), HookVerdict::Pass) << extra;
        EXPECT_EQ(JudgeMouseEvent(false, true, WM_LBUTTONDOWN, extra), HookVerdict::Pass) << extra;
        EXPECT_EQ(JudgeMouseEvent(false, false, WM_LBUTTONUP, extra), HookVerdict::Pass) << extra;
    }
    // Zirvel's own release (a function's click) always passes.
    EXPECT_EQ(JudgeMouseEvent(false, true, WM_LBUTTONUP, kInjectedByZirvel), HookVerdict::Pass);
}

TEST(MouseHookVerdictTest, AHookLooksRemovedWhenRawInputSawTheMouseAndItDidNot) {
    EXPECT_FALSE(HookLooksRemoved(0, 0, 10000));          // no raw activity
    EXPECT_FALSE(HookLooksRemoved(1000, 1000, 5000));     // both saw it
    EXPECT_FALSE(HookLooksRemoved(1000, 990, 1100));      // the hook may still be on its way
    EXPECT_TRUE(HookLooksRemoved(1000, 200, 1300));       // it had time and stayed silent
    EXPECT_FALSE(HookLooksRemoved(1000, 1200, 1300));     // it ran later
}

TEST(MouseHookThreadTest, CaptureInstallsTheHookOnItsThreadAndReleaseRemovesIt) {
    const HWND window = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    MouseHookThread hook(window, WM_APP + 2);
    EXPECT_FALSE(hook.Installed());
    EXPECT_TRUE(hook.Capture());
    EXPECT_TRUE(hook.Installed());
    hook.Reinstall();
    EXPECT_TRUE(hook.Installed());
    hook.Release();
    EXPECT_FALSE(hook.Installed());
    DestroyWindow(window);
}

// Sends a left-button event as another program (or a mouse) would.
void SendLeftButton(DWORD flag) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = flag;
    SendInput(1, &input, sizeof(INPUT));
}

// Waits (at most 3 s) until `done`, taking the messages of this thread.
template <typename Done>
bool PumpUntil(Done done) {
    const ULONGLONG end = GetTickCount64() + 3000;
    while (!done()) {
        if (GetTickCount64() > end) return false;
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
        Sleep(1);
    }
    return true;
}

class HeldPressTest : public ::testing::Test {
protected:
    static constexpr UINT kSelect = WM_APP + 2;

    // A left press while capturing: the hook swallowed it and asked for a selection.
    void PressToSelect() {
        ASSERT_TRUE(hook_.Capture());
        SendLeftButton(MOUSEEVENTF_LEFTDOWN);
        MSG message;
        ASSERT_TRUE(PumpUntil([&] { return PeekMessageW(&message, window_, kSelect, kSelect, PM_REMOVE) != 0; }))
            << "the press did not select";
    }

    const HWND window_ = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    MouseHookThread hook_{window_, kSelect};
    ~HeldPressTest() override { DestroyWindow(window_); }
};

TEST_F(HeldPressTest, TheHookStaysUntilThePressThatSelectedIsReleased) {
    PressToSelect();
    hook_.Release();  // the selection hid the wheel
    EXPECT_TRUE(hook_.Installed()) << "the release would reach the program under the cursor";
    SendLeftButton(MOUSEEVENTF_LEFTUP);
    EXPECT_TRUE(PumpUntil([&] { return !hook_.Installed(); })) << "the hook stayed after the release";
}

TEST_F(HeldPressTest, AReleaseThatNeverComesIsWaitedForASecond) {
    PressToSelect();
    hook_.Release();
    EXPECT_TRUE(hook_.Installed());
    EXPECT_TRUE(PumpUntil([&] { return !hook_.Installed(); })) << "the hook stayed";
    SendLeftButton(MOUSEEVENTF_LEFTUP);  // the button is up again for the tests after
}

TEST_F(HeldPressTest, ShowingTheWheelAgainKeepsTheHook) {
    PressToSelect();
    hook_.Release();
    ASSERT_TRUE(hook_.Capture());
    SendLeftButton(MOUSEEVENTF_LEFTUP);
    Sleep(1200);  // past the wait for the release
    EXPECT_TRUE(hook_.Installed());
    hook_.Release();
    EXPECT_FALSE(hook_.Installed());
}

RAWMOUSE Absolute(LONG x, LONG y, USHORT flags = MOUSE_MOVE_ABSOLUTE) {
    RAWMOUSE report{};
    report.usFlags = flags;
    report.lLastX = x;
    report.lLastY = y;
    return report;
}

TEST(RawMouseMotionTest, RelativeReportsAreTheirOwnMotion) {
    RawMouseMotion motion;
    RAWMOUSE report{};
    report.lLastX = -7;
    report.lLastY = 3;
    EXPECT_EQ(motion.Motion(nullptr, report, {0, 0, 1920, 1080}), (ScreenPoint{-7, 3}));
}

TEST(RawMouseMotionTest, AbsoluteReportsBecomeTheMotionSinceTheDevicesLastReport) {
    RawMouseMotion motion;
    const ScreenRect screen{0, 0, 1920, 1080};
    const HANDLE tablet = reinterpret_cast<HANDLE>(0x10);
    const HANDLE remote = reinterpret_cast<HANDLE>(0x20);
    // Where each device starts is no movement.
    EXPECT_EQ(motion.Motion(tablet, Absolute(32768, 32768), screen), (ScreenPoint{0, 0}));
    EXPECT_EQ(motion.Motion(remote, Absolute(0, 0), screen), (ScreenPoint{0, 0}));
    // 1/64 of the screen to the right, 1/32 up: 30 and 33.75 pixels, from
    // pixel 540 to pixel 506.
    EXPECT_EQ(motion.Motion(tablet, Absolute(32768 + 1024, 32768 - 2048), screen), (ScreenPoint{30, -34}));
    EXPECT_EQ(motion.Motion(remote, Absolute(2048, 0), screen), (ScreenPoint{60, 0}));
    // A new capture starts again.
    motion.Reset();
    EXPECT_EQ(motion.Motion(tablet, Absolute(0, 0), screen), (ScreenPoint{0, 0}));
    EXPECT_EQ(motion.Motion(tablet, Absolute(65535, 65535), screen), (ScreenPoint{1919, 1079}));
}

TEST(RawMouseMotionTest, AVirtualDesktopReportSpansEveryMonitor) {
    const ScreenRect area = NormalisedArea(Absolute(0, 0, MOUSE_MOVE_ABSOLUTE | MOUSE_VIRTUAL_DESKTOP));
    EXPECT_EQ(area.Width(), GetSystemMetrics(SM_CXVIRTUALSCREEN));
    EXPECT_EQ(area.Height(), GetSystemMetrics(SM_CYVIRTUALSCREEN));
    const ScreenRect primary = NormalisedArea(Absolute(0, 0));
    EXPECT_EQ(primary.Width(), GetSystemMetrics(SM_CXSCREEN));
}

RECT CurrentClip() {
    RECT clip{};
    GetClipCursor(&clip);
    return clip;
}

TEST(CursorPinTest, TheClipInForceBeforeThePinComesBack) {
    const RECT game{10, 20, 300, 400};
    ClipCursor(&game);
    CursorPin pin;
    pin.Pin({50, 60});
    RECT now = CurrentClip();
    EXPECT_EQ(now.left, 50);
    EXPECT_EQ(now.top, 60);
    EXPECT_EQ(now.right, 51);
    EXPECT_EQ(now.bottom, 61);
    // A released pin is put back.
    ClipCursor(nullptr);
    EXPECT_TRUE(pin.Keep());
    EXPECT_EQ(CurrentClip().left, 50);
    EXPECT_FALSE(pin.Keep());
    pin.Release();
    now = CurrentClip();
    EXPECT_EQ(now.left, 10);
    EXPECT_EQ(now.top, 20);
    EXPECT_EQ(now.right, 300);
    EXPECT_EQ(now.bottom, 400);
    ClipCursor(nullptr);
}

TEST(ProcessPrivilegeTest, OwnWindowsAndNoWindowAreWithinReach) {
    EXPECT_TRUE(IntegrityLevel(GetCurrentProcess()).has_value());
    const HWND window = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    EXPECT_FALSE(WindowOutOfReach(window));
    EXPECT_FALSE(WindowOutOfReach(nullptr));
    DestroyWindow(window);
    // The desktop's shell window belongs to another process of the same user.
    if (const HWND shell = GetShellWindow()) {
        EXPECT_FALSE(WindowOutOfReach(shell));
    }
}

}  // namespace
}  // namespace zirvel::win32
