// The Windows packages as a user meets them, under Wine: the installer run
// silently installs per user with Start-menu shortcuts, the installed
// Zirvel.exe starts and makes its files in its folder, and the uninstaller
// removes the program but leaves the user's files; neither touches a file
// while Zirvel runs; the portable zip runs from wherever it is unpacked.
// The packages are signed with the test's own certificate
// (make-code-signing-certificate.sh), and every program and library in
// them, the installer and the uninstaller carry a valid signature.
#include <gtest/gtest.h>

#include <X11/keysym.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <thread>

#include "program_windows.h"
#include "wine_session.h"

namespace zirvel_test {
namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

const fs::path kPackages = ZIRVEL_WINDOWS_PACKAGES;
const fs::path kCertificates = ZIRVEL_SIGNING_CERTIFICATES;
// What the installer and the uninstaller end with when Zirvel runs.
constexpr int kZirvelRuns = 2;

fs::path OnlyPackage(const std::string& extension, const fs::path& folder = kPackages) {
    for (const auto& entry : fs::directory_iterator(folder)) {
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
        return StartEngine(folder, "Zirvel.exe") && FindMainWindow(session_.User(), 20s) != 0;
    }

    // Starts the folder's program: true once its engine answers.
    bool StartEngine(const fs::path& folder, const std::string& program) {
        program_ = session_.StartProgram({(folder / program).string()});
        return WaitUntil(
            [&] { return Run({(folder / "zirvel-say.exe").string(), "schowaj siatkę"}, 30s) == 0; }, 60s, 200ms);
    }

    static fs::path InstallFolder() { return WineSession::UserProfile() / "AppData/Local/Programs/Zirvel"; }

    // A window of the installer (titled in the language it chose for the
    // system's) that is not among `before` and shows; 0 when none comes.
    ::Window WaitForInstallerWindow(const std::vector<::Window>& before) {
        ::Window found = 0;
        WaitUntil(
            [&] {
                for (const char* caption : {"Instalator Zirvel", "Zirvel Setup"}) {
                    for (::Window window : session_.User().FindWindows(caption)) {
                        if (std::find(before.begin(), before.end(), window) == before.end() &&
                            session_.User().IsMapped(window)) {
                            found = window;
                        }
                    }
                }
                return found != 0;
            },
            60s, 100ms);
        return found;
    }

    void Answer(::Window box, KeySym key) {
        XSetInputFocus(session_.User().Get(), box, RevertToParent, CurrentTime);
        XSync(session_.User().Get(), False);
        std::this_thread::sleep_for(200ms);  // the focus reaches Wine's window
        session_.User().PressKey(key);
    }

    void SaveScreenshot(const std::string& name) {
        fs::create_directories(ZIRVEL_SCREENSHOTS);
        EXPECT_TRUE(session_.Screenshot(fs::path(ZIRVEL_SCREENSHOTS) / name));
    }

    WineSession session_;
    std::unique_ptr<ChildProcess> program_;
};

TEST_F(WindowsPackageTest, TheInstallerInstallsPerUserAndItsUninstallerKeepsTheUsersFiles) {
    const fs::path installer = OnlyPackage(".exe");
    ASSERT_FALSE(installer.empty()) << "no installer in " << kPackages;
    const fs::path profile = WineSession::UserProfile();
    const fs::path folder = InstallFolder();
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

// Zirvel installed and its engine running, with a file that the installer
// would replace marked, to see whether it was.
class RunningZirvelTest : public WindowsPackageTest {
protected:
    void SetUp() override {
        WindowsPackageTest::SetUp();
        if (HasFatalFailure()) return;
        installer_ = OnlyPackage(".exe");
        ASSERT_FALSE(installer_.empty()) << "no installer in " << kPackages;
        fs::remove_all(folder_);
        ASSERT_EQ(Run({installer_.string(), "/S"}), 0);
        ASSERT_TRUE(StartEngine(folder_, "zirvel-engine.exe")) << "the installed zirvel-engine.exe did not start";
        std::ofstream(theme_, std::ios::app) << "/* marked */";
        marked_ = fs::file_size(theme_);
    }

    void TearDown() override {
        session_.EndAllPrograms();
        fs::remove_all(folder_);
    }

    bool ThemeUnchanged() const { return fs::exists(theme_) && fs::file_size(theme_) == marked_; }

    fs::path installer_;
    const fs::path folder_ = InstallFolder();
    const fs::path theme_ = folder_ / "themes/fluent.qss";
    std::uintmax_t marked_ = 0;
};

TEST_F(RunningZirvelTest, NeitherTheInstallerNorTheUninstallerTouchesTheFilesWhileZirvelRuns) {
    EXPECT_EQ(Run({installer_.string(), "/S"}), kZirvelRuns);
    EXPECT_TRUE(ThemeUnchanged()) << "the installer replaced a file while Zirvel ran";
    // In place (_?=), so its own exit code tells.
    const std::string inPlace = "_?=" + WineSession::WindowsPath(folder_);
    EXPECT_EQ(Run({(folder_ / "Odinstaluj.exe").string(), "/S", inPlace}), kZirvelRuns);
    EXPECT_TRUE(fs::exists(folder_ / "zirvel-engine.exe")) << "the uninstaller removed files while Zirvel ran";
    EXPECT_TRUE(ThemeUnchanged());
    EXPECT_EQ(Run({(folder_ / "zirvel-say.exe").string(), "schowaj siatkę"}, 30s), 0) << "Zirvel no longer runs";

    // Once it has ended, both do their work.
    session_.EndAllPrograms();
    EXPECT_EQ(Run({installer_.string(), "/S"}), 0);
    EXPECT_FALSE(ThemeUnchanged()) << "the installer did not replace the file";
    EXPECT_EQ(Run({(folder_ / "Odinstaluj.exe").string(), "/S", inPlace}), 0);
    EXPECT_FALSE(fs::exists(folder_ / "zirvel-engine.exe"));
}

TEST_F(RunningZirvelTest, TheInstallerAsksUntilZirvelHasEndedAndCancellingLeavesTheFiles) {
    auto interactive = session_.StartProgram({installer_.string()});
    const ::Window question = WaitForInstallerWindow({});
    ASSERT_NE(question, 0u) << "the installer did not ask";
    std::this_thread::sleep_for(300ms);  // painted
    SaveScreenshot("installer-zirvel-runs.png");
    // Retry (the default button) while Zirvel still runs: asked again.
    Answer(question, XK_Return);
    ASSERT_TRUE(WaitUntil([&] { return !session_.User().IsMapped(question); }, 10s)) << "the question stayed";
    const ::Window again = WaitForInstallerWindow({question});
    ASSERT_NE(again, 0u) << "the installer went on while Zirvel ran";
    // Cancel: the installer ends and has touched nothing.
    Answer(again, XK_Escape);
    EXPECT_EQ(interactive->WaitForExit(30s), std::optional<int>(kZirvelRuns));
    EXPECT_TRUE(ThemeUnchanged());
}

// osslsigncode's verdict on a file's signature, trusting only `authority`.
bool SignatureVerifies(const fs::path& file, const fs::path& authority = kCertificates / "ca.pem") {
    ChildProcess verify({"osslsigncode", "verify", "-CAfile", authority.string(), "-TSA-CAfile", authority.string(),
                         "-in", file.string()},
                        {}, "/dev/null");
    return verify.WaitForExit(60s) == std::optional<int>(0);
}

// Every program and library below `folder`, and of those the ones whose
// signature does not verify.
struct Binaries {
    std::vector<fs::path> all;
    std::vector<fs::path> unverified;
};

Binaries ProgramsAndLibraries(const fs::path& folder) {
    Binaries binaries;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        const std::string extension = entry.path().extension().string();
        if (extension != ".exe" && extension != ".dll") continue;
        binaries.all.push_back(entry.path());
        if (!SignatureVerifies(entry.path())) binaries.unverified.push_back(entry.path());
    }
    return binaries;
}

// The zip unpacked into a scratch folder; empty when it could not be.
fs::path Unpack(const fs::path& zip) {
    const fs::path unpacked = ScratchDirectory("zirvel_zip_");
    ChildProcess unzip({"unzip", "-q", zip.string(), "-d", unpacked.string()}, {}, "/dev/null");
    return unzip.WaitForExit(60s) == std::optional<int>(0) ? unpacked : fs::path();
}

// The programs, Qt and its plugins, the C++ runtime, the recogniser.
constexpr std::size_t kLeastBinaries = 15;

TEST_F(WindowsPackageTest, TheInstallerAndEveryProgramAndLibraryItInstallsAreSigned) {
    const fs::path installer = OnlyPackage(".exe");
    ASSERT_FALSE(installer.empty()) << "no installer in " << kPackages;
    EXPECT_TRUE(SignatureVerifies(installer));
    // Checked against an authority that did not issue the certificate: refused.
    EXPECT_FALSE(SignatureVerifies(installer, kCertificates / "other-ca.pem"));

    const fs::path folder = InstallFolder();
    fs::remove_all(folder);
    ASSERT_EQ(Run({installer.string(), "/S"}), 0);
    const Binaries installed = ProgramsAndLibraries(folder);
    EXPECT_GE(installed.all.size(), kLeastBinaries);
    EXPECT_NE(std::find(installed.all.begin(), installed.all.end(), folder / "Odinstaluj.exe"), installed.all.end());
    EXPECT_EQ(installed.unverified, std::vector<fs::path>{}) << "these are not signed";
    fs::remove_all(folder);
}

TEST_F(WindowsPackageTest, EveryProgramAndLibraryInThePortableZipIsSigned) {
    const fs::path zip = OnlyPackage(".zip");
    ASSERT_FALSE(zip.empty()) << "no zip in " << kPackages;
    const fs::path unpacked = Unpack(zip);
    ASSERT_FALSE(unpacked.empty());
    const Binaries binaries = ProgramsAndLibraries(unpacked);
    EXPECT_GE(binaries.all.size(), kLeastBinaries);
    EXPECT_EQ(binaries.unverified, std::vector<fs::path>{}) << "these are not signed";
    fs::remove_all(unpacked);
}

TEST_F(WindowsPackageTest, WithoutACertificateThePackagesFilesAreReportedUnsigned) {
    const fs::path zip = OnlyPackage(".zip", ZIRVEL_UNSIGNED_PACKAGES);
    ASSERT_FALSE(zip.empty()) << "no zip in " << ZIRVEL_UNSIGNED_PACKAGES;
    const fs::path unpacked = Unpack(zip);
    ASSERT_FALSE(unpacked.empty());
    const Binaries binaries = ProgramsAndLibraries(unpacked);
    EXPECT_GE(binaries.all.size(), kLeastBinaries);
    EXPECT_EQ(binaries.unverified, binaries.all) << "some are signed";
    fs::remove_all(unpacked);
}

TEST_F(WindowsPackageTest, ThePortableZipRunsFromWhereverItIsUnpacked) {
    const fs::path zip = OnlyPackage(".zip");
    ASSERT_FALSE(zip.empty()) << "no zip in " << kPackages;
    const fs::path unpacked = Unpack(zip);
    ASSERT_FALSE(unpacked.empty());
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
