// The accessibility bus switch that screen readers turn on: with
// org.a11y.Status IsEnabled set, toolkits that otherwise keep their
// accessibility trees to themselves (Qt among them) expose them on the
// accessibility bus to applications started afterwards.
#pragma once

namespace zirvel::x11 {

// True when this process has a session bus to talk to: its address is in
// the environment, or the user's bus socket exists. Never starts one.
bool SessionBusConfigured();

// Sets org.a11y.Status IsEnabled = true on the session bus (the bus
// launcher starts on demand). Silent when there is no session bus or
// nobody answers within a second; returns whether the switch is on.
bool SwitchAccessibilityBusOn();

}  // namespace zirvel::x11
