// A private D-Bus session bus for one test process and the applications it
// starts: the accessibility bus and its registry start on demand on it, and
// end with it.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <vector>

namespace zirvel_test {

class PrivateSessionBus {
public:
    // Starts dbus-daemon; services it starts see `display`.
    explicit PrivateSessionBus(const std::string& display);
    ~PrivateSessionBus();
    PrivateSessionBus(const PrivateSessionBus&) = delete;
    PrivateSessionBus& operator=(const PrivateSessionBus&) = delete;

    bool Running() const { return pid_ > 0 && !address_.empty(); }
    const std::string& Address() const { return address_; }
    // Ends the bus (and with it the accessibility bus) before its time.
    void Stop();
    // What a client needs in its environment to use this bus only.
    std::vector<std::string> ClientEnvironment() const;

private:
    std::filesystem::path folder_;
    pid_t pid_ = -1;
    std::string address_;
};

}  // namespace zirvel_test
