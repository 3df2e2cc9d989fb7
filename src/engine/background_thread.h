// A long-running engine thread (eye tracker, voice) with a stop flag that it
// polls, and a bounded wait that abandons a thread which does not end.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>

namespace zirvel {

// The body runs until `stop` is set.
using BackgroundBody = std::function<void(const std::atomic<bool>& stop)>;

class BackgroundThread {
public:
    BackgroundThread() = default;
    BackgroundThread(const BackgroundThread&) = delete;
    BackgroundThread& operator=(const BackgroundThread&) = delete;
    ~BackgroundThread();  // abandons a running thread without waiting

    bool Running() const { return static_cast<bool>(shared_); }
    void Start(BackgroundBody body);
    // Sets the stop flag and waits up to `timeoutMilliseconds`; a thread
    // that has not ended by then is abandoned. True when it ended.
    bool Stop(std::uint32_t timeoutMilliseconds);

private:
    struct Shared;
    std::shared_ptr<Shared> shared_;
};

}  // namespace zirvel
