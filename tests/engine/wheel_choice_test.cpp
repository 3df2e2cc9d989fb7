#include "engine/wheel_choice.h"

#include "engine_fixture.h"

namespace zirvel_test {
namespace {

using zirvel::ProgramIdentity;
using zirvel::ProgramNamed;

ProgramIdentity Executable(std::u16string path) { return ProgramIdentity{std::move(path), {}}; }

// Wheels of one field each, typing the letter of the wheel: a general wheel,
// notepad's, firefox's, a second general one and a second wheel naming
// notepad.
constexpr char kProgramWheels[] = R"({"wheels": [
  {"name": "A", "actions": [{"name": "a", "key": "a"}]},
  {"name": "B", "apps": ["notepad.exe"], "actions": [{"name": "b", "key": "b"}]},
  {"name": "C", "apps": ["gimp", "firefox"], "actions": [{"name": "c", "key": "c"}]},
  {"name": "D", "actions": [{"name": "d", "key": "d"}]},
  {"name": "E", "apps": ["NOTEPAD"], "actions": [{"name": "e", "key": "e"}]}]})";

constexpr char kOnlyProgramWheels[] = R"({"wheels": [
  {"name": "A", "apps": ["a.exe"], "actions": [{"name": "a", "key": "a"}]},
  {"name": "B", "apps": ["b.exe"], "actions": [{"name": "b", "key": "b"}]}]})";

TEST(ProgramNames, ExecutableFileNameWithAndWithoutExtensionInAnyCase) {
    const ProgramIdentity notepad = Executable(u"C:\\Windows\\System32\\Notepad.exe");
    EXPECT_TRUE(ProgramNamed(u"notepad.exe", notepad));
    EXPECT_TRUE(ProgramNamed(u"NOTEPAD.EXE", notepad));
    EXPECT_TRUE(ProgramNamed(u"notepad", notepad));
    EXPECT_FALSE(ProgramNamed(u"notepad.com", notepad));
    EXPECT_FALSE(ProgramNamed(u"System32", notepad));
    EXPECT_FALSE(ProgramNamed(u"note", notepad));
    EXPECT_FALSE(ProgramNamed(u"", notepad));

    const ProgramIdentity firefox = Executable(u"/usr/lib/firefox-esr/firefox-esr");
    EXPECT_TRUE(ProgramNamed(u"Firefox-ESR", firefox));
    EXPECT_FALSE(ProgramNamed(u"firefox-esr.exe", firefox));
    EXPECT_FALSE(ProgramNamed(u"firefox", firefox));
}

TEST(ProgramNames, OnlyTheLastExtensionIsLeftOff) {
    const ProgramIdentity python = Executable(u"/usr/bin/python3.11");
    EXPECT_TRUE(ProgramNamed(u"python3", python));
    EXPECT_TRUE(ProgramNamed(u"python3.11", python));
    EXPECT_FALSE(ProgramNamed(u"python", python));
    EXPECT_TRUE(ProgramNamed(u".hidden", Executable(u"/opt/.hidden")));
}

TEST(ProgramNames, WindowClassNamesMatchWholeInAnyCase) {
    const ProgramIdentity game{u"/usr/bin/wine64-preloader", {u"steam_app_1091500", u"Steam_App_1091500"}};
    EXPECT_TRUE(ProgramNamed(u"STEAM_APP_1091500", game));
    EXPECT_TRUE(ProgramNamed(u"wine64-preloader", game));
    EXPECT_FALSE(ProgramNamed(u"steam_app", game));
    const ProgramIdentity classesOnly{{}, {u"org.gnome.Nautilus"}};
    EXPECT_TRUE(ProgramNamed(u"org.gnome.nautilus", classesOnly));
    EXPECT_FALSE(ProgramNamed(u"org.gnome", classesOnly));
}

class WheelChoiceTest : public EngineTest {
protected:
    // Shows the wheel over `program` and gives the wheel shown; hides it again.
    std::int32_t WheelShownOver(const ProgramIdentity& program) {
        platform_.SetProgram(kGameWindow, program);
        platform_.PressHotKey();
        EXPECT_EQ(OverlayIsWheelVisible(), 1);
        const std::int32_t shown = engine().configuration.currentWheel;
        platform_.PressHotKey();
        EXPECT_EQ(OverlayIsWheelVisible(), 0);
        return shown;
    }
};

TEST_F(WheelChoiceTest, TheProgramInFrontGetsTheFirstWheelNamingIt) {
    Start("{}", kProgramWheels);
    EXPECT_EQ(WheelShownOver(Executable(u"C:\\Windows\\notepad.exe")), 1);
    EXPECT_EQ(WheelShownOver(Executable(u"C:\\Program Files\\Mozilla Firefox\\FIREFOX.EXE")), 2);
    EXPECT_EQ(WheelShownOver(Executable(u"/usr/bin/gimp")), 2);
    EXPECT_EQ(WheelShownOver(ProgramIdentity{u"/usr/bin/wine64-preloader", {u"notepad.exe", u"Notepad.exe"}}), 1);
}

TEST_F(WheelChoiceTest, OtherProgramsGetTheGeneralWheelTheUserHadLast) {
    Start("{}", kProgramWheels);
    // At first: the first general wheel.
    EXPECT_EQ(WheelShownOver(Executable(u"C:\\Tools\\calc.exe")), 0);

    // The user goes on to wheel D in front of another program...
    platform_.SetProgram(kGameWindow, Executable(u"C:\\Tools\\paint.exe"));
    platform_.PressHotKey();
    zirvel::SwitchWheel(-1);
    zirvel::SwitchWheel(-1);
    ASSERT_EQ(engine().configuration.currentWheel, 3);
    platform_.PressHotKey();

    // ...then notepad has its own, and the wheels the user browses there
    // are not remembered for the others.
    platform_.SetProgram(kGameWindow, Executable(u"C:\\Windows\\notepad.exe"));
    platform_.PressHotKey();
    EXPECT_EQ(engine().configuration.currentWheel, 1);
    zirvel::SwitchWheel(+1);
    platform_.PressHotKey();

    EXPECT_EQ(WheelShownOver(Executable(u"C:\\Tools\\calc.exe")), 3);
}

TEST_F(WheelChoiceTest, TheArrowsStillGoThroughAllWheelsInFileOrder) {
    Start("{}", kProgramWheels);
    platform_.SetProgram(kGameWindow, Executable(u"C:\\Windows\\notepad.exe"));
    platform_.PressHotKey();
    ASSERT_EQ(engine().configuration.currentWheel, 1);
    MoveVirtualCursorTo(550, 230);
    for (const std::int32_t expected : {2, 3, 4, 0, 1}) {
        platform_.PressLeftButton();
        platform_.Advance(15);
        EXPECT_EQ(engine().configuration.currentWheel, expected);
    }
    EXPECT_EQ(OverlayIsWheelVisible(), 1);
}

TEST_F(WheelChoiceTest, AProgramThatCannotBeReadCountsAsNoMatch) {
    Start("{}", kProgramWheels);
    EXPECT_EQ(WheelShownOver(ProgramIdentity{}), 0);
    platform_.SetForeground(0);
    platform_.PressHotKey();
    EXPECT_EQ(engine().configuration.currentWheel, 0);
}

TEST_F(WheelChoiceTest, WhenEveryWheelHasProgramsOthersStartOnWheelZero) {
    Start("{}", kOnlyProgramWheels);
    EXPECT_EQ(WheelShownOver(Executable(u"C:\\b.exe")), 1);
    EXPECT_EQ(WheelShownOver(Executable(u"C:\\calc.exe")), 0);
}

TEST_F(WheelChoiceTest, AFileWithoutProgramsKeepsTheWheelTheUserHadAndAsksNothing) {
    Start("{}", kTwoOneFieldWheels);
    platform_.SetProgram(kGameWindow, Executable(u"C:\\Windows\\notepad.exe"));
    platform_.PressHotKey();
    zirvel::SwitchWheel(+1);
    platform_.PressHotKey();
    platform_.PressHotKey();
    EXPECT_EQ(engine().configuration.currentWheel, 1);
    EXPECT_EQ(platform_.ProgramLookups(), 0);
}

TEST_F(WheelChoiceTest, TheVoiceShowsTheProgramsWheelToo) {
    Start("{}", kProgramWheels);
    platform_.SetProgram(kGameWindow, Executable(u"/usr/bin/firefox"));
    PostVoice(platform_, zirvel::kShowWheelCommand);
    platform_.DispatchPosted();
    EXPECT_EQ(OverlayIsWheelVisible(), 1);
    EXPECT_EQ(engine().configuration.currentWheel, 2);
}

TEST_F(WheelChoiceTest, AClickRunsTheFunctionOfTheProgramsWheel) {
    Start(R"({"sendDelay": 0, "keyHold": 0})", kProgramWheels);
    platform_.SetProgram(kGameWindow, Executable(u"C:\\Windows\\notepad.exe"));
    platform_.PressHotKey();
    MoveVirtualCursorTo(294, 130);
    platform_.PressLeftButton();
    platform_.Advance(100);
    EXPECT_EQ(OverlayIsWheelVisible(), 0);
    ASSERT_EQ(platform_.Injected().size(), 2u);
    EXPECT_EQ(platform_.Injected()[0].vk, 'B');
}

TEST_F(WheelChoiceTest, AnotherFileStartsOverWithItsFirstGeneralWheel) {
    Start("{}", kProgramWheels);
    platform_.SetProgram(kGameWindow, Executable(u"C:\\calc.exe"));
    platform_.PressHotKey();
    zirvel::SwitchWheel(-1);
    zirvel::SwitchWheel(-1);
    platform_.PressHotKey();
    WriteFile("other.json", kProgramWheels);
    ASSERT_EQ(OverlayActivateWheelFile(PathOf("other.json").c_str()), 1);
    EXPECT_EQ(WheelShownOver(Executable(u"C:\\calc.exe")), 0);
}

}  // namespace
}  // namespace zirvel_test
