// Balloons on the tray icon of the stand-alone engine host.
#pragma once

#include <string>

namespace zirvel {

// Cut as the tray's fixed-size fields cut them (63 units of title, 255 of
// text). Under the front-end the engine has no tray icon of its own, so
// nothing shows.
void ShowHostNotice(std::u16string title, std::u16string text, bool warning);

// A warning that something the user asked for did not happen: shown even
// when showMessages is off, and by the front-end where it hosts the engine.
void ShowHostWarning(std::u16string title, std::u16string text);

}  // namespace zirvel
