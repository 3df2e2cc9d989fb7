// The stand-in eye tracker as a test drives it: where its variants were
// built, its script (read again before every sample) and its call log.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "gaze/tracker_api.h"
#include "support/call_log.h"

namespace zirvel::gaze_test {

#ifdef ZIRVEL_STAND_IN_TRACKER_ROOT
// The stand-in library of one variant: "full", "without-optional",
// "without-process-callbacks" (of this build's platform).
inline std::filesystem::path StandInTrackerLibrary(const std::string& variant) {
    std::filesystem::path path = std::filesystem::path(ZIRVEL_STAND_IN_TRACKER_ROOT) / variant;
    path /= std::filesystem::path(kTrackerLibraryFileName);
    return path.make_preferred();
}
#endif

class StandInTracker {
public:
    // The script lives at `script`; the library finds it through the
    // process's environment (set here) or the program's (see Variable).
    explicit StandInTracker(std::filesystem::path script) : script_(std::move(script)) {
        std::filesystem::remove(LogFile());
    }

    // What the program under test needs in its environment.
    std::string Variable() const { return "ZIRVEL_STAND_IN_TRACKER=" + script_.string(); }

    // For a library loaded into this process.
    void UseInThisProcess() const {
#ifdef _WIN32
        _putenv_s("ZIRVEL_STAND_IN_TRACKER", script_.string().c_str());
#else
        setenv("ZIRVEL_STAND_IN_TRACKER", script_.string().c_str(), 1);
#endif
    }

    // Replaces the script at once (written beside it, then renamed).
    void Script(const std::vector<std::string>& lines) const {
        const std::filesystem::path next = script_.string() + ".next";
        {
            std::ofstream file(next, std::ios::binary);
            for (const std::string& line : lines) file << line << '\n';
        }
        std::filesystem::rename(next, script_);
    }

    std::filesystem::path LogFile() const { return script_.string() + ".log"; }

    // How many logged calls begin with `prefix`.
    int Count(const std::string& prefix) const {
        return test_support::CountCalls(test_support::ReadCallLog(LogFile()), prefix);
    }

private:
    std::filesystem::path script_;
};

}  // namespace zirvel::gaze_test
