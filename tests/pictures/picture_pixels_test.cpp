// The pictures as the platform's canvas really draws them: probes of single
// pixels, labels compared with the canvas's own rendering of each number,
// icons decoded from files, and PNG snapshots for a person to look at.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <numbers>
#include <string>
#include <vector>

#include "canvas_under_test.h"
#include "config/text.h"
#include "config/utf.h"
#include "engine/icon_cache.h"
#include "engine/picture_png.h"
#include "engine/wheel_picture.h"
#include "navigation/grid_picture.h"
#include "navigation/hint_picture.h"
#include "support/wheel_scenes.h"

namespace zirvel_test {
namespace {

using zirvel::Picture;

constexpr std::uint32_t kSegmentColor = 0x3080E0;  // red 0xE0, green 0x80, blue 0x30
constexpr int kSegmentRed = 0xE0;
constexpr int kSegmentGreen = 0x80;
constexpr int kSegmentBlue = 0x30;

// A pixel as stored: premultiplied.
struct Pixel {
    int a = 0;
    int r = 0;
    int g = 0;
    int b = 0;
};

Pixel At(const Picture& picture, int x, int y) {
    const std::uint32_t v = picture.pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.width) +
                                           static_cast<std::size_t>(x)];
    return Pixel{static_cast<int>(v >> 24), static_cast<int>((v >> 16) & 0xFF), static_cast<int>((v >> 8) & 0xFF),
                 static_cast<int>(v & 0xFF)};
}

int Premultiplied(int channel, int alpha) { return (channel * alpha + 127) / 255; }

// The segment colour at `alpha`, as stored, within rounding.
void ExpectSegmentColour(const Picture& picture, int x, int y, int alpha) {
    SCOPED_TRACE(::testing::Message() << "pixel (" << x << ", " << y << ")");
    const Pixel p = At(picture, x, y);
    EXPECT_EQ(p.a, alpha);
    EXPECT_NEAR(p.r, Premultiplied(kSegmentRed, alpha), 2);
    EXPECT_NEAR(p.g, Premultiplied(kSegmentGreen, alpha), 2);
    EXPECT_NEAR(p.b, Premultiplied(kSegmentBlue, alpha), 2);
}

std::u16string FromMacro(const char* text) { return zirvel::Utf8ToUtf16(text); }

// The fixture icons: a 48 x 48 orange disc with a white bar, on transparency.
std::u16string IconDirectory() { return FromMacro(ZIRVEL_TEST_ICON_DIRECTORY); }

class PicturePixelsTest : public ::testing::Test {
protected:
    Picture DrawWheelOf(WheelScene& scene) {
        scene.engine().configuration.settings.segmentColor = kSegmentColor;
        auto canvas = CanvasUnderTest().CreateCanvas(zirvel::kWheelWidth, zirvel::kWheelHeight);
        zirvel::DrawWheel(scene.engine(), *canvas, icons_);
        return canvas->TakePicture();
    }

    zirvel::IconCache icons_{CanvasUnderTest()};
};

// The point at `radius` from the wheel's centre in the middle of sector i of n.
std::pair<int, int> InSector(std::size_t i, std::size_t n, double radius) {
    const double w = 360.0 / static_cast<double>(n);
    const double theta = (static_cast<double>(i) * w - 90.0 + w / 2.0) * std::numbers::pi / 180.0;
    return {static_cast<int>(std::lround(294.0 + radius * std::cos(theta))),
            static_cast<int>(std::lround(230.0 + radius * std::sin(theta)))};
}

// Anywhere inside the ring's inner radius, short of its anti-aliased edge.
void ExpectHoleTransparent(const Picture& picture) {
    int opaque = 0;
    for (int y = 230 - 44; y <= 230 + 44; ++y) {
        for (int x = 294 - 44; x <= 294 + 44; ++x) {
            const int dx = x - 294;
            const int dy = y - 230;
            if (dx * dx + dy * dy <= 44 * 44 && At(picture, x, y).a != 0) ++opaque;
        }
    }
    EXPECT_EQ(opaque, 0);
}

TEST_F(PicturePixelsTest, TheCentreHoleIsFullyTransparentEvenUnderASectorFill) {
    for (std::size_t n : {1u, 8u}) {
        SCOPED_TRACE(n);
        WheelScene scene({NumberedWheel(n)});
        scene.engine().cursorX = 60;  // the cursor out of the way
        scene.engine().cursorY = 420;
        scene.engine().hoveredField = 0;
        const Picture picture = DrawWheelOf(scene);
        ASSERT_EQ(picture.width, 588);
        ASSERT_EQ(picture.height, 460);
        ExpectHoleTransparent(picture);
        // Just outside the hole the sector shows again.
        EXPECT_EQ(At(picture, 294, 230 - 60).a, 255);
    }
}

// While the user steers within a field only the pointer is drawn anew, over
// a copy of the body: the pixels must be those of the whole wheel drawn at once.
TEST_F(PicturePixelsTest, ThePointerOverACopyOfTheBodyIsTheWholeWheel) {
    WheelScene scene({NumberedWheel(8), NumberedWheel(3)});
    scene.engine().configuration.settings.segmentColor = kSegmentColor;
    scene.engine().hoveredField = 2;
    scene.engine().dwellProgress = 0.4f;
    auto bodyCanvas = CanvasUnderTest().CreateCanvas(zirvel::kWheelWidth, zirvel::kWheelHeight);
    zirvel::DrawWheelBody(scene.engine(), *bodyCanvas, icons_);
    const Picture body = bodyCanvas->TakePicture();
    for (const auto& [x, y] : {std::pair{400, 150}, std::pair{300, 60}, std::pair{500, 240}}) {
        SCOPED_TRACE(x);
        scene.engine().cursorX = x;
        scene.engine().cursorY = y;
        auto layered = CanvasUnderTest().CreateCanvas(zirvel::kWheelWidth, zirvel::kWheelHeight);
        layered->SetPicture(body);
        zirvel::DrawWheelPointer(scene.engine(), *layered);
        const Picture twoLayers = layered->TakePicture();
        const Picture whole = DrawWheelOf(scene);
        ASSERT_EQ(twoLayers.pixels.size(), whole.pixels.size());
        std::size_t different = 0;
        for (std::size_t i = 0; i < whole.pixels.size(); ++i) different += twoLayers.pixels[i] != whole.pixels[i];
        EXPECT_EQ(different, 0u);
        EXPECT_NE(twoLayers.pixels, body.pixels) << "the pointer was not drawn";
    }
}

TEST_F(PicturePixelsTest, TheHoveredSectorIsOpaqueAndTheOthersHaveAlpha135) {
    WheelScene scene({NumberedWheel(8)});
    scene.engine().hoveredField = 2;
    scene.engine().cursorX = 60;
    scene.engine().cursorY = 420;
    const Picture picture = DrawWheelOf(scene);
    for (std::size_t i = 0; i < 8; ++i) {
        SCOPED_TRACE(i);
        for (double radius : {70.0, 200.0}) {
            const auto [x, y] = InSector(i, 8, radius);
            ExpectSegmentColour(picture, x, y, i == 2 ? 255 : 135);
        }
    }
    // Outside the disc nothing is drawn.
    EXPECT_EQ(At(picture, 294 + 226, 230 - 150).a, 0);
    EXPECT_EQ(At(picture, 5, 5).a, 0);
}

TEST_F(PicturePixelsTest, ArrowsAndCounterOnlyWithTwoOrMoreWheels) {
    auto arrowPixels = [](const Picture& picture) {
        int drawn = 0;
        for (int y = 186; y < 274; ++y) {
            for (int x = 8; x < 56; ++x) drawn += At(picture, x, y).a != 0 ? 1 : 0;
            for (int x = 532; x < 580; ++x) drawn += At(picture, x, y).a != 0 ? 1 : 0;
        }
        return drawn;
    };
    auto counterPixels = [](const Picture& picture) {  // within the hole
        int drawn = 0;
        for (int y = 210; y < 232; ++y) {
            for (int x = 250; x < 338; ++x) {
                const int dx = x - 294;
                const int dy = y - 230;
                if (dx * dx + dy * dy < 44 * 44) drawn += At(picture, x, y).a > 128 ? 1 : 0;
            }
        }
        return drawn;
    };
    WheelScene one({NumberedWheel(4)});
    one.engine().cursorX = 60;
    one.engine().cursorY = 420;
    const Picture single = DrawWheelOf(one);
    EXPECT_EQ(arrowPixels(single), 0);
    EXPECT_EQ(counterPixels(single), 0);

    WheelScene three({NumberedWheel(4), NumberedWheel(4), NumberedWheel(4)});
    three.engine().configuration.currentWheel = 1;
    three.engine().hoveredArrow = 1;
    three.engine().cursorX = 60;
    three.engine().cursorY = 420;
    const Picture many = DrawWheelOf(three);
    EXPECT_GT(arrowPixels(many), 2 * 44 * 88 * 9 / 10);
    EXPECT_GT(counterPixels(many), 20);  // "2/3" shows in the hole
    ExpectSegmentColour(many, 20, 200, 135);   // left box, beside its triangle
    ExpectSegmentColour(many, 568, 200, 255);  // the hovered right box
    // The triangles: white over the box, pointing outwards.
    EXPECT_GT(At(many, 36, 230).a, 230);
    EXPECT_GT(At(many, 36, 230).r, 220);
    ExpectSegmentColour(many, 24, 218, 135);  // beside the left triangle's tip: the box alone
    EXPECT_EQ(At(many, 566, 230).a, 255);
    EXPECT_GT(At(many, 560, 230).r, 250);  // the hovered triangle is opaque white
    EXPECT_GT(At(many, 560, 230).b, 250);
}

TEST_F(PicturePixelsTest, TheDwellRingShowsOnlyAboveThreePercent) {
    auto draw = [this](float progress) {
        WheelScene scene({NumberedWheel(4)});
        scene.engine().cursorX = 60;
        scene.engine().cursorY = 420;
        scene.engine().dwellProgress = progress;
        return DrawWheelOf(scene);
    };
    const Picture early = draw(0.02f);
    EXPECT_EQ(At(early, 60, 403).a, 0);  // twelve o'clock on the ring
    EXPECT_EQ(At(early, 77, 420).a, 0);  // three o'clock
    EXPECT_EQ(At(early, 43, 420).a, 0);  // nine o'clock

    const Picture half = draw(0.5f);
    EXPECT_GT(At(half, 60, 403).a, 200);  // the arc starts at twelve o'clock
    EXPECT_GT(At(half, 77, 420).a, 200);  // and passes three o'clock
    EXPECT_NEAR(At(half, 43, 420).a, 90, 20);  // nine o'clock: only the faint track
    EXPECT_NEAR(At(half, 48, 408).a, 90, 25);  // half past ten: the track too
}

TEST_F(PicturePixelsTest, TheVirtualCursorIsWhiteWithABlackOutline) {
    WheelScene scene({NumberedWheel(4)});
    scene.engine().cursorX = 60;
    scene.engine().cursorY = 400;
    const Picture picture = DrawWheelOf(scene);
    const Pixel inside = At(picture, 63, 412);
    EXPECT_EQ(inside.a, 255);
    EXPECT_GT(inside.r, 240);
    const Pixel edge = At(picture, 60, 410);  // on the left edge, the outline
    EXPECT_GT(edge.a, 200);
    EXPECT_LT(edge.r, 120);
    EXPECT_EQ(At(picture, 56, 410).a, 0);
}

TEST_F(PicturePixelsTest, IconsAreDrawnWithTheAlphaOfTheirField) {
    WheelScene scene({NumberedWheel(8)}, IconDirectory());
    auto& functions = scene.engine().configuration.wheels[0].functions;
    functions[0].icon = u"orange.png";
    functions[0].name.clear();
    functions[1].icon = u"orange.png";
    functions[1].name.clear();
    scene.engine().hoveredField = 1;
    scene.engine().cursorX = 60;
    scene.engine().cursorY = 420;
    const Picture picture = DrawWheelOf(scene);
    // The orange part of the icon: 12 of 48 pixels down its middle, scaled to 42.
    auto orangeOf = [](std::size_t i) {
        auto [x, y] = InSector(i, 8, 145.0);
        return std::pair<int, int>{x, y - 21 + 10};
    };
    const auto [hx, hy] = orangeOf(1);
    const Pixel hovered = At(picture, hx, hy);
    EXPECT_EQ(hovered.a, 255);
    EXPECT_GT(hovered.r, 245);
    EXPECT_NEAR(hovered.g, 128, 8);
    EXPECT_LT(hovered.b, 10);
    // 135/255 of the icon over a sector of alpha 135.
    const auto [nx, ny] = orangeOf(0);
    const Pixel faded = At(picture, nx, ny);
    EXPECT_NEAR(faded.a, 135 + 135 * 120 / 255, 6);
    EXPECT_NEAR(faded.r, Premultiplied(255, 135) + Premultiplied(kSegmentRed, 135) * 120 / 255, 6);
    EXPECT_NEAR(faded.b, Premultiplied(kSegmentBlue, 135) * 120 / 255, 6);
}

TEST_F(PicturePixelsTest, IconsOfEveryCommonFormatDecode) {
    for (const char16_t* name : {u"orange.png", u"orange.ico", u"orange.bmp", u"orange.jpg"}) {
        SCOPED_TRACE(zirvel::Utf16ToUtf8(name));
        const auto image = CanvasUnderTest().DecodeImage(zirvel::ResolveIconPath(name, IconDirectory()));
        ASSERT_NE(image, nullptr);
        EXPECT_EQ(image->Width(), 48);
        EXPECT_EQ(image->Height(), 48);
    }
    EXPECT_EQ(CanvasUnderTest().DecodeImage(zirvel::ResolveIconPath(u"missing.png", IconDirectory())), nullptr);
    // A file that is not an image.
    const std::u16string notAnImage = FromMacro(ZIRVEL_TEST_SOURCE_FILE);
    EXPECT_EQ(CanvasUnderTest().DecodeImage(notAnImage), nullptr);
}

TEST_F(PicturePixelsTest, AnIconInUseLeavesItsFileFreeToReplaceAndDelete) {
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("zirvel_icon_in_use_" + CanvasUnderTestName());
    std::filesystem::create_directories(folder);
    const std::filesystem::path icon = folder / "icon.png";
    std::filesystem::copy_file(std::filesystem::path(IconDirectory()) / "orange.png", icon,
                               std::filesystem::copy_options::overwrite_existing);
    const auto image = CanvasUnderTest().DecodeImage(icon.u16string());
    ASSERT_NE(image, nullptr);
    std::error_code error;
    std::filesystem::copy_file(std::filesystem::path(IconDirectory()) / "orange.bmp", icon,
                               std::filesystem::copy_options::overwrite_existing, error);
    EXPECT_FALSE(error) << "the icon's file could not be replaced: " << error.message();
    std::filesystem::remove(icon, error);
    EXPECT_FALSE(error) << "the icon's file could not be deleted: " << error.message();
    // The image still draws: the orange disc at its centre.
    auto canvas = CanvasUnderTest().CreateCanvas(48, 48);
    canvas->Clear();
    canvas->DrawImage(*image, zirvel::RectF{0, 0, 48, 48}, 1.0f);
    const Picture drawn = canvas->TakePicture();
    EXPECT_GT(At(drawn, 10, 24).a, 200);
    std::filesystem::remove_all(folder, error);
}

// ---------------------------------------------------------------------------
// Labels: the bright pixels of a label against the canvas's own rendering of
// each candidate text in a box of the same size.

struct Mask {
    int width = 0;
    int height = 0;
    std::vector<bool> bright;
    int Count() const { return static_cast<int>(std::count(bright.begin(), bright.end(), true)); }
};

// The cells' white borders are left out of the comparison.
constexpr int kBorderMargin = 3;

bool IsBrightWhite(const Pixel& p) { return p.a >= 0xC0 && p.r >= 0xC0 && p.g >= 0xC0 && p.b >= 0xC0; }

Mask MaskOf(const Picture& picture, int left, int top, int width, int height) {
    Mask mask{width, height, {}};
    mask.bright.reserve(static_cast<std::size_t>(width * height));
    for (int y = top; y < top + height; ++y) {
        for (int x = left; x < left + width; ++x) mask.bright.push_back(IsBrightWhite(At(picture, x, y)));
    }
    return mask;
}

Mask ReferenceLabel(std::u16string_view text, float pixelSize, int width, int height) {
    auto canvas = CanvasUnderTest().CreateCanvas(width, height);
    canvas->SetTextHint(zirvel::TextHint::AntiAlias);
    canvas->Clear();
    const zirvel::CanvasFont font{std::u16string(zirvel::kLabelFontFamily), pixelSize, zirvel::FontWeight::Bold};
    canvas->DrawCentredText(text, font,
                            zirvel::RectF{0, 0, static_cast<float>(width), static_cast<float>(height)},
                            zirvel::kOpaqueWhite);
    const Picture picture = canvas->TakePicture();
    return MaskOf(picture, kBorderMargin, kBorderMargin, width - 2 * kBorderMargin, height - 2 * kBorderMargin);
}

int Differences(const Mask& a, const Mask& b) {
    int different = 0;
    for (std::size_t i = 0; i < a.bright.size(); ++i) different += a.bright[i] != b.bright[i] ? 1 : 0;
    return different;
}

// Which of the texts 1..count the label in the box shows: the closest
// reference, which must also be close in absolute terms.
void ExpectLabels(const Picture& picture, int cellsPerSide, int cellWidth, int cellHeight, float pixelSize) {
    const int count = cellsPerSide * cellsPerSide;
    std::vector<Mask> references;
    for (int n = 1; n <= count; ++n) references.push_back(ReferenceLabel(zirvel::DecimalText(n), pixelSize, cellWidth, cellHeight));
    for (int n = 1; n <= count; ++n) {
        SCOPED_TRACE(n);
        const int row = (n - 1) / cellsPerSide;
        const int col = (n - 1) % cellsPerSide;
        const Mask label = MaskOf(picture, col * cellWidth + kBorderMargin, row * cellHeight + kBorderMargin,
                                  cellWidth - 2 * kBorderMargin, cellHeight - 2 * kBorderMargin);
        ASSERT_GT(label.Count(), 15) << "no label shows";
        int best = 0;
        for (int candidate = 1; candidate <= count; ++candidate) {
            if (best == 0 || Differences(label, references[static_cast<std::size_t>(candidate - 1)]) <
                                 Differences(label, references[static_cast<std::size_t>(best - 1)])) {
                best = candidate;
            }
        }
        EXPECT_EQ(best, n);
        EXPECT_LT(Differences(label, references[static_cast<std::size_t>(n - 1)]), label.Count() / 4 + 4);
    }
}

// The height of the bright pixels of "H" drawn at `pixelSize`.
int CapHeight(float pixelSize) {
    auto canvas = CanvasUnderTest().CreateCanvas(120, 120);
    canvas->Clear();
    const zirvel::CanvasFont font{std::u16string(zirvel::kLabelFontFamily), pixelSize, zirvel::FontWeight::Bold};
    canvas->DrawCentredText(u"H", font, zirvel::RectF{0, 0, 120, 120}, zirvel::kOpaqueWhite);
    const Picture picture = canvas->TakePicture();
    int top = -1;
    int bottom = -1;
    for (int y = 0; y < 120; ++y) {
        for (int x = 0; x < 120; ++x) {
            if (At(picture, x, y).a >= 0x80) {
                if (top < 0) top = y;
                bottom = y;
            }
        }
    }
    return top < 0 ? 0 : bottom - top + 1;
}

TEST_F(PicturePixelsTest, TextIsDrawnAtItsSizeInPixels) {
    // Capitals of the sans-serif families in use are 0.70 to 0.73 em high.
    EXPECT_NEAR(CapHeight(40.0f), 28.5, 2.5);
    EXPECT_NEAR(CapHeight(19.0f), 13.5, 1.5);
    EXPECT_NEAR(CapHeight(64.0f), 46, 3.0);
}

Picture DrawGridPicture(const zirvel::ScreenRect& area, std::int32_t level) {
    auto canvas = CanvasUnderTest().CreateCanvas(area.Width(), area.Height());
    zirvel::DrawGrid(*canvas, area, level, kSegmentColor);
    return canvas->TakePicture();
}

TEST_F(PicturePixelsTest, GridFourByFourLabelledOneToSixteenThenTwoByTwo) {
    // 400 x 320: cells of 100 x 80, labels of min(100, 80) * 0.3 = 24 px.
    const Picture first = DrawGridPicture({1000, 500, 1400, 820}, 1);
    ASSERT_EQ(first.width, 400);
    ASSERT_EQ(first.height, 320);
    for (int row = 0; row < 4; ++row) {
        for (int col = 0; col < 4; ++col) ExpectSegmentColour(first, col * 100 + 8, row * 80 + 8, 0x1C);
    }
    // The borders: white at alpha 190 over the cell fill, across each cell edge.
    EXPECT_GT(At(first, 100, 40).a, 150);
    EXPECT_GT(At(first, 100, 40).b, 150);
    ExpectLabels(first, 4, 100, 80, 24.0f);

    // The next level: 2 x 2 over 200 x 160, the same cell size.
    const Picture second = DrawGridPicture({1000, 500, 1200, 660}, 2);
    ASSERT_EQ(second.width, 200);
    ExpectSegmentColour(second, 108, 88, 0x1C);
    ExpectLabels(second, 2, 100, 80, 24.0f);
}

TEST_F(PicturePixelsTest, HintLabelBoxesAreNineWidePerDigitPlusFourteen) {
    const zirvel::ScreenRect area{200, 100, 800, 500};
    std::vector<zirvel::ScreenRect> elements;
    for (int i = 0; i < 12; ++i) {
        const int x = 210 + (i % 4) * 140;
        const int y = 110 + (i / 4) * 120;
        elements.push_back({x, y, x + 120, y + 90});
    }
    auto canvas = CanvasUnderTest().CreateCanvas(area.Width(), area.Height());
    zirvel::DrawHints(*canvas, area, elements, kSegmentColor);
    const Picture picture = canvas->TakePicture();
    for (int i : {0, 6, 9, 11}) {
        SCOPED_TRACE(i + 1);
        const int x = elements[static_cast<std::size_t>(i)].left - area.left;
        const int y = elements[static_cast<std::size_t>(i)].top - area.top;
        const int width = (i + 1 < 10 ? 1 : 2) * 9 + 14;
        // The box: segment colour at 0xEB over the element's fill.
        const Pixel box = At(picture, x + width - 1, y + 12);
        EXPECT_NEAR(box.a, 0xEB + 0x16 * (255 - 0xEB) / 255, 3);
        // Beyond it only the element's fill.
        ExpectSegmentColour(picture, x + width + 1, y + 12, 0x16);
        ExpectSegmentColour(picture, x + 60, y + 45, 0x16);
        // The number, in white, inside the box.
        int white = 0;
        for (int yy = y + 2; yy < y + 17; ++yy) {
            for (int xx = x + 2; xx < x + width - 1; ++xx) white += IsBrightWhite(At(picture, xx, yy)) ? 1 : 0;
        }
        EXPECT_GT(white, 8);
    }
    // The element border at alpha 0xD7, across the left edge.
    EXPECT_GT(At(picture, 10, 60).a, 150);
}

// ---------------------------------------------------------------------------
// Snapshots.

std::filesystem::path SnapshotDirectory() {
    const std::filesystem::path directory(FromMacro(ZIRVEL_SNAPSHOT_DIRECTORY));
    std::filesystem::create_directories(directory);
    return directory;
}

// The picture over a plain dark desktop, as the layered window shows it.
Picture OnDesktop(const Picture& picture) {
    constexpr std::uint32_t kDesktop[3] = {0x2B, 0x3A, 0x4A};
    Picture shown = picture;
    for (std::uint32_t& pixel : shown.pixels) {
        const std::uint32_t alpha = pixel >> 24;
        std::uint32_t out = 0xFF000000u;
        for (int channel = 0; channel < 3; ++channel) {
            const int shift = 16 - 8 * channel;
            const std::uint32_t source = (pixel >> shift) & 0xFFu;
            out |= std::min<std::uint32_t>(255u, source + kDesktop[channel] * (255u - alpha) / 255u) << shift;
        }
        pixel = out;
    }
    return shown;
}

void WriteSnapshot(const Picture& picture, const std::string& name) {
    const std::filesystem::path base = SnapshotDirectory() / (CanvasUnderTestName() + "_" + name);
    const std::u16string transparent = (base.u16string() + u".png");
    const std::u16string desktop = (base.u16string() + u"_on_desktop.png");
    ASSERT_TRUE(zirvel::WritePicturePng(picture, transparent));
    ASSERT_TRUE(zirvel::WritePicturePng(OnDesktop(picture), desktop));
    // The platform's own decoder reads the file back pixel for pixel.
    const auto decoded = CanvasUnderTest().DecodeImage(transparent);
    ASSERT_NE(decoded, nullptr);
    EXPECT_EQ(decoded->Width(), picture.width);
    EXPECT_EQ(decoded->Height(), picture.height);
    auto canvas = CanvasUnderTest().CreateCanvas(picture.width, picture.height);
    canvas->Clear();
    canvas->DrawImage(*decoded, zirvel::RectF{0, 0, static_cast<float>(picture.width), static_cast<float>(picture.height)},
                      1.0f);
    const Picture back = canvas->TakePicture();
    int different = 0;
    for (std::size_t i = 0; i < picture.pixels.size(); ++i) {
        for (int shift = 0; shift < 32; shift += 8) {
            const int a = static_cast<int>((picture.pixels[i] >> shift) & 0xFFu);
            const int b = static_cast<int>((back.pixels[i] >> shift) & 0xFFu);
            if (std::abs(a - b) > 3) ++different;
        }
    }
    EXPECT_LT(different, static_cast<int>(picture.pixels.size() / 100)) << name;
}

TEST_F(PicturePixelsTest, SnapshotsOfWheelsGridAndHints) {
    {
        zirvel::Wheel wheel = NumberedWheel(8, u"Gry");
        const std::vector<std::u16string> names = {u"Kopiuj", u"", u"Wklej", u"Skok", u"Cofnij", u"Zapisz", u"", u"Mapa"};
        for (std::size_t i = 0; i < 8; ++i) wheel.functions[i].name = names[i];
        wheel.functions[0].icon = u"orange.png";
        wheel.functions[1].icon = u"orange.ico";
        wheel.functions[2].icon = u"orange.bmp";
        wheel.functions[4].icon = u"orange.jpg";
        wheel.functions[5].hasColor = true;
        wheel.functions[5].color = 0x3CB43C;
        WheelScene scene({NumberedWheel(4), wheel, NumberedWheel(3)}, IconDirectory());
        scene.engine().configuration.currentWheel = 1;
        scene.engine().hoveredField = 2;
        const auto [x, y] = InSector(2, 8, 170.0);
        scene.engine().cursorX = x;
        scene.engine().cursorY = y;
        scene.engine().dwellProgress = 0.5f;
        WriteSnapshot(DrawWheelOf(scene), "wheel_8_fields");
    }
    {
        WheelScene scene({NumberedWheel(24, u"Wszystko")});
        scene.engine().hoveredArrow = -1;
        scene.engine().cursorX = 500;
        scene.engine().cursorY = 60;
        WriteSnapshot(DrawWheelOf(scene), "wheel_24_fields");
    }
    WriteSnapshot(DrawGridPicture({0, 0, 960, 540}, 1), "grid_4x4");
    WriteSnapshot(DrawGridPicture({480, 135, 720, 270}, 2), "grid_2x2");
    {
        const zirvel::ScreenRect area{0, 0, 640, 400};
        std::vector<zirvel::ScreenRect> elements;
        for (int i = 0; i < 14; ++i) {
            const int x = 20 + (i % 5) * 120;
            const int y = 20 + (i / 5) * 120;
            elements.push_back({x, y, x + 100 - (i % 3) * 20, y + 30 + (i % 4) * 20});
        }
        auto canvas = CanvasUnderTest().CreateCanvas(area.Width(), area.Height());
        zirvel::DrawHints(*canvas, area, elements, kSegmentColor);
        WriteSnapshot(canvas->TakePicture(), "hints");
    }
}

}  // namespace
}  // namespace zirvel_test
