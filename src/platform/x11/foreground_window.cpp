#include "platform/x11/foreground_window.h"

#include <xcb/xcb.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace zirvel::x11 {
namespace {

// Replies are heap blocks the caller frees; errors are dropped with them.
template <typename Reply>
struct ReplyDeleter {
    void operator()(Reply* reply) const { std::free(reply); }
};
template <typename Reply>
using ReplyPtr = std::unique_ptr<Reply, ReplyDeleter<Reply>>;

template <typename Reply>
ReplyPtr<Reply> Checked(Reply* reply, xcb_generic_error_t* error) {
    std::free(error);
    return ReplyPtr<Reply>(reply);
}

// Parents above a client window: a reparenting window manager's frame and
// perhaps a virtual root; never more in practice.
constexpr int kMaxAncestors = 16;

}  // namespace

ForegroundWindowReader::ForegroundWindowReader() {
    int screenNumber = 0;
    connection_ = xcb_connect(nullptr, &screenNumber);
    if (xcb_connection_has_error(connection_)) return;
    xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(connection_));
    for (int i = 0; i < screenNumber && screens.rem > 0; ++i) xcb_screen_next(&screens);
    if (screens.rem > 0) root_ = screens.data->root;
}

ForegroundWindowReader::~ForegroundWindowReader() {
    if (connection_) xcb_disconnect(connection_);
}

bool ForegroundWindowReader::Connected() const {
    return connection_ && !xcb_connection_has_error(connection_) && root_ != 0;
}

std::uint32_t ForegroundWindowReader::Atom(const char* name) {
    xcb_generic_error_t* error = nullptr;
    auto reply = Checked(xcb_intern_atom_reply(connection_,
                                               xcb_intern_atom(connection_, 1, static_cast<std::uint16_t>(std::strlen(name)), name),
                                               &error),
                         error);
    return reply ? reply->atom : 0;
}

std::vector<std::uint32_t> ForegroundWindowReader::ReadCardinals(std::uint32_t window, std::uint32_t property,
                                                                 std::uint32_t type) {
    std::vector<std::uint32_t> values;
    if (window == 0 || property == 0) return values;
    xcb_generic_error_t* error = nullptr;
    // At most 4096 values: a client list of that many windows is plenty.
    auto reply = Checked(
        xcb_get_property_reply(connection_, xcb_get_property(connection_, 0, window, property, type, 0, 4096), &error),
        error);
    if (!reply || reply->format != 32 || reply->type != type) return values;
    const auto* data = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    const int count = xcb_get_property_value_length(reply.get()) / 4;
    values.assign(data, data + count);
    return values;
}

// A window manager that still runs names a check window that names itself;
// the root's property alone can outlive the window manager.
bool ForegroundWindowReader::WindowManagerRuns() {
    const std::uint32_t check = Atom("_NET_SUPPORTING_WM_CHECK");
    const std::vector<std::uint32_t> named = ReadCardinals(root_, check, XCB_ATOM_WINDOW);
    if (named.empty() || named[0] == 0) return false;
    const std::vector<std::uint32_t> itself = ReadCardinals(named[0], check, XCB_ATOM_WINDOW);
    return !itself.empty() && itself[0] == named[0];
}

std::uint32_t ForegroundWindowReader::TopLevelOf(std::uint32_t window) {
    for (int depth = 0; depth < kMaxAncestors && window != 0 && window != root_; ++depth) {
        xcb_generic_error_t* error = nullptr;
        auto tree = Checked(xcb_query_tree_reply(connection_, xcb_query_tree(connection_, window), &error), error);
        if (!tree) return 0;
        if (tree->parent == root_ || tree->parent == 0) return window;
        window = tree->parent;
    }
    return 0;
}

std::optional<TopLevelWindow> ForegroundWindowReader::Describe(std::uint32_t window) {
    if (window == 0) return std::nullopt;
    xcb_generic_error_t* error = nullptr;
    auto attributes = Checked(
        xcb_get_window_attributes_reply(connection_, xcb_get_window_attributes(connection_, window), &error), error);
    if (!attributes || attributes->map_state != XCB_MAP_STATE_VIEWABLE) return std::nullopt;
    auto geometry = Checked(xcb_get_geometry_reply(connection_, xcb_get_geometry(connection_, window), &error), error);
    auto position = Checked(
        xcb_translate_coordinates_reply(connection_, xcb_translate_coordinates(connection_, window, root_, 0, 0), &error),
        error);
    if (!geometry || !position) return std::nullopt;
    TopLevelWindow found;
    found.window = window;
    found.rect = {position->dst_x, position->dst_y, position->dst_x + geometry->width,
                  position->dst_y + geometry->height};
    const std::vector<std::uint32_t> pid = ReadCardinals(window, Atom("_NET_WM_PID"), XCB_ATOM_CARDINAL);
    if (!pid.empty()) found.pid = static_cast<pid_t>(pid[0]);
    return found;
}

std::optional<TopLevelWindow> ForegroundWindowReader::Foreground() {
    if (!Connected()) return std::nullopt;
    if (WindowManagerRuns()) {
        const std::vector<std::uint32_t> active = ReadCardinals(root_, Atom("_NET_ACTIVE_WINDOW"), XCB_ATOM_WINDOW);
        return active.empty() ? std::nullopt : Describe(active[0]);
    }
    xcb_generic_error_t* error = nullptr;
    auto focus = Checked(xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), &error), error);
    // None and PointerRoot name no window.
    if (!focus || focus->focus == XCB_NONE || focus->focus == XCB_INPUT_FOCUS_POINTER_ROOT || focus->focus == root_) {
        return std::nullopt;
    }
    return Describe(TopLevelOf(focus->focus));
}

std::optional<TopLevelWindow> ForegroundWindowReader::Dock() {
    if (!Connected()) return std::nullopt;
    // Managed clients first, then the root's children (a dock that no window
    // manager manages, or none runs).
    std::vector<std::uint32_t> candidates = ReadCardinals(root_, Atom("_NET_CLIENT_LIST"), XCB_ATOM_WINDOW);
    xcb_generic_error_t* error = nullptr;
    if (auto tree = Checked(xcb_query_tree_reply(connection_, xcb_query_tree(connection_, root_), &error), error)) {
        const xcb_window_t* children = xcb_query_tree_children(tree.get());
        for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i) {
            if (std::find(candidates.begin(), candidates.end(), children[i]) == candidates.end()) {
                candidates.push_back(children[i]);
            }
        }
    }
    const std::uint32_t type = Atom("_NET_WM_WINDOW_TYPE");
    const std::uint32_t dock = Atom("_NET_WM_WINDOW_TYPE_DOCK");
    if (type == 0 || dock == 0) return std::nullopt;
    // All questions first, then the answers: one round trip, however many
    // windows the desktop holds.
    std::vector<xcb_get_property_cookie_t> cookies;
    cookies.reserve(candidates.size());
    for (std::uint32_t window : candidates) {
        cookies.push_back(xcb_get_property(connection_, 0, window, type, XCB_ATOM_ATOM, 0, 32));
    }
    std::vector<std::uint32_t> docks;
    for (std::size_t i = 0; i < cookies.size(); ++i) {
        auto reply = Checked(xcb_get_property_reply(connection_, cookies[i], &error), error);
        error = nullptr;
        if (!reply || reply->format != 32 || reply->type != XCB_ATOM_ATOM) continue;
        const auto* types = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
        const int count = xcb_get_property_value_length(reply.get()) / 4;
        if (std::find(types, types + count, dock) != types + count) docks.push_back(candidates[i]);
    }
    for (std::uint32_t window : docks) {
        if (std::optional<TopLevelWindow> found = Describe(window)) return found;
    }
    return std::nullopt;
}

}  // namespace zirvel::x11
