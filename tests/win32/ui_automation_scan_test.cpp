// The element scan's UI Automation path, against a stand-in automation
// object (Wine cannot run UI Automation) over real windows: the roots of
// each mode, the search condition, the cached properties and the values
// taken when one cannot be read, the browser's content window, and the
// child window fallback when the automation object cannot be made.
#include <gtest/gtest.h>

#include "navigation/element_filter.h"
#include "platform/win32/win32_element_scanner.h"
#include "stand_in_automation.h"
#include "test_windows.h"

namespace zirvel_test {
namespace {

using zirvel::ElementScanMode;
using zirvel::ScreenRect;
using zirvel::win32::uia::IUIAutomation;
namespace control_type = zirvel::control_type;

// Xvfb's one monitor, as the scan's area.
constexpr ScreenRect kMonitor{0, 0, 1280, 1024};

class UiAutomationScanTest : public ::testing::Test {
protected:
    UiAutomationScanTest() {
        foreground_ = windows_.TopLevel({100, 100, 900, 700});
        engine_ = windows_.TopLevel({0, 0, 50, 50});
        taskbar_ = windows_.TopLevel({0, 984, 1280, 1024});
        shownForeground_ = foreground_;
    }
    ~UiAutomationScanTest() override { EXPECT_EQ(script_.liveObjects, 0) << "the scan kept automation objects"; }

    zirvel::ElementScanResult Scan(ElementScanMode mode) {
        zirvel::win32::ElementScanSetup setup;
        setup.engineWindows = {engine_, nullptr, nullptr};
        setup.windows.foreground = [this] { return shownForeground_; };
        setup.windows.taskbar = [this] { return taskbar_; };
        setup.createAutomation = [this](IUIAutomation** automation) {
            *automation = NewStandInAutomation(script_);
            return S_OK;
        };
        return zirvel::win32::Win32ElementScanner(std::move(setup)).Scan(mode);
    }

    std::vector<std::pair<std::string, HWND>> SearchedRoots() const {
        std::vector<std::pair<std::string, HWND>> roots;
        for (const RecordedSearch& search : script_.searches) roots.emplace_back(search.root, search.window);
        return roots;
    }

    TestWindows windows_;
    HWND foreground_ = nullptr;
    HWND engine_ = nullptr;
    HWND taskbar_ = nullptr;
    HWND shownForeground_ = nullptr;
    AutomationScript script_;
};

using Roots = std::vector<std::pair<std::string, HWND>>;

TEST_F(UiAutomationScanTest, WindowModeNumbersTheForegroundWindowThenTheTaskbar) {
    script_.windowTrees[taskbar_] = {Control({10, 990, 60, 1020}, control_type::kButton)};
    script_.windowTrees[foreground_] = {Control({120, 120, 220, 150}, control_type::kButton),
                                        Control({120, 200, 320, 224}, control_type::kEdit)};
    const zirvel::ElementScanResult result = Scan(ElementScanMode::ForegroundWindow);
    EXPECT_EQ(result.area, kMonitor);
    EXPECT_EQ(SearchedRoots(), (Roots{{"window", foreground_}, {"window", taskbar_}}));
    EXPECT_EQ(result.elements,
              (std::vector<ScreenRect>{{120, 120, 220, 150}, {120, 200, 320, 224}, {10, 990, 60, 1020}}));
}

TEST_F(UiAutomationScanTest, AnEngineWindowInTheForegroundLeavesOnlyTheTaskbar) {
    shownForeground_ = engine_;
    script_.windowTrees[engine_] = {Control({5, 5, 45, 45}, control_type::kButton)};
    script_.windowTrees[taskbar_] = {Control({10, 990, 60, 1020}, control_type::kButton)};
    const zirvel::ElementScanResult result = Scan(ElementScanMode::ForegroundWindow);
    EXPECT_EQ(SearchedRoots(), (Roots{{"window", taskbar_}}));
    EXPECT_EQ(result.elements, (std::vector<ScreenRect>{{10, 990, 60, 1020}}));
}

TEST_F(UiAutomationScanTest, HiddenWindowsAreNoRoots) {
    ShowWindow(foreground_, SW_HIDE);
    ShowWindow(taskbar_, SW_HIDE);
    const zirvel::ElementScanResult result = Scan(ElementScanMode::ForegroundWindow);
    EXPECT_TRUE(SearchedRoots().empty());
    EXPECT_TRUE(result.elements.empty());
    EXPECT_EQ(result.area, kMonitor);
}

TEST_F(UiAutomationScanTest, NoForegroundWindowTakesTheEngineWindowsMonitor) {
    shownForeground_ = nullptr;
    const zirvel::ElementScanResult result = Scan(ElementScanMode::ForegroundWindow);
    EXPECT_EQ(result.area, kMonitor);
    EXPECT_EQ(SearchedRoots(), (Roots{{"window", taskbar_}}));
}

TEST_F(UiAutomationScanTest, SearchesForTheThirteenControlTypesOrKeyboardFocusable) {
    Scan(ElementScanMode::ForegroundWindow);
    ASSERT_EQ(script_.searches.size(), 2u);
    EXPECT_EQ(script_.searches[0].condition,
              "or(ControlType=50000,ControlType=50031,ControlType=50002,ControlType=50013,ControlType=50003,"
              "ControlType=50004,ControlType=50005,ControlType=50007,ControlType=50011,ControlType=50019,"
              "ControlType=50024,ControlType=50015,ControlType=50016,IsKeyboardFocusable=true)");
    EXPECT_EQ(script_.searches[1].condition, script_.searches[0].condition);
}

TEST_F(UiAutomationScanTest, TheControlViewIsSearchedWhenTheOrCannotBeMade) {
    script_.orConditionFails = true;
    Scan(ElementScanMode::ForegroundWindow);
    ASSERT_FALSE(script_.searches.empty());
    EXPECT_EQ(script_.searches[0].condition, "control view");
}

TEST_F(UiAutomationScanTest, TheFivePropertiesTheRulesReadComeWithTheElements) {
    Scan(ElementScanMode::ForegroundWindow);
    ASSERT_FALSE(script_.searches.empty());
    EXPECT_EQ(script_.searches[0].cachedProperties, (std::vector<int>{30001, 30003, 30009, 30010, 30022}));
}

TEST_F(UiAutomationScanTest, UnreadablePropertiesTakeTheSafeValues) {
    StandInElement noEnabled = Control({120, 120, 220, 150}, control_type::kButton);
    noEnabled.enabled.reset();  // not enabled: skipped
    StandInElement noOffscreen = Control({120, 160, 220, 190}, control_type::kButton);
    noOffscreen.offscreen.reset();  // offscreen: skipped
    StandInElement noRect = Control({120, 200, 220, 230}, control_type::kButton);
    noRect.rect.reset();  // empty: skipped
    StandInElement noFocusable = Control({120, 240, 220, 270}, control_type::kButton);
    noFocusable.focusable.reset();  // not focusable, but a button: numbered
    StandInElement noType = Control({120, 280, 220, 310}, control_type::kButton);
    noType.controlType.reset();  // of no type, but focusable: numbered
    StandInElement noTypeNotFocusable = noType;
    noTypeNotFocusable.rect = ScreenRect{120, 320, 220, 350};
    noTypeNotFocusable.focusable.reset();  // neither: skipped
    script_.windowTrees[foreground_] = {noEnabled, noOffscreen, noRect, noFocusable, noType, noTypeNotFocusable};
    const zirvel::ElementScanResult result = Scan(ElementScanMode::ForegroundWindow);
    EXPECT_EQ(result.elements, (std::vector<ScreenRect>{{120, 240, 220, 270}, {120, 280, 220, 310}}));
}

TEST_F(UiAutomationScanTest, TheAcceptanceRulesApplyAndNinetyNineAtMost) {
    StandInElement disabled = Control({120, 120, 220, 150}, control_type::kButton);
    disabled.enabled = false;
    std::vector<StandInElement> tree = {disabled, Control({120, 160, 127, 190}, control_type::kButton),
                                        Control({120, 200, 220, 230}, control_type::kPane)};
    for (int i = 0; i < 150; ++i) {
        const int x = 110 + (i % 15) * 50;
        const int y = 240 + (i / 15) * 40;
        tree.push_back(Control({x, y, x + 40, y + 30}, control_type::kListItem));
    }
    script_.windowTrees[foreground_] = tree;
    script_.windowTrees[taskbar_] = {Control({10, 990, 60, 1020}, control_type::kButton)};
    const zirvel::ElementScanResult result = Scan(ElementScanMode::ForegroundWindow);
    ASSERT_EQ(result.elements.size(), 99u);
    EXPECT_EQ(result.elements.front(), (ScreenRect{110, 240, 150, 270}));
    EXPECT_EQ(result.elements.back(), (ScreenRect{110 + 8 * 50, 240 + 6 * 40, 150 + 8 * 50, 270 + 6 * 40}));
    EXPECT_EQ(SearchedRoots(), (Roots{{"window", foreground_}})) << "a full list ends the scan before the taskbar";
}

class PageScanTest : public UiAutomationScanTest {};

TEST_F(PageScanTest, AContentWindowTwoHundredPixelsWideOrLessIsNotThePageTheDocumentIs) {
    windows_.Child(foreground_, L"Chrome_RenderWidgetHostHWND", WS_VISIBLE, {0, 0, 200, 400});
    script_.documentTrees[foreground_] = {Control({300, 300, 400, 330}, control_type::kHyperlink)};
    script_.windowTrees[foreground_] = {Control({120, 120, 220, 150}, control_type::kButton)};
    const zirvel::ElementScanResult result = Scan(ElementScanMode::BrowserPage);
    EXPECT_EQ(result.area, kMonitor);
    EXPECT_EQ(script_.documentQueries, (std::vector<std::string>{"4 ControlType=50030"}));
    EXPECT_EQ(SearchedRoots(), (Roots{{"document", foreground_}}));
    EXPECT_EQ(result.elements, (std::vector<ScreenRect>{{300, 300, 400, 330}}));
}

TEST_F(PageScanTest, AWideContentWindowIsThePageAndBoundsTheArea) {
    const HWND content = windows_.Child(foreground_, L"Chrome_RenderWidgetHostHWND", WS_VISIBLE, {100, 50, 700, 450});
    ASSERT_EQ(ScreenRectOf(content), (ScreenRect{200, 150, 800, 550}));
    script_.windowTrees[content] = {Control({250, 200, 350, 230}, control_type::kHyperlink),
                                    Control({850, 200, 950, 230}, control_type::kHyperlink)};
    script_.documentTrees[foreground_] = {Control({300, 300, 400, 330}, control_type::kHyperlink)};
    const zirvel::ElementScanResult result = Scan(ElementScanMode::BrowserPage);
    EXPECT_EQ(result.area, (ScreenRect{200, 150, 800, 550}));
    EXPECT_EQ(SearchedRoots(), (Roots{{"window", content}})) << "the content window alone, no taskbar";
    EXPECT_EQ(result.elements, (std::vector<ScreenRect>{{250, 200, 350, 230}}));
}

TEST_F(PageScanTest, WithoutAnElementOfTheContentWindowTheAreaStillShrinks) {
    const HWND content = windows_.Child(foreground_, L"Chrome_RenderWidgetHostHWND", WS_VISIBLE, {100, 50, 700, 450});
    script_.windowsWithoutElement.insert(content);
    script_.documentTrees[foreground_] = {Control({250, 200, 350, 230}, control_type::kHyperlink),
                                          Control({850, 200, 950, 230}, control_type::kHyperlink)};
    const zirvel::ElementScanResult result = Scan(ElementScanMode::BrowserPage);
    EXPECT_EQ(result.area, (ScreenRect{200, 150, 800, 550}));
    EXPECT_EQ(SearchedRoots(), (Roots{{"document", foreground_}}));
    EXPECT_EQ(result.elements, (std::vector<ScreenRect>{{250, 200, 350, 230}}));
}

TEST_F(PageScanTest, AHiddenContentWindowIsNotThePageAndWithoutADocumentTheWindowIs) {
    windows_.Child(foreground_, L"Chrome_RenderWidgetHostHWND", 0, {100, 50, 700, 450});
    script_.windowTrees[foreground_] = {Control({120, 120, 220, 150}, control_type::kButton)};
    const zirvel::ElementScanResult result = Scan(ElementScanMode::BrowserPage);
    EXPECT_EQ(result.area, kMonitor);
    EXPECT_EQ(SearchedRoots(), (Roots{{"window", foreground_}}));
    EXPECT_EQ(result.elements, (std::vector<ScreenRect>{{120, 120, 220, 150}}));
}

TEST_F(UiAutomationScanTest, WithoutTheAutomationObjectTheChildWindowsAreScanned) {
    const HWND button = windows_.Child(foreground_, L"BUTTON", WS_VISIBLE | WS_TABSTOP, {20, 20, 120, 50});
    script_.windowTrees[foreground_] = {Control({300, 300, 400, 330}, control_type::kButton)};
    zirvel::win32::ElementScanSetup setup;
    setup.engineWindows = {engine_, nullptr, nullptr};
    setup.windows.foreground = [this] { return foreground_; };
    setup.windows.taskbar = [] { return HWND{}; };
    setup.createAutomation = [](IUIAutomation**) { return REGDB_E_CLASSNOTREG; };
    const zirvel::ElementScanResult result = zirvel::win32::Win32ElementScanner(std::move(setup)).Scan(ElementScanMode::ForegroundWindow);
    EXPECT_EQ(result.elements, (std::vector<ScreenRect>{ScreenRectOf(button)}));
    EXPECT_EQ(ScreenRectOf(button), (ScreenRect{120, 120, 220, 150}));
}

// The declared interfaces put each method the scan calls in its documented
// vtable slot (counting QueryInterface, AddRef and Release as 0 to 2).
TEST_F(UiAutomationScanTest, TheDeclaredMethodsSitInTheirDocumentedSlots) {
    using namespace zirvel::win32::uia;
    IUIAutomation* automation = NewStandInAutomation(script_);
    void** slots = *reinterpret_cast<void***>(automation);
    using CreateCacheRequestFn = HRESULT(STDMETHODCALLTYPE*)(IUIAutomation*, IUIAutomationCacheRequest**);
    IUIAutomationCacheRequest* request = nullptr;
    ASSERT_EQ(reinterpret_cast<CreateCacheRequestFn>(slots[20])(automation, &request), S_OK);
    using AddPropertyFn = HRESULT(STDMETHODCALLTYPE*)(IUIAutomationCacheRequest*, int);
    reinterpret_cast<AddPropertyFn>((*reinterpret_cast<void***>(request))[3])(request, kControlTypePropertyId);

    using ControlViewFn = HRESULT(STDMETHODCALLTYPE*)(IUIAutomation*, IUIAutomationCondition**);
    IUIAutomationCondition* view = nullptr;
    ASSERT_EQ(reinterpret_cast<ControlViewFn>(slots[18])(automation, &view), S_OK);
    using OrFn = HRESULT(STDMETHODCALLTYPE*)(IUIAutomation*, IUIAutomationCondition**, int, IUIAutomationCondition**);
    IUIAutomationCondition* either = nullptr;
    ASSERT_EQ(reinterpret_cast<OrFn>(slots[30])(automation, &view, 1, &either), S_OK);
    using PropertyFn = HRESULT(STDMETHODCALLTYPE*)(IUIAutomation*, int, VARIANT, IUIAutomationCondition**);
    VARIANT five;
    VariantInit(&five);
    five.vt = VT_I4;
    five.lVal = 5;
    IUIAutomationCondition* property = nullptr;
    ASSERT_EQ(reinterpret_cast<PropertyFn>(slots[23])(automation, kControlTypePropertyId, five, &property), S_OK);

    script_.windowTrees[foreground_] = {Control({1, 2, 30, 40}, control_type::kButton)};
    using FromHandleFn = HRESULT(STDMETHODCALLTYPE*)(IUIAutomation*, void*, IUIAutomationElement**);
    IUIAutomationElement* window = nullptr;
    ASSERT_EQ(reinterpret_cast<FromHandleFn>(slots[6])(automation, foreground_, &window), S_OK);
    void** elementSlots = *reinterpret_cast<void***>(window);
    using FindAllFn = HRESULT(STDMETHODCALLTYPE*)(IUIAutomationElement*, int, IUIAutomationCondition*,
                                                  IUIAutomationCacheRequest*, IUIAutomationElementArray**);
    IUIAutomationElementArray* found = nullptr;
    ASSERT_EQ(reinterpret_cast<FindAllFn>(elementSlots[8])(window, kTreeScopeDescendants, either, request, &found),
              S_OK);
    using FindFirstFn = HRESULT(STDMETHODCALLTYPE*)(IUIAutomationElement*, int, IUIAutomationCondition*,
                                                    IUIAutomationElement**);
    IUIAutomationElement* document = nullptr;
    ASSERT_EQ(reinterpret_cast<FindFirstFn>(elementSlots[5])(window, kTreeScopeDescendants, property, &document), S_OK);
    void** arraySlots = *reinterpret_cast<void***>(found);
    int length = 0;
    using LengthFn = HRESULT(STDMETHODCALLTYPE*)(IUIAutomationElementArray*, int*);
    ASSERT_EQ(reinterpret_cast<LengthFn>(arraySlots[3])(found, &length), S_OK);
    EXPECT_EQ(length, 1);
    using GetElementFn = HRESULT(STDMETHODCALLTYPE*)(IUIAutomationElementArray*, int, IUIAutomationElement**);
    IUIAutomationElement* first = nullptr;
    ASSERT_EQ(reinterpret_cast<GetElementFn>(arraySlots[4])(found, 0, &first), S_OK);
    using CachedFn = HRESULT(STDMETHODCALLTYPE*)(IUIAutomationElement*, int, VARIANT*);
    VARIANT type;
    ASSERT_EQ(reinterpret_cast<CachedFn>((*reinterpret_cast<void***>(first))[12])(first, kControlTypePropertyId, &type),
              S_OK);
    EXPECT_EQ(type.vt, VT_I4);
    EXPECT_EQ(type.lVal, control_type::kButton);

    ASSERT_EQ(script_.searches.size(), 1u);
    EXPECT_EQ(script_.searches[0].condition, "or(control view)");
    EXPECT_EQ(script_.searches[0].cachedProperties, (std::vector<int>{kControlTypePropertyId}));
    EXPECT_EQ(script_.documentQueries, (std::vector<std::string>{"4 ControlType=5"}));
    for (IUnknown* object : std::initializer_list<IUnknown*>{first, found, window, property, either, view, request,
                                                             automation}) {
        object->Release();
    }
}

}  // namespace
}  // namespace zirvel_test
