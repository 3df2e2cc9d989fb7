// Whole-file reads and writes with UTF-16 paths.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace zirvel {

// The directory separator of the running platform.
#ifdef _WIN32
inline constexpr char16_t kPathSeparator = u'\\';
#else
inline constexpr char16_t kPathSeparator = u'/';
#endif

// directory + separator + name (the directory has no trailing separator).
std::u16string JoinPath(std::u16string_view directory, std::u16string_view name);

// The largest file read whole: far beyond any settings or wheels file
// (10,000 wheels take under 1 MB), and small enough that a wrong file
// cannot hold the engine up or fill its memory.
inline constexpr std::size_t kLargestReadFile = 16 * 1024 * 1024;

// False when the path is no regular file (a folder, a pipe), the file cannot
// be opened, or it holds more than kLargestReadFile
// bytes (also when it grows past that while it is read); other processes
// may keep it open.
bool ReadFileBytes(const std::u16string& path, std::string& bytes);

// Replaces the file's content; false on any error.
bool WriteFileBytes(const std::u16string& path, std::string_view bytes);

// Writes the bytes to a temporary file beside `path` and then puts it in
// the old file's place, so a failed write never leaves a truncated file;
// false (and the old file as it was) on any error.
bool ReplaceFileBytes(const std::u16string& path, std::string_view bytes);

// True when the path names something whose attributes can be read.
bool PathExists(const std::u16string& path);

}  // namespace zirvel
