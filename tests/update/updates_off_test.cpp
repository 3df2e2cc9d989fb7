// The updater when WinSparkle cannot be used: built twice, into folders of
// their own, once with no WinSparkle.dll beside the program and once with
// a stand-in that lacks win_sparkle_cleanup. Every call must do nothing.
#include <gtest/gtest.h>

#include <windows.h>

#include <filesystem>

#include "stand_in_log.h"
#include "update/updater.h"

namespace zirvel_test {
namespace {

using zirvel::update::CheckForUpdatesWithUi;
using zirvel::update::StartUpdater;
using zirvel::update::StopUpdater;

#if defined(ZIRVEL_INCOMPLETE_STAND_IN)
TEST(UpdatesOffTest, TheDllBesideTheProgramLoadsButLacksCleanup) {
    const HMODULE library = LoadLibraryW(WinSparkleBesideProgram().wstring().c_str());
    ASSERT_NE(library, nullptr);
    EXPECT_NE(GetProcAddress(library, "win_sparkle_init"), nullptr);
    EXPECT_EQ(GetProcAddress(library, "win_sparkle_cleanup"), nullptr);
    FreeLibrary(library);
}
#else
TEST(UpdatesOffTest, NoDllLiesBesideTheProgram) {
    EXPECT_FALSE(std::filesystem::exists(WinSparkleBesideProgram()));
}
#endif

TEST(UpdatesOffTest, EveryCallDoesNothing) {
    StandInLog log;
    StartUpdater();
    CheckForUpdatesWithUi();
    StopUpdater();
    StartUpdater();
    CheckForUpdatesWithUi();
    CheckForUpdatesWithUi();
    StopUpdater();
    StopUpdater();
    EXPECT_FALSE(log.Exists());
}

}  // namespace
}  // namespace zirvel_test
