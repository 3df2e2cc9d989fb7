// Windows virtual-key codes, as the configuration stores keys, translated to
// X keysyms and back. Pure tables: no display needed.
#pragma once

#include <cstdint>

namespace zirvel::x11 {

using KeySymbol = unsigned long;  // an X KeySym
inline constexpr KeySymbol kNoKeySymbol = 0;

// The keysym that a virtual key types without modifiers (letters lower
// case), or kNoKeySymbol for a key X has no symbol for.
KeySymbol KeySymbolForVirtualKey(std::uint16_t vk);

// The virtual key whose unmodified keysym is `symbol` (either case of a
// letter), or 0.
std::uint16_t VirtualKeyForKeySymbol(KeySymbol symbol);

// The keysym of a UTF-16 character: Latin-1 maps to itself, others to the
// Unicode keysym range (0x01000000 + code point).
KeySymbol KeySymbolForCharacter(char16_t character);

}  // namespace zirvel::x11
