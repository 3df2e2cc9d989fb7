// A fresh engine on the null platform with its files in a scratch directory.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "engine/engine_dispatch.h"
#include "engine/engine_lifecycle.h"
#include "engine/engine_state.h"
#include "engine/overlay_exports.h"
#include "engine/wheel_overlay.h"
#include "platform/null/null_platform.h"

namespace zirvel_test {

inline constexpr zirvel::WindowHandle kGameWindow = 0x1234;

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
        platform_.SetCursor({700, 500});
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

    zirvel::EngineState& engine() { return zirvel::Engine(); }

    std::u16string PathOf(const std::string& name) const { return (directory_ / name).u16string(); }

    // Moves the virtual cursor to a wheel-window point through raw motion.
    void MoveVirtualCursorTo(int x, int y) {
        platform_.MoveMouse(x - engine().cursorX, y - engine().cursorY);
        platform_.Advance(zirvel::kWheelTimerPeriod);
    }

    zirvel::NullPlatform platform_;
    std::filesystem::path directory_;
};

}  // namespace zirvel_test
