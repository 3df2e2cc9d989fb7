// config.json and the load of all three configuration files.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "config/hex_color.h"
#include "config/key_code.h"
#include "config/wheel.h"

namespace zirvel {

// "#RRGGBB", red in the low byte.
inline constexpr std::uint32_t kDefaultSegmentColor = 0x00DB9834;

// How switch scanning moves its highlight: by itself (one switch) or at each
// press of the step key (two switches).
enum class ScanMode { Auto, Step };

// Limits of the scanning settings.
inline constexpr std::int32_t kMinScanInterval = 250;
inline constexpr std::int32_t kMaxScanInterval = 10000;
inline constexpr std::int32_t kMinScanLoops = 1;
inline constexpr std::int32_t kMaxScanLoops = 20;

struct EngineSettings {
    std::uint32_t segmentColor = kDefaultSegmentColor;
    std::u16string toggleKey = u"x";
    KeyCode toggleKeyCode = ParseKeyName(u"x");
    std::int32_t sendDelay = 250;
    std::int32_t keyHold = 60;
    bool takeFocus = false;
    bool gazeEnabled = true;
    std::int32_t gazeDwell = 900;
    std::u16string gazeDllPath;
    bool voiceEnabled = true;
    bool voiceGlobal = true;
    std::u16string voiceModel = u"vosk-model-small-pl-0.22";
    std::u16string voiceDllPath;
    bool scanEnabled = false;
    ScanMode scanMode = ScanMode::Auto;
    std::int32_t scanInterval = 1200;
    std::int32_t scanLoops = 3;
    std::u16string scanStepKey;  // empty: none
    KeyCode scanStepKeyCode;     // valid only for a usable step key

    // Step mode needs a usable step key; without one the highlight moves by itself.
    bool ScanSteppedByKey() const { return scanMode == ScanMode::Step && scanStepKeyCode.valid; }
};

// Everything a load fills, and where the files live.
struct EngineConfiguration {
    std::u16string programDirectory;            // no trailing separator
    // Where an installed program's shipped icons lie (icons/ inside it),
    // when that is not the program directory; else empty.
    std::u16string shippedDirectory;
    std::u16string configFileName = u"config.json";
    std::u16string wheelsFileName = u"default.json";
    std::u16string voiceFileName = u"voice.json";

    EngineSettings settings;
    std::vector<Wheel> wheels;
    std::int32_t currentWheel = 0;
    std::vector<WheelFunction> globalVoiceFunctions;   // functions with a phrase

    std::u16string ConfigPath() const;
    std::u16string WheelsPath() const;
    std::u16string VoicePath() const;
};

// Creates each missing file with its first-run content; never touches an
// existing file; write errors are ignored.
void WriteDefaultFiles(const EngineConfiguration& configuration);

// Writes the missing defaults, then reads config.json, the wheels file and
// voice.json into `configuration`. Every problem appends a Polish line to
// `messages` and makes the result false; the load always completes with
// usable settings and at least one wheel.
bool LoadEngineConfiguration(EngineConfiguration& configuration, std::u16string& messages);

// The exact first-run file contents.
std::string DefaultConfigText();
std::string DefaultWheelsText();
std::string DefaultVoiceText();

}  // namespace zirvel
