#include "platform/x11/accessibility_bus_switch.h"

#include <gio/gio.h>

#include <cstdlib>
#include <filesystem>
#include <string>

namespace zirvel::x11 {
namespace {

constexpr int kSwitchTimeoutMs = 1000;

}  // namespace

bool SessionBusConfigured() {
    const char* address = std::getenv("DBUS_SESSION_BUS_ADDRESS");
    if (address && *address) return true;
    const char* runtime = std::getenv("XDG_RUNTIME_DIR");
    std::error_code ignored;
    return runtime && *runtime && std::filesystem::exists(std::filesystem::path(runtime) / "bus", ignored);
}

GVariant* CallAccessibilityBusLauncher(const char* interface, const char* method, GVariant* parameters,
                                       const GVariantType* replyType, int timeoutMs) {
    // Without a configured bus GDBus would try to launch one itself.
    if (!SessionBusConfigured()) {
        if (parameters) g_variant_unref(g_variant_ref_sink(parameters));
        return nullptr;
    }
    GError* error = nullptr;
    GDBusConnection* bus = g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, &error);
    if (!bus) {
        g_clear_error(&error);
        if (parameters) g_variant_unref(g_variant_ref_sink(parameters));
        return nullptr;
    }
    // The shared connection would end the process when the bus goes away.
    g_dbus_connection_set_exit_on_close(bus, FALSE);
    GVariant* reply = g_dbus_connection_call_sync(bus, "org.a11y.Bus", "/org/a11y/bus", interface, method, parameters,
                                                  replyType, G_DBUS_CALL_FLAGS_NONE, timeoutMs, nullptr, &error);
    g_clear_error(&error);
    g_object_unref(bus);
    return reply;
}

bool SwitchAccessibilityBusOn() {
    GVariant* reply = CallAccessibilityBusLauncher(
        "org.freedesktop.DBus.Properties", "Set",
        g_variant_new("(ssv)", "org.a11y.Status", "IsEnabled", g_variant_new_boolean(TRUE)), nullptr, kSwitchTimeoutMs);
    if (!reply) return false;
    g_variant_unref(reply);
    return true;
}

}  // namespace zirvel::x11
