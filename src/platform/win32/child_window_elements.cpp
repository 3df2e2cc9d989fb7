#include "platform/win32/child_window_elements.h"

#include <algorithm>
#include <array>

namespace zirvel::win32 {
namespace {

constexpr int kClassNameUnits = 128;

// Container and text types that UI Automation would give these windows.
constexpr std::int32_t kListControlType = 50008;
constexpr std::int32_t kTreeControlType = 50023;
constexpr std::int32_t kTextControlType = 50020;

struct ClassType {
    std::u16string_view className;
    std::int32_t controlType;
};

// Matched as a prefix, so that every RichEdit version and ComboBoxEx32 count.
constexpr std::array<ClassType, 11> kClassTypes = {{
    {u"edit", control_type::kEdit},
    {u"richedit", control_type::kEdit},
    {u"combobox", control_type::kComboBox},
    {u"syslink", control_type::kHyperlink},
    {u"msctls_trackbar32", control_type::kSlider},
    {u"msctls_updown32", control_type::kSpinner},
    {u"listbox", kListControlType},
    {u"syslistview32", kListControlType},
    {u"systreeview32", kTreeControlType},
    {u"static", kTextControlType},
    {u"#32770", control_type::kPane},  // a dialog inside a window
}};

// Split button styles (commctrl.h declares them only for newer targets).
constexpr DWORD kSplitButtonStyle = 0x0C;
constexpr DWORD kDefaultSplitButtonStyle = 0x0D;

char16_t Lower(char16_t c) { return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c - u'A' + u'a') : c; }

bool StartsWithIgnoringCase(std::u16string_view text, std::u16string_view lowerPrefix) {
    if (text.size() < lowerPrefix.size()) return false;
    return std::equal(lowerPrefix.begin(), lowerPrefix.end(), text.begin(),
                      [](char16_t prefix, char16_t c) { return prefix == Lower(c); });
}

std::int32_t ButtonControlType(DWORD style) {
    switch (style & BS_TYPEMASK) {
        case BS_CHECKBOX:
        case BS_AUTOCHECKBOX:
        case BS_3STATE:
        case BS_AUTO3STATE:
            return control_type::kCheckBox;
        case BS_RADIOBUTTON:
        case BS_AUTORADIOBUTTON:
            return control_type::kRadioButton;
        case BS_GROUPBOX:
            return 0;  // a frame around other controls
        case kSplitButtonStyle:
        case kDefaultSplitButtonStyle:
            return control_type::kSplitButton;
        default:  // push, default push, command link, owner drawn
            return control_type::kButton;
    }
}

BOOL CALLBACK CollectChild(HWND child, LPARAM records) {
    reinterpret_cast<std::vector<ElementRecord>*>(records)->push_back(ChildWindowRecord(child));
    return TRUE;
}

}  // namespace

std::int32_t ChildWindowControlType(std::u16string_view className, DWORD style) {
    if (className.size() == 6 && StartsWithIgnoringCase(className, u"button")) return ButtonControlType(style);
    for (const ClassType& entry : kClassTypes) {
        if (StartsWithIgnoringCase(className, entry.className)) return entry.controlType;
    }
    return 0;
}

ElementRecord ChildWindowRecord(HWND window) {
    wchar_t className[kClassNameUnits] = {};
    const int length = GetClassNameW(window, className, kClassNameUnits);
    const auto style = static_cast<DWORD>(GetWindowLongPtrW(window, GWL_STYLE));
    ElementRecord record;
    record.controlType = ChildWindowControlType(
        std::u16string_view(reinterpret_cast<const char16_t*>(className), static_cast<std::size_t>(std::max(length, 0))),
        style);
    record.enabled = IsWindowEnabled(window) != FALSE;
    record.offscreen = IsWindowVisible(window) == FALSE;
    record.focusable = (style & WS_TABSTOP) != 0;
    record.rect = WindowScreenRect(window);
    return record;
}

std::vector<ElementRecord> ChildWindowRecords(HWND parent) {
    std::vector<ElementRecord> records;
    if (parent) EnumChildWindows(parent, CollectChild, reinterpret_cast<LPARAM>(&records));
    return records;
}

void ScanChildWindows(ElementScanMode mode, HWND foreground, HWND taskbar, const EngineWindows& engineWindows,
                      ElementScanResult& result) {
    const HWND window = ForegroundRoot(foreground, engineWindows);
    std::vector<HWND> roots;
    if (mode == ElementScanMode::ForegroundWindow) {
        if (window) roots.push_back(window);
        if (const HWND bar = VisibleTaskbar(taskbar)) roots.push_back(bar);
    } else {
        const HWND content = FindBrowserContent(foreground);
        if (content) result.area = IntersectRects(result.area, WindowScreenRect(content));
        if (content) {
            roots.push_back(content);
        } else if (window) {
            roots.push_back(window);
        }
    }
    for (const HWND root : roots) {
        if (ElementListFull(result.elements)) break;
        AcceptElements(ChildWindowRecords(root), mode, result.area, result.elements);
    }
}

}  // namespace zirvel::win32
