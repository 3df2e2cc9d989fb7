#include "voice/capture_queue.h"

namespace zirvel {

bool CaptureQueue::Start(CaptureBuffers& buffers, Clock::time_point now) {
    first_ = 0;
    queued_ = 0;
    refused_ = false;
    lastAudio_ = now;
    for (int slot = 0; slot < kCaptureBlockCount; ++slot) {
        if (!buffers.Queue(slot)) {
            refused_ = true;
            return false;
        }
        order_[static_cast<std::size_t>(queued_++)] = slot;
    }
    return true;
}

void CaptureQueue::Take(CaptureBuffers& buffers, const AudioCapture::BlockConsumer& consume,
                        Clock::time_point now) {
    // At most one round: a slot queued again here is not filled yet.
    for (int taken = 0; taken < kCaptureBlockCount && queued_ > 0 && !refused_; ++taken) {
        const int slot = order_[static_cast<std::size_t>(first_)];
        if (!buffers.Done(slot)) break;
        first_ = (first_ + 1) % kCaptureBlockCount;
        --queued_;
        const std::size_t bytes = buffers.Recorded(slot);
        if (bytes > 0) lastAudio_ = now;
        consume(buffers.Data(slot), bytes);
        if (!buffers.Queue(slot)) {
            refused_ = true;
            return;
        }
        order_[static_cast<std::size_t>((first_ + queued_) % kCaptureBlockCount)] = slot;
        ++queued_;
    }
}

bool CaptureQueue::Lost(Clock::time_point now) const { return refused_ || now - lastAudio_ >= kCaptureStallLimit; }

}  // namespace zirvel
