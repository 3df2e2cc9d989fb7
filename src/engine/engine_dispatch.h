// The engine's mailbox: every event and message reaches the engine here, on
// the GUI thread (on Windows behind the main window's procedure).
#pragma once

#include <cstdint>

#include "core/engine_message.h"
#include "engine/platform.h"

namespace zirvel {

void HandleEngineMessage(EngineMessage message);
void HandleVoiceCommand(std::int32_t code);
// The hot key: shows the wheel, or hides it and gives the focus back.
void ToggleWheel();

// The sink the engine installs on its platform.
PlatformEvents& EngineEventSink();

}  // namespace zirvel
