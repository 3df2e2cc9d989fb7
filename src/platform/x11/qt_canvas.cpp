#include "platform/x11/qt_canvas.h"

#include <QtGui/QFont>
#include <QtGui/QFontInfo>
#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <QtGui/QPen>
#include <QtGui/QPolygonF>

namespace zirvel {
namespace {

// Where "Segoe UI" is missing, a sans-serif family of the same metrics class.
const QString kFallbackFamily = QStringLiteral("DejaVu Sans");

// The picture is 96 dots per inch, so that point sizes map to fractional
// pixel sizes exactly (QFont takes whole pixels only).
constexpr int kDotsPerMeter = 3780;
constexpr qreal kPointsPerPixel = 72.0 / 96.0;

class QtCanvasImage final : public CanvasImage {
public:
    explicit QtCanvasImage(QImage image) : image_(std::move(image)) {}
    std::int32_t Width() const override { return image_.width(); }
    std::int32_t Height() const override { return image_.height(); }
    const QImage& Image() const { return image_; }

private:
    QImage image_;
};

QFont ToQt(const CanvasFont& font, QFont::HintingPreference hinting) {
    QFont qtFont;
    qtFont.setFamilies({QString::fromUtf16(font.family.data(), static_cast<qsizetype>(font.family.size())),
                        kFallbackFamily});
    qtFont.setStyleHint(QFont::SansSerif);
    qtFont.setPointSizeF(font.pixelSize * kPointsPerPixel);
    qtFont.setWeight(font.weight == FontWeight::Bold ? QFont::Bold : QFont::Normal);
    qtFont.setHintingPreference(hinting);
    return qtFont;
}

QRectF ToQt(const RectF& r) { return QRectF(r.x, r.y, r.width, r.height); }

QColor ToQt(Argb color) { return QColor::fromRgba(color); }

QPolygonF ToQt(std::span<const PointF> points) {
    QPolygonF polygon;
    polygon.reserve(static_cast<qsizetype>(points.size()));
    for (const PointF& p : points) polygon.append(QPointF(p.x, p.y));
    return polygon;
}

// GDI+ pens: solid, flat ends, mitred corners, centred on the outline.
QPen OutlinePen(Argb color, float width) {
    return QPen(QBrush(ToQt(color)), width, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin);
}

// Qt counts angles anticlockwise, the canvas clockwise.
QPainterPath PiePath(const RectF& bounds, float startAngle, float sweepAngle) {
    const QRectF rect = ToQt(bounds);
    QPainterPath path(rect.center());
    path.arcTo(rect, -startAngle, -sweepAngle);
    path.closeSubpath();
    return path;
}

class QtCanvas final : public Canvas {
public:
    QtCanvas(std::int32_t width, std::int32_t height) {
        picture_.width = width;
        picture_.height = height;
        picture_.pixels.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), 0u);
        image_ = QImage(reinterpret_cast<uchar*>(picture_.pixels.data()), width, height, width * 4,
                        QImage::Format_ARGB32_Premultiplied);
        image_.setDotsPerMeterX(kDotsPerMeter);
        image_.setDotsPerMeterY(kDotsPerMeter);
        painter_.begin(&image_);
        painter_.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing |
                                QPainter::SmoothPixmapTransform);
    }

    std::int32_t Width() const override { return picture_.width; }
    std::int32_t Height() const override { return picture_.height; }

    void SetTextHint(TextHint hint) override {
        hinting_ = hint == TextHint::AntiAliasGridFit ? QFont::PreferFullHinting : QFont::PreferNoHinting;
    }

    void Clear() override {
        painter_.setCompositionMode(QPainter::CompositionMode_Clear);
        painter_.fillRect(image_.rect(), Qt::transparent);
        painter_.setCompositionMode(QPainter::CompositionMode_SourceOver);
    }

    void FillPie(const RectF& bounds, float startAngle, float sweepAngle, Argb color) override {
        painter_.fillPath(PiePath(bounds, startAngle, sweepAngle), ToQt(color));
    }

    void DrawPie(const RectF& bounds, float startAngle, float sweepAngle, Argb color, float penWidth) override {
        painter_.strokePath(PiePath(bounds, startAngle, sweepAngle), OutlinePen(color, penWidth));
    }

    void DrawEllipse(const RectF& bounds, Argb color, float penWidth) override {
        painter_.setPen(OutlinePen(color, penWidth));
        painter_.setBrush(Qt::NoBrush);
        painter_.drawEllipse(ToQt(bounds));
    }

    void DrawArc(const RectF& bounds, float startAngle, float sweepAngle, Argb color, float penWidth) override {
        QPainterPath path;
        path.arcMoveTo(ToQt(bounds), -startAngle);
        path.arcTo(ToQt(bounds), -startAngle, -sweepAngle);
        painter_.strokePath(path, OutlinePen(color, penWidth));
    }

    void FillRectangle(const RectF& rect, Argb color) override { painter_.fillRect(ToQt(rect), ToQt(color)); }

    void DrawRectangle(const RectF& rect, Argb color, float penWidth) override {
        painter_.setPen(OutlinePen(color, penWidth));
        painter_.setBrush(Qt::NoBrush);
        painter_.drawRect(ToQt(rect));
    }

    void FillPolygon(std::span<const PointF> points, Argb color) override {
        painter_.setPen(Qt::NoPen);
        painter_.setBrush(ToQt(color));
        painter_.drawPolygon(ToQt(points));
    }

    void DrawPolygon(std::span<const PointF> points, Argb color, float penWidth) override {
        painter_.setPen(OutlinePen(color, penWidth));
        painter_.setBrush(Qt::NoBrush);
        painter_.drawPolygon(ToQt(points));
    }

    void ClearEllipse(const RectF& bounds) override {
        painter_.setCompositionMode(QPainter::CompositionMode_Source);
        painter_.setPen(Qt::NoPen);
        painter_.setBrush(Qt::transparent);
        painter_.drawEllipse(ToQt(bounds));
        painter_.setCompositionMode(QPainter::CompositionMode_SourceOver);
    }

    void DrawCentredText(std::u16string_view text, const CanvasFont& font, const RectF& box, Argb color) override {
        painter_.setFont(ToQt(font, hinting_));
        painter_.setPen(ToQt(color));
        painter_.drawText(ToQt(box), Qt::AlignCenter | Qt::TextWordWrap,
                          QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size())));
    }

    void DrawImage(const CanvasImage& image, const RectF& destination, float alphaFactor) override {
        const QImage& source = static_cast<const QtCanvasImage&>(image).Image();
        painter_.setOpacity(alphaFactor);
        painter_.drawImage(ToQt(destination), source, QRectF(source.rect()));
        painter_.setOpacity(1.0);
    }

    Picture TakePicture() override {
        painter_.end();
        image_ = QImage();
        return std::move(picture_);
    }

private:
    Picture picture_;
    QImage image_;  // paints straight into picture_.pixels
    QPainter painter_;
    QFont::HintingPreference hinting_ = QFont::PreferDefaultHinting;
};

}  // namespace

std::unique_ptr<Canvas> QtCanvasFactory::CreateCanvas(std::int32_t width, std::int32_t height) {
    return std::make_unique<QtCanvas>(width, height);
}

std::shared_ptr<const CanvasImage> QtCanvasFactory::DecodeImage(const std::u16string& path) {
    QImage image(QString::fromUtf16(path.data(), static_cast<qsizetype>(path.size())));
    if (image.isNull()) return nullptr;
    return std::make_shared<QtCanvasImage>(image.convertToFormat(QImage::Format_ARGB32_Premultiplied));
}

std::u16string QtCanvasFactory::ResolvedFamilyName(const std::u16string& family) {
    const QFont font = ToQt(CanvasFont{family, 16.0f, FontWeight::Regular}, QFont::PreferDefaultHinting);
    return QFontInfo(font).family().toStdU16String();
}

}  // namespace zirvel
