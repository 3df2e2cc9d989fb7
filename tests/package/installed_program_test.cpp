// The program as the Debian package installs it, unpacked into a scratch
// root: started from there on a private X server, it keeps its files in
// the user's folder ($XDG_CONFIG_HOME/zirvel), writes nothing beside
// itself, reads what it ships from share/zirvel, and its hot key shows the
// wheel.
#include <gtest/gtest.h>

#include <X11/keysym.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <thread>

#include "program_windows.h"
#include "x_session.h"

namespace zirvel_test {
namespace {

using namespace std::chrono_literals;

const std::filesystem::path kRoot = ZIRVEL_PACKAGE_ROOT;

std::vector<std::string> FilesIn(const std::filesystem::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) names.push_back(entry.path().filename());
    std::sort(names.begin(), names.end());
    return names;
}

class InstalledProgramTest : public ::testing::Test {
protected:
    InstalledProgramTest() : server_(1280, 1024), user_(server_.Name()), home_(ScratchDirectory("zirvel_home_")) {}
    ~InstalledProgramTest() override { std::filesystem::remove_all(home_); }

    std::unique_ptr<ChildProcess> Start(const std::string& program, const std::vector<std::string>& arguments = {}) {
        std::vector<std::string> command{(kRoot / "usr/bin" / program).string()};
        command.insert(command.end(), arguments.begin(), arguments.end());
        return std::make_unique<ChildProcess>(
            command,
            std::vector<std::string>{"DISPLAY=" + server_.Name(), "HOME=" + home_.string(),
                                     "XDG_CONFIG_HOME=" + (home_ / "config").string(),
                                     "XDG_RUNTIME_DIR=" + home_.string(),
                                     // No session bus: nothing reaches the developer's.
                                     "DBUS_SESSION_BUS_ADDRESS=unix:path=" + (home_ / "no-bus").string(),
                                     // The loader says which files it loads: the recogniser's among them.
                                     "LD_DEBUG=files"},
            home_ / "output.txt");
    }

    PrivateXServer server_;
    XConnection user_;
    std::filesystem::path home_;
};

TEST_F(InstalledProgramTest, StartsWithItsFilesInTheUsersFolderAndTheHotKeyShowsTheWheel) {
    ASSERT_TRUE(std::filesystem::exists(kRoot / "usr/bin/zirvel")) << "no unpacked package at " << kRoot;
    const std::vector<std::string> installedBin = FilesIn(kRoot / "usr/bin");
    auto program = Start("zirvel");
    const std::filesystem::path files = home_ / "config" / "zirvel";
    ASSERT_TRUE(WaitUntil(
        [&] {
            return std::filesystem::exists(files / "config.json") && std::filesystem::exists(files / "default.json") &&
                   std::filesystem::exists(files / "voice.json");
        },
        10s))
        << "the first-run files were not made in " << files;
    EXPECT_EQ(FilesIn(kRoot / "usr/bin"), installedBin) << "the program wrote beside itself";
    // The voice thread finds the recogniser in the package's private folder
    // (through the program's run path, $ORIGIN/../<private library folder>).
    const std::string recogniser = (kRoot / "usr/bin/.." / ZIRVEL_PRIVATE_LIBDIR / "libvosk.so").string();
    EXPECT_TRUE(WaitUntil(
        [&] {
            std::ifstream output(home_ / "output.txt");
            const std::string text((std::istreambuf_iterator<char>(output)), std::istreambuf_iterator<char>());
            return text.find("calling init: " + recogniser) != std::string::npos;
        },
        10s, 100ms))
        << "the recogniser was not loaded from " << recogniser;
    EXPECT_FALSE(std::filesystem::exists(kRoot / "usr/share/zirvel/config.json"));

    // The window opens, in the fluent theme read from share/zirvel/themes
    // (its sidebar's selected row is the theme's blue).
    const Window window = FindMainWindow(user_, 10s);
    ASSERT_NE(window, 0u) << "the main window did not show";
    const XConnection::Geometry area = user_.WindowGeometry(window);
    const XConnection::Geometry sidebar{area.x, area.y, 190, area.height};
    // Once painted (at most 5 s).
    WaitUntil([&] { return FilledBounds(user_, sidebar, 0x185FA5).width > 0; }, 5s, 50ms);
    EXPECT_GT(FilledBounds(user_, sidebar, 0x185FA5).width, 0) << "the window is not in the shipped fluent theme";

    // The hot key ("x" in the first-run config.json) shows the wheel.
    XSetInputFocus(user_.Get(), user_.Root(), RevertToParent, CurrentTime);
    user_.PressKey(XK_x);
    EXPECT_TRUE(WaitUntil([&] { return user_.IsMapped(user_.FindWindow("Zirvel — koło")); }, 5s))
        << "the wheel did not show";
    // The installed tools reach it.
    auto say = Start("zirvel-say", {"pokaż siatkę"});
    EXPECT_EQ(say->WaitForExit(10s), std::optional<int>(0));
    program->Terminate();
    EXPECT_EQ(program->WaitForExit(10s), std::optional<int>(0));
}

}  // namespace
}  // namespace zirvel_test
