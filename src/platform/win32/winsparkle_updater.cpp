// Windows: WinSparkle.dll from the program's folder, looked up function by
// function at run time. Zirvel does not ship the DLL; without it, or with a
// DLL that lacks one of the six functions, updates are simply off (no
// message: the program works the same without them).
#include <windows.h>

#include <string>

#include "update/updater.h"

namespace zirvel::update {

namespace {

using SetAppcastUrl = void(__cdecl*)(const char*);
using SetAppDetails = void(__cdecl*)(const wchar_t*, const wchar_t*, const wchar_t*);
using SetAutomaticCheck = void(__cdecl*)(int);
using NoArguments = void(__cdecl*)();

struct WinSparkle {
    HMODULE library = nullptr;
    SetAppcastUrl setAppcastUrl = nullptr;
    SetAppDetails setAppDetails = nullptr;
    SetAutomaticCheck setAutomaticCheckForUpdates = nullptr;
    NoArguments init = nullptr;
    NoArguments checkUpdateWithUi = nullptr;
    NoArguments cleanup = nullptr;
};

// Set between a successful StartUpdater() and StopUpdater().
WinSparkle started;

// The full path, so that a WinSparkle.dll in the current folder or on PATH
// is never picked up instead.
std::wstring LibraryBesideProgram() {
    std::wstring path(MAX_PATH, L'\0');
    for (int attempt = 0; attempt < 8; ++attempt) {
        const DWORD length = GetModuleFileNameW(nullptr, path.data(), DWORD(path.size()));
        if (length == 0) {
            return {};
        }
        if (length < path.size()) {
            path.resize(length);
            return path.substr(0, path.find_last_of(L"\\/") + 1) + L"WinSparkle.dll";
        }
        path.resize(path.size() * 2);
    }
    return {};
}

template <typename Function>
bool Find(HMODULE library, const char* name, Function& function) {
    function = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name)));
    return function != nullptr;
}

// All six functions, or none: a partial WinSparkle is not started.
bool Load(WinSparkle& winSparkle) {
    const std::wstring path = LibraryBesideProgram();
    if (path.empty()) {
        return false;
    }
    winSparkle.library = LoadLibraryW(path.c_str());
    if (winSparkle.library == nullptr) {
        return false;
    }
    const HMODULE library = winSparkle.library;
    if (Find(library, "win_sparkle_set_appcast_url", winSparkle.setAppcastUrl) &&
        Find(library, "win_sparkle_set_app_details", winSparkle.setAppDetails) &&
        Find(library, "win_sparkle_set_automatic_check_for_updates", winSparkle.setAutomaticCheckForUpdates) &&
        Find(library, "win_sparkle_init", winSparkle.init) &&
        Find(library, "win_sparkle_check_update_with_ui", winSparkle.checkUpdateWithUi) &&
        Find(library, "win_sparkle_cleanup", winSparkle.cleanup)) {
        return true;
    }
    FreeLibrary(library);
    winSparkle = {};
    return false;
}

std::wstring Widened(const std::string& ascii) { return std::wstring(ascii.begin(), ascii.end()); }

}  // namespace

void StartUpdater(const UpdaterDetails& details) {
    if (started.library != nullptr) {
        return;
    }
    WinSparkle winSparkle;
    if (!Load(winSparkle)) {
        return;
    }
    winSparkle.setAppcastUrl(details.appcastUrl.c_str());
    winSparkle.setAppDetails(Widened(details.companyName).c_str(), Widened(details.applicationName).c_str(),
                             Widened(details.version).c_str());
    winSparkle.setAutomaticCheckForUpdates(details.automaticChecks ? 1 : 0);
    winSparkle.init();
    started = winSparkle;
}

void CheckForUpdatesWithUi() {
    if (started.library != nullptr) {
        started.checkUpdateWithUi();
    }
}

void StopUpdater() {
    if (started.library == nullptr) {
        return;
    }
    started.cleanup();
    FreeLibrary(started.library);
    started = {};
}

}  // namespace zirvel::update
