// The PNG encoder: chunk structure, checksums and straight-alpha pixels,
// read back by a small reader of stored deflate blocks.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "engine/picture_png.h"

namespace zirvel_test {
namespace {

std::uint32_t BigEndian(const std::string& bytes, std::size_t at) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i) value = (value << 8) | static_cast<std::uint8_t>(bytes[at + i]);
    return value;
}

// The bitwise CRC-32 of PNG, without tables.
std::uint32_t SlowCrc(const std::string& bytes) {
    std::uint32_t crc = 0xFFFFFFFFu;
    for (char c : bytes) {
        crc ^= static_cast<std::uint8_t>(c);
        for (int k = 0; k < 8; ++k) crc = (crc >> 1) ^ (0xEDB88320u & (0u - (crc & 1u)));
    }
    return ~crc;
}

struct Chunk {
    std::string type;
    std::string data;
};

std::vector<Chunk> ReadChunks(const std::string& png) {
    std::vector<Chunk> chunks;
    std::size_t at = 8;
    while (at + 12 <= png.size()) {
        const std::uint32_t length = BigEndian(png, at);
        Chunk chunk{png.substr(at + 4, 4), png.substr(at + 8, length)};
        EXPECT_EQ(BigEndian(png, at + 8 + length), SlowCrc(chunk.type + chunk.data)) << chunk.type;
        chunks.push_back(chunk);
        at += 12 + length;
    }
    EXPECT_EQ(at, png.size());
    return chunks;
}

// The bytes of a zlib stream made only of stored blocks.
std::string InflateStored(const std::string& zlib) {
    EXPECT_EQ((static_cast<std::uint8_t>(zlib[0]) * 256 + static_cast<std::uint8_t>(zlib[1])) % 31, 0);
    std::string out;
    std::size_t at = 2;
    for (bool last = false; !last && at < zlib.size();) {
        last = (zlib[at] & 1) != 0;
        EXPECT_EQ((zlib[at] >> 1) & 3, 0);  // stored
        const std::size_t length = static_cast<std::uint8_t>(zlib[at + 1]) | (static_cast<std::uint8_t>(zlib[at + 2]) << 8);
        const std::size_t inverse = static_cast<std::uint8_t>(zlib[at + 3]) | (static_cast<std::uint8_t>(zlib[at + 4]) << 8);
        EXPECT_EQ(length ^ inverse, 0xFFFFu);
        out += zlib.substr(at + 5, length);
        at += 5 + length;
    }
    std::uint32_t a = 1;
    std::uint32_t b = 0;
    for (char c : out) {
        a = (a + static_cast<std::uint8_t>(c)) % 65521;
        b = (b + a) % 65521;
    }
    EXPECT_EQ(BigEndian(zlib, at), (b << 16) | a);
    EXPECT_EQ(at + 4, zlib.size());
    return out;
}

TEST(PicturePngTest, PixelsComeBackAsStraightRgba) {
    zirvel::Picture picture;
    picture.width = 3;
    picture.height = 2;
    picture.pixels = {0xFFFF0000u, 0x80400000u, 0x00000000u,   // opaque red, half-transparent red, nothing
                      0x87008700u, 0xFF123456u, 0x01010101u};
    const std::string png = zirvel::EncodePicturePng(picture);
    ASSERT_EQ(png.substr(0, 8), std::string("\x89PNG\r\n\x1a\n", 8));
    const auto chunks = ReadChunks(png);
    ASSERT_EQ(chunks.size(), 3u);
    EXPECT_EQ(chunks[0].type, "IHDR");
    EXPECT_EQ(BigEndian(chunks[0].data, 0), 3u);
    EXPECT_EQ(BigEndian(chunks[0].data, 4), 2u);
    EXPECT_EQ(chunks[0].data.substr(8), std::string("\x08\x06\x00\x00\x00", 5));
    EXPECT_EQ(chunks[1].type, "IDAT");
    EXPECT_EQ(chunks[2].type, "IEND");
    const std::string rows = InflateStored(chunks[1].data);
    const std::string expected = std::string("\0", 1) + std::string("\xFF\x00\x00\xFF", 4) +
                                 std::string("\x80\x00\x00\x80", 4) + std::string("\x00\x00\x00\x00", 4) +
                                 std::string("\0", 1) + std::string("\x00\xFF\x00\x87", 4) +
                                 std::string("\x12\x34\x56\xFF", 4) + std::string("\xFF\xFF\xFF\x01", 4);
    EXPECT_EQ(rows, expected);
}

TEST(PicturePngTest, LargePicturesSpanSeveralStoredBlocks) {
    zirvel::Picture picture;
    picture.width = 300;
    picture.height = 200;  // 240 200 bytes of rows: four blocks
    picture.pixels.assign(300u * 200u, 0xFF336699u);
    const auto chunks = ReadChunks(zirvel::EncodePicturePng(picture));
    ASSERT_EQ(chunks.size(), 3u);
    const std::string rows = InflateStored(chunks[1].data);
    ASSERT_EQ(rows.size(), 200u * (300u * 4u + 1u));
    EXPECT_EQ(rows.substr(rows.size() - 4), std::string("\x33\x66\x99\xFF", 4));
}

}  // namespace
}  // namespace zirvel_test
