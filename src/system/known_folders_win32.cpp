#include "system/known_folders.h"

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#include <knownfolders.h>
#include <shlobj.h>

namespace zirvel {
namespace {

std::u16string KnownFolder(REFKNOWNFOLDERID id) {
    PWSTR path = nullptr;
    std::u16string folder;
    if (SUCCEEDED(SHGetKnownFolderPath(id, KF_FLAG_DEFAULT, nullptr, &path))) {
        folder = reinterpret_cast<const char16_t*>(path);
    }
    CoTaskMemFree(path);  // also when the call failed, as documented
    return folder;
}

}  // namespace

std::vector<std::u16string> ProgramFilesFolders() {
    std::vector<std::u16string> folders;
    for (const std::u16string& folder : {KnownFolder(FOLDERID_ProgramFiles), KnownFolder(FOLDERID_ProgramFilesX86)}) {
        // A 32-bit Windows names one folder twice.
        if (!folder.empty() && (folders.empty() || CompareStringOrdinal(reinterpret_cast<LPCWCH>(folders[0].c_str()), -1,
                                                                        reinterpret_cast<LPCWCH>(folder.c_str()), -1,
                                                                        TRUE) != CSTR_EQUAL)) {
            folders.push_back(folder);
        }
    }
    return folders;
}

std::u16string SystemFolder() { return KnownFolder(FOLDERID_System); }

}  // namespace zirvel
