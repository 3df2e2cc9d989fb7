// The engine on the Windows desktop: GDI+ pictures, the engine's windows,
// the microphone, the eye tracker and the element scanner, as both Windows
// programs (Zirvel.exe and zirvel-engine.exe) host it.
#pragma once

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <string>

#include "platform/win32/gdiplus_canvas.h"
#include "platform/win32/win32_platform.h"

namespace zirvel::app {

class Win32EngineHost {
public:
    // Makes the engine's windows and installs its parts; the engine itself
    // starts with StartEngineOnce (or OverlayEngineStart).
    Win32EngineHost(HINSTANCE instance, const std::u16string& programDirectory);
    ~Win32EngineHost();
    Win32EngineHost(const Win32EngineHost&) = delete;
    Win32EngineHost& operator=(const Win32EngineHost&) = delete;

    win32::Win32Platform& Platform() { return platform_; }

private:
    GdiplusCanvasFactory canvases_;  // GDI+ starts before the first window and ends after the last
    win32::Win32Platform platform_;
};

}  // namespace zirvel::app
