// A fresh engine on the null platform with its files in a scratch directory.
#pragma once

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>

#include "engine/element_hints.h"
#include "engine/engine_dispatch.h"
#include "engine/engine_lifecycle.h"
#include "engine/engine_state.h"
#include "engine/engine_voice_target.h"
#include "engine/overlay_exports.h"
#include "engine/wheel_overlay.h"
#include "navigation/element_scanner.h"
#include "platform/null/null_platform.h"
#include "voice/voice_dispatch.h"

namespace zirvel_test {

inline constexpr zirvel::WindowHandle kGameWindow = 0x1234;
// A window that takes the foreground while the wheel shows.
inline constexpr zirvel::WindowHandle kOtherWindow = 0x999;
// Where the real cursor is when a test starts.
inline constexpr zirvel::ScreenPoint kStartCursor{700, 500};
// The null platform's one monitor, primary in UseTwoMonitors; the second
// lies to its right.
inline constexpr zirvel::ScreenRect kPrimaryMonitor{0, 0, 1920, 1080};
inline constexpr zirvel::ScreenRect kRightMonitor{1920, 0, 1920 + 1280, 1024};

// Wheel files of the wheel tests: four fields up, right, down, left typing
// a, b, c, d; two wheels of one field each.
inline constexpr char kFourDirectionFields[] = R"({"actions": [
  {"name": "up", "key": "a"}, {"name": "right", "key": "b"}, {"name": "down", "key": "c"}, {"name": "left", "key": "d"}]})";
inline constexpr char kTwoOneFieldWheels[] = R"({"wheels": [
  {"name": "A", "actions": [{"name": "a", "key": "a"}]},
  {"name": "B", "actions": [{"name": "b", "key": "b"}]}]})";

// Messages as the voice thread posts them.
inline void PostVoice(zirvel::NullPlatform& platform, std::int32_t code) {
    zirvel::EngineMessage message;
    message.kind = zirvel::EngineMessageKind::VoiceCommand;
    message.first = code;
    platform.Post(std::move(message));
}

inline void PostRun(zirvel::NullPlatform& platform, zirvel::EngineMessageKind kind, std::int64_t first, std::int64_t second = 0) {
    zirvel::EngineMessage message;
    message.kind = kind;
    message.first = first;
    message.second = second;
    platform.Post(std::move(message));
}

class EngineTest : public ::testing::Test {
protected:
    explicit EngineTest(zirvel::NullPlatform::Clock clock = zirvel::NullPlatform::Clock::Virtual)
        : platform_(clock) {}

    void SetUp() override {
        static int counter = 0;
        directory_ = std::filesystem::temp_directory_path() /
                     ("zirvel_engine_" + std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()) +
                      "_" + std::to_string(++counter));
        std::filesystem::remove_all(directory_);
        std::filesystem::create_directories(directory_);
        zirvel::ResetEngineState(platform_, directory_.u16string());
        platform_.SetForeground(kGameWindow);
        platform_.SetCursor(kStartCursor);
    }

    void TearDown() override {
        zirvel::SetGazeThreadBody(nullptr);
        zirvel::SetVoiceThreadBody(nullptr);
        std::error_code ignored;
        std::filesystem::remove_all(directory_, ignored);
    }

    void WriteFile(const std::string& name, const std::string& content) {
        std::ofstream(directory_ / name, std::ios::binary) << content;
    }

    // Settings with a voice.json that has no phrases, unless written before.
    void Start(const std::string& config = "{}", const std::string& wheels = "") {
        WriteFile("config.json", config);
        if (!wheels.empty()) WriteFile("default.json", wheels);
        if (!std::filesystem::exists(directory_ / "voice.json")) WriteFile("voice.json", R"({"actions": []})");
        ASSERT_EQ(OverlayEngineStart(), 1);
    }

    // Started by the stand-alone host: a tray icon and a problems box.
    void StartStandAlone(const std::string& config = "{}") {
        WriteFile("config.json", config);
        WriteFile("voice.json", R"({"actions": []})");
        ASSERT_TRUE(zirvel::StartEngine(true));
    }

    // The voice thread recognised `text`: matched and posted as it would be.
    void Say(std::string_view text) {
        zirvel::DispatchRecognizedText(engine().phrases, text, zirvel::EngineVoiceTarget(engine()));
    }

    // The real cursor went back to where the wheel found it, and the
    // foreground to the game, once.
    void ExpectCursorAndFocusRestored() {
        ASSERT_EQ(platform_.CursorMoves().size(), 1u);
        EXPECT_EQ(platform_.CursorMoves()[0].point, kStartCursor);
        ASSERT_EQ(platform_.ForegroundRequests().size(), 1u);
        EXPECT_EQ(platform_.ForegroundRequests()[0], kGameWindow);
    }

    // The wheel has just closed to run a function of one key: cursor and
    // focus are already back, and the key goes down `delay` ms later.
    void ExpectFocusBackThenKeyAfter(std::uint16_t vk, std::uint64_t delay) {
        const std::uint64_t closed = platform_.Now();
        EXPECT_EQ(OverlayIsWheelVisible(), 0);
        ExpectCursorAndFocusRestored();
        EXPECT_TRUE(platform_.Injected().empty());
        platform_.Advance(delay + 500);
        ASSERT_EQ(platform_.Injected().size(), 2u);
        EXPECT_EQ(platform_.Injected()[0].vk, vk);
        EXPECT_EQ(platform_.Injected()[0].time - closed, delay);
    }

    zirvel::EngineState& engine() { return zirvel::Engine(); }

    std::u16string PathOf(const std::string& name) const { return (directory_ / name).u16string(); }

    void UseTwoMonitors() { platform_.SetMonitors({kPrimaryMonitor, kRightMonitor}); }

    // Moves the virtual cursor to a wheel-window point through raw motion.
    void MoveVirtualCursorTo(int x, int y) {
        platform_.MoveMouse(x - engine().cursorX, y - engine().cursorY);
        platform_.Advance(zirvel::kWheelTimerPeriod);
    }

    zirvel::NullPlatform platform_;
    std::filesystem::path directory_;
};

// A scanner that answers with `elements` rectangles of 50 x 30 in a row.
class FixedScanner : public zirvel::ElementScanner {
public:
    zirvel::ElementScanResult Scan(zirvel::ElementScanMode mode) override {
        ++scans;
        lastMode = mode;
        zirvel::ElementScanResult result;
        result.area = {0, 0, 1920, 1080};
        for (int i = 0; i < elements; ++i) result.elements.push_back({100 * i, 10, 100 * i + 50, 40});
        return result;
    }
    std::atomic<int> elements{5};
    std::atomic<int> scans{0};
    std::optional<zirvel::ElementScanMode> lastMode;  // none until a scan ran
};

class HintsTest : public EngineTest {
protected:
    void SetUp() override {
        EngineTest::SetUp();
        zirvel::SetElementScanner(&scanner_);
    }
    void TearDown() override {
        zirvel::SetElementScanner(nullptr);
        EngineTest::TearDown();
    }
    // "pokaż elementy" and its result.
    void ShowHints() {
        PostVoice(platform_, zirvel::kScanElementsCommand);
        platform_.Advance(50);
        ASSERT_TRUE(engine().hintsVisible);
    }
    FixedScanner scanner_;
};

}  // namespace zirvel_test
