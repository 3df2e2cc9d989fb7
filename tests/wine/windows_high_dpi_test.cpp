// zirvel-engine.exe under Wine with the desktop at 144 DPI (150 %), in a
// prefix of the test's own: the wheel's window and picture are half as
// large again, and the same hand movement picks the same field.
#include <gtest/gtest.h>

#include <X11/keysym.h>

#include <string>
#include <thread>

#include "program_windows.h"
#include "wine_session.h"

namespace zirvel_test {
namespace {

using namespace std::chrono_literals;

constexpr char kConfig[] = R"({"toggleKey": "x", "sendDelay": 60, "keyHold": 20, "takeFocus": false})";
constexpr char kWheels[] = R"({"wheels": [{"name": "Test", "actions": [
  {"name": "A", "key": "a"}, {"name": "B", "key": "b"}, {"name": "C", "key": "c"}, {"name": "D", "key": "d"}]}]})";

// The desktop's DPI as Windows keeps it for the user. Wine 8 takes it from
// here, and failing that from HKLM\System\CurrentControlSet\Hardware
// Profiles\Current\Software\Fonts (each alone measured to give 144).
constexpr char kDpiKey[] = "HKCU\\Control Panel\\Desktop";
constexpr int kDpi = 144;
// The 882 x 690 wheel centred on Xvfb's 1280 x 1024 monitor.
constexpr char kWheelCentred[] = "wheel shown 199 167 1081 857";
constexpr XConnection::Geometry kWheelArea{199, 167, 882, 690};
constexpr int kCentreX = 199 + 441;
constexpr int kCentreY = 167 + 345;

class WindowsHighDpiTest : public ::testing::Test {
protected:
    WindowsHighDpiTest() : session_(kConfig, kWheels) {}

    void SetUp() override {
        ASSERT_TRUE(session_.Ready()) << "no Xvfb, or no Wine prefix in the Windows build (run its tests first)";
        ASSERT_TRUE(session_.UsePrivatePrefix()) << "the prefix could not be copied";
        ASSERT_TRUE(session_.SetRegistryDword(kDpiKey, "LogPixels", kDpi));
        session_.ClearFrontEndSettings();
        ASSERT_TRUE(session_.StartApplication()) << "the test application did not start";
        session_.User().MoveMouseTo(200, 150);
        ASSERT_TRUE(session_.StartEngine(Program())) << Program() << " did not start";
    }

    virtual std::string Program() const { return "zirvel-engine.exe"; }

    void ShowWheel() {
        const std::size_t before = session_.Log().size();
        session_.User().PressKey(XK_x);
        const auto shown = session_.WaitForLine("wheel shown", 5000ms, before);
        ASSERT_TRUE(shown) << "the wheel did not show";
        EXPECT_EQ(shown->substr(0, std::string(kWheelCentred).size()), kWheelCentred);
        ASSERT_TRUE(session_.EngineCaughtUp()) << "the engine did not answer";
    }

    WineSession session_;
};

// Points right of twelve o'clock, clear of the sector outline there.
TEST_F(WindowsHighDpiTest, TheWheelIs882By690WithAHoleOfRadius69) {
    XConnection& user = session_.User();
    const std::uint32_t underHole = user.ScreenPixel(kCentreX + 20, kCentreY - 55);  // 58.5 from the centre
    const std::uint32_t underRing = user.ScreenPixel(kCentreX + 20, kCentreY - 75);  // 77.6
    ShowWheel();
    // The first picture is on screen once the ring covers what was there
    // (the application's white shows through the hole and under the cursor
    // alike, so neither tells).
    EXPECT_TRUE(WaitUntil([&] { return user.ScreenPixel(kCentreX + 20, kCentreY - 75) != underRing; }, 3000ms))
        << "no ring at 77.6 pixels from the centre";
    // In the sectors at 96 DPI (hole radius 46), in the hole at 144 (69).
    EXPECT_EQ(user.ScreenPixel(kCentreX + 20, kCentreY - 55), underHole);
}

// 50 counts: 75 pixels at 144 DPI, past the hole's 69 as 50 pass 46 at 96.
TEST_F(WindowsHighDpiTest, FiftyCountsUpPickTheTopFieldAsAt96Dpi) {
    ShowWheel();
    const std::size_t shown = session_.Log().size();
    EXPECT_TRUE(MoveWheelCursor(session_.User(), kWheelArea, 0, -44, 0, -66, kDpi)) << "no redraw";
    session_.User().ClickButton(1);
    std::this_thread::sleep_for(300ms);
    EXPECT_TRUE(session_.Lines("wheel hidden", shown).empty()) << "a click in the hole closed the wheel";

    EXPECT_TRUE(MoveWheelCursor(session_.User(), kWheelArea, 0, -6, 0, -75, kDpi)) << "no redraw";
    session_.User().ClickButton(1);
    ASSERT_TRUE(session_.WaitForLine("wheel hidden", 5000ms, shown));
    ASSERT_TRUE(WaitUntil([&] { return session_.Lines("key ", shown).size() >= 2; }, 5000ms));
    EXPECT_EQ(session_.Lines("key ", shown)[0].substr(0, 26), "key down vk=41 scan=1E ext");
}

// Zirvel.exe, whose Qt makes the process DPI-aware before the engine starts.
class ZirvelExeHighDpiTest : public WindowsHighDpiTest {
protected:
    std::string Program() const override { return "Zirvel.exe"; }
};

TEST_F(ZirvelExeHighDpiTest, TheEngineInsideZirvelExeShowsThe882By690Wheel) {
    ShowWheel();
}

}  // namespace
}  // namespace zirvel_test
