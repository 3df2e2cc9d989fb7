#include "platform/x11/live_keyboard_layout.h"

#include <X11/XKBlib.h>

#include <mutex>
#include <unordered_map>

#include "config/keyboard_layout.h"
#include "platform/x11/virtual_keys.h"

namespace zirvel::x11 {
namespace {

// Shift states in VkKeyScanW's high byte, by XKB level: none, Shift,
// AltGr (Ctrl+Alt), Shift+AltGr.
constexpr std::uint16_t kLevelShiftState[] = {0, 1, 6, 7};

std::mutex layoutLock;
std::unordered_map<KeySymbol, std::uint16_t> scanBySymbol;

}  // namespace

void InstallLiveKeyboardLayout(Display* display) {
    std::unordered_map<KeySymbol, std::uint16_t> table;
    int minKeycode = 0;
    int maxKeycode = 0;
    XDisplayKeycodes(display, &minKeycode, &maxKeycode);
    // Lower levels first, so a character reachable without AltGr keeps its
    // plainest key.
    for (unsigned level = 0; level < 4; ++level) {
        for (int keycode = minKeycode; keycode <= maxKeycode; ++keycode) {
            const auto code = static_cast<::KeyCode>(keycode);
            const KeySym symbol = XkbKeycodeToKeysym(display, code, 0, static_cast<int>(level));
            if (symbol == NoSymbol || table.contains(symbol)) continue;
            const std::uint16_t vk = VirtualKeyForKeySymbol(XkbKeycodeToKeysym(display, code, 0, 0));
            if (vk == 0) continue;
            table.emplace(symbol, static_cast<std::uint16_t>(kLevelShiftState[level] << 8 | vk));
        }
    }
    {
        std::lock_guard lock(layoutLock);
        scanBySymbol = std::move(table);
    }
    SetKeyScanFunction(LiveKeyScan);
}

std::uint16_t LiveKeyScan(char16_t character) {
    std::lock_guard lock(layoutLock);
    const auto found = scanBySymbol.find(KeySymbolForCharacter(character));
    return found == scanBySymbol.end() ? kNoKeyForCharacter : found->second;
}

}  // namespace zirvel::x11
