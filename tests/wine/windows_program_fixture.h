// The live tests' common ground under Wine: zirvel-engine.exe on a wheel of
// four fields, the stand-in application in front, and a user who shows the
// wheel and steers its cursor.
#pragma once

#include <gtest/gtest.h>

#include <X11/keysym.h>

#include <chrono>
#include <string>
#include <vector>

#include "program_windows.h"
#include "wine_session.h"

namespace zirvel_test {

inline constexpr char kConfig[] = R"({"toggleKey": "x", "sendDelay": 150, "keyHold": 40, "takeFocus": false})";
// Up: "a"; right: the Up arrow (an extended key); down: hold Shift; left:
// release Shift.
inline constexpr char kWheels[] = R"({"wheels": [{"name": "Test", "actions": [
  {"name": "A", "key": "a"},
  {"name": "Up", "key": "up"},
  {"name": "Shift down", "steps": [{"key": "shift", "action": "hold"}]},
  {"name": "Shift up", "steps": [{"key": "shift", "action": "release"}]}]}]})";

// Xvfb's one 1280 x 1024 monitor: the wheel's 588 x 460 window centred on it.
inline constexpr char kWheelCentred[] = "wheel shown 346 282 934 742";
inline constexpr XConnection::Geometry kWheelArea{346, 282, 588, 460};
// Where the real cursor waits while the wheel shows.
inline constexpr int kCursorX = 200;
inline constexpr int kCursorY = 150;

class WindowsProgramTest : public ::testing::Test {
protected:
    WindowsProgramTest() : WindowsProgramTest(kConfig) {}
    explicit WindowsProgramTest(const std::string& config, const std::string& wheels = kWheels)
        : session_(config, wheels) {}

    void SetUp() override {
        ASSERT_TRUE(session_.Ready()) << "no Xvfb, or no Wine prefix in the Windows build (run its tests first)";
        ASSERT_TRUE(session_.StartApplication(options_)) << "the test application did not start";
        session_.User().MoveMouseTo(kCursorX, kCursorY);
        ASSERT_TRUE(session_.StartEngine()) << "zirvel-engine.exe did not start";
    }

    // By the hot key, or by voice while a held modifier would make the key another one.
    void ShowWheel(bool byVoice = false) {
        const std::size_t before = session_.Log().size();
        if (byVoice) {
            ASSERT_EQ(session_.RunTool("zirvel-say.exe", "pokaż koło"), 0);
        } else {
            session_.User().PressKey(XK_x);
        }
        const auto shown = session_.WaitForLine("wheel shown", std::chrono::milliseconds(5000), before);
        ASSERT_TRUE(shown) << "the wheel did not show";
        EXPECT_EQ(shown->substr(0, std::string(kWheelCentred).size()), kWheelCentred);
        // Raw input and the hook are in place once the show's handler returned.
        ASSERT_TRUE(session_.EngineCaughtUp()) << "the engine did not answer";
        cursorX_ = 0;  // every show starts with the virtual cursor at the centre
        cursorY_ = 0;
    }

    // Raw motion: one count moves the virtual cursor one pixel. Waits until
    // the wheel shows the cursor's white arrow at its new place (a click
    // picks what the wheel shows).
    void MoveBy(int dx, int dy) {
        cursorX_ += dx;
        cursorY_ += dy;
        EXPECT_TRUE(MoveWheelCursor(session_.User(), kWheelArea, dx, dy, cursorX_, cursorY_))
            << "the wheel did not show the cursor at its new place";
    }

    // The first two key lines after `skip`, once both came.
    std::vector<std::string> WaitForKeys(std::size_t count, std::size_t skip) {
        WaitUntil([&] { return session_.Lines("key ", skip).size() >= count; }, std::chrono::milliseconds(5000));
        return session_.Lines("key ", skip);
    }

    std::vector<std::string> options_;
    WineSession session_;
    int cursorX_ = 0;  // the virtual cursor, from the wheel's centre
    int cursorY_ = 0;
};

}  // namespace zirvel_test
