// The icon set and the program's icon: every SVG in resources/icons draws
// a readable picture, the build rendered each one to program-files/icons,
// zirvel.ico carries its sizes, and the program's folder got a copy.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryDir>
#include <QtGui/QImageReader>

#include <string>
#include <vector>

#include "program_files/svg_picture.h"

namespace zirvel_test {
namespace {

using ::testing::ElementsAre;
using zirvel::program_files::RenderSvg;

constexpr int kRenderedIconSize = 64;
constexpr int kSmallestReadableSize = 48;

QDir IconSources() { return QDir(ZIRVEL_ICON_SOURCE_DIRECTORY); }
QDir ProgramFiles() { return QDir(ZIRVEL_PROGRAM_FILES_DIRECTORY); }

std::vector<std::string> IconNames() {
    std::vector<std::string> names;
    for (const QFileInfo& svg : IconSources().entryInfoList({"*.svg"}, QDir::Files, QDir::Name)) {
        names.push_back(svg.completeBaseName().toStdString());
    }
    return names;
}

QStringList BaseNames(const QDir& folder, const QString& pattern) {
    QStringList names;
    for (const QFileInfo& file : folder.entryInfoList({pattern}, QDir::Files, QDir::Name)) {
        names.append(file.completeBaseName());
    }
    return names;
}

// How a picture covers its square. The icons are light glyphs on opaque
// coloured tiles with rounded, transparent corners.
struct Coverage {
    double opaque = 0;       // share of pixels with alpha >= 200
    double transparent = 0;  // share of pixels with alpha <= 20
    double glyph = 0;        // share of the opaque pixels that are near white
};

Coverage CoverageOf(const QImage& picture) {
    const QImage argb = picture.convertToFormat(QImage::Format_ARGB32);
    int opaque = 0;
    int transparent = 0;
    int light = 0;
    for (int y = 0; y < argb.height(); ++y) {
        for (int x = 0; x < argb.width(); ++x) {
            const QColor pixel = argb.pixelColor(x, y);
            if (pixel.alpha() <= 20) {
                ++transparent;
            } else if (pixel.alpha() >= 200) {
                ++opaque;
                if (pixel.lightnessF() >= 0.85) {
                    ++light;
                }
            }
        }
    }
    const double all = double(argb.width()) * argb.height();
    return {opaque / all, transparent / all, opaque == 0 ? 0.0 : double(light) / opaque};
}

// A readable icon: a mostly opaque tile, transparent corners, and a glyph
// that is neither a speck nor a flood.
::testing::AssertionResult Readable(const QImage& picture) {
    if (picture.isNull()) {
        return ::testing::AssertionFailure() << "no picture";
    }
    const Coverage coverage = CoverageOf(picture);
    if (coverage.opaque < 0.6 || coverage.transparent <= 0.0 || coverage.glyph < 0.06 || coverage.glyph > 0.6) {
        return ::testing::AssertionFailure() << "opaque " << coverage.opaque << ", transparent "
                                             << coverage.transparent << ", glyph " << coverage.glyph;
    }
    return ::testing::AssertionSuccess();
}

TEST(IconSetTest, HasAtLeastTwentyFourIcons) { EXPECT_GE(IconNames().size(), 24u); }

TEST(IconSetTest, NamesAreLowerCaseWordsJoinedByHyphens) {
    const QRegularExpression readable("^[a-z0-9]+(-[a-z0-9]+)*$");
    for (const std::string& name : IconNames()) {
        EXPECT_TRUE(readable.match(QString::fromStdString(name)).hasMatch()) << name;
    }
}

TEST(IconSetTest, TheReadabilityCheckRejectsAnEmptyTileAndASolidSquare) {
    QTemporaryDir folder;
    ASSERT_TRUE(folder.isValid());
    const auto draw = [&](const char* name, const QByteArray& body) {
        QFile svg(folder.filePath(name));
        EXPECT_TRUE(svg.open(QIODevice::WriteOnly));
        svg.write(R"(<svg xmlns="http://www.w3.org/2000/svg" width="24" height="24" viewBox="0 0 24 24">)" + body +
                  "</svg>");
        svg.close();
        return RenderSvg(svg.fileName(), kRenderedIconSize);
    };
    EXPECT_FALSE(Readable(draw("empty-tile.svg", R"(<rect x="0.5" y="0.5" width="23" height="23" rx="5" fill="#C0392B"/>)")));
    EXPECT_FALSE(Readable(draw("square.svg", R"(<rect width="24" height="24" fill="#FFFFFF"/>)")));
    EXPECT_FALSE(Readable(draw("nothing.svg", "")));
    EXPECT_TRUE(Readable(draw("tile-and-bar.svg", R"(<rect x="0.5" y="0.5" width="23" height="23" rx="5" fill="#C0392B"/>)"
                                                  R"(<path d="M6 12h12" stroke="#FFFFFF" stroke-width="3"/>)")));
}

class IconPictureTest : public ::testing::TestWithParam<std::string> {
protected:
    QString SvgPath() const { return IconSources().filePath(QString::fromStdString(GetParam()) + ".svg"); }
    QString PngPath() const {
        return ProgramFiles().filePath("icons/" + QString::fromStdString(GetParam()) + ".png");
    }
};

TEST_P(IconPictureTest, DrawsAReadablePictureAtFortyEightAndSixtyFourPixels) {
    for (const int size : {kSmallestReadableSize, kRenderedIconSize}) {
        const QImage picture = RenderSvg(SvgPath(), size);
        ASSERT_EQ(picture.size(), QSize(size, size));
        EXPECT_TRUE(Readable(picture)) << "at " << size << " px";
    }
}

TEST_P(IconPictureTest, TheBuildRenderedItUnderItsOwnName) {
    const QImage rendered(PngPath());
    ASSERT_FALSE(rendered.isNull()) << PngPath().toStdString();
    EXPECT_EQ(rendered.size(), QSize(kRenderedIconSize, kRenderedIconSize));
    EXPECT_EQ(rendered.convertToFormat(QImage::Format_ARGB32),
              RenderSvg(SvgPath(), kRenderedIconSize).convertToFormat(QImage::Format_ARGB32));
}

INSTANTIATE_TEST_SUITE_P(EveryIcon, IconPictureTest, ::testing::ValuesIn(IconNames()),
                         [](const ::testing::TestParamInfo<std::string>& info) {
                             std::string name = info.param;
                             for (char& c : name) {
                                 c = c == '-' ? '_' : c;
                             }
                             return name;
                         });

TEST(RenderedIconsTest, OnePngForEachSvgAndNoOther) {
    EXPECT_EQ(BaseNames(ProgramFiles().filePath("icons"), "*"), BaseNames(IconSources(), "*.svg"));
}

TEST(ProgramIconTest, TheIcoCarriesSixSizesThatAllDecode) {
    QImageReader reader(ProgramFiles().filePath("zirvel.ico"));
    ASSERT_GE(reader.imageCount(), 4);
    std::vector<int> sizes;
    for (int i = 0; i < reader.imageCount(); ++i) {
        ASSERT_TRUE(reader.jumpToImage(i));
        const QImage picture = reader.read();
        ASSERT_FALSE(picture.isNull()) << "entry " << i << ": " << reader.errorString().toStdString();
        EXPECT_EQ(picture.width(), picture.height());
        EXPECT_GT(CoverageOf(picture).opaque, 0.4) << picture.width() << " px";
        sizes.push_back(picture.width());
    }
    EXPECT_THAT(sizes, ElementsAre(16, 24, 32, 48, 64, 256));
}

TEST(ProgramIconTest, ThePngIsTheWheelAtTwoHundredFiftySixPixels) {
    const QImage picture(ProgramFiles().filePath("zirvel.png"));
    ASSERT_EQ(picture.size(), QSize(256, 256));
    const Coverage coverage = CoverageOf(picture);
    EXPECT_GT(coverage.opaque, 0.5);
    EXPECT_GT(coverage.transparent, 0.05);  // a round wheel leaves the corners free
}

// zirvel_stage_program_files(zirvel): the program's folder holds the same
// files as program-files.
TEST(StagedProgramFilesTest, TheProgramsFolderHasACopyOfEveryFile) {
    const QDir program(ZIRVEL_PROGRAM_DIRECTORY);
    QStringList expected;
    for (const QString folder : {"icons", "themes"}) {
        for (const QString& name : QDir(ProgramFiles().filePath(folder)).entryList(QDir::Files, QDir::Name)) {
            expected.append(folder + "/" + name);
        }
    }
    expected << "zirvel.ico" << "zirvel.png";
    ASSERT_GE(expected.size(), 24 + 3 + 2);
    for (const QString& name : expected) {
        QFile staged(program.filePath(name));
        QFile original(ProgramFiles().filePath(name));
        ASSERT_TRUE(staged.open(QIODevice::ReadOnly)) << name.toStdString();
        ASSERT_TRUE(original.open(QIODevice::ReadOnly)) << name.toStdString();
        EXPECT_EQ(staged.readAll(), original.readAll()) << name.toStdString();
    }
}

}  // namespace
}  // namespace zirvel_test
