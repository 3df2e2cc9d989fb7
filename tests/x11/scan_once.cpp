// Runs one element scan of the foreground window in a process of its own
// and prints what it found: "<elements> <area left> <top> <right> <bottom>".
// The tests start it where the accessibility bus cannot be reached.
#include <cstdio>

#include "platform/x11/atspi_element_scanner.h"

int main() {
    zirvel::x11::AtspiElementScanner scanner;
    const zirvel::ElementScanResult result = scanner.Scan(zirvel::ElementScanMode::ForegroundWindow);
    std::printf("%zu %d %d %d %d\n", result.elements.size(), result.area.left, result.area.top, result.area.right,
                result.area.bottom);
    return 0;
}
