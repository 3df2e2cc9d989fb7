// How a key is sent to Windows as input. Games read scan codes, so a key
// goes by its scan code: the one Windows documents for keys whose place
// does not depend on the keyboard layout (Print Screen is E0 37, not the
// SysRq code 54 the layout gives), the layout's for the others, and by its
// virtual key alone when the layout has no key for it.
#pragma once

#include <cstdint>

namespace zirvel {

struct KeyStroke {
    std::uint16_t vk = 0;
    std::uint16_t scan = 0;   // without its E0 prefix
    bool extended = false;    // E0-prefixed: sent with the extended-key flag
    bool byScanCode = false;  // false: by the virtual key alone
};

// The documented set-1 scan code of a key whose place does not depend on
// the layout, E0-prefixed keys as 0xE0xx; 0 for the others.
std::uint16_t DocumentedScanCode(std::uint16_t vk);

// `layoutScan` is what the layout gives for `vk` (MapVirtualKeyW with
// MAPVK_VK_TO_VSC_EX: 0xE0xx for an extended key, 0 for none); `extended`
// is the key table's flag.
KeyStroke StrokeForKey(std::uint16_t vk, bool extended, std::uint32_t layoutScan);

}  // namespace zirvel
