// The element scan's fallback where UI Automation cannot be started: real
// child windows of a test window, read with EnumChildWindows.
#include <gtest/gtest.h>

#include "navigation/element_filter.h"
#include "platform/win32/child_window_elements.h"
#include "platform/win32/win32_element_scanner.h"
#include "test_windows.h"

namespace zirvel_test {
namespace {

using zirvel::ElementScanMode;
using zirvel::ScreenRect;
using zirvel::win32::ChildWindowControlType;
namespace control_type = zirvel::control_type;

TEST(ChildWindowControlTypeTest, ButtonsAreToldApartByTheirStyle) {
    EXPECT_EQ(ChildWindowControlType(u"Button", BS_PUSHBUTTON), control_type::kButton);
    EXPECT_EQ(ChildWindowControlType(u"BUTTON", BS_DEFPUSHBUTTON), control_type::kButton);
    EXPECT_EQ(ChildWindowControlType(u"Button", BS_CHECKBOX), control_type::kCheckBox);
    EXPECT_EQ(ChildWindowControlType(u"Button", BS_AUTOCHECKBOX | WS_TABSTOP), control_type::kCheckBox);
    EXPECT_EQ(ChildWindowControlType(u"Button", BS_3STATE), control_type::kCheckBox);
    EXPECT_EQ(ChildWindowControlType(u"Button", BS_AUTO3STATE), control_type::kCheckBox);
    EXPECT_EQ(ChildWindowControlType(u"Button", BS_RADIOBUTTON), control_type::kRadioButton);
    EXPECT_EQ(ChildWindowControlType(u"Button", BS_AUTORADIOBUTTON), control_type::kRadioButton);
    EXPECT_EQ(ChildWindowControlType(u"Button", 0x0C), control_type::kSplitButton);
    EXPECT_EQ(ChildWindowControlType(u"Button", BS_GROUPBOX), 0);
}

TEST(ChildWindowControlTypeTest, OtherControlsByTheirClass) {
    EXPECT_EQ(ChildWindowControlType(u"Edit", WS_TABSTOP), control_type::kEdit);
    EXPECT_EQ(ChildWindowControlType(u"RichEdit20W", 0), control_type::kEdit);
    EXPECT_EQ(ChildWindowControlType(u"RICHEDIT50W", 0), control_type::kEdit);
    EXPECT_EQ(ChildWindowControlType(u"ComboBox", 0), control_type::kComboBox);
    EXPECT_EQ(ChildWindowControlType(u"ComboBoxEx32", 0), control_type::kComboBox);
    EXPECT_EQ(ChildWindowControlType(u"SysLink", 0), control_type::kHyperlink);
    EXPECT_EQ(ChildWindowControlType(u"msctls_trackbar32", 0), control_type::kSlider);
    EXPECT_EQ(ChildWindowControlType(u"msctls_updown32", 0), control_type::kSpinner);
    EXPECT_EQ(ChildWindowControlType(u"#32770", 0), control_type::kPane);
    // Containers whose items are not windows: not clickable types, so they
    // count only when they take the focus.
    for (const char16_t* container : {u"ListBox", u"SysListView32", u"SysTreeView32", u"SysTabControl32"}) {
        EXPECT_FALSE(zirvel::IsClickableControlType(ChildWindowControlType(container, 0))) << "container";
    }
    EXPECT_FALSE(zirvel::IsClickableControlType(ChildWindowControlType(u"Static", 0)));
    EXPECT_EQ(ChildWindowControlType(u"SomeoneElsesControl", WS_TABSTOP), 0);
    EXPECT_EQ(ChildWindowControlType(u"", 0), 0);
    EXPECT_EQ(ChildWindowControlType(u"Buttons", 0), 0) << "Button only as the whole name";
}

class ChildWindowScanTest : public ::testing::Test {
protected:
    ChildWindowScanTest() { window_ = windows_.TopLevel({50, 60, 650, 560}); }

    HWND Add(const wchar_t* className, DWORD style, ScreenRect rect) {
        return windows_.Child(window_, className, WS_VISIBLE | style, rect);
    }

    zirvel::ElementScanResult Scan(ElementScanMode mode) {
        zirvel::win32::ElementScanSetup setup;
        setup.windows.foreground = [this] { return window_; };
        setup.windows.taskbar = [] { return HWND{}; };
        setup.createAutomation = [](zirvel::win32::uia::IUIAutomation**) { return REGDB_E_CLASSNOTREG; };
        return zirvel::win32::Win32ElementScanner(std::move(setup)).Scan(mode);
    }

    TestWindows windows_;
    HWND window_ = nullptr;
};

TEST_F(ChildWindowScanTest, ButtonsEditsAndCheckBoxesAreNumberedInOrderAtTheirWindowRectangles) {
    Add(L"BUTTON", WS_TABSTOP | BS_PUSHBUTTON, {10, 10, 110, 40});
    Add(L"EDIT", WS_TABSTOP | WS_BORDER, {10, 50, 210, 74});
    Add(L"BUTTON", WS_TABSTOP | BS_AUTOCHECKBOX, {10, 90, 160, 114});
    Add(L"BUTTON", WS_TABSTOP | BS_PUSHBUTTON | WS_DISABLED, {10, 130, 110, 160});
    Add(L"BUTTON", WS_TABSTOP | BS_PUSHBUTTON, {10, 170, 17, 200});  // 7 x 30
    Add(L"BUTTON", WS_TABSTOP | BS_AUTORADIOBUTTON, {10, 210, 160, 234});
    Add(L"BUTTON", BS_GROUPBOX, {300, 10, 500, 210});
    Add(L"STATIC", 0, {300, 250, 500, 270});
    windows_.Child(window_, L"BUTTON", WS_TABSTOP | BS_PUSHBUTTON, {300, 300, 400, 330});  // not shown
    Add(L"LISTBOX", WS_TABSTOP | WS_BORDER | LBS_NOINTEGRALHEIGHT, {300, 350, 500, 450});
    const zirvel::ElementScanResult result = Scan(ElementScanMode::ForegroundWindow);
    EXPECT_EQ(result.area, (ScreenRect{0, 0, 1280, 1024}));
    EXPECT_EQ(result.elements, (std::vector<ScreenRect>{{60, 70, 160, 100},
                                                        {60, 110, 260, 134},
                                                        {60, 150, 210, 174},
                                                        {60, 270, 210, 294},
                                                        {350, 410, 550, 510}}));
}

TEST_F(ChildWindowScanTest, ControlsInsideAGroupBoxOrADialogAreFoundToo) {
    const HWND inner = windows_.Child(window_, L"ZirvelScanTestWindow", WS_VISIBLE, {100, 100, 400, 300});
    windows_.Child(inner, L"BUTTON", WS_VISIBLE | WS_TABSTOP, {10, 10, 110, 40});
    const zirvel::ElementScanResult result = Scan(ElementScanMode::ForegroundWindow);
    EXPECT_EQ(result.elements, (std::vector<ScreenRect>{{160, 170, 260, 200}}));
}

TEST_F(ChildWindowScanTest, AnEngineWindowInTheForegroundGivesNothing) {
    Add(L"BUTTON", WS_TABSTOP, {10, 10, 110, 40});
    zirvel::win32::ElementScanSetup setup;
    setup.engineWindows = {nullptr, window_, nullptr};
    setup.windows.foreground = [this] { return window_; };
    setup.windows.taskbar = [] { return HWND{}; };
    setup.createAutomation = [](zirvel::win32::uia::IUIAutomation**) { return E_FAIL; };
    EXPECT_TRUE(zirvel::win32::Win32ElementScanner(std::move(setup)).Scan(ElementScanMode::ForegroundWindow).elements.empty());
}

TEST_F(ChildWindowScanTest, PageModeTakesTheContentWindowsChildrenInsideItsArea) {
    Add(L"BUTTON", WS_TABSTOP, {10, 10, 110, 40});  // outside the page
    const HWND content = Add(L"Chrome_RenderWidgetHostHWND", 0, {200, 100, 500, 400});
    windows_.Child(content, L"BUTTON", WS_VISIBLE | WS_TABSTOP, {20, 20, 120, 50});
    const zirvel::ElementScanResult result = Scan(ElementScanMode::BrowserPage);
    EXPECT_EQ(result.area, (ScreenRect{250, 160, 550, 460}));
    EXPECT_EQ(result.elements, (std::vector<ScreenRect>{{270, 180, 370, 210}}));
}

TEST_F(ChildWindowScanTest, PageModeWithoutAContentWindowTakesTheWindow) {
    Add(L"BUTTON", WS_TABSTOP, {10, 10, 110, 40});
    Add(L"Chrome_RenderWidgetHostHWND", 0, {200, 100, 400, 400});  // 200 wide: not the page
    const zirvel::ElementScanResult result = Scan(ElementScanMode::BrowserPage);
    EXPECT_EQ(result.area, (ScreenRect{0, 0, 1280, 1024}));
    EXPECT_EQ(result.elements, (std::vector<ScreenRect>{{60, 70, 160, 100}}));
}

}  // namespace
}  // namespace zirvel_test
