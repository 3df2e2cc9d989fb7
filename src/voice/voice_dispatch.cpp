#include "voice/voice_dispatch.h"

#include <optional>
#include <utility>

namespace zirvel {
namespace {

std::optional<VoicePhrase> FindPhrase(const VoicePhraseTable& table, std::string_view text) {
    std::lock_guard<std::mutex> lock(table.phraseLock);
    for (const VoicePhrase& phrase : table.voicePhrases) {
        if (phrase.text == text) {
            return VoicePhrase{{}, phrase.command, phrase.wheelIndex, phrase.functionIndex};
        }
    }
    return std::nullopt;
}

bool Ask(const std::function<bool()>& question) {
    return question ? question() : false;
}

}  // namespace

bool DispatchRecognizedText(const VoicePhraseTable& table, std::string_view utf8Text,
                            const VoiceDispatchTarget& target) {
    if (utf8Text.empty()) return false;
    const std::optional<VoicePhrase> match = FindPhrase(table, utf8Text);
    if (!match) return false;

    EngineMessage message;
    if (match->command != kRunFunctionCommand) {
        message.kind = EngineMessageKind::VoiceCommand;
        message.first = match->command;
    } else if (match->wheelIndex == kGlobalVoiceWheel) {
        message.kind = EngineMessageKind::RunGlobalFunction;
        message.first = match->functionIndex;
    } else {
        if (!Ask(target.voiceGlobal) && !Ask(target.wheelVisible)) return false;
        message.kind = EngineMessageKind::RunWheelFunction;
        message.first = match->wheelIndex;
        message.second = match->functionIndex;
    }
    if (!target.post) return false;
    target.post(std::move(message));
    return true;
}

}  // namespace zirvel
