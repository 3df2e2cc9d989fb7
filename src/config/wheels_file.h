// Reading and writing wheels files (default.json, voice.json, user files).
#pragma once

#include <string>
#include <vector>

#include "config/wheel.h"

namespace zirvel {

// Replaces `wheels` with the file's wheels; appends a Polish line to
// `messages` for every problem. True when nothing was wrong.
bool ReadWheelsFile(const std::u16string& path, std::vector<Wheel>& wheels,
                    std::u16string& messages);

// The exact UTF-8 text of a file holding `wheels` (always the "wheels" form).
std::string WriteWheelsFile(const std::vector<Wheel>& wheels);

// One line describing a step, for step lists.
std::u16string StepDisplayText(const Step& step);

}  // namespace zirvel
