// Whether another program's windows are within Zirvel's reach. User
// Interface Privilege Isolation keeps a process from sending input to,
// hooking or reading the windows of a process of higher integrity (a
// program run as administrator), and SendInput does not say so: "neither
// GetLastError nor the return value will indicate the failure was caused by
// UIPI blocking".
#pragma once

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <optional>

namespace zirvel::win32 {

// The mandatory integrity level of a process (SECURITY_MANDATORY_*_RID),
// or nothing when its token cannot be read.
std::optional<DWORD> IntegrityLevel(HANDLE process);

// True when `window`'s process runs at a higher integrity level than this
// one, or when this process may not even read its token. A process with
// uiAccess reaches every window.
bool WindowOutOfReach(HWND window);

}  // namespace zirvel::win32
