// The pictures the engine draws and the platforms show.
#pragma once

#include <cstdint>
#include <vector>

namespace zirvel {

// A premultiplied 32-bit picture, top-down rows, 0xAARRGGBB per pixel: what
// a layered window takes.
struct Picture {
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::vector<std::uint32_t> pixels;
};

}  // namespace zirvel
