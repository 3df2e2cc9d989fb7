// Gives the engine the Windows element scanner, for every program that
// hosts the engine on Windows (zirvel-engine.exe, Zirvel.exe).
#pragma once

namespace zirvel::win32 {

class Win32Platform;

// Call once the platform's windows exist and before the engine starts. The
// scanner is never destroyed: a scan on its detached thread may still run
// when the message loop ends.
void InstallElementScanner(const Win32Platform& platform);

}  // namespace zirvel::win32
