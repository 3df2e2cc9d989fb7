#include "platform/x11/atspi_batch.h"

#include <dbus/dbus.h>

#include <cstdint>
#include <memory>
#include <string>

namespace zirvel::x11 {
namespace {

constexpr char kAccessibleInterface[] = "org.a11y.atspi.Accessible";

struct MessageUnref {
    void operator()(DBusMessage* message) const {
        if (message) dbus_message_unref(message);
    }
};
using MessagePtr = std::unique_ptr<DBusMessage, MessageUnref>;

struct ObjectAddress {
    std::string busName;
    std::string path;
};

// libdbus ends the process on a malformed name or path: check first.
MessagePtr MethodCall(const ObjectAddress& object, const char* method) {
    if (!dbus_validate_bus_name(object.busName.c_str(), nullptr) || !dbus_validate_path(object.path.c_str(), nullptr)) {
        return {};
    }
    return MessagePtr(
        dbus_message_new_method_call(object.busName.c_str(), object.path.c_str(), kAccessibleInterface, method));
}

// The children's addresses, in index order: GetChildren answers a(so).
std::optional<std::vector<ObjectAddress>> ReadChildAddresses(DBusConnection* bus, const ObjectAddress& parent,
                                                             int timeoutMs) {
    MessagePtr call = MethodCall(parent, "GetChildren");
    if (!call) return std::nullopt;
    DBusError error;
    dbus_error_init(&error);
    MessagePtr reply(dbus_connection_send_with_reply_and_block(bus, call.get(), timeoutMs, &error));
    dbus_error_free(&error);
    if (!reply || !dbus_message_has_signature(reply.get(), "a(so)")) return std::nullopt;
    std::vector<ObjectAddress> children;
    DBusMessageIter iter;
    DBusMessageIter array;
    dbus_message_iter_init(reply.get(), &iter);
    dbus_message_iter_recurse(&iter, &array);
    while (dbus_message_iter_get_arg_type(&array) == DBUS_TYPE_STRUCT) {
        DBusMessageIter fields;
        dbus_message_iter_recurse(&array, &fields);
        const char* busName = nullptr;
        const char* path = nullptr;
        dbus_message_iter_get_basic(&fields, &busName);
        dbus_message_iter_next(&fields);
        dbus_message_iter_get_basic(&fields, &path);
        children.push_back({busName ? busName : "", path ? path : ""});
        dbus_message_iter_next(&array);
    }
    return children;
}

// A GetState answer (au: the state bits, 32 a word) says SHOWING.
std::optional<bool> ShowingFromReply(DBusMessage* reply) {
    if (!reply || !dbus_message_has_signature(reply, "au")) return std::nullopt;
    DBusMessageIter iter;
    DBusMessageIter array;
    dbus_message_iter_init(reply, &iter);
    dbus_message_iter_recurse(&iter, &array);
    std::vector<std::uint32_t> words;
    while (dbus_message_iter_get_arg_type(&array) == DBUS_TYPE_UINT32) {
        dbus_uint32_t word = 0;
        dbus_message_iter_get_basic(&array, &word);
        words.push_back(word);
        dbus_message_iter_next(&array);
    }
    constexpr unsigned kBit = ATSPI_STATE_SHOWING;
    return kBit / 32 < words.size() && (words[kBit / 32] >> (kBit % 32) & 1u) != 0;
}

}  // namespace

std::optional<std::vector<bool>> ReadChildrenShowing(AtspiAccessible* parent, int childCount, int timeoutMs) {
    AtspiObject* object = ATSPI_OBJECT(parent);
    if (!object || !object->app || !object->app->bus || !object->app->bus_name || !object->path) return std::nullopt;
    DBusConnection* bus = object->app->bus;
    const std::optional<std::vector<ObjectAddress>> children =
        ReadChildAddresses(bus, {object->app->bus_name, object->path}, timeoutMs);
    if (!children || static_cast<int>(children->size()) != childCount) return std::nullopt;

    std::vector<DBusPendingCall*> pending(children->size(), nullptr);
    bool sent = true;
    for (std::size_t i = 0; i < children->size() && sent; ++i) {
        MessagePtr call = MethodCall((*children)[i], "GetState");
        sent = call && dbus_connection_send_with_reply(bus, call.get(), &pending[i], timeoutMs) && pending[i];
    }
    std::vector<bool> showing(children->size(), false);
    bool answered = sent;
    for (std::size_t i = 0; i < pending.size(); ++i) {
        DBusPendingCall* call = pending[i];
        if (!call) continue;
        if (answered) {
            dbus_pending_call_block(call);
            MessagePtr reply(dbus_pending_call_steal_reply(call));
            const std::optional<bool> shown = ShowingFromReply(reply.get());
            answered = shown.has_value();
            if (shown) showing[i] = *shown;
        } else {
            dbus_pending_call_cancel(call);
        }
        dbus_pending_call_unref(call);
    }
    if (!answered) return std::nullopt;
    return showing;
}

}  // namespace zirvel::x11
