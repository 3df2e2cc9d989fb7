// Which key types a given character on the active keyboard layout, in the
// form of VkKeyScanW: virtual key in the low byte, shift state in the high
// byte, 0xFFFF when no key makes the character.
#pragma once

#include <cstdint>

namespace zirvel {

inline constexpr std::uint16_t kNoKeyForCharacter = 0xFFFF;

using KeyScanFunction = std::uint16_t (*)(char16_t character);

// The US layout plus the Polish programmer's layout (AltGr letters and €).
std::uint16_t BuiltInKeyScan(char16_t character);

// The lookup ParseKeyName uses. By default VkKeyScanW on Windows and the
// built-in table elsewhere; a platform layer plugs in the live layout.
std::uint16_t ScanKeyForCharacter(char16_t character);

// Installs a lookup (nullptr restores the default); returns the previous one.
KeyScanFunction SetKeyScanFunction(KeyScanFunction function);

}  // namespace zirvel
