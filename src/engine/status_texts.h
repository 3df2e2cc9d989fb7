// The Polish texts of the eye tracker's and the voice's status codes.
#pragma once

#include <cstdint>

namespace zirvel {

// Texts live for the whole process.
const char16_t* GazeStatusText(std::int32_t code);
const char16_t* VoiceStatusText(std::int32_t code);

}  // namespace zirvel
