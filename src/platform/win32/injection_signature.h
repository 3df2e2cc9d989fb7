// The mark Zirvel puts on every event it injects (SendInput's dwExtraInfo).
// While the wheel shows, the mouse hook lets only events with this mark
// through: clicks and motion that other programs synthesise (head mice,
// dwell clickers, switch interfaces, on-screen keyboards, remote desktop)
// are the user's and steer the wheel like a physical mouse.
#pragma once

#include <windows.h>

namespace zirvel::win32 {

inline constexpr ULONG_PTR kInjectedByZirvel = 0x5A495256;  // "ZIRV"

}  // namespace zirvel::win32
