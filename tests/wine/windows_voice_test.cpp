// zirvel-engine.exe hears through waveIn: Wine's audio driver records from
// a private PulseAudio server, into which Polish speech is played. The
// stand-in recogniser answers only after it was given audio that is not
// silence; the published recogniser is loaded as the program folder ships
// it. The server's only microphone is also taken away and given back while
// the program listens, as an unplugged headset goes and comes.
#include <gtest/gtest.h>

#include <X11/keysym.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "private_pulse_server.h"
#include "voice/stand_in_model.h"
#include "wine_session.h"

namespace zirvel_test {
namespace {

using namespace std::chrono_literals;

const std::filesystem::path kStandInRecogniser =
    std::filesystem::path(ZIRVEL_WINDOWS_BUILD) / "tests/voice/stand_in_recogniser/full/libvosk.dll";

std::string StandInVoiceConfig() {
    return R"({"toggleKey": "x", "voiceEnabled": true, "voiceModel": "model", "voiceDllPath": ")" +
           WineSession::WindowsPathInJson(kStandInRecogniser) + "\"}";
}

std::string TextOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

class WindowsVoiceTest : public ::testing::Test {
protected:
    WindowsVoiceTest()
        : session_(StandInVoiceConfig(), ""),
          model_(session_.Directory(), "model", {"after-speech", "result pokaż siatkę", "result siedem"}) {
        for (const std::string& variable : pulse_.ClientEnvironment()) session_.AddEnvironment(variable);
    }

    PrivatePulseServer pulse_;
    WineSession session_;
    zirvel::voice_test::StandInModel model_;
};

TEST_F(WindowsVoiceTest, SpokenPhrasesShowTheGridAndMoveThePointer) {
    ASSERT_TRUE(session_.Ready());
    ASSERT_TRUE(pulse_.Start());
    ASSERT_TRUE(session_.StartApplication());
    ASSERT_TRUE(session_.StartEngine());
    ASSERT_TRUE(WaitUntil([this] { return model_.Count("accept 3200 ") >= 3; }, 10000ms, 20ms))
        << "no audio reached the recogniser through waveIn; its calls: " << model_.Calls().size() << " " << TextOf(session_.Directory() / "wine-output.txt");
    EXPECT_EQ(model_.Count("result "), 0) << "silence was taken for speech";

    // Away from the screen's centre, where the grid puts it: the pointer there
    // then shows that the first command was heard to its end before the
    // second one is spoken (else both would be one utterance).
    session_.User().MoveMouseTo(100, 100);
    ASSERT_TRUE(pulse_.Say("pokaż siatkę"));
    EXPECT_TRUE(WaitUntil([this] { return session_.User().Pointer() == std::make_pair(640, 512); }, 5000ms))
        << "the grid did not show; heard: " << model_.Heard();
    ASSERT_TRUE(pulse_.Say("siedem"));
    EXPECT_TRUE(WaitUntil([this] { return session_.User().Pointer() == std::make_pair(800, 384); }, 5000ms))
        << "the pointer did not move to cell 7; heard: " << model_.Heard();
    EXPECT_EQ(model_.Count("result "), 2);
}

TEST_F(WindowsVoiceTest, AMicrophoneThatGoesAwayAndComesBackIsHeardAgainWithoutARestart) {
    ASSERT_TRUE(session_.Ready());
    ASSERT_TRUE(pulse_.Start());
    ASSERT_TRUE(session_.StartApplication());
    ASSERT_TRUE(session_.StartEngine());
    ASSERT_TRUE(WaitUntil([this] { return model_.Count("accept 3200 ") >= 3; }, 10000ms, 20ms));
    ASSERT_TRUE(pulse_.RemoveMicrophone());
    // Audio stops: a whole second passes without a block.
    const auto quietForASecond = [this] {
        const int before = model_.Count("accept ");
        return !WaitUntil([&] { return model_.Count("accept ") > before; }, 1000ms, 50ms);
    };
    ASSERT_TRUE(WaitUntil(quietForASecond, 10000ms, 0ms)) << "audio still arrives without a microphone";
    ASSERT_TRUE(pulse_.RestoreMicrophone());
    // One retry pause of 3 s, an open and three blocks, on a busy machine.
    const int before = model_.Count("accept 3200 ");
    EXPECT_TRUE(WaitUntil([&] { return model_.Count("accept 3200 ") >= before + 3; }, 10000ms, 20ms))
        << "the program stayed deaf after the microphone came back";
    session_.User().MoveMouseTo(100, 100);
    ASSERT_TRUE(pulse_.Say("pokaż siatkę"));
    EXPECT_TRUE(WaitUntil([this] { return session_.User().Pointer() == std::make_pair(640, 512); }, 5000ms))
        << "the grid did not show; heard: " << model_.Heard();
}

// The voice thread over waveIn, as the engine runs it, reporting the
// statuses the user reads (zirvel_voice_status_probe.exe).
TEST(WindowsMicrophoneStatusTest, AMicrophoneThatGoesAwayIsNoMicrophoneUntilOneReturns) {
    PrivatePulseServer pulse;
    WineSession session("", "");
    for (const std::string& variable : pulse.ClientEnvironment()) session.AddEnvironment(variable);
    const zirvel::voice_test::StandInModel model(session.Directory(), "model", {});
    const std::filesystem::path statusFile = session.Directory() / "status.txt";
    const auto lastStatus = [&] {
        std::ifstream file(statusFile);
        std::string line, last;
        while (std::getline(file, line)) last = line;
        return last;
    };
    const auto statuses = [&] { return TextOf(statusFile) + "; heard: " + model.Heard(); };
    ASSERT_TRUE(session.Ready());
    ASSERT_TRUE(pulse.Start());
    const auto probe = session.StartProgram(
        {(std::filesystem::path(ZIRVEL_WINDOWS_BUILD) / "tests/win32/zirvel_voice_status_probe.exe").string(),
         WineSession::WindowsPath(kStandInRecogniser), WineSession::WindowsPath(model.Folder()),
         WineSession::WindowsPath(statusFile)});
    ASSERT_TRUE(WaitUntil([&] { return lastStatus() == "status 5 aktywny"; }, 60000ms)) << statuses();
    ASSERT_TRUE(WaitUntil([&] { return model.Count("accept 3200 ") >= 3; }, 10000ms, 20ms)) << statuses();

    ASSERT_TRUE(pulse.RemoveMicrophone());
    EXPECT_TRUE(WaitUntil([&] { return lastStatus() == "status 4 brak mikrofonu"; }, 10000ms))
        << "without a microphone: " << statuses();

    ASSERT_TRUE(pulse.RestoreMicrophone());
    EXPECT_TRUE(WaitUntil([&] { return lastStatus() == "status 5 aktywny"; }, 10000ms))
        << "with the microphone back: " << statuses();
    const int before = model.Count("accept 3200 ");
    EXPECT_TRUE(WaitUntil([&] { return model.Count("accept 3200 ") >= before + 3; }, 10000ms, 20ms)) << statuses();
    EXPECT_TRUE(probe->Alive());
}

TEST(WindowsRealRecogniserTest, WithoutAModelTheProgramKeepsWorking) {
    WineSession session(R"({"toggleKey": "x", "voiceEnabled": true})", "");
    ASSERT_TRUE(session.Ready());
    ASSERT_TRUE(std::filesystem::exists(session.Directory() / "libvosk.dll")) << "run scripts/fetch-recogniser.sh";
    ASSERT_TRUE(session.StartApplication());
    ASSERT_TRUE(session.StartEngine());
    // The library's own line names the model folder it could not open.
    EXPECT_TRUE(WaitUntil(
        [&] { return TextOf(session.Directory() / "wine-output.txt").find("vosk-model-small-pl-0.22") != std::string::npos; },
        10000ms, 50ms))
        << "the recogniser did not try the model folder";
    session.User().PressKey(XK_x);
    EXPECT_TRUE(session.WaitForLine("wheel shown", 5000ms)) << "the wheel did not show";
}

}  // namespace
}  // namespace zirvel_test
