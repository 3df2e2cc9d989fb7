// The platform's own canvas, which the picture tests draw on: QPainter on
// Linux, GDI+ on Windows (under Wine here).
#pragma once

#include <string>

#include "core/canvas_factory.h"

namespace zirvel_test {

// One factory for the whole test program.
zirvel::CanvasFactory& CanvasUnderTest();

// "qpainter" or "gdiplus": the prefix of the snapshot files.
std::string CanvasUnderTestName();

}  // namespace zirvel_test
