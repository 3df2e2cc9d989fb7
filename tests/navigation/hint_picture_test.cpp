// The element hint picture, operation by operation, on a recording canvas.
#include <gtest/gtest.h>

#include "config/text.h"
#include "navigation/hint_picture.h"
#include "support/recording_canvas.h"

namespace zirvel_test {
namespace {

using zirvel::RectF;

constexpr std::uint32_t kSegmentColor = 0x336699;  // red 0x99, green 0x66, blue 0x33

TEST(HintPictureTest, EachElementIsTintedOutlinedAndNumberedAtItsTopLeft) {
    const zirvel::ScreenRect area{100, 50, 1300, 850};
    std::vector<zirvel::ScreenRect> elements;
    for (int i = 0; i < 12; ++i) elements.push_back({110 + 90 * i, 60 + 40 * i, 190 + 90 * i, 90 + 40 * i});
    RecordingCanvasFactory factory;
    auto canvas = factory.CreateCanvas(area.Width(), area.Height());
    zirvel::DrawHints(*canvas, area, elements, kSegmentColor);
    const Frame& frame = factory.LastFrame();
    ASSERT_EQ(frame.size(), 2u + 12u * 4u);
    EXPECT_EQ(frame[0].hint, zirvel::TextHint::AntiAlias);
    EXPECT_EQ(frame[1].op, Op::Clear);
    for (int i = 0; i < 12; ++i) {
        SCOPED_TRACE(i + 1);
        const float x = static_cast<float>(10 + 90 * i);
        const float y = static_cast<float>(10 + 40 * i);
        const CanvasOperation* ops = &frame[2 + static_cast<std::size_t>(i) * 4];
        EXPECT_EQ(ops[0].op, Op::FillRectangle);
        EXPECT_EQ(ops[0].rect, (RectF{x, y, 80, 30}));
        EXPECT_EQ(ops[0].color, 0x16996633u);
        EXPECT_EQ(ops[1].op, Op::DrawRectangle);
        EXPECT_EQ(ops[1].rect, (RectF{x, y, 80, 30}));
        EXPECT_EQ(ops[1].color, 0xD7996633u);
        EXPECT_FLOAT_EQ(ops[1].penWidth, 2.0f);
        const float digits = i + 1 < 10 ? 1.0f : 2.0f;
        EXPECT_EQ(ops[2].op, Op::FillRectangle);
        EXPECT_EQ(ops[2].rect, (RectF{x, y, digits * 9 + 14, 18}));
        EXPECT_EQ(ops[2].color, 0xEB996633u);
        EXPECT_EQ(ops[3].op, Op::DrawText);
        EXPECT_EQ(ops[3].text, zirvel::DecimalText(i + 1));
        EXPECT_EQ(ops[3].rect, ops[2].rect);
        EXPECT_EQ(ops[3].color, 0xFFFFFFFFu);
        EXPECT_EQ(ops[3].font, (zirvel::CanvasFont{u"Segoe UI", 13.0f, zirvel::FontWeight::Bold}));
    }
}

TEST(HintPictureTest, AnAreaBelowOnePixelDrawsNothing) {
    RecordingCanvasFactory factory;
    auto canvas = factory.CreateCanvas(1, 1);
    const std::vector<zirvel::ScreenRect> elements = {{0, 0, 50, 50}};
    zirvel::DrawHints(*canvas, {0, 0, 0, 100}, elements, kSegmentColor);
    EXPECT_EQ(KindsOf(factory.LastFrame()), (std::vector<Op>{Op::SetTextHint, Op::Clear}));
}

}  // namespace
}  // namespace zirvel_test
