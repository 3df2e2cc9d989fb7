// Libraries loaded at run time (the speech recogniser, the eye tracker):
// load by path or by name, resolve a symbol. A loaded library is never
// unloaded, so what was resolved from it stays valid for the process.
#pragma once

#include <string>

namespace zirvel {

using LibraryHandle = void*;

// Loads the library at `path`; its own folder is searched first for the
// libraries it needs (LoadLibraryExW with LOAD_WITH_ALTERED_SEARCH_PATH on
// Windows; dlopen resolves them by its own rules). Null when it fails.
LibraryHandle LoadLibraryFromPath(const std::u16string& path);

// Loads a library by its file name through the system's search
// (LoadLibraryW, dlopen without a folder). Null when it fails.
LibraryHandle LoadLibraryByName(const std::u16string& fileName);

// Loads the library at `path` in a folder only an administrator can write,
// looking for the libraries it needs only beside it and in the system
// folder: on Windows never in the current folder or on PATH, which a
// standard user may write (LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR |
// LOAD_LIBRARY_SEARCH_SYSTEM32). Elsewhere as LoadLibraryFromPath.
LibraryHandle LoadLibraryFromProtectedFolder(const std::u16string& path);

// Loads a library by its file name from the system's own folders only: on
// Windows the System folder (SHGetKnownFolderPath), as
// LoadLibraryFromProtectedFolder; elsewhere dlopen's search.
LibraryHandle LoadSystemLibrary(const std::u16string& fileName);

// The address of an exported name, or null.
void* ResolveSymbol(LibraryHandle library, const char* name);

// ResolveSymbol into a function pointer of the entry's published type.
template <class Function>
void ResolveEntry(LibraryHandle library, const char* name, Function& entry) {
    entry = reinterpret_cast<Function>(ResolveSymbol(library, name));
}

// The folder of the running executable without a trailing separator, or
// "." when it cannot be told.
std::u16string GetProgramDirectory();

// The folder separator of the system's paths.
#ifdef _WIN32
inline constexpr char16_t kPathSeparator = u'\\';
#else
inline constexpr char16_t kPathSeparator = u'/';
#endif

// A path that names its file on its own rather than inside the program
// directory: one with a colon anywhere on Windows (a drive letter), one
// beginning with '/' on Linux.
bool IsFullPath(const std::u16string& path);

}  // namespace zirvel
