#include "platform/x11/virtual_keys.h"

#include <X11/XF86keysym.h>
#include <X11/keysym.h>

#include <array>

namespace zirvel::x11 {
namespace {

struct KeyPair {
    std::uint16_t vk;
    KeySymbol symbol;
};

// Keys other than digits, letters and F1..F24.
constexpr std::array<KeyPair, 49> kNamedKeys = {{
    {0x08, XK_BackSpace},
    {0x09, XK_Tab},
    {0x0D, XK_Return},
    {0x10, XK_Shift_L},
    {0x11, XK_Control_L},
    {0x12, XK_Alt_L},
    {0x13, XK_Pause},
    {0x14, XK_Caps_Lock},
    {0x1B, XK_Escape},
    {0x20, XK_space},
    {0x21, XK_Prior},
    {0x22, XK_Next},
    {0x23, XK_End},
    {0x24, XK_Home},
    {0x25, XK_Left},
    {0x26, XK_Up},
    {0x27, XK_Right},
    {0x28, XK_Down},
    {0x2C, XK_Print},
    {0x2D, XK_Insert},
    {0x2E, XK_Delete},
    {0x5B, XK_Super_L},
    {0x5C, XK_Super_R},
    {0x5D, XK_Menu},
    {0x90, XK_Num_Lock},
    {0x91, XK_Scroll_Lock},
    {0xA0, XK_Shift_L},
    {0xA1, XK_Shift_R},
    {0xA2, XK_Control_L},
    {0xA3, XK_Control_R},
    {0xA4, XK_Alt_L},
    {0xAD, XF86XK_AudioMute},
    {0xAE, XF86XK_AudioLowerVolume},
    {0xAF, XF86XK_AudioRaiseVolume},
    {0xB0, XF86XK_AudioNext},
    {0xB1, XF86XK_AudioPrev},
    {0xB3, XF86XK_AudioPlay},
    {0xBA, XK_semicolon},
    {0xBB, XK_equal},
    {0xBC, XK_comma},
    {0xBD, XK_minus},
    {0xBE, XK_period},
    {0xBF, XK_slash},
    {0xC0, XK_grave},
    {0xDB, XK_bracketleft},
    {0xDC, XK_backslash},
    {0xDD, XK_bracketright},
    {0xDE, XK_apostrophe},
    {0xE2, XK_less},
}};

constexpr std::uint16_t kVkF1 = 0x70;
constexpr std::uint16_t kVkF24 = 0x87;

}  // namespace

KeySymbol KeySymbolForVirtualKey(std::uint16_t vk) {
    if (vk >= '0' && vk <= '9') return XK_0 + (vk - '0');
    if (vk >= 'A' && vk <= 'Z') return XK_a + (vk - 'A');
    if (vk >= kVkF1 && vk <= kVkF24) return XK_F1 + (vk - kVkF1);
    for (const KeyPair& pair : kNamedKeys) {
        if (pair.vk == vk) return pair.symbol;
    }
    return kNoKeySymbol;
}

std::uint16_t VirtualKeyForKeySymbol(KeySymbol symbol) {
    if (symbol >= XK_0 && symbol <= XK_9) return static_cast<std::uint16_t>('0' + (symbol - XK_0));
    if (symbol >= XK_a && symbol <= XK_z) return static_cast<std::uint16_t>('A' + (symbol - XK_a));
    if (symbol >= XK_A && symbol <= XK_Z) return static_cast<std::uint16_t>('A' + (symbol - XK_A));
    if (symbol >= XK_F1 && symbol <= XK_F24) return static_cast<std::uint16_t>(kVkF1 + (symbol - XK_F1));
    for (const KeyPair& pair : kNamedKeys) {
        if (pair.symbol == symbol) return pair.vk;
    }
    return 0;
}

KeySymbol KeySymbolForCharacter(char16_t character) {
    if (character >= 0x20 && character <= 0x7E) return character;
    if (character >= 0xA0 && character <= 0xFF) return character;
    return 0x01000000UL + character;
}

}  // namespace zirvel::x11
