// The wheel picture while switch scanning runs, on a recording canvas: the
// extra choices in the corners, the thick two-tone highlight and its contrast.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "engine/icon_cache.h"
#include "engine/switch_scan.h"
#include "engine/wheel_picture.h"
#include "engine/wheel_scan_picture.h"
#include "support/recording_canvas.h"
#include "support/wheel_scenes.h"

namespace zirvel_test {
namespace {

using zirvel::RectF;
using zirvel::ScanEntry;

constexpr std::uint32_t kBlueColorRef = 0xFF0000;  // red in the low byte: pure blue
constexpr zirvel::Argb kBlueOpaque = 0xFF0000FF;
constexpr zirvel::Argb kBlue135 = 0x870000FF;

class WheelScanPictureTest : public ::testing::Test {
protected:
    // One frame with the scan's highlight on top entry `step` of `entries`
    // (or, with `enter`, on the first choice inside it).
    Frame Draw(std::vector<zirvel::Wheel> wheels, std::vector<ScanEntry> entries, int step, bool enter = false,
               std::int32_t hovered = -1) {
        WheelScene scene(std::move(wheels));
        zirvel::EngineState& engine = scene.engine();
        engine.configuration.settings.segmentColor = kBlueColorRef;
        engine.hoveredField = hovered;
        engine.scan.target = zirvel::ScanTarget::Wheel;
        engine.scan.scanner.Start(std::move(entries), 0, 100, 3);
        engine.scan.scanner.Tick(static_cast<std::uint64_t>(step) * 100);
        if (enter) engine.scan.scanner.Press(0);
        auto canvas = factory_.CreateCanvas(engine.wheel.width, engine.wheel.height);
        zirvel::DrawWheel(engine, *canvas, icons_);
        return factory_.LastFrame();
    }

    RecordingCanvasFactory factory_;
    zirvel::IconCache icons_{factory_};
};

std::vector<ScanEntry> Singles(std::int32_t count) { return zirvel::GroupedEntries(count, 0, 0, 0); }

void ExpectRect(const RectF& actual, float x, float y, float width, float height) {
    EXPECT_NEAR(actual.x, x, 1e-3f);
    EXPECT_NEAR(actual.y, y, 1e-3f);
    EXPECT_NEAR(actual.width, width, 1e-3f);
    EXPECT_NEAR(actual.height, height, 1e-3f);
}

// The pies drawn after the sectors' own outlines: the highlight's edge and band.
std::vector<CanvasOperation> HighlightPies(const Frame& frame, std::size_t fields) {
    auto pies = OperationsOf(frame, Op::DrawPie);
    pies.erase(pies.begin(), pies.begin() + static_cast<std::ptrdiff_t>(fields));
    return pies;
}

TEST_F(WheelScanPictureTest, TheHighlightedFieldIsLitAndOutlinedThickBlackAndWhiteUnderTheHole) {
    const Frame frame = Draw({NumberedWheel(4)}, Singles(7), 1);
    const auto fills = OperationsOf(frame, Op::FillPie);
    ASSERT_EQ(fills.size(), 4u);
    for (std::size_t i = 0; i < 4; ++i) EXPECT_EQ(fills[i].color, i == 1 ? kBlueOpaque : kBlue135) << i;
    const auto pies = HighlightPies(frame, 4);
    ASSERT_EQ(pies.size(), 2u);
    EXPECT_EQ(pies[0].color, 0xFF000000u);
    EXPECT_FLOAT_EQ(pies[0].penWidth, 9.0f);
    EXPECT_EQ(pies[1].color, 0xFFFFFFFFu);  // white on blue: 8.6 : 1
    EXPECT_FLOAT_EQ(pies[1].penWidth, 5.0f);
    EXPECT_FLOAT_EQ(pies[1].startAngle, 0.0f);
    EXPECT_FLOAT_EQ(pies[1].sweepAngle, 90.0f);
    ExpectRect(pies[1].rect, 70, 6, 448, 448);
    // Both come before the hole is cleared, which cuts their inner ends.
    std::size_t hole = 0;
    std::size_t lastPie = 0;
    for (std::size_t i = 0; i < frame.size(); ++i) {
        if (frame[i].op == Op::ClearEllipse) hole = i;
        if (frame[i].op == Op::DrawPie) lastPie = i;
    }
    EXPECT_LT(lastPie, hole);
}

TEST_F(WheelScanPictureTest, AGroupIsOutlinedAsOnePie) {
    const Frame frame = Draw({NumberedWheel(24)}, zirvel::GroupedEntries(27, 24, 4, 8), 2);
    const auto pies = HighlightPies(frame, 24);
    ASSERT_EQ(pies.size(), 2u);
    EXPECT_FLOAT_EQ(pies[1].startAngle, 90.0f);
    EXPECT_FLOAT_EQ(pies[1].sweepAngle, 90.0f);
    const auto fills = OperationsOf(frame, Op::FillPie);
    for (std::size_t i = 0; i < 24; ++i) EXPECT_EQ(fills[i].color, i >= 12 && i < 18 ? kBlueOpaque : kBlue135) << i;
}

TEST_F(WheelScanPictureTest, TheExtraChoicesSitInTheCornersOutsideTheRing) {
    const Frame frame = Draw({NumberedWheel(4)}, Singles(7), 0);
    std::vector<std::u16string> texts;
    for (const auto& o : OperationsOf(frame, Op::DrawText)) texts.push_back(o.text);
    ASSERT_GE(texts.size(), 3u);
    EXPECT_EQ(std::vector<std::u16string>(texts.end() - 3, texts.end()),
              (std::vector<std::u16string>{u"siatka", u"elementy", u"zamknij"}));
    const auto boxes = OperationsOf(frame, Op::FillRectangle);
    ASSERT_EQ(boxes.size(), 3u);
    ExpectRect(boxes[0].rect, 6, 6, 110, 34);
    ExpectRect(boxes[1].rect, 472, 6, 110, 34);
    ExpectRect(boxes[2].rect, 472, 420, 110, 34);
    for (const auto& box : boxes) {
        EXPECT_EQ(box.color, kBlue135);
        // The box's nearest corner to the centre lies outside the sector disc.
        const float x = box.rect.x < 294 ? box.rect.x + box.rect.width : box.rect.x;
        const float y = box.rect.y < 230 ? box.rect.y + box.rect.height : box.rect.y;
        EXPECT_GT(std::hypot(x - 294.0f, y - 230.0f), 224.0f);
    }
}

TEST_F(WheelScanPictureTest, AHighlightedExtraChoiceIsLitAndOutlined) {
    const Frame frame = Draw({NumberedWheel(4)}, Singles(7), 6);  // "zamknij"
    const auto boxes = OperationsOf(frame, Op::FillRectangle);
    ASSERT_EQ(boxes.size(), 3u);
    EXPECT_EQ(boxes[2].color, kBlueOpaque);
    const auto outlines = OperationsOf(frame, Op::DrawRectangle);
    ASSERT_EQ(outlines.size(), 5u);
    EXPECT_EQ(outlines[3].color, 0xFF000000u);
    EXPECT_EQ(outlines[4].color, 0xFFFFFFFFu);
    ExpectRect(outlines[4].rect, 472, 420, 110, 34);
    EXPECT_TRUE(HighlightPies(frame, 4).empty());
}

TEST_F(WheelScanPictureTest, AHighlightedArrowIsLitAsAHoveredOne) {
    const Frame frame = Draw({NumberedWheel(2), NumberedWheel(3)}, Singles(7), 2);  // the right arrow
    const auto fills = OperationsOf(frame, Op::FillRectangle);
    ASSERT_EQ(fills.size(), 5u);  // two arrows, three boxes
    EXPECT_EQ(fills[0].color, kBlue135);
    EXPECT_EQ(fills[1].color, kBlueOpaque);
    const auto outlines = OperationsOf(frame, Op::DrawRectangle);
    ASSERT_EQ(outlines.size(), 7u);
    ExpectRect(outlines[6].rect, 534, 186, 44, 88);
    EXPECT_FLOAT_EQ(outlines[6].penWidth, 5.0f);
}

TEST_F(WheelScanPictureTest, WhileScanningTheHoveredFieldGetsTheSameOutline) {
    const Frame frame = Draw({NumberedWheel(4)}, Singles(7), 0, false, 2);
    const auto pies = HighlightPies(frame, 4);
    ASSERT_EQ(pies.size(), 4u);
    EXPECT_FLOAT_EQ(pies[1].startAngle, -90.0f);
    EXPECT_FLOAT_EQ(pies[3].startAngle, 90.0f);
    EXPECT_EQ(pies[3].color, pies[1].color);
    EXPECT_FLOAT_EQ(pies[3].penWidth, pies[1].penWidth);
}

TEST_F(WheelScanPictureTest, InsideAGroupOnlyTheHighlightedFieldIsLit) {
    const Frame frame = Draw({NumberedWheel(12)}, zirvel::GroupedEntries(15, 12, 4, 8), 1, true);
    const auto fills = OperationsOf(frame, Op::FillPie);
    for (std::size_t i = 0; i < 12; ++i) EXPECT_EQ(fills[i].color, i == 3 ? kBlueOpaque : kBlue135) << i;
}

TEST(HighlightColours, TheBandContrastsAtLeastThreeToOneWithAnyFieldColour) {
    for (std::uint32_t red = 0; red <= 255; red += 51) {
        for (std::uint32_t green = 0; green <= 255; green += 51) {
            for (std::uint32_t blue = 0; blue <= 255; blue += 51) {
                const std::uint32_t color = red | (green << 8) | (blue << 16);
                const zirvel::HighlightColours colours = zirvel::HighlightColoursFor(color);
                const std::uint32_t band = colours.band == zirvel::kOpaqueWhite ? 0xFFFFFFu : 0u;
                EXPECT_GE(zirvel::ContrastRatio(band, color), 4.5) << std::hex << color;
                EXPECT_NE(colours.band, colours.edge);
            }
        }
    }
}

TEST(HighlightColours, LightFieldsGetABlackBandAndDarkOnesAWhiteOne) {
    EXPECT_EQ(zirvel::HighlightColoursFor(0x00FFFF).band, zirvel::kOpaqueBlack);  // yellow
    EXPECT_EQ(zirvel::HighlightColoursFor(zirvel::kDefaultSegmentColor).band, zirvel::kOpaqueBlack);
    EXPECT_EQ(zirvel::HighlightColoursFor(0x800000).band, zirvel::kOpaqueWhite);  // navy
    EXPECT_NEAR(zirvel::ContrastRatio(0xFFFFFF, 0x000000), 21.0, 1e-9);
}

}  // namespace
}  // namespace zirvel_test
