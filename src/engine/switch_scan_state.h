// What switch scanning keeps in the engine's state.
#pragma once

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
};

}  // namespace zirvel
