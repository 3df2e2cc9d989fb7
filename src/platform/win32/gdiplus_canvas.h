// The Windows canvas: GDI+ drawing on a 32-bit top-down DIB section (the
// premultiplied picture a layered window takes), and GDI+ decoding icons.
// The factory starts GDI+ and shuts it down when it goes away, so every
// canvas and image it made must be gone by then.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "core/canvas_factory.h"

namespace zirvel {

class GdiplusCanvasFactory final : public CanvasFactory {
public:
    GdiplusCanvasFactory();
    ~GdiplusCanvasFactory() override;
    GdiplusCanvasFactory(const GdiplusCanvasFactory&) = delete;
    GdiplusCanvasFactory& operator=(const GdiplusCanvasFactory&) = delete;

    std::unique_ptr<Canvas> CreateCanvas(std::int32_t width, std::int32_t height) override;
    std::shared_ptr<const CanvasImage> DecodeImage(const std::u16string& path) override;

    // The family that text asked for as `family` is drawn in: the family
    // itself when GDI+ has it, else the first of the fall-backs it has.
    std::u16string ResolvedFamilyName(const std::u16string& family);

    class Fonts;

private:
    std::uintptr_t startupToken_ = 0;
    std::unique_ptr<Fonts> fonts_;
};

}  // namespace zirvel
