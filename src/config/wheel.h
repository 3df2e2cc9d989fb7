// The wheel model: wheels of functions (fields), functions of steps.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "config/key_code.h"

namespace zirvel {

enum class StepKind : std::int32_t {
    Click = 0,
    Hold = 1,
    Release = 2,
    Open = 3,
};

inline constexpr int kMaxClickCount = 100;
inline constexpr int kMaxHoldMilliseconds = 60000;
inline constexpr int kDefaultFunctionDelay = 30;
inline constexpr int kMaxFunctionDelay = 2000;
inline constexpr std::size_t kMaxFunctionsPerWheel = 24;
inline constexpr std::size_t kMaxProgramsPerWheel = 64;

struct Step {
    KeyCode key;                    // not used by Open
    StepKind kind = StepKind::Click;
    std::int32_t value = 0;         // clicks, or hold milliseconds (0: no release)
    std::u16string target;          // Open only
};

struct WheelFunction {
    std::u16string name;
    std::vector<Step> steps;
    std::int32_t delay = kDefaultFunctionDelay;
    std::uint32_t color = 0;        // red in the low byte
    bool hasColor = false;
    std::u16string icon;
    std::u16string voice;
};

struct Wheel {
    std::u16string name;
    std::vector<WheelFunction> functions;
    // The programs (executable file names, window classes) this wheel belongs
    // to; empty for a general wheel. Last, so {name, functions} still builds
    // a general wheel.
    std::vector<std::u16string> apps = {};
};

}  // namespace zirvel
