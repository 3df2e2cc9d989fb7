// The default microphone through the Windows wave-in interface: the wave
// mapper, 16 kHz mono 16-bit, eight 100 ms buffers queued, and an event the
// driver signals as each one fills (CALLBACK_EVENT rather than a waveInProc:
// no wave call may be made inside that callback, and here every wave call
// is the voice thread's own). Buffers are handed on in the order they were
// queued; a device that refuses a buffer or records nothing for a while is
// reported lost, so the voice thread waits for a microphone again.
#pragma once

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#include <mmsystem.h>

#include <memory>

#include "voice/audio_capture.h"

namespace zirvel::win32 {

class WaveInCapture final : public AudioCapture {
public:
    WaveInCapture();
    WaveInCapture(const WaveInCapture&) = delete;
    WaveInCapture& operator=(const WaveInCapture&) = delete;
    ~WaveInCapture() override;

    bool Open() override;
    void Wait(std::uint32_t milliseconds) override;
    void TakeBlocks(const BlockConsumer& consume) override;
    bool Lost() override;
    void Close() override;

private:
    struct Recording;  // one open device with its buffers

    HANDLE filled_ = nullptr;  // auto-reset, signalled by the driver
    std::unique_ptr<Recording> recording_;
};

}  // namespace zirvel::win32
