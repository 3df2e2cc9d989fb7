// The picture benchmark on Windows: GDI+.
#include "picture_benchmark.h"
#include "platform/win32/gdiplus_canvas.h"

int main() {
    zirvel::GdiplusCanvasFactory factory;
    return zirvel_bench::RunPictureBenchmark(factory, "GDI+");
}
