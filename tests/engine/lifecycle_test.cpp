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
    EXPECT_EQ(std::u16string(zirvel::GazeStatusText(2)),
              u"brak tobii_stream_engine.dll (zainstaluj oprogramowanie Tobii)");
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

// A stand-in voice thread: active until told to stop.
void FakeVoiceThread(const std::atomic<bool>& stop) {
    zirvel::Engine().voiceStatus = 5;
    for (int i = 0; i < 2000 && !stop; ++i) std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

TEST_F(EngineTest, ReloadWithVoiceSwitchedOffStopsTheVoiceThread) {
    zirvel::SetVoiceThreadBody(FakeVoiceThread);
    Start(R"({"voiceEnabled": true})");
    for (int i = 0; i < 1000 && engine().voiceStatus != 5; ++i) std::this_thread::sleep_for(std::chrono::milliseconds(1));
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
}

TEST_F(EngineTest, AThreadThatDoesNotStopIsAbandonedAfterItsWait) {
    zirvel::SetGazeThreadBody([](const std::atomic<bool>&) { std::this_thread::sleep_for(std::chrono::seconds(3)); });
    Start(R"({"gazeEnabled": true})");
    const auto start = std::chrono::steady_clock::now();
    OverlayEngineStop();
    const auto waited = std::chrono::steady_clock::now() - start;
    EXPECT_GE(waited, std::chrono::milliseconds(1400));
    EXPECT_LT(waited, std::chrono::milliseconds(2500));
    EXPECT_FALSE(engine().gazeThread.Running());
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

}  // namespace
}  // namespace zirvel_test
