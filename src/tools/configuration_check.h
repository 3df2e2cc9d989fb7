// What zirvel-check says about one configuration file.
#pragma once

#include <string>
#include <vector>

namespace zirvel {

enum class ConfigurationFileKind { Settings, Wheels };

// config.json by name; otherwise a JSON object with "wheels" or "actions" is
// a wheels file and one with any settings key is a settings file; anything
// else is checked as a wheels file (whose reader then says what is missing).
ConfigurationFileKind GuessConfigurationFileKind(const std::u16string& path);

struct CheckResult {
    bool clean = false;  // the engine's reader gave no message
    std::string report;  // UTF-8, Polish, ends with a line feed
};

// Runs the engine's own reader on the file and describes the outcome: the
// reader's messages or a line saying all is well, then what the engine takes
// from the file (the effective settings, or the wheels with their steps).
CheckResult CheckConfigurationFile(const std::u16string& path, ConfigurationFileKind kind);

// Creates `directory` if needed and the missing first-run files in it, as the engine does at
// its first start, and returns their paths in load order.
std::vector<std::u16string> WriteFirstRunFiles(const std::u16string& directory);

}  // namespace zirvel
