#include "engine/screen_scan.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "engine/element_hints.h"
#include "engine/engine_state.h"
#include "engine/function_runner.h"
#include "engine/grid.h"
#include "engine/switch_scan.h"
#include "navigation/grid_geometry.h"

namespace zirvel {
namespace {

std::int32_t GridCellCount(std::int32_t level) {
    const int side = GridCellsPerSide(level);
    return side * side;
}

bool Scanning(const EngineState& engine, ScanTarget target) {
    return engine.scan.target == target && engine.scan.scanner.Active();
}

}  // namespace

std::u16string_view GridActionName(GridAction action) {
    switch (action) {
        case GridAction::Click:
            return u"kliknij";
        case GridAction::DoubleClick:
            return u"dwuklik";
        case GridAction::RightClick:
            return u"prawy klik";
        case GridAction::Close:
            return u"zamknij";
    }
    return {};
}

void StartGridScan() {
    EngineState& engine = Engine();
    if (!engine.gridVisible) return;
    const std::int32_t cells = GridCellCount(engine.gridLevel);
    std::vector<ScanEntry> entries = EntriesOfSize(cells, GridCellsPerSide(engine.gridLevel));
    for (std::size_t a = 0; a < std::size(kGridActions); ++a) entries.push_back({cells + static_cast<std::int32_t>(a), 1});
    engine.scan.scannedGridLevel = engine.gridLevel;
    StartSwitchScan(ScanTarget::Grid, std::move(entries));
    RenderScanned();
}

std::vector<std::int32_t> HintReadingOrder(const std::vector<ScreenRect>& hints) {
    std::vector<std::int32_t> order(hints.size());
    std::iota(order.begin(), order.end(), 0);
    const auto centre = [&](std::int32_t i) { return GridAreaCentre(hints[static_cast<std::size_t>(i)]); };
    std::stable_sort(order.begin(), order.end(), [&](std::int32_t a, std::int32_t b) {
        const ScreenPoint pa = centre(a);
        const ScreenPoint pb = centre(b);
        return pa.y != pb.y ? pa.y < pb.y : pa.x < pb.x;
    });
    return order;
}

std::vector<ScanEntry> HintScanEntries(std::size_t hintCount) {
    // Rows of about the square root of the count: 99 hints take at most
    // 9 + 9 steps, and "zamknij" comes last.
    const auto count = static_cast<std::int32_t>(hintCount);
    const auto row = static_cast<std::int32_t>(std::ceil(std::sqrt(static_cast<double>(count))));
    std::vector<ScanEntry> entries = EntriesOfSize(count, row);
    entries.push_back({count, 1});
    return entries;
}

void StartHintScan() {
    EngineState& engine = Engine();
    if (!engine.hintsVisible || engine.hintRects.empty()) return;
    engine.scan.hintOrder = HintReadingOrder(engine.hintRects);
    StartSwitchScan(ScanTarget::Hints, HintScanEntries(engine.hintRects.size()));
    RenderScanned();
}

void ScanHintsIfAsked() {
    EngineState& engine = Engine();
    if (!engine.scan.scanHintsWhenShown || engine.hintScanRunning.load() != 0) return;
    engine.scan.scanHintsWhenShown = false;
    if (engine.hintsVisible) StartHintScan();
}

void TakeGridChoice(std::int32_t choice) {
    EngineState& engine = Engine();
    const std::int32_t cells = GridCellCount(engine.gridLevel);
    if (choice < cells) {
        NarrowGrid(choice + 1);
        StartGridScan();
        return;
    }
    StopSwitchScan();
    const auto action = static_cast<std::size_t>(choice - cells);
    if (action >= std::size(kGridActions)) return;
    switch (kGridActions[action]) {
        case GridAction::Click:
            ClickMouse(kMouseLeft, 1);
            break;
        case GridAction::DoubleClick:
            ClickMouse(kMouseLeft, 2);
            break;
        case GridAction::RightClick:
            ClickMouse(kMouseRight, 1);
            break;
        case GridAction::Close:
            HideGrid();
            break;
    }
}

void TakeHintChoice(std::int32_t choice) {
    EngineState& engine = Engine();
    const std::vector<std::int32_t> order = engine.scan.hintOrder;
    StopSwitchScan();
    if (choice >= 0 && static_cast<std::size_t>(choice) < order.size()) {
        ClickHint(order[static_cast<std::size_t>(choice)] + 1, kMouseLeft, 1);
    } else {
        HideHints();
    }
}

bool ScannedScreenUnchanged() {
    const EngineState& engine = Engine();
    switch (engine.scan.target) {
        case ScanTarget::Grid:
            return engine.gridVisible && !engine.hintsVisible && engine.gridLevel == engine.scan.scannedGridLevel;
        case ScanTarget::Hints:
            return engine.hintsVisible;
        case ScanTarget::Wheel:
        case ScanTarget::None:
            break;
    }
    return true;
}

ScanEntry GridScanHighlight(const EngineState& engine) {
    return Scanning(engine, ScanTarget::Grid) ? engine.scan.scanner.Highlighted() : ScanEntry{-1, 0};
}

ScanEntry HintScanHighlight(const EngineState& engine) {
    return Scanning(engine, ScanTarget::Hints) ? engine.scan.scanner.Highlighted() : ScanEntry{-1, 0};
}

}  // namespace zirvel
