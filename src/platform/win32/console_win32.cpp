// Unicode command lines and UTF-8 console output on Windows.
#include <windows.h>
#include <shellapi.h>

#include <string>
#include <vector>

namespace zirvel {

std::vector<std::u16string> Win32CommandLineArguments() {
    std::vector<std::u16string> arguments;
    int count = 0;
    LPWSTR* list = CommandLineToArgvW(GetCommandLineW(), &count);
    if (!list) return arguments;
    for (int i = 1; i < count; ++i) {
        arguments.emplace_back(reinterpret_cast<const char16_t*>(list[i]));
    }
    LocalFree(list);
    return arguments;
}

void Win32UseUtf8Console() {
    static const bool switched = SetConsoleOutputCP(CP_UTF8) != 0;
    (void)switched;
}

}  // namespace zirvel
