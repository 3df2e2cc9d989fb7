// Reading config.json into EngineSettings.
#pragma once

#include <string>

#include "config/engine_settings.h"

namespace zirvel {

// Reads the file over the current values: missing keys, and the whole file
// when unreadable, leave the values as they were. Then checks toggleKey,
// falling back to "x", and scanStepKey, falling back to none. Appends Polish messages; true when nothing was wrong.
bool ReadSettingsFile(const std::u16string& path, EngineSettings& settings, std::u16string& messages);

}  // namespace zirvel
