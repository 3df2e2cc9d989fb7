// Real windows for the element scan's tests: top-level windows and their
// child controls, destroyed with the object.
#pragma once

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <vector>

#include "core/geometry.h"

namespace zirvel_test {

class TestWindows {
public:
    TestWindows();
    ~TestWindows();
    TestWindows(const TestWindows&) = delete;
    TestWindows& operator=(const TestWindows&) = delete;

    // A visible top-level window of this screen rectangle.
    HWND TopLevel(zirvel::ScreenRect rect);
    // A child of `parent` at this client rectangle.
    HWND Child(HWND parent, const wchar_t* className, DWORD style, zirvel::ScreenRect rect);

private:
    std::vector<HWND> windows_;
};

// Where a window is on the screen.
zirvel::ScreenRect ScreenRectOf(HWND window);

}  // namespace zirvel_test
