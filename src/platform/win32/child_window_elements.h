// The element scan's fallback where UI Automation cannot be started (as
// under Wine): the controls that are child windows, read with
// EnumChildWindows. A control's type comes from its window class and, for
// "Button" windows, from its BS_* style; lists, trees and list views count
// as one focusable control each, since their items are not windows; tab
// control pages and other windowless items are not seen at all.
#pragma once

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <cstdint>
#include <string_view>
#include <vector>

#include "navigation/element_filter.h"
#include "platform/win32/element_scan_windows.h"

namespace zirvel::win32 {

// The control type id a child window of this class and style stands for;
// 0 when it is none that the scan knows (it then counts only when it takes
// the keyboard focus). The class name is compared without regard to case.
std::int32_t ChildWindowControlType(std::u16string_view className, DWORD style);

// One child window as an element: enabled = IsWindowEnabled, offscreen =
// not IsWindowVisible, focusable = WS_TABSTOP, its window rectangle.
ElementRecord ChildWindowRecord(HWND window);

// Every descendant window of `parent`, in EnumChildWindows order.
std::vector<ElementRecord> ChildWindowRecords(HWND parent);

// The whole fallback scan into `result`, whose area is already set: the
// foreground window's children, then the taskbar's (window mode); or the
// children of the browser's content window (the area shrunk to it), else of
// the foreground window (page mode).
void ScanChildWindows(ElementScanMode mode, HWND foreground, HWND taskbar, const EngineWindows& engineWindows,
                      ElementScanResult& result);

}  // namespace zirvel::win32
