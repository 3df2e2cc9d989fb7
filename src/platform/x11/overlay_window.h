// A frameless, translucent, always-on-top window that never takes the focus
// and shows one premultiplied picture: the wheel, or the grid and hints
// (which also let the mouse through).
#pragma once

#include <QImage>
#include <functional>
#include <QRasterWindow>

#include "engine/platform.h"

namespace zirvel::x11 {

class OverlayWindow final : public QRasterWindow {
public:
    enum class Input { Taken, PassedThrough };
    OverlayWindow(const QString& title, Input input);

    // Both in the engine's screen pixels, which are the X server's: where Qt
    // scales windows by the desktop's DPI, they are converted to Qt's
    // device-independent pixels and the picture is painted one to one.
    void Place(ScreenRect rect);
    void ShowPicture(ScreenPoint position, const Picture& picture);
    ScreenRect Placed() const;
    // Called once the picture has been painted (for latency figures).
    void SetPaintedCallback(std::function<void()> painted) { painted_ = std::move(painted); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QImage image_;
    std::function<void()> painted_;
};

}  // namespace zirvel::x11
