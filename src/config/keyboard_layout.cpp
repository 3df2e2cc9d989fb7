#include "config/keyboard_layout.h"

#include <atomic>

namespace zirvel {

#ifdef _WIN32
// VkKeyScanW on the active layout; defined by the Windows platform layer.
std::uint16_t Win32KeyScan(char16_t character);
#endif

namespace {

constexpr std::uint16_t kShift = 0x0100;
constexpr std::uint16_t kControlAlt = 0x0600;  // AltGr

struct KeyForCharacter {
    char16_t character;
    std::uint16_t scan;
};

// US keys, as VkKeyScanW reports them.
constexpr KeyForCharacter kUsPunctuation[] = {
    {u' ', 0x20},
    {u'!', kShift | '1'}, {u'@', kShift | '2'}, {u'#', kShift | '3'}, {u'$', kShift | '4'},
    {u'%', kShift | '5'}, {u'^', kShift | '6'}, {u'&', kShift | '7'}, {u'*', kShift | '8'},
    {u'(', kShift | '9'}, {u')', kShift | '0'},
    {u';', 0xBA}, {u':', kShift | 0xBA},     // VK_OEM_1
    {u'=', 0xBB}, {u'+', kShift | 0xBB},     // VK_OEM_PLUS
    {u',', 0xBC}, {u'<', kShift | 0xBC},     // VK_OEM_COMMA
    {u'-', 0xBD}, {u'_', kShift | 0xBD},     // VK_OEM_MINUS
    {u'.', 0xBE}, {u'>', kShift | 0xBE},     // VK_OEM_PERIOD
    {u'/', 0xBF}, {u'?', kShift | 0xBF},     // VK_OEM_2
    {u'`', 0xC0}, {u'~', kShift | 0xC0},     // VK_OEM_3
    {u'[', 0xDB}, {u'{', kShift | 0xDB},     // VK_OEM_4
    {u'\\', 0xDC}, {u'|', kShift | 0xDC},    // VK_OEM_5
    {u']', 0xDD}, {u'}', kShift | 0xDD},     // VK_OEM_6
    {u'\'', 0xDE}, {u'"', kShift | 0xDE},    // VK_OEM_7
    {u'\b', 0x08}, {u'\t', 0x09}, {u'\r', 0x0D}, {u'\x1B', 0x1B},
};

// Polish programmer's layout: AltGr with a Latin key. Note ź sits on X,
// because Z already carries ż.
constexpr KeyForCharacter kPolishProgrammers[] = {
    {u'ą', kControlAlt | 'A'}, {u'Ą', kControlAlt | kShift | 'A'},
    {u'ć', kControlAlt | 'C'}, {u'Ć', kControlAlt | kShift | 'C'},
    {u'ę', kControlAlt | 'E'}, {u'Ę', kControlAlt | kShift | 'E'},
    {u'ł', kControlAlt | 'L'}, {u'Ł', kControlAlt | kShift | 'L'},
    {u'ń', kControlAlt | 'N'}, {u'Ń', kControlAlt | kShift | 'N'},
    {u'ó', kControlAlt | 'O'}, {u'Ó', kControlAlt | kShift | 'O'},
    {u'ś', kControlAlt | 'S'}, {u'Ś', kControlAlt | kShift | 'S'},
    {u'ź', kControlAlt | 'X'}, {u'Ź', kControlAlt | kShift | 'X'},
    {u'ż', kControlAlt | 'Z'}, {u'Ż', kControlAlt | kShift | 'Z'},
    {u'€', kControlAlt | 'U'},
};

#ifdef _WIN32
constexpr KeyScanFunction kDefaultKeyScan = Win32KeyScan;
#else
constexpr KeyScanFunction kDefaultKeyScan = BuiltInKeyScan;
#endif

std::atomic<KeyScanFunction> currentKeyScan{kDefaultKeyScan};

}  // namespace

std::uint16_t BuiltInKeyScan(char16_t character) {
    if (character >= u'0' && character <= u'9') return character;
    if (character >= u'A' && character <= u'Z') return kShift | character;
    if (character >= u'a' && character <= u'z') return static_cast<std::uint16_t>(character - u'a' + u'A');
    for (const auto& entry : kUsPunctuation) {
        if (entry.character == character) return entry.scan;
    }
    for (const auto& entry : kPolishProgrammers) {
        if (entry.character == character) return entry.scan;
    }
    return kNoKeyForCharacter;
}

std::uint16_t ScanKeyForCharacter(char16_t character) { return currentKeyScan.load()(character); }

KeyScanFunction SetKeyScanFunction(KeyScanFunction function) {
    return currentKeyScan.exchange(function ? function : kDefaultKeyScan);
}

}  // namespace zirvel
