#include "platform/x11/pulse_capture.h"

#include <pulse/pulseaudio.h>

#include <chrono>

namespace zirvel::x11 {
namespace {

// How long a sound server may take to accept the connection and the stream.
constexpr std::uint32_t kConnectLimit = 2000;
// At most this much audio waits for the voice thread; older blocks are
// dropped, as waveIn drops what finds no free buffer.
constexpr std::size_t kMaxQueuedBlocks = kCaptureBlockCount;

bool ContextGone(pa_context* context) {
    const pa_context_state_t state = pa_context_get_state(context);
    return state == PA_CONTEXT_FAILED || state == PA_CONTEXT_TERMINATED;
}

bool StreamGone(pa_stream* stream) {
    const pa_stream_state_t state = pa_stream_get_state(stream);
    return state == PA_STREAM_FAILED || state == PA_STREAM_TERMINATED;
}

}  // namespace

void PulseCapture::Iterate(std::uint32_t milliseconds) {
    if (pa_mainloop_prepare(loop_, static_cast<int>(milliseconds) * 1000) < 0) return;
    if (pa_mainloop_poll(loop_) < 0) return;
    pa_mainloop_dispatch(loop_);
}

template <class Ready>
bool PulseCapture::IterateUntil(Ready ready, std::uint32_t milliseconds) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
    while (true) {
        if (const int answer = ready(); answer != 0) return answer > 0;
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
        if (left.count() <= 0) return false;
        Iterate(static_cast<std::uint32_t>(left.count()));
    }
}

bool PulseCapture::Open() {
    Close();
    lost_ = false;
    loop_ = pa_mainloop_new();
    context_ = pa_context_new(pa_mainloop_get_api(loop_), "Zirvel");
    // No server started on our behalf: "no microphone" until one runs.
    if (!context_ || pa_context_connect(context_, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0) {
        Close();
        return false;
    }
    const bool connected = IterateUntil(
        [this] {
            if (pa_context_get_state(context_) == PA_CONTEXT_READY) return 1;
            return ContextGone(context_) ? -1 : 0;
        },
        kConnectLimit);
    if (!connected) {
        Close();
        return false;
    }
    const pa_sample_spec format{PA_SAMPLE_S16LE, 16000, 1};
    stream_ = pa_stream_new(context_, "Komendy głosowe", &format, nullptr);
    if (!stream_) {
        Close();
        return false;
    }
    pa_stream_set_read_callback(stream_, &PulseCapture::OnReadable, this);
    // A fragment of one block: without it the server hands audio over in
    // large lumps (the first one after about 600 ms).
    pa_buffer_attr buffering{};
    buffering.maxlength = static_cast<std::uint32_t>(-1);
    buffering.tlength = static_cast<std::uint32_t>(-1);
    buffering.prebuf = static_cast<std::uint32_t>(-1);
    buffering.minreq = static_cast<std::uint32_t>(-1);
    buffering.fragsize = static_cast<std::uint32_t>(kCaptureBlockBytes);
    if (pa_stream_connect_record(stream_, nullptr, &buffering, PA_STREAM_ADJUST_LATENCY) < 0) {
        Close();
        return false;
    }
    const bool recording = IterateUntil(
        [this] {
            if (pa_stream_get_state(stream_) == PA_STREAM_READY) return 1;
            return StreamGone(stream_) || ContextGone(context_) ? -1 : 0;
        },
        kConnectLimit);
    if (!recording) {
        Close();
        return false;
    }
    return true;
}

void PulseCapture::OnReadable(pa_stream* stream, std::size_t, void* self) {
    auto& capture = *static_cast<PulseCapture*>(self);
    const void* data = nullptr;
    std::size_t bytes = 0;
    while (pa_stream_readable_size(stream) > 0 && pa_stream_peek(stream, &data, &bytes) == 0 && bytes > 0) {
        if (data) {
            const char* begin = static_cast<const char*>(data);
            capture.partial_.insert(capture.partial_.end(), begin, begin + bytes);
        } else {
            // A hole in the recording: silence keeps the blocks in time.
            capture.partial_.insert(capture.partial_.end(), bytes, 0);
        }
        pa_stream_drop(stream);
    }
    while (capture.partial_.size() >= kCaptureBlockBytes) {
        const auto end = capture.partial_.begin() + static_cast<std::ptrdiff_t>(kCaptureBlockBytes);
        capture.blocks_.emplace_back(capture.partial_.begin(), end);
        capture.partial_.erase(capture.partial_.begin(), end);
        if (capture.blocks_.size() > kMaxQueuedBlocks) capture.blocks_.pop_front();
    }
}

void PulseCapture::CheckConnection() {
    if (!stream_ || StreamGone(stream_) || ContextGone(context_)) lost_ = true;
}

void PulseCapture::Wait(std::uint32_t milliseconds) {
    if (!loop_) return;
    IterateUntil(
        [this] {
            CheckConnection();
            return !blocks_.empty() || lost_ ? 1 : 0;
        },
        milliseconds);
}

void PulseCapture::TakeBlocks(const BlockConsumer& consume) {
    while (!blocks_.empty()) {
        const std::vector<char> block = std::move(blocks_.front());
        blocks_.pop_front();
        consume(block.data(), block.size());
    }
}

void PulseCapture::Close() {
    if (stream_) {
        pa_stream_set_read_callback(stream_, nullptr, nullptr);
        pa_stream_disconnect(stream_);
        pa_stream_unref(stream_);
        stream_ = nullptr;
    }
    if (context_) {
        pa_context_disconnect(context_);
        pa_context_unref(context_);
        context_ = nullptr;
    }
    if (loop_) {
        pa_mainloop_free(loop_);
        loop_ = nullptr;
    }
    partial_.clear();
    blocks_.clear();
}

}  // namespace zirvel::x11
