// The real program hears: Polish speech played into a private PulseAudio
// server reaches the recogniser (the stand-in, which answers only after it
// was given audio that is not silence), and what it recognises acts.
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <X11/keysym.h>

#include "private_pulse_server.h"
#include "voice/stand_in_model.h"
#include "x_session.h"

namespace zirvel_test {
namespace {

using namespace std::chrono_literals;
using zirvel::voice_test::StandInLibrary;

std::string VoiceConfig() {
    return "{\"toggleKey\": \"F8\", \"voiceEnabled\": true, \"voiceModel\": \"model\", \"voiceDllPath\": \"" +
           std::filesystem::path(StandInLibrary("full")).string() + "\"}";
}

class LiveVoiceTest : public ::testing::Test {
protected:
    LiveVoiceTest()
        : server_(1920, 1080),
          user_(server_.Name()),
          application_(server_.Name(), 0, 0, 1920, 1080),
          program_(server_.Name(), VoiceConfig(), ""),
          model_(program_.Directory(), "model", {"after-speech", "result pokaż siatkę", "result siedem"}) {
        for (const std::string& variable : pulse_.ClientEnvironment()) program_.AddEnvironment(variable);
    }

    void SetUp() override {
        ASSERT_TRUE(server_.Running());
        application_.Focus();
        user_.MoveMouseTo(700, 500);
    }

    bool AudioReachesTheRecogniser(std::chrono::milliseconds limit) {
        return WaitUntil([this] { return model_.Count("accept 3200 ") >= 3; }, limit, 20ms);
    }

    bool PointerComesTo(int x, int y) {
        return WaitUntil([&] { return user_.Pointer() == std::make_pair(x, y); }, 5000ms);
    }

    PrivateXServer server_;
    XConnection user_;
    TestApplication application_;
    PrivatePulseServer pulse_;
    ProgramUnderTest program_;
    zirvel::voice_test::StandInModel model_;
};

TEST_F(LiveVoiceTest, SpokenPhrasesShowTheGridAndMoveThePointer) {
    ASSERT_TRUE(pulse_.Start());
    ASSERT_TRUE(program_.Start());
    ASSERT_TRUE(AudioReachesTheRecogniser(5000ms)) << "no audio reached the recogniser";
    EXPECT_EQ(model_.Count("result "), 0) << "silence was taken for speech";

    ASSERT_TRUE(pulse_.Say("pokaż siatkę"));
    EXPECT_TRUE(PointerComesTo(960, 540)) << "the grid did not show; " << model_.Heard();
    ASSERT_TRUE(pulse_.Say("siedem"));
    EXPECT_TRUE(PointerComesTo(1200, 405)) << "the pointer did not move to cell 7 but is at " << user_.Pointer().first
                                           << ", " << user_.Pointer().second << "; " << model_.Heard();
    EXPECT_EQ(model_.Count("result "), 2);
}

TEST_F(LiveVoiceTest, AMicrophoneThatAppearsLaterIsHeardWithoutARestart) {
    ASSERT_TRUE(program_.Start());
    ASSERT_TRUE(WaitUntil([this] { return model_.Count("new_grm ") == 1; }, 5000ms, 20ms));
    std::this_thread::sleep_for(1s);
    EXPECT_EQ(model_.Count("accept "), 0);

    ASSERT_TRUE(pulse_.Start());
    // One retry pause of 3 s, a connection and three blocks, on a busy machine.
    EXPECT_TRUE(AudioReachesTheRecogniser(7000ms)) << "the thread did not find the new microphone";
    ASSERT_TRUE(pulse_.Say("pokaż siatkę"));
    EXPECT_TRUE(PointerComesTo(960, 540));
    EXPECT_TRUE(program_.Process()->Alive());
}

// The published recogniser beside the program, with no model installed:
// the program says so (the library's own line names the folder) and the
// wheel works as ever.
TEST(LiveRealRecogniserTest, WithoutAModelTheProgramKeepsWorking) {
    PrivateXServer server(1280, 1024);
    ASSERT_TRUE(server.Running());
    XConnection user(server.Name());
    TestApplication application(server.Name(), 0, 0, 1280, 1024);
    application.Focus();
    ProgramUnderTest program(server.Name(), R"({"toggleKey": "F8", "voiceEnabled": true})", "");
    ASSERT_TRUE(std::filesystem::exists(program.Directory() / "libvosk.so")) << "run scripts/fetch-recogniser.sh";
    ASSERT_TRUE(program.Start());
    const std::filesystem::path output = program.Directory() / "output1.txt";
    EXPECT_TRUE(WaitUntil(
        [&] {
            std::ifstream file(output);
            const std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
            return text.find("vosk-model-small-pl-0.22") != std::string::npos;
        },
        5000ms))
        << "the recogniser did not try the model folder";
    user.PressKey(XK_F8);
    EXPECT_TRUE(WaitUntil([&] { return user.IsMapped(user.FindWindow("Zirvel — koło")); }, 3000ms));
    EXPECT_TRUE(program.Process()->Alive());
}

}  // namespace
}  // namespace zirvel_test
