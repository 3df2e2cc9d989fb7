#include "engine_fixture.h"

namespace zirvel_test {
namespace {

using zirvel::HitTestArrow;
using zirvel::HitTestField;


// A wheels file of one wheel with `count` fields.
std::string FieldsFile(int count) {
    std::string actions;
    for (int i = 0; i < count; ++i) actions += (i ? ", " : "") + std::string(R"({"name": "f", "key": "a"})");
    return R"({"actions": [)" + actions + "]}";
}

// Where the wheel window stands when centred on `monitor`.
zirvel::ScreenRect WheelCentredOn(const zirvel::ScreenRect& monitor) {
    const int left = (monitor.left + monitor.right - zirvel::kWheelWidth) / 2;
    const int top = (monitor.top + monitor.bottom - zirvel::kWheelHeight) / 2;
    return {left, top, left + zirvel::kWheelWidth, top + zirvel::kWheelHeight};
}

TEST_F(EngineTest, FourFieldsStartAtTwelveOClockAndGoClockwise) {
    Start("{}", kFourDirectionFields);
    EXPECT_EQ(HitTestField(294 + 100, 230), 1);
    EXPECT_EQ(HitTestField(294, 130), 0);
    EXPECT_EQ(HitTestField(294, 330), 2);
    EXPECT_EQ(HitTestField(194, 230), 3);
}

TEST_F(EngineTest, RingRadiiCountInsideAndTheGapsDoNot) {
    Start("{}", kFourDirectionFields);
    EXPECT_EQ(HitTestField(294, 230 - 45), -1);
    EXPECT_EQ(HitTestField(294, 230 - 46), 0);
    EXPECT_EQ(HitTestField(294, 230 - 226), 0);
    EXPECT_EQ(HitTestField(294 + 227, 230), -1);
    EXPECT_EQ(HitTestField(294, 230), -1);
}

TEST_F(EngineTest, ArrowsExistOnlyWithTwoWheels) {
    Start("{}", kFourDirectionFields);
    EXPECT_EQ(HitTestArrow(30, 230), -1);
    EXPECT_EQ(HitTestArrow(550, 230), -1);
    EXPECT_EQ(OverlayActivateWheelFile(nullptr), 0);
    WriteFile("two.json", kTwoOneFieldWheels);
    ASSERT_EQ(OverlayActivateWheelFile(PathOf("two.json").c_str()), 1);
    EXPECT_EQ(HitTestArrow(10, 186), 0);
    EXPECT_EQ(HitTestArrow(53, 273), 0);
    EXPECT_EQ(HitTestArrow(54, 230), -1);  // right and bottom edges are outside
    EXPECT_EQ(HitTestArrow(30, 274), -1);
    EXPECT_EQ(HitTestArrow(534, 186), 1);
    EXPECT_EQ(HitTestArrow(577, 273), 1);
    EXPECT_EQ(HitTestArrow(294, 230), -1);
}

TEST_F(EngineTest, JustLeftOfTwelveOClockIsTheLastField) {
    Start("{}", kFourDirectionFields);
    EXPECT_EQ(HitTestField(293, 130), 3);
}

TEST_F(EngineTest, SectorsOfFieldCountsThatDoNotDivide360) {
    Start("{}", FieldsFile(3));
    EXPECT_EQ(HitTestField(394, 230), 0);  // 90 degrees of 120
    EXPECT_EQ(HitTestField(294, 330), 1);  // 180
    EXPECT_EQ(HitTestField(194, 230), 2);  // 270
    EXPECT_EQ(HitTestField(293, 130), 2);

    WriteFile("seven.json", FieldsFile(7));  // sectors of 51.43 degrees
    ASSERT_EQ(OverlayActivateWheelFile(PathOf("seven.json").c_str()), 1);
    EXPECT_EQ(HitTestField(371, 166), 0);  // 50.3 degrees
    EXPECT_EQ(HitTestField(374, 170), 1);  // 53.1
    EXPECT_EQ(HitTestField(214, 170), 5);  // 306.9
    EXPECT_EQ(HitTestField(217, 166), 6);  // 309.7
    EXPECT_EQ(HitTestField(293, 130), 6);
}

TEST_F(EngineTest, ACursorOutsideEveryMonitorShowsTheWheelOnTheNearestOne) {
    UseTwoMonitors();
    platform_.SetCursor({5000, 300});
    Start();
    platform_.PressHotKey();
    EXPECT_EQ(platform_.SurfaceAt(zirvel::Surface::Wheel).rect, WheelCentredOn(kRightMonitor));
}

TEST_F(EngineTest, TakeFocusWithoutAForegroundWindowAsksForNothing) {
    Start(R"({"takeFocus": true})");
    platform_.SetForeground(0);
    platform_.PressHotKey();
    EXPECT_EQ(OverlayIsWheelVisible(), 1);
    EXPECT_EQ(platform_.WheelTakeFocusRequests(), 0);
    platform_.PressHotKey();
    EXPECT_TRUE(platform_.ForegroundRequests().empty());
    platform_.SetForeground(kGameWindow);
    platform_.PressHotKey();
    EXPECT_EQ(platform_.WheelTakeFocusRequests(), 1);
}

TEST_F(EngineTest, WheelShowsCentredOnTheMonitorOfTheCursor) {
    UseTwoMonitors();
    platform_.SetCursor({2500, 300});
    Start();
    platform_.PressHotKey();
    const zirvel::SurfaceState wheel = platform_.SurfaceAt(zirvel::Surface::Wheel);
    EXPECT_TRUE(wheel.visible);
    EXPECT_EQ(wheel.rect, WheelCentredOn(kRightMonitor));
    EXPECT_TRUE(platform_.PointerCaptured());
    EXPECT_EQ(platform_.PinnedAt(), (zirvel::ScreenPoint{2500, 300}));
    EXPECT_TRUE(platform_.WheelTimerRunning());
    EXPECT_EQ(platform_.WheelTimerPeriod(), 15u);
    EXPECT_EQ(engine().cursorX, 294);
    EXPECT_EQ(engine().cursorY, 230);
    EXPECT_EQ(engine().wheelRedraws, 1);  // the first frame before showing
}

TEST_F(EngineTest, HotKeyAgainHidesAndGivesCursorAndFocusBack) {
    Start();
    platform_.PressHotKey();
    platform_.SetForeground(0x999);  // something else grabbed the focus meanwhile
    platform_.MoveMouse(50, 50);
    platform_.Advance(30);
    platform_.PressHotKey();
    EXPECT_FALSE(platform_.SurfaceAt(zirvel::Surface::Wheel).visible);
    EXPECT_FALSE(platform_.PointerCaptured());
    EXPECT_FALSE(platform_.WheelTimerRunning());
    ASSERT_EQ(platform_.CursorMoves().size(), 1u);
    EXPECT_EQ(platform_.CursorMoves()[0].point, (zirvel::ScreenPoint{700, 500}));
    ASSERT_EQ(platform_.ForegroundRequests().size(), 1u);
    EXPECT_EQ(platform_.ForegroundRequests()[0], kGameWindow);
}

TEST_F(EngineTest, FocusIsNotGivenToAClosedWindowNorToTheOneThatHasIt) {
    Start();
    platform_.PressHotKey();
    platform_.PressHotKey();
    EXPECT_TRUE(platform_.ForegroundRequests().empty());  // it still had the focus
    platform_.PressHotKey();
    platform_.CloseWindow(kGameWindow);
    platform_.PressHotKey();
    EXPECT_TRUE(platform_.ForegroundRequests().empty());
}

TEST_F(EngineTest, TakeFocusAsksForTheForegroundOnlyWhenSet) {
    Start();
    platform_.PressHotKey();
    EXPECT_EQ(platform_.WheelTakeFocusRequests(), 0);
    platform_.PressHotKey();
    WriteFile("config.json", R"({"takeFocus": true})");
    OverlayReloadConfig();
    platform_.PressHotKey();
    EXPECT_EQ(platform_.WheelTakeFocusRequests(), 1);
}

TEST_F(EngineTest, RawMotionMovesTheVirtualCursorOnePixelPerCountAtTheNextTick) {
    Start("{}", kFourDirectionFields);
    platform_.PressHotKey();
    platform_.MoveMouse(37, -12);
    EXPECT_EQ(engine().cursorX, 294);  // applied by the timer
    platform_.Advance(15);
    EXPECT_EQ(engine().cursorX, 294 + 37);
    EXPECT_EQ(engine().cursorY, 230 - 12);
    EXPECT_EQ(platform_.CursorPosition(), (zirvel::ScreenPoint{700, 500}));  // the real one stays
}

TEST_F(EngineTest, TheVirtualCursorIsClampedToTheOverlay) {
    Start("{}", kFourDirectionFields);
    platform_.PressHotKey();
    platform_.MoveMouse(-5000, -5000);
    platform_.Advance(15);
    EXPECT_EQ(engine().cursorX, 0);
    EXPECT_EQ(engine().cursorY, 0);
    platform_.MoveMouse(9000, 9000);
    platform_.Advance(15);
    EXPECT_EQ(engine().cursorX, 587);
    EXPECT_EQ(engine().cursorY, 459);
}

TEST_F(EngineTest, RedrawsHappenOnlyWhenSomethingVisibleChanged) {
    Start("{}", kFourDirectionFields);
    platform_.PressHotKey();
    const int afterShow = engine().wheelRedraws;
    platform_.Advance(150);  // ten quiet ticks
    EXPECT_EQ(engine().wheelRedraws, afterShow);
    platform_.MoveMouse(1, 0);
    platform_.Advance(15);
    EXPECT_EQ(engine().wheelRedraws, afterShow + 1);
    EXPECT_EQ(engine().hoveredField, -1);
    MoveVirtualCursorTo(294, 100);
    EXPECT_EQ(engine().hoveredField, 0);
    EXPECT_EQ(engine().wheelRedraws, afterShow + 2);
}

TEST_F(EngineTest, ClickInTheCentreGapKeepsTheWheelOpen) {
    Start("{}", kFourDirectionFields);
    platform_.PressHotKey();
    platform_.PressLeftButton();
    platform_.Advance(15);
    EXPECT_EQ(OverlayIsWheelVisible(), 1);
    EXPECT_TRUE(platform_.Injected().empty());
}

TEST_F(EngineTest, LeftArrowOnTheFirstWheelShowsTheLastAndStaysOpen) {
    Start("{}", kTwoOneFieldWheels);
    platform_.PressHotKey();
    MoveVirtualCursorTo(30, 230);
    EXPECT_EQ(engine().hoveredArrow, 0);
    platform_.PressLeftButton();
    platform_.Advance(15);
    EXPECT_EQ(engine().configuration.currentWheel, 1);
    EXPECT_EQ(OverlayIsWheelVisible(), 1);
    MoveVirtualCursorTo(550, 230);
    platform_.PressLeftButton();
    platform_.Advance(15);
    EXPECT_EQ(engine().configuration.currentWheel, 0);
}

TEST_F(EngineTest, DuplicateSelectionsOfOneClickRunTheFunctionOnce) {
    Start(R"({"sendDelay": 0, "keyHold": 0})", kFourDirectionFields);
    platform_.PressHotKey();
    MoveVirtualCursorTo(394, 230);
    platform_.PressLeftButton();
    platform_.PressLeftButton();  // the hook and raw input both report it
    platform_.Advance(100);
    EXPECT_EQ(OverlayIsWheelVisible(), 0);
    ASSERT_EQ(platform_.Injected().size(), 2u);
    EXPECT_EQ(platform_.Injected()[0].vk, 'B');
}

TEST_F(EngineTest, SelectingAFieldGivesCursorAndFocusBackBeforeTheRun) {
    Start(R"({"sendDelay": 200, "keyHold": 10})", kFourDirectionFields);
    platform_.PressHotKey();
    platform_.SetForeground(kOtherWindow);
    MoveVirtualCursorTo(394, 230);
    platform_.PressLeftButton();
    platform_.DispatchPosted();
    ExpectFocusBackThenKeyAfter('B', 200);
}

TEST_F(EngineTest, AFieldWithoutStepsOnlyClosesTheWheel) {
    Start("{}", R"({"actions": [{"name": "nothing"}, {"name": "b", "key": "b"}]})");
    platform_.PressHotKey();
    MoveVirtualCursorTo(394, 230);
    ASSERT_EQ(engine().hoveredField, 0);
    platform_.PressLeftButton();
    platform_.Advance(500);
    EXPECT_EQ(OverlayIsWheelVisible(), 0);
    EXPECT_EQ(platform_.CursorMoves().size(), 1u);
    EXPECT_EQ(platform_.DetachedJobsStarted(), 0u);
    EXPECT_TRUE(platform_.Injected().empty());
}

// --- Gaze --------------------------------------------------------------------------

class GazeTest : public EngineTest {
protected:
    // The tracker reports itself active and the mouse has been still for
    // long when the wheel shows.
    void ShowWithTheTrackerActive() {
        engine().gazeStatus = zirvel::kGazeActive;
        platform_.Advance(1000);
        platform_.PressHotKey();
    }
    // Four fields; the wheel shows with the tracker active and the gaze on
    // field 0, above the centre.
    void ShowLookingAtTheTopField(const std::string& config) {
        Start(config, kFourDirectionFields);
        ShowWithTheTrackerActive();
        LookAt(294, 80);
    }
    // Gaze at a point of the wheel window on a 1920 x 1080 primary screen.
    void LookAt(int x, int y) {
        const zirvel::ScreenRect wheel = platform_.SurfaceAt(zirvel::Surface::Wheel).rect;
        engine().gazePointX = (wheel.left + x) * 10000 / 1920;
        engine().gazePointY = (wheel.top + y) * 10000 / 1080;
    }
    // Keeps the gaze sample fresh for `ms`, one tick at a time.
    void Dwell(std::uint64_t ms) {
        for (std::uint64_t t = 0; t < ms; t += 15) {
            engine().lastGazeTick = platform_.Now();
            platform_.Advance(15);
        }
    }
};

TEST_F(GazeTest, DwellOnAFieldSelectsIt) {
    ShowLookingAtTheTopField(R"({"gazeDwell": 300, "sendDelay": 0, "keyHold": 0})");
    Dwell(150);
    EXPECT_EQ(engine().hoveredField, 0);
    EXPECT_TRUE(engine().gazeDriven);
    EXPECT_GT(engine().dwellProgress, 0.03f);
    EXPECT_LT(engine().dwellProgress, 1.0f);
    Dwell(600);
    EXPECT_EQ(OverlayIsWheelVisible(), 0);
    platform_.Advance(50);
    ASSERT_FALSE(platform_.Injected().empty());
    EXPECT_EQ(platform_.Injected()[0].vk, 'A');
}

TEST_F(GazeTest, ZeroDwellNeverSelects) {
    ShowLookingAtTheTopField(R"({"gazeDwell": 0})");
    Dwell(3000);
    EXPECT_EQ(engine().hoveredField, 0);
    EXPECT_EQ(OverlayIsWheelVisible(), 1);
    EXPECT_EQ(engine().dwellProgress, 0.0f);
}

TEST_F(GazeTest, MouseMotionCancelsTheDwellAndTheGazeWaitsForStillness) {
    ShowLookingAtTheTopField(R"({"gazeDwell": 2000})");
    Dwell(300);
    ASSERT_GT(engine().dwellProgress, 0.0f);
    platform_.MoveMouse(0, 1);
    Dwell(15);
    EXPECT_EQ(engine().dwellProgress, 0.0f);
    EXPECT_FALSE(engine().gazeDriven);
    const int y = engine().cursorY;
    Dwell(690);  // still within 700 ms of the motion: the gaze does not steer
    EXPECT_FALSE(engine().gazeDriven);
    EXPECT_EQ(engine().cursorY, y);
    Dwell(45);
    EXPECT_TRUE(engine().gazeDriven);
}

TEST_F(GazeTest, AStaleGazeSampleDoesNotSteer) {
    ShowLookingAtTheTopField(R"({"gazeDwell": 300})");
    engine().lastGazeTick = platform_.Now();
    platform_.Advance(300);
    const int y = engine().cursorY;
    EXPECT_LT(y, 230);  // it steered while the sample was fresh
    LookAt(294, 400);
    platform_.Advance(300);
    EXPECT_EQ(engine().cursorY, y);  // not after 250 ms without a new sample
}

TEST_F(GazeTest, EachTickMovesThirtyFivePercentOfTheWayTruncated) {
    ShowLookingAtTheTopField(R"({"gazeDwell": 0})");
    Dwell(15);
    EXPECT_EQ(engine().cursorX, 294);
    EXPECT_EQ(engine().cursorY, 178);  // 230 + trunc(0.35 * -150)
    Dwell(15);
    EXPECT_EQ(engine().cursorY, 144);  // 178 + trunc(0.35 * -98)

    engine().gazePointX = 5250;  // 1008 on the screen, 342 in the window
    Dwell(15);
    EXPECT_EQ(engine().cursorX, 310);  // 294 + trunc(0.35 * 48) = 294 + trunc(16.8)
}

TEST_F(GazeTest, TheGazePointIsTakenOnThePrimaryScreenWhereverTheWheelIs) {
    UseTwoMonitors();
    platform_.SetCursor({2500, 300});
    Start(R"({"gazeDwell": 0})", kFourDirectionFields);
    ShowWithTheTrackerActive();
    ASSERT_EQ(platform_.SurfaceAt(zirvel::Surface::Wheel).rect, WheelCentredOn(kRightMonitor));
    // (1824, 540) of the 1920 x 1080 primary screen, (-442, 258) in the window
    // at (2266, 282).
    engine().gazePointX = 9500;
    engine().gazePointY = 5000;
    Dwell(15);
    EXPECT_EQ(engine().cursorX, 37);   // 294 + trunc(0.35 * -736)
    EXPECT_EQ(engine().cursorY, 239);  // 230 + trunc(0.35 * 28)
}

TEST_F(GazeTest, TheGazeSteersOnlyWhenEnabledAndActive) {
    ShowLookingAtTheTopField(R"({"gazeEnabled": false, "gazeDwell": 0})");
    Dwell(60);
    EXPECT_EQ(engine().cursorY, 230);
    EXPECT_FALSE(engine().gazeDriven);

    WriteFile("config.json", R"({"gazeEnabled": true, "gazeDwell": 0})");
    OverlayReloadConfig();
    for (const std::int32_t status : {0, 1, 2, 3, 5}) {
        engine().gazeStatus = status;
        Dwell(30);
        EXPECT_EQ(engine().cursorY, 230) << status;
        EXPECT_FALSE(engine().gazeDriven) << status;
    }
    engine().gazeStatus = zirvel::kGazeActive;
    Dwell(15);
    EXPECT_EQ(engine().cursorY, 178);
}

TEST_F(GazeTest, LookingWhereTheCursorIsSteersWithoutARedraw) {
    Start(R"({"gazeDwell": 300})", kFourDirectionFields);
    ShowWithTheTrackerActive();
    ASSERT_FALSE(engine().gazeDriven);
    const int redraws = engine().wheelRedraws;
    engine().gazePointX = 5000;  // the middle of the screen: the wheel's centre
    engine().gazePointY = 5000;
    Dwell(45);
    EXPECT_TRUE(engine().gazeDriven);
    EXPECT_EQ(engine().cursorX, 294);
    EXPECT_EQ(engine().cursorY, 230);
    EXPECT_EQ(engine().wheelRedraws, redraws);
}

TEST_F(GazeTest, DwellOnAnArrowSwitchesTheWheelAndKeepsItOpen) {
    Start(R"({"gazeDwell": 300})", kTwoOneFieldWheels);
    ShowWithTheTrackerActive();
    LookAt(30, 230);
    for (int tick = 0; tick < 100 && engine().configuration.currentWheel == 0; ++tick) Dwell(15);
    EXPECT_EQ(engine().configuration.currentWheel, 1);
    EXPECT_EQ(engine().hoveredArrow, 0);
    EXPECT_EQ(OverlayIsWheelVisible(), 1);
    EXPECT_TRUE(platform_.Injected().empty());
}

TEST_F(GazeTest, MovingToAnotherFieldStartsTheDwellAgain) {
    ShowLookingAtTheTopField(R"({"gazeDwell": 300, "sendDelay": 0, "keyHold": 0})");
    Dwell(210);
    ASSERT_EQ(engine().dwellTarget, 0);
    ASSERT_GT(engine().dwellProgress, 0.5f);

    LookAt(444, 380);  // field 1
    std::uint64_t entered = 0;
    for (int tick = 0; tick < 100 && platform_.Injected().empty(); ++tick) {
        Dwell(15);
        if (entered == 0 && engine().dwellTarget == 1) {
            entered = platform_.Now();
            EXPECT_EQ(engine().dwellStartTick, entered);
        }
    }
    ASSERT_NE(entered, 0u);
    ASSERT_FALSE(platform_.Injected().empty());
    EXPECT_EQ(platform_.Injected()[0].vk, 'B');
    EXPECT_EQ(platform_.Injected()[0].time - entered, 300u);
}

TEST_F(GazeTest, ASecondShowStartsFromTheCentreWithNothingCarriedOver) {
    ShowLookingAtTheTopField(R"({"gazeDwell": 2000})");
    Dwell(150);
    ASSERT_GT(engine().dwellProgress, 0.0f);
    platform_.MoveMouse(5, 5);
    platform_.Advance(15);
    ASSERT_NE(engine().lastMouseMoveTick, 0u);
    platform_.MoveMouse(40, 0);  // not applied before the wheel closes

    platform_.PressHotKey();
    platform_.PressHotKey();
    EXPECT_EQ(engine().cursorX, 294);
    EXPECT_EQ(engine().cursorY, 230);
    EXPECT_EQ(engine().dwellProgress, 0.0f);
    EXPECT_EQ(engine().lastMouseMoveTick, 0u);
    // No motion is left over, and the gaze steers at once.
    LookAt(294, 80);
    Dwell(15);
    EXPECT_EQ(engine().cursorX, 294);
    EXPECT_EQ(engine().cursorY, 178);
    EXPECT_TRUE(engine().gazeDriven);
}

}  // namespace
}  // namespace zirvel_test
