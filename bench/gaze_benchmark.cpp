// The live program steered by the eyes, measured from outside. The
// stand-in tracker logs, on the same monotonic clock, when it delivered
// each gaze sample:
//   - the first sample at a new point → the virtual cursor's first move on
//     the screen;
//   - the dwell's end (the wheel gone from the screen) → the field's key at
//     the application, less sendDelay.
// Usage: gaze_benchmark [rounds, default 30]
#include <X11/keysym.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include "gaze/stand_in_tracker.h"
#include "live_figures.h"
#include "x_session.h"

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using zirvel_bench::Milliseconds;
using zirvel_bench::ReportLatency;
using zirvel_test::WaitUntil;

constexpr int kSendDelay = 100;
constexpr char kWheel[] = R"({"actions": [{"name": "A", "key": "a"}, {"name": "B", "key": "b"},
                                          {"name": "C", "key": "c"}, {"name": "D", "key": "d"}]})";
// The first field of the wheel centred on 1920 × 1080 (window at 666, 310).
const std::string kLookAtTheFirstField =
    "look " + std::to_string((666 + 380) / 1920.0) + " " + std::to_string((310 + 150) / 1080.0);

double Now() { return Milliseconds(Clock::now().time_since_epoch()); }

// The time of the first valid sample logged at or after `since`.
double FirstSampleAfter(const std::filesystem::path& log, double since) {
    for (const zirvel::test_support::LoggedCall& call : zirvel::test_support::ReadCallLog(log)) {
        if (call.time >= since && call.text.rfind("sample ", 0) == 0 && call.text.back() == '1') return call.time;
    }
    return 0.0;
}

}  // namespace

int main(int argc, char* argv[]) {
    const int rounds = argc > 1 ? std::atoi(argv[1]) : 30;
    zirvel_test::PrivateXServer server(1920, 1080);
    if (!server.Running()) return 1;
    zirvel_test::XConnection user(server.Name());
    zirvel_test::TestApplication application(server.Name(), 0, 0, 1920, 1080);
    application.Focus();
    user.MoveMouseTo(700, 500);
    zirvel_test::ProgramUnderTest program(
        server.Name(),
        R"({"toggleKey": "F8", "gazeEnabled": true, "gazeDwell": 400, "sendDelay": 100, "keyHold": 10,
            "voiceEnabled": false, "gazeDllPath": ")" +
            zirvel::gaze_test::StandInTrackerLibrary("full").string() + "\"}",
        kWheel);
    const zirvel::gaze_test::StandInTracker tracker(program.Directory() / "tracker.txt");
    program.AddEnvironment(tracker.Variable());
    tracker.Script({"device tobii-ttp://stand-in", "look invalid"});
    if (!program.Start() || !WaitUntil([&] { return tracker.Count("subscribe") == 1; }, 5000ms)) {
        std::fprintf(stderr, "gaze_benchmark: the program did not open the tracker\n");
        return 1;
    }

    // Around the wheel's centre, where the cursor waits before it moves.
    const zirvel_test::XConnection::Geometry centre{666 + 294 - 20, 310 + 230 - 20, 40, 40};
    std::vector<double> sampleToMove, dwellEndToKey;
    for (int round = 0; round < rounds; ++round) {
        user.PressKey(XK_F8);
        if (!WaitUntil([&] { return user.IsMapped(user.FindWindow("Zirvel — koło")); }, 3000ms)) continue;
        std::this_thread::sleep_for(150ms);
        const std::uint64_t still = user.ScreenChecksum(centre);
        const double looked = Now();
        tracker.Script({"device tobii-ttp://stand-in", "log-samples", kLookAtTheFirstField});
        if (WaitUntil([&] { return user.ScreenChecksum(centre) != still; }, 2000ms, 200us)) {
            const double moved = Now();
            const double sample = FirstSampleAfter(tracker.LogFile(), looked);
            if (sample > 0.0) sampleToMove.push_back(moved - sample);
        }
        if (WaitUntil([&] { return !user.IsMapped(user.FindWindow("Zirvel — koło")); }, 3000ms, 200us)) {
            const double hidden = Now();
            if (application.WaitForEvents(KeyPress, static_cast<std::size_t>(round) + 1, 3000ms)) {
                const double key = Milliseconds(application.Events(KeyPress).back().arrived.time_since_epoch());
                dwellEndToKey.push_back(key - hidden - kSendDelay);
            }
        }
        tracker.Script({"device tobii-ttp://stand-in", "look invalid"});
        std::this_thread::sleep_for(300ms);
    }
    std::printf("gaze_benchmark: %d rounds, 15 ms wheel timer, gazeDwell 400 ms, sendDelay 100 ms\n", rounds);
    ReportLatency("gaze sample at a new point → the cursor's first move on screen", sampleToMove);
    ReportLatency("dwell end (wheel gone) → the field's key, less sendDelay", dwellEndToKey);
    program.Stop();
    return 0;
}
