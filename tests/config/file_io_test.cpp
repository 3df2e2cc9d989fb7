// Whole-file writes that replace a file only once the new content is complete.
#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <string>
#include <thread>

#ifndef _WIN32
#include <sys/stat.h>
#endif

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

TEST(ReadFileBytesTest, AFileUpToTheLimitIsReadAndALargerOneRefused) {
    TempDirectory dir;
    const std::u16string path = dir.File("big.json").u16string();
    ASSERT_TRUE(zirvel::WriteFileBytes(path, std::string(zirvel::kLargestReadFile, ' ')));
    std::string bytes;
    ASSERT_TRUE(ReadFileBytes(path, bytes));
    EXPECT_EQ(bytes.size(), zirvel::kLargestReadFile);
    ASSERT_TRUE(zirvel::WriteFileBytes(path, std::string(zirvel::kLargestReadFile + 1, ' ')));
    EXPECT_FALSE(ReadFileBytes(path, bytes));
    EXPECT_TRUE(bytes.empty());
}

TEST(ReadFileBytesTest, FoldersAndMissingFilesAreRefused) {
    TempDirectory dir;
    std::filesystem::create_directory(dir.File("folder.json"));
    std::string bytes = "left over";
    EXPECT_FALSE(ReadFileBytes(dir.File("folder.json").u16string(), bytes));
    EXPECT_FALSE(ReadFileBytes(dir.File("missing.json").u16string(), bytes));
    EXPECT_TRUE(bytes.empty());
}

// The system reads a name only up to a NUL: "a.json\0b" would be "a.json".
TEST(FileBytesTest, APathWithANulInsideNamesNoFile) {
    TempDirectory dir;
    const std::u16string real = dir.File("a.json").u16string();
    ASSERT_TRUE(zirvel::WriteFileBytes(real, "{}"));
    std::u16string path = real;
    path += u'\0';
    path += u"b";
    std::string bytes;
    EXPECT_FALSE(ReadFileBytes(path, bytes));
    EXPECT_FALSE(zirvel::WriteFileBytes(path, "changed"));
    EXPECT_FALSE(ReplaceFileBytes(path, "changed"));
    ASSERT_TRUE(ReadFileBytes(real, bytes));
    EXPECT_EQ(bytes, "{}");
    EXPECT_EQ(EntriesIn(dir.Path()), 1u);
}

#ifndef _WIN32
// A pipe nobody writes to would block an open or a read for ever.
TEST(ReadFileBytesTest, APipeIsRefusedAtOnce) {
    TempDirectory dir;
    const std::filesystem::path pipe = dir.File("pipe.json");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    std::string bytes;
    EXPECT_FALSE(ReadFileBytes(pipe.u16string(), bytes));
}
#endif

// A file replaced again and again while it is read (as the editor saves
// it): every read gives one whole version or the other.
TEST(ReadFileBytesTest, AFileReplacedWhileItIsReadGivesOneWholeVersion) {
    TempDirectory dir;
    const std::u16string path = dir.File("wheels.json").u16string();
    const std::string first(300 * 1024, 'a');
    const std::string second(200 * 1024, 'b');
    ASSERT_TRUE(ReplaceFileBytes(path, first));
    std::atomic<bool> stop{false};
    std::thread writer([&] {
        for (int i = 0; !stop && i < 100000; ++i) ReplaceFileBytes(path, i % 2 ? first : second);
    });
    int whole = 0;
    for (int read = 0; read < 200; ++read) {
        std::string bytes;
        if (ReadFileBytes(path, bytes)) whole += bytes == first || bytes == second;
        else ++whole;  // caught between the two: refused, never half read
    }
    stop = true;
    writer.join();
    EXPECT_EQ(whole, 200);
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
