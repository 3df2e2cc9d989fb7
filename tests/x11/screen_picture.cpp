// Qt before Xlib, whose macros (Status, None) clash with Qt's names.
#include <QImage>
#include <QString>

#include "screen_picture.h"

#include <X11/Xutil.h>

namespace zirvel_test {

void SaveScreen(Display* display, const std::filesystem::path& file) {
    XImage* image = XGetImage(display, DefaultRootWindow(display), 0, 0, 1920, 1080, AllPlanes, ZPixmap);
    if (!image) return;
    QImage picture(image->width, image->height, QImage::Format_RGB32);
    for (int y = 0; y < image->height; ++y) {
        for (int x = 0; x < image->width; ++x) picture.setPixel(x, y, static_cast<QRgb>(XGetPixel(image, x, y)));
    }
    XDestroyImage(image);
    std::filesystem::create_directories(file.parent_path());
    picture.save(QString::fromStdString(file.string()));
}

}  // namespace zirvel_test
