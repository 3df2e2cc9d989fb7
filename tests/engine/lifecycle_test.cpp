#include <atomic>
#include <chrono>
#include <thread>

#include "engine/status_texts.h"
#include "engine_fixture.h"

namespace zirvel_test {
namespace {

using zirvel::Engine;

constexpr char kTwoWheels[] = R"({"wheels": [
  {"name": "A", "actions": [{"name": "a1", "key": "a"}, {"name": "a2", "key": "b"}]},
  {"name": "B", "actions": [{"name": "b1", "key": "c"}]}]})";

TEST_F(EngineTest, StartTwiceRegistersTheHotKeyOnce) {
    Start(R"({"toggleKey": "F5"})");
    ASSERT_TRUE(platform_.RegisteredHotKey().has_value());
    EXPECT_EQ(platform_.RegisteredHotKey()->vk, 0x74);
    EXPECT_EQ(OverlayEngineStart(), 1);
    EXPECT_EQ(platform_.HotKeyRegistrations(), 1);
}

TEST_F(EngineTest, StartAfterStopStillAnswersOneAndRegistersNothing) {
    Start();
    OverlayEngineStop();
    EXPECT_FALSE(platform_.RegisteredHotKey().has_value());
    EXPECT_EQ(OverlayEngineStart(), 1);
    EXPECT_FALSE(platform_.RegisteredHotKey().has_value());
    EXPECT_EQ(platform_.HotKeyRegistrations(), 1);
}

TEST_F(EngineTest, TakenHotKeyWarnsWithTheKeyTextAndStartGoesOn) {
    platform_.SetHotKeyTaken(true);
    Start(R"({"toggleKey": " F7 "})");
    ASSERT_EQ(platform_.Warnings().size(), 1u);
    EXPECT_EQ(platform_.Warnings()[0],
              u"Nie udało się zarejestrować globalnego skrótu ' F7 '.\nByć może inny program już go używa.");
}

TEST_F(EngineTest, ConfigurationProblemsAreNotShownThroughTheExports) {
    Start(R"({"segmentColor": "#FFF"})");
    EXPECT_TRUE(platform_.Warnings().empty());
}

TEST_F(EngineTest, StandAloneHostShowsConfigurationProblems) {
    StartStandAlone(R"({"segmentColor": "#FFF"})");
    ASSERT_EQ(platform_.Warnings().size(), 1u);
    EXPECT_EQ(platform_.Warnings()[0],
              u"Problemy z konfiguracją:\n\nconfig.json: niepoprawny \"segmentColor\" (format \"#RRGGBB\").\n");
}

TEST_F(EngineTest, StatusTextsFollowTheirTables) {
    EXPECT_EQ(std::u16string(OverlayGazeStatus()), u"wyłączony (gazeEnabled = false)");
    EXPECT_EQ(std::u16string(OverlayVoiceStatus()), u"wyłączony (voiceEnabled = false)");
    engine().gazeStatus = 4;
    engine().voiceStatus = 4;
    EXPECT_EQ(std::u16string(OverlayGazeStatus()), u"aktywny");
    EXPECT_EQ(std::u16string(OverlayVoiceStatus()), u"brak mikrofonu");
    engine().voiceStatus = 5;
    EXPECT_EQ(std::u16string(OverlayVoiceStatus()), u"aktywny");
    engine().gazeStatus = 7;
    engine().voiceStatus = 7;
    EXPECT_EQ(std::u16string(OverlayGazeStatus()), u"błąd inicjalizacji");
    EXPECT_EQ(std::u16string(OverlayVoiceStatus()), u"błąd inicjalizacji");
    EXPECT_EQ(std::u16string(zirvel::GazeStatusText(5)), u"błąd inicjalizacji");
    EXPECT_EQ(std::u16string(zirvel::GazeStatusText(-1)), u"błąd inicjalizacji");
    // A missing library is named by its file on this platform.
#ifdef _WIN32
    EXPECT_EQ(std::u16string(zirvel::GazeStatusText(2)),
              u"brak tobii_stream_engine.dll (zainstaluj oprogramowanie Tobii)");
    EXPECT_EQ(std::u16string(zirvel::VoiceStatusText(2)), u"brak libvosk.dll");
#else
    EXPECT_EQ(std::u16string(zirvel::GazeStatusText(2)),
              u"brak libtobii_stream_engine.so (zainstaluj oprogramowanie Tobii)");
    EXPECT_EQ(std::u16string(zirvel::VoiceStatusText(2)), u"brak libvosk.so");
#endif
    EXPECT_EQ(std::u16string(zirvel::VoiceStatusText(3)), u"brak katalogu modelu języka");
}

TEST_F(EngineTest, CountsAnswerAfterStart) {
    Start("{}", kTwoWheels);
    EXPECT_EQ(OverlayWheelCount(), 2);
    EXPECT_EQ(OverlayVoicePhraseCount(), 311);
    EXPECT_EQ(OverlayIsWheelVisible(), 0);
}

TEST_F(EngineTest, ActivateWheelFileRules) {
    Start("{}", kTwoWheels);
    EXPECT_EQ(OverlayActivateWheelFile(nullptr), 0);

    WriteFile("empty.json", R"({"wheels": [{"name": "X", "actions": []}, {"name": "Y", "actions": []}]})");
    EXPECT_EQ(OverlayActivateWheelFile(PathOf("empty.json").c_str()), 0);
    EXPECT_EQ(OverlayWheelCount(), 2);
    EXPECT_EQ(engine().Wheels()[0].name, u"A");

    WriteFile("mixed.json",
              R"({"wheels": [{"name": "X", "actions": []}, {"name": "Y", "actions": [{"name": "y", "voice": "igrek"}]}]})");
    engine().configuration.currentWheel = 1;
    EXPECT_EQ(OverlayActivateWheelFile(PathOf("mixed.json").c_str()), 1);
    EXPECT_EQ(OverlayWheelCount(), 1);
    EXPECT_EQ(engine().Wheels()[0].name, u"Y");
    EXPECT_EQ(engine().configuration.currentWheel, 0);
    EXPECT_EQ(OverlayVoicePhraseCount(), 312);  // the new phrase joined the table

    EXPECT_EQ(OverlayActivateWheelFile(PathOf("missing.json").c_str()), 0);
    EXPECT_EQ(OverlayWheelCount(), 1);
}

TEST_F(EngineTest, ActivatingWhileTheWheelShowsRedrawsIt) {
    Start("{}", kTwoWheels);
    OverlayToggleWheel();
    const int before = engine().wheelRedraws;
    WriteFile("other.json", R"({"actions": [{"name": "z", "key": "z"}]})");
    EXPECT_EQ(OverlayActivateWheelFile(PathOf("other.json").c_str()), 1);
    EXPECT_EQ(engine().wheelRedraws, before + 1);
    EXPECT_EQ(engine().hoveredField, -1);
}

TEST_F(EngineTest, ReloadKeepsTheHotKeyAndResetsTheWheel) {
    Start(R"({"toggleKey": "F5"})", kTwoWheels);
    engine().configuration.currentWheel = 1;
    WriteFile("config.json", R"({"toggleKey": "F6", "keyHold": 20})");
    OverlayReloadConfig();
    EXPECT_EQ(engine().Settings().keyHold, 20);
    EXPECT_EQ(engine().configuration.currentWheel, 0);
    EXPECT_EQ(platform_.RegisteredHotKey()->vk, 0x74);  // F5 until the next program start
    EXPECT_EQ(platform_.HotKeyRegistrations(), 1);
}

// A stand-in eye-tracker or voice thread: counts its starts, reports `code`
// and runs until told to stop (at most 5 s).
zirvel::BackgroundBody ActiveUntilStopped(std::atomic<std::int32_t>& status, std::int32_t code,
                                          std::atomic<int>* starts = nullptr) {
    return [&status, code, starts](const std::atomic<bool>& stop) {
        if (starts) ++*starts;
        status = code;
        for (int i = 0; i < 5000 && !stop; ++i) std::this_thread::sleep_for(std::chrono::milliseconds(1));
    };
}

// Polls `condition` for up to two seconds.
template <typename Condition>
bool WaitUntil(Condition condition) {
    for (int i = 0; i < 2000; ++i) {
        if (condition()) return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return condition();
}

TEST_F(EngineTest, ReloadWithVoiceSwitchedOffStopsTheVoiceThread) {
    zirvel::SetVoiceThreadBody(ActiveUntilStopped(engine().voiceStatus, zirvel::kVoiceActive));
    Start(R"({"voiceEnabled": true})");
    ASSERT_TRUE(WaitUntil([this] { return engine().voiceStatus == zirvel::kVoiceActive; }));
    EXPECT_EQ(std::u16string(OverlayVoiceStatus()), u"aktywny");
    ASSERT_TRUE(engine().voiceThread.Running());

    WriteFile("config.json", R"({"voiceEnabled": false})");
    const auto start = std::chrono::steady_clock::now();
    OverlayReloadConfig();
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(2000));
    EXPECT_FALSE(engine().voiceThread.Running());
    EXPECT_EQ(std::u16string(OverlayVoiceStatus()), u"wyłączony (voiceEnabled = false)");

    WriteFile("config.json", R"({"voiceEnabled": true})");
    OverlayReloadConfig();
    EXPECT_TRUE(engine().voiceThread.Running());
    OverlayEngineStop();
}

TEST_F(EngineTest, ReloadWithGazeSwitchedOffStopsTheGazeThreadAndOnStartsItAgain) {
    std::atomic<int> starts{0};
    zirvel::SetGazeThreadBody(ActiveUntilStopped(engine().gazeStatus, zirvel::kGazeActive, &starts));
    Start(R"({"gazeEnabled": true, "voiceEnabled": false})");
    ASSERT_TRUE(WaitUntil([this] { return engine().gazeStatus == zirvel::kGazeActive; }));
    EXPECT_EQ(std::u16string(OverlayGazeStatus()), u"aktywny");

    WriteFile("config.json", R"({"gazeEnabled": false, "voiceEnabled": false})");
    const auto start = std::chrono::steady_clock::now();
    OverlayReloadConfig();
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(1500));
    EXPECT_FALSE(engine().gazeThread.Running());
    EXPECT_EQ(std::u16string(OverlayGazeStatus()), u"wyłączony (gazeEnabled = false)");

    WriteFile("config.json", R"({"gazeEnabled": true, "voiceEnabled": false})");
    OverlayReloadConfig();
    EXPECT_TRUE(engine().gazeThread.Running());
    EXPECT_TRUE(WaitUntil([&starts] { return starts == 2; }));
    EXPECT_TRUE(WaitUntil([this] { return engine().gazeStatus == zirvel::kGazeActive; }));
    OverlayEngineStop();
}

TEST_F(EngineTest, ReloadDoesNotRestartRunningThreadsForTheirOtherSettings) {
    std::atomic<int> gazeStarts{0};
    std::atomic<int> voiceStarts{0};
    zirvel::SetGazeThreadBody(ActiveUntilStopped(engine().gazeStatus, zirvel::kGazeActive, &gazeStarts));
    zirvel::SetVoiceThreadBody(ActiveUntilStopped(engine().voiceStatus, zirvel::kVoiceActive, &voiceStarts));
    Start(R"({"gazeEnabled": true, "voiceEnabled": true})");
    ASSERT_TRUE(WaitUntil([&] { return gazeStarts == 1 && voiceStarts == 1; }));

    WriteFile("config.json", R"({"gazeEnabled": true, "gazeDwell": 500, "gazeDllPath": "C:/Tobii/tobii.dll",
                                 "voiceEnabled": true, "voiceModel": "C:/modele/inny",
                                 "voiceDllPath": "C:/Vosk/libvosk.dll"})");
    OverlayReloadConfig();
    ASSERT_EQ(engine().Settings().gazeDwell, 500);  // the new settings were read
    ASSERT_EQ(engine().Settings().voiceModel, u"C:/modele/inny");
    std::this_thread::sleep_for(std::chrono::milliseconds(50));  // time for a wrong restart to show
    EXPECT_EQ(gazeStarts, 1);
    EXPECT_EQ(voiceStarts, 1);
    EXPECT_TRUE(engine().gazeThread.Running());
    EXPECT_TRUE(engine().voiceThread.Running());
    OverlayEngineStop();
}

// A voice thread that gave up by itself: no library (2), no model (3) or a
// failed initialisation (6).
class EndedVoiceThreadTest : public EngineTest, public ::testing::WithParamInterface<std::int32_t> {};

TEST_P(EndedVoiceThreadTest, KeepsItsHandleAndIsNotStartedAgainByAReload) {
    std::atomic<int> starts{0};
    zirvel::SetVoiceThreadBody([&starts, &status = engine().voiceStatus, code = GetParam()](const std::atomic<bool>&) {
        ++starts;
        status = code;
    });
    Start(R"({"voiceEnabled": true})");
    ASSERT_TRUE(WaitUntil([this] { return engine().voiceStatus == GetParam(); }));
    const std::u16string text = OverlayVoiceStatus();

    WriteFile("config.json", R"({"voiceEnabled": true, "voiceModel": "inny-model"})");
    OverlayReloadConfig();
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_EQ(starts, 1);
    EXPECT_TRUE(engine().voiceThread.Running());  // the handle of the ended thread
    EXPECT_EQ(engine().voiceStatus, GetParam());
    EXPECT_EQ(std::u16string(OverlayVoiceStatus()), text);

    // Off and on again starts it anew.
    WriteFile("config.json", R"({"voiceEnabled": false})");
    OverlayReloadConfig();
    EXPECT_EQ(engine().voiceStatus, 0);
    WriteFile("config.json", R"({"voiceEnabled": true})");
    OverlayReloadConfig();
    EXPECT_TRUE(WaitUntil([&starts] { return starts == 2; }));
    OverlayEngineStop();
}

INSTANTIATE_TEST_SUITE_P(GaveUp, EndedVoiceThreadTest, ::testing::Values(2, 3, 6));

TEST_F(EngineTest, ReloadRedrawsTheWheelOnceOnlyWhileItShows) {
    Start("{}", kTwoWheels);
    const int hidden = engine().wheelRedraws;
    OverlayReloadConfig();
    EXPECT_EQ(engine().wheelRedraws, hidden);
    OverlayToggleWheel();
    const int shown = engine().wheelRedraws;
    OverlayReloadConfig();
    EXPECT_EQ(engine().wheelRedraws, shown + 1);
    EXPECT_EQ(OverlayIsWheelVisible(), 1);
}

TEST_F(EngineTest, PhraseGenerationGrowsWithEveryRebuildOfThePhrases) {
    const auto generation = [this] { return engine().phrases.phraseGeneration.load(); };
    ASSERT_EQ(generation(), 0u);
    Start("{}", kTwoWheels);
    EXPECT_EQ(generation(), 1u);
    OverlayReloadConfig();
    OverlayReloadConfig();
    EXPECT_EQ(generation(), 3u);
    WriteFile("other.json", R"({"actions": [{"name": "z", "key": "z"}]})");
    ASSERT_EQ(OverlayActivateWheelFile(PathOf("other.json").c_str()), 1);
    EXPECT_EQ(generation(), 4u);

    WriteFile("empty.json", R"({"wheels": [{"name": "E", "actions": []}]})");
    ASSERT_EQ(OverlayActivateWheelFile(PathOf("empty.json").c_str()), 0);
    ASSERT_EQ(OverlayActivateWheelFile(PathOf("missing.json").c_str()), 0);
    ASSERT_EQ(OverlayActivateWheelFile(nullptr), 0);
    EXPECT_EQ(generation(), 4u);
}

TEST_F(EngineTest, ReloadNeverShowsTheConfigurationProblemsBox) {
    StartStandAlone(R"({"segmentColor": "#FFF"})");
    ASSERT_EQ(platform_.Warnings().size(), 1u);  // the start showed them
    WriteFile("config.json", R"({"segmentColor": "#GGG", "sendDelay": "dużo"})");
    OverlayReloadConfig();
    EXPECT_EQ(platform_.Warnings().size(), 1u);
}

TEST_F(EngineTest, StopLeavesTheLastStatusCodes) {
    zirvel::SetGazeThreadBody(ActiveUntilStopped(engine().gazeStatus, zirvel::kGazeActive));
    zirvel::SetVoiceThreadBody(ActiveUntilStopped(engine().voiceStatus, zirvel::kVoiceActive));
    Start(R"({"gazeEnabled": true, "voiceEnabled": true})");
    ASSERT_TRUE(WaitUntil([this] {
        return engine().gazeStatus == zirvel::kGazeActive && engine().voiceStatus == zirvel::kVoiceActive;
    }));
    OverlayEngineStop();
    EXPECT_FALSE(engine().gazeThread.Running());
    EXPECT_FALSE(engine().voiceThread.Running());
    EXPECT_EQ(std::u16string(OverlayGazeStatus()), u"aktywny");
    EXPECT_EQ(std::u16string(OverlayVoiceStatus()), u"aktywny");
}

void IgnoreTheStopFlag(const std::atomic<bool>&) { std::this_thread::sleep_for(std::chrono::seconds(4)); }

// Stops the engine while `thread` ignores its stop flag (for four seconds):
// the stop waits about `wait`, then abandons the thread.
void ExpectStopAbandonsAfter(const zirvel::BackgroundThread& thread, std::chrono::milliseconds wait) {
    const auto start = std::chrono::steady_clock::now();
    OverlayEngineStop();
    const auto waited = std::chrono::steady_clock::now() - start;
    EXPECT_GE(waited, wait - std::chrono::milliseconds(100));
    EXPECT_LT(waited, wait + std::chrono::milliseconds(1000));
    EXPECT_FALSE(thread.Running());
}

TEST_F(EngineTest, AGazeThreadThatDoesNotStopIsAbandonedAfterItsWait) {
    zirvel::SetGazeThreadBody(IgnoreTheStopFlag);
    Start(R"({"gazeEnabled": true, "voiceEnabled": false})");
    ExpectStopAbandonsAfter(engine().gazeThread, std::chrono::milliseconds(1500));
}

TEST_F(EngineTest, AVoiceThreadThatDoesNotStopIsAbandonedAfterItsWait) {
    zirvel::SetVoiceThreadBody(IgnoreTheStopFlag);
    Start(R"({"gazeEnabled": false, "voiceEnabled": true})");
    ExpectStopAbandonsAfter(engine().voiceThread, std::chrono::milliseconds(2000));
}

TEST_F(EngineTest, StopHidesTheWheelWithoutRestoringFocus) {
    Start();
    OverlayToggleWheel();
    ASSERT_EQ(OverlayIsWheelVisible(), 1);
    OverlayEngineStop();
    EXPECT_EQ(OverlayIsWheelVisible(), 0);
    EXPECT_FALSE(platform_.PointerCaptured());
    EXPECT_TRUE(platform_.CursorMoves().empty());
}

TEST_F(EngineTest, StopHidesTheGrid) {
    Start();
    PostVoice(platform_, zirvel::kShowGridCommand);
    platform_.DispatchPosted();
    ASSERT_TRUE(platform_.SurfaceAt(zirvel::Surface::Grid).visible);
    OverlayEngineStop();
    EXPECT_FALSE(engine().gridVisible);
    EXPECT_FALSE(platform_.SurfaceAt(zirvel::Surface::Grid).visible);
}

TEST_F(HintsTest, StopHidesTheElementHints) {
    Start();
    ShowHints();
    ASSERT_TRUE(platform_.SurfaceAt(zirvel::Surface::Grid).visible);
    OverlayEngineStop();
    EXPECT_FALSE(engine().hintsVisible);
    EXPECT_FALSE(platform_.SurfaceAt(zirvel::Surface::Grid).visible);
}

}  // namespace
}  // namespace zirvel_test
