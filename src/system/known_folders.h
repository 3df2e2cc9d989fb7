// The folders Windows names for installed programs and for itself, as
// SHGetKnownFolderPath reports them: never spelt out, since they follow
// the system drive and the administrator's choices. By default only
// administrators can write them, unlike ProgramData (whose subfolders any
// user may add files to), the user's profile or folders on PATH.
#pragma once

#ifdef _WIN32

#include <string>
#include <vector>

namespace zirvel {

// FOLDERID_ProgramFiles, then FOLDERID_ProgramFilesX86 when it is another
// folder; those that cannot be told are left out.
std::vector<std::u16string> ProgramFilesFolders();

// FOLDERID_System; empty when it cannot be told.
std::u16string SystemFolder();

}  // namespace zirvel

#endif
