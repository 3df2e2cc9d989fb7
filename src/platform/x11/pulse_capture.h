// The default microphone through the PulseAudio client library (which
// PipeWire desktops serve as well): a record stream of 16 kHz mono S16LE
// whose fragments of 3200 bytes arrive every 100 ms. The stream runs on a
// main loop of its own that the voice thread iterates, so every wait is
// bounded and a stop is never held up by the sound server.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "voice/audio_capture.h"

struct pa_context;
struct pa_mainloop;
struct pa_stream;

namespace zirvel::x11 {

class PulseCapture final : public AudioCapture {
public:
    PulseCapture() = default;
    PulseCapture(const PulseCapture&) = delete;
    PulseCapture& operator=(const PulseCapture&) = delete;
    ~PulseCapture() override { Close(); }

    bool Open() override;
    void Wait(std::uint32_t milliseconds) override;
    void TakeBlocks(const BlockConsumer& consume) override;
    bool Lost() override { return lost_; }
    void Close() override;

private:
    static void OnReadable(pa_stream* stream, std::size_t bytes, void* self);
    // Runs the main loop once, waiting at most `milliseconds` for events.
    void Iterate(std::uint32_t milliseconds);
    // Iterates until `ready` tells ready (true) or failed (false), at most
    // `milliseconds` long.
    template <class Ready>
    bool IterateUntil(Ready ready, std::uint32_t milliseconds);
    void CheckConnection();

    pa_mainloop* loop_ = nullptr;
    pa_context* context_ = nullptr;
    pa_stream* stream_ = nullptr;
    std::vector<char> partial_;             // the start of the next block
    std::deque<std::vector<char>> blocks_;  // recorded, not yet taken
    bool lost_ = false;
};

}  // namespace zirvel::x11
