#include "platform/win32/executable_directory.h"

#include <windows.h>

namespace zirvel::win32 {

std::u16string ExecutableDirectory() {
    std::u16string path(MAX_PATH, u'\0');
    for (int attempt = 0; attempt < 8; ++attempt) {
        const DWORD length =
            GetModuleFileNameW(nullptr, reinterpret_cast<wchar_t*>(path.data()), static_cast<DWORD>(path.size()));
        if (length == 0) return {};
        if (length < path.size()) {
            path.resize(length);
            break;
        }
        path.resize(path.size() * 2);  // cut off: a longer path
    }
    const std::size_t separator = path.find_last_of(u"\\/");
    return separator == std::u16string::npos ? std::u16string() : path.substr(0, separator);
}

}  // namespace zirvel::win32
