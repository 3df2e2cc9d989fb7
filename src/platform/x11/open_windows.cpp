#include "platform/x11/open_windows.h"

#include <xcb/xcb.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>

#include "config/utf.h"
#include "platform/x11/window_program.h"

namespace zirvel::x11 {
namespace {

struct FreeReply {
    void operator()(void* reply) const { std::free(reply); }
};
using PropertyReply = std::unique_ptr<xcb_get_property_reply_t, FreeReply>;

struct Connection {
    xcb_connection_t* connection = nullptr;
    xcb_window_t root = 0;

    explicit Connection(const char* display) {
        int screenNumber = 0;
        connection = xcb_connect(display, &screenNumber);
        if (xcb_connection_has_error(connection)) return;
        xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
        for (int i = 0; i < screenNumber && screens.rem > 0; ++i) xcb_screen_next(&screens);
        if (screens.rem > 0) root = screens.data->root;
    }
    ~Connection() { xcb_disconnect(connection); }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    xcb_atom_t Atom(const char* name) const {
        xcb_generic_error_t* error = nullptr;
        std::unique_ptr<xcb_intern_atom_reply_t, FreeReply> reply(xcb_intern_atom_reply(
            connection, xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(std::strlen(name)), name), &error));
        std::free(error);
        return reply ? reply->atom : 0;
    }

    PropertyReply Property(xcb_window_t window, xcb_atom_t property, xcb_atom_t type) const {
        xcb_generic_error_t* error = nullptr;
        PropertyReply reply(xcb_get_property_reply(
            connection, xcb_get_property(connection, 0, window, property, type, 0, 4096), &error));
        std::free(error);
        if (reply && reply->type != type) reply.reset();
        return reply;
    }
};

std::string_view Bytes(const PropertyReply& reply) {
    if (!reply) return {};
    return {static_cast<const char*>(xcb_get_property_value(reply.get())),
            static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
}

std::vector<xcb_window_t> Windows(const PropertyReply& reply) {
    if (!reply || reply->format != 32) return {};
    const auto* data = static_cast<const xcb_window_t*>(xcb_get_property_value(reply.get()));
    return {data, data + xcb_get_property_value_length(reply.get()) / 4};
}

std::u16string FromLatin1(std::string_view text) { return {text.begin(), text.end()}; }

// WM_CLASS: the instance and the class name, each ended by a NUL.
std::vector<std::u16string> ClassNames(std::string_view bytes) {
    std::vector<std::u16string> names;
    while (!bytes.empty()) {
        const std::size_t end = std::min(bytes.find('\0'), bytes.size());
        if (end > 0) names.push_back(FromLatin1(bytes.substr(0, end)));
        bytes.remove_prefix(std::min(end + 1, bytes.size()));
    }
    return names;
}

std::vector<xcb_window_t> MappedChildrenOfRoot(const Connection& x) {
    std::vector<xcb_window_t> mapped;
    xcb_generic_error_t* error = nullptr;
    std::unique_ptr<xcb_query_tree_reply_t, FreeReply> tree(
        xcb_query_tree_reply(x.connection, xcb_query_tree(x.connection, x.root), &error));
    std::free(error);
    if (!tree) return mapped;
    const xcb_window_t* children = xcb_query_tree_children(tree.get());
    for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i) {
        error = nullptr;
        std::unique_ptr<xcb_get_window_attributes_reply_t, FreeReply> attributes(xcb_get_window_attributes_reply(
            x.connection, xcb_get_window_attributes(x.connection, children[i]), &error));
        std::free(error);
        if (attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE && !attributes->override_redirect) {
            mapped.push_back(children[i]);
        }
    }
    return mapped;
}

}  // namespace

std::vector<OpenWindow> ListOpenWindows(const char* display) {
    std::vector<OpenWindow> windows;
    const Connection x(display);
    if (xcb_connection_has_error(x.connection) || x.root == 0) return windows;
    std::vector<xcb_window_t> clients = Windows(x.Property(x.root, x.Atom("_NET_CLIENT_LIST"), XCB_ATOM_WINDOW));
    if (clients.empty()) clients = MappedChildrenOfRoot(x);
    const xcb_atom_t pid = x.Atom("_NET_WM_PID");
    const xcb_atom_t name = x.Atom("_NET_WM_NAME");
    const xcb_atom_t utf8 = x.Atom("UTF8_STRING");
    for (const xcb_window_t client : clients) {
        OpenWindow open;
        open.program.windowClasses = ClassNames(Bytes(x.Property(client, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING)));
        const PropertyReply pidReply = x.Property(client, pid, XCB_ATOM_CARDINAL);
        if (pidReply && pidReply->format == 32 && xcb_get_property_value_length(pidReply.get()) >= 4) {
            open.program.executable =
                ExecutableOfProcess(*static_cast<const std::uint32_t*>(xcb_get_property_value(pidReply.get())));
        }
        if (open.program.executable.empty() && open.program.windowClasses.empty()) continue;
        open.title = Utf8ToUtf16(Bytes(x.Property(client, name, utf8)));
        if (open.title.empty()) open.title = FromLatin1(Bytes(x.Property(client, XCB_ATOM_WM_NAME, XCB_ATOM_STRING)));
        windows.push_back(std::move(open));
    }
    return windows;
}

}  // namespace zirvel::x11
