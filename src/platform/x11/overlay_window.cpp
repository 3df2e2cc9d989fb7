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

void OverlayWindow::ShowPicture(ScreenPoint position, const Picture& picture) {
    if (image_.width() != picture.width || image_.height() != picture.height) {
        image_ = QImage(picture.width, picture.height, QImage::Format_ARGB32_Premultiplied);
    }
    // Both are 0xAARRGGBB words, premultiplied, top-down.
    for (int y = 0; y < picture.height; ++y) {
        std::memcpy(image_.scanLine(y), picture.pixels.data() + static_cast<std::size_t>(y) * picture.width,
                    static_cast<std::size_t>(picture.width) * sizeof(std::uint32_t));
    }
    setGeometry(position.x, position.y, picture.width, picture.height);
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
