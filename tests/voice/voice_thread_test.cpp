// The voice thread against the stand-in recogniser and a scripted
// microphone: every state it can be in and every way out of it.
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <memory>
#include <mutex>
#include <thread>

#include "scripted_microphone.h"
#include "stand_in_model.h"
#include "voice/voice_thread.h"
#include "voice_test_support.h"

namespace zirvel::voice_test {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

// How late a thread may wake on a busy machine (and under ThreadSanitizer
// or Wine) beyond the wait it was given; far less than any wait a broken
// thread would add (a whole block, a retry pause of 3 s).
constexpr auto kLateWake = 250ms;

class VoiceThreadTest : public ::testing::Test {
protected:
    void SetUp() override {
        static int counter = 0;
        directory_ = std::filesystem::temp_directory_path() /
                     ("zirvel_voice_" + std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()) +
                      "_" + std::to_string(++counter));
        std::filesystem::remove_all(directory_);
        std::filesystem::create_directories(directory_);
        RebuildVoicePhrases(phrases_, {WheelWithPhrases({u"skok", u"strzał w dal"})}, {});
    }

    void TearDown() override {
        Stop();
        std::error_code ignored;
        std::filesystem::remove_all(directory_, ignored);
    }

    StandInModel Model(const std::vector<std::string>& script, const std::string& name = "model") {
        return StandInModel(directory_, name, script);
    }

    void Start(const std::u16string& voiceModel, const std::u16string& voiceDllPath = StandInLibrary("full")) {
        VoiceDispatchTarget target;
        target.post = [this](EngineMessage message) {
            std::lock_guard lock(mutex_);
            posted_.push_back({message.kind, message.first, message.second});
        };
        target.voiceGlobal = [] { return true; };
        target.wheelVisible = [] { return false; };
        host_ = std::make_unique<VoiceThreadHost>(VoiceThreadHost{
            stop_, status_, phrases_, target, microphone_, directory_.u16string(), voiceModel, voiceDllPath,
            [this] { ++repaints_; },
            [this](std::u16string phrases) {
                std::lock_guard lock(mutex_);
                skipped_.push_back(std::move(phrases));
            }});
        ended_ = false;
        thread_ = std::thread([this] {
            VoiceThreadMain(*host_);
            ended_ = true;
        });
    }

    void Start(const StandInModel& model, const std::u16string& voiceDllPath = StandInLibrary("full")) {
        Start(model.Folder().u16string(), voiceDllPath);
    }

    // Asks the thread to stop and waits for it; how long that took.
    Clock::duration Stop() {
        if (!thread_.joinable()) return {};
        const auto asked = Clock::now();
        stop_ = true;
        EXPECT_TRUE(WaitFor([this] { return ended_.load(); }, 3s)) << "the thread ignored the stop request";
        const auto took = Clock::now() - asked;
        thread_.join();
        return took;
    }

    bool StatusBecomes(std::int32_t code, std::chrono::milliseconds limit = 5s) {
        return WaitFor([&] { return status_.load() == code; }, limit);
    }

    bool Ends(std::chrono::milliseconds limit = 5s) {
        return WaitFor([this] { return ended_.load(); }, limit);
    }

    std::vector<Posted> PostedMessages() {
        std::lock_guard lock(mutex_);
        return posted_;
    }

    std::vector<std::u16string> SkippedNotices() {
        std::lock_guard lock(mutex_);
        return skipped_;
    }

    std::filesystem::path directory_;
    VoicePhraseTable phrases_;
    ScriptedMicrophone microphone_;
    std::atomic<bool> stop_{false};
    std::atomic<std::int32_t> status_{0};
    std::atomic<int> repaints_{0};
    std::atomic<bool> ended_{false};
    std::unique_ptr<VoiceThreadHost> host_;
    std::thread thread_;
    std::mutex mutex_;
    std::vector<Posted> posted_;
    std::vector<std::u16string> skipped_;
};

TEST_F(VoiceThreadTest, WithoutTheLibraryTheStatusIsLibraryMissingAndTheThreadEnds) {
    Start(u"model", (directory_ / "nowhere" / "libvosk").u16string());
    ASSERT_TRUE(Ends());
    EXPECT_EQ(status_, kVoiceLibraryMissing);
    EXPECT_EQ(repaints_, 2);  // loading, then missing
    EXPECT_EQ(microphone_.opens, 0);
}

TEST_F(VoiceThreadTest, TheLibraryBesideTheProgramIsFoundWithoutAPath) {
    std::filesystem::copy_file(std::filesystem::path(StandInLibrary("full")),
                               directory_ / std::filesystem::path(kSpeechLibraryFileName));
    const StandInModel model = Model({});
    Start(u"model", u"");
    ASSERT_TRUE(StatusBecomes(kVoiceListening));
    EXPECT_EQ(model.Count("model_new"), 1);
}

TEST_F(VoiceThreadTest, TheConfiguredLibraryComesBeforeTheOneBesideTheProgram) {
    std::filesystem::copy_file(std::filesystem::path(StandInLibrary("full")),
                               directory_ / std::filesystem::path(kSpeechLibraryFileName));
    Model({});
    Start(u"model", StandInLibrary("without-result"));
    ASSERT_TRUE(Ends());
    EXPECT_EQ(status_, kVoiceInitialisationError);
}

TEST_F(VoiceThreadTest, ALibraryLackingARequiredEntryIsAnInitialisationError) {
    const StandInModel model = Model({});
    Start(model, StandInLibrary("without-result"));
    ASSERT_TRUE(Ends());
    EXPECT_EQ(status_, kVoiceInitialisationError);
    EXPECT_EQ(model.Count("model_new"), 0);
}

TEST_F(VoiceThreadTest, AModelNameIsOpenedInsideTheProgramDirectory) {
    const StandInModel model = Model({}, "vosk-model-small-pl-0.22");
    Start(u"vosk-model-small-pl-0.22");
    ASSERT_TRUE(StatusBecomes(kVoiceListening));
    const std::string opened = model.Last("model_new ");
    EXPECT_EQ(std::filesystem::path(opened.substr(10)), model.Folder());
}

TEST_F(VoiceThreadTest, AFullModelPathIsOpenedAsItStands) {
    const StandInModel model = Model({}, "elsewhere");
    ASSERT_TRUE(IsFullPath(model.Folder().u16string()));
    Start(model);
    ASSERT_TRUE(StatusBecomes(kVoiceListening));
    EXPECT_EQ(model.Last("model_new "), "model_new " + model.Folder().string());
}

TEST_F(VoiceThreadTest, AMissingModelFolderIsModelMissing) {
    Start(u"vosk-model-small-pl-0.22");
    ASSERT_TRUE(Ends());
    EXPECT_EQ(status_, kVoiceModelMissing);
}

TEST_F(VoiceThreadTest, ARecogniserThatCannotBeCreatedIsAnInitialisationErrorAndTheModelIsFreed) {
    const StandInModel model = Model({"fail-create"});
    Start(model);
    ASSERT_TRUE(Ends());
    EXPECT_EQ(status_, kVoiceInitialisationError);
    EXPECT_EQ(model.Count("model_free"), 1);
    EXPECT_EQ(microphone_.opens, 0);
}

TEST_F(VoiceThreadTest, ACreationThatFaultsIsAnInitialisationErrorNotACrash) {
    const StandInModel model = Model({"fault new_grm 1"});
    Start(model);
    ASSERT_TRUE(Ends());
    EXPECT_EQ(status_, kVoiceInitialisationError);
    EXPECT_EQ(model.Count("model_free"), 1);
}

TEST_F(VoiceThreadTest, TheRecogniserGetsTheGrammarAtSixteenKilohertz) {
    const StandInModel model = Model({});
    Start(model);
    ASSERT_TRUE(StatusBecomes(kVoiceListening));
    const std::string created = model.Last("new_grm ");
    EXPECT_EQ(created.rfind("new_grm 16000 [\"pokaż koło\",", 0), 0u) << created;
    EXPECT_NE(created.find("\"strzał w dal\",\"[unk]\"]"), std::string::npos) << created;
}

TEST_F(VoiceThreadTest, AFinalResultIsDispatched) {
    const StandInModel model = Model({"every 3", "result pokaż siatkę", "result nieznane", "result skok"});
    Start(model);
    ASSERT_TRUE(WaitFor([this] { return PostedMessages().size() >= 2; }));
    const std::vector<Posted> posted = PostedMessages();
    EXPECT_EQ(posted[0].kind, EngineMessageKind::VoiceCommand);
    EXPECT_EQ(posted[0].first, kShowGridCommand);
    EXPECT_EQ(posted[1].kind, EngineMessageKind::RunWheelFunction);
    EXPECT_EQ(posted[1].first, 0);
    EXPECT_EQ(posted[1].second, 0);
    EXPECT_EQ(model.Last("accept "), "accept 3200 0 -1");
}

TEST_F(VoiceThreadTest, APhraseWrittenWithPolishCapitalsIsInTheGrammarInLowerCaseAndRuns) {
    RebuildVoicePhrases(phrases_, {WheelWithPhrases({u"skok", u"Otwórz Żółtą Stronę"})}, {});
    const StandInModel model = Model({"every 3", "result otwórz żółtą stronę"});
    Start(model);
    ASSERT_TRUE(WaitFor([this] { return !PostedMessages().empty(); }));
    EXPECT_NE(model.Last("new_grm ").find("\"otwórz \xC5\xBC\xC3\xB3\xC5\x82t\xC4\x85 stron\xC4\x99\",\"[unk]\"]"),
              std::string::npos)
        << model.Last("new_grm ");
    const std::vector<Posted> posted = PostedMessages();
    EXPECT_EQ(posted[0].kind, EngineMessageKind::RunWheelFunction);
    EXPECT_EQ(posted[0].first, 0);
    EXPECT_EQ(posted[0].second, 1);
}

TEST_F(VoiceThreadTest, AnAcceptThatFaultsCountsAsNoResultAndListeningGoesOn) {
    const StandInModel model = Model({"fault accept 1", "result skok"});
    Start(model);
    ASSERT_TRUE(WaitFor([this] { return !PostedMessages().empty(); }));
    EXPECT_EQ(status_, kVoiceListening);
    EXPECT_GE(model.Count("accept "), 2);
}

TEST_F(VoiceThreadTest, PhrasesTheModelCannotSayAreLeftOutAndReported) {
    const StandInModel model = Model({"reject dal"});
    Start(model);
    ASSERT_TRUE(StatusBecomes(kVoiceListening));
    EXPECT_EQ(model.Last("new_grm ").find("strzał w dal"), std::string::npos);
    ASSERT_EQ(SkippedNotices().size(), 1u);
    EXPECT_EQ(SkippedNotices()[0], u"„strzał w dal”");
}

TEST_F(VoiceThreadTest, WithoutTheVocabularyLookupNothingIsLeftOutOrReported) {
    const StandInModel model = Model({"reject dal"});
    Start(model, StandInLibrary("without-find-word"));
    ASSERT_TRUE(StatusBecomes(kVoiceListening));
    EXPECT_NE(model.Last("new_grm ").find("strzał w dal"), std::string::npos);
    EXPECT_TRUE(SkippedNotices().empty());
}

TEST_F(VoiceThreadTest, NewPhrasesReachTheRecogniserWithinAQuarterSecond) {
    const StandInModel model = Model({});
    microphone_.blockPeriod = 250ms;  // the longest wait: no block comes in the meantime
    Start(model);
    ASSERT_TRUE(StatusBecomes(kVoiceListening));
    const auto changed = Clock::now();
    RebuildVoicePhrases(phrases_, {WheelWithPhrases({u"nowa fraza"})}, {});
    ASSERT_TRUE(WaitFor([&] { return model.Count("set_grm ") == 1; }));
    EXPECT_LE(Clock::now() - changed, 250ms + kLateWake);
    EXPECT_NE(model.Last("set_grm ").find("\"nowa fraza\""), std::string::npos);
    EXPECT_EQ(model.Count("new_grm "), 1);
}

TEST_F(VoiceThreadTest, WithoutSetGrammarANewRecogniserTakesTheNewPhrases) {
    const StandInModel model = Model({});
    microphone_.blockPeriod = 250ms;
    Start(model, StandInLibrary("without-set-grm"));
    ASSERT_TRUE(StatusBecomes(kVoiceListening));
    const auto changed = Clock::now();
    RebuildVoicePhrases(phrases_, {WheelWithPhrases({u"nowa fraza"})}, {});
    ASSERT_TRUE(WaitFor([&] { return model.Count("new_grm ") == 2; }));
    EXPECT_LE(Clock::now() - changed, 250ms + kLateWake);
    EXPECT_NE(model.Last("new_grm ").find("\"nowa fraza\""), std::string::npos);
    EXPECT_EQ(model.Count("free_recognizer"), 1);
    EXPECT_EQ(status_, kVoiceListening);
}

TEST_F(VoiceThreadTest, ASetGrammarThatFaultsMakesANewRecogniser) {
    const StandInModel model = Model({"fault set_grm 1", "every 5", "result nowa fraza"});
    Start(model);
    ASSERT_TRUE(StatusBecomes(kVoiceListening));
    RebuildVoicePhrases(phrases_, {WheelWithPhrases({u"nowa fraza"})}, {});
    ASSERT_TRUE(WaitFor([&] { return model.Count("new_grm ") == 2; }));
    EXPECT_NE(model.Last("new_grm ").find("\"nowa fraza\""), std::string::npos);
    ASSERT_TRUE(WaitFor([this] { return !PostedMessages().empty(); }));
    EXPECT_EQ(PostedMessages()[0].kind, EngineMessageKind::RunWheelFunction);
}

TEST_F(VoiceThreadTest, ARecogniserThatCannotBeMadeAgainIsAnInitialisationError) {
    const StandInModel model = Model({"fault set_grm 1", "fault new_grm 2"});
    Start(model);
    ASSERT_TRUE(StatusBecomes(kVoiceListening));
    RebuildVoicePhrases(phrases_, {WheelWithPhrases({u"nowa fraza"})}, {});
    ASSERT_TRUE(Ends());
    EXPECT_EQ(status_, kVoiceInitialisationError);
    EXPECT_EQ(model.Count("model_free"), 1);
    EXPECT_EQ(microphone_.closes, 1);
}

TEST_F(VoiceThreadTest, WithoutAMicrophoneItWaitsAndListensOnceOneAppears) {
    microphone_.present = false;
    Model({});
    Start(u"model");
    ASSERT_TRUE(StatusBecomes(kVoiceNoMicrophone));
    const int repaintsWhileWaiting = repaints_;
    std::this_thread::sleep_for(3500ms);  // a retry came and went
    EXPECT_EQ(status_, kVoiceNoMicrophone);
    EXPECT_EQ(repaints_, repaintsWhileWaiting) << "an unchanged status repaints nothing";
    microphone_.present = true;
    const auto plugged = Clock::now();
    ASSERT_TRUE(StatusBecomes(kVoiceListening));
    EXPECT_LE(Clock::now() - plugged, 3000ms + kLateWake);  // one pause of 3 s, at most
    EXPECT_EQ(microphone_.opens, 1);
}

TEST_F(VoiceThreadTest, AStopWhileWaitingForAMicrophoneEndsWithinATenthOfASecond) {
    microphone_.present = false;
    const StandInModel model = Model({});
    Start(u"model");
    ASSERT_TRUE(StatusBecomes(kVoiceNoMicrophone));
    std::this_thread::sleep_for(1s);
    EXPECT_LE(Stop(), 100ms + kLateWake);
    EXPECT_EQ(status_, kVoiceNoMicrophone);
    EXPECT_EQ(model.Count("free_recognizer"), 1);
    EXPECT_EQ(model.Count("model_free"), 1);
}

TEST_F(VoiceThreadTest, AStopWhileListeningEndsWithinAQuarterSecondAndFreesEverything) {
    const StandInModel model = Model({});
    microphone_.blockPeriod = 250ms;
    Start(model);
    ASSERT_TRUE(StatusBecomes(kVoiceListening));
    EXPECT_LE(Stop(), 250ms + kLateWake);
    EXPECT_EQ(status_, kVoiceListening);
    EXPECT_EQ(microphone_.closes, 1);
    EXPECT_EQ(model.Count("free_recognizer"), 1);
    EXPECT_EQ(model.Count("model_free"), 1);
}

TEST_F(VoiceThreadTest, AMicrophoneThatGoesAwayIsWaitedForAgain) {
    Model({});
    Start(u"model");
    ASSERT_TRUE(StatusBecomes(kVoiceListening));
    microphone_.present = false;
    microphone_.lose = true;
    ASSERT_TRUE(StatusBecomes(kVoiceNoMicrophone));
    EXPECT_EQ(microphone_.closes, 1);
    microphone_.present = true;
    ASSERT_TRUE(StatusBecomes(kVoiceListening));
    EXPECT_EQ(microphone_.opens, 2);
}

}  // namespace
}  // namespace zirvel::voice_test
