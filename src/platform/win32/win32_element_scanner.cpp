#include "platform/win32/win32_element_scanner.h"

#include <array>
#include <cmath>
#include <vector>

#include "navigation/element_filter.h"
#include "platform/win32/child_window_elements.h"
#include "platform/win32/com_ref.h"

namespace zirvel::win32 {
namespace {

using uia::IUIAutomation;
using uia::IUIAutomationCacheRequest;
using uia::IUIAutomationCondition;
using uia::IUIAutomationElement;
using uia::IUIAutomationElementArray;

// All that the acceptance rules read, fetched with the elements in one
// cross-process call per root.
constexpr std::array<int, 5> kCachedProperties = {
    uia::kBoundingRectanglePropertyId, uia::kControlTypePropertyId, uia::kIsKeyboardFocusablePropertyId,
    uia::kIsEnabledPropertyId, uia::kIsOffscreenPropertyId};

// The scan thread's COM apartment for the length of one scan.
class MultithreadedApartment {
public:
    MultithreadedApartment() : joined_(SUCCEEDED(CoInitializeEx(nullptr, COINIT_MULTITHREADED))) {}
    ~MultithreadedApartment() {
        if (joined_) CoUninitialize();
    }
    MultithreadedApartment(const MultithreadedApartment&) = delete;
    MultithreadedApartment& operator=(const MultithreadedApartment&) = delete;

private:
    bool joined_;
};

ComRef<IUIAutomationCondition> PropertyCondition(IUIAutomation& automation, int propertyId, VARIANT value) {
    ComRef<IUIAutomationCondition> condition;
    if (FAILED(automation.CreatePropertyCondition(propertyId, value, condition.Put()))) condition.Reset();
    return condition;
}

ComRef<IUIAutomationCondition> ControlTypeCondition(IUIAutomation& automation, std::int32_t controlType) {
    VARIANT value;
    VariantInit(&value);
    value.vt = VT_I4;
    value.lVal = controlType;
    return PropertyCondition(automation, uia::kControlTypePropertyId, value);
}

// One of the clickable control types, or keyboard focusable; the control
// view when the OR cannot be made (a partial OR would silently miss kinds
// of controls).
ComRef<IUIAutomationCondition> ClickableCondition(IUIAutomation& automation) {
    std::vector<ComRef<IUIAutomationCondition>> parts;
    for (const std::int32_t controlType : kClickableControlTypes) {
        parts.push_back(ControlTypeCondition(automation, controlType));
    }
    VARIANT focusable;
    VariantInit(&focusable);
    focusable.vt = VT_BOOL;
    focusable.boolVal = VARIANT_TRUE;
    parts.push_back(PropertyCondition(automation, uia::kIsKeyboardFocusablePropertyId, focusable));

    std::vector<IUIAutomationCondition*> conditions;
    for (const ComRef<IUIAutomationCondition>& part : parts) {
        if (part) conditions.push_back(part.Get());
    }
    ComRef<IUIAutomationCondition> combined;
    if (conditions.size() == parts.size() &&
        FAILED(automation.CreateOrConditionFromNativeArray(conditions.data(), static_cast<int>(conditions.size()),
                                                           combined.Put()))) {
        combined.Reset();
    }
    if (!combined && FAILED(automation.get_ControlViewCondition(combined.Put()))) combined.Reset();
    return combined;
}

ComRef<IUIAutomationCacheRequest> ScanCacheRequest(IUIAutomation& automation) {
    ComRef<IUIAutomationCacheRequest> request;
    if (FAILED(automation.CreateCacheRequest(request.Put())) || !request) return {};
    for (const int propertyId : kCachedProperties) request->AddProperty(propertyId);
    return request;
}

ComRef<IUIAutomationElement> ElementOfWindow(IUIAutomation& automation, HWND window) {
    ComRef<IUIAutomationElement> element;
    if (!window || FAILED(automation.ElementFromHandle(window, element.Put()))) element.Reset();
    return element;
}

// A cached property; the value stays as it was when unreadable.
class CachedValue {
public:
    CachedValue(IUIAutomationElement& element, int propertyId) {
        VariantInit(&value_);
        if (FAILED(element.GetCachedPropertyValue(propertyId, &value_))) value_.vt = VT_EMPTY;
    }
    ~CachedValue() { VariantClear(&value_); }
    CachedValue(const CachedValue&) = delete;
    CachedValue& operator=(const CachedValue&) = delete;

    void Read(bool& flag) const {
        if (value_.vt == VT_BOOL) flag = value_.boolVal != VARIANT_FALSE;
    }
    void Read(std::int32_t& number) const {
        if (value_.vt == VT_I4) number = value_.lVal;
    }
    // A rectangle comes as left, top, width and height in doubles.
    void Read(ScreenRect& rect) const {
        if (value_.vt != (VT_ARRAY | VT_R8) || !value_.parray || SafeArrayGetDim(value_.parray) != 1) return;
        LONG lower = 0;
        LONG upper = -1;
        SafeArrayGetLBound(value_.parray, 1, &lower);
        SafeArrayGetUBound(value_.parray, 1, &upper);
        void* data = nullptr;
        if (upper - lower + 1 < 4 || FAILED(SafeArrayAccessData(value_.parray, &data))) return;
        const double* edges = static_cast<const double*>(data);
        const auto whole = [](double pixels) { return static_cast<std::int32_t>(std::lround(pixels)); };
        rect = {whole(edges[0]), whole(edges[1]), whole(edges[0] + edges[2]), whole(edges[1] + edges[3])};
        SafeArrayUnaccessData(value_.parray);
    }

private:
    VARIANT value_;
};

ElementRecord ReadRecord(IUIAutomationElement& element) {
    ElementRecord record;  // its defaults are the values of unreadable properties
    CachedValue(element, uia::kIsEnabledPropertyId).Read(record.enabled);
    CachedValue(element, uia::kIsOffscreenPropertyId).Read(record.offscreen);
    CachedValue(element, uia::kIsKeyboardFocusablePropertyId).Read(record.focusable);
    CachedValue(element, uia::kControlTypePropertyId).Read(record.controlType);
    CachedValue(element, uia::kBoundingRectanglePropertyId).Read(record.rect);
    return record;
}

// One FindAll with the cache; the elements are read in batches no larger
// than the room left in the list, so a full list ends the walk.
void ScanRoot(IUIAutomationElement& root, IUIAutomationCondition* condition, IUIAutomationCacheRequest* cacheRequest,
              ElementScanMode mode, ElementScanResult& result) {
    ComRef<IUIAutomationElementArray> found;
    if (FAILED(root.FindAllBuildCache(uia::kTreeScopeDescendants, condition, cacheRequest, found.Put())) || !found) {
        return;
    }
    int length = 0;
    if (FAILED(found->get_Length(&length))) return;
    std::vector<ElementRecord> batch;
    int next = 0;
    while (next < length && !ElementListFull(result.elements)) {
        batch.clear();
        const std::size_t room = kMaxElementHints - result.elements.size();
        for (; next < length && batch.size() < room; ++next) {
            ComRef<IUIAutomationElement> element;
            if (SUCCEEDED(found->GetElement(next, element.Put())) && element) {
                batch.push_back(ReadRecord(*element));
            } else {
                batch.push_back(ElementRecord{});
            }
        }
        AcceptElements(batch, mode, result.area, result.elements);
    }
}

// The window mode's roots: the foreground window, then the taskbar.
std::vector<ComRef<IUIAutomationElement>> WindowRoots(IUIAutomation& automation, HWND window, HWND taskbar) {
    std::vector<ComRef<IUIAutomationElement>> roots;
    if (ComRef<IUIAutomationElement> element = ElementOfWindow(automation, window)) roots.push_back(std::move(element));
    if (ComRef<IUIAutomationElement> element = ElementOfWindow(automation, VisibleTaskbar(taskbar))) {
        roots.push_back(std::move(element));
    }
    return roots;
}

// The page mode's one root: the browser's content window, else the window's
// first Document, else the window. The area shrinks to the content window
// even when no element could be made of it.
ComRef<IUIAutomationElement> PageRoot(IUIAutomation& automation, HWND foreground, HWND window, ScreenRect& area) {
    const HWND content = FindBrowserContent(foreground);
    if (content) {
        area = IntersectRects(area, WindowScreenRect(content));
        if (ComRef<IUIAutomationElement> element = ElementOfWindow(automation, content)) return element;
    }
    ComRef<IUIAutomationElement> windowElement = ElementOfWindow(automation, window);
    if (!windowElement) return {};
    ComRef<IUIAutomationElement> document;
    ComRef<IUIAutomationCondition> isDocument = ControlTypeCondition(automation, control_type::kDocument);
    if (isDocument &&
        SUCCEEDED(windowElement->FindFirst(uia::kTreeScopeDescendants, isDocument.Get(), document.Put())) && document) {
        return document;
    }
    return windowElement;
}

}  // namespace

HRESULT CreateSystemAutomation(uia::IUIAutomation** automation) {
    return CoCreateInstance(uia::kClsidCUIAutomation, nullptr, CLSCTX_INPROC_SERVER, uia::kIidIUIAutomation,
                            reinterpret_cast<void**>(automation));
}

ElementScanResult Win32ElementScanner::Scan(ElementScanMode mode) {
    MultithreadedApartment apartment;  // outlives every interface below
    ElementScanResult result;
    const HWND foreground = setup_.windows.foreground();
    result.area = ScanArea(foreground, setup_.engineWindows.main);
    const HWND window = ForegroundRoot(foreground, setup_.engineWindows);
    const HWND taskbar = mode == ElementScanMode::ForegroundWindow ? setup_.windows.taskbar() : nullptr;

    IUIAutomation* made = nullptr;
    if (FAILED(setup_.createAutomation(&made))) made = nullptr;  // a failed call hands over nothing
    const ComRef<IUIAutomation> automation(made);
    if (!automation) {
        ScanChildWindows(mode, foreground, taskbar, setup_.engineWindows, result);
        return result;
    }
    const ComRef<IUIAutomationCacheRequest> cacheRequest = ScanCacheRequest(*automation);
    const ComRef<IUIAutomationCondition> condition = ClickableCondition(*automation);
    std::vector<ComRef<IUIAutomationElement>> roots;
    if (mode == ElementScanMode::ForegroundWindow) {
        roots = WindowRoots(*automation, window, taskbar);
    } else if (ComRef<IUIAutomationElement> root = PageRoot(*automation, foreground, window, result.area)) {
        roots.push_back(std::move(root));
    }
    for (const ComRef<IUIAutomationElement>& root : roots) {
        if (ElementListFull(result.elements)) break;
        ScanRoot(*root, condition.Get(), cacheRequest.Get(), mode, result);
    }
    return result;
}

}  // namespace zirvel::win32
