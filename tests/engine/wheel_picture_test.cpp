// The wheel picture, operation by operation, on a recording canvas.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "engine/icon_cache.h"
#include "engine/wheel_picture.h"
#include "support/recording_canvas.h"
#include "support/wheel_scenes.h"

namespace zirvel_test {
namespace {

using zirvel::Argb;
using zirvel::FontWeight;
using zirvel::PointF;
using zirvel::RectF;

constexpr std::uint32_t kBlueColorRef = 0xFF0000;  // red in the low byte: pure blue
constexpr Argb kBlue135 = 0x870000FF;
constexpr Argb kBlueOpaque = 0xFF0000FF;

class WheelPictureTest : public ::testing::Test {
protected:
    // Draws one frame of `wheels` after `prepare` has set the state up.
    template <typename Prepare>
    Frame Draw(std::vector<zirvel::Wheel> wheels, Prepare prepare) {
        WheelScene scene(std::move(wheels), u"/opt/zirvel");
        zirvel::EngineState& engine = scene.engine();
        engine.configuration.settings.segmentColor = kBlueColorRef;
        prepare(engine);
        auto canvas = factory_.CreateCanvas(engine.wheel.width, engine.wheel.height);
        zirvel::DrawWheel(engine, *canvas, icons_);
        return factory_.LastFrame();
    }
    Frame Draw(std::vector<zirvel::Wheel> wheels) {
        return Draw(std::move(wheels), [](zirvel::EngineState&) {});
    }

    RecordingCanvasFactory factory_;
    zirvel::IconCache icons_{factory_};
};

void ExpectRect(const RectF& actual, float x, float y, float width, float height) {
    EXPECT_NEAR(actual.x, x, 1e-3f);
    EXPECT_NEAR(actual.y, y, 1e-3f);
    EXPECT_NEAR(actual.width, width, 1e-3f);
    EXPECT_NEAR(actual.height, height, 1e-3f);
}

// Where sector i of n puts its label: radius 145 at the sector's middle.
PointF LabelCentre(std::size_t i, std::size_t n) {
    const double w = 360.0 / static_cast<double>(n);
    const double theta = (static_cast<double>(i) * w - 90.0 + w / 2.0) * std::numbers::pi / 180.0;
    return PointF{static_cast<float>(294.0 + 145.0 * std::cos(theta)), static_cast<float>(230.0 + 145.0 * std::sin(theta))};
}

class SectorCountTest : public WheelPictureTest, public ::testing::WithParamInterface<std::size_t> {};

TEST_P(SectorCountTest, SectorsTileTheDiscClockwiseFromTwelveOClock) {
    const std::size_t n = GetParam();
    const Frame frame = Draw({NumberedWheel(n)});
    const auto fills = OperationsOf(frame, Op::FillPie);
    const auto outlines = OperationsOf(frame, Op::DrawPie);
    ASSERT_EQ(fills.size(), n);
    ASSERT_EQ(outlines.size(), n);
    const float w = 360.0f / static_cast<float>(n);
    for (std::size_t i = 0; i < n; ++i) {
        SCOPED_TRACE(i);
        ExpectRect(fills[i].rect, 70, 6, 448, 448);
        EXPECT_NEAR(fills[i].startAngle, static_cast<float>(i) * w - 90.0f, 1e-3f);
        EXPECT_NEAR(fills[i].sweepAngle, w, 1e-4f);
        EXPECT_EQ(fills[i].color, kBlue135);
        ExpectRect(outlines[i].rect, 70, 6, 448, 448);
        EXPECT_EQ(outlines[i].startAngle, fills[i].startAngle);
        EXPECT_EQ(outlines[i].sweepAngle, fills[i].sweepAngle);
        EXPECT_EQ(outlines[i].color, 0xB4FFFFFFu);
        EXPECT_FLOAT_EQ(outlines[i].penWidth, 2.5f);
    }
    EXPECT_NEAR(fills.back().startAngle + fills.back().sweepAngle, 270.0f, 1e-3f);  // back at twelve o'clock
}

TEST_P(SectorCountTest, NamesWithoutIconsUseTheLargeFontBelowNineFields) {
    const std::size_t n = GetParam();
    const Frame frame = Draw({NumberedWheel(n)});
    const auto texts = OperationsOf(frame, Op::DrawText);
    ASSERT_EQ(texts.size(), 2 * n);  // shadow, then text
    const float size = n < 9 ? 19.0f : 16.0f;
    for (std::size_t i = 0; i < n; ++i) {
        SCOPED_TRACE(i);
        const PointF p = LabelCentre(i, n);
        const CanvasOperation& shadow = texts[2 * i];
        const CanvasOperation& text = texts[2 * i + 1];
        const std::u16string name = zirvel::Concat({u"F", zirvel::DecimalText(static_cast<std::int64_t>(i + 1))});
        EXPECT_EQ(shadow.text, name);
        EXPECT_EQ(text.text, name);
        ExpectRect(text.rect, p.x - 62, p.y - 34, 124, 68);
        ExpectRect(shadow.rect, p.x - 62 + 1.5f, p.y - 34 + 1.5f, 124, 68);
        EXPECT_EQ(text.font, (zirvel::CanvasFont{u"Segoe UI", size, FontWeight::Bold}));
        EXPECT_EQ(shadow.font, text.font);
        EXPECT_EQ(shadow.color, 0x78000000u);
        EXPECT_EQ(text.color, 0xD7FFFFFFu);
    }
}

INSTANTIATE_TEST_SUITE_P(FieldCounts, SectorCountTest, ::testing::Values(1, 4, 8, 9, 24));

TEST_F(WheelPictureTest, DrawingOrderOfAFullFrame) {
    zirvel::Wheel first = NumberedWheel(2, u"Gry");
    const Frame frame = Draw({first, NumberedWheel(3)}, [](zirvel::EngineState& engine) {
        engine.dwellProgress = 0.5f;
    });
    const std::vector<Op> expected = {
        Op::SetTextHint, Op::Clear,
        Op::FillPie, Op::DrawPie, Op::FillPie, Op::DrawPie,              // sectors
        Op::DrawText, Op::DrawText, Op::DrawText, Op::DrawText,          // labels with shadows
        Op::ClearEllipse,                                                // the hole
        Op::DrawText,                                                    // counter
        Op::FillRectangle, Op::DrawRectangle, Op::FillPolygon,           // left arrow
        Op::FillRectangle, Op::DrawRectangle, Op::FillPolygon,           // right arrow
        Op::DrawText,                                                    // wheel name
        Op::FillPolygon, Op::DrawPolygon,                                // virtual cursor
        Op::DrawEllipse, Op::DrawArc,                                    // dwell ring
    };
    EXPECT_EQ(KindsOf(frame), expected);
    EXPECT_EQ(frame[0].hint, zirvel::TextHint::AntiAliasGridFit);
    ExpectRect(frame[10].rect, 248, 184, 92, 92);
}

TEST_F(WheelPictureTest, TheHoveredFieldIsOpaqueWithWhiteOutlineAndText) {
    const Frame frame = Draw({NumberedWheel(4)}, [](zirvel::EngineState& engine) { engine.hoveredField = 2; });
    const auto fills = OperationsOf(frame, Op::FillPie);
    const auto outlines = OperationsOf(frame, Op::DrawPie);
    const auto texts = OperationsOf(frame, Op::DrawText);
    for (std::size_t i = 0; i < 4; ++i) {
        SCOPED_TRACE(i);
        const bool hovered = i == 2;
        EXPECT_EQ(fills[i].color, hovered ? kBlueOpaque : kBlue135);
        EXPECT_EQ(outlines[i].color, hovered ? 0xFFFFFFFFu : 0xB4FFFFFFu);
        EXPECT_EQ(texts[2 * i].color, hovered ? 0xC8000000u : 0x78000000u);
        EXPECT_EQ(texts[2 * i + 1].color, hovered ? 0xFFFFFFFFu : 0xD7FFFFFFu);
    }
}

TEST_F(WheelPictureTest, AFunctionsOwnColourReplacesTheSegmentColour) {
    zirvel::Wheel wheel = NumberedWheel(3);
    wheel.functions[1].hasColor = true;
    wheel.functions[1].color = 0x00FF80;  // red 0x80, green 0xFF, blue 0
    const auto fills = OperationsOf(Draw({wheel}), Op::FillPie);
    EXPECT_EQ(fills[0].color, kBlue135);
    EXPECT_EQ(fills[1].color, 0x8780FF00u);
    EXPECT_EQ(fills[2].color, kBlue135);
}

TEST_F(WheelPictureTest, IconWithNameSitsAboveTheNameInTheSmallFont) {
    factory_.AddImage(zirvel::ResolveIconPath(u"icons\\copy.png", u"/opt/zirvel"));
    zirvel::Wheel wheel = NumberedWheel(4);
    wheel.functions[1].icon = u"icons\\copy.png";
    wheel.functions[1].name = u"Kopiuj";
    const Frame frame = Draw({wheel});
    const auto images = OperationsOf(frame, Op::DrawImage);
    ASSERT_EQ(images.size(), 1u);
    const PointF p = LabelCentre(1, 4);
    ExpectRect(images[0].rect, p.x - 21, p.y - 11 - 21, 42, 42);
    EXPECT_FLOAT_EQ(images[0].alphaFactor, 0.5294118f);
    EXPECT_EQ(static_cast<const RecordedImage*>(images[0].image)->path,
              zirvel::ResolveIconPath(u"icons\\copy.png", u"/opt/zirvel"));
    const auto texts = OperationsOf(frame, Op::DrawText);
    const CanvasOperation& shadow = texts[2];
    const CanvasOperation& text = texts[3];
    EXPECT_EQ(text.text, u"Kopiuj");
    ExpectRect(text.rect, p.x - 62, p.y + 11, 124, 34);
    ExpectRect(shadow.rect, p.x - 62 + 1.5f, p.y + 11 + 1.5f, 124, 34);
    EXPECT_EQ(text.font, (zirvel::CanvasFont{u"Segoe UI", 14.0f, FontWeight::Bold}));
    // The image comes before its name.
    std::size_t imageAt = 0;
    std::size_t nameAt = 0;
    for (std::size_t i = 0; i < frame.size(); ++i) {
        if (frame[i].op == Op::DrawImage) imageAt = i;
        if (frame[i].op == Op::DrawText && frame[i].text == u"Kopiuj" && nameAt == 0) nameAt = i;
    }
    EXPECT_LT(imageAt, nameAt);
}

TEST_F(WheelPictureTest, AHoveredIconIsDrawnOpaque) {
    factory_.AddImage(zirvel::ResolveIconPath(u"icons/copy.png", u"/opt/zirvel"));
    zirvel::Wheel wheel = NumberedWheel(4);
    wheel.functions[1].icon = u"icons/copy.png";
    const auto images = OperationsOf(Draw({wheel}, [](zirvel::EngineState& e) { e.hoveredField = 1; }), Op::DrawImage);
    ASSERT_EQ(images.size(), 1u);
    EXPECT_FLOAT_EQ(images[0].alphaFactor, 1.0f);
}

TEST_F(WheelPictureTest, IconWithoutNameIsCentredOnTheLabelPoint) {
    factory_.AddImage(u"/icons/x.png");
    zirvel::Wheel wheel = NumberedWheel(8);
    wheel.functions[5].icon = u"/icons/x.png";
    wheel.functions[5].name.clear();
    const Frame frame = Draw({wheel});
    const auto images = OperationsOf(frame, Op::DrawImage);
    ASSERT_EQ(images.size(), 1u);
    const PointF p = LabelCentre(5, 8);
    ExpectRect(images[0].rect, p.x - 21, p.y - 21, 42, 42);
    EXPECT_EQ(OperationsOf(frame, Op::DrawText).size(), 2u * 7u);  // only the seven names
}

TEST_F(WheelPictureTest, AnIconThatCannotBeReadLeavesTheNameInTheLargeBoxAndIsNotReadAgain) {
    zirvel::Wheel wheel = NumberedWheel(4);
    wheel.functions[0].icon = u"icons\\missing.png";
    const Frame first = Draw({wheel});
    EXPECT_TRUE(OperationsOf(first, Op::DrawImage).empty());
    const PointF p = LabelCentre(0, 4);
    ExpectRect(OperationsOf(first, Op::DrawText)[1].rect, p.x - 62, p.y - 34, 124, 68);
    EXPECT_EQ(OperationsOf(first, Op::DrawText)[1].font.pixelSize, 19.0f);
    Draw({wheel});
    EXPECT_EQ(factory_.Decoded(),
              std::vector<std::u16string>{zirvel::ResolveIconPath(u"icons\\missing.png", u"/opt/zirvel")});
}

TEST_F(WheelPictureTest, OneWheelHasNeitherCounterNorArrows) {
    const Frame frame = Draw({NumberedWheel(4)});
    EXPECT_TRUE(OperationsOf(frame, Op::FillRectangle).empty());
    EXPECT_TRUE(OperationsOf(frame, Op::DrawRectangle).empty());
    EXPECT_EQ(OperationsOf(frame, Op::DrawText).size(), 8u);  // the four labels only
    EXPECT_EQ(OperationsOf(frame, Op::FillPolygon).size(), 1u);  // the cursor only
}

TEST_F(WheelPictureTest, ThreeWheelsShowTheCounterAndTwoArrowsPointingOutwards) {
    const Frame frame = Draw({NumberedWheel(4), NumberedWheel(2), NumberedWheel(5)},
                             [](zirvel::EngineState& engine) { engine.configuration.currentWheel = 1; });
    const auto texts = OperationsOf(frame, Op::DrawText);
    const CanvasOperation& counter = texts[4];  // after the two labels with shadows
    EXPECT_EQ(counter.text, u"2/3");
    ExpectRect(counter.rect, 248, 210, 92, 22);
    EXPECT_EQ(counter.font, (zirvel::CanvasFont{u"Segoe UI", 15.0f, FontWeight::Bold}));
    EXPECT_EQ(counter.color, 0xEBFFFFFFu);

    const auto boxes = OperationsOf(frame, Op::FillRectangle);
    const auto outlines = OperationsOf(frame, Op::DrawRectangle);
    ASSERT_EQ(boxes.size(), 2u);
    ExpectRect(boxes[0].rect, 10, 186, 44, 88);
    ExpectRect(boxes[1].rect, 534, 186, 44, 88);
    EXPECT_EQ(boxes[0].color, kBlue135);
    EXPECT_EQ(outlines[1].color, 0xB4FFFFFFu);
    EXPECT_FLOAT_EQ(outlines[0].penWidth, 2.0f);
    ExpectRect(outlines[0].rect, 10, 186, 44, 88);

    const auto triangles = OperationsOf(frame, Op::FillPolygon);
    ASSERT_EQ(triangles.size(), 3u);  // two arrows, then the cursor
    EXPECT_EQ(triangles[0].points, (std::vector<PointF>{{40, 214}, {40, 246}, {22, 230}}));
    EXPECT_EQ(triangles[1].points, (std::vector<PointF>{{548, 214}, {548, 246}, {566, 230}}));
    EXPECT_EQ(triangles[0].color, 0xDCFFFFFFu);
}

TEST_F(WheelPictureTest, TheHoveredArrowIsOpaqueAndWhite) {
    const Frame frame = Draw({NumberedWheel(4), NumberedWheel(2)},
                             [](zirvel::EngineState& engine) { engine.hoveredArrow = 1; });
    const auto boxes = OperationsOf(frame, Op::FillRectangle);
    const auto outlines = OperationsOf(frame, Op::DrawRectangle);
    const auto triangles = OperationsOf(frame, Op::FillPolygon);
    EXPECT_EQ(boxes[0].color, kBlue135);
    EXPECT_EQ(boxes[1].color, kBlueOpaque);
    EXPECT_EQ(outlines[0].color, 0xB4FFFFFFu);
    EXPECT_EQ(outlines[1].color, 0xFFFFFFFFu);
    EXPECT_EQ(triangles[0].color, 0xDCFFFFFFu);
    EXPECT_EQ(triangles[1].color, 0xFFFFFFFFu);
}

TEST_F(WheelPictureTest, TheWheelNameSitsUnderTheCounterEvenWithOneWheel) {
    const auto texts = OperationsOf(Draw({NumberedWheel(4, u"Ćwiczenia")}), Op::DrawText);
    ASSERT_EQ(texts.size(), 9u);
    const CanvasOperation& name = texts.back();
    EXPECT_EQ(name.text, u"Ćwiczenia");
    ExpectRect(name.rect, 248, 232, 92, 18);
    EXPECT_EQ(name.font, (zirvel::CanvasFont{u"Segoe UI", 13.0f, FontWeight::Regular}));
    EXPECT_EQ(name.color, 0xD7FFFFFFu);
}

TEST_F(WheelPictureTest, TheCursorIsASevenPointArrowWithItsTipAtTheCursor) {
    const Frame frame = Draw({NumberedWheel(4)}, [](zirvel::EngineState& engine) {
        engine.cursorX = 100;
        engine.cursorY = 50;
    });
    const auto fill = OperationsOf(frame, Op::FillPolygon);
    const auto outline = OperationsOf(frame, Op::DrawPolygon);
    ASSERT_EQ(fill.size(), 1u);
    ASSERT_EQ(outline.size(), 1u);
    const std::vector<PointF> arrow = {{100, 50},     {100, 73},     {105.5f, 68.5f}, {109.5f, 77},
                                       {113, 75.5f}, {109, 67},     {116, 67}};
    EXPECT_EQ(fill[0].points, arrow);
    EXPECT_EQ(fill[0].color, 0xFFFFFFFFu);
    EXPECT_EQ(outline[0].points, arrow);
    EXPECT_EQ(outline[0].color, 0xFF000000u);
    EXPECT_FLOAT_EQ(outline[0].penWidth, 1.5f);
}

TEST_F(WheelPictureTest, NoDwellRingAtOrBelowThreePercent) {
    for (float progress : {0.0f, 0.02f, 0.03f}) {
        const Frame frame = Draw({NumberedWheel(4)}, [&](zirvel::EngineState& engine) { engine.dwellProgress = progress; });
        EXPECT_TRUE(OperationsOf(frame, Op::DrawEllipse).empty()) << progress;
        EXPECT_TRUE(OperationsOf(frame, Op::DrawArc).empty()) << progress;
    }
}

TEST_F(WheelPictureTest, HalfADwellIsAHalfArcFromTwelveOClockClockwise) {
    const Frame frame = Draw({NumberedWheel(4)}, [](zirvel::EngineState& engine) {
        engine.cursorX = 400;
        engine.cursorY = 120;
        engine.dwellProgress = 0.5f;
    });
    const auto track = OperationsOf(frame, Op::DrawEllipse);
    const auto arc = OperationsOf(frame, Op::DrawArc);
    ASSERT_EQ(track.size(), 1u);
    ASSERT_EQ(arc.size(), 1u);
    ExpectRect(track[0].rect, 383, 103, 34, 34);
    EXPECT_EQ(track[0].color, 0x5AFFFFFFu);
    EXPECT_FLOAT_EQ(track[0].penWidth, 3.5f);
    ExpectRect(arc[0].rect, 383, 103, 34, 34);
    EXPECT_FLOAT_EQ(arc[0].startAngle, -90.0f);
    EXPECT_FLOAT_EQ(arc[0].sweepAngle, 180.0f);
    EXPECT_EQ(arc[0].color, 0xEBFFFFFFu);
    EXPECT_FLOAT_EQ(arc[0].penWidth, 3.5f);
}

TEST_F(WheelPictureTest, AFinishedDwellIsAFullCircleAtMost) {
    const auto arc = OperationsOf(Draw({NumberedWheel(4)}, [](zirvel::EngineState& e) { e.dwellProgress = 1.4f; }),
                                  Op::DrawArc);
    ASSERT_EQ(arc.size(), 1u);
    EXPECT_FLOAT_EQ(arc[0].sweepAngle, 360.0f);
}

// At 144 DPI the picture is the 96-DPI one with every length half as large
// again: sectors, hole, labels, fonts, icons, arrows, cursor and dwell ring.
TEST_F(WheelPictureTest, At144DpiEveryLengthOfThePictureIsHalfAsLargeAgain) {
    factory_.AddImage(zirvel::ResolveIconPath(u"icons\\copy.png", u"/opt/zirvel"));
    const auto scene = [](std::uint32_t dpi) {
        return [dpi](zirvel::EngineState& engine) {
            engine.wheel = zirvel::WheelGeometryAt(dpi);
            engine.hoveredField = 1;
            engine.hoveredArrow = 0;
            engine.cursorX = 300 * static_cast<int>(dpi) / 96;
            engine.cursorY = 120 * static_cast<int>(dpi) / 96;
            engine.dwellProgress = 0.5f;
        };
    };
    std::vector<zirvel::Wheel> wheels = {NumberedWheel(5, u"Biuro"), NumberedWheel(3)};
    wheels[0].functions[2].icon = u"icons\\copy.png";
    wheels[0].functions[3].icon = u"icons\\copy.png";
    wheels[0].functions[3].name.clear();
    const Frame at96 = Draw(wheels, scene(96));
    const Frame at144 = Draw(wheels, scene(144));
    EXPECT_EQ(factory_.LastSize(), (zirvel::ScreenPoint{882, 690}));
    ASSERT_EQ(KindsOf(at144), KindsOf(at96));
    for (std::size_t i = 0; i < at96.size(); ++i) {
        SCOPED_TRACE(i);
        const CanvasOperation& small = at96[i];
        const CanvasOperation& large = at144[i];
        ExpectRect(large.rect, small.rect.x * 1.5f, small.rect.y * 1.5f, small.rect.width * 1.5f,
                   small.rect.height * 1.5f);
        EXPECT_FLOAT_EQ(large.penWidth, small.penWidth * 1.5f);
        EXPECT_FLOAT_EQ(large.font.pixelSize, small.font.pixelSize * 1.5f);
        EXPECT_EQ(large.startAngle, small.startAngle);
        EXPECT_EQ(large.sweepAngle, small.sweepAngle);
        EXPECT_EQ(large.color, small.color);
        EXPECT_EQ(large.text, small.text);
        ASSERT_EQ(large.points.size(), small.points.size());
        for (std::size_t p = 0; p < small.points.size(); ++p) {
            EXPECT_NEAR(large.points[p].x, small.points[p].x * 1.5f, 1e-3f);
            EXPECT_NEAR(large.points[p].y, small.points[p].y * 1.5f, 1e-3f);
        }
    }
    EXPECT_FALSE(OperationsOf(at144, Op::DrawImage).empty());
    EXPECT_FALSE(OperationsOf(at144, Op::DrawArc).empty());
}

}  // namespace
}  // namespace zirvel_test
