#include "system/runtime_library.h"

#include <dlfcn.h>
#include <unistd.h>

#include <vector>

#include "config/utf.h"

namespace zirvel {

LibraryHandle LoadLibraryFromPath(const std::u16string& path) {
    // A name without '/' would make dlopen search; a path is taken as it is.
    const std::string file = path.find(u'/') == std::u16string::npos ? "./" + Utf16ToUtf8(path) : Utf16ToUtf8(path);
    return dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
}

LibraryHandle LoadLibraryByName(const std::u16string& fileName) {
    return dlopen(Utf16ToUtf8(fileName).c_str(), RTLD_NOW | RTLD_LOCAL);
}

LibraryHandle LoadLibraryFromProtectedFolder(const std::u16string& path) { return LoadLibraryFromPath(path); }

LibraryHandle LoadSystemLibrary(const std::u16string& fileName) { return LoadLibraryByName(fileName); }

void* ResolveSymbol(LibraryHandle library, const char* name) {
    return library ? dlsym(library, name) : nullptr;
}

std::u16string GetProgramDirectory() {
    std::vector<char> buffer(4096);
    const ssize_t length = readlink("/proc/self/exe", buffer.data(), buffer.size() - 1);
    if (length <= 0) return u".";
    const std::string path(buffer.data(), static_cast<std::size_t>(length));
    const std::size_t separator = path.rfind('/');
    if (separator == std::string::npos) return u".";
    return Utf8ToUtf16(path.substr(0, separator == 0 ? 1 : separator));
}

bool IsFullPath(const std::u16string& path) { return !path.empty() && path.front() == u'/'; }

}  // namespace zirvel
