// WCAG AA for every text colour of the three themes, on the background it
// is drawn on (see theme_text_colours.h for how the pairs are found), and
// the checks that show the resolution and the limit really bite.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "style_sheet_rules.h"
#include "theme_files.h"
#include "theme_text_colours.h"
#include "wcag_contrast.h"

namespace zirvel_test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

std::vector<std::string> TooLowPairs(const ThemeTextColours& colours) {
    std::vector<std::string> failures;
    for (const TextOnBackground& pair : colours.pairs) {
        const double ratio = ContrastRatio(pair.text, pair.background);
        if (ratio < pair.minimum) {
            failures.push_back(pair.selector + " (" + pair.what + ") " + HexOf(pair.text) + " on " +
                               HexOf(pair.background) + ": " + std::to_string(ratio));
        }
    }
    return failures;
}

std::vector<std::string> BackgroundsOf(const ThemeTextColours& colours, const std::string& selector,
                                       const std::string& what = "text") {
    std::vector<std::string> backgrounds;
    for (const TextOnBackground& pair : colours.pairs) {
        if (pair.selector == selector && pair.what == what) {
            backgrounds.push_back(HexOf(pair.text) + " on " + HexOf(pair.background));
        }
    }
    return backgrounds;
}

TEST(WcagContrastTest, KnownRatios) {
    EXPECT_NEAR(ContrastRatio(*ParseHexColour("#000000"), *ParseHexColour("#FFFFFF")), 21.0, 1e-9);
    EXPECT_NEAR(ContrastRatio(*ParseHexColour("#FFF"), *ParseHexColour("#fff")), 1.0, 1e-9);
    // #767676 is the lightest grey that passes AA on white.
    EXPECT_NEAR(ContrastRatio(*ParseHexColour("#767676"), *ParseHexColour("#FFFFFF")), 4.54, 0.01);
    EXPECT_FALSE(ParseHexColour("white"));
    EXPECT_FALSE(ParseHexColour("#12345"));
    EXPECT_FALSE(ParseHexColour("#GG0000"));
}

TEST(StyleSheetRulesTest, SplitsSelectorListsDropsCommentsAndLetsTheLaterDeclarationWin) {
    const StyleSheetRules rules = ParseStyleSheet(
        "/* Zażółć { color: #000 } */\n"
        "QLineEdit, QSpinBox { color: #111111; background-color: #FFFFFF }\n"
        "QLabel[ role = \"ok\" ] { color: #222222; }\n"
        "QSpinBox { color: #333333; }\n");
    EXPECT_EQ(Declared(rules, "QLineEdit", "color"), "#111111");
    EXPECT_EQ(Declared(rules, "QSpinBox", "color"), "#333333");
    EXPECT_EQ(Declared(rules, "QSpinBox", "background-color"), "#FFFFFF");
    EXPECT_EQ(Declared(rules, "QLabel[role=\"ok\"]", "color"), "#222222");
    EXPECT_EQ(rules.size(), 3u);
}

constexpr const char* kSmallTheme = R"(
QWidget { color: #111111; }
QMainWindow, QDialog, QMessageBox { background-color: #FFFFFF; }
QFrame#Card { background-color: #EEEEEE; }
QLabel { background: transparent; }
QLabel[role="cardTitle"] { color: #444444; }
QListWidget#Sidebar { background-color: #DDDDDD; }
QListWidget#Sidebar::item { color: #101010; }
QListWidget#Sidebar::item:selected { background-color: #003366; color: #FFFFFF; }
QPushButton { background-color: #F0F0F0; }
QPushButton#Primary { background-color: #004488; color: #FFFFFF; }
QPushButton#Primary:hover { background-color: #0055AA; }
QPushButton:disabled { color: #888888; }
QLineEdit { background-color: #FFFFFF; selection-background-color: #004488; selection-color: #FFFFFF; }
QToolTip { background: qlineargradient(x1: 0, y1: 0, x2: 0, y2: 1, stop: 0 #000000, stop: 1 #222222); color: #FFFFFF; }
QSlider::handle { background-color: #FFFFFF; }
)";

TEST(ThemeTextColoursTest, ALabelWithARoleSitsOnTheCard) {
    const ThemeTextColours colours = TextColoursOf(ParseStyleSheet(kSmallTheme));
    EXPECT_THAT(BackgroundsOf(colours, "QLabel[role=\"cardTitle\"]"), ElementsAre("#444444 on #EEEEEE"));
}

TEST(ThemeTextColoursTest, APlainLabelSitsOnPagesDialogsAndCardsEachColourCheckedOnce) {
    const ThemeTextColours colours = TextColoursOf(ParseStyleSheet(kSmallTheme));
    EXPECT_THAT(BackgroundsOf(colours, "QLabel"),
                UnorderedElementsAre("#111111 on #FFFFFF", "#111111 on #EEEEEE"));
}

TEST(ThemeTextColoursTest, SidebarItemsSitOnTheSidebarUnlessSelected) {
    const ThemeTextColours colours = TextColoursOf(ParseStyleSheet(kSmallTheme));
    EXPECT_THAT(BackgroundsOf(colours, "QListWidget#Sidebar::item"), ElementsAre("#101010 on #DDDDDD"));
    EXPECT_THAT(BackgroundsOf(colours, "QListWidget#Sidebar::item:selected"), ElementsAre("#FFFFFF on #003366"));
}

TEST(ThemeTextColoursTest, AStateKeepsTheTextColourOfItsWidgetAndGradientsCountEachStop) {
    const ThemeTextColours colours = TextColoursOf(ParseStyleSheet(kSmallTheme));
    EXPECT_THAT(BackgroundsOf(colours, "QPushButton#Primary:hover"), ElementsAre("#FFFFFF on #0055AA"));
    EXPECT_THAT(BackgroundsOf(colours, "QPushButton:disabled"), ElementsAre("#888888 on #F0F0F0"));
    EXPECT_THAT(BackgroundsOf(colours, "QToolTip"), ElementsAre("#FFFFFF on #000000", "#FFFFFF on #222222"));
    EXPECT_THAT(BackgroundsOf(colours, "QLineEdit", "selected text"), ElementsAre("#FFFFFF on #004488"));
    EXPECT_THAT(BackgroundsOf(colours, "QSlider::handle"), IsEmpty());
    EXPECT_THAT(colours.problems, IsEmpty());
}

TEST(ThemeTextColoursTest, DisabledTextNeedsThreeOtherTextFourAndAHalf) {
    const ThemeTextColours colours = TextColoursOf(ParseStyleSheet(kSmallTheme));
    for (const TextOnBackground& pair : colours.pairs) {
        EXPECT_EQ(pair.minimum, pair.selector == "QPushButton:disabled" ? 3.0 : 4.5) << pair.selector;
    }
    // #888888 on #F0F0F0 is 3.1: enough for disabled text, too little otherwise.
    EXPECT_THAT(TooLowPairs(colours), IsEmpty());
    const ThemeTextColours enabled = TextColoursOf(ParseStyleSheet(std::string(kSmallTheme) +
                                                                   "QPushButton { color: #888888; }"));
    EXPECT_THAT(TooLowPairs(enabled), ::testing::Contains(HasSubstr("QPushButton (text) #888888 on #F0F0F0")));
}

TEST(ThemeTextColoursTest, AWidgetWithoutAKnownPlaceOrANamedColourIsAProblemNotAPass) {
    const ThemeTextColours colours =
        TextColoursOf(ParseStyleSheet(std::string(kSmallTheme) + "QToolButton { color: #000000; }\n"
                                                                  "QMenu { background-color: white; color: black; }\n"));
    EXPECT_THAT(colours.problems,
                UnorderedElementsAre(HasSubstr("QToolButton: no background found"),
                                     HasSubstr("QMenu background \"white\""), HasSubstr("QMenu { color: black }")));
}

class ThemeContrastTest : public ::testing::TestWithParam<std::string> {};

TEST_P(ThemeContrastTest, EveryTextColourMeetsWcagAaOnItsBackground) {
    const ThemeTextColours colours = TextColoursOf(ParseStyleSheet(ReadTheme(GetParam())));
    EXPECT_THAT(colours.problems, IsEmpty());
    EXPECT_GE(colours.pairs.size(), 60u);
    EXPECT_THAT(TooLowPairs(colours), IsEmpty());
}

TEST_P(ThemeContrastTest, EveryHookIsChecked) {
    const ThemeTextColours colours = TextColoursOf(ParseStyleSheet(ReadTheme(GetParam())));
    for (const std::string& hook : FrontEndHooks()) {
        EXPECT_FALSE(BackgroundsOf(colours, hook).empty()) << hook;
    }
}

// The same sheet with one pale colour must fail: the check bites on the
// real files, not only on the small sheets above.
TEST_P(ThemeContrastTest, APaleCardTitleFails) {
    std::string sheet = ReadTheme(GetParam());
    const std::string hook = "QLabel[role=\"cardTitle\"] {\n    color: ";
    const std::size_t at = sheet.find(hook);
    ASSERT_NE(at, std::string::npos);
    const auto card = ParseHexColour(*Declared(ParseStyleSheet(sheet), "QFrame#Card", "background-color"));
    ASSERT_TRUE(card);
    sheet.replace(at + hook.size(), 7, HexOf(*card));  // the card's own colour: ratio 1
    EXPECT_THAT(TooLowPairs(TextColoursOf(ParseStyleSheet(sheet))),
                ElementsAre(HasSubstr("QLabel[role=\"cardTitle\"] (text)")));
}

INSTANTIATE_TEST_SUITE_P(EveryTheme, ThemeContrastTest, ::testing::ValuesIn(ThemeIds()),
                         [](const ::testing::TestParamInfo<std::string>& info) { return info.param; });

}  // namespace
}  // namespace zirvel_test
