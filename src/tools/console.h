// Command-line programs' text in and out, as Unicode on both platforms.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

namespace zirvel {

// The program's arguments without the program name: on Windows from the
// wide command line, elsewhere decoded from UTF-8.
std::vector<std::u16string> CommandLineArguments(int argc, char** argv);

// Writes UTF-8 text; a Windows console is switched to UTF-8 first.
void WriteUtf8(std::FILE* stream, std::string_view text);

}  // namespace zirvel
