// The picture benchmark on Linux: QPainter, offscreen (no display needed).
#include <QtGui/QGuiApplication>

#include <cstdlib>

#include "picture_benchmark.h"
#include "platform/x11/qt_canvas.h"

int main(int argc, char** argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    QGuiApplication application(argc, argv);
    zirvel::QtCanvasFactory factory;
    return zirvel_bench::RunPictureBenchmark(factory, "QPainter");
}
