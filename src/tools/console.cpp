#include "tools/console.h"

#include "config/utf.h"

#ifdef _WIN32
namespace zirvel {
// Defined by the Windows platform layer.
std::vector<std::u16string> Win32CommandLineArguments();
void Win32UseUtf8Console();
}  // namespace zirvel
#endif

namespace zirvel {

std::vector<std::u16string> CommandLineArguments([[maybe_unused]] int argc, [[maybe_unused]] char** argv) {
#ifdef _WIN32
    return Win32CommandLineArguments();
#else
    std::vector<std::u16string> arguments;
    for (int i = 1; i < argc; ++i) arguments.push_back(Utf8ToUtf16(argv[i]));
    return arguments;
#endif
}

void WriteUtf8(std::FILE* stream, std::string_view text) {
#ifdef _WIN32
    Win32UseUtf8Console();
#endif
    std::fwrite(text.data(), 1, text.size(), stream);
    std::fflush(stream);
}

}  // namespace zirvel
