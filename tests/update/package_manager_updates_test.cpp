// Linux: updates come through the package manager; the updater's calls
// exist and do nothing, so the program's "check for updates" button can
// call them on every platform.
#include <gtest/gtest.h>

#include <string>

#include "update/updater.h"

namespace zirvel_test {
namespace {

TEST(PackageManagerUpdatesTest, EveryCallReturnsInAnyOrder) {
    zirvel::update::CheckForUpdatesWithUi();
    zirvel::update::StopUpdater();
    zirvel::update::StartUpdater();
    zirvel::update::StartUpdater();
    zirvel::update::CheckForUpdatesWithUi();
    zirvel::update::StopUpdater();
}

TEST(PackageManagerUpdatesTest, TheDefaultDetailsNameTheFeedAndThisVersion) {
    const zirvel::update::UpdaterDetails details;
    EXPECT_EQ(details.appcastUrl, "https://zirvel.app/appcast.xml");
    EXPECT_EQ(details.companyName, "Zirvel");
    EXPECT_EQ(details.applicationName, "Zirvel");
    EXPECT_EQ(details.version, "0.9.0");
    EXPECT_TRUE(details.automaticChecks);
}

}  // namespace
}  // namespace zirvel_test
