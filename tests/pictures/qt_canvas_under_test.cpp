// The picture tests on Linux: QPainter, with the offscreen Qt platform so
// that no display is needed (tests/support/offscreen_gui_main.cpp).
#include <gtest/gtest.h>

#include <QtCore/QString>

#include "canvas_under_test.h"
#include "platform/x11/qt_canvas.h"

namespace zirvel_test {

zirvel::CanvasFactory& CanvasUnderTest() {
    static zirvel::QtCanvasFactory factory;
    return factory;
}

std::string CanvasUnderTestName() { return "qpainter"; }

namespace {

TEST(QtCanvasFontTest, SegoeUiIsAskedForFirstThenDejaVuSans) {
    zirvel::QtCanvasFactory factory;
    const std::u16string family = factory.ResolvedFamilyName(u"Segoe UI");
    EXPECT_TRUE(family == u"Segoe UI" || family == u"DejaVu Sans") << QString::fromStdU16String(family).toStdString();
    EXPECT_EQ(factory.ResolvedFamilyName(u"No Such Family Zirvel"), u"DejaVu Sans");
}

}  // namespace

}  // namespace zirvel_test
