// Times the pictures on one platform's canvas; each platform's main calls it
// with its own factory.
#pragma once

#include "core/canvas_factory.h"

namespace zirvel_bench {

// Prints median and 99th percentile per picture; returns the exit code.
int RunPictureBenchmark(zirvel::CanvasFactory& factory, const char* canvasName);

}  // namespace zirvel_bench
