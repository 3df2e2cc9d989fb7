#include "tools/configuration_check.h"

#include <filesystem>
#include <string_view>
#include <system_error>
#include <vector>

#include "config/classic_text.h"
#include "config/engine_settings.h"
#include "config/json_reader.h"
#include "config/settings_file.h"
#include "config/utf.h"
#include "config/wheels_file.h"

namespace zirvel {
namespace {

constexpr std::string_view kAllIsWell = "Wszystko w porządku: silnik wczyta ten plik bez uwag.\n";

constexpr std::u16string_view kSettingsKeys[] = {
    u"segmentColor", u"toggleKey",   u"sendDelay",    u"keyHold",     u"takeFocus",  u"gazeEnabled",
    u"gazeDwell",    u"gazeDllPath", u"voiceEnabled", u"voiceGlobal", u"voiceModel", u"voiceDllPath",
    u"scanEnabled",  u"scanMode",    u"scanInterval", u"scanLoops",   u"scanStepKey",
};

std::u16string LowerCaseFileName(const std::u16string& path) {
    std::u16string name = std::filesystem::path(path).filename().u16string();
    for (char16_t& c : name) c = ClassicToLower(c);
    return name;
}

std::string Quoted(std::u16string_view text) { return "„" + Utf16ToUtf8(text) + "”"; }

std::string YesNo(bool value) { return value ? "tak" : "nie"; }

std::string ColorText(std::uint32_t color) {
    static constexpr char kHex[] = "0123456789ABCDEF";
    std::string text = "#";
    for (int shift : {0, 8, 16}) {
        text += kHex[(color >> (shift + 4)) & 0xF];
        text += kHex[(color >> shift) & 0xF];
    }
    return text;
}

void DescribeSettings(const EngineSettings& s, std::string& out) {
    out += "Ustawienia, których użyje silnik:\n";
    out += "  segmentColor: " + ColorText(s.segmentColor) + "\n";
    out += "  toggleKey: " + Quoted(s.toggleKey) + "\n";
    out += "  sendDelay: " + std::to_string(s.sendDelay) + " ms\n";
    out += "  keyHold: " + std::to_string(s.keyHold) + " ms\n";
    out += "  takeFocus: " + YesNo(s.takeFocus) + "\n";
    out += "  gazeEnabled: " + YesNo(s.gazeEnabled) + "\n";
    out += "  gazeDwell: " + std::to_string(s.gazeDwell) + " ms\n";
    out += "  gazeDllPath: " + Quoted(s.gazeDllPath) + "\n";
    out += "  voiceEnabled: " + YesNo(s.voiceEnabled) + "\n";
    out += "  voiceGlobal: " + YesNo(s.voiceGlobal) + "\n";
    out += "  voiceModel: " + Quoted(s.voiceModel) + "\n";
    out += "  voiceDllPath: " + Quoted(s.voiceDllPath) + "\n";
    out += "  scanEnabled: " + YesNo(s.scanEnabled) + "\n";
    out += std::string("  scanMode: ") + (s.scanMode == ScanMode::Step ? "„step”" : "„auto”") + "\n";
    out += "  scanInterval: " + std::to_string(s.scanInterval) + " ms\n";
    out += "  scanLoops: " + std::to_string(s.scanLoops) + "\n";
    out += "  scanStepKey: " + Quoted(s.scanStepKey) + "\n";
}

void DescribeFunction(std::size_t index, const WheelFunction& function, std::string& out) {
    out += "  " + std::to_string(index + 1) + ". " + Quoted(function.name);
    if (!function.voice.empty()) out += ", głos " + Quoted(function.voice);
    if (function.hasColor) out += ", kolor " + ColorText(function.color);
    if (!function.icon.empty()) out += ", ikona " + Quoted(function.icon);
    if (function.delay != kDefaultFunctionDelay) out += ", odstęp " + std::to_string(function.delay) + " ms";
    out += "\n";
    if (function.steps.empty()) out += "       (brak kroków)\n";
    for (const Step& step : function.steps) out += "       " + Utf16ToUtf8(StepDisplayText(step)) + "\n";
}

void DescribeWheels(const std::vector<Wheel>& wheels, std::string& out) {
    out += "Koła: " + std::to_string(wheels.size()) + "\n";
    for (std::size_t w = 0; w < wheels.size(); ++w) {
        const Wheel& wheel = wheels[w];
        out += "Koło " + std::to_string(w + 1) + " " + Quoted(wheel.name) + ", funkcje: " +
               std::to_string(wheel.functions.size());
        for (std::size_t a = 0; a < wheel.apps.size(); ++a) out += (a ? ", " : ", programy: ") + Quoted(wheel.apps[a]);
        out += "\n";
        for (std::size_t f = 0; f < wheel.functions.size(); ++f) DescribeFunction(f, wheel.functions[f], out);
    }
}

}  // namespace

ConfigurationFileKind GuessConfigurationFileKind(const std::u16string& path) {
    if (LowerCaseFileName(path) == u"config.json") return ConfigurationFileKind::Settings;
    JsonValue root;
    if (!ReadJsonFile(path, root) || root.kind != JsonKind::Object) return ConfigurationFileKind::Wheels;
    if (root.Find(u"wheels") || root.Find(u"actions")) return ConfigurationFileKind::Wheels;
    for (std::u16string_view key : kSettingsKeys) {
        if (root.Find(key)) return ConfigurationFileKind::Settings;
    }
    return ConfigurationFileKind::Wheels;
}

std::vector<std::u16string> WriteFirstRunFiles(const std::u16string& directory) {
    std::error_code error;  // a directory that cannot be made shows in the check
    std::filesystem::create_directories(std::filesystem::path(directory), error);
    EngineConfiguration configuration;
    configuration.programDirectory = directory;
    WriteDefaultFiles(configuration);
    return {configuration.ConfigPath(), configuration.WheelsPath(), configuration.VoicePath()};
}

CheckResult CheckConfigurationFile(const std::u16string& path, ConfigurationFileKind kind) {
    CheckResult result;
    std::u16string messages;
    std::string details;
    const bool settingsFile = kind == ConfigurationFileKind::Settings;
    if (settingsFile) {
        EngineSettings settings;
        result.clean = ReadSettingsFile(path, settings, messages);
        DescribeSettings(settings, details);
    } else {
        std::vector<Wheel> wheels;
        result.clean = ReadWheelsFile(path, wheels, messages);
        DescribeWheels(wheels, details);
    }
    result.report = Utf16ToUtf8(path) + (settingsFile ? " (plik ustawień)\n" : " (plik kół)\n");
    result.report += result.clean ? std::string(kAllIsWell) : Utf16ToUtf8(messages);
    result.report += details;
    return result;
}

}  // namespace zirvel
