// The engine as the voice thread sees it: where recognised commands go and
// the two flags that decide whether a wheel function may run.
#pragma once

#include "voice/voice_dispatch.h"

namespace zirvel {

struct EngineState;

// Posts through the state's platform and reads only its atomic flags, so
// the voice thread may use it while the GUI thread reloads the settings.
VoiceDispatchTarget EngineVoiceTarget(EngineState& engine);

}  // namespace zirvel
