// The keyboard layout of the X server, for ParseKeyName's character keys:
// which key (and which shift levels) types a character, as VkKeyScanW says
// it on Windows.
#pragma once

#include <X11/Xlib.h>

#include <cstdint>

namespace zirvel::x11 {

// Reads the layout's first group and makes it the lookup of
// ScanKeyForCharacter. Call again after the keyboard mapping changes.
void InstallLiveKeyboardLayout(Display* display);

// The lookup itself (VkKeyScanW's answer: shift state in the high byte).
std::uint16_t LiveKeyScan(char16_t character);

}  // namespace zirvel::x11
