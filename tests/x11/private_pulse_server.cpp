#include "private_pulse_server.h"

#include <fstream>

namespace zirvel_test {

using namespace std::chrono_literals;

PrivatePulseServer::PrivatePulseServer() : folder_(ScratchDirectory("zirvel_pulse_")) {
    std::filesystem::create_directories(folder_ / "home");
    // Clients never start a server of their own (nor find the user's).
    std::ofstream(folder_ / "client.conf") << "autospawn = no\n";
}

PrivatePulseServer::~PrivatePulseServer() {
    Stop();
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
}

std::vector<std::string> PrivatePulseServer::ClientEnvironment() const {
    return {"PULSE_SERVER=unix:" + (folder_ / "pulse" / "native").string(),
            "PULSE_CLIENTCONFIG=" + (folder_ / "client.conf").string()};
}

int PrivatePulseServer::RunClient(const std::vector<std::string>& command) {
    ChildProcess client(command, ClientEnvironment(), folder_ / "clients.txt");
    return client.WaitForExit(20000ms).value_or(-1);
}

namespace {

constexpr char kSinkModule[] = "module-null-sink";
constexpr char kSinkArguments[] = "sink_name=vsink rate=16000 channels=1";

}  // namespace

bool PrivatePulseServer::Start() {
    std::filesystem::create_directories(folder_ / "pulse");
    const std::vector<std::string> environment{"XDG_RUNTIME_DIR=" + folder_.string(),
                                               "HOME=" + (folder_ / "home").string(),
                                               "PULSE_CLIENTCONFIG=" + (folder_ / "client.conf").string()};
    server_ = std::make_unique<ChildProcess>(
        std::vector<std::string>{"pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no",
                                 "-L",
                                 "module-native-protocol-unix auth-anonymous=1 socket=" +
                                     (folder_ / "pulse" / "native").string(),
                                 "-L", std::string(kSinkModule) + " " + kSinkArguments},
        environment, folder_ / "server.txt");
    if (!server_->Started()) return false;
    const bool serving = WaitUntil([this] { return RunClient({"pactl", "info"}) == 0; }, 10000ms, 100ms);
    return serving && RunClient({"pactl", "set-default-source", "vsink.monitor"}) == 0;
}

void PrivatePulseServer::Stop() { server_.reset(); }

bool PrivatePulseServer::RemoveMicrophone() { return RunClient({"pactl", "unload-module", kSinkModule}) == 0; }

bool PrivatePulseServer::RestoreMicrophone() {
    return RunClient({"pactl", "load-module", kSinkModule, kSinkArguments}) == 0 &&
           RunClient({"pactl", "set-default-source", "vsink.monitor"}) == 0;
}

bool PrivatePulseServer::Play(const std::filesystem::path& file) {
    return RunClient({"paplay", "-d", "vsink", file.string()}) == 0;
}

std::filesystem::path PrivatePulseServer::Speech(const std::string& text) {
    const std::filesystem::path file = folder_ / ("speech" + std::to_string(++spoken_) + ".wav");
    ChildProcess speaker({"espeak-ng", "-v", "pl", "-w", file.string(), text}, {}, folder_ / "clients.txt");
    return speaker.WaitForExit(20000ms) == std::optional<int>(0) ? file : std::filesystem::path();
}

bool PrivatePulseServer::Say(const std::string& text) {
    const std::filesystem::path file = Speech(text);
    return !file.empty() && Play(file);
}

}  // namespace zirvel_test
