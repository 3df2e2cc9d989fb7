#include "config/key_code.h"

#include "config/classic_text.h"
#include "config/keyboard_layout.h"

namespace zirvel {
namespace {

struct NamedButton {
    std::u16string_view name;
    std::uint32_t button;
};

constexpr NamedButton kMouseButtons[] = {
    {u"lmb", kMouseLeft},  {u"lpm", kMouseLeft},    {u"rmb", kMouseRight}, {u"ppm", kMouseRight},
    {u"mmb", kMouseMiddle}, {u"mpm", kMouseMiddle}, {u"mb4", kMouseX1},    {u"mouse4", kMouseX1},
    {u"mb5", kMouseX2},    {u"mouse5", kMouseX2},
};

struct NamedKey {
    std::u16string_view name;
    std::uint16_t vk;
    bool extended;
};

// Searched in this order.
constexpr NamedKey kKeys[] = {
    {u"space", 0x20, false},       {u"spacja", 0x20, false},     {u"enter", 0x0D, false},
    {u"tab", 0x09, false},         {u"esc", 0x1B, false},        {u"escape", 0x1B, false},
    {u"capslock", 0x14, false},    {u"caps", 0x14, false},       {u"backspace", 0x08, false},
    {u"shift", 0x10, false},       {u"ctrl", 0x11, false},       {u"alt", 0x12, false},
    {u"up", 0x26, true},           {u"down", 0x28, true},        {u"left", 0x25, true},
    {u"right", 0x27, true},        {u"insert", 0x2D, true},      {u"delete", 0x2E, true},
    {u"home", 0x24, true},         {u"end", 0x23, true},         {u"pageup", 0x21, true},
    {u"pagedown", 0x22, true},     {u"win", 0x5B, true},         {u"printscreen", 0x2C, true},
    {u"prtsc", 0x2C, true},        {u"volumeup", 0xAF, true},    {u"volumedown", 0xAE, true},
    {u"volumemute", 0xAD, true},   {u"playpause", 0xB3, true},   {u"nexttrack", 0xB0, true},
    {u"prevtrack", 0xB1, true},
};

constexpr std::uint16_t kF1 = 0x70;

std::u16string_view Trim(std::u16string_view text) {
    while (!text.empty() && IsClassicSpace(text.front())) text.remove_prefix(1);
    while (!text.empty() && IsClassicSpace(text.back())) text.remove_suffix(1);
    return text;
}

void ParseSingleCharacter(char16_t character, KeyCode& code) {
    const char16_t upper = ClassicToUpper(character);
    if ((upper >= u'0' && upper <= u'9') || (upper >= u'A' && upper <= u'Z')) {
        code.vk = upper;
        code.valid = true;
        return;
    }
    const std::uint16_t scan = ScanKeyForCharacter(character);
    if (scan == kNoKeyForCharacter) return;
    code.vk = scan & 0xFF;  // the shift state is dropped: "!" is the key of "1"
    code.valid = true;
}

void ParseLongName(std::u16string_view trimmed, KeyCode& code) {
    std::u16string lower(trimmed);
    for (char16_t& c : lower) c = ClassicToLower(c);

    for (const auto& entry : kMouseButtons) {
        if (lower == entry.name) {
            code.isMouse = true;
            code.button = entry.button;
            code.valid = true;
            return;
        }
    }
    if (lower[0] == u'f' && lower.size() <= 3 && IsClassicDigit(lower[1])) {
        const int number = ClassicWtoi(std::u16string_view(lower).substr(1));
        if (number >= 1 && number <= 24) {
            code.vk = static_cast<std::uint16_t>(kF1 + number - 1);
            code.valid = true;
        }
        return;  // an F-shaped name never falls through to the key table
    }
    for (const auto& entry : kKeys) {
        if (lower == entry.name) {
            code.vk = entry.vk;
            code.extended = entry.extended;
            code.valid = true;
            return;
        }
    }
}

}  // namespace

KeyCode ParseKeyName(std::u16string_view text) {
    KeyCode code;
    const std::u16string_view trimmed = Trim(text);
    if (trimmed.empty()) return code;
    code.name = std::u16string(trimmed);
    if (trimmed.size() == 1) {
        ParseSingleCharacter(trimmed[0], code);
    } else {
        ParseLongName(trimmed, code);
    }
    return code;
}

std::vector<std::u16string_view> KeyTableNames() {
    std::vector<std::u16string_view> names;
    for (const auto& entry : kKeys) names.push_back(entry.name);
    return names;
}

}  // namespace zirvel
