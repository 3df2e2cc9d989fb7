// The Linux canvas: QPainter on a premultiplied ARGB QImage that shares its
// pixels with the engine's Picture, and QImage for decoding icons. A canvas
// records the drawing and paints the whole frame when the picture is taken.
// Text needs a QGuiApplication (the offscreen platform will do) created
// beforehand.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "core/canvas_factory.h"

namespace zirvel {

class QtCanvasFactory final : public CanvasFactory {
public:
    std::unique_ptr<Canvas> CreateCanvas(std::int32_t width, std::int32_t height) override;
    std::shared_ptr<const CanvasImage> DecodeImage(const std::u16string& path) override;

    // The family that text asked for as `family` is drawn in: the family
    // itself when the system has it, else the fall-back.
    std::u16string ResolvedFamilyName(const std::u16string& family);
};

}  // namespace zirvel
