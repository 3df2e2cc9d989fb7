// The screen of a private X server as a PNG, for the README's pictures and
// for looking at a failure.
#pragma once

#include <X11/Xlib.h>

#include <filesystem>

namespace zirvel_test {

// The whole 1920 x 1080 screen; the folder is made when missing.
void SaveScreen(Display* display, const std::filesystem::path& file);

}  // namespace zirvel_test
