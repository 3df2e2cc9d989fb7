// Shared helpers for the voice tests: wheels with voice phrases and a
// dispatch target that records what it is asked to post.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

#include "config/wheel.h"
#include "core/engine_message.h"
#include "voice/voice_dispatch.h"

namespace zirvel::voice_test {

inline WheelFunction FunctionWithPhrase(std::u16string phrase) {
    WheelFunction function;
    function.name = u"f";
    function.voice = std::move(phrase);
    return function;
}

inline Wheel WheelWithPhrases(std::initializer_list<std::u16string> phrases) {
    Wheel wheel;
    wheel.name = u"w";
    for (const std::u16string& phrase : phrases) wheel.functions.push_back(FunctionWithPhrase(phrase));
    return wheel;
}

inline std::vector<WheelFunction> GlobalFunctions(std::initializer_list<std::u16string> phrases) {
    std::vector<WheelFunction> functions;
    for (const std::u16string& phrase : phrases) functions.push_back(FunctionWithPhrase(phrase));
    return functions;
}

struct Posted {
    EngineMessageKind kind;
    std::int64_t first;
    std::int64_t second;
};

// A target whose settings the test sets and whose posts it inspects.
struct RecordingTarget {
    bool voiceGlobal = true;
    bool wheelVisible = false;
    std::vector<Posted> posted;

    VoiceDispatchTarget Target() {
        VoiceDispatchTarget target;
        target.post = [this](EngineMessage message) {
            posted.push_back(Posted{message.kind, message.first, message.second});
        };
        target.voiceGlobal = [this] { return voiceGlobal; };
        target.wheelVisible = [this] { return wheelVisible; };
        return target;
    }
};

}  // namespace zirvel::voice_test
