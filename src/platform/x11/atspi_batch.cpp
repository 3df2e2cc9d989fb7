#include "platform/x11/atspi_batch.h"

#include <dbus/dbus.h>

#include <cstdint>
#include <memory>
#include <string>

namespace zirvel::x11 {
namespace {

constexpr char kAccessibleInterface[] = "org.a11y.atspi.Accessible";
constexpr char kComponentInterface[] = "org.a11y.atspi.Component";

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

// Where libatspi reaches a node: its application's connection and name.
std::optional<ObjectAddress> AddressOf(AtspiAccessible* node, DBusConnection** bus) {
    AtspiObject* object = ATSPI_OBJECT(node);
    if (!object || !object->app || !object->app->bus || !object->app->bus_name || !object->path) return std::nullopt;
    *bus = object->app->bus;
    return ObjectAddress{object->app->bus_name, object->path};
}

// libdbus ends the process on a malformed name or path: check first.
MessagePtr MethodCall(const ObjectAddress& object, const char* interface, const char* method) {
    if (!dbus_validate_bus_name(object.busName.c_str(), nullptr) || !dbus_validate_path(object.path.c_str(), nullptr)) {
        return {};
    }
    return MessagePtr(dbus_message_new_method_call(object.busName.c_str(), object.path.c_str(), interface, method));
}

// Sends every call, then collects the answers in order; a null answer
// where a call was missing, could not be sent or failed.
std::vector<MessagePtr> CallAll(DBusConnection* bus, std::vector<MessagePtr>& calls, int timeoutMs) {
    std::vector<DBusPendingCall*> pending(calls.size(), nullptr);
    for (std::size_t i = 0; i < calls.size(); ++i) {
        if (calls[i] && !dbus_connection_send_with_reply(bus, calls[i].get(), &pending[i], timeoutMs)) {
            pending[i] = nullptr;
        }
    }
    std::vector<MessagePtr> replies(calls.size());
    for (std::size_t i = 0; i < pending.size(); ++i) {
        if (!pending[i]) continue;
        dbus_pending_call_block(pending[i]);
        replies[i].reset(dbus_pending_call_steal_reply(pending[i]));
        dbus_pending_call_unref(pending[i]);
        if (replies[i] && dbus_message_get_type(replies[i].get()) != DBUS_MESSAGE_TYPE_METHOD_RETURN) replies[i].reset();
    }
    return replies;
}

// The children's addresses, in index order: GetChildren answers a(so).
std::optional<std::vector<ObjectAddress>> ReadChildAddresses(DBusConnection* bus, const ObjectAddress& parent,
                                                             int timeoutMs) {
    MessagePtr call = MethodCall(parent, kAccessibleInterface, "GetChildren");
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

// A GetState answer: au, the state bits 32 a word.
std::optional<std::vector<std::uint32_t>> StateWords(DBusMessage* reply) {
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
    return words;
}

// A GetRole answer: u.
std::optional<AtspiRole> Role(DBusMessage* reply) {
    if (!reply || !dbus_message_has_signature(reply, "u")) return std::nullopt;
    DBusMessageIter iter;
    dbus_message_iter_init(reply, &iter);
    dbus_uint32_t role = 0;
    dbus_message_iter_get_basic(&iter, &role);
    return static_cast<AtspiRole>(role);
}

// A GetExtents answer: (iiii), x, y, width, height.
std::optional<ScreenRect> Extents(DBusMessage* reply) {
    if (!reply || !dbus_message_has_signature(reply, "(iiii)")) return std::nullopt;
    DBusMessageIter iter;
    DBusMessageIter fields;
    dbus_message_iter_init(reply, &iter);
    dbus_message_iter_recurse(&iter, &fields);
    dbus_int32_t values[4] = {};
    for (dbus_int32_t& value : values) {
        dbus_message_iter_get_basic(&fields, &value);
        dbus_message_iter_next(&fields);
    }
    return RectFromExtents(values[0], values[1], values[2], values[3]);
}

}  // namespace

std::optional<std::vector<bool>> ReadChildrenShowing(AtspiAccessible* parent, int childCount, int timeoutMs) {
    DBusConnection* bus = nullptr;
    const std::optional<ObjectAddress> address = AddressOf(parent, &bus);
    if (!address) return std::nullopt;
    const std::optional<std::vector<ObjectAddress>> children = ReadChildAddresses(bus, *address, timeoutMs);
    if (!children || static_cast<int>(children->size()) != childCount) return std::nullopt;
    std::vector<MessagePtr> calls;
    for (const ObjectAddress& child : *children) calls.push_back(MethodCall(child, kAccessibleInterface, "GetState"));
    const std::vector<MessagePtr> replies = CallAll(bus, calls, timeoutMs);
    std::vector<bool> showing(children->size(), false);
    for (std::size_t i = 0; i < replies.size(); ++i) {
        const std::optional<std::vector<std::uint32_t>> words = StateWords(replies[i].get());
        if (!words) return std::nullopt;
        showing[i] = FactsFromStates(*words, ATSPI_ROLE_INVALID).showing;
    }
    return showing;
}

std::vector<std::optional<NodeFacts>> ReadNodesFacts(std::span<AtspiAccessible* const> nodes, int timeoutMs) {
    std::vector<std::optional<NodeFacts>> facts(nodes.size());
    if (nodes.empty()) return facts;
    DBusConnection* bus = nullptr;
    if (!AddressOf(nodes.front(), &bus)) return facts;
    // Three questions a node: its state, its role, its place on the screen.
    std::vector<MessagePtr> calls;
    for (AtspiAccessible* node : nodes) {
        DBusConnection* nodeBus = nullptr;
        const std::optional<ObjectAddress> address = AddressOf(node, &nodeBus);
        if (!address || nodeBus != bus) {
            calls.resize(calls.size() + 3);
            continue;
        }
        calls.push_back(MethodCall(*address, kAccessibleInterface, "GetState"));
        calls.push_back(MethodCall(*address, kAccessibleInterface, "GetRole"));
        MessagePtr extents = MethodCall(*address, kComponentInterface, "GetExtents");
        const dbus_uint32_t screen = ATSPI_COORD_TYPE_SCREEN;
        if (extents && !dbus_message_append_args(extents.get(), DBUS_TYPE_UINT32, &screen, DBUS_TYPE_INVALID)) {
            extents.reset();
        }
        calls.push_back(std::move(extents));
    }
    const std::vector<MessagePtr> replies = CallAll(bus, calls, timeoutMs);
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const std::optional<std::vector<std::uint32_t>> words = StateWords(replies[3 * i].get());
        const std::optional<AtspiRole> role = Role(replies[3 * i + 1].get());
        if (!words || !role) continue;
        facts[i] = FactsFromStates(*words, *role);
        facts[i]->rect = Extents(replies[3 * i + 2].get());
    }
    return facts;
}

}  // namespace zirvel::x11
