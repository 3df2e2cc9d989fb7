// The switch-scanning keys of config.json: defaults, clamps, the mode and
// the step key with their messages.
#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "config/engine_settings.h"
#include "config/file_io.h"
#include "config/settings_file.h"
#include "test_files.h"

namespace zirvel {
namespace {

using zirvel_test::TempDirectory;
using zirvel_test::WriteBytes;

const std::u16string kBadMode = u"config.json: niepoprawny \"scanMode\" (dozwolone \"auto\" albo \"step\").\n";
const std::u16string kStepWithoutKey =
    u"config.json: tryb \"step\" wymaga klawisza \"scanStepKey\" — podświetlenie przesuwa się samo.\n";

class ScanSettingsTest : public ::testing::Test {
protected:
    // Reads `json` over the current settings; messages of this read only.
    bool Read(std::string_view json) {
        WriteBytes(dir_.File("config.json"), json);
        messages_.clear();
        return ReadSettingsFile(JoinPath(dir_.U16(), u"config.json"), settings_, messages_);
    }

    void ReadClean(std::string_view json) {
        EXPECT_TRUE(Read(json)) << json;
        EXPECT_EQ(messages_, u"") << json;
    }

    TempDirectory dir_;
    EngineSettings settings_;
    std::u16string messages_;
};

TEST_F(ScanSettingsTest, DefaultsAreOffAutoTwelveHundredThreeRoundsNoStepKey) {
    ReadClean("{}");
    EXPECT_FALSE(settings_.scanEnabled);
    EXPECT_EQ(settings_.scanMode, ScanMode::Auto);
    EXPECT_EQ(settings_.scanInterval, 1200);
    EXPECT_EQ(settings_.scanLoops, 3);
    EXPECT_EQ(settings_.scanStepKey, u"");
    EXPECT_FALSE(settings_.scanStepKeyCode.valid);
    EXPECT_FALSE(settings_.ScanSteppedByKey());
}

TEST_F(ScanSettingsTest, ValuesAreRead) {
    ReadClean(R"({"scanEnabled": true, "scanMode": "step", "scanInterval": 800, "scanLoops": 5,
                  "scanStepKey": " space "})");
    EXPECT_TRUE(settings_.scanEnabled);
    EXPECT_EQ(settings_.scanMode, ScanMode::Step);
    EXPECT_EQ(settings_.scanInterval, 800);
    EXPECT_EQ(settings_.scanLoops, 5);
    EXPECT_EQ(settings_.scanStepKey, u" space ");
    EXPECT_TRUE(settings_.scanStepKeyCode.valid);
    EXPECT_EQ(settings_.scanStepKeyCode.vk, 0x20);
    EXPECT_TRUE(settings_.ScanSteppedByKey());
}

TEST_F(ScanSettingsTest, IntervalAndRoundsAreClamped) {
    struct Case {
        const char* number;
        std::int32_t interval;
        std::int32_t loops;
    };
    const Case cases[] = {
        {"0", 250, 1},       {"-5", 250, 1},          {"249.9", 250, 20},  {"250", 250, 20},
        {"7.9", 250, 7},     {"10000.9", 10000, 20},  {"10001", 10000, 20}, {"1e12", 250, 1},
        {"1e400", 250, 1},   {"1", 250, 1},           {"20.5", 250, 20},   {"21", 250, 20},
        {"1234.5", 1234, 20},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.number);
        ReadClean(std::string("{\"scanInterval\": ") + c.number + ", \"scanLoops\": " + c.number + "}");
        EXPECT_EQ(settings_.scanInterval, c.interval);
        EXPECT_EQ(settings_.scanLoops, c.loops);
    }
}

TEST_F(ScanSettingsTest, ValuesOfTheWrongKindAreIgnoredSilently) {
    ReadClean(R"({"scanEnabled": true, "scanInterval": 900, "scanLoops": 4})");
    ReadClean(R"({"scanEnabled": 0, "scanInterval": "300", "scanLoops": null, "scanStepKey": 5})");
    EXPECT_TRUE(settings_.scanEnabled);
    EXPECT_EQ(settings_.scanInterval, 900);
    EXPECT_EQ(settings_.scanLoops, 4);
    EXPECT_EQ(settings_.scanStepKey, u"");
}

TEST_F(ScanSettingsTest, UnknownModeKeepsTheModeAndSaysSo) {
    ReadClean(R"({"scanMode": "step", "scanStepKey": "space"})");
    for (const char* mode : {R"("Step")", R"("")", R"(" auto")", "1", "true", "null", R"(["auto"])"}) {
        SCOPED_TRACE(mode);
        EXPECT_FALSE(Read(std::string("{\"scanMode\": ") + mode + "}"));
        EXPECT_EQ(messages_, kBadMode);
        EXPECT_EQ(settings_.scanMode, ScanMode::Step);
    }
    ReadClean(R"({"scanMode": "auto"})");
    EXPECT_EQ(settings_.scanMode, ScanMode::Auto);
}

TEST_F(ScanSettingsTest, UnusableStepKeyIsDroppedWithTheKeyMessage) {
    for (const char* key : {"lmb", "f25", "ctrl+c", "  ", "mouse5"}) {
        SCOPED_TRACE(key);
        ReadClean(R"({"scanStepKey": "F6"})");
        EXPECT_FALSE(Read(std::string("{\"scanStepKey\": \"") + key + "\"}"));
        const std::string ascii(key);
        EXPECT_EQ(messages_, u"config.json: nieznany klawisz \"" + std::u16string(ascii.begin(), ascii.end()) +
                                 u"\" — \"scanStepKey\" zostaje pusty.\n");
        EXPECT_EQ(settings_.scanStepKey, u"");
        EXPECT_FALSE(settings_.scanStepKeyCode.valid);
    }
}

TEST_F(ScanSettingsTest, StepKeyMayNotBeTheToggleKey) {
    EXPECT_FALSE(Read(R"({"toggleKey": "F5", "scanStepKey": "f5"})"));
    EXPECT_EQ(messages_, u"config.json: \"scanStepKey\" \"f5\" to ten sam klawisz co \"toggleKey\" — zostaje pusty.\n");
    EXPECT_EQ(settings_.scanStepKey, u"");
    EXPECT_FALSE(settings_.scanStepKeyCode.valid);
}

TEST_F(ScanSettingsTest, StepModeWithoutAStepKeyMovesByItselfAndSaysSo) {
    ReadClean(R"({"scanMode": "step"})");  // scanning off: nothing to say
    EXPECT_FALSE(Read(R"({"scanEnabled": true})"));
    EXPECT_EQ(messages_, kStepWithoutKey);
    EXPECT_EQ(settings_.scanMode, ScanMode::Step);
    EXPECT_FALSE(settings_.ScanSteppedByKey());
}

TEST_F(ScanSettingsTest, MessagesComeInTheOrderOfTheKeys) {
    EXPECT_FALSE(Read(R"({"scanEnabled": true, "segmentColor": "#FFF", "scanMode": "x", "toggleKey": "lmb",
                         "scanStepKey": "nic"})"));
    EXPECT_EQ(messages_, u"config.json: niepoprawny \"segmentColor\" (format \"#RRGGBB\").\n" + kBadMode +
                             u"config.json: nieznany klawisz \"lmb\" — używam \"x\".\n"
                             u"config.json: nieznany klawisz \"nic\" — \"scanStepKey\" zostaje pusty.\n");
}

TEST_F(ScanSettingsTest, RemovedKeysKeepTheValuesOfThePreviousRead) {
    ReadClean(R"({"scanEnabled": true, "scanMode": "step", "scanInterval": 500, "scanLoops": 2,
                  "scanStepKey": "enter"})");
    ReadClean("{}");
    EXPECT_TRUE(settings_.scanEnabled);
    EXPECT_EQ(settings_.scanMode, ScanMode::Step);
    EXPECT_EQ(settings_.scanInterval, 500);
    EXPECT_EQ(settings_.scanLoops, 2);
    EXPECT_EQ(settings_.scanStepKeyCode.vk, 0x0D);
}

}  // namespace
}  // namespace zirvel
