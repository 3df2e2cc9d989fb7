// Where the tracker's library is looked for: the configured path, the
// program directory, the system, then the vendor's folders three deep.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

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

// First in this program: Windows hands out a loaded library of the same
// name to a load by name, so nothing may have loaded one before.
TEST_F(TrackerSearchTest, ALibraryTooDeepIsNotLoaded) {
    PlaceLibrary("a/b/c/d");
    EXPECT_EQ(LoadTrackerLibrary(u"", (root_ / "empty").u16string(), {root_}), nullptr);
}

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
