#include "platform/win32/gdiplus_canvas.h"

#ifndef NOMINMAX
#define NOMINMAX
#endif
#define WIN32_LEAN_AND_MEAN
#include <windows.h>
// GDI+ wants the COM declarations that lean windows.h leaves out.
#include <objidl.h>
#include <gdiplus.h>

#include <shlwapi.h>

#include <array>
#include <cstring>
#include <string>
#include <vector>

#include "config/file_io.h"

namespace zirvel {

namespace gp = Gdiplus::DllExports;

namespace {

// Where "Segoe UI" is missing (Wine), sans-serif families of the same kind,
// in order; GDI+'s generic sans serif comes last.
constexpr std::array<const wchar_t*, 3> kFallbackFamilies = {L"Tahoma", L"DejaVu Sans", L"Arial"};

const WCHAR* Wide(const std::u16string& text) { return reinterpret_cast<const WCHAR*>(text.c_str()); }

struct BrushDeleter {
    void operator()(Gdiplus::GpSolidFill* brush) const { gp::GdipDeleteBrush(brush); }
};
struct PenDeleter {
    void operator()(Gdiplus::GpPen* pen) const { gp::GdipDeletePen(pen); }
};
struct ImageAttributesDeleter {
    void operator()(Gdiplus::GpImageAttributes* attributes) const { gp::GdipDisposeImageAttributes(attributes); }
};
using Brush = std::unique_ptr<Gdiplus::GpSolidFill, BrushDeleter>;
using Pen = std::unique_ptr<Gdiplus::GpPen, PenDeleter>;
using ImageAttributes = std::unique_ptr<Gdiplus::GpImageAttributes, ImageAttributesDeleter>;

Brush SolidBrush(Argb color) {
    Gdiplus::GpSolidFill* brush = nullptr;
    gp::GdipCreateSolidFill(color, &brush);
    return Brush(brush);
}

Pen SolidPen(Argb color, float width) {
    Gdiplus::GpPen* pen = nullptr;
    gp::GdipCreatePen1(color, width, Gdiplus::UnitWorld, &pen);
    return Pen(pen);
}

std::vector<Gdiplus::PointF> ToGdiplus(std::span<const PointF> points) {
    std::vector<Gdiplus::PointF> converted;
    converted.reserve(points.size());
    for (const PointF& p : points) converted.emplace_back(p.x, p.y);
    return converted;
}

class GdiplusCanvasImage final : public CanvasImage {
public:
    explicit GdiplusCanvasImage(Gdiplus::GpImage* image) : image_(image) {
        UINT width = 0;
        UINT height = 0;
        gp::GdipGetImageWidth(image_, &width);
        gp::GdipGetImageHeight(image_, &height);
        width_ = static_cast<std::int32_t>(width);
        height_ = static_cast<std::int32_t>(height);
    }
    ~GdiplusCanvasImage() override { gp::GdipDisposeImage(image_); }
    GdiplusCanvasImage(const GdiplusCanvasImage&) = delete;
    GdiplusCanvasImage& operator=(const GdiplusCanvasImage&) = delete;

    std::int32_t Width() const override { return width_; }
    std::int32_t Height() const override { return height_; }
    Gdiplus::GpImage* Native() const { return image_; }

private:
    Gdiplus::GpImage* image_;
    std::int32_t width_ = 0;
    std::int32_t height_ = 0;
};

}  // namespace

// Font families resolved once, fonts made once per family, size and weight:
// the wheel redraws every 15 ms with the same few fonts.
class GdiplusCanvasFactory::Fonts {
public:
    ~Fonts() {
        for (FontEntry& entry : fonts_) gp::GdipDeleteFont(entry.font);
        for (FamilyEntry& entry : families_) gp::GdipDeleteFontFamily(entry.family);
    }

    Gdiplus::GpFont* Font(const CanvasFont& font) {
        for (const FontEntry& entry : fonts_) {
            if (entry.request == font) return entry.font;
        }
        const int style = font.weight == FontWeight::Bold ? Gdiplus::FontStyleBold : Gdiplus::FontStyleRegular;
        Gdiplus::GpFont* made = nullptr;
        gp::GdipCreateFont(Family(font.family).family, font.pixelSize, style, Gdiplus::UnitPixel, &made);
        fonts_.push_back(FontEntry{font, made});
        return made;
    }

    std::u16string FamilyName(const std::u16string& requested) {
        std::array<WCHAR, LF_FACESIZE> name{};
        gp::GdipGetFamilyName(Family(requested).family, name.data(), LANG_NEUTRAL);
        return std::u16string(reinterpret_cast<const char16_t*>(name.data()));
    }

private:
    struct FamilyEntry {
        std::u16string requested;
        Gdiplus::GpFontFamily* family;
    };
    struct FontEntry {
        CanvasFont request;
        Gdiplus::GpFont* font;
    };

    const FamilyEntry& Family(const std::u16string& requested) {
        for (const FamilyEntry& entry : families_) {
            if (entry.requested == requested) return entry;
        }
        Gdiplus::GpFontFamily* family = nullptr;
        if (gp::GdipCreateFontFamilyFromName(Wide(requested), nullptr, &family) != Gdiplus::Ok) {
            family = nullptr;
            for (const wchar_t* fallback : kFallbackFamilies) {
                if (gp::GdipCreateFontFamilyFromName(fallback, nullptr, &family) == Gdiplus::Ok) break;
                family = nullptr;
            }
        }
        if (family == nullptr) gp::GdipGetGenericFontFamilySansSerif(&family);
        families_.push_back(FamilyEntry{requested, family});
        return families_.back();
    }

    std::vector<FamilyEntry> families_;
    std::vector<FontEntry> fonts_;
};

namespace {

// A memory DC with a top-down 32-bit DIB section selected and a GDI+
// graphics on it; anti-aliased, text centred both ways.
class GdiplusCanvas final : public Canvas {
public:
    GdiplusCanvas(std::int32_t width, std::int32_t height, GdiplusCanvasFactory::Fonts& fonts)
        : width_(width), height_(height), fonts_(fonts) {
        screen_ = GetDC(nullptr);
        memory_ = CreateCompatibleDC(screen_);
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
        info.bmiHeader.biWidth = width;
        info.bmiHeader.biHeight = -height;  // top-down
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        info.bmiHeader.biCompression = BI_RGB;
        dib_ = CreateDIBSection(screen_, &info, DIB_RGB_COLORS, &bits_, nullptr, 0);
        previous_ = SelectObject(memory_, dib_);
        gp::GdipCreateFromHDC(memory_, &graphics_);
        gp::GdipSetSmoothingMode(graphics_, Gdiplus::SmoothingModeAntiAlias);
        gp::GdipCreateStringFormat(0, LANG_NEUTRAL, &format_);
        gp::GdipSetStringFormatAlign(format_, Gdiplus::StringAlignmentCenter);
        gp::GdipSetStringFormatLineAlign(format_, Gdiplus::StringAlignmentCenter);
    }

    ~GdiplusCanvas() override {
        if (format_ != nullptr) gp::GdipDeleteStringFormat(format_);
        if (graphics_ != nullptr) gp::GdipDeleteGraphics(graphics_);
        SelectObject(memory_, previous_);
        if (dib_ != nullptr) DeleteObject(dib_);
        DeleteDC(memory_);
        ReleaseDC(nullptr, screen_);
    }

    GdiplusCanvas(const GdiplusCanvas&) = delete;
    GdiplusCanvas& operator=(const GdiplusCanvas&) = delete;

    std::int32_t Width() const override { return width_; }
    std::int32_t Height() const override { return height_; }

    void SetTextHint(TextHint hint) override {
        gp::GdipSetTextRenderingHint(graphics_, hint == TextHint::AntiAliasGridFit
                                                    ? Gdiplus::TextRenderingHintAntiAliasGridFit
                                                    : Gdiplus::TextRenderingHintAntiAlias);
    }

    void Clear() override { gp::GdipGraphicsClear(graphics_, 0); }

    void FillPie(const RectF& b, float startAngle, float sweepAngle, Argb color) override {
        gp::GdipFillPie(graphics_, SolidBrush(color).get(), b.x, b.y, b.width, b.height, startAngle, sweepAngle);
    }

    void DrawPie(const RectF& b, float startAngle, float sweepAngle, Argb color, float penWidth) override {
        gp::GdipDrawPie(graphics_, SolidPen(color, penWidth).get(), b.x, b.y, b.width, b.height, startAngle,
                        sweepAngle);
    }

    void DrawEllipse(const RectF& b, Argb color, float penWidth) override {
        gp::GdipDrawEllipse(graphics_, SolidPen(color, penWidth).get(), b.x, b.y, b.width, b.height);
    }

    void DrawArc(const RectF& b, float startAngle, float sweepAngle, Argb color, float penWidth) override {
        gp::GdipDrawArc(graphics_, SolidPen(color, penWidth).get(), b.x, b.y, b.width, b.height, startAngle,
                        sweepAngle);
    }

    void FillRectangle(const RectF& r, Argb color) override {
        gp::GdipFillRectangle(graphics_, SolidBrush(color).get(), r.x, r.y, r.width, r.height);
    }

    void DrawRectangle(const RectF& r, Argb color, float penWidth) override {
        gp::GdipDrawRectangle(graphics_, SolidPen(color, penWidth).get(), r.x, r.y, r.width, r.height);
    }

    void FillPolygon(std::span<const PointF> points, Argb color) override {
        const auto converted = ToGdiplus(points);
        gp::GdipFillPolygon(graphics_, SolidBrush(color).get(), converted.data(), static_cast<INT>(converted.size()),
                            Gdiplus::FillModeAlternate);
    }

    void DrawPolygon(std::span<const PointF> points, Argb color, float penWidth) override {
        const auto converted = ToGdiplus(points);
        gp::GdipDrawPolygon(graphics_, SolidPen(color, penWidth).get(), converted.data(),
                            static_cast<INT>(converted.size()));
    }

    void ClearEllipse(const RectF& b) override {
        gp::GdipSetCompositingMode(graphics_, Gdiplus::CompositingModeSourceCopy);
        gp::GdipFillEllipse(graphics_, SolidBrush(0).get(), b.x, b.y, b.width, b.height);
        gp::GdipSetCompositingMode(graphics_, Gdiplus::CompositingModeSourceOver);
    }

    void DrawCentredText(std::u16string_view text, const CanvasFont& font, const RectF& box, Argb color) override {
        const std::u16string terminated(text);
        const Gdiplus::RectF layout(box.x, box.y, box.width, box.height);
        gp::GdipDrawString(graphics_, Wide(terminated), static_cast<INT>(terminated.size()), fonts_.Font(font),
                           &layout, format_, SolidBrush(color).get());
    }

    void DrawImage(const CanvasImage& image, const RectF& d, float alphaFactor) override {
        const auto& native = static_cast<const GdiplusCanvasImage&>(image);
        // The identity, except that alpha is scaled.
        Gdiplus::ColorMatrix matrix{};
        for (int i = 0; i < 5; ++i) matrix.m[i][i] = 1.0f;
        matrix.m[3][3] = alphaFactor;
        Gdiplus::GpImageAttributes* made = nullptr;
        gp::GdipCreateImageAttributes(&made);
        const ImageAttributes attributes(made);
        gp::GdipSetImageAttributesColorMatrix(attributes.get(), Gdiplus::ColorAdjustTypeDefault, TRUE, &matrix,
                                              nullptr, Gdiplus::ColorMatrixFlagsDefault);
        gp::GdipDrawImageRectRect(graphics_, native.Native(), d.x, d.y, d.width, d.height, 0.0f, 0.0f,
                                  static_cast<float>(native.Width()), static_cast<float>(native.Height()),
                                  Gdiplus::UnitPixel, attributes.get(), nullptr, nullptr);
    }

    void SetPicture(const Picture& picture) override {
        if (bits_ == nullptr || picture.width != width_ || picture.height != height_) return;
        gp::GdipFlush(graphics_, Gdiplus::FlushIntentionSync);
        GdiFlush();  // nothing still on its way into the bits
        std::memcpy(bits_, picture.pixels.data(), picture.pixels.size() * sizeof(std::uint32_t));
    }

    Picture TakePicture() override {
        gp::GdipFlush(graphics_, Gdiplus::FlushIntentionSync);
        GdiFlush();
        Picture picture;
        picture.width = width_;
        picture.height = height_;
        picture.pixels.resize(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_));
        if (bits_ != nullptr) std::memcpy(picture.pixels.data(), bits_, picture.pixels.size() * sizeof(std::uint32_t));
        return picture;
    }

private:
    std::int32_t width_;
    std::int32_t height_;
    GdiplusCanvasFactory::Fonts& fonts_;
    HDC screen_ = nullptr;
    HDC memory_ = nullptr;
    HBITMAP dib_ = nullptr;
    HGDIOBJ previous_ = nullptr;
    void* bits_ = nullptr;  // BGRA bytes: 0xAARRGGBB words, premultiplied
    Gdiplus::GpGraphics* graphics_ = nullptr;
    Gdiplus::GpStringFormat* format_ = nullptr;
};

}  // namespace

GdiplusCanvasFactory::GdiplusCanvasFactory() {
    Gdiplus::GdiplusStartupInput input;
    ULONG_PTR token = 0;
    Gdiplus::GdiplusStartup(&token, &input, nullptr);
    startupToken_ = token;
    fonts_ = std::make_unique<Fonts>();
}

GdiplusCanvasFactory::~GdiplusCanvasFactory() {
    fonts_.reset();
    Gdiplus::GdiplusShutdown(startupToken_);
}

std::unique_ptr<Canvas> GdiplusCanvasFactory::CreateCanvas(std::int32_t width, std::int32_t height) {
    return std::make_unique<GdiplusCanvas>(width, height, *fonts_);
}

// GDI+ keeps the file of an image loaded from a file locked, and reads the
// stream of one loaded from a stream, for the image's whole life. An icon
// is read into memory and drawn into a bitmap of its own, so the user can
// replace or delete the file while the wheel uses it.
std::shared_ptr<const CanvasImage> GdiplusCanvasFactory::DecodeImage(const std::u16string& path) {
    std::string bytes;
    if (!ReadFileBytes(path, bytes) || bytes.empty()) return nullptr;
    IStream* stream = SHCreateMemStream(reinterpret_cast<const BYTE*>(bytes.data()), static_cast<UINT>(bytes.size()));
    if (!stream) return nullptr;
    Gdiplus::GpImage* decoded = nullptr;
    const bool loaded = gp::GdipLoadImageFromStream(stream, &decoded) == Gdiplus::Ok;
    Gdiplus::GpBitmap* copy = nullptr;
    if (loaded) {
        UINT width = 0;
        UINT height = 0;
        gp::GdipGetImageWidth(decoded, &width);
        gp::GdipGetImageHeight(decoded, &height);
        Gdiplus::GpGraphics* graphics = nullptr;
        if (width > 0 && height > 0 &&
            gp::GdipCreateBitmapFromScan0(static_cast<INT>(width), static_cast<INT>(height), 0,
                                          PixelFormat32bppPARGB, nullptr, &copy) == Gdiplus::Ok &&
            gp::GdipGetImageGraphicsContext(copy, &graphics) == Gdiplus::Ok) {
            gp::GdipDrawImageRectI(graphics, decoded, 0, 0, static_cast<INT>(width), static_cast<INT>(height));
            gp::GdipDeleteGraphics(graphics);
        } else if (copy) {
            gp::GdipDisposeImage(copy);
            copy = nullptr;
        }
    }
    if (decoded) gp::GdipDisposeImage(decoded);  // also a half-made one
    stream->Release();
    if (!copy) return nullptr;
    return std::make_shared<GdiplusCanvasImage>(copy);
}

std::u16string GdiplusCanvasFactory::ResolvedFamilyName(const std::u16string& family) {
    return fonts_->FamilyName(family);
}

}  // namespace zirvel
