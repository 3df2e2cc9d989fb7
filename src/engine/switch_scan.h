// Switch scanning: with scanEnabled the toggle key shows the wheel and a
// highlight moves over its fields, its arrows and the choices "siatka",
// "elementy" and "zamknij"; the toggle key (the select switch) takes the
// highlighted one. In step mode the step key moves the highlight. The
// grid and the element hints are scanned the same way. GUI thread only.
#pragma once

#include <cstdint>
#include <vector>

#include "engine/switch_scan_state.h"
#include "engine/switch_scanner.h"

namespace zirvel {

// The wheel's choices after its fields, in scanning order.
enum class WheelExtra { RightArrow, LeftArrow, Grid, Hints, Close };
std::vector<WheelExtra> WheelScanExtras(std::size_t wheelCount);

// Wheels with more fields than this are scanned by quarters first.
inline constexpr std::int32_t kUngroupedFieldLimit = 8;
inline constexpr std::int32_t kFieldGroupCount = 4;

// The toggle key while scanning is on: takes the highlighted choice, or
// shows the wheel (hides it when it shows without a scan) and starts.
void PressSelectSwitch();
// The step key (step mode): the highlight moves one choice.
void PressStepSwitch();
// The wheel's timer: in auto mode moves the highlight when a step is due.
void SwitchScanTick();

// Starts scanning the wheel that shows, on its first field.
void StartWheelScan();
// The wheel hid (any way): its scan ends; a grid or hint scan keeps the
// timer it shares with the wheel.
void EndWheelScan();
// Another wheel shows: its scan starts again on its first field.
void RestartWheelScan();
// Starts scanning `entries` of `target` (holding the step key in step
// mode; the grid and hints run the wheel's timer for the auto mode).
void StartSwitchScan(ScanTarget target, std::vector<ScanEntry> entries);
// Draws the scanned picture again.
void RenderScanned();
// Ends any scan and releases the step key.
void StopSwitchScan();
// After a reload: scanning switched off ends; a wheel scan starts again
// with the new interval, rounds and step key.
void MatchScanToSettings();

struct EngineState;
// What the wheel picture highlights while its scan runs: choices of the
// current wheel (fields, then WheelScanExtras); count 0 when none.
ScanEntry WheelScanHighlight(const EngineState& engine);
bool WheelScanRunning(const EngineState& engine);

}  // namespace zirvel
