// Numbered hints over the clickable elements of the foreground window.
#pragma once

#include <cstdint>
#include <memory>

#include "core/engine_message.h"

namespace zirvel {

class ElementScanner;

// The scanner that element scans use on this platform (none: scans find
// nothing). Must outlive every scan.
void SetElementScanner(ElementScanner* scanner);

// Starts a scan on its own thread unless one is running; hides the grid.
// `browserPageOnly` restricts it to a web browser's page.
void StartElementScan(bool browserPageOnly);
// Hides the hint picture if it shows.
void HideHints();
// Drops a running scan's result and hides the hints.
void CancelElementHints();
// A scan's result arrived on the GUI thread.
void HandleElementScanResult(std::unique_ptr<ElementScanResult> result);
// Clicks the centre of element `number` (1-based) `count` times with
// `button`; ignored unless hints are shown and the number exists.
void ClickHint(int number, std::uint32_t button, std::uint32_t count);

}  // namespace zirvel
