// Reading the call log a C stand-in writes (support/stand_in_call_log.h):
// one call a line, after its time in milliseconds of the monotonic clock.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace zirvel::test_support {

struct LoggedCall {
    double time = 0.0;  // milliseconds, the same clock as std::chrono::steady_clock
    std::string text;
};

inline std::vector<LoggedCall> ReadCallLog(const std::filesystem::path& file) {
    std::vector<LoggedCall> calls;
    std::ifstream stream(file, std::ios::binary);
    std::string line;
    while (std::getline(stream, line)) {
        const std::size_t space = line.find(' ');
        if (space == std::string::npos) continue;
        calls.push_back({std::strtod(line.c_str(), nullptr), line.substr(space + 1)});
    }
    return calls;
}

// The calls' texts alone.
inline std::vector<std::string> CallTexts(const std::vector<LoggedCall>& calls) {
    std::vector<std::string> texts;
    for (const LoggedCall& call : calls) texts.push_back(call.text);
    return texts;
}

// How many calls begin with `prefix`.
inline int CountCalls(const std::vector<LoggedCall>& calls, const std::string& prefix) {
    int count = 0;
    for (const LoggedCall& call : calls) count += call.text.rfind(prefix, 0) == 0 ? 1 : 0;
    return count;
}

}  // namespace zirvel::test_support
