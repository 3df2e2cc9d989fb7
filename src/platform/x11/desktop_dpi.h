// The desktop's DPI on X11: the Xft.dpi resource of the root window's
// RESOURCE_MANAGER property, which the desktop's settings daemon sets and
// Qt and GTK read. X11 has one such value for all monitors.
#pragma once

#include <cstdint>
#include <string_view>

namespace zirvel::x11 {

// Xft.dpi from the text of a resource database ("name:\tvalue" lines),
// rounded to a whole DPI; 96 when absent or not a positive number.
std::uint32_t DpiFromResources(std::string_view resources);

}  // namespace zirvel::x11
