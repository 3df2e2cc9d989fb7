// The start of the desktop program that both platforms share: the
// application's names and icon, the message of a second instance, and the
// saved theme.
#pragma once

namespace zirvel::frontend {

// Organisation and application names, the window icon (zirvel.ico in the
// program directory, by its full path), and closing the last window does
// not end the program (only the tray menu's "Zakończ" does).
void PrepareApplication();

// "Zirvel już działa — …", for a start while another instance runs.
void ShowAlreadyRunningMessage();

// The theme saved in the front-end's settings ("fluent" when none).
void ApplySavedTheme();

}  // namespace zirvel::frontend
