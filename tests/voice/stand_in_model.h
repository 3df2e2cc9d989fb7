// A scratch "model" folder for the stand-in recogniser: its script, the
// log of every call the voice thread made, and where the variants of the
// stand-in library were built.
#pragma once

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "support/call_log.h"
#include "support/wait_for.h"
#include "voice/speech_api.h"

namespace zirvel::voice_test {

#ifdef ZIRVEL_STAND_IN_RECOGNISER_ROOT
// The stand-in library of one variant: "full", "without-set-grm",
// "without-find-word", "without-result" (of this build's platform).
inline std::u16string StandInLibrary(const std::string& variant) {
    std::filesystem::path path = std::filesystem::path(ZIRVEL_STAND_IN_RECOGNISER_ROOT) / variant;
    path /= std::filesystem::path(kSpeechLibraryFileName);
    return path.make_preferred().u16string();
}
#endif

using test_support::WaitFor;

class StandInModel {
public:
    // A fresh folder `name` inside `parent` holding the script's lines.
    StandInModel(const std::filesystem::path& parent, const std::string& name, const std::vector<std::string>& script)
        : folder_(parent / name) {
        std::filesystem::create_directories(folder_);
        std::ofstream file(folder_ / "stand-in.txt", std::ios::binary);
        for (const std::string& line : script) file << line << '\n';
    }

    const std::filesystem::path& Folder() const { return folder_; }

    std::filesystem::path LogFile() const { return folder_ / "calls.log"; }

    // The calls logged so far, without their times.
    std::vector<std::string> Calls() const { return test_support::CallTexts(test_support::ReadCallLog(LogFile())); }

    // How many logged calls begin with `prefix`.
    int Count(const std::string& prefix) const {
        return test_support::CountCalls(test_support::ReadCallLog(LogFile()), prefix);
    }

    // The last logged call beginning with `prefix`, or "".
    std::string Last(const std::string& prefix) const {
        std::string last;
        for (const std::string& call : Calls()) {
            if (call.rfind(prefix, 0) == 0) last = call;
        }
        return last;
    }

    // The peak of every block it was given and each result it answered, in
    // order: what it heard, for a failure's message.
    std::string Heard() const {
        std::string heard;
        for (const std::string& call : Calls()) {
            if (call.rfind("result ", 0) == 0) heard += "[" + call + "] ";
            std::istringstream fields(call);
            std::string name, bytes, peak;
            if (fields >> name >> bytes >> peak && name == "accept") heard += peak + " ";
        }
        return heard;
    }

private:
    std::filesystem::path folder_;
};

}  // namespace zirvel::voice_test
