// Reading many nodes at once: the questions go out together and the
// answers are collected afterwards, instead of one round trip per question.
// A long list otherwise costs a few round trips per row, though only the
// few rows in view matter.
#pragma once

#include <atspi/atspi.h>

#include <optional>
#include <span>
#include <vector>

#include "platform/x11/atspi_tree.h"

namespace zirvel::x11 {

// Whether each of the node's children (by index) is shown; nothing when
// anything fails or the children changed meanwhile (the caller then asks
// child by child). `timeoutMs` bounds each answer.
std::optional<std::vector<bool>> ReadChildrenShowing(AtspiAccessible* parent, int childCount, int timeoutMs);

// State, role and screen rectangle of each node; nothing for a node whose
// state or role could not be read this way (the caller then asks it
// alone). A missing rectangle is left unset.
std::vector<std::optional<NodeFacts>> ReadNodesFacts(std::span<AtspiAccessible* const> nodes, int timeoutMs);

}  // namespace zirvel::x11
