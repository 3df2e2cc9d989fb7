// Xft.dpi read from the text of the root window's resource database.
#include <gtest/gtest.h>

#include "platform/x11/desktop_dpi.h"

namespace {

using zirvel::x11::DpiFromResources;

TEST(DpiFromResources, TheXftDpiLineRoundedToAWholeDpi) {
    EXPECT_EQ(DpiFromResources("Xft.antialias:\t1\nXft.dpi:\t144\nXft.hinting:\t1\n"), 144u);
    EXPECT_EQ(DpiFromResources("Xft.dpi: 120.4"), 120u);
    EXPECT_EQ(DpiFromResources("  Xft.dpi :\t192.5\r\n"), 193u);
}

TEST(DpiFromResources, NinetySixWithoutAUsableValue) {
    EXPECT_EQ(DpiFromResources(""), 96u);
    EXPECT_EQ(DpiFromResources("Xft.antialias:\t1\n"), 96u);
    EXPECT_EQ(DpiFromResources("Xft.dpi:\tlarge\n"), 96u);
    EXPECT_EQ(DpiFromResources("Xft.dpi:\t0\n"), 96u);
    EXPECT_EQ(DpiFromResources("Xft.dpi:\t-144\n"), 96u);
    EXPECT_EQ(DpiFromResources("Xft.dpis:\t144\n"), 96u);
}

TEST(DpiFromResources, TheLastEntryWins) {
    EXPECT_EQ(DpiFromResources("Xft.dpi:\t120\nXft.dpi:\t144\n"), 144u);
}

}  // namespace
