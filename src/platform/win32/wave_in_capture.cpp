#include "platform/win32/wave_in_capture.h"

namespace zirvel::win32 {

WaveInCapture::WaveInCapture() : filled_(CreateEventW(nullptr, FALSE, FALSE, nullptr)) {}

WaveInCapture::~WaveInCapture() {
    Close();
    if (filled_) CloseHandle(filled_);
}

bool WaveInCapture::Open() {
    if (!filled_) return false;
    WAVEFORMATEX format{};
    format.wFormatTag = WAVE_FORMAT_PCM;
    format.nChannels = 1;
    format.nSamplesPerSec = 16000;
    format.nAvgBytesPerSec = 32000;
    format.nBlockAlign = 2;
    format.wBitsPerSample = 16;
    format.cbSize = 0;
    if (waveInOpen(&device_, WAVE_MAPPER, &format, reinterpret_cast<DWORD_PTR>(filled_), 0, CALLBACK_EVENT) !=
        MMSYSERR_NOERROR) {
        device_ = nullptr;
        return false;
    }
    for (std::size_t index = 0; index < headers_.size(); ++index) {
        headers_[index] = WAVEHDR{};
        headers_[index].lpData = buffers_[index].data();
        headers_[index].dwBufferLength = static_cast<DWORD>(kCaptureBlockBytes);
        waveInPrepareHeader(device_, &headers_[index], sizeof(WAVEHDR));
        waveInAddBuffer(device_, &headers_[index], sizeof(WAVEHDR));
    }
    waveInStart(device_);
    return true;
}

void WaveInCapture::Wait(std::uint32_t milliseconds) { WaitForSingleObject(filled_, milliseconds); }

void WaveInCapture::TakeBlocks(const BlockConsumer& consume) {
    if (!device_) return;
    for (WAVEHDR& header : headers_) {
        if (!(header.dwFlags & WHDR_DONE)) continue;
        consume(header.lpData, header.dwBytesRecorded);
        waveInAddBuffer(device_, &header, sizeof(WAVEHDR));
    }
}

void WaveInCapture::Close() {
    if (!device_) return;
    waveInStop(device_);
    waveInReset(device_);
    for (WAVEHDR& header : headers_) waveInUnprepareHeader(device_, &header, sizeof(WAVEHDR));
    waveInClose(device_);
    device_ = nullptr;
}

}  // namespace zirvel::win32
