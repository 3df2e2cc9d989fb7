// The active Windows keyboard layout behind ParseKeyName's single characters.
#include <windows.h>

#include <cstdint>

namespace zirvel {

std::uint16_t Win32KeyScan(char16_t character) {
    return static_cast<std::uint16_t>(VkKeyScanW(static_cast<WCHAR>(character)));
}

}  // namespace zirvel
