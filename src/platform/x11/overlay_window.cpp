#include "platform/x11/overlay_window.h"

#include <QPainter>
#include <QSurfaceFormat>

#include <cstring>

namespace zirvel::x11 {

OverlayWindow::OverlayWindow(const QString& title, Input input) {
    Qt::WindowFlags flags = Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::Tool |
                            Qt::WindowDoesNotAcceptFocus | Qt::X11BypassWindowManagerHint;
    if (input == Input::PassedThrough) flags |= Qt::WindowTransparentForInput;
    setFlags(flags);
    setTitle(title);
    // An alpha channel: the window's pixels blend with the desktop under a
    // compositing manager.
    QSurfaceFormat format = requestedFormat();
    format.setAlphaBufferSize(8);
    setFormat(format);
}

namespace {

int ToDeviceIndependent(int pixels, qreal ratio) { return qRound(static_cast<qreal>(pixels) / ratio); }
int ToPixels(int deviceIndependent, qreal ratio) { return qRound(static_cast<qreal>(deviceIndependent) * ratio); }

}  // namespace

void OverlayWindow::Place(ScreenRect rect) {
    const qreal ratio = devicePixelRatio();
    setGeometry(ToDeviceIndependent(rect.left, ratio), ToDeviceIndependent(rect.top, ratio),
                ToDeviceIndependent(rect.Width(), ratio), ToDeviceIndependent(rect.Height(), ratio));
}

ScreenRect OverlayWindow::Placed() const {
    const QRect rect = geometry();
    const qreal ratio = devicePixelRatio();
    const int left = ToPixels(rect.left(), ratio);
    const int top = ToPixels(rect.top(), ratio);
    return {left, top, left + ToPixels(rect.width(), ratio), top + ToPixels(rect.height(), ratio)};
}

void OverlayWindow::ShowPicture(ScreenPoint position, const Picture& picture) {
    if (image_.width() != picture.width || image_.height() != picture.height) {
        image_ = QImage(picture.width, picture.height, QImage::Format_ARGB32_Premultiplied);
    }
    // Both are 0xAARRGGBB words, premultiplied, top-down.
    for (int y = 0; y < picture.height; ++y) {
        std::memcpy(image_.scanLine(y), picture.pixels.data() + static_cast<std::size_t>(y) * picture.width,
                    static_cast<std::size_t>(picture.width) * sizeof(std::uint32_t));
    }
    image_.setDevicePixelRatio(devicePixelRatio());
    Place({position.x, position.y, position.x + picture.width, position.y + picture.height});
    update();
}

void OverlayWindow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.drawImage(0, 0, image_);
    painter.end();
    if (painted_) painted_();
}

}  // namespace zirvel::x11
