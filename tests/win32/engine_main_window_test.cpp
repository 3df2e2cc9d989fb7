// The engine's main window as the voice and gaze threads reach it.
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <gtest/gtest.h>

#include <memory>
#include <thread>

#include "platform/win32/win32_platform.h"

namespace {

TEST(EngineMainWindowTest, AStatusChangeOnAnotherThreadRepaintsTheWholeWindow) {
    auto platform = std::make_unique<zirvel::win32::Win32Platform>(GetModuleHandleW(nullptr));
    const HWND main = platform->MainWindow();
    ASSERT_NE(main, nullptr);
    // Shown and painted: nothing is waiting to be painted.
    ShowWindow(main, SW_SHOWNOACTIVATE);
    UpdateWindow(main);
    ValidateRect(main, nullptr);
    RECT pending{};
    ASSERT_FALSE(GetUpdateRect(main, &pending, FALSE));

    std::thread([&platform] { platform->StatusChanged(); }).join();
    ASSERT_TRUE(GetUpdateRect(main, &pending, FALSE));
    RECT client{};
    GetClientRect(main, &client);
    EXPECT_EQ(pending.left, client.left);
    EXPECT_EQ(pending.top, client.top);
    EXPECT_EQ(pending.right, client.right);
    EXPECT_EQ(pending.bottom, client.bottom);
}

}  // namespace
