#include "app/engine_instance_win32.h"

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

namespace zirvel::app {

bool TakeEngineInstance() {
    // The handle stays open until the process ends.
    const HANDLE mutex = CreateMutexW(nullptr, TRUE, L"ZirvelEngineRunning");
    const DWORD error = GetLastError();
    if (mutex == nullptr) return error != ERROR_ACCESS_DENIED;  // another failure does not stop the program
    return error != ERROR_ALREADY_EXISTS;
}

}  // namespace zirvel::app
