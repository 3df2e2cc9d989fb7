#include "platform/win32/cursor_pin.h"

namespace zirvel::win32 {
namespace {

bool SameRect(const RECT& a, const RECT& b) {
    return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

// The whole desktop: what GetClipCursor gives when nothing confines the cursor.
RECT WholeDesktop() {
    const int left = GetSystemMetrics(SM_XVIRTUALSCREEN);
    const int top = GetSystemMetrics(SM_YVIRTUALSCREEN);
    return {left, top, left + GetSystemMetrics(SM_CXVIRTUALSCREEN), top + GetSystemMetrics(SM_CYVIRTUALSCREEN)};
}

}  // namespace

void CursorPin::Pin(ScreenPoint point) {
    if (!pinned_) {
        freeBefore_ = !GetClipCursor(&before_) || SameRect(before_, WholeDesktop());
    }
    pin_ = RECT{point.x, point.y, point.x + 1, point.y + 1};
    ClipCursor(&pin_);
    pinned_ = true;
}

bool CursorPin::Keep() {
    if (!pinned_) return false;
    RECT now{};
    if (GetClipCursor(&now) && SameRect(now, pin_)) return false;
    ClipCursor(&pin_);
    return true;
}

void CursorPin::Release() {
    if (!pinned_) return;
    ClipCursor(freeBefore_ ? nullptr : &before_);
    pinned_ = false;
}

}  // namespace zirvel::win32
