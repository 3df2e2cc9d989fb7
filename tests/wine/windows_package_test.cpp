// The Windows packages as a user meets them, under Wine: the installer run
// silently installs per user with Start-menu shortcuts, the installed
// Zirvel.exe starts and makes its files in its folder, and the uninstaller
// removes the program but leaves the user's files; the portable zip runs
// from wherever it is unpacked.
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

#include "program_windows.h"
#include "wine_session.h"

namespace zirvel_test {
namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

const fs::path kPackages = ZIRVEL_WINDOWS_PACKAGES;

fs::path OnlyPackage(const std::string& extension) {
    for (const auto& entry : fs::directory_iterator(kPackages)) {
        if (entry.path().extension() == extension) return entry.path();
    }
    return {};
}

class WindowsPackageTest : public ::testing::Test {
protected:
    WindowsPackageTest() : session_("", "") {}

    void SetUp() override { ASSERT_TRUE(session_.Ready()) << "no Xvfb, or no Wine prefix in the Windows build"; }

    int Run(const std::vector<std::string>& command, std::chrono::milliseconds timeout = 120s) {
        return session_.StartProgram(command)->WaitForExit(timeout).value_or(-1);
    }

    // Starts the folder's Zirvel.exe: true once its engine answers and its window shows.
    bool StartZirvel(const fs::path& folder) {
        program_ = session_.StartProgram({(folder / "Zirvel.exe").string()});
        const bool answers = WaitUntil(
            [&] { return Run({(folder / "zirvel-say.exe").string(), "schowaj siatkę"}, 30s) == 0; }, 60s, 200ms);
        return answers && FindMainWindow(session_.User(), 20s) != 0;
    }

    WineSession session_;
    std::unique_ptr<ChildProcess> program_;
};

TEST_F(WindowsPackageTest, TheInstallerInstallsPerUserAndItsUninstallerKeepsTheUsersFiles) {
    const fs::path installer = OnlyPackage(".exe");
    ASSERT_FALSE(installer.empty()) << "no installer in " << kPackages;
    const fs::path profile = WineSession::UserProfile();
    const fs::path folder = profile / "AppData/Local/Programs/Zirvel";
    const fs::path menu = profile / "AppData/Roaming/Microsoft/Windows/Start Menu/Programs/Zirvel";
    fs::remove_all(folder);

    ASSERT_EQ(Run({installer.string(), "/S"}), 0);
    for (const char* file : {"Zirvel.exe", "zirvel-engine.exe", "zirvel-say.exe", "zirvel-activate.exe",
                             "Qt6Core.dll", "platforms/qwindows.dll", "libvosk.dll", "themes/fluent.qss",
                             "zirvel.ico", "Odinstaluj.exe"}) {
        EXPECT_TRUE(fs::exists(folder / file)) << file << " was not installed";
    }
    EXPECT_TRUE(fs::exists(menu / "Zirvel.lnk"));
    EXPECT_TRUE(fs::exists(menu / "Odinstaluj Zirvel.lnk"));

    // Started from the Start menu's target, it makes its files beside itself.
    ASSERT_TRUE(StartZirvel(folder)) << "the installed Zirvel.exe did not start";
    for (const char* file : {"config.json", "default.json", "voice.json"}) {
        EXPECT_TRUE(fs::exists(folder / file)) << file << " was not made on the first start";
    }
    std::ofstream(folder / "moje-kola.json") << R"({"wheels": []})";
    session_.EndAllPrograms();

    // The uninstaller runs on from a copy of itself: wait for the files to go.
    ASSERT_EQ(Run({(folder / "Odinstaluj.exe").string(), "/S"}), 0);
    EXPECT_TRUE(WaitUntil([&] { return !fs::exists(folder / "Zirvel.exe") && !fs::exists(folder / "Odinstaluj.exe"); },
                          60s, 200ms))
        << "the program was not removed";
    EXPECT_FALSE(fs::exists(folder / "Qt6Core.dll"));
    EXPECT_FALSE(fs::exists(folder / "themes"));
    EXPECT_FALSE(fs::exists(menu));
    for (const char* file : {"config.json", "default.json", "voice.json", "moje-kola.json"}) {
        EXPECT_TRUE(fs::exists(folder / file)) << "the uninstaller removed the user's " << file;
    }
    fs::remove_all(folder);
}

TEST_F(WindowsPackageTest, ThePortableZipRunsFromWhereverItIsUnpacked) {
    const fs::path zip = OnlyPackage(".zip");
    ASSERT_FALSE(zip.empty()) << "no zip in " << kPackages;
    const fs::path unpacked = ScratchDirectory("zirvel_zip_");
    ChildProcess unzip({"unzip", "-q", zip.string(), "-d", unpacked.string()}, {}, "/dev/null");
    ASSERT_EQ(unzip.WaitForExit(60s), std::optional<int>(0));
    const fs::path folder = unpacked / zip.stem();
    ASSERT_TRUE(fs::exists(folder / "Zirvel.exe")) << "the zip has no folder " << zip.stem();
    EXPECT_FALSE(fs::exists(folder / "config.json")) << "the first-run files come from the first start";
    ASSERT_TRUE(StartZirvel(folder)) << "Zirvel.exe did not start from the unpacked zip";
    EXPECT_TRUE(fs::exists(folder / "config.json"));
    session_.EndAllPrograms();
    fs::remove_all(unpacked);
}

}  // namespace
}  // namespace zirvel_test
