#include "private_wayland_compositor.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <chrono>
#include <cstring>

namespace zirvel_test {
namespace {

using namespace std::chrono_literals;

bool TakesClients(const std::string& socketPath) {
    const int client = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (client < 0) return false;
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, socketPath.c_str(), sizeof address.sun_path - 1);
    const bool connected = connect(client, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    close(client);
    return connected;
}

}  // namespace

PrivateWaylandCompositor::PrivateWaylandCompositor() : folder_(ScratchDirectory("zirvel_wayland_")) {
    compositor_ = std::make_unique<ChildProcess>(
        std::vector<std::string>{"weston", "--backend=headless-backend.so", "--socket=wayland-test", "--idle-time=0",
                                 "--no-config"},
        std::vector<std::string>{"XDG_RUNTIME_DIR=" + folder_.string(), "WAYLAND_DISPLAY=", "DISPLAY="},
        folder_ / "weston.txt");
    running_ = WaitUntil([this] { return compositor_->Alive() && TakesClients(SocketPath()); }, 10000ms);
}

PrivateWaylandCompositor::~PrivateWaylandCompositor() {
    compositor_.reset();
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
}

}  // namespace zirvel_test
