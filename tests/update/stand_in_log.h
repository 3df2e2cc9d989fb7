// The calls that the stand-in WinSparkle.dll logged (see
// winsparkle_stand_in.c), and where the DLL lies for these tests.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace zirvel_test {

// A fresh, empty log for this process, named to the stand-in through the
// environment; the file appears only when the stand-in writes to it.
class StandInLog {
public:
    StandInLog();
    ~StandInLog();
    StandInLog(const StandInLog&) = delete;
    StandInLog& operator=(const StandInLog&) = delete;

    bool Exists() const;
    // The lines written since the last call to Calls().
    std::vector<std::string> Calls();

private:
    std::filesystem::path path_;
};

// <this test program's folder>\WinSparkle.dll, where the updater looks.
std::filesystem::path WinSparkleBesideProgram();

}  // namespace zirvel_test
