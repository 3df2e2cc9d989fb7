// The Linux microphone against a private PulseAudio server.
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <thread>

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
    const auto started = Clock::now();
    const std::vector<int> peaks = RecordBlocks(20, 5s);
    const auto took = Clock::now() - started;
    ASSERT_EQ(peaks.size(), 20u);
    // 20 blocks are 2 s of audio: the recording keeps real time.
    EXPECT_GT(took, 1700ms);
    EXPECT_LT(took, 2400ms);
    EXPECT_LT(*std::max_element(peaks.begin(), peaks.end()), 100) << "nothing was played: silence";
}

TEST_F(PulseCaptureTest, SpeechPlayedIntoTheSinkIsRecorded) {
    ASSERT_TRUE(pulse_.Start());
    UseServer();
    ASSERT_TRUE(capture_.Open());
    std::thread speaker([this] { EXPECT_TRUE(pulse_.Say("pokaż siatkę")); });
    const std::vector<int> peaks = RecordBlocks(30, 6s);
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
