#include "engine/picture_png.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

#include "config/file_io.h"

namespace zirvel {
namespace {

constexpr std::array<std::uint32_t, 256> MakeCrcTable() {
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t n = 0; n < 256; ++n) {
        std::uint32_t c = n;
        for (int k = 0; k < 8; ++k) c = (c & 1u) ? 0xEDB88320u ^ (c >> 1) : c >> 1;
        table[n] = c;
    }
    return table;
}

constexpr std::array<std::uint32_t, 256> kCrcTable = MakeCrcTable();

std::uint32_t Crc32(std::string_view bytes) {
    std::uint32_t c = 0xFFFFFFFFu;
    for (char byte : bytes) c = kCrcTable[(c ^ static_cast<std::uint8_t>(byte)) & 0xFFu] ^ (c >> 8);
    return c ^ 0xFFFFFFFFu;
}

std::uint32_t Adler32(std::string_view bytes) {
    constexpr std::uint32_t kModulus = 65521;
    std::uint32_t a = 1;
    std::uint32_t b = 0;
    for (char byte : bytes) {
        a = (a + static_cast<std::uint8_t>(byte)) % kModulus;
        b = (b + a) % kModulus;
    }
    return (b << 16) | a;
}

void AppendBigEndian(std::string& out, std::uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8) out.push_back(static_cast<char>((value >> shift) & 0xFFu));
}

void AppendChunk(std::string& out, std::string_view type, std::string_view data) {
    AppendBigEndian(out, static_cast<std::uint32_t>(data.size()));
    std::string typed(type);
    typed.append(data);
    out.append(typed);
    AppendBigEndian(out, Crc32(typed));
}

// A premultiplied channel back to straight, rounded.
char Unpremultiply(std::uint32_t channel, std::uint32_t alpha) {
    if (alpha == 0) return 0;
    const std::uint32_t straight = (channel * 255u + alpha / 2u) / alpha;
    return static_cast<char>(straight > 255u ? 255u : straight);
}

// Each row: filter type 0, then R, G, B, A per pixel.
std::string RawRows(const Picture& picture) {
    std::string raw;
    raw.reserve(static_cast<std::size_t>(picture.height) * (static_cast<std::size_t>(picture.width) * 4 + 1));
    for (std::int32_t y = 0; y < picture.height; ++y) {
        raw.push_back(0);
        for (std::int32_t x = 0; x < picture.width; ++x) {
            const std::uint32_t pixel =
                picture.pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.width) +
                               static_cast<std::size_t>(x)];
            const std::uint32_t alpha = pixel >> 24;
            raw.push_back(Unpremultiply((pixel >> 16) & 0xFFu, alpha));
            raw.push_back(Unpremultiply((pixel >> 8) & 0xFFu, alpha));
            raw.push_back(Unpremultiply(pixel & 0xFFu, alpha));
            raw.push_back(static_cast<char>(alpha));
        }
    }
    return raw;
}

// A zlib stream of stored deflate blocks.
std::string StoredZlib(std::string_view raw) {
    constexpr std::size_t kMaxStoredBlock = 65535;
    std::string out;
    out.push_back(0x78);
    out.push_back(0x01);
    std::size_t offset = 0;
    do {
        const std::size_t length = std::min(kMaxStoredBlock, raw.size() - offset);
        const bool last = offset + length == raw.size();
        out.push_back(last ? 1 : 0);
        out.push_back(static_cast<char>(length & 0xFFu));
        out.push_back(static_cast<char>(length >> 8));
        out.push_back(static_cast<char>(~length & 0xFFu));
        out.push_back(static_cast<char>((~length >> 8) & 0xFFu));
        out.append(raw.substr(offset, length));
        offset += length;
    } while (offset < raw.size());
    AppendBigEndian(out, Adler32(raw));
    return out;
}

}  // namespace

std::string EncodePicturePng(const Picture& picture) {
    std::string png("\x89PNG\r\n\x1a\n", 8);
    std::string header;
    AppendBigEndian(header, static_cast<std::uint32_t>(picture.width));
    AppendBigEndian(header, static_cast<std::uint32_t>(picture.height));
    header.append({8, 6, 0, 0, 0});  // 8 bits, RGBA, deflate, no filter method, no interlace
    AppendChunk(png, "IHDR", header);
    AppendChunk(png, "IDAT", StoredZlib(RawRows(picture)));
    AppendChunk(png, "IEND", {});
    return png;
}

bool WritePicturePng(const Picture& picture, const std::u16string& path) {
    return WriteFileBytes(path, EncodePicturePng(picture));
}

}  // namespace zirvel
