#include "engine/background_thread.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace zirvel {

// Shared with the thread, so an abandoned thread never touches freed memory.
struct BackgroundThread::Shared {
    std::atomic<bool> stop{false};
    std::mutex mutex;
    std::condition_variable ended;
    bool done = false;
};

BackgroundThread::~BackgroundThread() {
    if (shared_) shared_->stop = true;
}

void BackgroundThread::Start(BackgroundBody body) {
    auto shared = std::make_shared<Shared>();
    std::thread([shared, body = std::move(body)] {
        body(shared->stop);
        std::lock_guard lock(shared->mutex);
        shared->done = true;
        shared->ended.notify_all();
    }).detach();
    shared_ = std::move(shared);
}

bool BackgroundThread::Stop(std::uint32_t timeoutMilliseconds) {
    if (!shared_) return true;
    std::shared_ptr<Shared> shared = std::move(shared_);
    shared->stop = true;
    std::unique_lock lock(shared->mutex);
    return shared->ended.wait_for(lock, std::chrono::milliseconds(timeoutMilliseconds),
                                  [&shared] { return shared->done; });
}

}  // namespace zirvel
