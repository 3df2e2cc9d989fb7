#include "system/runtime_library.h"

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include "system/known_folders.h"

namespace zirvel {
namespace {

const wchar_t* Wide(const std::u16string& text) { return reinterpret_cast<const wchar_t*>(text.c_str()); }

}  // namespace

LibraryHandle LoadLibraryFromPath(const std::u16string& path) {
    return LoadLibraryExW(Wide(path), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
}

LibraryHandle LoadLibraryByName(const std::u16string& fileName) { return LoadLibraryW(Wide(fileName)); }

LibraryHandle LoadLibraryFromProtectedFolder(const std::u16string& path) {
    return LoadLibraryExW(Wide(path), nullptr, LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR | LOAD_LIBRARY_SEARCH_SYSTEM32);
}

LibraryHandle LoadSystemLibrary(const std::u16string& fileName) {
    const std::u16string folder = SystemFolder();
    if (folder.empty()) return nullptr;
    return LoadLibraryFromProtectedFolder(folder + kPathSeparator + fileName);
}

void* ResolveSymbol(LibraryHandle library, const char* name) {
    if (!library) return nullptr;
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library), name));
}

std::u16string GetProgramDirectory() {
    std::u16string path(MAX_PATH, u'\0');
    for (int attempt = 0; attempt < 8; ++attempt) {
        const DWORD length =
            GetModuleFileNameW(nullptr, reinterpret_cast<wchar_t*>(path.data()), static_cast<DWORD>(path.size()));
        if (length == 0) return u".";
        if (length < path.size()) {
            path.resize(length);
            break;
        }
        path.resize(path.size() * 2);  // cut off: a longer path
    }
    const std::size_t separator = path.find_last_of(u'\\');
    return separator == std::u16string::npos ? std::u16string(u".") : path.substr(0, separator);
}

bool IsFullPath(const std::u16string& path) { return path.find(u':') != std::u16string::npos; }

}  // namespace zirvel
