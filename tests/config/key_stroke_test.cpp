// How keys are sent to Windows: every key name against the scan code and
// extended flag that Microsoft's table of scan codes gives for its key.
#include <gtest/gtest.h>

#include <map>
#include <string>

#include "config/key_code.h"
#include "config/key_stroke.h"

namespace zirvel {
namespace {

struct Documented {
    std::uint16_t scan;
    bool extended;
};

// Microsoft's "Keyboard Input" scan code table, by our names.
const std::map<std::u16string, Documented> kDocumented = {
    {u"space", {0x39, false}},      {u"spacja", {0x39, false}},     {u"enter", {0x1C, false}},
    {u"tab", {0x0F, false}},        {u"esc", {0x01, false}},        {u"escape", {0x01, false}},
    {u"capslock", {0x3A, false}},   {u"caps", {0x3A, false}},       {u"backspace", {0x0E, false}},
    {u"shift", {0x2A, false}},      {u"ctrl", {0x1D, false}},       {u"alt", {0x38, false}},
    {u"up", {0x48, true}},          {u"down", {0x50, true}},        {u"left", {0x4B, true}},
    {u"right", {0x4D, true}},       {u"insert", {0x52, true}},      {u"delete", {0x53, true}},
    {u"home", {0x47, true}},        {u"end", {0x4F, true}},         {u"pageup", {0x49, true}},
    {u"pagedown", {0x51, true}},    {u"win", {0x5B, true}},         {u"printscreen", {0x37, true}},
    {u"prtsc", {0x37, true}},       {u"volumeup", {0x30, true}},    {u"volumedown", {0x2E, true}},
    {u"volumemute", {0x20, true}},  {u"playpause", {0x22, true}},   {u"nexttrack", {0x19, true}},
    {u"prevtrack", {0x10, true}},
};

// What a layout might give for any key: nothing, or SysRq for Print Screen.
constexpr std::uint32_t kLayoutGivesNothing = 0;

TEST(KeyStrokeTest, EveryNamedKeyGoesByItsDocumentedScanCode) {
    const auto names = KeyTableNames();
    ASSERT_FALSE(names.empty());
    for (const std::u16string_view name : names) {
        SCOPED_TRACE(std::string(name.begin(), name.end()));
        const auto documented = kDocumented.find(std::u16string(name));
        ASSERT_NE(documented, kDocumented.end()) << "a key name without its documented scan code";
        const KeyCode key = ParseKeyName(name);
        ASSERT_TRUE(key.valid);
        for (const std::uint32_t layoutScan : {kLayoutGivesNothing, 0x54u, 0xE011u}) {
            const KeyStroke stroke = StrokeForKey(key.vk, key.extended, layoutScan);
            EXPECT_TRUE(stroke.byScanCode);
            EXPECT_EQ(stroke.vk, key.vk);
            EXPECT_EQ(stroke.scan, documented->second.scan);
            EXPECT_EQ(stroke.extended, documented->second.extended);
            EXPECT_EQ(key.extended, documented->second.extended) << "the key table's own flag";
        }
    }
}

TEST(KeyStrokeTest, PrintScreenIsE037NotTheSysRqCodeTheLayoutGives) {
    const KeyStroke stroke = StrokeForKey(0x2C, true, 0x54);
    EXPECT_TRUE(stroke.byScanCode);
    EXPECT_EQ(stroke.scan, 0x37);
    EXPECT_TRUE(stroke.extended);
}

TEST(KeyStrokeTest, FunctionKeysGoByTheirDocumentedCodes) {
    const std::uint16_t expected[24] = {0x3B, 0x3C, 0x3D, 0x3E, 0x3F, 0x40, 0x41, 0x42, 0x43, 0x44, 0x57, 0x58,
                                        0x64, 0x65, 0x66, 0x67, 0x68, 0x69, 0x6A, 0x6B, 0x6C, 0x6D, 0x6E, 0x76};
    for (int number = 1; number <= 24; ++number) {
        const std::string digits = std::to_string(number);
        const std::u16string name = u"F" + std::u16string(digits.begin(), digits.end());
        const KeyCode key = ParseKeyName(name);
        ASSERT_TRUE(key.valid) << number;
        const KeyStroke stroke = StrokeForKey(key.vk, key.extended, kLayoutGivesNothing);
        EXPECT_TRUE(stroke.byScanCode) << number;
        EXPECT_EQ(stroke.scan, expected[number - 1]) << number;
        EXPECT_FALSE(stroke.extended) << number;
    }
}

TEST(KeyStrokeTest, CharacterKeysGoByTheLayoutsScanCode) {
    // "a" is where the layout puts it: 1E on QWERTY, 10 on AZERTY.
    for (const std::uint32_t layoutScan : {0x1Eu, 0x10u}) {
        const KeyStroke stroke = StrokeForKey(0x41, false, layoutScan);
        EXPECT_TRUE(stroke.byScanCode);
        EXPECT_EQ(stroke.scan, layoutScan);
        EXPECT_FALSE(stroke.extended);
    }
    // An extended code of the layout (the numeric keypad's divide) keeps its flag.
    const KeyStroke divide = StrokeForKey(0x6F, false, 0xE035);
    EXPECT_EQ(divide.scan, 0x35);
    EXPECT_TRUE(divide.extended);
}

TEST(KeyStrokeTest, AKeyWithoutAScanCodeGoesByItsVirtualKey) {
    // A virtual key the layout has no key for (a browser key on a plain
    // keyboard), and Pause, whose E1 sequence one input record cannot carry.
    for (const auto& [vk, layoutScan] : {std::pair<std::uint16_t, std::uint32_t>{0xA6, 0}, {0x13, 0xE11D}}) {
        const KeyStroke stroke = StrokeForKey(vk, false, layoutScan);
        EXPECT_FALSE(stroke.byScanCode) << vk;
        EXPECT_EQ(stroke.vk, vk);
        EXPECT_EQ(stroke.scan, 0) << vk;
    }
}

}  // namespace
}  // namespace zirvel
