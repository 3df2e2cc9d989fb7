// Scratch directories and raw file access for the configuration tests.
#pragma once

#include <gtest/gtest.h>

#include <cctype>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <system_error>

namespace zirvel_test {

// A fresh, empty directory under the system's temporary directory, removed
// with everything in it when the object goes away.
class TempDirectory {
public:
    TempDirectory() {
        namespace fs = std::filesystem;
        static unsigned counter = 0;
        std::string base = "zirvel_config_test";
        if (const ::testing::TestInfo* info =
                ::testing::UnitTest::GetInstance()->current_test_info()) {
            base += '_';
            for (char c : std::string(info->name())) {
                base += std::isalnum(static_cast<unsigned char>(c)) ? c : '_';
            }
        }
        const auto stamp = std::chrono::steady_clock::now().time_since_epoch().count();
        std::error_code error;
        const fs::path root = fs::temp_directory_path(error);
        for (int attempt = 0; attempt < 1000; ++attempt) {
            fs::path candidate = root / (base + '_' + std::to_string(stamp) + '_' +
                                         std::to_string(++counter));
            if (fs::create_directory(candidate, error)) {
                path_ = candidate;
                return;
            }
        }
        ADD_FAILURE() << "cannot create a temporary directory under " << root.string();
    }

    ~TempDirectory() {
        if (!path_.empty()) {
            std::error_code error;
            std::filesystem::remove_all(path_, error);
        }
    }

    TempDirectory(const TempDirectory&) = delete;
    TempDirectory& operator=(const TempDirectory&) = delete;

    const std::filesystem::path& Path() const { return path_; }
    std::u16string U16() const { return path_.u16string(); }
    std::filesystem::path File(std::string_view name) const { return path_ / std::string(name); }

private:
    std::filesystem::path path_;
};

inline void WriteBytes(const std::filesystem::path& path, std::string_view bytes) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    ASSERT_TRUE(out.is_open()) << "cannot write " << path.string();
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    ASSERT_TRUE(out.good()) << "cannot write " << path.string();
}

inline std::string ReadBytes(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in.is_open()) {
        ADD_FAILURE() << "cannot read " << path.string();
        return {};
    }
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

inline bool FileExists(const std::filesystem::path& path) {
    std::error_code error;
    return std::filesystem::exists(path, error);
}

}  // namespace zirvel_test
