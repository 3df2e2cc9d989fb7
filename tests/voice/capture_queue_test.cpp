// The microphone's buffers as the voice thread takes them: oldest first,
// eight of them, and a device that has gone is told from a slow one.
#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <deque>
#include <vector>

#include "voice/capture_queue.h"

namespace zirvel::voice_test {
namespace {

using namespace std::chrono_literals;
using Clock = CaptureQueue::Clock;

// A driver as the wave-in documentation describes one: it fills the buffers
// it holds one block at a time in the order they were queued, and drops the
// audio of a block for which it holds none. Each block carries its number.
class Driver final : public CaptureBuffers {
public:
    bool refuse = false;
    int dropped = 0;

    // 100 ms of audio pass.
    void Record() {
        const int number = next_++;
        if (held_.empty()) {
            ++dropped;
            return;
        }
        const int slot = held_.front();
        held_.pop_front();
        std::memcpy(data_[Index(slot)].data(), &number, sizeof number);
        recorded_[Index(slot)] = kCaptureBlockBytes;
        done_[Index(slot)] = true;
    }
    // As waveInReset: every buffer held comes back done, empty.
    void ReturnAllEmpty() {
        for (int slot : held_) {
            recorded_[Index(slot)] = 0;
            done_[Index(slot)] = true;
        }
        held_.clear();
    }

    bool Done(int slot) const override { return done_[Index(slot)]; }
    const char* Data(int slot) const override { return data_[Index(slot)].data(); }
    std::size_t Recorded(int slot) const override { return recorded_[Index(slot)]; }
    bool Queue(int slot) override {
        if (refuse) return false;
        done_[Index(slot)] = false;
        held_.push_back(slot);
        return true;
    }

private:
    static std::size_t Index(int slot) { return static_cast<std::size_t>(slot); }

    std::deque<int> held_;
    std::array<std::array<char, kCaptureBlockBytes>, kCaptureBlockCount> data_{};
    std::array<std::size_t, kCaptureBlockCount> recorded_{};
    std::array<bool, kCaptureBlockCount> done_{};
    int next_ = 0;
};

class CaptureQueueTest : public ::testing::Test {
protected:
    // The numbers of the blocks handed on (-1 for an empty one).
    std::vector<int> Take(Clock::time_point now) {
        std::vector<int> numbers;
        queue_.Take(
            driver_,
            [&](const char* data, std::size_t bytes) {
                int number = -1;
                if (bytes > 0) std::memcpy(&number, data, sizeof number);
                numbers.push_back(number);
            },
            now);
        return numbers;
    }

    Driver driver_;
    CaptureQueue queue_;
    const Clock::time_point start_ = Clock::now();
};

TEST_F(CaptureQueueTest, BlocksReachTheRecogniserInTheOrderTheyWereRecorded) {
    ASSERT_TRUE(queue_.Start(driver_, start_));
    // Takes after varying numbers of blocks, so that the buffers come back
    // in an order that differs from their slots' order.
    std::vector<int> handed;
    for (const int blocks : {6, 4, 1, 7, 3, 8, 2, 5, 5, 1}) {
        for (int block = 0; block < blocks; ++block) driver_.Record();
        const std::vector<int> taken = Take(start_);
        EXPECT_EQ(taken.size(), static_cast<std::size_t>(blocks));
        handed.insert(handed.end(), taken.begin(), taken.end());
    }
    std::vector<int> expected(handed.size());
    for (std::size_t index = 0; index < expected.size(); ++index) expected[index] = static_cast<int>(index);
    EXPECT_EQ(handed, expected);
    EXPECT_EQ(driver_.dropped, 0);
}

TEST_F(CaptureQueueTest, EightHundredMillisecondsWaitWhileTheRecogniserIsMadeAnew) {
    ASSERT_TRUE(queue_.Start(driver_, start_));
    driver_.Record();
    EXPECT_EQ(Take(start_), std::vector<int>{0});
    // The voice thread is busy making a recogniser for new phrases.
    for (int block = 0; block < 8; ++block) driver_.Record();
    EXPECT_EQ(Take(start_ + 900ms), (std::vector<int>{1, 2, 3, 4, 5, 6, 7, 8}));
    EXPECT_EQ(driver_.dropped, 0);
}

TEST_F(CaptureQueueTest, NothingIsTakenBeforeTheDriverGivesABufferBack) {
    ASSERT_TRUE(queue_.Start(driver_, start_));
    EXPECT_TRUE(Take(start_).empty());
    driver_.Record();
    EXPECT_EQ(Take(start_), std::vector<int>{0});
    EXPECT_TRUE(Take(start_).empty());
}

TEST_F(CaptureQueueTest, ADeviceThatRecordsNothingForTwoSecondsIsLost) {
    ASSERT_TRUE(queue_.Start(driver_, start_));
    EXPECT_FALSE(queue_.Lost(start_ + 1999ms));
    EXPECT_TRUE(queue_.Lost(start_ + 2000ms));
}

TEST_F(CaptureQueueTest, RecordedAudioKeepsTheDeviceAlive) {
    ASSERT_TRUE(queue_.Start(driver_, start_));
    driver_.Record();
    Take(start_ + 1500ms);
    EXPECT_FALSE(queue_.Lost(start_ + 3499ms));
    EXPECT_TRUE(queue_.Lost(start_ + 3500ms));
}

TEST_F(CaptureQueueTest, BuffersThatComeBackEmptyAreNotAudio) {
    ASSERT_TRUE(queue_.Start(driver_, start_));
    driver_.ReturnAllEmpty();
    EXPECT_EQ(Take(start_ + 1500ms), std::vector<int>(kCaptureBlockCount, -1));
    EXPECT_TRUE(queue_.Lost(start_ + 2000ms));
}

TEST_F(CaptureQueueTest, ABufferTheDriverRefusesIsALostDeviceAtOnce) {
    ASSERT_TRUE(queue_.Start(driver_, start_));
    driver_.Record();
    driver_.Record();
    driver_.refuse = true;
    // The first block still reaches the recogniser; nothing after the refusal.
    EXPECT_EQ(Take(start_), std::vector<int>{0});
    EXPECT_TRUE(queue_.Lost(start_));
}

TEST_F(CaptureQueueTest, ADriverThatRefusesTheFirstBuffersCannotStart) {
    driver_.refuse = true;
    EXPECT_FALSE(queue_.Start(driver_, start_));
    EXPECT_TRUE(queue_.Lost(start_));
}

TEST_F(CaptureQueueTest, AStartAfterALossBeginsAfresh) {
    driver_.refuse = true;
    ASSERT_FALSE(queue_.Start(driver_, start_));
    Driver fresh;
    const Clock::time_point later = start_ + 5s;
    ASSERT_TRUE(queue_.Start(fresh, later));
    EXPECT_FALSE(queue_.Lost(later + 1s));
}

}  // namespace
}  // namespace zirvel::voice_test
