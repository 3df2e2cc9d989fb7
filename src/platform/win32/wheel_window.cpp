// The wheel window: raw mouse input and the 15 ms timer while it shows, and
// the selection message that the mouse, the dwell and the voice post.
#include "platform/win32/engine_window_protocol.h"
#include "platform/win32/win32_platform.h"

namespace zirvel::win32 {

LRESULT Win32Platform::OnWheelWindowMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_INPUT:
            if (captured_) OnRawInput(reinterpret_cast<HRAWINPUT>(lParam));
            return 0;
        case WM_TIMER:
            if (wParam == kWheelTimerId && events_) events_->OnWheelTimer();
            return 0;
        case WM_LBUTTONDOWN:
            if (events_ && !mouseHook_ && !rawInputRegistered_) events_->OnCapturedLeftButtonDown();
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
    // Absolute reports (pen tablets, remote sessions) do not steer the wheel.
    if (!(mouse.usFlags & MOUSE_MOVE_ABSOLUTE) && (mouse.lLastX != 0 || mouse.lLastY != 0)) {
        events_->OnRawMotion(mouse.lLastX, mouse.lLastY);
    }
    if ((mouse.usButtonFlags & RI_MOUSE_LEFT_BUTTON_DOWN) && !mouseHook_) events_->OnCapturedLeftButtonDown();
}

}  // namespace zirvel::win32
