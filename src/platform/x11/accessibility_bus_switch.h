// The accessibility bus switch that screen readers turn on: with
// org.a11y.Status IsEnabled set, toolkits that otherwise keep their
// accessibility trees to themselves (Qt among them) expose them on the
// accessibility bus to applications started afterwards.
#pragma once

// GLib's own names, declared here so that Qt code may include this header
// without GLib's (whose member names clash with Qt's keywords).
typedef struct _GVariant GVariant;
typedef struct _GVariantType GVariantType;

namespace zirvel::x11 {

// True when this process has a session bus to talk to: its address is in
// the environment, or the user's bus socket exists. Never starts one.
bool SessionBusConfigured();

// Calls `method` of `interface` on the accessibility bus launcher
// (org.a11y.Bus at /org/a11y/bus on the session bus), waiting at most
// `timeoutMs`. The reply (to be unreferenced by the caller), or null when
// there is no session bus or no answer. Never starts a session bus.
GVariant* CallAccessibilityBusLauncher(const char* interface, const char* method, GVariant* parameters,
                                       const GVariantType* replyType, int timeoutMs);

// Sets org.a11y.Status IsEnabled = true on the session bus (the bus
// launcher starts on demand). Silent when there is no session bus or
// nobody answers within a second; returns whether the switch is on.
bool SwitchAccessibilityBusOn();

}  // namespace zirvel::x11
