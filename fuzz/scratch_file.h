// For the fuzz targets of the file readers: one scratch directory per
// process, made on first use (in $TMPDIR if set, else in memory under
// /dev/shm where there is one), and one file in it that each input replaces,
// so the readers run through the real file functions.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace zirvel::fuzz {

// Writes the input to `name` in the scratch directory and returns its path.
// Aborts when the file cannot be written: a fuzz run without its input
// would test nothing.
std::u16string WriteScratchFile(const char* name, const std::uint8_t* data, std::size_t size);

}  // namespace zirvel::fuzz
