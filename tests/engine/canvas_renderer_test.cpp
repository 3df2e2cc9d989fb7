// The installed canvas renderer draws each picture the engine asks for and
// presents it where the surface is.
#include "canvas_renderer_fixture.h"

#include "engine/element_hints.h"
#include "engine/grid.h"
#include "engine/icon_cache.h"

namespace zirvel_test {
namespace {

TEST_F(CanvasRendererTest, TheWheelIsPresentedAtItsWindowBeforeItShows) {
    platform_.SetCursor({100, 100});
    Start();
    platform_.PressHotKey();
    const zirvel::SurfaceState wheel = platform_.SurfaceAt(zirvel::Surface::Wheel);
    EXPECT_EQ(wheel.presentCount, 1);
    EXPECT_EQ(wheel.lastPicture.width, 588);
    EXPECT_EQ(wheel.lastPicture.height, 460);
    EXPECT_EQ(wheel.rect, (zirvel::ScreenRect{666, 310, 666 + 588, 310 + 460}));
    EXPECT_EQ(factory_.LastSize(), (zirvel::ScreenPoint{588, 460}));
    EXPECT_EQ(engine().wheelRedraws, 1);
    // Two canvases: the body (sectors and the hole), then the cursor at the
    // centre over a copy of it.
    ASSERT_EQ(factory_.FrameCount(), 2u);
    const Frame& body = factory_.LastFrameWith(Op::FillPie);
    ASSERT_EQ(OperationsOf(body, Op::ClearEllipse).size(), 1u);
    EXPECT_TRUE(OperationsOf(body, Op::SetPicture).empty());
    const Frame& shown = factory_.LastFrame();
    ASSERT_FALSE(shown.empty());
    EXPECT_EQ(shown.front().op, Op::SetPicture);
    ASSERT_FALSE(OperationsOf(shown, Op::FillPolygon).empty());
    EXPECT_EQ(OperationsOf(shown, Op::FillPolygon).back().points.front(), (zirvel::PointF{294, 230}));
    EXPECT_TRUE(OperationsOf(shown, Op::FillPie).empty());
}

TEST_F(CanvasRendererTest, EveryRedrawRequestIsAPresentedFrameAndTheBodyOnlyWhenItChanges) {
    Start();
    platform_.PressHotKey();            // body and pointer
    MoveVirtualCursorTo(294, 100);      // field 0 hovered: body and pointer
    MoveVirtualCursorTo(294, 120);      // still field 0: the pointer only
    EXPECT_EQ(engine().wheelRedraws, 3);
    EXPECT_EQ(platform_.SurfaceAt(zirvel::Surface::Wheel).presentCount, 3);
    EXPECT_EQ(factory_.FrameCount(), 5u);
    const Frame& body = factory_.LastFrameWith(Op::FillPie);
    ASSERT_FALSE(OperationsOf(body, Op::FillPie).empty());
    EXPECT_EQ(OperationsOf(body, Op::FillPie)[0].color >> 24, 255u);  // field 0 hovered
    const Frame& shown = factory_.LastFrame();
    ASSERT_FALSE(shown.empty());
    EXPECT_EQ(shown.front().op, Op::SetPicture);
    EXPECT_EQ(OperationsOf(shown, Op::FillPolygon).back().points.front(), (zirvel::PointF{294, 120}));
    // Another hover is another body.
    zirvel::EngineState& state = engine();
    state.hoveredField = -1;
    zirvel::RedrawWheel();
    EXPECT_EQ(factory_.FrameCount(), 7u);
}

TEST_F(CanvasRendererTest, IconsAreReadFromTheProgramDirectoryOnce) {
    Start("{}", R"({"actions": [{"name": "a", "key": "a", "icon": "icons\\a.png"}]})");
    platform_.PressHotKey();
    MoveVirtualCursorTo(294, 100);
    const std::u16string directory = engine().configuration.programDirectory;
    EXPECT_EQ(factory_.Decoded(), std::vector<std::u16string>{zirvel::ResolveIconPath(u"icons\\a.png", directory)});
}

TEST_F(CanvasRendererTest, TheGridPictureCoversTheGridAreaAndFollowsIt) {
    platform_.SetCursor({100, 100});
    Start();
    zirvel::ShowGrid();
    zirvel::SurfaceState grid = platform_.SurfaceAt(zirvel::Surface::Grid);
    EXPECT_EQ(grid.presentCount, 1);
    EXPECT_EQ(grid.rect, (zirvel::ScreenRect{0, 0, 1920, 1080}));
    EXPECT_EQ(grid.lastPicture.width, 1920);
    EXPECT_EQ(grid.lastPicture.height, 1080);
    EXPECT_EQ(OperationsOf(factory_.LastFrame(), Op::FillRectangle).size(), 16u);
    zirvel::NarrowGrid(7);
    grid = platform_.SurfaceAt(zirvel::Surface::Grid);
    EXPECT_EQ(grid.presentCount, 2);
    EXPECT_EQ(grid.rect, (zirvel::ScreenRect{960, 270, 1440, 540}));
    EXPECT_EQ(OperationsOf(factory_.LastFrame(), Op::FillRectangle).size(), 4u);
}

// The grid window keeps its picture while hidden: the same grid shown
// again is neither drawn nor handed over again, a different one is.
TEST_F(CanvasRendererTest, TheSameGridShownAgainKeepsThePictureItHas) {
    platform_.SetCursor({100, 100});
    Start();
    const auto presents = [this] { return platform_.SurfaceAt(zirvel::Surface::Grid).presentCount; };
    zirvel::ShowGrid();
    zirvel::HideGrid();
    zirvel::ShowGrid();
    EXPECT_EQ(presents(), 1);
    EXPECT_EQ(factory_.FrameCount(), 1u);
    EXPECT_TRUE(platform_.SurfaceAt(zirvel::Surface::Grid).visible);
    EXPECT_EQ(engine().gridRedraws, 2);

    zirvel::NarrowGrid(7);
    zirvel::ShowGrid();  // back to the whole monitor
    EXPECT_EQ(presents(), 3);
    EXPECT_EQ(platform_.SurfaceAt(zirvel::Surface::Grid).rect, (zirvel::ScreenRect{0, 0, 1920, 1080}));

    // Hints take the same window: the grid after them is drawn again.
    auto result = std::make_unique<zirvel::ElementScanResult>();
    result->area = {100, 50, 900, 650};
    result->elements = {{120, 60, 220, 90}};
    engine().hintScanRunning = 1;
    zirvel::HandleElementScanResult(std::move(result));
    EXPECT_EQ(presents(), 4);
    zirvel::ShowGrid();
    EXPECT_EQ(presents(), 5);
    EXPECT_EQ(platform_.SurfaceAt(zirvel::Surface::Grid).rect, (zirvel::ScreenRect{0, 0, 1920, 1080}));
    EXPECT_EQ(OperationsOf(factory_.LastFrame(), Op::FillRectangle).size(), 16u);
}

TEST_F(CanvasRendererTest, AGridAreaBelowOnePixelKeepsThePreviousPicture) {
    platform_.SetMonitors({{0, 0, 4, 4}});
    platform_.SetCursor({0, 0});
    Start();
    zirvel::ShowGrid();
    zirvel::NarrowGrid(1);  // 1 x 1
    zirvel::NarrowGrid(1);  // 0 x 0: nothing to draw
    const zirvel::SurfaceState grid = platform_.SurfaceAt(zirvel::Surface::Grid);
    EXPECT_EQ(engine().gridRedraws, 3);
    EXPECT_EQ(grid.presentCount, 2);
    EXPECT_EQ(grid.rect, (zirvel::ScreenRect{0, 0, 1, 1}));
    EXPECT_EQ(factory_.FrameCount(), 2u);
}

TEST_F(CanvasRendererTest, TheHintPictureCoversTheScanArea) {
    Start();
    auto result = std::make_unique<zirvel::ElementScanResult>();
    result->area = {100, 50, 900, 650};
    result->elements = {{120, 60, 220, 90}, {300, 300, 400, 330}};
    engine().hintScanRunning = 1;
    zirvel::HandleElementScanResult(std::move(result));
    const zirvel::SurfaceState grid = platform_.SurfaceAt(zirvel::Surface::Grid);
    EXPECT_EQ(grid.presentCount, 1);
    EXPECT_EQ(grid.rect, (zirvel::ScreenRect{100, 50, 900, 650}));
    EXPECT_TRUE(grid.visible);
    const auto labels = OperationsOf(factory_.LastFrame(), Op::DrawText);
    ASSERT_EQ(labels.size(), 2u);
    EXPECT_EQ(labels[1].text, u"2");
    EXPECT_EQ(labels[1].rect, (zirvel::RectF{200, 250, 23, 18}));
}

TEST_F(CanvasRendererTest, WithoutTheRendererRequestsAreOnlyCounted) {
    zirvel::RemoveCanvasRenderer();
    Start();
    platform_.PressHotKey();
    EXPECT_EQ(engine().wheelRedraws, 1);
    EXPECT_EQ(platform_.SurfaceAt(zirvel::Surface::Wheel).presentCount, 0);
    EXPECT_EQ(factory_.FrameCount(), 0u);
}

}  // namespace
}  // namespace zirvel_test
