// A microphone the test controls: present or not, silent or loud, lost on
// demand. It records a block every `blockPeriod` like a real device does,
// only faster.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <mutex>
#include <thread>
#include <vector>

#include "voice/audio_capture.h"

namespace zirvel::voice_test {

class ScriptedMicrophone final : public AudioCapture {
public:
    std::atomic<bool> present{true};
    std::atomic<bool> loud{false};
    std::atomic<bool> lose{false};
    std::atomic<int> opens{0};
    std::atomic<int> closes{0};
    std::atomic<bool> open{false};
    std::chrono::milliseconds blockPeriod{10};

    bool Open() override {
        if (!present) return false;
        ++opens;
        open = true;
        return true;
    }

    void Wait(std::uint32_t milliseconds) override {
        std::this_thread::sleep_for(std::min(blockPeriod, std::chrono::milliseconds(milliseconds)));
    }

    void TakeBlocks(const BlockConsumer& consume) override {
        std::vector<char> block(kCaptureBlockBytes, 0);
        if (loud) {
            // A square wave at about half of full scale.
            for (std::size_t index = 0; index + 1 < block.size(); index += 2) {
                const std::int16_t sample = (index / 2) % 32 < 16 ? 16000 : -16000;
                block[index] = static_cast<char>(sample & 0xFF);
                block[index + 1] = static_cast<char>((sample >> 8) & 0xFF);
            }
        }
        consume(block.data(), block.size());
    }

    bool Lost() override { return lose.exchange(false); }

    void Close() override {
        if (open.exchange(false)) ++closes;
    }
};

}  // namespace zirvel::voice_test
