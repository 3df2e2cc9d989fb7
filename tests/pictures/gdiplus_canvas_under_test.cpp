// The picture tests on Windows: GDI+.
#include <gtest/gtest.h>

#include "canvas_under_test.h"
#include "config/utf.h"

#include <cstdio>
#include "platform/win32/gdiplus_canvas.h"

namespace zirvel_test {

zirvel::CanvasFactory& CanvasUnderTest() {
    static zirvel::GdiplusCanvasFactory factory;
    return factory;
}

std::string CanvasUnderTestName() { return "gdiplus"; }

namespace {

TEST(GdiplusCanvasFontTest, SegoeUiIsAskedForFirstThenASansSerifFallback) {
    zirvel::GdiplusCanvasFactory& factory = static_cast<zirvel::GdiplusCanvasFactory&>(CanvasUnderTest());
    const std::u16string family = factory.ResolvedFamilyName(u"Segoe UI");
    std::printf("GDI+ draws \"Segoe UI\" labels in \"%s\"\n", zirvel::Utf16ToUtf8(family).c_str());
    EXPECT_TRUE(family == u"Segoe UI" || family == u"Tahoma" || family == u"DejaVu Sans" || family == u"Arial")
        << zirvel::Utf16ToUtf8(family);
    EXPECT_FALSE(factory.ResolvedFamilyName(u"No Such Family Zirvel").empty());
}

}  // namespace

}  // namespace zirvel_test
