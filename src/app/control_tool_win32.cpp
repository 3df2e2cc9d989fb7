// The tools' requests on Windows: a WM_COPYDATA record sent to the running
// engine's main window, answered with 1 when it was taken.
#include "app/control_tool.h"

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <cstring>
#include <string>
#include <vector>

#include "config/utf.h"
#include "platform/win32/engine_window_protocol.h"
#include "tools/console.h"

namespace zirvel::app {
namespace {

std::u16string AbsolutePath(const std::u16string& path) {
    const auto* wide = reinterpret_cast<const wchar_t*>(path.c_str());
    const DWORD needed = GetFullPathNameW(wide, 0, nullptr, nullptr);
    if (needed == 0) return path;
    std::u16string absolute(needed, u'\0');
    const DWORD written = GetFullPathNameW(wide, needed, reinterpret_cast<wchar_t*>(absolute.data()), nullptr);
    if (written == 0 || written >= needed) return path;
    absolute.resize(written);
    return absolute;
}

}  // namespace

int RunControlTool(int argc, char* argv[], const ControlTool& tool) {
    const std::vector<std::u16string> arguments = CommandLineArguments(argc, argv);
    if (arguments.size() != 1 || arguments[0].empty()) {
        WriteUtf8(stderr, std::string(tool.usage) + "\n");
        return 2;
    }
    const std::u16string argument = tool.argumentIsPath ? AbsolutePath(arguments[0]) : arguments[0];
    HWND engine = FindWindowW(win32::kMainWindowClass, nullptr);
    if (!engine) {
        WriteUtf8(stderr, "Zirvel nie działa.\n");
        return 3;
    }
    COPYDATASTRUCT data{};
    data.dwData = std::strcmp(tool.command, "activate") == 0 ? win32::kActivateWheelFileData : win32::kSayPhraseData;
    data.cbData = static_cast<DWORD>(argument.size() * sizeof(char16_t));
    data.lpData = const_cast<char16_t*>(argument.data());
    DWORD_PTR answer = 0;
    // A hung engine must not hang the tool.
    if (!SendMessageTimeoutW(engine, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data), SMTO_ABORTIFHUNG, 10000,
                             &answer)) {
        // User Interface Privilege Isolation blocks messages to a program of
        // higher integrity and says so only through the last error.
        if (GetLastError() == ERROR_ACCESS_DENIED) {
            WriteUtf8(stderr, "Zirvel działa jako administrator: uruchom to polecenie jako administrator.\n");
            return 4;
        }
        WriteUtf8(stderr, "Zirvel nie działa.\n");
        return 3;
    }
    if (answer == 1) {
        WriteUtf8(stdout, tool.doneMessage + Utf16ToUtf8(argument) + "\n");
        return 0;
    }
    WriteUtf8(stderr, tool.refusedMessage + Utf16ToUtf8(argument) + "\n");
    return 1;
}

}  // namespace zirvel::app
