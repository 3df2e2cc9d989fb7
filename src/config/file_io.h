// Whole-file reads and writes with UTF-16 paths.
#pragma once

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

// False when the file cannot be opened; other processes may keep it open.
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
