// The folder of the running executable: the program directory where the
// engine's files, icons/ and themes/ live.
#pragma once

#include <string>

namespace zirvel::win32 {

// Without a trailing backslash.
std::u16string ExecutableDirectory();

}  // namespace zirvel::win32
