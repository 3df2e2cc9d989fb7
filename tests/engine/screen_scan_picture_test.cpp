// The grid and hint pictures' scan highlight on a recording canvas.
#include "engine/screen_scan_picture.h"

#include <gtest/gtest.h>

#include "support/recording_canvas.h"

namespace zirvel_test {
namespace {

using zirvel::RectF;
using zirvel::ScanEntry;

constexpr std::uint32_t kNavy = 0x800000;  // red in the low byte
constexpr zirvel::ScreenRect kArea{0, 0, 1920, 1080};

void ExpectRect(const RectF& actual, float x, float y, float width, float height) {
    EXPECT_NEAR(actual.x, x, 1e-3f);
    EXPECT_NEAR(actual.y, y, 1e-3f);
    EXPECT_NEAR(actual.width, width, 1e-3f);
    EXPECT_NEAR(actual.height, height, 1e-3f);
}

class ScreenScanPictureTest : public ::testing::Test {
protected:
    Frame GridFrame(std::int32_t level, ScanEntry highlight, const zirvel::ScreenRect& area = kArea) {
        auto canvas = factory_.CreateCanvas(area.Width(), area.Height());
        zirvel::DrawGridScan(*canvas, area, level, highlight, kNavy, 96);
        return factory_.LastFrame();
    }
    RecordingCanvasFactory factory_;
};

TEST_F(ScreenScanPictureTest, NothingWithoutAHighlight) {
    EXPECT_TRUE(GridFrame(1, ScanEntry{-1, 0}).empty());
}

TEST_F(ScreenScanPictureTest, ARowOfTheGridIsOutlinedInsideItsEdgesBlackThenWhite) {
    const auto outlines = OperationsOf(GridFrame(1, ScanEntry{4, 4}), Op::DrawRectangle);
    ASSERT_EQ(outlines.size(), 2u);
    EXPECT_EQ(outlines[0].color, zirvel::kOpaqueBlack);
    EXPECT_FLOAT_EQ(outlines[0].penWidth, 9.0f);
    EXPECT_EQ(outlines[1].color, zirvel::kOpaqueWhite);
    EXPECT_FLOAT_EQ(outlines[1].penWidth, 5.0f);
    ExpectRect(outlines[1].rect, 4.5f, 270 + 4.5f, 1920 - 9, 270 - 9);
}

TEST_F(ScreenScanPictureTest, ACellOfTheTwoByTwoGrid) {
    const auto outlines = OperationsOf(GridFrame(2, ScanEntry{3, 1}, {960, 270, 1440, 540}), Op::DrawRectangle);
    ASSERT_EQ(outlines.size(), 2u);
    ExpectRect(outlines[1].rect, 240 + 4.5f, 135 + 4.5f, 240 - 9, 135 - 9);
}

TEST_F(ScreenScanPictureTest, AHighlightedActionShowsItsNameInTheMiddle) {
    const Frame frame = GridFrame(2, ScanEntry{5, 1}, {0, 0, 480, 270});  // 4 cells, then "dwuklik"
    const auto texts = OperationsOf(frame, Op::DrawText);
    ASSERT_EQ(texts.size(), 1u);
    EXPECT_EQ(texts[0].text, u"dwuklik");
    ExpectRect(texts[0].rect, 175, 118, 130, 34);
    // In a small area the box shrinks to it.
    const auto small = OperationsOf(GridFrame(4, ScanEntry{7, 1}, {0, 0, 60, 20}), Op::DrawText);
    ASSERT_EQ(small.size(), 1u);
    EXPECT_EQ(small[0].text, u"zamknij");
    ExpectRect(small[0].rect, 0, 0, 60, 20);
}

TEST_F(ScreenScanPictureTest, HintsOfTheHighlightedRowAreOutlinedAndCloseIsAtTheTop) {
    const std::vector<zirvel::ScreenRect> hints = {{100, 110, 200, 150}, {300, 110, 400, 150}, {500, 500, 600, 540}};
    const std::vector<std::int32_t> order = {0, 1, 2};
    auto canvas = factory_.CreateCanvas(1000, 800);
    zirvel::DrawHintScan(*canvas, {0, 100, 1000, 900}, hints, order, ScanEntry{0, 2}, kNavy, 96);
    const Frame frame = factory_.LastFrame();
    const auto texts = OperationsOf(frame, Op::DrawText);
    ASSERT_EQ(texts.size(), 1u);
    EXPECT_EQ(texts[0].text, u"zamknij");
    ExpectRect(texts[0].rect, 435, 8, 130, 34);
    const auto outlines = OperationsOf(frame, Op::DrawRectangle);
    ASSERT_EQ(outlines.size(), 4u);  // close is not lit: two hints, two pens each
    ExpectRect(outlines[1].rect, 104.5f, 14.5f, 91, 31);
    ExpectRect(outlines[3].rect, 304.5f, 14.5f, 91, 31);
}

}  // namespace
}  // namespace zirvel_test
