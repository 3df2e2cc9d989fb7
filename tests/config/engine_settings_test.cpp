// config.json, the first-run files and the load of all three configuration
// files, each test in a program directory of its own.
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "config/engine_settings.h"
#include "config/file_io.h"
#include "config/key_code.h"
#include "config/wheel.h"
#include "test_files.h"
#include "wheel_equality.h"

namespace zirvel {
namespace {

using zirvel_test::ExpectSameFunctions;
using zirvel_test::FileExists;
using zirvel_test::KeyStep;
using zirvel_test::ReadBytes;
using zirvel_test::TempDirectory;
using zirvel_test::WriteBytes;

// The first-run files, byte for byte.
const std::string kFirstRunConfig =
    "{\n"
    "  \"segmentColor\": \"#3498DB\",\n"
    "  \"toggleKey\": \"x\"\n"
    "}\n";

const std::string kFirstRunWheels =
    "{\n"
    "  \"wheels\": [\n"
    "    {\n"
    "      \"name\": \"Kolo 1\",\n"
    "      \"actions\": [\n"
    "        { \"name\": \"Funkcja 1\", \"key\": \"1\" },\n"
    "        { \"name\": \"Funkcja 2\", \"key\": \"2\" },\n"
    "        { \"name\": \"Funkcja 3\", \"key\": \"3\" },\n"
    "        { \"name\": \"Funkcja 4\", \"key\": \"4\" },\n"
    "        { \"name\": \"Funkcja 5\", \"key\": \"5\" },\n"
    "        { \"name\": \"Funkcja 6\", \"key\": \"6\" },\n"
    "        { \"name\": \"Funkcja 7\", \"key\": \"7\" },\n"
    "        { \"name\": \"Funkcja 8\", \"key\": \"8\" }\n"
    "      ]\n"
    "    }\n"
    "  ]\n"
    "}\n";

const std::string kFirstRunVoice =
    "{\n"
    "  \"actions\": [\n"
    "    { \"name\": \"Przełącz okno\", \"voice\": \"przełącz okno\",\n"
    "      \"steps\": [ { \"key\": \"alt\", \"action\": \"hold\" },\n"
    "                 { \"key\": \"tab\", \"action\": \"click\" },\n"
    "                 { \"key\": \"alt\", \"action\": \"release\" } ] }\n"
    "  ]\n"
    "}\n";

const std::u16string kConfigUnreadable =
    u"Nie udało się wczytać config.json — używam ustawień domyślnych.\n";
const std::u16string kBadColor =
    u"config.json: niepoprawny \"segmentColor\" (format \"#RRGGBB\").\n";
const std::u16string kNoUsableWheel =
    u"default.json: brak poprawnych kół — wyświetlam 6 pustych pól.\n";

std::u16string UnknownToggleKey(std::u16string_view text) {
    return u"config.json: nieznany klawisz \"" + std::u16string(text) +
           u"\" — używam \"x\".\n";
}

std::u16string UnreadableWheels(const std::u16string& path) {
    return u"Nie udało się wczytać pliku kół: " + path + u"\n";
}

class EngineSettingsTest : public ::testing::Test {
protected:
    void SetUp() override { configuration_.programDirectory = dir_.U16(); }

    std::filesystem::path File(std::string_view name) const { return dir_.File(name); }

    void WriteConfig(std::string_view json) { WriteBytes(File("config.json"), json); }

    // One load, as at start-up or on a reload; messages of this load only.
    bool Load() {
        messages_.clear();
        return LoadEngineConfiguration(configuration_, messages_);
    }

    // Loads `json` as config.json and expects a clean load.
    void LoadCleanConfig(std::string_view json) {
        WriteConfig(json);
        EXPECT_TRUE(Load()) << json;
        EXPECT_EQ(messages_, u"") << json;
    }

    const EngineSettings& Settings() const { return configuration_.settings; }

    TempDirectory dir_;
    EngineConfiguration configuration_;
    std::u16string messages_;
};

// ---------------------------------------------------------------------------
// Paths and first-run files

TEST_F(EngineSettingsTest, FilesLiveInTheProgramDirectory) {
    EXPECT_EQ(JoinPath(u"dir", u"name.json"), std::u16string(u"dir") + kPathSeparator + u"name.json");
    EXPECT_EQ(configuration_.ConfigPath(), JoinPath(dir_.U16(), u"config.json"));
    EXPECT_EQ(configuration_.WheelsPath(), JoinPath(dir_.U16(), u"default.json"));
    EXPECT_EQ(configuration_.VoicePath(), JoinPath(dir_.U16(), u"voice.json"));
    configuration_.wheelsFileName = u"moje.json";
    EXPECT_EQ(configuration_.WheelsPath(), JoinPath(dir_.U16(), u"moje.json"));
}

TEST_F(EngineSettingsTest, FirstRunTextsAreExact) {
    EXPECT_EQ(kFirstRunConfig.size(), 52u);
    EXPECT_EQ(DefaultConfigText(), kFirstRunConfig);
    EXPECT_EQ(DefaultWheelsText(), kFirstRunWheels);
    EXPECT_EQ(DefaultVoiceText(), kFirstRunVoice);
}

TEST_F(EngineSettingsTest, WriteDefaultFilesCreatesTheThreeFiles) {
    WriteDefaultFiles(configuration_);
    EXPECT_EQ(ReadBytes(File("config.json")), kFirstRunConfig);
    EXPECT_EQ(ReadBytes(File("default.json")), kFirstRunWheels);
    EXPECT_EQ(ReadBytes(File("voice.json")), kFirstRunVoice);
    EXPECT_EQ(ReadBytes(File("config.json")), DefaultConfigText());
    EXPECT_EQ(ReadBytes(File("default.json")), DefaultWheelsText());
    EXPECT_EQ(ReadBytes(File("voice.json")), DefaultVoiceText());
}

TEST_F(EngineSettingsTest, WriteDefaultFilesNeverTouchesAnExistingFile) {
    WriteBytes(File("config.json"), "moje ustawienia");
    WriteBytes(File("default.json"), "");
    WriteDefaultFiles(configuration_);
    EXPECT_EQ(ReadBytes(File("config.json")), "moje ustawienia");
    EXPECT_EQ(ReadBytes(File("default.json")), "");
    EXPECT_EQ(ReadBytes(File("voice.json")), kFirstRunVoice);

    WriteBytes(File("voice.json"), "{}");
    WriteDefaultFiles(configuration_);
    EXPECT_EQ(ReadBytes(File("voice.json")), "{}");
}

// The user's editor saves config.json again and again while the engine
// reloads it: each load takes one whole version (the editor's save is a
// rename), and the engine never writes the file itself.
TEST_F(EngineSettingsTest, AConfigReplacedDuringReloadsIsReadWholeAndLeftAlone) {
    const std::string fast = R"({"toggleKey": "x", "sendDelay": 100})";
    const std::string slow = R"({"toggleKey": "x", "sendDelay": 200, "padding": ")" + std::string(100000, ' ') + R"("})";
    ASSERT_TRUE(ReplaceFileBytes(File("config.json").u16string(), fast));
    std::atomic<bool> stop{false};
    std::atomic<int> saves{0};
    // Saves far more often than any person (hundreds a second), yet with a
    // breath between them: saving without one keeps the file in the middle
    // of a replacement for longer than a reload waits on Windows when the
    // cores are busy (under Wine with the other core busy, 0.2 ms was too
    // short a breath for one reload in twenty).
    std::thread editor([&] {
        for (int i = 0; !stop && i < 100000; ++i) {
            if (ReplaceFileBytes(File("config.json").u16string(), i % 2 ? fast : slow)) ++saves;
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
    });
    // Each reload waits for a save it has not seen yet, so the reloads meet
    // the saves however the threads are scheduled (bounded: 5 s each).
    const auto savedAgain = [&saves](int seen) {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
        while (saves.load() <= seen && std::chrono::steady_clock::now() < deadline) {
            std::this_thread::sleep_for(std::chrono::microseconds(100));
        }
        return saves.load() > seen;
    };
    int whole = 0;
    int interleaved = 0;
    for (int reload = 0; reload < 100; ++reload) {
        interleaved += savedAgain(saves.load());
        messages_.clear();
        configuration_.settings = EngineSettings{};
        LoadEngineConfiguration(configuration_, messages_);
        const std::int32_t delay = Settings().sendDelay;
        whole += (delay == 100 || delay == 200) && messages_.find(u"config.json") == std::u16string::npos;
    }
    stop = true;
    editor.join();
    EXPECT_EQ(interleaved, 100) << "the editor stopped saving";
    EXPECT_EQ(whole, 100);
    const std::string last = ReadBytes(File("config.json"));
    EXPECT_TRUE(last == fast || last == slow) << "the engine changed the file";
}

TEST_F(EngineSettingsTest, FirstRunLoadGivesTheDefaults) {
    configuration_.currentWheel = 3;
    EXPECT_TRUE(Load());
    EXPECT_EQ(messages_, u"");

    EXPECT_EQ(ReadBytes(File("config.json")), kFirstRunConfig);
    EXPECT_EQ(ReadBytes(File("default.json")), kFirstRunWheels);
    EXPECT_EQ(ReadBytes(File("voice.json")), kFirstRunVoice);

    const EngineSettings& s = Settings();
    EXPECT_EQ(s.segmentColor, 0x00DB9834u);
    EXPECT_EQ(s.toggleKey, u"x");
    EXPECT_TRUE(s.toggleKeyCode.valid);
    EXPECT_FALSE(s.toggleKeyCode.isMouse);
    EXPECT_EQ(s.toggleKeyCode.vk, 0x58);
    EXPECT_EQ(s.sendDelay, 250);
    EXPECT_EQ(s.keyHold, 60);
    EXPECT_FALSE(s.takeFocus);
    EXPECT_TRUE(s.gazeEnabled);
    EXPECT_EQ(s.gazeDwell, 900);
    EXPECT_EQ(s.gazeDllPath, u"");
    EXPECT_TRUE(s.voiceEnabled);
    EXPECT_TRUE(s.voiceGlobal);
    EXPECT_EQ(s.voiceModel, u"vosk-model-small-pl-0.22");
    EXPECT_EQ(s.voiceDllPath, u"");

    ASSERT_EQ(configuration_.wheels.size(), 1u);
    EXPECT_EQ(configuration_.wheels[0].name, u"Kolo 1");
    std::vector<WheelFunction> expected(8);
    for (int n = 1; n <= 8; ++n) {
        const std::u16string digit(1, static_cast<char16_t>(u'0' + n));
        expected[n - 1].name = u"Funkcja " + digit;
        expected[n - 1].steps.push_back(KeyStep(digit, StepKind::Click, 1));
    }
    ExpectSameFunctions(expected, configuration_.wheels[0].functions);
    ASSERT_EQ(configuration_.wheels[0].functions.size(), 8u);
    EXPECT_EQ(configuration_.wheels[0].functions[7].steps[0].key.vk, 0x38);
    EXPECT_EQ(configuration_.currentWheel, 0u);

    WheelFunction voice;
    voice.name = u"Przełącz okno";
    voice.voice = u"przełącz okno";
    voice.steps.push_back(KeyStep(u"alt", StepKind::Hold, 0));
    voice.steps.push_back(KeyStep(u"tab", StepKind::Click, 1));
    voice.steps.push_back(KeyStep(u"alt", StepKind::Release, 0));
    ExpectSameFunctions({voice}, configuration_.globalVoiceFunctions);
}

TEST_F(EngineSettingsTest, ReloadDoesNotDuplicateVoiceCommands) {
    EXPECT_TRUE(Load());
    EXPECT_TRUE(Load());
    EXPECT_EQ(configuration_.globalVoiceFunctions.size(), 1u);
    EXPECT_EQ(configuration_.wheels.size(), 1u);
}

// ---------------------------------------------------------------------------
// config.json that cannot be used

TEST_F(EngineSettingsTest, ArrayRootKeepsThePreviousValues) {
    LoadCleanConfig(R"({"sendDelay": 100, "toggleKey": "q", "segmentColor": "#FF0000",
                        "voiceModel": "model-a", "takeFocus": true})");
    WriteConfig("[]");
    EXPECT_FALSE(Load());
    EXPECT_EQ(messages_, kConfigUnreadable);
    EXPECT_EQ(Settings().sendDelay, 100);
    EXPECT_EQ(Settings().toggleKey, u"q");
    EXPECT_EQ(Settings().toggleKeyCode.vk, 0x51);
    EXPECT_EQ(Settings().segmentColor, 0x000000FFu);
    EXPECT_EQ(Settings().voiceModel, u"model-a");
    EXPECT_TRUE(Settings().takeFocus);
}

TEST_F(EngineSettingsTest, EveryUnreadableFormGivesTheSameMessage) {
    const std::string unreadable[] = {
        "[]",
        "",
        "{",
        "{\"sendDelay\": 100} x",
        "{\"sendDelay\": 100,}",
        "{} // komentarz",
        "\"tekst\"",
        "5",
        "null",
        std::string("\xFF\xFE{\0}\0", 6),
    };
    for (const std::string& text : unreadable) {
        SCOPED_TRACE(text);
        configuration_ = EngineConfiguration();
        configuration_.programDirectory = dir_.U16();
        configuration_.settings.sendDelay = 77;
        WriteConfig(text);
        EXPECT_FALSE(Load());
        EXPECT_EQ(messages_, kConfigUnreadable);
        EXPECT_EQ(Settings().sendDelay, 77);
        EXPECT_EQ(Settings().segmentColor, kDefaultSegmentColor);
        // Wheels and voice commands are still read.
        EXPECT_EQ(configuration_.wheels.size(), 1u);
        EXPECT_EQ(configuration_.globalVoiceFunctions.size(), 1u);
    }
}

TEST_F(EngineSettingsTest, ConfigWithByteOrderMarkIsRead) {
    LoadCleanConfig("\xEF\xBB\xBF{\"sendDelay\": 123}");
    EXPECT_EQ(Settings().sendDelay, 123);
}

// ---------------------------------------------------------------------------
// Numbers

TEST_F(EngineSettingsTest, NumbersAreClampedToTheirRanges) {
    LoadCleanConfig(R"({"sendDelay": -1, "keyHold": 5000, "gazeDwell": 10000.7})");
    EXPECT_EQ(Settings().sendDelay, 0);
    EXPECT_EQ(Settings().keyHold, 1000);
    EXPECT_EQ(Settings().gazeDwell, 10000);
}

TEST_F(EngineSettingsTest, NumberConversionTruncatesAndRejectsWhatDoesNotFit) {
    struct Case {
        const char* number;
        std::int32_t sendDelay;
    };
    const Case cases[] = {
        {"2000.9", 2000}, {"1999.99", 1999}, {"-5", 0},          {"-0.9", 0},
        {"1e12", 0},      {"-1e12", 0},      {"2147483647", 2000}, {"2147483648", 0},
        {"-2147483648", 0}, {"-2147483649", 0}, {"1e400", 0},      {"0", 0},
        {"+7", 7},        {"7.9", 7},        {"1e3", 1000},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.number);
        configuration_.settings.sendDelay = 555;
        LoadCleanConfig(std::string("{\"sendDelay\": ") + c.number + "}");
        EXPECT_EQ(Settings().sendDelay, c.sendDelay);
    }
}

TEST_F(EngineSettingsTest, KeyHoldAndDwellMaximums) {
    LoadCleanConfig(R"({"keyHold": 99999, "gazeDwell": 10001})");
    EXPECT_EQ(Settings().keyHold, 1000);
    EXPECT_EQ(Settings().gazeDwell, 10000);
    LoadCleanConfig(R"({"keyHold": 1000.5, "gazeDwell": 123.9, "sendDelay": 2000})");
    EXPECT_EQ(Settings().keyHold, 1000);
    EXPECT_EQ(Settings().gazeDwell, 123);
    EXPECT_EQ(Settings().sendDelay, 2000);
    LoadCleanConfig(R"({"keyHold": 1e12, "gazeDwell": -3})");
    EXPECT_EQ(Settings().keyHold, 0);
    EXPECT_EQ(Settings().gazeDwell, 0);
}

TEST_F(EngineSettingsTest, NumberOfTheWrongKindIsIgnoredSilently) {
    LoadCleanConfig(R"({"sendDelay": "100", "keyHold": true, "gazeDwell": null})");
    EXPECT_EQ(Settings().sendDelay, 250);
    EXPECT_EQ(Settings().keyHold, 60);
    EXPECT_EQ(Settings().gazeDwell, 900);
}

// ---------------------------------------------------------------------------
// Booleans and strings

TEST_F(EngineSettingsTest, BooleanGivenAsNumberIsIgnored) {
    LoadCleanConfig(R"({"takeFocus": 1})");
    EXPECT_FALSE(Settings().takeFocus);
    LoadCleanConfig(R"({"gazeEnabled": 0, "voiceEnabled": "false", "voiceGlobal": null})");
    EXPECT_TRUE(Settings().gazeEnabled);
    EXPECT_TRUE(Settings().voiceEnabled);
    EXPECT_TRUE(Settings().voiceGlobal);
}

TEST_F(EngineSettingsTest, BooleansAreRead) {
    LoadCleanConfig(R"({"takeFocus": true, "gazeEnabled": false, "voiceEnabled": false,
                        "voiceGlobal": false})");
    EXPECT_TRUE(Settings().takeFocus);
    EXPECT_FALSE(Settings().gazeEnabled);
    EXPECT_FALSE(Settings().voiceEnabled);
    EXPECT_FALSE(Settings().voiceGlobal);
}

TEST_F(EngineSettingsTest, StringsAreRead) {
    LoadCleanConfig(R"({"gazeDllPath": "C:\\Tobii\\tobii.dll", "voiceDllPath": "D:\\vosk\\libvosk.dll",
                        "voiceModel": "vosk-model-pl"})");
    EXPECT_EQ(Settings().gazeDllPath, u"C:\\Tobii\\tobii.dll");
    EXPECT_EQ(Settings().voiceDllPath, u"D:\\vosk\\libvosk.dll");
    EXPECT_EQ(Settings().voiceModel, u"vosk-model-pl");
}

TEST_F(EngineSettingsTest, EmptyModelKeepsThePreviousOneButEmptyPathsAreTaken) {
    LoadCleanConfig(R"({"gazeDllPath": "g.dll", "voiceDllPath": "v.dll", "voiceModel": "model-a"})");
    LoadCleanConfig(R"({"gazeDllPath": "", "voiceDllPath": "", "voiceModel": ""})");
    EXPECT_EQ(Settings().voiceModel, u"model-a");
    EXPECT_EQ(Settings().gazeDllPath, u"");
    EXPECT_EQ(Settings().voiceDllPath, u"");
}

TEST_F(EngineSettingsTest, StringOfTheWrongKindIsIgnored) {
    LoadCleanConfig(R"({"voiceModel": 5, "gazeDllPath": ["a"], "toggleKey": 7})");
    EXPECT_EQ(Settings().voiceModel, u"vosk-model-small-pl-0.22");
    EXPECT_EQ(Settings().gazeDllPath, u"");
    EXPECT_EQ(Settings().toggleKey, u"x");
}

TEST_F(EngineSettingsTest, FirstOccurrenceOfAKeyWins) {
    LoadCleanConfig(R"({"sendDelay": 100, "sendDelay": 200,
                        "segmentColor": "#FF0000", "segmentColor": "zły"})");
    EXPECT_EQ(Settings().sendDelay, 100);
    EXPECT_EQ(Settings().segmentColor, 0x000000FFu);
}

TEST_F(EngineSettingsTest, RemovedKeyKeepsTheValueOfThePreviousLoad) {
    LoadCleanConfig(R"({"sendDelay": 100, "keyHold": 20, "voiceModel": "model-a",
                        "gazeEnabled": false, "segmentColor": "#00FF00", "toggleKey": "F5"})");
    LoadCleanConfig("{}");
    EXPECT_EQ(Settings().sendDelay, 100);
    EXPECT_EQ(Settings().keyHold, 20);
    EXPECT_EQ(Settings().voiceModel, u"model-a");
    EXPECT_FALSE(Settings().gazeEnabled);
    EXPECT_EQ(Settings().segmentColor, 0x0000FF00u);
    EXPECT_EQ(Settings().toggleKey, u"F5");
    EXPECT_EQ(Settings().toggleKeyCode.vk, 0x74);
}

TEST_F(EngineSettingsTest, UnknownKeysAreIgnored) {
    LoadCleanConfig(R"({"colour": "#000000", "SendDelay": 5, "x": {"y": [1, 2]}})");
    EXPECT_EQ(Settings().segmentColor, kDefaultSegmentColor);
    EXPECT_EQ(Settings().sendDelay, 250);
}

// ---------------------------------------------------------------------------
// toggleKey

TEST_F(EngineSettingsTest, ToggleKeyIsTrimmed) {
    LoadCleanConfig(R"({"toggleKey": " F5 "})");
    EXPECT_TRUE(Settings().toggleKeyCode.valid);
    EXPECT_FALSE(Settings().toggleKeyCode.isMouse);
    EXPECT_EQ(Settings().toggleKeyCode.vk, 0x74);
    EXPECT_EQ(Settings().toggleKeyCode.name, u"F5");
}

TEST_F(EngineSettingsTest, ToggleKeyNames) {
    LoadCleanConfig(R"({"toggleKey": "enter"})");
    EXPECT_EQ(Settings().toggleKey, u"enter");
    EXPECT_EQ(Settings().toggleKeyCode.vk, 0x0D);
    LoadCleanConfig(R"({"toggleKey": "q"})");
    EXPECT_EQ(Settings().toggleKeyCode.vk, 0x51);
    LoadCleanConfig(R"({"toggleKey": "up"})");
    EXPECT_EQ(Settings().toggleKeyCode.vk, 0x26);
    EXPECT_TRUE(Settings().toggleKeyCode.extended);
}

TEST_F(EngineSettingsTest, MouseButtonOrUnknownToggleKeyFallsBackToX) {
    for (const char* text : {"lmb", "f25", "ctrl+c", "", "  ", "mouse5"}) {
        SCOPED_TRACE(text);
        LoadCleanConfig(R"({"toggleKey": "F6"})");
        WriteConfig(std::string("{\"toggleKey\": \"") + text + "\"}");
        EXPECT_FALSE(Load());
        const std::string ascii(text);
        EXPECT_EQ(messages_, UnknownToggleKey(std::u16string(ascii.begin(), ascii.end())));
        EXPECT_EQ(Settings().toggleKey, u"x");
        EXPECT_TRUE(Settings().toggleKeyCode.valid);
        EXPECT_FALSE(Settings().toggleKeyCode.isMouse);
        EXPECT_EQ(Settings().toggleKeyCode.vk, 0x58);
        EXPECT_EQ(Settings().toggleKeyCode.name, u"x");
    }
}

TEST_F(EngineSettingsTest, UnknownToggleKeyMessageQuotesTheUntrimmedText) {
    WriteConfig(R"({"toggleKey": " lmb "})");
    EXPECT_FALSE(Load());
    EXPECT_EQ(messages_, u"config.json: nieznany klawisz \" lmb \" — używam \"x\".\n");
}

TEST_F(EngineSettingsTest, UnknownToggleKeyWithPolishText) {
    WriteConfig(R"({"toggleKey": "źdźbło"})");
    EXPECT_FALSE(Load());
    EXPECT_EQ(messages_, u"config.json: nieznany klawisz \"źdźbło\" — używam \"x\".\n");
}

// ---------------------------------------------------------------------------
// segmentColor

TEST_F(EngineSettingsTest, ColourInEitherCase) {
    LoadCleanConfig(R"({"segmentColor": "#3498db"})");
    EXPECT_EQ(Settings().segmentColor, 0x00DB9834u);
    LoadCleanConfig(R"({"segmentColor": "#FF0000"})");
    EXPECT_EQ(Settings().segmentColor, 0x000000FFu);
    LoadCleanConfig(R"({"segmentColor": "#00ff00"})");
    EXPECT_EQ(Settings().segmentColor, 0x0000FF00u);
    LoadCleanConfig(R"({"segmentColor": "#0000FF"})");
    EXPECT_EQ(Settings().segmentColor, 0x00FF0000u);
    LoadCleanConfig(R"({"segmentColor": "#aBcDeF"})");
    EXPECT_EQ(Settings().segmentColor, 0x00EFCDABu);
}

TEST_F(EngineSettingsTest, BadColourGivesTheMessageAndKeepsThePreviousColour) {
    const char* const bad[] = {
        R"("3498DB")",  R"("#3498DB ")", R"("#FFF")",   R"(" #3498DB")", R"("#3498DG")",
        R"("")",        R"("#1234567")", R"("#-12345")", R"("#0x1234")",  "3447003",
        "true",         "null",          "[]",
    };
    for (const char* value : bad) {
        SCOPED_TRACE(value);
        LoadCleanConfig(R"({"segmentColor": "#FF0000"})");
        WriteConfig(std::string("{\"segmentColor\": ") + value + ", \"sendDelay\": 111}");
        EXPECT_FALSE(Load());
        EXPECT_EQ(messages_, kBadColor);
        EXPECT_EQ(Settings().segmentColor, 0x000000FFu);
        EXPECT_EQ(Settings().sendDelay, 111);
    }
}

TEST_F(EngineSettingsTest, ColourAndToggleKeyMessagesInOrder) {
    WriteConfig(R"({"toggleKey": "xx", "segmentColor": "#FFF"})");
    EXPECT_FALSE(Load());
    EXPECT_EQ(messages_, kBadColor + UnknownToggleKey(u"xx"));
}

TEST(HexColor, ExactlyHashAndSixHexDigits) {
    std::uint32_t color = 0;
    ASSERT_TRUE(ParseHexColor(u"#3498DB", color));
    EXPECT_EQ(color, 0x00DB9834u);
    ASSERT_TRUE(ParseHexColor(u"#3498db", color));
    EXPECT_EQ(color, 0x00DB9834u);
    ASSERT_TRUE(ParseHexColor(u"#000000", color));
    EXPECT_EQ(color, 0u);
    ASSERT_TRUE(ParseHexColor(u"#FFFFFF", color));
    EXPECT_EQ(color, 0x00FFFFFFu);
    ASSERT_TRUE(ParseHexColor(u"#E74C3C", color));
    EXPECT_EQ(color, 0x003C4CE7u);

    for (std::u16string_view text :
         {u"", u"#", u"3498DB", u"#3498D", u"#3498DBA", u" #3498DB", u"#3498DB ", u"#3498DG",
          u"#-12345", u"#+12345", u"#0x1234", u"# 12345", u"#FFF", u"##3498D"}) {
        std::uint32_t ignored = 0;
        EXPECT_FALSE(ParseHexColor(text, ignored))
            << std::string(text.begin(), text.end());
    }
}

// ---------------------------------------------------------------------------
// The wheels file

TEST_F(EngineSettingsTest, WheelsComeFromTheWheelsFile) {
    WriteBytes(File("default.json"), R"({"wheels": [
        {"name": "A", "actions": [{"name": "a1", "key": "a"}]},
        {"name": "B", "actions": [{"name": "b1"}, {"name": "b2"}]}]})");
    configuration_.currentWheel = 1;
    EXPECT_TRUE(Load());
    EXPECT_EQ(messages_, u"");
    ASSERT_EQ(configuration_.wheels.size(), 2u);
    EXPECT_EQ(configuration_.wheels[0].name, u"A");
    EXPECT_EQ(configuration_.wheels[1].name, u"B");
    EXPECT_EQ(configuration_.wheels[1].functions.size(), 2u);
    EXPECT_EQ(configuration_.currentWheel, 0u);
}

TEST_F(EngineSettingsTest, AnotherWheelsFileIsCreatedWhenMissing) {
    configuration_.wheelsFileName = u"moje_kola.json";
    EXPECT_TRUE(Load());
    EXPECT_EQ(messages_, u"");
    EXPECT_EQ(ReadBytes(File("moje_kola.json")), kFirstRunWheels);
    EXPECT_FALSE(FileExists(File("default.json")));
    ASSERT_EQ(configuration_.wheels.size(), 1u);
    EXPECT_EQ(configuration_.wheels[0].name, u"Kolo 1");
    EXPECT_EQ(configuration_.wheels[0].functions.size(), 8u);
}

TEST_F(EngineSettingsTest, AnotherWheelsFileIsReadInsteadOfDefault) {
    WriteBytes(File("default.json"), R"({"actions": [{"name": "z default"}]})");
    WriteBytes(File("inne.json"), R"({"actions": [{"name": "z innego"}]})");
    configuration_.wheelsFileName = u"inne.json";
    EXPECT_TRUE(Load());
    ASSERT_EQ(configuration_.wheels.size(), 1u);
    ASSERT_EQ(configuration_.wheels[0].functions.size(), 1u);
    EXPECT_EQ(configuration_.wheels[0].functions[0].name, u"z innego");
}

void ExpectSixEmptyFields(const std::vector<Wheel>& wheels) {
    ASSERT_EQ(wheels.size(), 1u);
    EXPECT_EQ(wheels[0].name, u"");
    ExpectSameFunctions(std::vector<WheelFunction>(6), wheels[0].functions);
    for (const WheelFunction& function : wheels[0].functions) {
        EXPECT_EQ(function.delay, 30);
        EXPECT_FALSE(function.hasColor);
    }
}

TEST_F(EngineSettingsTest, NoUsableWheelGivesSixEmptyFields) {
    for (const char* text : {R"({"wheels": []})", R"({"actions": []})",
                             R"({"wheels": [{"name": "A", "actions": []}]})"}) {
        SCOPED_TRACE(text);
        WriteBytes(File("default.json"), text);
        EXPECT_FALSE(Load());
        EXPECT_EQ(messages_, kNoUsableWheel);
        ExpectSixEmptyFields(configuration_.wheels);
        EXPECT_EQ(configuration_.currentWheel, 0u);
    }
}

TEST_F(EngineSettingsTest, UnreadableWheelsFileGivesBothMessages) {
    WriteBytes(File("default.json"), "{\"wheels\": [");
    EXPECT_FALSE(Load());
    EXPECT_EQ(messages_, UnreadableWheels(JoinPath(dir_.U16(), u"default.json")) + kNoUsableWheel);
    ExpectSixEmptyFields(configuration_.wheels);
}

TEST_F(EngineSettingsTest, SixFieldsMessageNamesDefaultJsonForAnyWheelsFile) {
    configuration_.wheelsFileName = u"inne.json";
    WriteBytes(File("inne.json"), R"({"wheels": []})");
    EXPECT_FALSE(Load());
    EXPECT_EQ(messages_, kNoUsableWheel);
    ExpectSixEmptyFields(configuration_.wheels);
}

TEST_F(EngineSettingsTest, WheelsFileWarningsMakeTheLoadFail) {
    WriteBytes(File("default.json"),
               R"({"actions": [{"name": "F", "steps": [{"key": "ctrl+c"}, {"key": "a"}]}]})");
    EXPECT_FALSE(Load());
    EXPECT_EQ(messages_, u"default.json: nieznany klawisz \"ctrl+c\" dla pola \"F\".\n");
    ASSERT_EQ(configuration_.wheels.size(), 1u);
    ASSERT_EQ(configuration_.wheels[0].functions.size(), 1u);
    EXPECT_EQ(configuration_.wheels[0].functions[0].steps.size(), 1u);
}

TEST_F(EngineSettingsTest, MessagesOfAllFilesInLoadOrder) {
    WriteConfig("[]");
    WriteBytes(File("default.json"), "x");
    WriteBytes(File("voice.json"), R"({"nic": 1})");
    EXPECT_FALSE(Load());
    EXPECT_EQ(messages_, kConfigUnreadable +
                             UnreadableWheels(JoinPath(dir_.U16(), u"default.json")) +
                             kNoUsableWheel + u"default.json: brak \"wheels\" ani \"actions\".\n");
}

// ---------------------------------------------------------------------------
// voice.json

TEST_F(EngineSettingsTest, VoiceCommandsAreTheFunctionsWithAPhrase) {
    WriteBytes(File("voice.json"), R"({"wheels": [
        {"name": "Pierwsze", "actions": [
            {"name": "bez frazy", "key": "a"},
            {"name": "Kopiuj", "voice": "kopiuj", "steps": [{"key": "ctrl", "action": "hold"},
                                                              {"key": "c"},
                                                              {"key": "ctrl", "action": "release"}]},
            {"name": "pusta fraza", "voice": "", "key": "b"}]},
        {"name": "Drugie", "actions": [
            null,
            {"name": "Notatnik", "voice": "otwórz notatnik", "delay": 50, "icon": "n.png",
             "steps": [{"open": "notepad"}]}]}]})");
    EXPECT_TRUE(Load());
    EXPECT_EQ(messages_, u"");

    WheelFunction copy;
    copy.name = u"Kopiuj";
    copy.voice = u"kopiuj";
    copy.steps.push_back(KeyStep(u"ctrl", StepKind::Hold, 0));
    copy.steps.push_back(KeyStep(u"c", StepKind::Click, 1));
    copy.steps.push_back(KeyStep(u"ctrl", StepKind::Release, 0));
    WheelFunction notepad;
    notepad.name = u"Notatnik";
    notepad.voice = u"otwórz notatnik";
    notepad.delay = 50;
    notepad.icon = u"n.png";
    notepad.steps.push_back(zirvel_test::OpenStep(u"notepad"));
    ExpectSameFunctions({copy, notepad}, configuration_.globalVoiceFunctions);

    // The wheels of voice.json are not shown.
    ASSERT_EQ(configuration_.wheels.size(), 1u);
    EXPECT_EQ(configuration_.wheels[0].name, u"Kolo 1");
}

TEST_F(EngineSettingsTest, VoiceFileWithoutPhrasesGivesNoCommands) {
    WriteBytes(File("voice.json"), R"({"actions": [{"name": "a", "key": "a"}]})");
    EXPECT_TRUE(Load());
    EXPECT_EQ(messages_, u"");
    EXPECT_TRUE(configuration_.globalVoiceFunctions.empty());
}

TEST_F(EngineSettingsTest, UnreadableVoiceFile) {
    EXPECT_TRUE(Load());
    ASSERT_EQ(configuration_.globalVoiceFunctions.size(), 1u);
    WriteBytes(File("voice.json"), "to nie jest JSON");
    EXPECT_FALSE(Load());
    EXPECT_EQ(messages_, UnreadableWheels(JoinPath(dir_.U16(), u"voice.json")));
    EXPECT_TRUE(configuration_.globalVoiceFunctions.empty());
    ASSERT_EQ(configuration_.wheels.size(), 1u);
    EXPECT_EQ(configuration_.wheels[0].name, u"Kolo 1");
}

TEST_F(EngineSettingsTest, VoiceFileMessagesNameDefaultJson) {
    WriteBytes(File("voice.json"), R"({"wheels": [{"name": "A"}]})");
    EXPECT_FALSE(Load());
    EXPECT_EQ(messages_, u"default.json: koło bez tablicy \"actions\".\n");
    EXPECT_TRUE(configuration_.globalVoiceFunctions.empty());
}

TEST_F(EngineSettingsTest, VoiceFileWarningKeepsTheRestOfTheCommand) {
    WriteBytes(File("voice.json"), R"({"actions": [{"name": "Głośniej", "voice": "głośniej",
        "steps": [{"key": "volumeup", "action": "Click"}]}]})");
    EXPECT_FALSE(Load());
    EXPECT_EQ(messages_, u"default.json: nieznana czynność \"Click\" w polu \"Głośniej\".\n");
    ASSERT_EQ(configuration_.globalVoiceFunctions.size(), 1u);
    ASSERT_EQ(configuration_.globalVoiceFunctions[0].steps.size(), 1u);
    EXPECT_EQ(configuration_.globalVoiceFunctions[0].steps[0].kind, StepKind::Click);
    EXPECT_EQ(configuration_.globalVoiceFunctions[0].steps[0].key.vk, 0xAF);
}

TEST_F(EngineSettingsTest, MissingVoiceFileIsNotAnError) {
    // A voice file in a directory that does not exist can be neither created
    // nor read.
    configuration_.voiceFileName = u"brak_katalogu/voice.json";
    EXPECT_TRUE(Load());
    EXPECT_EQ(messages_, u"");
    EXPECT_FALSE(FileExists(File("brak_katalogu")));
    EXPECT_TRUE(configuration_.globalVoiceFunctions.empty());
    EXPECT_EQ(configuration_.wheels.size(), 1u);
}

}  // namespace
}  // namespace zirvel
