#include "test_windows.h"

namespace zirvel_test {
namespace {

constexpr wchar_t kTopLevelClass[] = L"ZirvelScanTestWindow";

void RegisterClasses() {
    static const bool registered = [] {
        WNDCLASSW windowClass{};
        windowClass.lpfnWndProc = DefWindowProcW;
        windowClass.hInstance = GetModuleHandleW(nullptr);
        windowClass.hbrBackground = reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(COLOR_WINDOW + 1));
        windowClass.lpszClassName = kTopLevelClass;
        RegisterClassW(&windowClass);
        // A browser's page area, by its class name.
        windowClass.lpszClassName = L"Chrome_RenderWidgetHostHWND";
        RegisterClassW(&windowClass);
        return true;
    }();
    (void)registered;
}

}  // namespace

TestWindows::TestWindows() { RegisterClasses(); }

TestWindows::~TestWindows() {
    for (auto window = windows_.rbegin(); window != windows_.rend(); ++window) DestroyWindow(*window);
}

HWND TestWindows::TopLevel(zirvel::ScreenRect rect) {
    const HWND window = CreateWindowExW(WS_EX_NOACTIVATE, kTopLevelClass, L"Scan test", WS_POPUP, rect.left, rect.top,
                                        rect.Width(), rect.Height(), nullptr, nullptr, GetModuleHandleW(nullptr),
                                        nullptr);
    // Shown without activation: Wine leaves such a window to itself rather
    // than to a window manager, and hiding it then takes no 2 s wait.
    ShowWindow(window, SW_SHOWNOACTIVATE);
    windows_.push_back(window);
    return window;
}

HWND TestWindows::Child(HWND parent, const wchar_t* className, DWORD style, zirvel::ScreenRect rect) {
    return CreateWindowExW(0, className, L"x", WS_CHILD | style, rect.left, rect.top, rect.Width(), rect.Height(),
                           parent, nullptr, GetModuleHandleW(nullptr), nullptr);
}

zirvel::ScreenRect ScreenRectOf(HWND window) {
    RECT rect{};
    GetWindowRect(window, &rect);
    return {rect.left, rect.top, rect.right, rect.bottom};
}

}  // namespace zirvel_test
