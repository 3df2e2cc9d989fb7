// The engine's main window as the voice and gaze threads reach it.
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <thread>

#include "engine/engine_state.h"
#include "platform/win32/engine_window_protocol.h"
#include "platform/win32/win32_platform.h"
#include "voice/voice_phrases.h"

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

// What another process's WM_COPYDATA gives the main window: 1 when taken.
LRESULT HandOver(HWND main, ULONG_PTR kind, const std::u16string& text) {
    COPYDATASTRUCT data{};
    data.dwData = kind;
    data.cbData = static_cast<DWORD>(text.size() * sizeof(char16_t));
    data.lpData = const_cast<char16_t*>(text.data());
    return SendMessageW(main, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data));
}

TEST(EngineMainWindowTest, AHandedOverRecordIsTakenOnlyWhenItsKindAndLengthAreRight) {
    auto platform = std::make_unique<zirvel::win32::Win32Platform>(GetModuleHandleW(nullptr));
    zirvel::ResetEngineState(*platform, std::filesystem::temp_directory_path().u16string());
    zirvel::AddVoicePhrase(zirvel::Engine().phrases, u"pokaż siatkę", zirvel::kShowGridCommand);
    const HWND main = platform->MainWindow();
    EXPECT_EQ(HandOver(main, zirvel::win32::kSayPhraseData, u"pokaż siatkę"), 1);
    EXPECT_EQ(HandOver(main, zirvel::win32::kSayPhraseData, u"Pokaż siatkę\0"), 1);  // lowered, NUL dropped
    EXPECT_EQ(HandOver(main, 7, u"pokaż siatkę"), 0);                               // an unknown kind
    EXPECT_EQ(HandOver(main, zirvel::win32::kSayPhraseData, u""), 0);
    // The same phrase in a record past the longest: refused unread.
    std::u16string padded = u"pokaż siatkę";
    padded.resize(zirvel::win32::kLongestCopyData / 2 + 1, u'\0');
    EXPECT_EQ(HandOver(main, zirvel::win32::kSayPhraseData, padded), 0);
    // A path with a NUL inside names no file.
    EXPECT_EQ(HandOver(main, zirvel::win32::kActivateWheelFileData, std::u16string(u"C:\\a.json\0b", 12)), 0);
}

// Whether the notification area holds the engine's icon now.
bool TrayIconPresent(HWND main) {
    NOTIFYICONDATAW icon{};
    icon.cbSize = sizeof icon;
    icon.hWnd = main;
    icon.uID = zirvel::win32::kTrayIconId;
    return Shell_NotifyIconW(NIM_MODIFY, &icon) != FALSE;
}

TEST(EngineMainWindowTest, TheTrayIconComesBackWhenTheTaskbarIsCreatedAgain) {
    auto platform = std::make_unique<zirvel::win32::Win32Platform>(GetModuleHandleW(nullptr));
    const HWND main = platform->MainWindow();
    platform->AddTrayIcon(u"Zirvel");
    ASSERT_TRUE(TrayIconPresent(main)) << "no notification area to test with";
    // Explorer restarted: the new taskbar has no icons.
    NOTIFYICONDATAW icon{};
    icon.cbSize = sizeof icon;
    icon.hWnd = main;
    icon.uID = zirvel::win32::kTrayIconId;
    ASSERT_TRUE(Shell_NotifyIconW(NIM_DELETE, &icon));
    ASSERT_FALSE(TrayIconPresent(main));
    SendMessageW(main, RegisterWindowMessageW(L"TaskbarCreated"), 0, 0);
    EXPECT_TRUE(TrayIconPresent(main));
}

}  // namespace
