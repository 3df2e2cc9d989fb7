// The screen of an Xvfb started with -fbdir, read from its file: what a
// compositing manager painted, as the user would see it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

namespace zirvel_test {

// A pixel (0xRRGGBB) of the screen Xvfb keeps in `framebufferFolder`.
std::optional<std::uint32_t> FramebufferPixel(const std::filesystem::path& framebufferFolder, int x, int y);

// That screen as a PNG file; false when it cannot be read or written.
bool SaveFramebuffer(const std::filesystem::path& framebufferFolder, const std::filesystem::path& png);

}  // namespace zirvel_test
