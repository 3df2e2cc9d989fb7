// AT-SPI roles as the control types the element filter knows
// (element_filter.h), so that the same acceptance rules apply as with UI
// Automation.
#pragma once

#include <cstdint>

#include <atspi/atspi-constants.h>

namespace zirvel::x11 {

// The control type of an element of `role`; 0 for roles that are neither
// clickable nor a document, window or pane. `editable` tells plain text
// apart from a text entry.
std::int32_t ControlTypeForRole(AtspiRole role, bool editable);

// Roles of a document: the first one inside a window is its page.
bool IsDocumentRole(AtspiRole role);

// Roles of a top-level window an application shows.
bool IsTopLevelRole(AtspiRole role);

}  // namespace zirvel::x11
