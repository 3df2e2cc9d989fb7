#include "platform/win32/layered_picture.h"

#include <cstring>

namespace zirvel::win32 {

LayeredPicture::~LayeredPicture() { Release(); }

void LayeredPicture::Release() {
    if (memoryDc_) {
        SelectObject(memoryDc_, previousBitmap_);
        DeleteDC(memoryDc_);
    }
    if (bitmap_) DeleteObject(bitmap_);
    memoryDc_ = nullptr;
    bitmap_ = nullptr;
    bits_ = nullptr;
    width_ = height_ = 0;
}

bool LayeredPicture::Prepare(std::int32_t width, std::int32_t height) {
    if (bitmap_ && width == width_ && height == height_) return true;
    Release();
    HDC screen = GetDC(nullptr);
    memoryDc_ = CreateCompatibleDC(screen);
    ReleaseDC(nullptr, screen);
    if (!memoryDc_) return false;
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;  // top-down rows, as the picture has them
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    bitmap_ = CreateDIBSection(memoryDc_, &info, DIB_RGB_COLORS, &bits_, nullptr, 0);
    if (!bitmap_ || !bits_) {
        Release();
        return false;
    }
    previousBitmap_ = SelectObject(memoryDc_, bitmap_);
    width_ = width;
    height_ = height;
    return true;
}

void LayeredPicture::Present(HWND window, ScreenPoint position, const Picture& picture) {
    if (picture.width < 1 || picture.height < 1 ||
        picture.pixels.size() != static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height) ||
        !Prepare(picture.width, picture.height)) {
        return;
    }
    // 0xAARRGGBB in memory is the BGRA a 32-bit DIB holds.
    std::memcpy(bits_, picture.pixels.data(), picture.pixels.size() * sizeof(std::uint32_t));
    HDC screen = GetDC(nullptr);
    POINT destination{position.x, position.y};
    SIZE size{picture.width, picture.height};
    POINT source{0, 0};
    BLENDFUNCTION blend{AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
    UpdateLayeredWindow(window, screen, &destination, &size, memoryDc_, &source, 0, &blend, ULW_ALPHA);
    ReleaseDC(nullptr, screen);
}

}  // namespace zirvel::win32
