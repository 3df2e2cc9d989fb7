// Reading an application's accessibility tree over AT-SPI for the element
// scan: its windows, the descendants of one of them in tree order, and the
// few properties the element filter needs. Every read is bounded by a
// budget of time and nodes; a failed read counts as "nothing there".
#pragma once

#include <sys/types.h>

#include <atspi/atspi.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "core/geometry.h"
#include "navigation/element_filter.h"

namespace zirvel::x11 {

struct GObjectUnref {
    void operator()(void* object) const;
};
using AccessibleRef = std::unique_ptr<AtspiAccessible, GObjectUnref>;

// How much one scan may spend: a deadline and a number of nodes.
class ScanBudget {
public:
    ScanBudget(std::chrono::milliseconds time, int nodes);
    bool Spent() const;
    // Takes one node from the budget; false when none was left.
    bool TakeNode();
    int NodesLeft() const { return nodesLeft_; }

private:
    std::chrono::steady_clock::time_point deadline_;
    int nodesLeft_;
};

// State and role of a node, read once; the role only of a shown node.
struct NodeFacts {
    AtspiRole role = ATSPI_ROLE_INVALID;
    bool showing = false;
    bool enabled = false;
    bool focusable = false;
    bool editable = false;
    bool active = false;
    // The screen rectangle when it was read together with the rest.
    std::optional<ScreenRect> rect;
};

NodeFacts ReadNodeFacts(AtspiAccessible* node);

// The screen rectangle of a node; empty when unreadable or when the
// toolkit reports a place off every screen (rows scrolled out of a list
// come with coordinates of INT_MIN).
ScreenRect ReadScreenRect(AtspiAccessible* node);
ScreenRect RectFromExtents(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height);

// The facts of a node from its state bits (32 a word) and role.
NodeFacts FactsFromStates(const std::vector<std::uint32_t>& words, AtspiRole role);

// The element as the filter sees it. The rectangle is read only for nodes
// the filter could accept, sparing a call per other node.
ElementRecord ReadElement(AtspiAccessible* node, const NodeFacts& facts);

// The application registered by process `pid`.
AccessibleRef FindApplication(pid_t pid, ScanBudget& budget);

// The application's top-level window shown at `windowRect`: the only one
// shown, else the only active one, else the one whose rectangle matches
// `windowRect` best.
AccessibleRef FindTopLevel(AtspiAccessible* application, const ScreenRect& windowRect, ScanBudget& budget);

enum class Visit { Continue, SkipChildren, Stop };

// Calls `visit` for the shown descendants of `root` in tree order: in one
// call through the Collection interface where the application offers it,
// else by walking the tree (depth and node count bounded, hidden subtrees
// skipped).
void VisitDescendants(AtspiAccessible* root, ScanBudget& budget,
                      const std::function<Visit(AtspiAccessible*, const NodeFacts&)>& visit);

// The first shown descendant of `root`, in tree order, of one of `roles`.
AccessibleRef FindFirstDescendant(AtspiAccessible* root, ScanBudget& budget, const std::vector<AtspiRole>& roles);

}  // namespace zirvel::x11
