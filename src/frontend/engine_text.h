// The engine's status texts come as NUL-terminated UTF-16, owned by the
// engine; the front-end copies them at once.
#pragma once

#include <QString>

#include "engine/overlay_exports.h"

namespace zirvel::frontend {

inline QString EngineText(const char16_t* text) { return text ? QString::fromUtf16(text) : QString(); }

// "aktywny · 311 fraz": the recogniser's status and the number of phrases it knows.
inline QString VoiceStatusLine() {
    return QStringLiteral("%1 · %2 fraz").arg(EngineText(OverlayVoiceStatus())).arg(OverlayVoicePhraseCount());
}

}  // namespace zirvel::frontend
