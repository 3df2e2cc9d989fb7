// Pictures as PNG files (8-bit RGBA, straight alpha), for snapshots that a
// person can look at. The encoder is deliberately plain: unfiltered rows in
// stored (uncompressed) deflate blocks, so it needs no compression library.
#pragma once

#include <string>

#include "engine/platform.h"

namespace zirvel {

// The PNG file's bytes.
std::string EncodePicturePng(const Picture& picture);

// False when the file cannot be written.
bool WritePicturePng(const Picture& picture, const std::u16string& path);

}  // namespace zirvel
