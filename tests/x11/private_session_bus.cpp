#include "private_session_bus.h"

#include <signal.h>

#include <chrono>
#include <fstream>
#include <thread>

#include "x_session.h"

namespace zirvel_test {

using namespace std::chrono_literals;

PrivateSessionBus::PrivateSessionBus(const std::string& display) : folder_(ScratchDirectory("zirvel_bus_")) {
    // The daemon forks and prints its address and process id, one a line.
    ChildProcess daemon({"dbus-daemon", "--session", "--fork", "--print-address=1", "--print-pid=1"},
                        {"DISPLAY=" + display, "XDG_RUNTIME_DIR=" + folder_.string(), "HOME=" + folder_.string()},
                        folder_ / "daemon.txt");
    if (daemon.WaitForExit(10000ms) != std::optional<int>(0)) return;
    std::ifstream output(folder_ / "daemon.txt");
    std::string address;
    std::string pid;
    std::getline(output, address);
    std::getline(output, pid);
    try {
        pid_ = static_cast<pid_t>(std::stoi(pid));
    } catch (const std::exception&) {
        return;
    }
    address_ = address;
}

PrivateSessionBus::~PrivateSessionBus() {
    Stop();
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
}

void PrivateSessionBus::Stop() {
    // The accessibility bus launcher leaves when the session bus goes.
    if (pid_ > 0) kill(pid_, SIGTERM);
    if (pid_ > 0) std::this_thread::sleep_for(50ms);
    pid_ = -1;
}

std::vector<std::string> PrivateSessionBus::ClientEnvironment() const {
    return {"DBUS_SESSION_BUS_ADDRESS=" + address_};
}

}  // namespace zirvel_test
