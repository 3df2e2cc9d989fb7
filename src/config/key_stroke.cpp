#include "config/key_stroke.h"

namespace zirvel {
namespace {

struct DocumentedKey {
    std::uint16_t vk;
    std::uint16_t scan;
};

// Microsoft's table of keyboard scan codes, for the keys the key names reach.
constexpr DocumentedKey kDocumented[] = {
    {0x08, 0x0E},   {0x09, 0x0F},   {0x0D, 0x1C},   {0x10, 0x2A},   {0x11, 0x1D},   {0x12, 0x38},
    {0x14, 0x3A},   {0x1B, 0x01},   {0x20, 0x39},   {0x21, 0xE049}, {0x22, 0xE051}, {0x23, 0xE04F},
    {0x24, 0xE047}, {0x25, 0xE04B}, {0x26, 0xE048}, {0x27, 0xE04D}, {0x28, 0xE050}, {0x2C, 0xE037},
    {0x2D, 0xE052}, {0x2E, 0xE053}, {0x5B, 0xE05B}, {0xAD, 0xE020}, {0xAE, 0xE02E}, {0xAF, 0xE030},
    {0xB0, 0xE019}, {0xB1, 0xE010}, {0xB3, 0xE022},
};

constexpr std::uint16_t kF1 = 0x70;
constexpr std::uint16_t kF24 = 0x87;
// F1..F10, F11, F12, F13..F23, F24: the codes are not in one run.
constexpr std::uint16_t kFunctionKeyScans[] = {0x3B, 0x3C, 0x3D, 0x3E, 0x3F, 0x40, 0x41, 0x42, 0x43, 0x44,
                                               0x57, 0x58, 0x64, 0x65, 0x66, 0x67, 0x68, 0x69, 0x6A, 0x6B,
                                               0x6C, 0x6D, 0x6E, 0x76};

constexpr std::uint32_t kExtendedPrefix = 0xE000;

}  // namespace

std::uint16_t DocumentedScanCode(std::uint16_t vk) {
    if (vk >= kF1 && vk <= kF24) return kFunctionKeyScans[vk - kF1];
    for (const DocumentedKey& key : kDocumented) {
        if (key.vk == vk) return key.scan;
    }
    return 0;
}

KeyStroke StrokeForKey(std::uint16_t vk, bool extended, std::uint32_t layoutScan) {
    KeyStroke stroke;
    stroke.vk = vk;
    const std::uint32_t documented = DocumentedScanCode(vk);
    const std::uint32_t scan = documented != 0 ? documented : layoutScan;
    const std::uint32_t prefix = scan & 0xFF00;
    // No code at all, or an E1 sequence (Pause) that one input record cannot carry.
    if ((scan & 0xFF) == 0 || (prefix != 0 && prefix != kExtendedPrefix)) {
        stroke.extended = extended;
        return stroke;
    }
    stroke.scan = static_cast<std::uint16_t>(scan & 0xFF);
    stroke.extended = extended || prefix == kExtendedPrefix;
    stroke.byScanCode = true;
    return stroke;
}

}  // namespace zirvel
