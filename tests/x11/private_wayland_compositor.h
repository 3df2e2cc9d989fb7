// A Wayland compositor without a screen (weston's headless backend) for one
// test: what a Wayland session offers the programs started in it.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "x_session.h"

namespace zirvel_test {

class PrivateWaylandCompositor {
public:
    PrivateWaylandCompositor();
    ~PrivateWaylandCompositor();
    PrivateWaylandCompositor(const PrivateWaylandCompositor&) = delete;
    PrivateWaylandCompositor& operator=(const PrivateWaylandCompositor&) = delete;

    // True once its socket takes clients.
    bool Running() const { return running_; }
    // For WAYLAND_DISPLAY: a full path, so the client needs no runtime folder.
    std::string SocketPath() const { return (folder_ / "wayland-test").string(); }

private:
    std::filesystem::path folder_;
    std::unique_ptr<ChildProcess> compositor_;
    bool running_ = false;
};

}  // namespace zirvel_test
