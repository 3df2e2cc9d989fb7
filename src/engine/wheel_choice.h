// Which wheel the wheel opens with: the first wheel whose programs name the
// program in front, else the general wheel the user had last.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "config/wheel.h"
#include "engine/platform.h"

namespace zirvel {

// A name from a wheel's "apps" names the program: case-insensitively the
// executable's file name with or without its extension, or one of the
// window's class names.
bool ProgramNamed(std::u16string_view listed, const ProgramIdentity& program);

// The first wheel naming the program, or -1.
std::int32_t WheelNamingProgram(const std::vector<Wheel>& wheels, const ProgramIdentity& program);

// GUI. Makes current the wheel for the program of `foreground` as the
// wheel is shown. A file without per-program wheels is left alone: the
// current wheel stays what the user had.
void ChooseWheelForProgram(WindowHandle foreground);
// GUI. As the wheel hides: a general wheel the user had in front of a
// program without its own wheel is the one such programs get next time.
void RememberGeneralWheel();

}  // namespace zirvel
