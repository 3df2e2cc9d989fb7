// The element scan on an X display: the foreground window's application
// found on the accessibility bus (AT-SPI2) by its process, and the
// clickable elements of its window, then of the desktop's panel.
#pragma once

#include <memory>

#include "navigation/element_scanner.h"

struct _XDisplay;

namespace zirvel::x11 {

class ForegroundWindowReader;

class AtspiElementScanner final : public ElementScanner {
public:
    // Connects to nothing yet: the first scan does, on its own thread.
    AtspiElementScanner();
    ~AtspiElementScanner() override;
    AtspiElementScanner(const AtspiElementScanner&) = delete;
    AtspiElementScanner& operator=(const AtspiElementScanner&) = delete;

    ElementScanResult Scan(ElementScanMode mode) override;

private:
    std::unique_ptr<ForegroundWindowReader> windows_;
    _XDisplay* display_ = nullptr;  // for the monitors (RandR)
};

}  // namespace zirvel::x11
