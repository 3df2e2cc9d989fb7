// The buffers a recording driver fills, as the voice thread takes them:
// in the order they were queued (the order the driver fills them, which is
// the order the audio was recorded), each queued again at once, and a
// watchdog that tells a device that has gone (the driver refuses a buffer,
// or no audio arrives for a while) from one that is merely slow. Portable:
// the waveIn microphone puts its headers behind CaptureBuffers.
#pragma once

#include <array>
#include <chrono>
#include <cstddef>

#include "voice/audio_capture.h"

namespace zirvel {

// A device records a block every 100 ms; one that delivers no audio for
// this long has gone (unplugged, its driver stopped) even when no call
// says so. Long enough that a busy machine's late blocks never count.
inline constexpr std::chrono::milliseconds kCaptureStallLimit{2000};

// The driver's side of the buffers, by slot 0 .. kCaptureBlockCount - 1.
class CaptureBuffers {
public:
    virtual ~CaptureBuffers() = default;
    // True once the driver has given the slot back (filled, or returned by a reset).
    virtual bool Done(int slot) const = 0;
    virtual const char* Data(int slot) const = 0;
    // Bytes the driver recorded into the slot (0 for one returned empty).
    virtual std::size_t Recorded(int slot) const = 0;
    // Gives the slot to the driver to fill; false when the driver refuses it.
    virtual bool Queue(int slot) = 0;
};

class CaptureQueue {
public:
    using Clock = std::chrono::steady_clock;

    // Queues every slot, 0 first; false when the driver refuses one. The
    // watchdog counts from `now`.
    bool Start(CaptureBuffers& buffers, Clock::time_point now);
    // Hands the slots the driver has given back to `consume`, oldest first,
    // stopping at the first it still holds, and queues each again.
    void Take(CaptureBuffers& buffers, const AudioCapture::BlockConsumer& consume, Clock::time_point now);
    // The driver refused a buffer, or recorded nothing for kCaptureStallLimit.
    bool Lost(Clock::time_point now) const;

private:
    std::array<int, kCaptureBlockCount> order_{};  // slots in the order they were queued, a ring from first_
    int first_ = 0;
    int queued_ = 0;
    Clock::time_point lastAudio_{};
    bool refused_ = false;
};

}  // namespace zirvel
