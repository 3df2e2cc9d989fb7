// The engine on the X display: the X11 platform, the QPainter pictures and
// the engine's start and stop, as the program and its live tests use them.
#pragma once

#include <QString>

#include "platform/x11/qt_canvas.h"
#include "platform/x11/x11_platform.h"

namespace zirvel::app {

class X11EngineHost {
public:
    // Connects to the display; Ready() says whether the server has what the
    // engine needs (XInput 2.2, XTEST). The engine's files live in
    // `programDirectory`; `shippedDirectory` holds the installed icons when
    // they are elsewhere. The working directory is not touched.
    explicit X11EngineHost(const QString& programDirectory, const QString& shippedDirectory = {});
    ~X11EngineHost();
    X11EngineHost(const X11EngineHost&) = delete;
    X11EngineHost& operator=(const X11EngineHost&) = delete;

    bool Ready() const { return platform_.Ready(); }
    // OverlayEngineStart with the pictures drawn by QPainter.
    void Start();
    // OverlayEngineStop; the renderer is removed. Safe to call twice.
    void Stop();

private:
    x11::X11Platform platform_;
    QtCanvasFactory canvases_;
    bool started_ = false;
};

}  // namespace zirvel::app
