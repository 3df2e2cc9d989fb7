#include "program_files/svg_picture.h"

#include <QtCore/QRectF>
#include <QtGui/QPainter>
#include <QtSvg/QSvgRenderer>

namespace zirvel::program_files {

QImage RenderSvg(const QString& svgPath, int size) {
    QSvgRenderer renderer(svgPath);
    if (!renderer.isValid() || size <= 0) {
        return {};
    }
    QImage picture(size, size, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);

    // Keep the drawing's proportions: a wide drawing is centred vertically.
    const QSizeF drawing = renderer.defaultSize();
    const qreal scale = size / qMax(drawing.width(), drawing.height());
    const QSizeF scaled = drawing * scale;
    const QRectF target((size - scaled.width()) / 2, (size - scaled.height()) / 2, scaled.width(), scaled.height());

    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    renderer.render(&painter, target);
    painter.end();
    return picture;
}

}  // namespace zirvel::program_files
