// The program behind a window as the engine's wheel choice and the editor's
// picker read it: this test's own windows, under Wine.
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "platform/win32/window_program.h"

namespace {

// This process's image, as the system names it.
std::u16string OwnImage() {
    wchar_t path[MAX_PATH * 4];
    DWORD length = MAX_PATH * 4;
    if (!QueryFullProcessImageNameW(GetCurrentProcess(), 0, path, &length)) return {};
    return std::u16string(reinterpret_cast<const char16_t*>(path), length);
}

class TestWindow {
public:
    explicit TestWindow(const wchar_t* title, DWORD exStyle = 0) {
        window_ = CreateWindowExW(exStyle, L"STATIC", title, WS_OVERLAPPEDWINDOW | WS_VISIBLE, 10, 10, 200, 100,
                                  nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    }
    ~TestWindow() { DestroyWindow(window_); }
    TestWindow(const TestWindow&) = delete;
    TestWindow& operator=(const TestWindow&) = delete;
    HWND Get() const { return window_; }

private:
    HWND window_ = nullptr;
};

TEST(WindowProgram, AWindowsProgramIsItsProcesssImage) {
    const TestWindow window(L"Okno testu programu");
    ASSERT_NE(window.Get(), nullptr);
    const std::u16string image = OwnImage();
    ASSERT_FALSE(image.empty());
    const zirvel::ProgramIdentity program = zirvel::win32::ReadWindowProgram(window.Get());
    EXPECT_EQ(program.executable, image);
    EXPECT_TRUE(program.windowClasses.empty());
}

TEST(WindowProgram, NoWindowAndAClosedWindowHaveNoProgram) {
    EXPECT_TRUE(zirvel::win32::ReadWindowProgram(nullptr).executable.empty());
    HWND closed = nullptr;
    {
        const TestWindow window(L"Zamknięte");
        closed = window.Get();
    }
    EXPECT_TRUE(zirvel::win32::ReadWindowProgram(closed).executable.empty());
}

TEST(WindowProgram, TheOpenWindowsAreTheTaskbarsWithTheirProgramsAndTitles) {
    const TestWindow shown(L"Okno na pasku zadań");
    const TestWindow tool(L"Okno narzędzi", WS_EX_TOOLWINDOW);
    const std::vector<zirvel::OpenWindow> windows = zirvel::win32::ListOpenWindows();
    const auto titled = [&](const std::u16string& title) {
        return std::find_if(windows.begin(), windows.end(),
                            [&](const zirvel::OpenWindow& open) { return open.title == title; });
    };
    const auto found = titled(u"Okno na pasku zadań");
    ASSERT_NE(found, windows.end());
    EXPECT_EQ(found->program.executable, OwnImage());
    EXPECT_EQ(titled(u"Okno narzędzi"), windows.end()) << "a tool window is no task";
}

}  // namespace
