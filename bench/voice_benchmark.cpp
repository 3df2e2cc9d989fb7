// The live program hearing speech, measured from outside. A private
// PulseAudio server's null sink stands for the room; this program plays
// tone bursts into it through its own low-latency stream, so it knows when
// each sound began. The stand-in recogniser in the program logs, on the
// same monotonic clock, when each block reached it and where in the block
// the sound began, and when it gave each final result.
//   - final result → its effect: the grid shown (the pointer at its
//     centre), and the key of a voice function (minus its deliberate
//     100 ms wait);
//   - the age of audio when it reaches the recogniser, counted from the
//     moment it was handed to the sound server (so the sink's 20 ms queue
//     is included): of the sound's first sample, and of the newest sample
//     of the block that carried it;
//   - the program's CPU use while it listens to silence.
// Usage: voice_benchmark [rounds, default 15] [silence seconds, default 60]
#include <X11/Xlib.h>

#include <pulse/simple.h>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "live_figures.h"
#include "private_pulse_server.h"
#include "voice/stand_in_model.h"
#include "x_session.h"

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using zirvel_bench::CpuPercentOver;
using zirvel_bench::Milliseconds;
using zirvel_bench::ReportLatency;
using zirvel::test_support::CountCalls;
using zirvel::test_support::LoggedCall;
using zirvel::test_support::ReadCallLog;
using zirvel_test::WaitUntil;

constexpr int kSampleRate = 16000;
constexpr int kVoiceFunctionWait = 100;  // a voice function starts 100 ms after its phrase
constexpr char kWheels[] = R"({"wheels": [{"name": "Gra", "actions": [{"name": "Skok", "key": "a", "voice": "skok"}]}]})";

double Now() { return Milliseconds(Clock::now().time_since_epoch()); }

// Plays silence into the sink without a break, and a loud square wave
// whenever asked; remembers when each burst was handed to the server.
class TonePlayer {
public:
    explicit TonePlayer(const std::vector<std::string>& environment) {
        for (const std::string& variable : environment) {
            const std::size_t equals = variable.find('=');
            setenv(variable.substr(0, equals).c_str(), variable.substr(equals + 1).c_str(), 1);
        }
        const pa_sample_spec format{PA_SAMPLE_S16LE, kSampleRate, 1};
        pa_buffer_attr buffering{};
        buffering.maxlength = static_cast<std::uint32_t>(-1);
        buffering.tlength = 640;  // 20 ms queued: a burst plays soon after it is written
        buffering.prebuf = static_cast<std::uint32_t>(-1);
        buffering.minreq = static_cast<std::uint32_t>(-1);
        buffering.fragsize = static_cast<std::uint32_t>(-1);
        stream_ = pa_simple_new(nullptr, "voice_benchmark", PA_STREAM_PLAYBACK, "vsink", "tone", &format, nullptr,
                                &buffering, nullptr);
        if (stream_) thread_ = std::thread([this] { Play(); });
    }

    ~TonePlayer() {
        running_ = false;
        if (thread_.joinable()) thread_.join();
        if (stream_) pa_simple_free(stream_);
    }

    bool Ready() const { return stream_ != nullptr; }

    // Plays a burst of `milliseconds`; returns when it was handed over.
    double Burst(int milliseconds) {
        burstStart_ = 0.0;
        burstSamples_ = milliseconds * kSampleRate / 1000;
        WaitUntil([this] { return burstStart_.load() != 0.0; }, 2000ms, 100us);
        return burstStart_;
    }

private:
    void Play() {
        constexpr int kChunk = kSampleRate / 100;  // 10 ms
        std::vector<std::int16_t> chunk(kChunk);
        while (running_) {
            const int loud = burstSamples_.exchange(0);
            int left = loud;
            // The moment the burst is handed to the server: what reaches the
            // recogniser is at most this old (the sink's short queue included).
            if (loud > 0) burstStart_ = Now();
            do {
                const int count = std::min(left, kChunk);
                for (int index = 0; index < kChunk; ++index) {
                    chunk[static_cast<std::size_t>(index)] =
                        index < count ? static_cast<std::int16_t>((index / 16) % 2 ? 16000 : -16000) : 0;
                }
                pa_simple_write(stream_, chunk.data(), chunk.size() * sizeof(std::int16_t), nullptr);
                left -= count;
            } while (left > 0 && running_);
        }
    }

    pa_simple* stream_ = nullptr;
    std::thread thread_;
    std::atomic<bool> running_{true};
    std::atomic<int> burstSamples_{0};
    std::atomic<double> burstStart_{0.0};
};

}  // namespace

int main(int argc, char* argv[]) {
    const int rounds = argc > 1 ? std::atoi(argv[1]) : 15;
    const int silenceSeconds = argc > 2 ? std::atoi(argv[2]) : 60;

    zirvel_test::PrivateXServer server(1920, 1080);
    zirvel_test::PrivatePulseServer pulse;
    if (!server.Running() || !pulse.Start()) {
        std::fprintf(stderr, "voice_benchmark: no Xvfb or no PulseAudio server\n");
        return 1;
    }
    zirvel_test::XConnection user(server.Name());
    zirvel_test::TestApplication application(server.Name(), 0, 0, 1920, 1080);
    application.Focus();
    const std::string library = std::filesystem::path(zirvel::voice_test::StandInLibrary("full")).string();
    zirvel_test::ProgramUnderTest program(
        server.Name(),
        R"({"toggleKey": "F8", "voiceEnabled": true, "voiceModel": "model", "voiceDllPath": ")" + library + "\"}",
        kWheels);
    std::vector<std::string> script{"after-speech"};
    for (int round = 0; round < rounds; ++round) {
        for (const char* phrase : {"result pokaż siatkę", "result schowaj siatkę", "result skok"}) script.push_back(phrase);
    }
    const zirvel::voice_test::StandInModel model(program.Directory(), "model", script);
    for (const std::string& variable : pulse.ClientEnvironment()) program.AddEnvironment(variable);
    TonePlayer player(pulse.ClientEnvironment());
    if (!player.Ready() || !program.Start() ||
        !WaitUntil([&] { return CountCalls(ReadCallLog(model.LogFile()), "accept ") >= 5; }, 10000ms)) {
        std::fprintf(stderr, "voice_benchmark: the program did not start listening\n");
        return 1;
    }

    std::vector<double> gridEffects, keyEffects, firstSampleAges, newestSampleAges;
    int keys = 0;
    for (int round = 0; round < rounds; ++round) {
        for (int phrase = 0; phrase < 3; ++phrase) {
            user.MoveMouseTo(100, 100);
            const int resultsBefore = CountCalls(ReadCallLog(model.LogFile()), "result ");
            std::this_thread::sleep_for(200ms);
            const double soundStart = player.Burst(400);
            Clock::time_point effect{};
            if (phrase == 0) {
                if (WaitUntil([&] { return user.Pointer() == std::make_pair(960, 540); }, 3000ms, 200us)) {
                    effect = Clock::now();
                }
            } else if (phrase == 2) {
                if (application.WaitForEvents(KeyPress, static_cast<std::size_t>(++keys), 3000ms)) {
                    effect = application.Events(KeyPress).back().arrived;
                }
            }
            WaitUntil([&] { return CountCalls(ReadCallLog(model.LogFile()), "result ") > resultsBefore; }, 3000ms);
            const std::vector<LoggedCall> calls = ReadCallLog(model.LogFile());
            double resultTime = 0.0;
            bool aged = false;
            for (const LoggedCall& call : calls) {
                if (call.time < soundStart) continue;
                int bytes = 0, peak = 0, firstLoud = -1;
                if (!aged && std::sscanf(call.text.c_str(), "accept %d %d %d", &bytes, &peak, &firstLoud) == 3 &&
                    firstLoud >= 0) {
                    const double blockMilliseconds = bytes / 2 * 1000.0 / kSampleRate;
                    const double soundInBlock = firstLoud * 1000.0 / kSampleRate;
                    firstSampleAges.push_back(call.time - soundStart);
                    newestSampleAges.push_back(call.time - soundStart - (blockMilliseconds - soundInBlock));
                    aged = true;
                }
                if (call.text.rfind("result ", 0) == 0) resultTime = call.time;
            }
            if (effect != Clock::time_point{} && resultTime > 0.0) {
                const double sinceResult = Milliseconds(effect.time_since_epoch()) - resultTime;
                (phrase == 0 ? gridEffects : keyEffects).push_back(phrase == 0 ? sinceResult : sinceResult - kVoiceFunctionWait);
            }
            std::this_thread::sleep_for(500ms);  // the end of the utterance and a pause
        }
    }

    std::printf("voice_benchmark: %d rounds of three phrases\n", rounds);
    ReportLatency("final result → grid shown (pointer at its centre)", gridEffects);
    // Later shows reuse the picture the grid window kept.
    if (!gridEffects.empty()) std::printf("  of which the first show, which draws the picture: %.2f ms\n", gridEffects.front());
    ReportLatency("final result → voice function's key, less its 100 ms wait", keyEffects);
    ReportLatency("age of a sound's first sample at the recogniser", firstSampleAges);
    ReportLatency("age of the newest sample of that block at the recogniser", newestSampleAges);

    const double cpu = CpuPercentOver(program.Process()->Pid(), std::chrono::seconds(silenceSeconds));
    std::printf("CPU of the whole program listening to silence for %d s: %.2f %% of a core\n", silenceSeconds, cpu);
    program.Stop();
    return 0;
}
