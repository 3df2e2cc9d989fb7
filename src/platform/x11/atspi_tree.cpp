#include "platform/x11/atspi_tree.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <optional>
#include <span>
#include <utility>

#include "platform/x11/atspi_batch.h"
#include "platform/x11/atspi_connection.h"
#include "platform/x11/atspi_roles.h"

namespace zirvel::x11 {
namespace {

// Deeper trees than this are not walked: no real window nests its controls
// that deep, and a tree that loops back on itself must end somewhere.
constexpr int kMaxDepth = 48;

// From this many children on, their states are read in one batch.
constexpr int kBatchChildrenFrom = 16;
// Matches of the Collection interface read in one batch: the scan stops
// early (a full list) without having asked about many more.
constexpr std::size_t kBatchNodes = 128;

// An application shows few top-level windows; more are not looked at.
constexpr int kMaxTopLevels = 64;
constexpr int kMaxApplications = 256;

AccessibleRef Adopt(AtspiAccessible* node) { return AccessibleRef(node); }

int ChildCount(AtspiAccessible* node) {
    GError* error = nullptr;
    const gint count = atspi_accessible_get_child_count(node, &error);
    if (error) {
        g_error_free(error);
        return 0;
    }
    return count < 0 ? 0 : count;
}

AccessibleRef Child(AtspiAccessible* node, int index) {
    GError* error = nullptr;
    AtspiAccessible* child = atspi_accessible_get_child_at_index(node, index, &error);
    g_clear_error(&error);
    return Adopt(child);
}

std::int64_t Distance(const ScreenRect& a, const ScreenRect& b) {
    return std::llabs(static_cast<std::int64_t>(a.left) - b.left) + std::llabs(static_cast<std::int64_t>(a.top) - b.top) +
           std::llabs(static_cast<std::int64_t>(a.right) - b.right) +
           std::llabs(static_cast<std::int64_t>(a.bottom) - b.bottom);
}

// Through the Collection interface: every shown descendant, in tree order,
// in a single call. False when the application does not offer it.
bool VisitThroughCollection(AtspiAccessible* root, ScanBudget& budget, const std::vector<AtspiRole>& roles,
                            const std::function<Visit(AtspiAccessible*, const NodeFacts&)>& visit) {
    AtspiCollection* collection = atspi_accessible_get_collection_iface(root);
    if (!collection) return false;
    AtspiStateSet* showing = atspi_state_set_new(nullptr);
    atspi_state_set_add(showing, ATSPI_STATE_SHOWING);
    GArray* roleArray = nullptr;
    if (!roles.empty()) {
        roleArray = g_array_new(FALSE, FALSE, sizeof(AtspiRole));
        g_array_append_vals(roleArray, roles.data(), static_cast<guint>(roles.size()));
    }
    AtspiMatchRule* rule =
        atspi_match_rule_new(showing, ATSPI_Collection_MATCH_ALL, nullptr, ATSPI_Collection_MATCH_ALL, roleArray,
                             roles.empty() ? ATSPI_Collection_MATCH_ALL : ATSPI_Collection_MATCH_ANY, nullptr,
                             ATSPI_Collection_MATCH_ALL, FALSE);
    if (roleArray) g_array_free(roleArray, TRUE);
    GError* error = nullptr;
    GArray* matches = atspi_collection_get_matches(collection, rule, ATSPI_Collection_SORT_ORDER_CANONICAL,
                                                   budget.NodesLeft(), TRUE, &error);
    g_object_unref(rule);
    g_object_unref(showing);
    g_object_unref(collection);
    if (!matches) {
        g_clear_error(&error);
        return false;
    }
    // The matches' states, roles and places are asked for a chunk at a
    // time, all questions of a chunk at once.
    std::vector<AtspiAccessible*> nodes;
    for (guint i = 0; i < matches->len; ++i) nodes.push_back(g_array_index(matches, AtspiAccessible*, i));
    bool stopped = false;
    for (std::size_t first = 0; first < nodes.size() && !stopped; first += kBatchNodes) {
        const std::span<AtspiAccessible* const> chunk(nodes.data() + first, std::min(kBatchNodes, nodes.size() - first));
        const std::vector<std::optional<NodeFacts>> read = ReadNodesFacts(chunk, kAccessibilityCallTimeoutMs);
        for (std::size_t i = 0; i < chunk.size() && !stopped; ++i) {
            if (!budget.TakeNode() || budget.Spent()) {
                stopped = true;
                break;
            }
            stopped = visit(chunk[i], read[i] ? *read[i] : ReadNodeFacts(chunk[i])) == Visit::Stop;
        }
    }
    for (AtspiAccessible* node : nodes) g_object_unref(node);
    g_array_free(matches, TRUE);
    return true;
}

void VisitByWalking(AtspiAccessible* root, ScanBudget& budget,
                    const std::function<Visit(AtspiAccessible*, const NodeFacts&)>& visit) {
    struct Pending {
        AccessibleRef node;
        int depth;
        std::optional<NodeFacts> facts;
    };
    std::vector<Pending> stack;
    const auto pushChildren = [&stack, &budget](AtspiAccessible* parent, int depth) {
        if (depth > kMaxDepth || budget.Spent()) return;
        // A node's children beyond the node budget are never reached anyway.
        const int count = std::min(ChildCount(parent), budget.NodesLeft());
        // Many children (a long list's rows): which of them are shown, in
        // one batch; those that are not are passed over without a call.
        std::optional<std::vector<bool>> showing;
        if (count >= kBatchChildrenFrom) showing = ReadChildrenShowing(parent, count, kAccessibilityCallTimeoutMs);
        std::vector<AccessibleRef> children;
        for (int i = 0; i < count; ++i) {
            if (showing && !(*showing)[static_cast<std::size_t>(i)]) continue;
            if (AccessibleRef child = Child(parent, i)) children.push_back(std::move(child));
        }
        // The children's states, roles and places, asked for all at once.
        std::vector<AtspiAccessible*> nodes;
        for (const AccessibleRef& child : children) nodes.push_back(child.get());
        std::vector<std::optional<NodeFacts>> facts = ReadNodesFacts(nodes, kAccessibilityCallTimeoutMs);
        // Reversed, so that the first child comes off the stack first.
        for (std::size_t i = children.size(); i-- > 0;) {
            stack.push_back({std::move(children[i]), depth, std::move(facts[i])});
        }
    };
    pushChildren(root, 1);
    while (!stack.empty()) {
        if (!budget.TakeNode() || budget.Spent()) return;
        Pending next = std::move(stack.back());
        stack.pop_back();
        const NodeFacts facts = next.facts ? *next.facts : ReadNodeFacts(next.node.get());
        // What is not shown hides its children too.
        if (!facts.showing) continue;
        const Visit decision = visit(next.node.get(), facts);
        if (decision == Visit::Stop) return;
        if (decision == Visit::Continue) pushChildren(next.node.get(), next.depth + 1);
    }
}

}  // namespace

void GObjectUnref::operator()(void* object) const {
    if (object) g_object_unref(object);
}

ScanBudget::ScanBudget(std::chrono::milliseconds time, int nodes)
    : deadline_(std::chrono::steady_clock::now() + time), nodesLeft_(nodes) {}

bool ScanBudget::Spent() const { return std::chrono::steady_clock::now() >= deadline_; }

bool ScanBudget::TakeNode() {
    if (nodesLeft_ <= 0) return false;
    --nodesLeft_;
    return true;
}

NodeFacts ReadNodeFacts(AtspiAccessible* node) {
    NodeFacts facts;
    // States first: the role of a node that is not shown is never needed,
    // which spares a call per row scrolled out of a long list.
    AtspiStateSet* states = atspi_accessible_get_state_set(node);
    if (!states) return NodeFacts{};
    facts.showing = atspi_state_set_contains(states, ATSPI_STATE_SHOWING);
    facts.enabled = atspi_state_set_contains(states, ATSPI_STATE_ENABLED) ||
                    atspi_state_set_contains(states, ATSPI_STATE_SENSITIVE);
    facts.focusable = atspi_state_set_contains(states, ATSPI_STATE_FOCUSABLE);
    facts.editable = atspi_state_set_contains(states, ATSPI_STATE_EDITABLE);
    facts.active = atspi_state_set_contains(states, ATSPI_STATE_ACTIVE);
    g_object_unref(states);
    if (!facts.showing) return facts;
    GError* error = nullptr;
    facts.role = atspi_accessible_get_role(node, &error);
    if (error) {
        g_error_free(error);
        return NodeFacts{};
    }
    return facts;
}

ScreenRect RectFromExtents(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height) {
    const std::int64_t right = static_cast<std::int64_t>(x) + width;
    const std::int64_t bottom = static_cast<std::int64_t>(y) + height;
    constexpr std::int64_t kLimit = std::numeric_limits<std::int32_t>::max();
    if (x == INT_MIN || y == INT_MIN || width <= 0 || height <= 0 || right > kLimit || bottom > kLimit) return {};
    return {x, y, static_cast<std::int32_t>(right), static_cast<std::int32_t>(bottom)};
}

ScreenRect ReadScreenRect(AtspiAccessible* node) {
    GError* error = nullptr;
    AtspiRect* extents = atspi_component_get_extents(ATSPI_COMPONENT(node), ATSPI_COORD_TYPE_SCREEN, &error);
    if (!extents) {
        g_clear_error(&error);
        return {};
    }
    const ScreenRect rect = RectFromExtents(extents->x, extents->y, extents->width, extents->height);
    g_free(extents);
    return rect;
}

NodeFacts FactsFromStates(const std::vector<std::uint32_t>& words, AtspiRole role) {
    const auto has = [&words](AtspiStateType state) {
        const auto bit = static_cast<unsigned>(state);
        return bit / 32 < words.size() && (words[bit / 32] >> (bit % 32) & 1u) != 0;
    };
    NodeFacts facts;
    facts.role = role;
    facts.showing = has(ATSPI_STATE_SHOWING);
    facts.enabled = has(ATSPI_STATE_ENABLED) || has(ATSPI_STATE_SENSITIVE);
    facts.focusable = has(ATSPI_STATE_FOCUSABLE);
    facts.editable = has(ATSPI_STATE_EDITABLE);
    facts.active = has(ATSPI_STATE_ACTIVE);
    return facts;
}

ElementRecord ReadElement(AtspiAccessible* node, const NodeFacts& facts) {
    ElementRecord element;
    element.controlType = ControlTypeForRole(facts.role, facts.editable);
    element.enabled = facts.enabled;
    element.offscreen = !facts.showing;
    element.focusable = facts.focusable;
    const bool mayBeTaken =
        element.enabled && !element.offscreen &&
        (IsClickableControlType(element.controlType) ||
         (element.focusable && element.controlType != control_type::kDocument &&
          element.controlType != control_type::kWindow && element.controlType != control_type::kPane));
    if (mayBeTaken) element.rect = facts.rect ? *facts.rect : ReadScreenRect(node);
    return element;
}

AccessibleRef FindApplication(pid_t pid, ScanBudget& budget) {
    if (pid <= 0) return {};
    AccessibleRef desktop = Adopt(atspi_get_desktop(0));
    if (!desktop) return {};
    const int count = std::min(ChildCount(desktop.get()), kMaxApplications);
    for (int i = 0; i < count && !budget.Spent(); ++i) {
        AccessibleRef application = Child(desktop.get(), i);
        if (!application) continue;
        KeepApplicationOnScanContext(application.get());
        GError* error = nullptr;
        const guint owner = atspi_accessible_get_process_id(application.get(), &error);
        if (error) {
            g_error_free(error);
            continue;
        }
        if (static_cast<pid_t>(owner) != pid) continue;
        // Its private connection may have come while this scan waited.
        KeepApplicationOnScanContext(application.get());
        return application;
    }
    return {};
}

AccessibleRef FindTopLevel(AtspiAccessible* application, const ScreenRect& windowRect, ScanBudget& budget) {
    struct Shown {
        AccessibleRef node;
        bool active;
        ScreenRect rect;
    };
    std::vector<Shown> shown;
    const int count = std::min(ChildCount(application), kMaxTopLevels);
    for (int i = 0; i < count && !budget.Spent(); ++i) {
        AccessibleRef child = Child(application, i);
        if (!child) continue;
        const NodeFacts facts = ReadNodeFacts(child.get());
        if (!facts.showing || !IsTopLevelRole(facts.role)) continue;
        const ScreenRect rect = ReadScreenRect(child.get());
        shown.push_back({std::move(child), facts.active, rect});
    }
    if (shown.empty()) return {};
    if (shown.size() == 1) return std::move(shown.front().node);
    int activeCount = 0;
    for (const Shown& window : shown) activeCount += window.active ? 1 : 0;
    if (activeCount == 1) {
        for (Shown& window : shown) {
            if (window.active) return std::move(window.node);
        }
    }
    // Ambiguous (without a window manager the active state follows the
    // pointer): the window at the X window's place.
    Shown* best = &shown.front();
    for (Shown& window : shown) {
        if (Distance(window.rect, windowRect) < Distance(best->rect, windowRect)) best = &window;
    }
    return std::move(best->node);
}

void VisitDescendants(AtspiAccessible* root, ScanBudget& budget,
                      const std::function<Visit(AtspiAccessible*, const NodeFacts&)>& visit) {
    if (!root || budget.Spent()) return;
    if (!VisitThroughCollection(root, budget, {}, visit)) VisitByWalking(root, budget, visit);
}

AccessibleRef FindFirstDescendant(AtspiAccessible* root, ScanBudget& budget, const std::vector<AtspiRole>& roles) {
    AccessibleRef found;
    const auto take = [&found, &roles](AtspiAccessible* node, const NodeFacts& facts) {
        if (std::find(roles.begin(), roles.end(), facts.role) == roles.end()) return Visit::Continue;
        found.reset(ATSPI_ACCESSIBLE(g_object_ref(node)));
        return Visit::Stop;
    };
    if (!root || budget.Spent()) return found;
    // The application picks the matching nodes itself where it can.
    if (!VisitThroughCollection(root, budget, roles, take)) VisitByWalking(root, budget, take);
    return found;
}

}  // namespace zirvel::x11
