// Where canvases and decoded images come from: each platform has one
// factory (GDI+ on Windows, QPainter and QImage on Linux).
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "core/canvas.h"

namespace zirvel {

class CanvasFactory {
public:
    virtual ~CanvasFactory() = default;

    // A fully transparent canvas of `width` x `height` pixels (both at least 1).
    virtual std::unique_ptr<Canvas> CreateCanvas(std::int32_t width, std::int32_t height) = 0;

    // Decodes an image file (PNG, ICO, BMP, JPEG and whatever else the
    // platform reads); null when the file is missing or cannot be decoded.
    virtual std::shared_ptr<const CanvasImage> DecodeImage(const std::u16string& path) = 0;
};

}  // namespace zirvel
