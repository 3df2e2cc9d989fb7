#include "config/engine_settings.h"

#include "config/file_io.h"
#include "config/settings_file.h"
#include "config/wheels_file.h"

namespace zirvel {
namespace {

constexpr std::size_t kFallbackFieldCount = 6;

}  // namespace

std::u16string EngineConfiguration::ConfigPath() const { return JoinPath(programDirectory, configFileName); }
std::u16string EngineConfiguration::WheelsPath() const { return JoinPath(programDirectory, wheelsFileName); }
std::u16string EngineConfiguration::VoicePath() const { return JoinPath(programDirectory, voiceFileName); }

std::string DefaultConfigText() {
    return "{\n"
           "  \"segmentColor\": \"#3498DB\",\n"
           "  \"toggleKey\": \"x\"\n"
           "}\n";
}

std::string DefaultWheelsText() {
    std::string text =
        "{\n"
        "  \"wheels\": [\n"
        "    {\n"
        "      \"name\": \"Kolo 1\",\n"
        "      \"actions\": [\n";
    for (int n = 1; n <= 8; ++n) {
        const std::string digit = std::to_string(n);
        text += "        { \"name\": \"Funkcja " + digit + "\", \"key\": \"" + digit + "\" }";
        text += n < 8 ? ",\n" : "\n";
    }
    text +=
        "      ]\n"
        "    }\n"
        "  ]\n"
        "}\n";
    return text;
}

std::string DefaultVoiceText() {
    return "{\n"
           "  \"actions\": [\n"
           "    { \"name\": \"Przełącz okno\", \"voice\": \"przełącz okno\",\n"
           "      \"steps\": [ { \"key\": \"alt\", \"action\": \"hold\" },\n"
           "                 { \"key\": \"tab\", \"action\": \"click\" },\n"
           "                 { \"key\": \"alt\", \"action\": \"release\" } ] }\n"
           "  ]\n"
           "}\n";
}

void WriteDefaultFiles(const EngineConfiguration& configuration) {
    const std::pair<std::u16string, std::string> files[] = {
        {configuration.ConfigPath(), DefaultConfigText()},
        {configuration.WheelsPath(), DefaultWheelsText()},
        {configuration.VoicePath(), DefaultVoiceText()},
    };
    for (const auto& [path, content] : files) {
        if (!PathExists(path)) WriteFileBytes(path, content);  // errors ignored
    }
}

bool LoadEngineConfiguration(EngineConfiguration& configuration, std::u16string& messages) {
    bool ok = true;
    WriteDefaultFiles(configuration);
    EngineSettings& settings = configuration.settings;

    if (!ReadSettingsFile(configuration.ConfigPath(), settings, messages)) ok = false;

    if (!ReadWheelsFile(configuration.WheelsPath(), configuration.wheels, messages)) ok = false;
    if (configuration.wheels.empty()) {
        messages += u"default.json: brak poprawnych kół — wyświetlam 6 pustych pól.\n";
        Wheel fallback;
        fallback.functions.resize(kFallbackFieldCount);
        configuration.wheels.push_back(std::move(fallback));
        ok = false;
    }
    configuration.currentWheel = 0;

    configuration.globalVoiceFunctions.clear();
    const std::u16string voicePath = configuration.VoicePath();
    if (PathExists(voicePath)) {
        std::vector<Wheel> voiceWheels;
        if (!ReadWheelsFile(voicePath, voiceWheels, messages)) ok = false;
        for (const Wheel& wheel : voiceWheels) {
            for (const WheelFunction& function : wheel.functions) {
                if (!function.voice.empty()) configuration.globalVoiceFunctions.push_back(function);
            }
        }
    }
    return ok;
}

}  // namespace zirvel
