// Key and mouse-button names as users write them in the configuration.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zirvel {

// Mouse button numbers.
inline constexpr std::uint32_t kMouseLeft = 0;
inline constexpr std::uint32_t kMouseRight = 1;
inline constexpr std::uint32_t kMouseMiddle = 2;
inline constexpr std::uint32_t kMouseX1 = 3;
inline constexpr std::uint32_t kMouseX2 = 4;

struct KeyCode {
    std::uint16_t vk = 0;       // Windows virtual-key code; 0 for buttons
    bool extended = false;      // injected with the extended-key flag
    bool isMouse = false;
    std::uint32_t button = 0;   // meaningful when isMouse
    bool valid = false;
    std::u16string name;        // the trimmed text, written back to files
};

// Never fails: an unknown text gives valid == false.
KeyCode ParseKeyName(std::u16string_view text);

// Every long key name of the table ("enter", "printscreen"…), F1-F24 and
// mouse buttons aside.
std::vector<std::u16string_view> KeyTableNames();

}  // namespace zirvel
