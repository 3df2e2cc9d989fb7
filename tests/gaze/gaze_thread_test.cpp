// The gaze thread against the stand-in tracker: every status, the gaze
// point it keeps, reconnects and stopping.
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <memory>
#include <thread>
#include <utility>

#include "gaze/gaze_thread.h"
#include "stand_in_tracker.h"
#include "support/wait_for.h"

namespace zirvel::gaze_test {
namespace {

using namespace std::chrono_literals;
using test_support::WaitFor;

std::uint64_t Milliseconds() {
    return static_cast<std::uint64_t>(
        std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now().time_since_epoch())
            .count());
}

class GazeThreadTest : public ::testing::Test {
protected:
    void SetUp() override {
        static int counter = 0;
        directory_ = std::filesystem::temp_directory_path() /
                     ("zirvel_gaze_" + std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()) +
                      "_" + std::to_string(++counter));
        std::filesystem::remove_all(directory_);
        std::filesystem::create_directories(directory_);
        tracker_ = std::make_unique<StandInTracker>(directory_ / "tracker.txt");
        tracker_->UseInThisProcess();
    }

    void TearDown() override {
        Stop();
        std::error_code ignored;
        std::filesystem::remove_all(directory_, ignored);
    }

    void Start(const std::vector<std::string>& script, const std::filesystem::path& library = StandInTrackerLibrary("full"),
               std::vector<std::filesystem::path> roots = {}) {
        tracker_->Script(script);
        host_ = std::make_unique<GazeThreadHost>(GazeThreadHost{
            stop_, status_, pointX_, pointY_, lastTick_, directory_.u16string(), library.u16string(),
            std::move(roots), [] { return Milliseconds(); }, [this] { ++repaints_; }});
        thread_ = std::thread([this] {
            GazeThreadMain(*host_);
            ended_ = true;
        });
    }

    std::chrono::steady_clock::duration Stop() {
        if (!thread_.joinable()) return {};
        const auto asked = std::chrono::steady_clock::now();
        stop_ = true;
        EXPECT_TRUE(WaitFor([this] { return ended_.load(); }, 3s)) << "the thread ignored the stop request";
        const auto took = std::chrono::steady_clock::now() - asked;
        thread_.join();
        return took;
    }

    bool Ends() { return WaitFor([this] { return ended_.load(); }); }
    bool StatusBecomes(std::int32_t code) { return WaitFor([&] { return status_.load() == code; }); }

    std::filesystem::path directory_;
    std::unique_ptr<StandInTracker> tracker_;
    std::atomic<bool> stop_{false};
    std::atomic<std::int32_t> status_{0};
    std::atomic<std::int32_t> pointX_{0};
    std::atomic<std::int32_t> pointY_{0};
    std::atomic<std::uint64_t> lastTick_{0};
    std::atomic<int> repaints_{0};
    std::atomic<bool> ended_{false};
    std::unique_ptr<GazeThreadHost> host_;
    std::thread thread_;
};

const std::vector<std::string> kOneDevice{"device tobii-ttp://stand-in-1", "look 0.25 0.75"};

// First in this program: Windows hands out a loaded library of the same
// name to the search by name, so nothing may have loaded one before.
TEST_F(GazeThreadTest, WithoutTheLibraryTheStatusIsLibraryMissing) {
    Start(kOneDevice, directory_ / "nowhere" / "tracker");
    ASSERT_TRUE(Ends());
    EXPECT_EQ(status_, kGazeLibraryMissing);
    EXPECT_EQ(repaints_, 1);  // searching repaints nothing
}

TEST_F(GazeThreadTest, AConfiguredLibraryThatIsMissingLeadsOnToTheProgramDirectory) {
    std::filesystem::copy_file(StandInTrackerLibrary("full"), directory_ / std::filesystem::path(kTrackerLibraryFileName));
    Start(kOneDevice, directory_ / "missing" / std::filesystem::path(kTrackerLibraryFileName));
    ASSERT_TRUE(StatusBecomes(kGazeStreaming));
}

TEST_F(GazeThreadTest, ALibraryLackingARequiredEntryIsAnInitialisationError) {
    Start(kOneDevice, StandInTrackerLibrary("without-process-callbacks"));
    ASSERT_TRUE(Ends());
    EXPECT_EQ(status_, kGazeInitialisationError);
    EXPECT_EQ(tracker_->Count("api_create"), 0);
}

TEST_F(GazeThreadTest, AnApiThatCannotBeCreatedIsAnInitialisationError) {
    Start({"device tobii-ttp://stand-in-1", "fail api_create"});
    ASSERT_TRUE(Ends());
    EXPECT_EQ(status_, kGazeInitialisationError);
}

TEST_F(GazeThreadTest, WithoutADeviceTheStatusIsNoDeviceAndTheThreadEnds) {
    Start({"look 0.5 0.5"});
    ASSERT_TRUE(Ends());
    EXPECT_EQ(status_, kGazeNoDevice);
    EXPECT_EQ(tracker_->Count("enumerate 0"), 1);
    EXPECT_EQ(tracker_->Count("api_destroy"), 1);
    // A tracker plugged in now is not looked for again by this thread.
    tracker_->Script(kOneDevice);
    std::this_thread::sleep_for(100ms);
    EXPECT_EQ(tracker_->Count("enumerate"), 1);
}

TEST_F(GazeThreadTest, ADeviceThatCannotBeCreatedIsAnInitialisationError) {
    Start({"device tobii-ttp://stand-in-1", "fail device_create"});
    ASSERT_TRUE(Ends());
    EXPECT_EQ(status_, kGazeInitialisationError);
    EXPECT_EQ(tracker_->Count("api_destroy"), 1);
}

TEST_F(GazeThreadTest, ASubscriptionThatFailsIsAnInitialisationErrorAndFreesTheDevice) {
    Start({"device tobii-ttp://stand-in-1", "fail subscribe"});
    ASSERT_TRUE(Ends());
    EXPECT_EQ(status_, kGazeInitialisationError);
    EXPECT_EQ(tracker_->Count("device_destroy"), 1);
    EXPECT_EQ(tracker_->Count("api_destroy"), 1);
}

TEST_F(GazeThreadTest, TheFirstDeviceIsOpenedForInteractiveUseAndItsGazeKept) {
    Start({"device tobii-ttp://first", "device tobii-ttp://second", "look 0.25 0.75"});
    ASSERT_TRUE(StatusBecomes(kGazeStreaming));
    // The repaint is asked for just after the status is set.
    ASSERT_TRUE(WaitFor([this] { return repaints_.load() >= 1; }));
    EXPECT_EQ(repaints_, 1);
    ASSERT_TRUE(WaitFor([this] { return lastTick_.load() != 0; }));
    EXPECT_EQ(pointX_, 2500);
    EXPECT_EQ(pointY_, 7500);
    const std::uint64_t sampled = lastTick_.load();  // before the clock is read: never after it
    EXPECT_LE(Milliseconds() - sampled, 250u);
    EXPECT_EQ(tracker_->Count("api_create 0 0"), 1);  // no allocator, no log
    EXPECT_EQ(tracker_->Count("device_create tobii-ttp://first 1"), 1);
}

TEST_F(GazeThreadTest, TheGazePointIsTruncatedTowardZero) {
    Start({"device tobii-ttp://stand-in-1", "look 0.33339 0.99999"});
    ASSERT_TRUE(WaitFor([this] { return lastTick_.load() != 0; }));
    EXPECT_EQ(pointX_, 3333);
    EXPECT_EQ(pointY_, 9999);
}

TEST_F(GazeThreadTest, AnInvalidSampleKeepsTheLastPointAndItsTime) {
    Start(kOneDevice);
    ASSERT_TRUE(WaitFor([this] { return lastTick_.load() != 0; }));
    tracker_->Script({"device tobii-ttp://stand-in-1", "look invalid"});
    // A sample on its way may still be valid: the time stands still first.
    std::uint64_t last = lastTick_;
    ASSERT_TRUE(WaitFor([&] {
        std::this_thread::sleep_for(60ms);
        const std::uint64_t now = lastTick_.load();
        return std::exchange(last, now) == now;
    }));
    std::this_thread::sleep_for(150ms);
    EXPECT_EQ(lastTick_, last);
    EXPECT_EQ(pointX_, 2500);
    EXPECT_EQ(pointY_, 7500);
}

TEST_F(GazeThreadTest, WaitErrorsPauseThenReconnectAndTheStreamGoesOn) {
    // From before the start: a status noticed late must not shorten the pauses.
    const auto started = std::chrono::steady_clock::now();
    Start({"device tobii-ttp://stand-in-1", "wait-errors 2", "look 0.5 0.5"});
    ASSERT_TRUE(StatusBecomes(kGazeStreaming));
    ASSERT_TRUE(WaitFor([this] { return lastTick_.load() != 0; }));
    EXPECT_GE(std::chrono::steady_clock::now() - started, 900ms);  // two pauses of 500 ms
    EXPECT_EQ(tracker_->Count("reconnect"), 2);
    EXPECT_EQ(status_, kGazeStreaming);
}

TEST_F(GazeThreadTest, WithoutTheOptionalEntriesItStreamsAndStops) {
    Start({"device tobii-ttp://stand-in-1", "wait-errors 1", "look 0.5 0.5"}, StandInTrackerLibrary("without-optional"));
    ASSERT_TRUE(WaitFor([this] { return lastTick_.load() != 0; }));
    Stop();
    EXPECT_EQ(tracker_->Count("reconnect"), 0);
    EXPECT_EQ(tracker_->Count("unsubscribe"), 0);
    EXPECT_EQ(tracker_->Count("device_destroy"), 1);
}

TEST_F(GazeThreadTest, AStopUnsubscribesAndFreesEverythingAndKeepsTheStatus) {
    Start({"device tobii-ttp://stand-in-1", "silent"});
    ASSERT_TRUE(StatusBecomes(kGazeStreaming));
    EXPECT_LE(Stop(), 100ms + 250ms);  // a wait times out after 100 ms; a busy machine wakes late
    EXPECT_EQ(status_, kGazeStreaming);
    EXPECT_EQ(tracker_->Count("unsubscribe"), 1);
    EXPECT_EQ(tracker_->Count("device_destroy"), 1);
    EXPECT_EQ(tracker_->Count("api_destroy"), 1);
}

}  // namespace
}  // namespace zirvel::gaze_test
