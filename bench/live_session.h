// What the live benchmarks start from: the program on a private 1920 x 1080
// X server, its pointer at (700, 500), and a stand-in application window
// with the focus that records the keys it gets.
#pragma once

#include <cstdio>
#include <memory>
#include <string>

#include "live_figures.h"
#include "x_session.h"

namespace zirvel_bench {

class LiveSession {
public:
    static constexpr int kWidth = 1920;
    static constexpr int kHeight = 1080;

    // Starts everything with this config.json and wheels file (the
    // eight-letter wheel unless given); Ready() says whether it all came up
    // (what did not is printed).
    explicit LiveSession(const char* config, const std::string& wheels = kEightLetterWheel)
        : server_(kWidth, kHeight) {
        if (!server_.Running()) {
            std::fprintf(stderr, "Xvfb did not start\n");
            return;
        }
        user_ = std::make_unique<zirvel_test::XConnection>(server_.Name());
        application_ = std::make_unique<zirvel_test::TestApplication>(server_.Name(), 0, 0, kWidth, kHeight);
        application_->Focus();
        program_ = std::make_unique<zirvel_test::ProgramUnderTest>(server_.Name(), config, wheels);
        if (!program_->Start()) {
            std::fprintf(stderr, "the program did not start\n");
            return;
        }
        user_->MoveMouseTo(700, 500);
        ready_ = true;
    }

    bool Ready() const { return ready_; }
    std::string DisplayName() const { return server_.Name(); }
    zirvel_test::XConnection& User() { return *user_; }
    zirvel_test::TestApplication& Application() { return *application_; }
    zirvel_test::ProgramUnderTest& Program() { return *program_; }

private:
    zirvel_test::PrivateXServer server_;
    std::unique_ptr<zirvel_test::XConnection> user_;
    std::unique_ptr<zirvel_test::TestApplication> application_;
    std::unique_ptr<zirvel_test::ProgramUnderTest> program_;
    bool ready_ = false;
};

}  // namespace zirvel_bench
