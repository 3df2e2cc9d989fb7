// Checking for a newer Zirvel. On Windows the WinSparkle library does it
// (its dialogs, download and installer), loaded at run time from the
// program's folder so that a missing WinSparkle.dll only means "no
// updates"; on Linux every call does nothing, since updates come through
// the package manager there. Call these from one thread (the GUI thread).
#pragma once

#include <string>

namespace zirvel::update {

// The update feed that WinSparkle reads.
inline constexpr const char* kAppcastUrl = "https://zirvel.app/appcast.xml";
inline constexpr const char* kCompanyName = "Zirvel";
inline constexpr const char* kApplicationName = "Zirvel";
inline constexpr const char* kVersion = "0.9.0";

// What WinSparkle is told at start. The names and the version are ASCII;
// WinSparkle takes them as wide strings.
struct UpdaterDetails {
    std::string appcastUrl = kAppcastUrl;
    std::string companyName = kCompanyName;
    std::string applicationName = kApplicationName;
    std::string version = kVersion;
    bool automaticChecks = true;
};

// Loads WinSparkle and starts it: the feed, the details, the automatic
// checks, then win_sparkle_init(). Does nothing when already started or
// when WinSparkle.dll or one of its functions is missing.
void StartUpdater(const UpdaterDetails& details = {});

// "Check for updates" pressed: WinSparkle's own dialog. Does nothing
// unless started.
void CheckForUpdatesWithUi();

// Before the program ends: WinSparkle stops its threads and the library is
// released. Does nothing unless started; a later StartUpdater() starts anew.
void StopUpdater();

}  // namespace zirvel::update
