// Hands premultiplied pictures to a layered window with UpdateLayeredWindow.
// The DIB section is kept between frames of the same size, so a redraw of
// the wheel costs one copy of its pixels.
#pragma once

#include <windows.h>

#include <cstdint>

#include "engine/platform.h"

namespace zirvel::win32 {

class LayeredPicture {
public:
    LayeredPicture() = default;
    ~LayeredPicture();
    LayeredPicture(const LayeredPicture&) = delete;
    LayeredPicture& operator=(const LayeredPicture&) = delete;

    // Moves and sizes `window` to the picture at `position` and shows its
    // pixels with their own alpha.
    void Present(HWND window, ScreenPoint position, const Picture& picture);

private:
    void Release();
    bool Prepare(std::int32_t width, std::int32_t height);

    HDC memoryDc_ = nullptr;
    HBITMAP bitmap_ = nullptr;
    HGDIOBJ previousBitmap_ = nullptr;
    void* bits_ = nullptr;
    std::int32_t width_ = 0;
    std::int32_t height_ = 0;
};

}  // namespace zirvel::win32
