// What threads hand to the GUI thread. On Windows these travel as the
// main window's WM_APP messages; elsewhere through the platform's queue.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "core/geometry.h"

namespace zirvel {

// The values are the offsets from WM_APP.
enum class EngineMessageKind : std::uint32_t {
    Select = 2,             // select what is under the virtual cursor
    VoiceCommand = 3,       // first: command code
    RunWheelFunction = 4,   // first: wheel index, second: function index
    ElementScanResult = 5,  // scanResult (may be null)
    SkippedPhrases = 6,     // text: phrases the speech model cannot say
    RunGlobalFunction = 7,  // first: index into the global voice functions
    InputRefused = 8,       // the system refused a function's injected input
};

// The element scan's findings, owned by the receiver once posted.
struct ElementScanResult {
    ScreenRect area;
    std::vector<ScreenRect> elements;
};

struct EngineMessage {
    EngineMessageKind kind = EngineMessageKind::Select;
    std::int64_t first = 0;
    std::int64_t second = 0;
    std::unique_ptr<ElementScanResult> scanResult;
    std::u16string text;
};

}  // namespace zirvel
