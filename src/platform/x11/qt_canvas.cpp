#include "platform/x11/qt_canvas.h"

#include <QtCore/QThread>
#include <QtCore/QThreadPool>
#include <QtGui/QFont>
#include <QtGui/QFontInfo>
#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <QtGui/QPen>
#include <QtGui/QPolygonF>

#include <algorithm>
#include <cmath>
#include <functional>
#include <future>
#include <numbers>
#include <vector>

namespace zirvel {
namespace {

// Where "Segoe UI" is missing, a sans-serif family of the same metrics class.
const QString kFallbackFamily = QStringLiteral("DejaVu Sans");

// The picture is 96 dots per inch, so that point sizes map to fractional
// pixel sizes exactly (QFont takes whole pixels only).
constexpr int kDotsPerMeter = 3780;
constexpr qreal kPointsPerPixel = 72.0 / 96.0;

// A pie's outline as straight lines: its two radii and its arc as chords of
// at most 6 px, which stay within 0.02 px of a 224 px arc. Qt rasterises
// lines directly, four times faster than it strokes the curved path (its
// stroker dominated the wheel's time); the picture is the same to the eye.
std::vector<QLineF> PieOutline(const RectF& bounds, float startAngle, float sweepAngle) {
    constexpr double kMaxChord = 6.0;
    const QPointF centre(bounds.x + bounds.width / 2.0, bounds.y + bounds.height / 2.0);
    const double rx = bounds.width / 2.0;
    const double ry = bounds.height / 2.0;
    const double start = startAngle * std::numbers::pi / 180.0;
    const double sweep = sweepAngle * std::numbers::pi / 180.0;
    const auto chords = static_cast<int>(std::clamp(std::ceil(std::abs(sweep) * std::max(rx, ry) / kMaxChord), 1.0, 1024.0));
    const auto onArc = [&](int k) {
        const double a = start + sweep * k / chords;
        return QPointF(centre.x() + rx * std::cos(a), centre.y() + ry * std::sin(a));
    };
    std::vector<QLineF> lines;
    lines.reserve(static_cast<std::size_t>(chords) + 2);
    QPointF previous = onArc(0);
    lines.emplace_back(centre, previous);
    for (int k = 1; k <= chords; ++k) {
        const QPointF next = onArc(k);
        lines.emplace_back(previous, next);
        previous = next;
    }
    lines.emplace_back(previous, centre);
    return lines;
}

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

// Paints a whole frame at once, on a thread of Qt's global pool when one is
// free. From any other thread Qt splits each large fill across that pool and
// waits for the pieces; for pictures of this size the hand-overs cost more
// than they save (three times the time on two busy cores), whereas from a
// pool thread every fill runs in one go.
void PaintOnPoolThread(const std::function<void()>& paint) {
    QThreadPool* pool = QThreadPool::globalInstance();
    if (pool->contains(QThread::currentThread())) {
        paint();
        return;
    }
    std::promise<void> painted;
    std::future<void> done = painted.get_future();
    if (!pool->tryStart([&] {
            paint();
            painted.set_value();
        })) {
        paint();  // every pool thread is busy
        return;
    }
    done.wait();
}

// Records the drawing and paints it when the picture is taken.
class QtCanvas final : public Canvas {
public:
    QtCanvas(std::int32_t width, std::int32_t height) {
        picture_.width = width;
        picture_.height = height;
        picture_.pixels.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), 0u);
    }

    std::int32_t Width() const override { return picture_.width; }
    std::int32_t Height() const override { return picture_.height; }

    void SetTextHint(TextHint hint) override {
        hinting_ = hint == TextHint::AntiAliasGridFit ? QFont::PreferFullHinting : QFont::PreferNoHinting;
    }

    // Nothing is painted before the picture is taken: clearing forgets what
    // was drawn so far, and the pixels it starts from.
    void Clear() override {
        steps_.clear();
        std::fill(picture_.pixels.begin(), picture_.pixels.end(), 0u);
    }

    void SetPicture(const Picture& picture) override {
        steps_.clear();
        if (picture.width == picture_.width && picture.height == picture_.height) picture_.pixels = picture.pixels;
    }

    void FillPie(const RectF& bounds, float startAngle, float sweepAngle, Argb color) override {
        steps_.push_back([=](QPainter& painter) {
            painter.fillPath(PiePath(bounds, startAngle, sweepAngle), ToQt(color));
        });
    }

    void DrawPie(const RectF& bounds, float startAngle, float sweepAngle, Argb color, float penWidth) override {
        steps_.push_back([lines = PieOutline(bounds, startAngle, sweepAngle), color, penWidth](QPainter& painter) {
            painter.setPen(OutlinePen(color, penWidth));
            painter.drawLines(lines.data(), static_cast<int>(lines.size()));
        });
    }

    void DrawEllipse(const RectF& bounds, Argb color, float penWidth) override {
        steps_.push_back([=](QPainter& painter) {
            painter.setPen(OutlinePen(color, penWidth));
            painter.setBrush(Qt::NoBrush);
            painter.drawEllipse(ToQt(bounds));
        });
    }

    void DrawArc(const RectF& bounds, float startAngle, float sweepAngle, Argb color, float penWidth) override {
        steps_.push_back([=](QPainter& painter) {
            QPainterPath path;
            path.arcMoveTo(ToQt(bounds), -startAngle);
            path.arcTo(ToQt(bounds), -startAngle, -sweepAngle);
            painter.strokePath(path, OutlinePen(color, penWidth));
        });
    }

    void FillRectangle(const RectF& rect, Argb color) override {
        steps_.push_back([=](QPainter& painter) { painter.fillRect(ToQt(rect), ToQt(color)); });
    }

    void DrawRectangle(const RectF& rect, Argb color, float penWidth) override {
        steps_.push_back([=](QPainter& painter) {
            painter.setPen(OutlinePen(color, penWidth));
            painter.setBrush(Qt::NoBrush);
            painter.drawRect(ToQt(rect));
        });
    }

    void FillPolygon(std::span<const PointF> points, Argb color) override {
        steps_.push_back([polygon = ToQt(points), color](QPainter& painter) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(ToQt(color));
            painter.drawPolygon(polygon);
        });
    }

    void DrawPolygon(std::span<const PointF> points, Argb color, float penWidth) override {
        steps_.push_back([polygon = ToQt(points), color, penWidth](QPainter& painter) {
            painter.setPen(OutlinePen(color, penWidth));
            painter.setBrush(Qt::NoBrush);
            painter.drawPolygon(polygon);
        });
    }

    void ClearEllipse(const RectF& bounds) override {
        steps_.push_back([=](QPainter& painter) {
            painter.setCompositionMode(QPainter::CompositionMode_Source);
            painter.setPen(Qt::NoPen);
            painter.setBrush(Qt::transparent);
            painter.drawEllipse(ToQt(bounds));
            painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
        });
    }

    void DrawCentredText(std::u16string_view text, const CanvasFont& font, const RectF& box, Argb color) override {
        steps_.push_back([text = QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size())), font, box,
                          color, hinting = hinting_](QPainter& painter) {
            painter.setFont(ToQt(font, hinting));
            painter.setPen(ToQt(color));
            painter.drawText(ToQt(box), Qt::AlignCenter | Qt::TextWordWrap, text);
        });
    }

    void DrawImage(const CanvasImage& image, const RectF& destination, float alphaFactor) override {
        // A shallow copy: QImage shares its pixels.
        steps_.push_back([source = static_cast<const QtCanvasImage&>(image).Image(), destination,
                          alphaFactor](QPainter& painter) {
            painter.setOpacity(alphaFactor);
            painter.drawImage(ToQt(destination), source, QRectF(source.rect()));
            painter.setOpacity(1.0);
        });
    }

    Picture TakePicture() override {
        PaintOnPoolThread([this] {
            // The image paints straight into the picture's pixels.
            QImage image(reinterpret_cast<uchar*>(picture_.pixels.data()), picture_.width, picture_.height,
                         picture_.width * 4, QImage::Format_ARGB32_Premultiplied);
            image.setDotsPerMeterX(kDotsPerMeter);
            image.setDotsPerMeterY(kDotsPerMeter);
            QPainter painter(&image);
            painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing |
                                   QPainter::SmoothPixmapTransform);
            for (const auto& step : steps_) step(painter);
        });
        steps_.clear();
        return std::move(picture_);
    }

private:
    Picture picture_;
    std::vector<std::function<void(QPainter&)>> steps_;
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
