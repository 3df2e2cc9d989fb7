// The wheel, the grid and the hints on monitors of more than 96 DPI: every
// size scales by the monitor's DPI, the same hand movement picks the same
// field, and what is clicked stays in screen pixels.
#include "canvas_renderer_fixture.h"

#include "engine/grid.h"
#include "engine/wheel_geometry.h"

namespace zirvel_test {
namespace {

using zirvel::HitTestArrow;
using zirvel::HitTestField;
using zirvel::ScreenPoint;
using zirvel::ScreenRect;


TEST(WheelGeometry, At96DpiItIsTheWheelOf588By460) {
    EXPECT_EQ(zirvel::WheelGeometryAt(96), zirvel::WheelGeometry{});
    EXPECT_EQ(zirvel::WheelGeometryAt(0), zirvel::WheelGeometry{});  // an unknown DPI
}

TEST(WheelGeometry, At144DpiEveryLengthIsHalfAsLargeAgain) {
    const zirvel::WheelGeometry wheel = zirvel::WheelGeometryAt(144);
    EXPECT_EQ(wheel.width, 882);
    EXPECT_EQ(wheel.height, 690);
    EXPECT_EQ(wheel.centreX, 441);
    EXPECT_EQ(wheel.centreY, 345);
    EXPECT_DOUBLE_EQ(wheel.ringInnerRadius, 69.0);
    EXPECT_DOUBLE_EQ(wheel.ringOuterRadius, 339.0);
    EXPECT_EQ(wheel.leftArrow, (ScreenRect{15, 279, 81, 411}));
    EXPECT_EQ(wheel.rightArrow, (ScreenRect{801, 279, 867, 411}));
    EXPECT_FLOAT_EQ(wheel.scale, 1.5f);
}

TEST(WheelGeometry, At120DpiLengthsRoundToThePixelAndTheArrowsStaySymmetric) {
    const zirvel::WheelGeometry wheel = zirvel::WheelGeometryAt(120);
    EXPECT_EQ(wheel.width, 735);
    EXPECT_EQ(wheel.height, 575);
    EXPECT_EQ(wheel.leftArrow.left, wheel.width - wheel.rightArrow.right);
    EXPECT_EQ(wheel.leftArrow.Width(), wheel.rightArrow.Width());
    EXPECT_EQ(wheel.leftArrow.top + wheel.leftArrow.bottom, 2 * wheel.centreY);
}

TEST(CountsToPixels, FractionsAreCarriedToTheNextMotion) {
    std::int32_t remainder = 0;
    EXPECT_EQ(zirvel::CountsToPixels(37, 96, remainder), 37);
    EXPECT_EQ(remainder, 0);
    EXPECT_EQ(zirvel::CountsToPixels(50, 144, remainder), 75);
    int moved = 0;
    for (int i = 0; i < 4; ++i) moved += zirvel::CountsToPixels(1, 120, remainder);
    EXPECT_EQ(moved, 5);  // four counts of 1.25 pixels
    remainder = 0;
    moved = 0;
    for (int i = 0; i < 4; ++i) moved += zirvel::CountsToPixels(-1, 120, remainder);
    EXPECT_EQ(moved, -5);
}

using HighDpiTest = CanvasRendererTest;

TEST_F(HighDpiTest, At144DpiTheWheelIs882By690AndItsPictureToo) {
    platform_.SetDpi(144);
    Start("{}", kFourDirectionFields);
    platform_.PressHotKey();
    const zirvel::SurfaceState wheel = platform_.SurfaceAt(zirvel::Surface::Wheel);
    EXPECT_EQ(wheel.rect, (ScreenRect{519, 195, 519 + 882, 195 + 690}));
    EXPECT_EQ(wheel.lastPicture.width, 882);
    EXPECT_EQ(wheel.lastPicture.height, 690);
    EXPECT_EQ(factory_.LastSize(), (ScreenPoint{882, 690}));
    EXPECT_EQ(engine().cursorX, 441);
    EXPECT_EQ(engine().cursorY, 345);
    const auto hole = OperationsOf(factory_.LastFrameWith(Op::ClearEllipse), Op::ClearEllipse);
    ASSERT_EQ(hole.size(), 1u);
    EXPECT_EQ(hole[0].rect, (zirvel::RectF{372, 276, 138, 138}));
}

TEST_F(HighDpiTest, TheHoleTheRingAndTheArrowsGrowAlike) {
    platform_.SetDpi(144);
    Start("{}", kTwoOneFieldWheels);
    platform_.PressHotKey();
    EXPECT_EQ(HitTestField(441, 345 - 68), -1);  // inside the hole of radius 69
    EXPECT_EQ(HitTestField(441, 345 - 69), 0);
    EXPECT_EQ(HitTestField(441, 345 - 339), 0);
    EXPECT_EQ(HitTestField(441 + 340, 345), -1);
    EXPECT_EQ(HitTestArrow(15, 279), 0);
    EXPECT_EQ(HitTestArrow(80, 410), 0);
    EXPECT_EQ(HitTestArrow(81, 345), -1);
    EXPECT_EQ(HitTestArrow(801, 279), 1);
    EXPECT_EQ(HitTestArrow(866, 410), 1);
    EXPECT_EQ(HitTestArrow(534, 230), -1);  // where the right arrow is at 96 DPI
}

// 50 counts cross the 46-pixel hole at 96 DPI; at 144 DPI they must cross
// the 69-pixel one.
class SameMovementTest : public HighDpiTest, public ::testing::WithParamInterface<std::uint32_t> {};

TEST_P(SameMovementTest, TheSameHandMovementPicksTheSameField) {
    const std::uint32_t dpi = GetParam();
    platform_.SetDpi(dpi);
    Start(R"({"sendDelay": 0, "keyHold": 0})", kFourDirectionFields);
    platform_.PressHotKey();
    platform_.MoveMouse(50, 0);
    platform_.Advance(zirvel::kWheelTimerPeriod);
    EXPECT_EQ(engine().cursorX, engine().wheel.centreX + 50 * static_cast<int>(dpi) / 96);
    EXPECT_EQ(engine().hoveredField, 1);
    platform_.PressLeftButton();
    platform_.Advance(100);
    EXPECT_EQ(OverlayIsWheelVisible(), 0);
    ASSERT_EQ(platform_.Injected().size(), 2u);
    EXPECT_EQ(platform_.Injected()[0].vk, 'B');
}

INSTANTIATE_TEST_SUITE_P(Dpis, SameMovementTest, ::testing::Values(96u, 144u));

TEST_F(HighDpiTest, TheVirtualCursorIsClampedToTheLargerWindow) {
    platform_.SetDpi(144);
    Start("{}", kFourDirectionFields);
    platform_.PressHotKey();
    platform_.MoveMouse(9000, 9000);
    platform_.Advance(zirvel::kWheelTimerPeriod);
    EXPECT_EQ(engine().cursorX, 881);
    EXPECT_EQ(engine().cursorY, 689);
}

TEST_F(HighDpiTest, EachShowTakesTheDpiOfItsOwnMonitor) {
    UseTwoMonitors();
    platform_.SetMonitorDpi(kRightMonitor, 144);
    Start("{}", kFourDirectionFields);
    platform_.SetCursor({2500, 300});
    platform_.PressHotKey();
    EXPECT_EQ(platform_.SurfaceAt(zirvel::Surface::Wheel).rect.Width(), 882);
    platform_.PressHotKey();
    platform_.SetCursor({700, 500});
    platform_.PressHotKey();
    EXPECT_EQ(platform_.SurfaceAt(zirvel::Surface::Wheel).rect,
              (ScreenRect{666, 310, 666 + 588, 310 + 460}));
    EXPECT_EQ(factory_.LastSize(), (ScreenPoint{588, 460}));
    EXPECT_EQ(engine().cursorX, 294);
}

TEST_F(HighDpiTest, GridCellsAndClickPointsStayInScreenPixelsOnlyLabelsGrow) {
    platform_.SetDpi(144);
    platform_.SetCursor({100, 100});
    Start();
    zirvel::ShowGrid();
    EXPECT_EQ(platform_.SurfaceAt(zirvel::Surface::Grid).rect, (ScreenRect{0, 0, 1920, 1080}));
    auto cells = OperationsOf(factory_.LastFrame(), Op::FillRectangle);
    ASSERT_EQ(cells.size(), 16u);
    EXPECT_EQ(cells[5].rect, (zirvel::RectF{480, 270, 480, 270}));
    const auto labels = OperationsOf(factory_.LastFrame(), Op::DrawText);
    EXPECT_FLOAT_EQ(labels.front().font.pixelSize, 81.0f);  // 64 at 96 DPI, the largest there
    EXPECT_FLOAT_EQ(OperationsOf(factory_.LastFrame(), Op::DrawRectangle).front().penWidth, 3.0f);
    zirvel::NarrowGrid(7);
    EXPECT_EQ(platform_.CursorMoves().back().point, (ScreenPoint{1200, 405}));
    zirvel::NarrowGrid(4);
    EXPECT_EQ(platform_.CursorMoves().back().point, (ScreenPoint{1320, 472}));
    EXPECT_FLOAT_EQ(OperationsOf(factory_.LastFrame(), Op::DrawText).front().font.pixelSize, 20.25f);
}

TEST_F(HighDpiTest, HintLabelsGrowAndTheirClickPointsStay) {
    UseTwoMonitors();
    platform_.SetMonitorDpi(kRightMonitor, 144);
    Start();
    auto result = std::make_unique<zirvel::ElementScanResult>();
    result->area = {2000, 50, 2800, 650};
    result->elements = {{2020, 60, 2120, 90}, {2200, 300, 2300, 330}};
    engine().hintScanRunning = 1;
    zirvel::HandleElementScanResult(std::move(result));
    const auto labels = OperationsOf(factory_.LastFrame(), Op::DrawText);
    ASSERT_EQ(labels.size(), 2u);
    EXPECT_EQ(labels[1].rect, (zirvel::RectF{200, 250, 35, 27}));  // 23 x 18 at 96 DPI
    EXPECT_FLOAT_EQ(labels[1].font.pixelSize, 19.5f);
    EXPECT_EQ(OperationsOf(factory_.LastFrame(), Op::DrawRectangle)[1].rect, (zirvel::RectF{200, 250, 100, 30}));
    zirvel::ClickHint(2, 0, 1);
    EXPECT_EQ(platform_.CursorMoves().back().point, (ScreenPoint{2250, 315}));
}

}  // namespace
}  // namespace zirvel_test
