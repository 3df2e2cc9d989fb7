// The default microphone through the Windows wave-in interface: the wave
// mapper, 16 kHz mono 16-bit, four 100 ms buffers queued, and an event the
// driver signals as each one fills.
#pragma once

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#include <mmsystem.h>

#include <array>

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
    void Close() override;

private:
    HANDLE filled_ = nullptr;  // auto-reset, signalled by the driver
    HWAVEIN device_ = nullptr;
    std::array<std::array<char, kCaptureBlockBytes>, kCaptureBlockCount> buffers_{};
    std::array<WAVEHDR, kCaptureBlockCount> headers_{};
};

}  // namespace zirvel::win32
