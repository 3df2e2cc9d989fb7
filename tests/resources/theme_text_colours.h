// Which text colour a theme sheet draws on which background, so that each
// pair can be held to WCAG AA.
//
// How a pair is found, for each selector S that draws text:
//  - The text colour is S's own `color`; else the one of S without its last
//    state (":hover"), then without its sub-control ("::item"), then without
//    its id or property ("#Primary", "[role=...]"), then without ancestors
//    ("QMessageBox QLabel" -> "QLabel"), and last QWidget's, which Qt
//    applies to every widget.
//  - The background is S's own `background-color` (or `background`); else
//    the one of S without its last state, then without its sub-control;
//    else the surfaces S is placed on (Placements(): a card title sits on a
//    card, a plain label on a page, a dialog or a card); else the one of S
//    without its id or property. A gradient counts as each of its colours;
//    "transparent" passes the question on.
//  - More pairs: `selection-color` on `selection-background-color`, the
//    text on `alternate-background-color` rows, a progress bar's text on
//    its filled part.
// Parts that draw no text (indicators, handles, grooves, arrows, scroll
// bars...) are left out. A colour that is not #RGB or #RRGGBB, or a
// background that cannot be found, is a problem: never a silent pass.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "style_sheet_rules.h"
#include "wcag_contrast.h"

namespace zirvel_test {

struct TextOnBackground {
    std::string selector;
    std::string what;  // "text", "selected text", ...
    Rgb text;
    Rgb background;
    double minimum;  // 4.5, or 3 for disabled text
};

struct ThemeTextColours {
    std::vector<TextOnBackground> pairs;
    std::vector<std::string> problems;
};

// Where the front-end puts widgets that have no background of their own.
const std::map<std::string, std::vector<std::string>>& Placements();

// The selectors of the front-end's own hooks; each is checked even when the
// sheet gives it no colour of its own.
const std::vector<std::string>& FrontEndHooks();

ThemeTextColours TextColoursOf(const StyleSheetRules& rules);

}  // namespace zirvel_test
