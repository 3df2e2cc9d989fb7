// ReadSettingsFile on any config.json, read from a real file.
#include <cstddef>
#include <cstdint>
#include <string>

#include "config/engine_settings.h"
#include "config/settings_file.h"
#include "fuzz_check.h"
#include "scratch_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::u16string path = zirvel::fuzz::WriteScratchFile("config.json", data, size);
    zirvel::EngineSettings settings;
    std::u16string messages;
    const bool ok = zirvel::ReadSettingsFile(path, settings, messages);
    // True exactly when nothing was reported; whatever the file held, the
    // toggle key is usable afterwards.
    ZIRVEL_FUZZ_CHECK(ok == messages.empty());
    ZIRVEL_FUZZ_CHECK(settings.toggleKeyCode.valid && !settings.toggleKeyCode.isMouse);
    return 0;
}
