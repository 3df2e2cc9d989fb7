// Where icon files are read from, and that each path is read at most once.
#include <gtest/gtest.h>

#include "engine/icon_cache.h"
#include "support/recording_canvas.h"

namespace zirvel_test {
namespace {

using zirvel::PathStyle;
using zirvel::ResolveIconPath;

TEST(IconPathTest, OnWindowsARelativePathIsReadFromTheProgramDirectory) {
    EXPECT_EQ(ResolveIconPath(u"icons\\x.png", u"C:\\Zirvel", PathStyle::Windows), u"C:\\Zirvel\\icons\\x.png");
    EXPECT_EQ(ResolveIconPath(u"x.png", u"C:\\Zirvel", PathStyle::Windows), u"C:\\Zirvel\\x.png");
}

TEST(IconPathTest, DriveLettersAndLeadingSlashesStandAsTheyAre) {
    for (PathStyle style : {PathStyle::Windows, PathStyle::Posix}) {
        EXPECT_EQ(ResolveIconPath(u"C:\\x.png", u"C:\\Zirvel", style), u"C:\\x.png");
        EXPECT_EQ(ResolveIconPath(u"d:x.png", u"C:\\Zirvel", style), u"d:x.png");
        EXPECT_EQ(ResolveIconPath(u"\\\\server\\x.png", u"C:\\Zirvel", style), u"\\\\server\\x.png");
        EXPECT_EQ(ResolveIconPath(u"/usr/share/x.png", u"/opt/zirvel", style), u"/usr/share/x.png");
    }
}

TEST(IconPathTest, OnPosixBackslashesInARelativePathAreSeparators) {
    EXPECT_EQ(ResolveIconPath(u"icons\\games\\x.png", u"/opt/zirvel", PathStyle::Posix),
              u"/opt/zirvel/icons/games/x.png");
    EXPECT_EQ(ResolveIconPath(u"icons/x.png", u"/opt/zirvel", PathStyle::Posix), u"/opt/zirvel/icons/x.png");
}

TEST(IconPathTest, TheNativeStyleIsThePlatformsOwn) {
#ifdef _WIN32
    EXPECT_EQ(zirvel::kNativePathStyle, PathStyle::Windows);
#else
    EXPECT_EQ(zirvel::kNativePathStyle, PathStyle::Posix);
#endif
}

TEST(IconCacheTest, AnEmptyPathIsNoIconAndReadsNothing) {
    RecordingCanvasFactory factory;
    zirvel::IconCache cache(factory);
    EXPECT_EQ(cache.GetIcon(u"", u"/opt/zirvel"), nullptr);
    EXPECT_TRUE(factory.Decoded().empty());
    EXPECT_EQ(cache.Size(), 0u);
}

TEST(IconCacheTest, ADecodedIconIsReadOnce) {
    RecordingCanvasFactory factory;
    factory.AddImage(u"/a.png");
    zirvel::IconCache cache(factory);
    const zirvel::CanvasImage* first = cache.GetIcon(u"/a.png", u"/opt/zirvel");
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(cache.GetIcon(u"/a.png", u"/opt/zirvel"), first);
    EXPECT_EQ(factory.Decoded().size(), 1u);
}

TEST(IconCacheTest, AFailedLoadIsCachedAndNotTriedAgain) {
    RecordingCanvasFactory factory;
    zirvel::IconCache cache(factory);
    EXPECT_EQ(cache.GetIcon(u"/missing.png", u"/opt/zirvel"), nullptr);
    factory.AddImage(u"/missing.png");  // even once the file appears
    EXPECT_EQ(cache.GetIcon(u"/missing.png", u"/opt/zirvel"), nullptr);
    EXPECT_EQ(factory.Decoded().size(), 1u);
    EXPECT_EQ(cache.Size(), 1u);
}

// An installed program keeps the user's files in one folder and the icons it
// ships in another: the user's own icon wins, the shipped one fills in.
TEST(IconCacheTest, ARelativePathFallsBackToTheShippedIcons) {
    RecordingCanvasFactory factory;
    factory.AddImage(ResolveIconPath(u"icons/own.png", u"/home/u/.config/zirvel"));
    factory.AddImage(ResolveIconPath(u"icons/own.png", u"/usr/share/zirvel"));
    factory.AddImage(ResolveIconPath(u"icons/arrow.png", u"/usr/share/zirvel"));
    zirvel::IconCache cache(factory);
    ASSERT_NE(cache.GetIcon(u"icons/own.png", u"/home/u/.config/zirvel", u"/usr/share/zirvel"), nullptr);
    ASSERT_NE(cache.GetIcon(u"icons/arrow.png", u"/home/u/.config/zirvel", u"/usr/share/zirvel"), nullptr);
    EXPECT_EQ(cache.GetIcon(u"icons/none.png", u"/home/u/.config/zirvel", u"/usr/share/zirvel"), nullptr);
    const std::vector<std::u16string> expected{
        ResolveIconPath(u"icons/own.png", u"/home/u/.config/zirvel"),
        ResolveIconPath(u"icons/arrow.png", u"/home/u/.config/zirvel"),
        ResolveIconPath(u"icons/arrow.png", u"/usr/share/zirvel"),
        ResolveIconPath(u"icons/none.png", u"/home/u/.config/zirvel"),
        ResolveIconPath(u"icons/none.png", u"/usr/share/zirvel")};
    EXPECT_EQ(factory.Decoded(), expected);
}

TEST(IconCacheTest, AnAbsolutePathIsNotLookedForTwice) {
    RecordingCanvasFactory factory;
    zirvel::IconCache cache(factory);
    EXPECT_EQ(cache.GetIcon(u"/missing.png", u"/home/u/.config/zirvel", u"/usr/share/zirvel"), nullptr);
    EXPECT_EQ(factory.Decoded().size(), 1u);
}

TEST(IconCacheTest, PathsAreComparedExactlyAndCaseSensitively) {
    RecordingCanvasFactory factory;
    factory.AddImage(u"/A.png");
    factory.AddImage(u"/a.png");
    zirvel::IconCache cache(factory);
    const zirvel::CanvasImage* upper = cache.GetIcon(u"/A.png", u"/opt/zirvel");
    const zirvel::CanvasImage* lower = cache.GetIcon(u"/a.png", u"/opt/zirvel");
    ASSERT_NE(upper, nullptr);
    ASSERT_NE(lower, nullptr);
    EXPECT_NE(upper, lower);
    // "icons/x.png" and "icons\x.png" name one file on Linux but are two entries.
    cache.GetIcon(u"icons/x.png", u"/opt/zirvel");
    cache.GetIcon(u"icons\\x.png", u"/opt/zirvel");
    EXPECT_EQ(factory.Decoded().size(), 4u);
    EXPECT_EQ(cache.Size(), 4u);
}

}  // namespace
}  // namespace zirvel_test
