#include "tools/configuration_check.h"

#include "config/file_io.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace zirvel {
namespace {

class ConfigurationCheck : public ::testing::Test {
protected:
    void SetUp() override {
        directory_ = std::filesystem::temp_directory_path() /
                     ("zirvel_check_" + std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
        std::filesystem::remove_all(directory_);
        std::filesystem::create_directories(directory_);
    }
    void TearDown() override { std::filesystem::remove_all(directory_); }

    std::u16string Write(const std::string& name, const std::string& content) {
        const auto path = directory_ / name;
        std::ofstream(path, std::ios::binary) << content;
        return path.u16string();
    }

    std::filesystem::path directory_;
};

TEST_F(ConfigurationCheck, RecognisesSettingsByNameAndByKeys) {
    EXPECT_EQ(GuessConfigurationFileKind(Write("config.json", "[]")), ConfigurationFileKind::Settings);
    EXPECT_EQ(GuessConfigurationFileKind(Write("CONFIG.JSON", "{}")), ConfigurationFileKind::Settings);
    EXPECT_EQ(GuessConfigurationFileKind(Write("mine.json", R"({"keyHold": 5})")), ConfigurationFileKind::Settings);
    EXPECT_EQ(GuessConfigurationFileKind(Write("w.json", R"({"actions": []})")), ConfigurationFileKind::Wheels);
    EXPECT_EQ(GuessConfigurationFileKind(Write("x.json", R"({"other": 1})")), ConfigurationFileKind::Wheels);
    EXPECT_EQ(GuessConfigurationFileKind(Write("y.json", "not json")), ConfigurationFileKind::Wheels);
}

TEST_F(ConfigurationCheck, CleanWheelsFileListsWheelsFunctionsAndSteps) {
    const auto path = Write("w.json", R"({"wheels": [{"name": "Gra", "actions": [
        {"name": "Leczenie", "voice": "lecz", "color": "#ff0000", "steps": [
            {"key": "ctrl", "action": "hold"}, {"key": "h", "value": 3},
            {"key": "ctrl", "action": "release"}, {"open": "notepad"}]},
        null]}]})");
    const CheckResult result = CheckConfigurationFile(path, ConfigurationFileKind::Wheels);
    EXPECT_TRUE(result.clean);
    EXPECT_NE(result.report.find("Wszystko w porządku"), std::string::npos) << result.report;
    EXPECT_NE(result.report.find("Koło 1 „Gra”, funkcje: 2\n"), std::string::npos) << result.report;
    EXPECT_NE(result.report.find("  1. „Leczenie”, głos „lecz”, kolor #FF0000\n"), std::string::npos) << result.report;
    EXPECT_NE(result.report.find("       przytrzymaj (bez puszczania):  ctrl\n"
                                 "       klik x3:  h\n"
                                 "       puść:  ctrl\n"
                                 "       otwórz:  notepad\n"),
              std::string::npos)
        << result.report;
    EXPECT_NE(result.report.find("  2. „”\n       (brak kroków)\n"), std::string::npos) << result.report;
}

TEST_F(ConfigurationCheck, WheelsFileProblemsAreTheEngineMessages) {
    const auto path = Write("w.json", R"({"actions": [{"name": "A", "steps": [{"key": "a", "action": "Click"}]}]})");
    const CheckResult result = CheckConfigurationFile(path, ConfigurationFileKind::Wheels);
    EXPECT_FALSE(result.clean);
    EXPECT_NE(result.report.find("default.json: nieznana czynność \"Click\" w polu \"A\".\n"), std::string::npos)
        << result.report;
    EXPECT_EQ(result.report.find("Wszystko w porządku"), std::string::npos);
}

TEST_F(ConfigurationCheck, ProgramsOfAWheelAreListedAndTheirProblemsReported) {
    const auto path = Write("w.json", R"({"wheels": [
        {"name": "Gra", "apps": ["gra.exe", 7, "Steam_App_5"], "actions": [{"name": "A", "key": "a"}]},
        {"name": "Inne", "apps": "notepad.exe", "actions": [{"name": "B", "key": "b"}]}]})");
    const CheckResult result = CheckConfigurationFile(path, ConfigurationFileKind::Wheels);
    EXPECT_FALSE(result.clean);
    EXPECT_NE(result.report.find("default.json: pomijam element \"apps\" koła \"Gra\", który nie jest niepustym "
                                 "napisem.\n"
                                 "default.json: \"apps\" koła \"Inne\" nie jest tablicą — pomijam.\n"),
              std::string::npos)
        << result.report;
    EXPECT_NE(result.report.find("Koło 1 „Gra”, funkcje: 1, programy: „gra.exe”, „Steam_App_5”\n"), std::string::npos)
        << result.report;
    EXPECT_NE(result.report.find("Koło 2 „Inne”, funkcje: 1\n"), std::string::npos) << result.report;
}

TEST_F(ConfigurationCheck, TenThousandWheelsAreReadAndCounted) {
    std::string text = R"({"wheels": [)";
    for (int i = 0; i < 10000; ++i) {
        text += (i ? "," : "") + std::string(R"({"name": "W)") + std::to_string(i) +
                R"(", "actions": [{"name": "A", "key": "a"}]})";
    }
    text += "]}";
    const CheckResult result = CheckConfigurationFile(Write("many.json", text), ConfigurationFileKind::Wheels);
    EXPECT_TRUE(result.clean);
    EXPECT_NE(result.report.find("Koło 10000 „W9999”, funkcje: 1\n"), std::string::npos);
}

// Files no person wrote as wheels: each gets the engine's message, nothing more.
TEST_F(ConfigurationCheck, AFolderAMissingFileAndAnOversizedFileCannotBeRead) {
    std::filesystem::create_directory(directory_ / "folder.json");
    const std::u16string big = Write("big.json", std::string(kLargestReadFile + 1, ' '));
    for (const std::u16string& path : {(directory_ / "folder.json").u16string(), (directory_ / "missing.json").u16string(), big}) {
        const CheckResult result = CheckConfigurationFile(path, ConfigurationFileKind::Wheels);
        EXPECT_FALSE(result.clean);
        EXPECT_NE(result.report.find("Nie udało się wczytać pliku kół"), std::string::npos) << result.report;
        EXPECT_NE(result.report.find("Koła: 0"), std::string::npos) << result.report;
    }
}

TEST_F(ConfigurationCheck, SettingsFileShowsEffectiveValuesAndMessages) {
    const auto path = Write("config.json", R"({"toggleKey": "lmb", "keyHold": 5000, "segmentColor": "#FFF"})");
    const CheckResult result = CheckConfigurationFile(path, ConfigurationFileKind::Settings);
    EXPECT_FALSE(result.clean);
    EXPECT_NE(result.report.find("config.json: niepoprawny \"segmentColor\" (format \"#RRGGBB\").\n"
                                 "config.json: nieznany klawisz \"lmb\" — używam \"x\".\n"),
              std::string::npos)
        << result.report;
    EXPECT_NE(result.report.find("  keyHold: 1000 ms\n"), std::string::npos) << result.report;
    EXPECT_NE(result.report.find("  segmentColor: #3498DB\n"), std::string::npos) << result.report;
    EXPECT_NE(result.report.find("  toggleKey: „x”\n"), std::string::npos) << result.report;
}

TEST_F(ConfigurationCheck, ScanningSettingsAreReportedWithTheirMessages) {
    const auto path = Write("settings.json", R"({"scanEnabled": true, "scanMode": "krok", "scanInterval": 100,
                                                 "scanLoops": 50, "scanStepKey": "lmb"})");
    EXPECT_EQ(GuessConfigurationFileKind(path), ConfigurationFileKind::Settings);
    const CheckResult result = CheckConfigurationFile(path, ConfigurationFileKind::Settings);
    EXPECT_FALSE(result.clean);
    EXPECT_NE(result.report.find("config.json: niepoprawny \"scanMode\" (dozwolone \"auto\" albo \"step\").\n"
                                 "config.json: nieznany klawisz \"lmb\" — \"scanStepKey\" zostaje pusty.\n"),
              std::string::npos)
        << result.report;
    EXPECT_NE(result.report.find("  scanEnabled: tak\n"
                                 "  scanMode: „auto”\n"
                                 "  scanInterval: 250 ms\n"
                                 "  scanLoops: 20\n"
                                 "  scanStepKey: „”\n"),
              std::string::npos)
        << result.report;
}

TEST_F(ConfigurationCheck, CleanSettingsFileSaysAllIsWell) {
    const auto path = Write("config.json", "{\n  \"segmentColor\": \"#3498DB\",\n  \"toggleKey\": \"x\"\n}\n");
    const CheckResult result = CheckConfigurationFile(path, ConfigurationFileKind::Settings);
    EXPECT_TRUE(result.clean);
    EXPECT_NE(result.report.find("Wszystko w porządku"), std::string::npos) << result.report;
}

}  // namespace
}  // namespace zirvel
