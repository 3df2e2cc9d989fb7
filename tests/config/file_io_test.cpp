// Whole-file writes that replace a file only once the new content is complete.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "config/file_io.h"
#include "test_files.h"

namespace {

using zirvel::ReadFileBytes;
using zirvel::ReplaceFileBytes;
using zirvel_test::TempDirectory;

std::size_t EntriesIn(const std::filesystem::path& directory) {
    std::size_t count = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(directory)) ++count;
    return count;
}

TEST(ReplaceFileBytesTest, ReplacesAnExistingFileAndLeavesNothingBeside) {
    TempDirectory dir;
    const std::u16string path = dir.File("wheels.json").u16string();
    ASSERT_TRUE(zirvel::WriteFileBytes(path, "old content, longer than the new one"));
    ASSERT_TRUE(ReplaceFileBytes(path, "new"));
    std::string bytes;
    ASSERT_TRUE(ReadFileBytes(path, bytes));
    EXPECT_EQ(bytes, "new");
    EXPECT_EQ(EntriesIn(dir.Path()), 1u);
}

TEST(ReplaceFileBytesTest, CreatesAMissingFile) {
    TempDirectory dir;
    const std::u16string path = dir.File("nowy plik ż.json").u16string();
    ASSERT_TRUE(ReplaceFileBytes(path, "{}"));
    std::string bytes;
    ASSERT_TRUE(ReadFileBytes(path, bytes));
    EXPECT_EQ(bytes, "{}");
}

TEST(ReplaceFileBytesTest, AFailedWriteKeepsTheOldFileWhole) {
    TempDirectory dir;
    const std::u16string path = dir.File("wheels.json").u16string();
    ASSERT_TRUE(zirvel::WriteFileBytes(path, "precious"));
    // The temporary file's place is taken by a directory: the write fails.
    std::filesystem::create_directory(dir.File("wheels.json.zirvel-save"));
    EXPECT_FALSE(ReplaceFileBytes(path, "lost"));
    std::string bytes;
    ASSERT_TRUE(ReadFileBytes(path, bytes));
    EXPECT_EQ(bytes, "precious");
}

TEST(ReplaceFileBytesTest, AFileInAMissingDirectoryFails) {
    TempDirectory dir;
    EXPECT_FALSE(ReplaceFileBytes(dir.File("missing/wheels.json").u16string(), "x"));
    EXPECT_EQ(EntriesIn(dir.Path()), 0u);
}

}  // namespace
