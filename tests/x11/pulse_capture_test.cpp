// The Linux microphone against a private PulseAudio server.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <thread>
#include <vector>

#include "platform/x11/pulse_capture.h"
#include "private_pulse_server.h"

namespace zirvel_test {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

int Peak(const char* data, std::size_t bytes) {
    int peak = 0;
    for (std::size_t index = 0; index + 1 < bytes; index += 2) {
        const auto sample = static_cast<std::int16_t>(static_cast<unsigned char>(data[index]) |
                                                      (static_cast<unsigned char>(data[index + 1]) << 8));
        peak = std::max(peak, std::abs(static_cast<int>(sample)));
    }
    return peak;
}

class PulseCaptureTest : public ::testing::Test {
protected:
    // The capture reaches the server through the process's environment.
    void UseServer() {
        for (const std::string& variable : pulse_.ClientEnvironment()) {
            const std::size_t equals = variable.find('=');
            setenv(variable.substr(0, equals).c_str(), variable.substr(equals + 1).c_str(), 1);
        }
    }

    // Waits and takes blocks until `count` came or `limit` passed.
    std::vector<int> RecordBlocks(std::size_t count, std::chrono::milliseconds limit) {
        std::vector<int> peaks;
        const auto deadline = Clock::now() + limit;
        while (peaks.size() < count && Clock::now() < deadline) {
            capture_.Wait(250);
            capture_.TakeBlocks([&](const char* data, std::size_t bytes) {
                EXPECT_EQ(bytes, zirvel::kCaptureBlockBytes);
                peaks.push_back(Peak(data, bytes));
            });
        }
        return peaks;
    }

    // Takes every block that comes for `duration` (and those waiting).
    std::vector<int> RecordFor(std::chrono::milliseconds duration) {
        std::vector<int> peaks;
        const auto deadline = Clock::now() + duration;
        do {
            capture_.Wait(50);
            capture_.TakeBlocks([&](const char* data, std::size_t bytes) {
                EXPECT_EQ(bytes, zirvel::kCaptureBlockBytes);
                peaks.push_back(Peak(data, bytes));
            });
        } while (Clock::now() < deadline);
        return peaks;
    }

    PrivatePulseServer pulse_;
    zirvel::x11::PulseCapture capture_;
};

TEST_F(PulseCaptureTest, WithoutAServerThereIsNoMicrophoneAndSayingSoIsQuick) {
    UseServer();  // set up, not started
    const auto asked = Clock::now();
    EXPECT_FALSE(capture_.Open());
    EXPECT_LT(Clock::now() - asked, 500ms);
}

TEST_F(PulseCaptureTest, BlocksOfATenthOfASecondArriveInTime) {
    ASSERT_TRUE(pulse_.Start());
    UseServer();
    ASSERT_TRUE(capture_.Open());
    RecordBlocks(2, 3s);  // the stream settles
    RecordFor(0ms);       // and what waits already is taken
    // 3 s of recording are 30 blocks: the recording keeps real time (a
    // block late at either end, and one a wait may take with it, aside).
    const std::vector<int> peaks = RecordFor(3s);
    EXPECT_GE(peaks.size(), 26u);
    EXPECT_LE(peaks.size(), 34u);
    ASSERT_FALSE(peaks.empty());
    EXPECT_LT(*std::max_element(peaks.begin(), peaks.end()), 100) << "nothing was played: silence";
}

TEST_F(PulseCaptureTest, SpeechPlayedIntoTheSinkIsRecorded) {
    ASSERT_TRUE(pulse_.Start());
    UseServer();
    ASSERT_TRUE(capture_.Open());
    // Made before the recording starts, so all of it plays while it runs.
    const std::filesystem::path speech = pulse_.Speech("pokaż siatkę");
    ASSERT_FALSE(speech.empty()) << "espeak-ng made no speech";
    std::atomic<bool> played{false};
    std::thread speaker([&] {
        EXPECT_TRUE(pulse_.Play(speech));
        played = true;
    });
    std::vector<int> peaks;
    const auto limit = Clock::now() + 20s;
    while (!played && Clock::now() < limit) {
        const std::vector<int> more = RecordFor(100ms);
        peaks.insert(peaks.end(), more.begin(), more.end());
    }
    const std::vector<int> tail = RecordFor(500ms);  // what was still on its way
    peaks.insert(peaks.end(), tail.begin(), tail.end());
    speaker.join();
    EXPECT_GE(std::count_if(peaks.begin(), peaks.end(), [](int peak) { return peak >= 2000; }), 3);
}

TEST_F(PulseCaptureTest, AWaitIsBoundedWhenNothingArrives) {
    ASSERT_TRUE(pulse_.Start());
    UseServer();
    ASSERT_TRUE(capture_.Open());
    RecordBlocks(2, 3s);
    pulse_.Stop();
    const auto asked = Clock::now();
    capture_.Wait(250);
    EXPECT_LT(Clock::now() - asked, 400ms);
}

TEST_F(PulseCaptureTest, AServerThatGoesAwayIsReportedLostAndOpenWorksAgainLater) {
    ASSERT_TRUE(pulse_.Start());
    UseServer();
    ASSERT_TRUE(capture_.Open());
    pulse_.Stop();
    EXPECT_TRUE(WaitUntil(
        [this] {
            capture_.Wait(250);
            return capture_.Lost();
        },
        3000ms));
    capture_.Close();
    EXPECT_FALSE(capture_.Open());
    ASSERT_TRUE(pulse_.Start());
    EXPECT_TRUE(capture_.Open());
    EXPECT_FALSE(capture_.Lost());
    EXPECT_EQ(RecordBlocks(3, 3s).size(), 3u);
}

}  // namespace
}  // namespace zirvel_test
