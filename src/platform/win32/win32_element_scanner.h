// The element scanner on Windows: UI Automation, with one cached FindAll
// per root, in a multithreaded COM apartment of the scan thread's own; the
// child window fallback (child_window_elements.h) when the automation
// object cannot be created.
#pragma once

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <functional>

#include "navigation/element_scanner.h"
#include "platform/win32/element_scan_windows.h"
#include "platform/win32/ui_automation_client.h"

namespace zirvel::win32 {

// Makes the automation object; hands over one reference on success.
using AutomationFactory = std::function<HRESULT(uia::IUIAutomation** automation)>;

// CoCreateInstance of CUIAutomation, in process.
HRESULT CreateSystemAutomation(uia::IUIAutomation** automation);

struct ElementScanSetup {
    EngineWindows engineWindows;
    ScanWindowSource windows;
    AutomationFactory createAutomation = CreateSystemAutomation;
};

class Win32ElementScanner final : public ElementScanner {
public:
    explicit Win32ElementScanner(ElementScanSetup setup) : setup_(std::move(setup)) {}

    // On the scan thread. The setup is only read, so scans may overlap.
    ElementScanResult Scan(ElementScanMode mode) override;

private:
    ElementScanSetup setup_;
};

}  // namespace zirvel::win32
