// The default microphone as the voice thread records it: 16 kHz, 16-bit
// mono, in blocks of 3200 bytes (100 ms), eight of them queued: enough that
// the audio recorded while the recogniser is made anew for new phrases
// (the published library has no set-grammar entry) waits instead of being
// dropped. Each platform implements it (waveIn, PulseAudio); tests script it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>

namespace zirvel {

inline constexpr std::size_t kCaptureBlockBytes = 3200;
inline constexpr int kCaptureBlockCount = 8;

class AudioCapture {
public:
    using BlockConsumer = std::function<void(const char* data, std::size_t bytes)>;

    virtual ~AudioCapture() = default;
    // Opens the default microphone and starts recording. False when there
    // is none (or it cannot be opened); nothing stays open then.
    virtual bool Open() = 0;
    // Waits up to `milliseconds` for a recorded block.
    virtual void Wait(std::uint32_t milliseconds) = 0;
    // Hands every recorded block, oldest first, to `consume` (bytes may be
    // 0 for a block that recorded nothing) and queues its buffer again.
    virtual void TakeBlocks(const BlockConsumer& consume) = 0;
    // The microphone went away while recording (the device failed, or it
    // stopped delivering audio): Close, then Open again.
    virtual bool Lost() { return false; }
    // Stops recording and lets go of the device; harmless when not open.
    virtual void Close() = 0;
};

}  // namespace zirvel
