#include "platform/win32/install_element_scanner.h"

#include "engine/element_hints.h"
#include "platform/win32/win32_element_scanner.h"
#include "platform/win32/win32_platform.h"

namespace zirvel::win32 {

void InstallElementScanner(const Win32Platform& platform) {
    ElementScanSetup setup;
    setup.engineWindows = {platform.MainWindow(), platform.GridWindow(), platform.WheelWindow()};
    SetElementScanner(new Win32ElementScanner(std::move(setup)));
}

}  // namespace zirvel::win32
