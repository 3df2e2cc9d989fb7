#include "config/text.h"
#include "engine/function_runner.h"
#include "engine_fixture.h"

namespace zirvel_test {
namespace {

using zirvel::Concat;

using zirvel::EngineMessage;
using zirvel::EngineMessageKind;

constexpr char kThreeWheels[] = R"({"wheels": [
  {"name": "A", "actions": [{"name": "a", "voice": "alfa", "key": "a"}, {"name": "empty"}]},
  {"name": "B", "actions": [{"name": "b", "key": "b"}]},
  {"name": "C", "actions": [{"name": "c", "key": "c"}]}]})";

TEST_F(EngineTest, NextWheelWrapsFromTheLastToTheFirst) {
    Start("{}", kThreeWheels);
    PostVoice(platform_, 3);
    platform_.Advance(15);
    EXPECT_EQ(engine().configuration.currentWheel, 0);  // hidden: nothing happens
    PostVoice(platform_, 1);
    PostVoice(platform_, 3);
    PostVoice(platform_, 3);
    platform_.Advance(15);
    EXPECT_EQ(engine().configuration.currentWheel, 2);
    PostVoice(platform_, 3);
    platform_.Advance(15);
    EXPECT_EQ(engine().configuration.currentWheel, 0);
    PostVoice(platform_, 4);
    platform_.Advance(15);
    EXPECT_EQ(engine().configuration.currentWheel, 2);
}

TEST_F(EngineTest, NextWheelWithASingleWheelDoesNothing) {
    Start("{}", R"({"actions": [{"name": "a", "key": "a"}]})");
    PostVoice(platform_, 1);
    platform_.Advance(15);
    const int redraws = engine().wheelRedraws;
    PostVoice(platform_, 3);
    platform_.Advance(15);
    EXPECT_EQ(engine().configuration.currentWheel, 0);
    EXPECT_EQ(engine().wheelRedraws, redraws);
}

TEST_F(EngineTest, VoiceFunctionStartsAfter100MsWhenHiddenAndAfterSendDelayWhenVisible) {
    Start(R"({"sendDelay": 400, "keyHold": 10})", kThreeWheels);
    PostRun(platform_, EngineMessageKind::RunWheelFunction, 1, 0);
    platform_.DispatchPosted();
    const std::uint64_t hiddenStart = platform_.Now();
    platform_.Advance(1000);
    ASSERT_EQ(platform_.Injected().size(), 2u);
    EXPECT_EQ(platform_.Injected()[0].time - hiddenStart, 100u);
    EXPECT_EQ(platform_.Injected()[0].vk, 'B');  // not the current wheel, still runs

    PostVoice(platform_, 1);
    platform_.DispatchPosted();
    PostRun(platform_, EngineMessageKind::RunWheelFunction, 2, 0);
    platform_.DispatchPosted();
    const std::uint64_t visibleStart = platform_.Now();
    EXPECT_EQ(OverlayIsWheelVisible(), 0);
    platform_.Advance(1000);
    ASSERT_EQ(platform_.Injected().size(), 4u);
    EXPECT_EQ(platform_.Injected()[2].time - visibleStart, 400u);
}

TEST_F(EngineTest, RunMessagesOutOfRangeAreIgnored) {
    Start("{}", kThreeWheels);
    PostRun(platform_, EngineMessageKind::RunWheelFunction, 0, 2);  // == field count
    PostRun(platform_, EngineMessageKind::RunWheelFunction, 3, 0);
    PostRun(platform_, EngineMessageKind::RunWheelFunction, -1, 0);
    PostRun(platform_, EngineMessageKind::RunGlobalFunction, 0);  // voice.json has none
    platform_.Advance(1000);
    EXPECT_TRUE(platform_.Injected().empty());
    EXPECT_EQ(platform_.DetachedJobsStarted(), 0u);
}

TEST_F(EngineTest, AFunctionWithoutStepsOnlyClosesTheWheel) {
    Start("{}", kThreeWheels);
    PostVoice(platform_, 1);
    PostRun(platform_, EngineMessageKind::RunWheelFunction, 0, 1);
    platform_.Advance(1000);
    EXPECT_EQ(OverlayIsWheelVisible(), 0);
    EXPECT_EQ(platform_.DetachedJobsStarted(), 0u);
}

TEST_F(EngineTest, GlobalVoiceFunctionRuns) {
    WriteFile("voice.json", R"({"actions": [{"name": "g", "voice": "gamma", "key": "g"}]})");
    Start(R"({"keyHold": 10})", kThreeWheels);
    PostRun(platform_, EngineMessageKind::RunGlobalFunction, 0);
    platform_.Advance(1000);
    ASSERT_EQ(platform_.Injected().size(), 2u);
    EXPECT_EQ(platform_.Injected()[0].vk, 'G');
    EXPECT_EQ(platform_.Injected()[0].time, 100u);
}

TEST_F(EngineTest, ClickCommandSelectsWhileTheWheelShowsAndClicksOtherwise) {
    Start(R"({"sendDelay": 0, "keyHold": 10})", kThreeWheels);
    PostVoice(platform_, 7);
    platform_.Advance(200);
    ASSERT_EQ(platform_.Injected().size(), 2u);
    EXPECT_EQ(platform_.Injected()[0].kind, zirvel::InjectedInput::Kind::MouseButton);
    EXPECT_EQ(platform_.Injected()[0].time, 60u);

    PostVoice(platform_, 1);
    platform_.Advance(15);
    MoveVirtualCursorTo(294, 100);  // field 0 of wheel A
    PostVoice(platform_, 7);
    platform_.Advance(200);
    EXPECT_EQ(OverlayIsWheelVisible(), 0);
    ASSERT_EQ(platform_.Injected().size(), 4u);
    EXPECT_EQ(platform_.Injected()[2].vk, 'A');
}

TEST_F(EngineTest, DoubleAndRightClickCommands) {
    Start(R"({"keyHold": 10})");
    PostVoice(platform_, 8);
    platform_.Advance(200);
    EXPECT_EQ(platform_.Injected().size(), 4u);
    PostVoice(platform_, 9);
    platform_.Advance(200);
    ASSERT_EQ(platform_.Injected().size(), 6u);
    EXPECT_EQ(platform_.Injected()[4].button, zirvel::kMouseRight);
}

TEST_F(EngineTest, GridNarrowsBySpokenNumbersAndMovesTheCursor) {
    platform_.SetCursor({100, 100});
    Start();
    PostVoice(platform_, 5);
    platform_.DispatchPosted();
    EXPECT_TRUE(engine().gridVisible);
    EXPECT_EQ(engine().gridRect, (zirvel::ScreenRect{0, 0, 1920, 1080}));
    EXPECT_EQ(platform_.CursorPosition(), (zirvel::ScreenPoint{960, 540}));
    PostVoice(platform_, 107);  // "siedem"
    platform_.DispatchPosted();
    EXPECT_EQ(engine().gridRect, (zirvel::ScreenRect{960, 270, 1440, 540}));
    EXPECT_EQ(platform_.CursorPosition(), (zirvel::ScreenPoint{1200, 405}));
    EXPECT_EQ(engine().gridLevel, 2);
    PostVoice(platform_, 105);  // 2 x 2 now: ignored
    platform_.DispatchPosted();
    EXPECT_EQ(engine().gridLevel, 2);
    EXPECT_EQ(engine().gridRedraws, 2);
    PostVoice(platform_, 6);
    platform_.DispatchPosted();
    EXPECT_FALSE(engine().gridVisible);
    EXPECT_FALSE(platform_.SurfaceAt(zirvel::Surface::Grid).visible);
    PostVoice(platform_, 101);  // no grid, no hints: nothing
    platform_.DispatchPosted();
    EXPECT_EQ(engine().gridLevel, 2);
}

TEST_F(HintsTest, TwoQuickRequestsStartOneScan) {
    Start(R"({"keyHold": 10})");
    PostVoice(platform_, 10);
    PostVoice(platform_, 12);
    platform_.Advance(50);
    EXPECT_EQ(platform_.DetachedJobsStarted(), 1u);
    EXPECT_EQ(scanner_.scans.load(), 1);
    EXPECT_TRUE(engine().hintsVisible);
    EXPECT_EQ(engine().hintRects.size(), 5u);
    EXPECT_EQ(engine().hintRedraws, 1);
    EXPECT_TRUE(platform_.SurfaceAt(zirvel::Surface::Grid).visible);
}

TEST_F(HintsTest, ANumberClicksTheCentreOfItsElement) {
    Start(R"({"keyHold": 10})");
    PostVoice(platform_, 12);
    platform_.Advance(50);
    EXPECT_EQ(scanner_.lastMode, zirvel::ElementScanMode::BrowserPage);
    PostVoice(platform_, 105);  // "pięć"
    platform_.Advance(200);
    EXPECT_FALSE(engine().hintsVisible);
    EXPECT_EQ(platform_.CursorPosition(), (zirvel::ScreenPoint{425, 25}));
    ASSERT_EQ(platform_.Injected().size(), 2u);
    EXPECT_EQ(platform_.Injected()[0].button, zirvel::kMouseLeft);
}

TEST_F(HintsTest, NumbersBeyondTheHintsDoNothing) {
    Start();
    PostVoice(platform_, 10);
    platform_.Advance(50);
    PostVoice(platform_, 106);
    PostVoice(platform_, 306);
    PostVoice(platform_, 506);
    platform_.Advance(200);
    EXPECT_TRUE(engine().hintsVisible);
    EXPECT_TRUE(platform_.Injected().empty());
    PostVoice(platform_, 502);
    platform_.Advance(200);
    ASSERT_EQ(platform_.Injected().size(), 2u);
    EXPECT_EQ(platform_.Injected()[0].button, zirvel::kMouseRight);
}

TEST_F(HintsTest, HidingDuringAScanDropsItsResult) {
    Start();
    PostVoice(platform_, 10);
    PostVoice(platform_, 11);  // arrives before the result
    platform_.Advance(50);
    EXPECT_FALSE(engine().hintsVisible);
    EXPECT_EQ(engine().hintRedraws, 0);
}

TEST_F(HintsTest, HidingTheGridKeepsHintsClickable) {
    Start(R"({"keyHold": 10})");
    PostVoice(platform_, 10);
    platform_.Advance(50);
    PostVoice(platform_, 6);
    platform_.Advance(15);
    EXPECT_FALSE(platform_.SurfaceAt(zirvel::Surface::Grid).visible);
    EXPECT_TRUE(engine().hintsVisible);
    PostVoice(platform_, 101);
    platform_.Advance(200);
    EXPECT_EQ(platform_.Injected().size(), 2u);
}

TEST_F(HintsTest, ShowingTheGridHidesTheHints) {
    Start();
    PostVoice(platform_, 10);
    platform_.Advance(50);
    PostVoice(platform_, 5);
    platform_.Advance(15);
    EXPECT_FALSE(engine().hintsVisible);
    EXPECT_TRUE(engine().gridVisible);
}

void PostSkipped(zirvel::NullPlatform& platform, std::u16string phrases) {
    EngineMessage message;
    message.kind = EngineMessageKind::SkippedPhrases;
    message.text = std::move(phrases);
    platform.Post(std::move(message));
}

// The engine started by the stand-alone host, which has a tray icon.
class HostEngineTest : public EngineTest {};

TEST_F(HostEngineTest, SkippedPhrasesShowAWarningNotice) {
    StartStandAlone();
    PostSkipped(platform_, u"\u201Eskok w bok\u201D, \u201Equux\u201D");
    platform_.DispatchPosted();
    ASSERT_EQ(platform_.TrayNotices().size(), 1u);
    EXPECT_EQ(platform_.TrayNotices()[0],
              u"Zirvel \u2014 komendy g\u0142osowe|Pomini\u0119to frazy ze s\u0142owami spoza s\u0142ownika modelu: "
              u"\u201Eskok w bok\u201D, \u201Equux\u201D");
}

TEST_F(HostEngineTest, ALongSkippedListIsCutTo255Units) {
    StartStandAlone();
    PostSkipped(platform_, std::u16string(400, u'x'));
    platform_.DispatchPosted();
    ASSERT_EQ(platform_.TrayNotices().size(), 1u);
    const std::u16string notice = platform_.TrayNotices()[0];
    const std::u16string text = notice.substr(notice.find(u'|') + 1);
    EXPECT_EQ(text.size(), 255u);
    EXPECT_EQ(text.substr(0, 50), u"Pomini\u0119to frazy ze s\u0142owami spoza s\u0142ownika modelu: ");
}

TEST_F(EngineTest, SkippedPhrasesShowNothingUnderTheFrontEnd) {
    Start();
    PostSkipped(platform_, u"\u201Equux\u201D");
    platform_.DispatchPosted();
    EXPECT_TRUE(platform_.TrayNotices().empty());
}

TEST_F(HostEngineTest, AHandedOverWheelFileIsActivatedAndNamedInTheTray) {
    StartStandAlone();
    WriteFile("games.json", R"({"wheels": [{"name": "G", "actions": [{"name": "g", "key": "g"}]}]})");
    EXPECT_TRUE(zirvel::ActivateHandedOverWheelFile(PathOf("games.json")));
    EXPECT_EQ(engine().Wheels()[0].name, u"G");
    ASSERT_EQ(platform_.TrayNotices().size(), 1u);
    EXPECT_EQ(platform_.TrayNotices()[0], Concat({u"Zirvel|Aktywowano konfigurację: ", PathOf("games.json")}));
}

TEST_F(HostEngineTest, AHandedOverFileWithoutFunctionsChangesNothing) {
    StartStandAlone();
    WriteFile("empty.json", R"({"wheels": [{"name": "E", "actions": []}]})");
    EXPECT_FALSE(zirvel::ActivateHandedOverWheelFile(PathOf("empty.json")));
    EXPECT_FALSE(zirvel::ActivateHandedOverWheelFile(u""));
    EXPECT_FALSE(zirvel::ActivateHandedOverWheelFile(PathOf("missing.json")));
    EXPECT_TRUE(platform_.TrayNotices().empty());
    EXPECT_EQ(engine().Wheels().size(), 1u);  // the first-run wheel stays
}

TEST_F(EngineTest, AHandedOverFileShowsNoNoticeUnderTheFrontEnd) {
    Start();
    WriteFile("games.json", R"({"actions": [{"name": "g", "key": "g"}]})");
    EXPECT_TRUE(zirvel::ActivateHandedOverWheelFile(PathOf("games.json")));
    EXPECT_TRUE(platform_.TrayNotices().empty());
}

}  // namespace
}  // namespace zirvel_test
