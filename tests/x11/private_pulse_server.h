// A private PulseAudio server with no sound card: a null sink whose monitor
// is the default source, so what is played into the sink is what a
// recording client hears as its microphone. Speech comes from espeak-ng.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "x_session.h"

namespace zirvel_test {

class PrivatePulseServer {
public:
    // Nothing runs until Start.
    PrivatePulseServer();
    ~PrivatePulseServer();
    PrivatePulseServer(const PrivatePulseServer&) = delete;
    PrivatePulseServer& operator=(const PrivatePulseServer&) = delete;

    // Starts the server and waits (at most 10 s) until it serves.
    bool Start();
    void Stop();
    // What a client needs in its environment to reach this server only.
    std::vector<std::string> ClientEnvironment() const;
    // Plays a sound file into the sink; true when it played to the end.
    bool Play(const std::filesystem::path& file);
    // Polish speech of `text` as a sound file (espeak-ng); empty when none was made.
    std::filesystem::path Speech(const std::string& text);
    // Speaks Polish `text` into the sink (Speech, then Play).
    bool Say(const std::string& text);
    // Takes the sink, and with it the only microphone, away from the
    // running server, as an unplugged headset goes; true when it went.
    bool RemoveMicrophone();
    // Gives the server its sink and microphone again.
    bool RestoreMicrophone();

private:
    // Runs a client program with ClientEnvironment; its exit code.
    int RunClient(const std::vector<std::string>& command);

    std::filesystem::path folder_;
    std::unique_ptr<ChildProcess> server_;
    int spoken_ = 0;
};

}  // namespace zirvel_test
