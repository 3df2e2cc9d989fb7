// zirvel-engine.exe: the engine without the front-end, for users who want
// only the wheel. It has a tray icon of its own, shows configuration
// problems in a box, and its window (from the tray) shows the help page.
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include "app/engine_instance_win32.h"
#include "app/win32_engine_host.h"
#include "engine/engine_lifecycle.h"
#include "system/runtime_library.h"

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int) {
    if (!zirvel::app::TakeEngineInstance()) {
        MessageBoxW(nullptr, L"Zirvel już działa — sprawdź ikonę w zasobniku systemowym.", L"Zirvel",
                    MB_OK | MB_ICONINFORMATION);
        return 0;
    }
    // The engine's files and icons/ resolve in the program directory.
    const std::u16string directory = zirvel::GetProgramDirectory();
    SetCurrentDirectoryW(reinterpret_cast<const wchar_t*>(directory.c_str()));

    zirvel::app::Win32EngineHost engine(instance, directory);
    // "Zakończ" destroys the main window, which lets go of the system; then the process ends.
    engine.Platform().SetMainWindowDestroyedHandler([] { PostQuitMessage(0); });
    zirvel::StartEngineOnce(true);

    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return 0;
}
