// Turns a recognised text into a message for the GUI thread.
#pragma once

#include <functional>
#include <string_view>

#include "core/engine_message.h"
#include "voice/voice_phrases.h"

namespace zirvel {

// What dispatch needs from the engine. voiceGlobal and wheelVisible are read
// without locks; a stale value only delays or lets through one command. A
// missing callback counts as false (or, for post, drops the message).
struct VoiceDispatchTarget {
    std::function<void(EngineMessage)> post;
    std::function<bool()> voiceGlobal;
    std::function<bool()> wheelVisible;
};

// Finds the first entry whose text equals utf8Text byte for byte (no
// trimming, case-sensitive) and posts its message: VoiceCommand for a
// command, RunGlobalFunction for a global voice function, RunWheelFunction
// for a wheel function only when voiceGlobal is set or the wheel is
// visible. An empty text or no match posts nothing. True when it posted.
bool DispatchRecognizedText(const VoicePhraseTable& table, std::string_view utf8Text,
                            const VoiceDispatchTarget& target);

}  // namespace zirvel
