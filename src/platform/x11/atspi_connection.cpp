#include "platform/x11/atspi_connection.h"

#include <atspi/atspi.h>
#include <gio/gio.h>

#include <cstdlib>

#include "platform/x11/accessibility_bus_switch.h"

namespace zirvel::x11 {
namespace {

// Events handled per preparation at most: a flood (a list refilled while we
// were away) cannot hold up a scan for long.
constexpr int kMaxPendingEvents = 2000;

constexpr int kBusAddressTimeoutMs = 2000;

GMainContext* atspiContext = nullptr;

// The accessibility bus answers: asking for its address also starts it.
// libatspi itself would give up on a missing bus in ways that are hard to
// recover from, so it is only started once this succeeded.
bool AccessibilityBusAnswers() {
    const char* direct = std::getenv("AT_SPI_BUS_ADDRESS");
    if (direct && *direct) return true;
    GVariant* reply = CallAccessibilityBusLauncher("org.a11y.Bus", "GetAddress", nullptr, G_VARIANT_TYPE("(s)"),
                                                   kBusAddressTimeoutMs);
    bool answers = false;
    if (reply) {
        const gchar* address = nullptr;
        g_variant_get(reply, "(&s)", &address);
        answers = address && *address;
        g_variant_unref(reply);
    }
    return answers;
}

}  // namespace

bool PrepareAccessibilityConnection() {
    if (!atspiContext) {
        if (!AccessibilityBusAnswers()) return false;
        if (atspi_init() > 1) return false;  // 0: started, 1: was started
        atspiContext = g_main_context_new();
        atspi_set_main_context(atspiContext);
        atspi_set_timeout(kAccessibilityCallTimeoutMs, kAccessibilityCallTimeoutMs);
    }
    // The context is not owned by any thread between scans: each scan
    // thread acquires it for these iterations only.
    for (int i = 0; i < kMaxPendingEvents && g_main_context_iteration(atspiContext, FALSE); ++i) {
    }
    return true;
}

void KeepApplicationOnScanContext(AtspiAccessible* node) {
    if (!node || !atspiContext) return;
    AtspiApplication* application = ATSPI_OBJECT(node)->app;
    // A connection already on the context stays as it is.
    if (application && application->bus) atspi_dbus_connection_setup_with_g_main(application->bus, atspiContext);
}

}  // namespace zirvel::x11
