// The text of the engine's own window: how to use the wheel, what the
// configuration holds and what the eye tracker and the voice report.
#pragma once

#include <string>

namespace zirvel {

struct EngineState;

// Built anew at every paint: the counts and statuses change while it runs.
std::u16string HelpPageText(const EngineState& engine);

}  // namespace zirvel
