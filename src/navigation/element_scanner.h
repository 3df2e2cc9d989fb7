// What each platform's element scanner does. The scanner runs on its own
// thread, never touches engine state, and hands back a fresh result that the
// engine posts to the GUI thread.
//
// A scan:
//  - area: the full rectangle of the monitor that holds the foreground window
//    (or the engine's main window when there is no foreground window; the
//    primary monitor when neither lies on a monitor);
//  - roots, in order:
//      ForegroundWindow: the foreground window, unless it is missing,
//        invisible or one of the engine's own windows (main, grid, wheel);
//        then the taskbar, if there is one and it is visible;
//      BrowserPage: the browser's content window (see
//        IsBrowserContentWindow; the area is intersected with that window's
//        rectangle whenever the window is found), else the foreground
//        window's first Document descendant, else the foreground window
//        itself; exactly one root, never the taskbar;
//  - each root's descendants of a clickable control type or keyboard
//    focusable, in tree order, fed to AcceptElements (element_filter.h) one
//    root after the other into the same list, until the list is full.
// Properties that cannot be read take the defaults of ElementRecord.
// Any failure (no accessibility service, no roots, nothing matching) gives
// an empty element list; the engine then shows nothing.
#pragma once

#include <cstdint>

#include "core/engine_message.h"

namespace zirvel {

// The values are what the voice commands pass to the scan thread.
enum class ElementScanMode : std::int32_t {
    ForegroundWindow = 0,  // "pokaż elementy"
    BrowserPage = 1,       // "pokaż elementy strony", "elementy strony"
};

class ElementScanner {
public:
    virtual ~ElementScanner() = default;

    // Runs on the scan thread; blocks until the scan is done.
    virtual ElementScanResult Scan(ElementScanMode mode) = 0;
};

}  // namespace zirvel
