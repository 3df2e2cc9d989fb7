// The updater with the stand-in WinSparkle.dll beside this test program:
// which of WinSparkle's functions are called, in which order, with what.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "stand_in_log.h"
#include "update/updater.h"

namespace zirvel_test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using zirvel::update::CheckForUpdatesWithUi;
using zirvel::update::StartUpdater;
using zirvel::update::StopUpdater;

class WinSparkleUpdaterTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(std::filesystem::exists(WinSparkleBesideProgram())); }
    void TearDown() override { StopUpdater(); }

    StandInLog log_;
};

TEST_F(WinSparkleUpdaterTest, StartGivesTheFeedTheDetailsAutomaticChecksThenInit) {
    StartUpdater();
    EXPECT_THAT(log_.Calls(), ElementsAre("win_sparkle_set_appcast_url(https://zirvel.app/appcast.xml)",
                                          "win_sparkle_set_app_details(Zirvel, Zirvel, 0.9.0)",
                                          "win_sparkle_set_automatic_check_for_updates(1)",
                                          "win_sparkle_init()"));
}

TEST_F(WinSparkleUpdaterTest, CheckShowsWinSparklesDialogOnly) {
    StartUpdater();
    log_.Calls();
    CheckForUpdatesWithUi();
    EXPECT_THAT(log_.Calls(), ElementsAre("win_sparkle_check_update_with_ui()"));
}

TEST_F(WinSparkleUpdaterTest, StopCleansUpOnceAndLaterCallsDoNothing) {
    StartUpdater();
    log_.Calls();
    StopUpdater();
    EXPECT_THAT(log_.Calls(), ElementsAre("win_sparkle_cleanup()"));
    StopUpdater();
    CheckForUpdatesWithUi();
    EXPECT_THAT(log_.Calls(), IsEmpty());
}

TEST_F(WinSparkleUpdaterTest, NothingIsCalledBeforeStart) {
    CheckForUpdatesWithUi();
    StopUpdater();
    EXPECT_FALSE(log_.Exists());
}

TEST_F(WinSparkleUpdaterTest, ASecondStartWhileRunningDoesNothing) {
    StartUpdater();
    log_.Calls();
    StartUpdater();
    EXPECT_THAT(log_.Calls(), IsEmpty());
}

TEST_F(WinSparkleUpdaterTest, TheDetailsGivenAreWhatWinSparkleGets) {
    zirvel::update::UpdaterDetails details;
    details.appcastUrl = "https://example.invalid/feed.xml";
    details.version = "1.2.3";
    details.automaticChecks = false;
    StartUpdater(details);
    EXPECT_THAT(log_.Calls(), ElementsAre("win_sparkle_set_appcast_url(https://example.invalid/feed.xml)",
                                          "win_sparkle_set_app_details(Zirvel, Zirvel, 1.2.3)",
                                          "win_sparkle_set_automatic_check_for_updates(0)",
                                          "win_sparkle_init()"));
}

TEST_F(WinSparkleUpdaterTest, StartsAgainAfterStop) {
    StartUpdater();
    StopUpdater();
    log_.Calls();
    StartUpdater();
    CheckForUpdatesWithUi();
    StopUpdater();
    EXPECT_THAT(log_.Calls(), ElementsAre("win_sparkle_set_appcast_url(https://zirvel.app/appcast.xml)",
                                          "win_sparkle_set_app_details(Zirvel, Zirvel, 0.9.0)",
                                          "win_sparkle_set_automatic_check_for_updates(1)",
                                          "win_sparkle_init()", "win_sparkle_check_update_with_ui()",
                                          "win_sparkle_cleanup()"));
}

}  // namespace
}  // namespace zirvel_test
