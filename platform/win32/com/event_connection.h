#pragma once

#include "automation/late_object.h"
#include "platform/win32/com/unknown.h"

#include <windows.h>
#include <oaidl.h>

#include <map>
#include <memory>
#include <span>
#include <string>

namespace talvix {

/// Hears a COM object's events and hands them on by name.
class EventListener : public Unknown<IDispatch> {
public:
    EventListener(REFIID source, std::map<DISPID, std::u16string> names,
                  std::shared_ptr<EventSink> sink)
        : source_(source), names_(std::move(names)), sink_(std::move(sink)) {}

    STDMETHODIMP GetTypeInfoCount(UINT* count) override;
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return E_NOTIMPL;
    }
    STDMETHODIMP Invoke(DISPID member, REFIID id, LCID locale, WORD flags, DISPPARAMS* parameters,
                        VARIANT* result, EXCEPINFO* exception, UINT* wrongArgument) override;

protected:
    void* Find(REFIID id) override;

private:
    IID source_;
    std::map<DISPID, std::u16string> names_;
    std::shared_ptr<EventSink> sink_;
};

/// Connects to the default events of a COM object. Their names come from the object's type
/// information; without it `order` names them by their numbers from 1. Failure when the object has
/// no events.
Subscription ConnectToEvents(IUnknown* object, std::shared_ptr<EventSink> sink,
                             std::span<const std::u16string_view> order);

} // namespace talvix
