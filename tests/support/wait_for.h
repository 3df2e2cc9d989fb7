// Waiting in a test for something another thread does, bounded.
#pragma once

#include <chrono>
#include <thread>

namespace zirvel::test_support {

// Polls `done` every 5 ms for at most `limit`; true when it became true.
template <class Condition>
bool WaitFor(Condition done, std::chrono::milliseconds limit = std::chrono::seconds(5)) {
    const auto deadline = std::chrono::steady_clock::now() + limit;
    while (!done()) {
        if (std::chrono::steady_clock::now() > deadline) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return true;
}

}  // namespace zirvel::test_support
