// Which children of a node are shown, asked for all children at once: the
// questions go out together and the answers are collected afterwards,
// instead of one round trip per child. A toolkit without the Collection
// interface (Qt) otherwise costs two round trips per row of a long list,
// though only the few rows in view matter.
#pragma once

#include <atspi/atspi.h>

#include <optional>
#include <vector>

namespace zirvel::x11 {

// Whether each of the node's children (by index) is shown; nothing when
// anything fails or the children changed meanwhile (the caller then asks
// child by child). `timeoutMs` bounds each answer.
std::optional<std::vector<bool>> ReadChildrenShowing(AtspiAccessible* parent, int childCount, int timeoutMs);

}  // namespace zirvel::x11
