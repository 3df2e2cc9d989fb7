// Runs one element scan of the foreground window (or, with "page", of the
// browser page in it) in a process of its own and prints what it found:
// "<elements> <area left> <top> <right> <bottom>", then one line per element.
// The tests start it where the accessibility bus cannot be reached.
#include <cstdio>
#include <string>

#include "platform/x11/atspi_element_scanner.h"

int main(int argc, char* argv[]) {
    const bool page = argc > 1 && std::string(argv[1]) == "page";
    zirvel::x11::AtspiElementScanner scanner;
    const zirvel::ElementScanResult result =
        scanner.Scan(page ? zirvel::ElementScanMode::BrowserPage : zirvel::ElementScanMode::ForegroundWindow);
    std::printf("%zu %d %d %d %d\n", result.elements.size(), result.area.left, result.area.top, result.area.right,
                result.area.bottom);
    for (const zirvel::ScreenRect& element : result.elements) {
        std::printf("%d %d %d %d\n", element.left, element.top, element.right, element.bottom);
    }
    return 0;
}
