// Where the per-user lock and hand-over socket live.
#pragma once

#include <QString>

namespace zirvel::app {

// The name of the lock and of the local socket: one running engine per user.
inline constexpr char kInstanceName[] = "ZirvelEngineRunning";

// $XDG_RUNTIME_DIR (private to the user), else a folder of the user's own
// in the temporary directory, created with mode 0700.
QString RuntimeFolder();

}  // namespace zirvel::app
