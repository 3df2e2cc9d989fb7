#include "platform/win32/wave_in_capture.h"

#include <array>
#include <atomic>
#include <chrono>

#include "voice/capture_queue.h"

namespace zirvel::win32 {

struct WaveInCapture::Recording final : CaptureBuffers {
    HWAVEIN device = nullptr;
    std::array<std::array<char, kCaptureBlockBytes>, kCaptureBlockCount> buffers{};
    std::array<WAVEHDR, kCaptureBlockCount> headers{};
    std::array<bool, kCaptureBlockCount> prepared{};
    CaptureQueue queue;

    WAVEHDR& Header(int slot) { return headers[static_cast<std::size_t>(slot)]; }
    const WAVEHDR& Header(int slot) const { return headers[static_cast<std::size_t>(slot)]; }

    bool Done(int slot) const override {
        // The driver's thread sets the flag; what it recorded is read after.
        const bool done = (static_cast<const volatile DWORD&>(Header(slot).dwFlags) & WHDR_DONE) != 0;
        if (done) std::atomic_thread_fence(std::memory_order_acquire);
        return done;
    }
    const char* Data(int slot) const override { return Header(slot).lpData; }
    std::size_t Recorded(int slot) const override { return Header(slot).dwBytesRecorded; }
    bool Queue(int slot) override {
        // Ours until added: the flag is cleared before the driver can set it again.
        WAVEHDR& header = Header(slot);
        header.dwFlags &= ~static_cast<DWORD>(WHDR_DONE);
        header.dwBytesRecorded = 0;
        return waveInAddBuffer(device, &header, sizeof(WAVEHDR)) == MMSYSERR_NOERROR;
    }
};

WaveInCapture::WaveInCapture() : filled_(CreateEventW(nullptr, FALSE, FALSE, nullptr)) {}

WaveInCapture::~WaveInCapture() {
    Close();
    if (filled_) CloseHandle(filled_);
}

bool WaveInCapture::Open() {
    Close();
    if (!filled_) return false;
    WAVEFORMATEX format{};
    format.wFormatTag = WAVE_FORMAT_PCM;
    format.nChannels = 1;
    format.nSamplesPerSec = 16000;
    format.nAvgBytesPerSec = 32000;
    format.nBlockAlign = 2;
    format.wBitsPerSample = 16;
    format.cbSize = 0;
    auto recording = std::make_unique<Recording>();
    // No device, no driver (MMSYSERR_BADDEVICEID, MMSYSERR_NODRIVER) or any
    // other refusal: no microphone, tried again later.
    if (waveInOpen(&recording->device, WAVE_MAPPER, &format, reinterpret_cast<DWORD_PTR>(filled_), 0,
                   CALLBACK_EVENT) != MMSYSERR_NOERROR) {
        return false;
    }
    recording_ = std::move(recording);
    Recording& open = *recording_;
    for (std::size_t slot = 0; slot < open.headers.size(); ++slot) {
        WAVEHDR& header = open.headers[slot];
        header = WAVEHDR{};
        header.lpData = open.buffers[slot].data();
        header.dwBufferLength = static_cast<DWORD>(kCaptureBlockBytes);
        if (waveInPrepareHeader(open.device, &header, sizeof(WAVEHDR)) != MMSYSERR_NOERROR) {
            Close();
            return false;
        }
        open.prepared[slot] = true;
    }
    if (!open.queue.Start(open, std::chrono::steady_clock::now()) || waveInStart(open.device) != MMSYSERR_NOERROR) {
        Close();
        return false;
    }
    return true;
}

void WaveInCapture::Wait(std::uint32_t milliseconds) { WaitForSingleObject(filled_, milliseconds); }

void WaveInCapture::TakeBlocks(const BlockConsumer& consume) {
    if (recording_) recording_->queue.Take(*recording_, consume, std::chrono::steady_clock::now());
}

bool WaveInCapture::Lost() { return recording_ && recording_->queue.Lost(std::chrono::steady_clock::now()); }

void WaveInCapture::Close() {
    if (!recording_) return;
    Recording& open = *recording_;
    waveInStop(open.device);
    // Marks every buffer still queued done and gives it back.
    waveInReset(open.device);
    bool released = true;
    for (std::size_t slot = 0; slot < open.headers.size(); ++slot) {
        if (!open.prepared[slot]) continue;
        if (waveInUnprepareHeader(open.device, &open.headers[slot], sizeof(WAVEHDR)) == MMSYSERR_NOERROR) {
            open.prepared[slot] = false;
        } else {
            released = false;  // WAVERR_STILLPLAYING, or a driver gone with it
        }
    }
    if (waveInClose(open.device) != MMSYSERR_NOERROR) released = false;
    // Buffers a vanished driver never gave back may still be written: they
    // are left to it rather than freed under it.
    if (released) {
        recording_.reset();
    } else {
        static_cast<void>(recording_.release());
    }
}

}  // namespace zirvel::win32
