// Where the tracker's library is looked for: the configured path, the
// program directory, the system's own folders, then the vendor's folders
// three deep; never a folder a standard user can write.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cwctype>
#include <filesystem>
#include <fstream>
#include <string>

#include "gaze/tracker_api.h"
#include "stand_in_tracker.h"

namespace zirvel::gaze_test {
namespace {

class TrackerSearchTest : public ::testing::Test {
protected:
    void SetUp() override {
        static int counter = 0;
        root_ = std::filesystem::temp_directory_path() / ("zirvel_tracker_search_" + std::to_string(++counter));
        std::filesystem::remove_all(root_);
        std::filesystem::create_directories(root_);
    }
    void TearDown() override {
        std::error_code ignored;
        std::filesystem::remove_all(root_, ignored);
    }

    // Puts the stand-in library at root/relative.
    std::filesystem::path PlaceLibrary(const std::filesystem::path& relative) {
        const std::filesystem::path folder = root_ / relative;
        std::filesystem::create_directories(folder);
        const std::filesystem::path file = folder / std::filesystem::path(kTrackerLibraryFileName);
        std::filesystem::copy_file(StandInTrackerLibrary("full"), file);
        return file;
    }

    std::vector<std::filesystem::path> Found() {
        std::vector<std::filesystem::path> found;
        FindFileRecursive(root_, kTrackerLibraryFileName, 3, found);
        return found;
    }

    std::filesystem::path root_;
};

#ifdef _WIN32
// A folder Windows names in the environment, as its known folder is.
std::filesystem::path EnvironmentFolder(const wchar_t* name) {
    const wchar_t* value = _wgetenv(name);
    return value ? std::filesystem::path(value) : std::filesystem::path();
}

bool IsUnder(const std::filesystem::path& path, const std::filesystem::path& folder) {
    std::wstring inside = path.wstring();
    std::wstring outer = folder.wstring() + L"\\";
    const auto lower = [](std::wstring& text) {
        std::transform(text.begin(), text.end(), text.begin(), [](wchar_t c) { return std::towlower(c); });
    };
    lower(inside);
    lower(outer);
    return inside.starts_with(outer);
}
#endif

// The first two in this program: Windows hands out a loaded library of the
// same name to a load by name, so nothing may have loaded one before.

// The current folder and PATH are in Windows' search for a library by
// name, and a standard user can write many of them.
TEST_F(TrackerSearchTest, ALibraryInTheCurrentFolderOrOnPathIsNotLoaded) {
#ifdef _WIN32
    const std::filesystem::path planted = PlaceLibrary("planted").parent_path();
    const std::filesystem::path previous = std::filesystem::current_path();
    const std::wstring path = EnvironmentFolder(L"PATH").wstring();
    std::filesystem::current_path(planted);
    _wputenv_s(L"PATH", (planted.wstring() + L";" + path).c_str());
    const LibraryHandle library = LoadTrackerLibrary(u"", (root_ / "empty").u16string(), {});
    std::filesystem::current_path(previous);
    _wputenv_s(L"PATH", path.c_str());
    EXPECT_EQ(library, nullptr);
#else
    GTEST_SKIP() << "dlopen searches neither the current folder nor PATH";
#endif
}

TEST_F(TrackerSearchTest, ALibraryTooDeepIsNotLoaded) {
    PlaceLibrary("a/b/c/d");
    EXPECT_EQ(LoadTrackerLibrary(u"", (root_ / "empty").u16string(), {root_}), nullptr);
}

TEST(TrackerSearchRootsTest, EachProgramFolderHasTheVendorsTwoFolders) {
    EXPECT_EQ(TrackerRootsUnder({"first", "second"}),
              (std::vector<std::filesystem::path>{std::filesystem::path("first") / "Tobii",
                                                  std::filesystem::path("second") / "Tobii",
                                                  std::filesystem::path("first") / "Tobii Experience",
                                                  std::filesystem::path("second") / "Tobii Experience"}));
}

#ifdef _WIN32
// ProgramData's subfolders take files from any user: a library planted
// there would run in Zirvel, also when it runs as administrator.
TEST(TrackerSearchRootsTest, OnlyTheProgramFilesFoldersAreSearched) {
    const std::filesystem::path programFiles = EnvironmentFolder(L"ProgramFiles");
    const std::filesystem::path programFilesX86 = EnvironmentFolder(L"ProgramFiles(x86)");
    const std::filesystem::path programData = EnvironmentFolder(L"ProgramData");
    ASSERT_FALSE(programFiles.empty());
    ASSERT_FALSE(programData.empty());
    std::vector<std::filesystem::path> programFolders{programFiles};
    if (!programFilesX86.empty() && !IsUnder(programFilesX86 / "x", programFiles)) {
        programFolders.push_back(programFilesX86);  // a 64-bit Windows
    }
    EXPECT_EQ(TrackerSearchRoots(), TrackerRootsUnder(programFolders));
    for (const std::filesystem::path& root : TrackerSearchRoots()) {
        EXPECT_FALSE(IsUnder(root, programData)) << root;
        EXPECT_TRUE(IsUnder(root, programFiles) || IsUnder(root, programFilesX86)) << root;
    }
}
#endif

TEST_F(TrackerSearchTest, ThreeFoldersDeepIsFoundAndFourIsNot) {
    const std::filesystem::path three = PlaceLibrary("a/b/c");
    PlaceLibrary("a/b/c/d");
    EXPECT_EQ(Found(), std::vector<std::filesystem::path>{three});
}

TEST_F(TrackerSearchTest, TheRootsOwnFileComesFirstAndDotFoldersAreSkipped) {
    PlaceLibrary(".hidden");
    PlaceLibrary("x/.cache");
    const std::filesystem::path deeper = PlaceLibrary("x");
    const std::filesystem::path own = PlaceLibrary("");
    EXPECT_EQ(Found(), (std::vector<std::filesystem::path>{own, deeper}));
}

TEST_F(TrackerSearchTest, ALibraryDeepInASearchRootIsLoaded) {
    PlaceLibrary("Tobii Experience/1.2/platform_runtime");
    const LibraryHandle library = LoadTrackerLibrary(u"", (root_ / "empty").u16string(), {root_});
    ASSERT_NE(library, nullptr);
    EXPECT_TRUE(ResolveTrackerApi(library).HasRequired());
}

TEST_F(TrackerSearchTest, EveryRootIsSearchedBeforeTheFirstCandidateIsTried) {
    // The first root holds a file that is not a library: the second root's
    // library is still found.
    std::filesystem::create_directories(root_ / "first");
    std::ofstream(root_ / "first" / std::filesystem::path(kTrackerLibraryFileName)) << "not a library";
    std::filesystem::create_directories(root_ / "second");
    PlaceLibrary("second/lib");
    EXPECT_NE(LoadTrackerLibrary(u"", (root_ / "empty").u16string(), {root_ / "first", root_ / "second"}), nullptr);
}

}  // namespace
}  // namespace zirvel::gaze_test
