// Switch scanning of the grid and of the element hints. The grid: its rows,
// then a row's cells, a press narrowing to the cell as saying its number
// does; after the cells "kliknij", "dwuklik", "prawy klik" and "zamknij".
// The hints: rows of hints in reading order, then a row's hints, a press
// clicking the hint as saying its number does; then "zamknij". GUI thread.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "core/geometry.h"
#include "engine/switch_scanner.h"

namespace zirvel {

struct EngineState;

// The grid's actions after its cells, in scanning order.
enum class GridAction { Click, DoubleClick, RightClick, Close };
inline constexpr GridAction kGridActions[] = {GridAction::Click, GridAction::DoubleClick, GridAction::RightClick,
                                              GridAction::Close};
std::u16string_view GridActionName(GridAction action);

// Starts scanning the grid that shows, at its level.
void StartGridScan();
// Starts scanning the hints that show.
void StartHintScan();
// The hints of an element scan may have arrived: scans them when
// "elementy" asked for them.
void ScanHintsIfAsked();

// Takes choice `choice` of the grid or hint scan.
void TakeGridChoice(std::int32_t choice);
void TakeHintChoice(std::int32_t choice);
// What the grid or hint scan goes over is still as it started.
bool ScannedScreenUnchanged();

// The order hints are scanned in: hint indices by rows of the screen (the
// centre's top, then its left), and the rows of that order.
std::vector<std::int32_t> HintReadingOrder(const std::vector<ScreenRect>& hints);
std::vector<ScanEntry> HintScanEntries(std::size_t hintCount);

// What the pictures highlight: an entry of the grid or hint scan, count 0
// when that scan does not run.
ScanEntry GridScanHighlight(const EngineState& engine);
ScanEntry HintScanHighlight(const EngineState& engine);

}  // namespace zirvel
