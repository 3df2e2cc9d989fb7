// The engine as the voice thread sees it: where recognised commands go and
// the two flags that decide whether a wheel function may run.
#pragma once

#include <string_view>

#include "voice/voice_dispatch.h"

namespace zirvel {

struct EngineState;

// Posts through the state's platform and reads only its atomic flags, so
// the voice thread may use it while the GUI thread reloads the settings.
VoiceDispatchTarget EngineVoiceTarget(EngineState& engine);

// A phrase handed over by another process (`zirvel-say`), matched as the
// recogniser's text would be, in lower case. True when it matched.
bool DispatchHandedOverPhrase(EngineState& engine, std::u16string_view phrase);

}  // namespace zirvel
