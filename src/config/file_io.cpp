#include "config/file_io.h"

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <system_error>
#include <thread>

#include "config/utf.h"

namespace zirvel {
namespace {

// Opens with the platform's native path encoding; reads share the file with
// other readers and writers.
std::FILE* OpenFile(const std::u16string& path, bool forWriting) {
    const std::filesystem::path nativePath(path);
#ifdef _WIN32
    return _wfopen(nativePath.c_str(), forWriting ? L"wb" : L"rb");
#else
    return std::fopen(nativePath.c_str(), forWriting ? "wb" : "rb");
#endif
}

constexpr int kOpenRetries = 10;

// No file's name holds a NUL; the system would stop reading the name there
// and open another file.
bool CouldNameAFile(const std::u16string& path) { return !path.empty() && path.find(u'\0') == std::u16string::npos; }

}  // namespace

std::u16string JoinPath(std::u16string_view directory, std::u16string_view name) {
    std::u16string path(directory);
    path += kPathSeparator;
    path += name;
    return path;
}

bool ReadFileBytes(const std::u16string& path, std::string& bytes) {
    bytes.clear();
    if (!CouldNameAFile(path)) return false;
    std::error_code error;
    // Not a folder, and not a pipe or device either, whose open or read
    // could wait for ever.
    if (!std::filesystem::is_regular_file(std::filesystem::path(path), error)) return false;
    std::FILE* file = OpenFile(path, false);
    // On Windows a file being replaced (another program's save, a rename
    // over it) refuses to open for a moment: try again, briefly.
    for (int retry = 0; !file && retry < kOpenRetries && PathExists(path); ++retry) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
        file = OpenFile(path, false);
    }
    if (!file) return false;
    char buffer[1 << 16];
    std::size_t count = 0;
    while ((count = std::fread(buffer, 1, sizeof buffer, file)) > 0) {
        if (bytes.size() + count > kLargestReadFile) {
            std::fclose(file);
            bytes.clear();
            return false;
        }
        bytes.append(buffer, count);
    }
    std::fclose(file);
    return true;
}

bool WriteFileBytes(const std::u16string& path, std::string_view bytes) {
    if (!CouldNameAFile(path)) return false;
    std::FILE* file = OpenFile(path, true);
    if (!file) return false;
    const bool written = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    return (std::fclose(file) == 0) && written;
}

bool ReplaceFileBytes(const std::u16string& path, std::string_view bytes) {
    if (!CouldNameAFile(path)) return false;
    const std::filesystem::path target(path);
    std::filesystem::path temporary = target;
    temporary += ".zirvel-save";
    std::error_code error;
    if (!WriteFileBytes(temporary.u16string(), bytes)) {
        std::filesystem::remove(temporary, error);
        return false;
    }
    // rename replaces an existing file on both platforms (MoveFileEx with
    // MOVEFILE_REPLACE_EXISTING on Windows).
    std::filesystem::rename(temporary, target, error);
    if (error) {
        std::filesystem::remove(temporary, error);
        return false;
    }
    return true;
}

bool PathExists(const std::u16string& path) {
    std::error_code error;
    return std::filesystem::exists(std::filesystem::path(path), error);
}

}  // namespace zirvel
