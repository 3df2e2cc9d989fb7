// What the engine does for the stand-alone host, which has no front-end:
// its own tray icon, the help page of its window, and the clean-up when
// that window is destroyed.
#include <chrono>
#include <thread>

#include "config/text.h"
#include "engine/help_page.h"
#include "engine_fixture.h"

namespace zirvel_test {
namespace {

constexpr char kTwoWheels[] = R"({"wheels": [
  {"name": "A", "actions": [{"name": "a1", "key": "a"}, {"name": "a2", "key": "b"}, {"name": "a3", "key": "c"}]},
  {"name": "B", "actions": [{"name": "b1", "key": "d"}]}]})";

std::u16string ExpectedHelp(std::u16string_view key, std::u16string_view wheels, std::u16string_view fields,
                            std::u16string_view gaze, std::u16string_view voice) {
    return zirvel::Concat({
        u"Zirvel — koło wyboru funkcji\n\n•  Naciśnij  '", key,
        u"'  aby pokazać / schować nakładkę.\n•  Gdy koło jest widoczne, prawdziwa mysz jest zablokowana,\n"
        u"    a polami steruje wirtualny kursor (działa też w grach FPS).\n•  Najedź wirtualnym kursorem na pole"
        u" — stanie się\n    nieprzezroczyste; kliknięcie chowa koło i wykonuje funkcję.\n\nKonfiguracja (w "
        u"katalogu programu, wczytywana przy starcie):\n    config.json — kolor pól, klawisz wywołania, czasy\n"
        u"    default.json — koła funkcji (nazwy i klawisze pól);\n    przy kilku kołach strzałki po bokach je "
        u"przełączają\nKół funkcji: ",
        wheels, u", pól w pierwszym: ", fields, u"\nTobii Eye Tracker: ", gaze, u"\nKomendy głosowe: ", voice,
        u"\nSiatka: \"pokaż siatkę\", cyfry słownie zawężają obszar,\n\"kliknij\" / \"dwuklik\" / \"prawy "
        u"klik\", \"schowaj siatkę\".\nElementy: \"pokaż elementy\", liczba = klik w element,\n\"kliknij dwa razy "
        u"na N\", \"kliknij prawy na N\", \"ukryj elementy\".\n\nMinimalizacja / zamknięcie chowa program do "
        u"zasobnika.\nZakończenie: prawy przycisk na ikonie w zasobniku → Zakończ.",
    });
}

TEST_F(EngineTest, HelpPageNamesTheKeyTheCountsAndTheStatuses) {
    Start(R"({"toggleKey": "F8"})", kTwoWheels);
    EXPECT_EQ(zirvel::HelpPageText(engine()), ExpectedHelp(u"F8", u"2", u"3", u"wyłączony (gazeEnabled = false)",
                                                          u"wyłączony (voiceEnabled = false)"));
    engine().gazeStatus = 3;
    engine().voiceStatus = 5;
    EXPECT_EQ(zirvel::HelpPageText(engine()),
              ExpectedHelp(u"F8", u"2", u"3", u"nie wykryto urządzenia", u"aktywny"));
}

TEST_F(EngineTest, HelpPageSaysHowScanningWorksOnlyWhileItIsOn) {
    Start(R"({"toggleKey": "F8", "scanEnabled": true, "scanInterval": 900})", kTwoWheels);
    const std::u16string off = ExpectedHelp(u"F8", u"2", u"3", u"wyłączony (gazeEnabled = false)",
                                            u"wyłączony (voiceEnabled = false)");
    const std::u16string scanning =
        u"Skanowanie przełącznikiem: 'F8' pokazuje koło i wybiera podświetlone\npole, strzałkę, \"siatka\", "
        u"\"elementy\" albo \"zamknij\"; podświetlenie przesuwa się co 900 ms.\n\n";
    std::u16string expected = off;
    expected.insert(expected.find(u"Minimalizacja"), scanning);
    EXPECT_EQ(zirvel::HelpPageText(engine()), expected);
    WriteFile("config.json", R"({"scanMode": "step", "scanStepKey": "F9"})");
    OverlayReloadConfig();
    EXPECT_NE(zirvel::HelpPageText(engine()).find(u"\"zamknij\"; 'F9' przesuwa podświetlenie.\n"),
              std::u16string::npos);
    WriteFile("config.json", R"({"scanEnabled": false})");
    OverlayReloadConfig();
    EXPECT_EQ(zirvel::HelpPageText(engine()), off);
}

TEST_F(EngineTest, HelpPageFollowsAnActivatedFile) {
    Start("{}", kTwoWheels);
    WriteFile("one.json", R"({"wheels": [{"name": "X", "actions": [{"key": "q"}]}]})");
    ASSERT_EQ(OverlayActivateWheelFile(PathOf("one.json").c_str()), 1);
    EXPECT_EQ(zirvel::HelpPageText(engine()), ExpectedHelp(u"x", u"1", u"1", u"wyłączony (gazeEnabled = false)",
                                                          u"wyłączony (voiceEnabled = false)"));
}

TEST_F(EngineTest, HelpPageWithoutWheelsCountsNoFields) {
    EXPECT_NE(zirvel::HelpPageText(engine()).find(u"Kół funkcji: 0, pól w pierwszym: 0\n"), std::u16string::npos);
}

TEST_F(EngineTest, OnlyTheStandAloneHostGetsATrayIconWithTheKeyInItsTip) {
    Start(R"({"toggleKey": "F9"})");
    EXPECT_TRUE(platform_.TrayIconTips().empty());
}

TEST_F(EngineTest, StandAloneTrayTipNamesTheKeyAsWritten) {
    StartStandAlone(R"({"toggleKey": " F9 "})");
    ASSERT_EQ(platform_.TrayIconTips().size(), 1u);
    EXPECT_EQ(platform_.TrayIconTips()[0], u"Zirvel — ' F9 ' pokazuje nakładkę");
}

TEST(TrayIconTip, IsCutToTheTipField) {
    const std::u16string tip = zirvel::TrayIconTip(std::u16string(300, u'k'));
    EXPECT_EQ(tip.size(), 127u);
    EXPECT_EQ(tip.substr(0, 10), u"Zirvel — '");
}

TEST_F(EngineTest, StartOnceWithMessagesStartsOnlyTheFirstTime) {
    WriteFile("config.json", R"({"segmentColor": "#FFF"})");
    EXPECT_TRUE(zirvel::StartEngineOnce(true));
    EXPECT_TRUE(zirvel::StartEngineOnce(true));
    EXPECT_EQ(OverlayEngineStart(), 1);
    EXPECT_EQ(platform_.HotKeyRegistrations(), 1);
    EXPECT_EQ(platform_.Warnings().size(), 1u);
    EXPECT_EQ(platform_.TrayIconTips().size(), 1u);
}

TEST_F(EngineTest, DestroyedMainWindowHidesTheWheelStopsThreadsAndFreesTheHotKey) {
    std::atomic<bool> voiceRan{false};
    zirvel::SetVoiceThreadBody([&voiceRan](const std::atomic<bool>& stop) {
        voiceRan = true;
        for (int i = 0; i < 5000 && !stop; ++i) std::this_thread::sleep_for(std::chrono::milliseconds(1));
    });
    Start(R"({"voiceEnabled": true})", kTwoWheels);
    OverlayToggleWheel();
    ASSERT_EQ(OverlayIsWheelVisible(), 1);
    zirvel::DetachEngineFromSystem();
    EXPECT_EQ(OverlayIsWheelVisible(), 0);
    EXPECT_FALSE(platform_.PointerCaptured());
    EXPECT_FALSE(platform_.WheelTimerRunning());
    EXPECT_FALSE(engine().voiceThread.Running());
    EXPECT_FALSE(platform_.RegisteredHotKey().has_value());
    // The user closed nothing: the cursor and focus are not given back.
    EXPECT_TRUE(platform_.CursorMoves().empty());
    EXPECT_TRUE(platform_.ForegroundRequests().empty());
}

}  // namespace
}  // namespace zirvel_test
