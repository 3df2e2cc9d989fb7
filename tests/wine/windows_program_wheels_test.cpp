// Wheels of their own for programs, under Wine: the hot key over the
// stand-in application shows the application's wheel, over notepad
// notepad's, and a click sends that wheel's keys to that program.
#include "windows_program_fixture.h"

namespace zirvel_test {
namespace {

using namespace std::chrono_literals;

constexpr char kNotepadTitle[] = "Untitled - Notepad";

// One field each, filling the ring: a general wheel typing "a", notepad's
// closing it with Alt+F4, the application's typing "b".
constexpr char kProgramWheels[] = R"({"wheels": [
  {"name": "Ogólne", "actions": [{"name": "A", "key": "a"}]},
  {"name": "Notatnik", "apps": ["NOTEPAD"], "actions": [{"name": "Zamknij", "steps": [
    {"key": "alt", "action": "hold"}, {"key": "F4"}, {"key": "alt", "action": "release"}]}]},
  {"name": "Aplikacja", "apps": ["zirvel_test_application.exe"], "actions": [{"name": "B", "key": "b"}]}]})";

class ProgramWheelsTest : public WindowsProgramTest {
protected:
    ProgramWheelsTest() : WindowsProgramTest(kConfig, kProgramWheels) {}

    // Shows the wheel and picks its one field: the log's size once the
    // wheel showed (the hot key's own release may come before).
    std::size_t PickTheOneField() {
        ShowWheel();
        const std::size_t shown = session_.Log().size();
        MoveBy(0, -100);
        session_.User().ClickButton(1);
        return shown;
    }

    // In front as a click on it puts it.
    void ClickInto(Window window) {
        ASSERT_NE(window, 0u);
        ASSERT_TRUE(WaitUntil([&] { return session_.User().IsMapped(window); }, 5000ms));
        const XConnection::Geometry area = session_.User().WindowGeometry(window);
        session_.User().MoveMouseTo(area.x + area.width / 2, area.y + area.height / 2);
        session_.User().ClickButton(1);
    }

    void ExpectTheApplicationsWheelTyped(std::size_t after) {
        const std::vector<std::string> keys = WaitForKeys(2, after);
        ASSERT_EQ(keys.size(), 2u) << session_.LogText();
        EXPECT_EQ(keys[0].substr(0, 15), "key down vk=42 ") << "not the application's wheel";
    }
};

TEST_F(ProgramWheelsTest, TheApplicationAndNotepadEachGetTheirOwnWheel) {
    ExpectTheApplicationsWheelTyped(PickTheOneField());

    const std::size_t opened = session_.Log().size();
    auto notepad = session_.StartProgram({"notepad.exe"});
    Window window = 0;
    ASSERT_TRUE(WaitUntil([&] { return (window = session_.User().FindWindow(kNotepadTitle)) != 0; }, 20000ms))
        << "notepad did not open";
    ClickInto(window);
    ASSERT_TRUE(session_.WaitForLine("focus out", 5000ms, opened)) << session_.LogText();

    const std::size_t shown = PickTheOneField();
    EXPECT_TRUE(WaitUntil([&] { return session_.User().FindWindow(kNotepadTitle) == 0; }, 10000ms))
        << "notepad's wheel did not close it";
    EXPECT_TRUE(session_.Lines("key ", shown).empty()) << "the keys reached the application";

    // The foreground went elsewhere with notepad; the user clicks the application.
    const std::size_t closed = session_.Log().size();
    ClickInto(session_.User().FindWindow("Zirvel test application"));
    ASSERT_TRUE(session_.WaitForLine("focus in", 5000ms, closed)) << session_.LogText();
    ExpectTheApplicationsWheelTyped(PickTheOneField());
}

}  // namespace
}  // namespace zirvel_test
