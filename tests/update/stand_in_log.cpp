#include "stand_in_log.h"

#include <windows.h>

#include <fstream>

namespace zirvel_test {

StandInLog::StandInLog()
    : path_(std::filesystem::temp_directory_path() /
            ("zirvel-winsparkle-" + std::to_string(GetCurrentProcessId()) + ".log")) {
    std::filesystem::remove(path_);
    SetEnvironmentVariableW(L"ZIRVEL_WINSPARKLE_STAND_IN_LOG", path_.wstring().c_str());
}

StandInLog::~StandInLog() {
    SetEnvironmentVariableW(L"ZIRVEL_WINSPARKLE_STAND_IN_LOG", nullptr);
    std::error_code ignored;
    std::filesystem::remove(path_, ignored);
}

bool StandInLog::Exists() const { return std::filesystem::exists(path_); }

std::vector<std::string> StandInLog::Calls() {
    std::vector<std::string> lines;
    {
        std::ifstream log(path_, std::ios::binary);
        for (std::string line; std::getline(log, line);) {
            lines.push_back(line);
        }
    }
    std::error_code ignored;
    std::filesystem::remove(path_, ignored);
    return lines;
}

std::filesystem::path WinSparkleBesideProgram() {
    wchar_t program[MAX_PATH];
    const DWORD length = GetModuleFileNameW(nullptr, program, MAX_PATH);
    return std::filesystem::path(std::wstring(program, length)).parent_path() / L"WinSparkle.dll";
}

}  // namespace zirvel_test
