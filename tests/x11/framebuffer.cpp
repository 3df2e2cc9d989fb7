#include "framebuffer.h"

#include <QtGui/QImage>

#include <algorithm>
#include <fstream>
#include <vector>

namespace zirvel_test {
namespace {

// Xvfb's screen in `framebufferFolder`: an XWD file whose header fields are
// big-endian 32-bit numbers, then a colour table, then the rows.
class FramebufferFile {
public:
    explicit FramebufferFile(const std::filesystem::path& framebufferFolder)
        : file_(framebufferFolder / "Xvfb_screen0", std::ios::binary) {
        constexpr std::uint32_t kColourEntrySize = 12;
        width_ = Field(4);
        height_ = Field(5);
        const std::uint32_t bitsPerPixel = Field(11);
        bytesPerLine_ = Field(12);
        rows_ = Field(0) + Field(19) * kColourEntrySize;
        if (!file_ || bitsPerPixel != 32) width_ = height_ = 0;
    }

    std::uint32_t Width() const { return width_; }
    std::uint32_t Height() const { return height_; }

    // The pixels of row `y` as 0xRRGGBB, or nothing when the file ends early.
    std::optional<std::vector<std::uint32_t>> Row(std::uint32_t y, std::uint32_t from, std::uint32_t count) {
        std::vector<unsigned char> bytes(static_cast<std::size_t>(count) * 4);
        file_.seekg(rows_ + y * bytesPerLine_ + from * 4);
        file_.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        if (!file_) return std::nullopt;
        std::vector<std::uint32_t> pixels(count);
        for (std::uint32_t x = 0; x < count; ++x) {
            const unsigned char* pixel = &bytes[x * 4];  // B, G, R, X in memory
            pixels[x] = static_cast<std::uint32_t>(pixel[2]) << 16 | pixel[1] << 8 | pixel[0];
        }
        return pixels;
    }

private:
    std::uint32_t Field(int index) {
        unsigned char bytes[4] = {};
        file_.seekg(index * 4);
        file_.read(reinterpret_cast<char*>(bytes), 4);
        return static_cast<std::uint32_t>(bytes[0]) << 24 | bytes[1] << 16 | bytes[2] << 8 | bytes[3];
    }

    std::ifstream file_;
    std::uint32_t width_ = 0;
    std::uint32_t height_ = 0;
    std::uint32_t bytesPerLine_ = 0;
    std::uint32_t rows_ = 0;
};

}  // namespace

std::optional<std::uint32_t> FramebufferPixel(const std::filesystem::path& framebufferFolder, int x, int y) {
    FramebufferFile file(framebufferFolder);
    if (x < 0 || y < 0 || static_cast<std::uint32_t>(x) >= file.Width() ||
        static_cast<std::uint32_t>(y) >= file.Height()) {
        return std::nullopt;
    }
    const auto row = file.Row(static_cast<std::uint32_t>(y), static_cast<std::uint32_t>(x), 1);
    if (!row) return std::nullopt;
    return row->front();
}

bool SaveFramebuffer(const std::filesystem::path& framebufferFolder, const std::filesystem::path& png) {
    FramebufferFile file(framebufferFolder);
    if (file.Width() == 0 || file.Height() == 0) return false;
    QImage picture(static_cast<int>(file.Width()), static_cast<int>(file.Height()), QImage::Format_RGB32);
    for (std::uint32_t y = 0; y < file.Height(); ++y) {
        const auto row = file.Row(y, 0, file.Width());
        if (!row) return false;
        std::copy(row->begin(), row->end(), reinterpret_cast<std::uint32_t*>(picture.scanLine(static_cast<int>(y))));
    }
    std::error_code ignored;
    std::filesystem::create_directories(png.parent_path(), ignored);
    return picture.save(QString::fromStdString(png.string()), "PNG");
}

}  // namespace zirvel_test
