// The few UI Automation client interfaces the element scan uses, declared
// here because MinGW-w64's headers hold only the property and control type
// ids (and <uiautomation.h> does not compile as C++). Each interface lists
// its methods in the documented order up to the last one the scan calls;
// the methods it never calls are slot placeholders that keep the vtable
// layout right and answer E_NOTIMPL if a stand-in is ever asked.
#pragma once

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#include <oaidl.h>
#include <unknwn.h>

namespace zirvel::win32::uia {

inline constexpr CLSID kClsidCUIAutomation = {
    0xff48dba4, 0x60ef, 0x4201, {0xaa, 0x87, 0x54, 0x10, 0x3e, 0xef, 0x59, 0x4e}};
inline constexpr IID kIidIUIAutomation = {
    0x30cbe57d, 0xd9d0, 0x452a, {0xab, 0x13, 0x7a, 0xc5, 0xac, 0x48, 0x25, 0xee}};
inline constexpr IID kIidIUIAutomationElement = {
    0xd22108aa, 0x8ac5, 0x49a5, {0x83, 0x7b, 0x37, 0xbb, 0xb3, 0xd7, 0x59, 0x1e}};
inline constexpr IID kIidIUIAutomationElementArray = {
    0x14314595, 0xb4bc, 0x4055, {0x95, 0xf2, 0x58, 0xf2, 0xe4, 0x2c, 0x98, 0x55}};
inline constexpr IID kIidIUIAutomationCacheRequest = {
    0xb32a92b5, 0xbc25, 0x4078, {0x9c, 0x08, 0xd7, 0xee, 0x95, 0xc4, 0x8e, 0x03}};
inline constexpr IID kIidIUIAutomationCondition = {
    0x352ffba8, 0x0973, 0x437c, {0xa6, 0x1f, 0xf6, 0x4c, 0xaf, 0xd8, 0x1d, 0xf9}};

// TreeScope values.
inline constexpr int kTreeScopeDescendants = 4;

// Property ids.
inline constexpr int kBoundingRectanglePropertyId = 30001;
inline constexpr int kControlTypePropertyId = 30003;
inline constexpr int kIsKeyboardFocusablePropertyId = 30009;
inline constexpr int kIsEnabledPropertyId = 30010;
inline constexpr int kIsOffscreenPropertyId = 30022;

#define ZIRVEL_UIA_UNUSED_SLOT(name) \
    virtual HRESULT STDMETHODCALLTYPE name() { return E_NOTIMPL; }

class IUIAutomationCondition : public IUnknown {};

class IUIAutomationCacheRequest : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE AddProperty(int propertyId) = 0;
};

class IUIAutomationElementArray;

class IUIAutomationElement : public IUnknown {
public:
    ZIRVEL_UIA_UNUSED_SLOT(SetFocus)
    ZIRVEL_UIA_UNUSED_SLOT(GetRuntimeId)
    virtual HRESULT STDMETHODCALLTYPE FindFirst(int scope, IUIAutomationCondition* condition,
                                                IUIAutomationElement** found) = 0;
    ZIRVEL_UIA_UNUSED_SLOT(FindAll)
    ZIRVEL_UIA_UNUSED_SLOT(FindFirstBuildCache)
    virtual HRESULT STDMETHODCALLTYPE FindAllBuildCache(int scope, IUIAutomationCondition* condition,
                                                        IUIAutomationCacheRequest* cacheRequest,
                                                        IUIAutomationElementArray** found) = 0;
    ZIRVEL_UIA_UNUSED_SLOT(BuildUpdatedCache)
    ZIRVEL_UIA_UNUSED_SLOT(GetCurrentPropertyValue)
    ZIRVEL_UIA_UNUSED_SLOT(GetCurrentPropertyValueEx)
    virtual HRESULT STDMETHODCALLTYPE GetCachedPropertyValue(int propertyId, VARIANT* value) = 0;
};

class IUIAutomationElementArray : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE get_Length(int* length) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetElement(int index, IUIAutomationElement** element) = 0;
};

class IUIAutomation : public IUnknown {
public:
    ZIRVEL_UIA_UNUSED_SLOT(CompareElements)
    ZIRVEL_UIA_UNUSED_SLOT(CompareRuntimeIds)
    ZIRVEL_UIA_UNUSED_SLOT(GetRootElement)
    virtual HRESULT STDMETHODCALLTYPE ElementFromHandle(void* window, IUIAutomationElement** element) = 0;
    ZIRVEL_UIA_UNUSED_SLOT(ElementFromPoint)
    ZIRVEL_UIA_UNUSED_SLOT(GetFocusedElement)
    ZIRVEL_UIA_UNUSED_SLOT(GetRootElementBuildCache)
    ZIRVEL_UIA_UNUSED_SLOT(ElementFromHandleBuildCache)
    ZIRVEL_UIA_UNUSED_SLOT(ElementFromPointBuildCache)
    ZIRVEL_UIA_UNUSED_SLOT(GetFocusedElementBuildCache)
    ZIRVEL_UIA_UNUSED_SLOT(CreateTreeWalker)
    ZIRVEL_UIA_UNUSED_SLOT(get_ControlViewWalker)
    ZIRVEL_UIA_UNUSED_SLOT(get_ContentViewWalker)
    ZIRVEL_UIA_UNUSED_SLOT(get_RawViewWalker)
    ZIRVEL_UIA_UNUSED_SLOT(get_RawViewCondition)
    virtual HRESULT STDMETHODCALLTYPE get_ControlViewCondition(IUIAutomationCondition** condition) = 0;
    ZIRVEL_UIA_UNUSED_SLOT(get_ContentViewCondition)
    virtual HRESULT STDMETHODCALLTYPE CreateCacheRequest(IUIAutomationCacheRequest** cacheRequest) = 0;
    ZIRVEL_UIA_UNUSED_SLOT(CreateTrueCondition)
    ZIRVEL_UIA_UNUSED_SLOT(CreateFalseCondition)
    virtual HRESULT STDMETHODCALLTYPE CreatePropertyCondition(int propertyId, VARIANT value,
                                                              IUIAutomationCondition** condition) = 0;
    ZIRVEL_UIA_UNUSED_SLOT(CreatePropertyConditionEx)
    ZIRVEL_UIA_UNUSED_SLOT(CreateAndCondition)
    ZIRVEL_UIA_UNUSED_SLOT(CreateAndConditionFromArray)
    ZIRVEL_UIA_UNUSED_SLOT(CreateAndConditionFromNativeArray)
    ZIRVEL_UIA_UNUSED_SLOT(CreateOrCondition)
    ZIRVEL_UIA_UNUSED_SLOT(CreateOrConditionFromArray)
    virtual HRESULT STDMETHODCALLTYPE CreateOrConditionFromNativeArray(IUIAutomationCondition** conditions,
                                                                       int conditionCount,
                                                                       IUIAutomationCondition** condition) = 0;
};

#undef ZIRVEL_UIA_UNUSED_SLOT

}  // namespace zirvel::win32::uia
