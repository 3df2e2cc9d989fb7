// What switch scanning keeps in the engine's state.
#pragma once

#include <cstdint>
#include <vector>

#include "engine/switch_scanner.h"

namespace zirvel {

// What the highlight goes over.
enum class ScanTarget { None, Wheel, Grid, Hints };

struct SwitchScanState {
    ScanTarget target = ScanTarget::None;
    SwitchScanner scanner;
    bool stepKeyRegistered = false;
    // "elementy" was taken: the hints that arrive are scanned.
    bool scanHintsWhenShown = false;
    std::int32_t scannedGridLevel = 0;   // the grid level the scan offers
    std::vector<std::int32_t> hintOrder;  // choice -> hint index
};

}  // namespace zirvel
