// A stand-in for the UI Automation object, scripted by a test: which
// elements each window's tree holds, which windows have a Document, which
// calls fail. It records what the scan asked for, and counts its live
// objects so that a test can see everything was released.
#pragma once

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "core/geometry.h"
#include "platform/win32/ui_automation_client.h"

namespace zirvel_test {

// One element of a scripted tree; a property without a value cannot be read.
struct StandInElement {
    std::optional<std::int32_t> controlType;
    std::optional<bool> enabled;
    std::optional<bool> offscreen;
    std::optional<bool> focusable;
    std::optional<zirvel::ScreenRect> rect;
};

// Enabled, on screen and focusable, of this type.
StandInElement Control(zirvel::ScreenRect rect, std::int32_t controlType);

// One FindAllBuildCache: on which root, with which condition and cache.
struct RecordedSearch {
    std::string root;  // "window" (an element of a window) or "document"
    HWND window = nullptr;
    std::string condition;            // e.g. "or(ControlType=50000,...)", "control view"
    std::vector<int> cachedProperties;  // in the order the request was given them
};

struct AutomationScript {
    // The descendants FindAllBuildCache finds under a window's element, and
    // under the Document element of a window that has one.
    std::map<HWND, std::vector<StandInElement>> windowTrees;
    std::map<HWND, std::vector<StandInElement>> documentTrees;
    std::set<HWND> windowsWithoutElement;  // ElementFromHandle fails
    bool orConditionFails = false;

    std::vector<RecordedSearch> searches;
    std::vector<std::string> documentQueries;  // the conditions FindFirst was given
    int liveObjects = 0;
};

// A new stand-in automation object with one reference, as CoCreateInstance
// hands it over.
zirvel::win32::uia::IUIAutomation* NewStandInAutomation(AutomationScript& script);

}  // namespace zirvel_test
