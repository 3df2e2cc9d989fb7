// The grid picture, operation by operation, on a recording canvas.
#include <gtest/gtest.h>

#include "config/text.h"
#include "navigation/grid_picture.h"
#include "support/recording_canvas.h"

namespace zirvel_test {
namespace {

using zirvel::RectF;

constexpr std::uint32_t kSegmentColor = 0x336699;  // red 0x99, green 0x66, blue 0x33

Frame DrawGridFrame(const zirvel::ScreenRect& area, std::int32_t level) {
    RecordingCanvasFactory factory;
    auto canvas = factory.CreateCanvas(std::max(area.Width(), 1), std::max(area.Height(), 1));
    zirvel::DrawGrid(*canvas, area, level, kSegmentColor);
    return factory.LastFrame();
}

TEST(GridPictureTest, FirstLevelIsFourByFourCellsNumberedRowByRow) {
    const Frame frame = DrawGridFrame({0, 0, 1920, 1080}, 1);
    ASSERT_EQ(frame.size(), 2u + 16u * 4u);
    EXPECT_EQ(frame[0].op, Op::SetTextHint);
    EXPECT_EQ(frame[0].hint, zirvel::TextHint::AntiAlias);
    EXPECT_EQ(frame[1].op, Op::Clear);
    for (int row = 0; row < 4; ++row) {
        for (int col = 0; col < 4; ++col) {
            const int n = row * 4 + col;
            SCOPED_TRACE(n + 1);
            const RectF cell{static_cast<float>(col) * 480.0f, static_cast<float>(row) * 270.0f, 480.0f, 270.0f};
            const CanvasOperation* ops = &frame[2 + static_cast<std::size_t>(n) * 4];
            EXPECT_EQ(ops[0].op, Op::FillRectangle);
            EXPECT_EQ(ops[0].rect, cell);
            EXPECT_EQ(ops[0].color, 0x1C996633u);
            EXPECT_EQ(ops[1].op, Op::DrawRectangle);
            EXPECT_EQ(ops[1].rect, cell);
            EXPECT_EQ(ops[1].color, 0xBEFFFFFFu);
            EXPECT_FLOAT_EQ(ops[1].penWidth, 2.0f);
            const std::u16string label = zirvel::DecimalText(n + 1);
            EXPECT_EQ(ops[2].op, Op::DrawText);
            EXPECT_EQ(ops[2].text, label);
            EXPECT_EQ(ops[2].rect, (RectF{cell.x + 2, cell.y + 2, 480, 270}));
            EXPECT_EQ(ops[2].color, 0x82000000u);
            EXPECT_EQ(ops[3].op, Op::DrawText);
            EXPECT_EQ(ops[3].text, label);
            EXPECT_EQ(ops[3].rect, cell);
            EXPECT_EQ(ops[3].color, 0xEBFFFFFFu);
            // min(480, 270) * 0.3 = 81, at most 64.
            EXPECT_EQ(ops[3].font, (zirvel::CanvasFont{u"Segoe UI", 64.0f, zirvel::FontWeight::Bold}));
        }
    }
}

TEST(GridPictureTest, DeeperLevelsAreTwoByTwoAndTheFontFollowsTheCell) {
    const Frame frame = DrawGridFrame({960, 270, 1360, 570}, 2);  // 400 x 300: cells of 200 x 150
    const auto texts = OperationsOf(frame, Op::DrawText);
    ASSERT_EQ(texts.size(), 8u);
    EXPECT_EQ(texts[7].text, u"4");
    EXPECT_EQ(texts[7].rect, (RectF{200, 150, 200, 150}));  // relative to the area
    EXPECT_FLOAT_EQ(texts[7].font.pixelSize, 45.0f);
}

TEST(GridPictureTest, TheFontIsAtLeastTwelvePixels) {
    const auto texts = OperationsOf(DrawGridFrame({0, 0, 30, 30}, 3), Op::DrawText);
    ASSERT_EQ(texts.size(), 8u);
    EXPECT_FLOAT_EQ(texts[0].font.pixelSize, 12.0f);
}

TEST(GridPictureTest, AnAreaBelowOnePixelDrawsNothing) {
    const Frame frame = DrawGridFrame({10, 10, 10, 500}, 2);
    EXPECT_EQ(KindsOf(frame), (std::vector<Op>{Op::SetTextHint, Op::Clear}));
}

}  // namespace
}  // namespace zirvel_test
