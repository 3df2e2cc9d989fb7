#include "stand_in_automation.h"

#include <algorithm>
#include <memory>

namespace zirvel_test {
namespace {

using namespace zirvel::win32::uia;

// Reference counting shared by every stand-in object.
template <typename Interface>
class Counted : public Interface {
public:
    explicit Counted(AutomationScript& script) : script_(script) { ++script_.liveObjects; }
    virtual ~Counted() { --script_.liveObjects; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** object) override {
        *object = nullptr;
        return E_NOINTERFACE;  // the scan never asks
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }

protected:
    AutomationScript& script_;

private:
    ULONG references_ = 1;
};

class StandInCondition final : public Counted<IUIAutomationCondition> {
public:
    StandInCondition(AutomationScript& script, std::string text) : Counted(script), text_(std::move(text)) {}
    const std::string& Text() const { return text_; }

private:
    std::string text_;
};

std::string ConditionText(IUIAutomationCondition* condition) {
    return condition ? static_cast<StandInCondition*>(condition)->Text() : "none";
}

class StandInCacheRequest final : public Counted<IUIAutomationCacheRequest> {
public:
    using Counted::Counted;
    HRESULT STDMETHODCALLTYPE AddProperty(int propertyId) override {
        properties_.push_back(propertyId);
        return S_OK;
    }
    const std::vector<int>& Properties() const { return properties_; }

private:
    std::vector<int> properties_;
};

class StandInArray;

class StandInAutomationElement final : public Counted<IUIAutomationElement> {
public:
    // A window's or a document's element, whose tree is scripted.
    StandInAutomationElement(AutomationScript& script, std::string kind, HWND window)
        : Counted(script), kind_(std::move(kind)), window_(window) {}
    // A found element, with the properties that were cached.
    StandInAutomationElement(AutomationScript& script, StandInElement data, std::vector<int> cached)
        : Counted(script), kind_("found"), data_(data), cached_(std::move(cached)) {}

    HRESULT STDMETHODCALLTYPE FindFirst(int scope, IUIAutomationCondition* condition,
                                        IUIAutomationElement** found) override {
        script_.documentQueries.push_back(std::to_string(scope) + " " + ConditionText(condition));
        *found = nullptr;
        if (kind_ == "window" && script_.documentTrees.count(window_) != 0) {
            *found = new StandInAutomationElement(script_, "document", window_);
        }
        return S_OK;  // none found is no error
    }
    HRESULT STDMETHODCALLTYPE FindAllBuildCache(int scope, IUIAutomationCondition* condition,
                                                IUIAutomationCacheRequest* cacheRequest,
                                                IUIAutomationElementArray** found) override;
    HRESULT STDMETHODCALLTYPE GetCachedPropertyValue(int propertyId, VARIANT* value) override;

private:
    std::string kind_;
    HWND window_ = nullptr;
    StandInElement data_;
    std::vector<int> cached_;
};

class StandInArray final : public Counted<IUIAutomationElementArray> {
public:
    StandInArray(AutomationScript& script, std::vector<StandInElement> elements, std::vector<int> cached)
        : Counted(script), elements_(std::move(elements)), cached_(std::move(cached)) {}

    HRESULT STDMETHODCALLTYPE get_Length(int* length) override {
        *length = static_cast<int>(elements_.size());
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetElement(int index, IUIAutomationElement** element) override {
        *element = nullptr;
        if (index < 0 || static_cast<std::size_t>(index) >= elements_.size()) return E_INVALIDARG;
        *element = new StandInAutomationElement(script_, elements_[static_cast<std::size_t>(index)], cached_);
        return S_OK;
    }

private:
    std::vector<StandInElement> elements_;
    std::vector<int> cached_;
};

HRESULT StandInAutomationElement::FindAllBuildCache(int scope, IUIAutomationCondition* condition,
                                                    IUIAutomationCacheRequest* cacheRequest,
                                                    IUIAutomationElementArray** found) {
    *found = nullptr;
    std::vector<int> cached;
    if (cacheRequest) cached = static_cast<StandInCacheRequest*>(cacheRequest)->Properties();
    script_.searches.push_back({kind_, window_, ConditionText(condition), cached});
    if (scope != kTreeScopeDescendants || !condition) return E_INVALIDARG;
    const auto& trees = kind_ == "document" ? script_.documentTrees : script_.windowTrees;
    const auto tree = trees.find(window_);
    *found = new StandInArray(script_, tree == trees.end() ? std::vector<StandInElement>{} : tree->second, cached);
    return S_OK;
}

HRESULT StandInAutomationElement::GetCachedPropertyValue(int propertyId, VARIANT* value) {
    VariantInit(value);
    if (std::find(cached_.begin(), cached_.end(), propertyId) == cached_.end()) return E_FAIL;  // not cached
    const auto flag = [value](const std::optional<bool>& data) {
        if (!data) return E_FAIL;
        value->vt = VT_BOOL;
        value->boolVal = *data ? VARIANT_TRUE : VARIANT_FALSE;
        return S_OK;
    };
    switch (propertyId) {
        case kIsEnabledPropertyId: return flag(data_.enabled);
        case kIsOffscreenPropertyId: return flag(data_.offscreen);
        case kIsKeyboardFocusablePropertyId: return flag(data_.focusable);
        case kControlTypePropertyId:
            if (!data_.controlType) return E_FAIL;
            value->vt = VT_I4;
            value->lVal = *data_.controlType;
            return S_OK;
        case kBoundingRectanglePropertyId: {
            if (!data_.rect) return E_FAIL;
            SAFEARRAY* edges = SafeArrayCreateVector(VT_R8, 0, 4);
            const double numbers[4] = {double(data_.rect->left), double(data_.rect->top),
                                       double(data_.rect->Width()), double(data_.rect->Height())};
            for (LONG i = 0; i < 4; ++i) SafeArrayPutElement(edges, &i, const_cast<double*>(&numbers[i]));
            value->vt = VT_ARRAY | VT_R8;
            value->parray = edges;
            return S_OK;
        }
        default: return E_FAIL;
    }
}

class StandInAutomation final : public Counted<IUIAutomation> {
public:
    using Counted::Counted;

    HRESULT STDMETHODCALLTYPE ElementFromHandle(void* window, IUIAutomationElement** element) override {
        *element = nullptr;
        const HWND handle = static_cast<HWND>(window);
        if (script_.windowsWithoutElement.count(handle) != 0) return E_FAIL;
        *element = new StandInAutomationElement(script_, "window", handle);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE get_ControlViewCondition(IUIAutomationCondition** condition) override {
        *condition = new StandInCondition(script_, "control view");
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE CreateCacheRequest(IUIAutomationCacheRequest** request) override {
        *request = new StandInCacheRequest(script_);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE CreatePropertyCondition(int propertyId, VARIANT value,
                                                      IUIAutomationCondition** condition) override {
        std::string text;
        if (propertyId == kControlTypePropertyId && value.vt == VT_I4) {
            text = "ControlType=" + std::to_string(value.lVal);
        } else if (propertyId == kIsKeyboardFocusablePropertyId && value.vt == VT_BOOL) {
            text = std::string("IsKeyboardFocusable=") + (value.boolVal == VARIANT_TRUE ? "true" : "other");
        } else {
            text = "property " + std::to_string(propertyId) + " vt " + std::to_string(value.vt);
        }
        *condition = new StandInCondition(script_, text);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE CreateOrConditionFromNativeArray(IUIAutomationCondition** conditions, int count,
                                                               IUIAutomationCondition** condition) override {
        *condition = nullptr;
        if (script_.orConditionFails) return E_FAIL;
        std::string text = "or(";
        for (int i = 0; i < count; ++i) text += (i ? "," : "") + ConditionText(conditions[i]);
        *condition = new StandInCondition(script_, text + ")");
        return S_OK;
    }
};

}  // namespace

StandInElement Control(zirvel::ScreenRect rect, std::int32_t controlType) {
    return {controlType, true, false, true, rect};
}

IUIAutomation* NewStandInAutomation(AutomationScript& script) { return new StandInAutomation(script); }

}  // namespace zirvel_test
