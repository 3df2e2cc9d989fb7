// Programs out of Zirvel's reach (run as administrator on Windows): the
// user is told when the wheel shows over one, when a function runs into
// one and when a scan starts there, and when the system refuses input.
#include "engine/reach_warning.h"

#include "config/text.h"
#include "engine_fixture.h"
#include "voice/voice_phrases.h"

namespace zirvel_test {
namespace {

using zirvel::Concat;
using zirvel::ReachOccasion;

constexpr char kWheels[] = R"({"wheels": [{"name": "W", "actions": [{"name": "A", "key": "a"}]}]})";

std::u16string Warning(ReachOccasion occasion) {
    return Concat({zirvel::kReachWarningTitle, u"|", zirvel::OutOfReachText(occasion)});
}

class ReachWarningTest : public EngineTest {
protected:
    void SetUp() override {
        EngineTest::SetUp();
        Start("{}", kWheels);  // under the front-end: showMessages is off
        platform_.SetOutOfReach(kGameWindow);
    }
};

TEST_F(ReachWarningTest, TheWheelShownOverAnAdministratorsProgramSaysSoAndStillShows) {
    platform_.PressHotKey();
    EXPECT_EQ(OverlayIsWheelVisible(), 1);
    ASSERT_EQ(platform_.TrayNotices().size(), 1u);
    EXPECT_EQ(platform_.TrayNotices()[0], Warning(ReachOccasion::WheelShown));
    EXPECT_NE(platform_.TrayNotices()[0].find(u"uruchom Zirvel jako administrator"), std::u16string::npos);
}

TEST_F(ReachWarningTest, AProgramWithinReachGivesNoWarning) {
    platform_.SetForeground(kOtherWindow);
    platform_.PressHotKey();
    PostRun(platform_, zirvel::EngineMessageKind::RunWheelFunction, 0, 0);
    platform_.DispatchPosted();
    PostVoice(platform_, zirvel::kScanElementsCommand);
    platform_.DispatchPosted();
    platform_.Advance(1000);
    EXPECT_TRUE(platform_.TrayNotices().empty());
}

TEST_F(ReachWarningTest, AShowAndTheFunctionItRunsWarnOnceAndALaterShowAgain) {
    platform_.PressHotKey();
    PostRun(platform_, zirvel::EngineMessageKind::RunWheelFunction, 0, 0);
    platform_.DispatchPosted();
    platform_.Advance(1000);
    EXPECT_EQ(platform_.TrayNotices().size(), 1u);
    platform_.Advance(5000);
    platform_.PressHotKey();
    ASSERT_EQ(platform_.TrayNotices().size(), 2u);
    EXPECT_EQ(platform_.TrayNotices()[1], Warning(ReachOccasion::WheelShown));
}

TEST_F(ReachWarningTest, AFunctionRunByVoiceIntoAnAdministratorsProgramSaysSo) {
    PostRun(platform_, zirvel::EngineMessageKind::RunWheelFunction, 0, 0);
    platform_.DispatchPosted();
    ASSERT_EQ(platform_.TrayNotices().size(), 1u);
    EXPECT_EQ(platform_.TrayNotices()[0], Warning(ReachOccasion::FunctionRun));
    platform_.Advance(1000);
    EXPECT_EQ(platform_.Injected().size(), 2u) << "the keys are still sent: the check may be wrong";
}

TEST_F(ReachWarningTest, AScanOverAnAdministratorsProgramSaysSo) {
    PostVoice(platform_, zirvel::kScanElementsCommand);
    platform_.DispatchPosted();
    ASSERT_GE(platform_.TrayNotices().size(), 1u);
    EXPECT_EQ(platform_.TrayNotices()[0], Warning(ReachOccasion::ElementScan));
}

TEST_F(EngineTest, RefusedInputIsToldOncePerRun) {
    Start("{}", kWheels);
    platform_.SetInputRefused(true);
    PostRun(platform_, zirvel::EngineMessageKind::RunWheelFunction, 0, 0);
    platform_.DispatchPosted();
    platform_.Advance(1000);  // the press and the release are both refused
    platform_.DispatchPosted();
    ASSERT_EQ(platform_.TrayNotices().size(), 1u);
    EXPECT_EQ(platform_.TrayNotices()[0], Concat({zirvel::kReachWarningTitle, u"|", zirvel::kInputRefusedText}));
    EXPECT_TRUE(platform_.Injected().empty());
}

TEST_F(EngineTest, InputTheSystemTakesIsNotWarnedAbout) {
    Start("{}", kWheels);
    PostRun(platform_, zirvel::EngineMessageKind::RunWheelFunction, 0, 0);
    platform_.DispatchPosted();
    platform_.Advance(1000);
    platform_.DispatchPosted();
    EXPECT_EQ(platform_.Injected().size(), 2u);
    EXPECT_TRUE(platform_.TrayNotices().empty());
}

}  // namespace
}  // namespace zirvel_test
