// The wheel window: raw mouse input and the 15 ms timer while it shows, and
// the selection message that the mouse, the dwell and the voice post.
#include "platform/win32/engine_window_protocol.h"
#include "platform/win32/injection_signature.h"
#include "platform/win32/win32_platform.h"

namespace zirvel::win32 {
namespace {

// When the message being handled was made, on GetTickCount64's scale
// (GetMessageTime has its low 32 bits).
std::uint64_t MessageTick() {
    const std::uint64_t now = GetTickCount64();
    std::uint64_t made = (now & ~0xFFFFFFFFull) | static_cast<DWORD>(GetMessageTime());
    if (made > now) made -= 0x100000000ull;
    return made;
}

}  // namespace

LRESULT Win32Platform::OnWheelWindowMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_INPUT:
            if (captured_) OnRawInput(reinterpret_cast<HRAWINPUT>(lParam));
            // The system cleans up after the report here.
            return DefWindowProcW(window, message, wParam, lParam);
        case WM_TIMER:
            if (wParam != kWheelTimerId) return 0;
            if (captured_) KeepCapture();
            if (events_) events_->OnWheelTimer();
            return 0;
        case WM_LBUTTONDOWN:
            if (events_ && !hooked_ && !rawInputRegistered_) events_->OnCapturedLeftButtonDown();
            return 0;
        case WM_APP + static_cast<UINT>(EngineMessageKind::Select): {
            EngineMessage select;
            select.kind = EngineMessageKind::Select;
            Deliver(std::move(select));
            return 0;
        }
        default:
            return DefWindowProcW(window, message, wParam, lParam);
    }
}

void Win32Platform::OnRawInput(HRAWINPUT input) {
    // A mouse report is 48 bytes on 64-bit Windows; anything else is not ours.
    alignas(RAWINPUT) BYTE buffer[48];
    UINT size = sizeof buffer;
    if (GetRawInputData(input, RID_INPUT, buffer, &size, sizeof(RAWINPUTHEADER)) == static_cast<UINT>(-1)) return;
    const auto* raw = reinterpret_cast<const RAWINPUT*>(buffer);
    if (raw->header.dwType != RIM_TYPEMOUSE || !events_) return;
    const RAWMOUSE& mouse = raw->data.mouse;
    // Zirvel's own injected events are not the user's.
    if (mouse.ulExtraInformation == kInjectedByZirvel) return;
    rawActivityTick_ = MessageTick();
    const ScreenPoint motion = rawMotion_.Motion(raw->header.hDevice, mouse, NormalisedArea(mouse));
    if (motion.x != 0 || motion.y != 0) events_->OnRawMotion(motion.x, motion.y);
    if ((mouse.usButtonFlags & RI_MOUSE_LEFT_BUTTON_DOWN) && !hooked_) events_->OnCapturedLeftButtonDown();
}

}  // namespace zirvel::win32
