#include "navigation/grid_geometry.h"

#include <gtest/gtest.h>

#include <vector>

namespace zirvel {
namespace {

constexpr ScreenRect kFullHd{0, 0, 1920, 1080};

TEST(GridCellsPerSide, FourOnTheFirstLevelTwoOnDeeperOnes) {
    EXPECT_EQ(GridCellsPerSide(1), 4);
    EXPECT_EQ(GridCellsPerSide(2), 2);
    EXPECT_EQ(GridCellsPerSide(3), 2);
    EXPECT_EQ(GridCellsPerSide(40), 2);
}

TEST(NarrowGridArea, SevenOnAFullHdMonitor) {
    ScreenRect area = kFullHd;
    EXPECT_EQ(GridAreaCentre(area), (ScreenPoint{960, 540}));
    ASSERT_TRUE(NarrowGridArea(area, 1, 7));
    EXPECT_EQ(area, (ScreenRect{960, 270, 1440, 540}));
    EXPECT_EQ(GridAreaCentre(area), (ScreenPoint{1200, 405}));
    EXPECT_EQ(GridCellsPerSide(2), 2);
}

TEST(NarrowGridArea, SecondLevelSplitsIntoQuadrants) {
    const ScreenRect start{960, 270, 1440, 540};
    const std::vector<ScreenRect> expected = {
        {960, 270, 1200, 405},
        {1200, 270, 1440, 405},
        {960, 405, 1200, 540},
        {1200, 405, 1440, 540},
    };
    for (int cell = 1; cell <= 4; ++cell) {
        ScreenRect area = start;
        ASSERT_TRUE(NarrowGridArea(area, 2, cell)) << cell;
        EXPECT_EQ(area, expected[static_cast<std::size_t>(cell - 1)]) << cell;
    }
}

TEST(NarrowGridArea, FiveIsIgnoredBelowTheFirstLevel) {
    for (std::int32_t level : {2, 3, 9}) {
        ScreenRect area{960, 270, 1440, 540};
        EXPECT_FALSE(NarrowGridArea(area, level, 5)) << level;
        EXPECT_EQ(area, (ScreenRect{960, 270, 1440, 540})) << level;
    }
}

TEST(NarrowGridArea, SixteenIsTheBottomRightCellOfTheFirstGrid) {
    ScreenRect area = kFullHd;
    ASSERT_TRUE(NarrowGridArea(area, 1, 16));
    EXPECT_EQ(area, (ScreenRect{1440, 810, 1920, 1080}));
    EXPECT_EQ(GridAreaCentre(area), (ScreenPoint{1680, 945}));
}

TEST(NarrowGridArea, OutOfRangeNumbersLeaveTheAreaAlone) {
    for (int cell : {17, 0, -1, 100}) {
        ScreenRect area = kFullHd;
        EXPECT_FALSE(NarrowGridArea(area, 1, cell)) << cell;
        EXPECT_EQ(area, kFullHd) << cell;
    }
}

TEST(NarrowGridArea, CellsAreNumberedRowByRowFromTheTopLeft) {
    for (int cell = 1; cell <= 16; ++cell) {
        ScreenRect area{0, 0, 400, 800};
        ASSERT_TRUE(NarrowGridArea(area, 1, cell));
        const int row = (cell - 1) / 4;
        const int col = (cell - 1) % 4;
        EXPECT_EQ(area, (ScreenRect{col * 100, row * 200, col * 100 + 100, row * 200 + 200})) << cell;
    }
}

TEST(NarrowGridArea, EdgesTruncateTheScaledOffset) {
    // Width 10 in four columns: edges at 0, 2, 5, 7, 10.
    const std::vector<std::int32_t> edges = {0, 2, 5, 7, 10};
    for (int col = 0; col < 4; ++col) {
        ScreenRect area{0, 0, 10, 10};
        ASSERT_TRUE(NarrowGridArea(area, 1, col + 1));
        EXPECT_EQ(area.left, edges[static_cast<std::size_t>(col)]);
        EXPECT_EQ(area.right, edges[static_cast<std::size_t>(col + 1)]);
        EXPECT_EQ(area.top, 0);
        EXPECT_EQ(area.bottom, 2);
    }
}

TEST(NarrowGridArea, CellsTileOddSizedAreasWithoutGapsOrOverlaps) {
    const std::vector<ScreenRect> areas = {
        {0, 0, 1366, 768}, {-1001, 33, 0, 1000}, {5, -7, 12, 0}, {100, 100, 103, 101}};
    for (const ScreenRect& start : areas) {
        for (std::int32_t level : {1, 2}) {
            const int k = GridCellsPerSide(level);
            for (int row = 0; row < k; ++row) {
                for (int col = 0; col < k; ++col) {
                    ScreenRect cell = start;
                    ASSERT_TRUE(NarrowGridArea(cell, level, k * row + col + 1));
                    if (col == 0) {
                        EXPECT_EQ(cell.left, start.left);
                    }
                    if (col == k - 1) {
                        EXPECT_EQ(cell.right, start.right);
                    }
                    if (row == 0) {
                        EXPECT_EQ(cell.top, start.top);
                    }
                    if (row == k - 1) {
                        EXPECT_EQ(cell.bottom, start.bottom);
                    }
                    if (col + 1 < k) {
                        ScreenRect next = start;
                        ASSERT_TRUE(NarrowGridArea(next, level, k * row + col + 2));
                        EXPECT_EQ(cell.right, next.left);
                    }
                    if (row + 1 < k) {
                        ScreenRect below = start;
                        ASSERT_TRUE(NarrowGridArea(below, level, k * (row + 1) + col + 1));
                        EXPECT_EQ(cell.bottom, below.top);
                    }
                }
            }
        }
    }
}

TEST(NarrowGridArea, MonitorLeftOfThePrimary) {
    ScreenRect area{-1920, 0, 0, 1080};
    EXPECT_EQ(GridAreaCentre(area), (ScreenPoint{-960, 540}));
    ASSERT_TRUE(NarrowGridArea(area, 1, 1));
    EXPECT_EQ(area, (ScreenRect{-1920, 0, -1440, 270}));
    EXPECT_EQ(GridAreaCentre(area), (ScreenPoint{-1680, 135}));
}

TEST(NarrowGridArea, MonitorAboveAndLeftOfThePrimary) {
    ScreenRect area{-1280, -1024, 0, 0};
    ASSERT_TRUE(NarrowGridArea(area, 1, 16));
    EXPECT_EQ(area, (ScreenRect{-320, -256, 0, 0}));
    ASSERT_TRUE(NarrowGridArea(area, 2, 1));
    EXPECT_EQ(area, (ScreenRect{-320, -256, -160, -128}));
    EXPECT_EQ(GridAreaCentre(area), (ScreenPoint{-240, -192}));
}

TEST(NarrowGridArea, OffsetsAreScaledFromTheAreaNotFromTheOrigin) {
    // Width 1001 from x = 1000: the second column starts 250 pixels in.
    ScreenRect area{1000, 3, 2001, 1004};
    ASSERT_TRUE(NarrowGridArea(area, 1, 6));
    EXPECT_EQ(area, (ScreenRect{1250, 253, 1500, 503}));
    ScreenRect negative{-1001, -1001, 0, 0};
    ASSERT_TRUE(NarrowGridArea(negative, 1, 6));
    EXPECT_EQ(negative, (ScreenRect{-751, -751, -501, -501}));
}

TEST(GridAreaCentre, TruncatesTowardZero) {
    EXPECT_EQ(GridAreaCentre(ScreenRect{0, 0, 3, 5}), (ScreenPoint{1, 2}));
    EXPECT_EQ(GridAreaCentre(ScreenRect{-3, -5, 0, 0}), (ScreenPoint{-1, -2}));
    EXPECT_EQ(GridAreaCentre(ScreenRect{-7, -2, 2, 1}), (ScreenPoint{-2, 0}));
    EXPECT_EQ(GridAreaCentre(ScreenRect{7, 9, 7, 9}), (ScreenPoint{7, 9}));
}

TEST(NarrowGridArea, KeepsNarrowingBelowOnePixel) {
    ScreenRect area = kFullHd;
    std::int32_t level = 1;
    ASSERT_TRUE(NarrowGridArea(area, level++, 1));
    bool sawEmpty = false;
    for (int step = 0; step < 30; ++step) {
        ASSERT_TRUE(NarrowGridArea(area, level++, 1)) << step;
        EXPECT_EQ(area.left, 0);
        EXPECT_EQ(area.top, 0);
        if (!GridAreaDrawable(area)) {
            sawEmpty = true;
            EXPECT_FALSE(LayOutGrid(area, level).has_value());
        }
        EXPECT_EQ(GridAreaCentre(area), (ScreenPoint{area.right / 2, area.bottom / 2}));
    }
    EXPECT_TRUE(sawEmpty);
    EXPECT_EQ(area, (ScreenRect{0, 0, 0, 0}));
    EXPECT_EQ(GridAreaCentre(area), (ScreenPoint{0, 0}));
}

TEST(NarrowGridArea, SinglePixelAreas) {
    ScreenRect topLeft{50, 60, 51, 61};
    ASSERT_TRUE(NarrowGridArea(topLeft, 2, 1));
    EXPECT_EQ(topLeft, (ScreenRect{50, 60, 50, 60}));
    EXPECT_FALSE(GridAreaDrawable(topLeft));
    EXPECT_EQ(GridAreaCentre(topLeft), (ScreenPoint{50, 60}));

    ScreenRect bottomRight{50, 60, 51, 61};
    ASSERT_TRUE(NarrowGridArea(bottomRight, 2, 4));
    EXPECT_EQ(bottomRight, (ScreenRect{50, 60, 51, 61}));
    EXPECT_TRUE(GridAreaDrawable(bottomRight));

    ScreenRect wideOnly{50, 60, 52, 61};
    ASSERT_TRUE(NarrowGridArea(wideOnly, 2, 2));
    EXPECT_EQ(wideOnly, (ScreenRect{51, 60, 52, 60}));
    EXPECT_FALSE(GridAreaDrawable(wideOnly));
    EXPECT_EQ(GridAreaCentre(wideOnly), (ScreenPoint{51, 60}));

    // An empty area still narrows and keeps its corner.
    ASSERT_TRUE(NarrowGridArea(wideOnly, 3, 4));
    EXPECT_EQ(wideOnly, (ScreenRect{51, 60, 52, 60}));
}

TEST(GridAreaDrawable, NeedsOnePixelEachWay) {
    EXPECT_TRUE(GridAreaDrawable(ScreenRect{0, 0, 1, 1}));
    EXPECT_FALSE(GridAreaDrawable(ScreenRect{0, 0, 0, 1}));
    EXPECT_FALSE(GridAreaDrawable(ScreenRect{0, 0, 1, 0}));
    EXPECT_FALSE(GridAreaDrawable(ScreenRect{5, 5, 4, 9}));
}

TEST(GridLabelFontSize, ThirtyPercentOfTheShorterSideWithinTwelveAndSixtyFour) {
    EXPECT_FLOAT_EQ(GridLabelFontSize(100.0f, 200.0f), 30.0f);
    EXPECT_FLOAT_EQ(GridLabelFontSize(200.0f, 100.0f), 30.0f);
    EXPECT_FLOAT_EQ(GridLabelFontSize(120.0f, 67.5f), 20.25f);
    EXPECT_FLOAT_EQ(GridLabelFontSize(30.0f, 20.0f), 12.0f);
    EXPECT_FLOAT_EQ(GridLabelFontSize(0.5f, 0.5f), 12.0f);
    EXPECT_FLOAT_EQ(GridLabelFontSize(40.0f, 40.0f), 12.0f);
    EXPECT_FLOAT_EQ(GridLabelFontSize(480.0f, 270.0f), 64.0f);
    EXPECT_FLOAT_EQ(GridLabelFontSize(1000.0f, 1000.0f), 64.0f);
}

TEST(LayOutGrid, FirstLevelOnAFullHdMonitor) {
    const auto layout = LayOutGrid(kFullHd, 1);
    ASSERT_TRUE(layout.has_value());
    EXPECT_EQ(layout->cellsPerSide, 4);
    EXPECT_FLOAT_EQ(layout->cellWidth, 480.0f);
    EXPECT_FLOAT_EQ(layout->cellHeight, 270.0f);
    EXPECT_FLOAT_EQ(layout->labelFontSize, 64.0f);
    ASSERT_EQ(layout->cells.size(), 16u);
    for (std::size_t i = 0; i < layout->cells.size(); ++i) {
        const GridCellLayout& cell = layout->cells[i];
        EXPECT_EQ(cell.label, static_cast<int>(i) + 1);
        EXPECT_EQ(cell.row, static_cast<int>(i) / 4);
        EXPECT_EQ(cell.col, static_cast<int>(i) % 4);
    }
    const GridCellLayout& seven = layout->cells[6];
    EXPECT_EQ(seven.cell, (GridRectF{960.0f, 270.0f, 480.0f, 270.0f}));
    EXPECT_EQ(seven.shadow, (GridRectF{962.0f, 272.0f, 480.0f, 270.0f}));
    EXPECT_EQ(layout->cells[15].cell, (GridRectF{1440.0f, 810.0f, 480.0f, 270.0f}));
}

TEST(LayOutGrid, DeeperLevelsAreTwoByTwoRelativeToTheArea) {
    const auto layout = LayOutGrid(ScreenRect{960, 270, 1200, 405}, 3);
    ASSERT_TRUE(layout.has_value());
    EXPECT_EQ(layout->cellsPerSide, 2);
    EXPECT_FLOAT_EQ(layout->cellWidth, 120.0f);
    EXPECT_FLOAT_EQ(layout->cellHeight, 67.5f);
    EXPECT_FLOAT_EQ(layout->labelFontSize, 20.25f);
    ASSERT_EQ(layout->cells.size(), 4u);
    EXPECT_EQ(layout->cells[0].cell, (GridRectF{0.0f, 0.0f, 120.0f, 67.5f}));
    EXPECT_EQ(layout->cells[1].cell, (GridRectF{120.0f, 0.0f, 120.0f, 67.5f}));
    EXPECT_EQ(layout->cells[2].cell, (GridRectF{0.0f, 67.5f, 120.0f, 67.5f}));
    EXPECT_EQ(layout->cells[3].cell, (GridRectF{120.0f, 67.5f, 120.0f, 67.5f}));
    EXPECT_EQ(layout->cells[3].shadow, (GridRectF{122.0f, 69.5f, 120.0f, 67.5f}));
    EXPECT_EQ(layout->cells[3].label, 4);
}

TEST(LayOutGrid, CellSizesAreFractional) {
    const auto layout = LayOutGrid(ScreenRect{-10, 0, 0, 6}, 1);
    ASSERT_TRUE(layout.has_value());
    EXPECT_FLOAT_EQ(layout->cellWidth, 2.5f);
    EXPECT_FLOAT_EQ(layout->cellHeight, 1.5f);
    EXPECT_FLOAT_EQ(layout->labelFontSize, 12.0f);
    EXPECT_EQ(layout->cells[15].cell, (GridRectF{7.5f, 4.5f, 2.5f, 1.5f}));
}

TEST(LayOutGrid, NothingToDrawForAnEmptyArea) {
    EXPECT_FALSE(LayOutGrid(ScreenRect{10, 10, 10, 500}, 1).has_value());
    EXPECT_FALSE(LayOutGrid(ScreenRect{10, 10, 500, 10}, 2).has_value());
    EXPECT_TRUE(LayOutGrid(ScreenRect{10, 10, 11, 11}, 2).has_value());
}

}  // namespace
}  // namespace zirvel
