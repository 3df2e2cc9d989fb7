// zirvel-engine.exe: the engine without the front-end, for users who want
// only the wheel. It has a tray icon of its own, shows configuration
// problems in a box, and its window (from the tray) shows the help page.
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <memory>

#include "engine/canvas_renderer.h"
#include "engine/engine_lifecycle.h"
#include "engine/engine_state.h"
#include "engine/engine_gaze_thread.h"
#include "engine/engine_voice_thread.h"
#include "platform/win32/gdiplus_canvas.h"
#include "platform/win32/install_element_scanner.h"
#include "platform/win32/wave_in_capture.h"
#include "platform/win32/win32_platform.h"
#include "system/runtime_library.h"

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int) {
    // One engine per session, shared with Zirvel.exe; the handle stays open
    // until the process ends.
    CreateMutexW(nullptr, TRUE, L"ZirvelEngineRunning");
    if (GetLastError() == ERROR_ALREADY_EXISTS) {
        MessageBoxW(nullptr, L"Zirvel już działa — sprawdź ikonę w zasobniku systemowym.", L"Zirvel",
                    MB_OK | MB_ICONINFORMATION);
        return 0;
    }
    // The engine's files and icons/ resolve in the program directory.
    const std::u16string directory = zirvel::GetProgramDirectory();
    SetCurrentDirectoryW(reinterpret_cast<const wchar_t*>(directory.c_str()));

    zirvel::GdiplusCanvasFactory canvases;  // GDI+ is started once, here
    zirvel::win32::Win32Platform platform(instance);
    zirvel::ResetEngineState(platform, directory);
    zirvel::InstallCanvasRenderer(canvases);
    zirvel::InstallEngineVoiceThread([] { return std::make_unique<zirvel::win32::WaveInCapture>(); });
    zirvel::InstallEngineGazeThread();
    zirvel::win32::InstallElementScanner(platform);
    // "Zakończ" destroys the main window, which lets go of the system; then the process ends.
    platform.SetMainWindowDestroyedHandler([] { PostQuitMessage(0); });
    zirvel::StartEngineOnce(true);

    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    zirvel::RemoveCanvasRenderer();
    return 0;
}
