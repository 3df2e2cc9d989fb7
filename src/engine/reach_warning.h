// Programs Zirvel cannot reach. Windows keeps a program that runs with
// lower privileges from sending input to, hooking or reading the windows
// of one that runs as administrator, and it does so silently: the keys and
// clicks of a function vanish. Zirvel looks before it acts and tells the
// user what happened and what to do.
#pragma once

#include <string>

#include "engine/platform.h"

namespace zirvel {

enum class ReachOccasion { WheelShown, FunctionRun, ElementScan };

// GUI. Warns when `window` is out of reach (once for the same window within
// a few seconds, so a show followed by a function warns once); true when it is.
bool WarnWhenOutOfReach(WindowHandle window, ReachOccasion occasion);

// GUI. The system refused injected input (a secure desktop, a lock screen).
void WarnInputRefused();

// The warnings' texts.
std::u16string OutOfReachText(ReachOccasion occasion);
inline constexpr char16_t kReachWarningTitle[] = u"Zirvel — brak dostępu";
inline constexpr char16_t kInputRefusedText[] =
    u"System odrzucił klawisze i kliknięcia Zirvel, na przykład przy ekranie blokady "
    u"lub oknie kontroli konta użytkownika.";

}  // namespace zirvel
