#pragma once

#include "automation/late_object.h"
#include "platform/win32/com/com_ptr.h"
#include "platform/win32/com/unknown.h"

#include <windows.h>
#include <oleauto.h>

namespace talvix {

/// The way back from our own COM face to the object behind it. `module` tells whose code it is: an
/// object is taken back only within the module that made it.
struct ILateObject : IUnknown {
    virtual const void* STDMETHODCALLTYPE Module() = 0;
    virtual LateObject* STDMETHODCALLTYPE Target() = 0;
};

} // namespace talvix

__CRT_UUID_DECL(talvix::ILateObject, 0x6f0f0d1e, 0x4d54, 0x4c0e, 0x9c, 0x1a, 0x7f, 0x4f, 0x0c, 0x5f,
                0x8a, 0x10)

namespace talvix {

/// Answers IDispatch calls from a late object. Failures become exceptions with a description.
class DispatchAnswers {
public:
    explicit DispatchAnswers(Object target) : target_(std::move(target)) {}

    HRESULT TypeInfo(UINT index, ITypeInfo** info) const;
    HRESULT IdsOfNames(REFIID id, LPOLESTR* names, UINT count, DISPID* ids) const;
    HRESULT Invoke(DISPID member, REFIID id, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                   EXCEPINFO* exception) const;
    const Object& Target() const { return target_; }

private:
    void Call(DISPID member, WORD flags, const DISPPARAMS& parameters, VARIANT* result) const;

    Object target_;
};

/// A late object as a COM object of its own. The memory of one that went waits for the next: hosts
/// that walk over rows make one for each.
class LateDispatch final : public Unknown<IDispatch, ILateObject> {
public:
    explicit LateDispatch(Object target) : answers_(std::move(target)) {}
    static void* operator new(std::size_t bytes);
    static void operator delete(void* memory);

    STDMETHODIMP GetTypeInfoCount(UINT* count) override;
    STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
    STDMETHODIMP GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale,
                               DISPID* ids) override;
    STDMETHODIMP Invoke(DISPID member, REFIID id, LCID locale, WORD flags, DISPPARAMS* parameters,
                        VARIANT* result, EXCEPINFO* exception, UINT* wrongArgument) override;
    const void* STDMETHODCALLTYPE Module() override;
    LateObject* STDMETHODCALLTYPE Target() override { return answers_.Target().get(); }

protected:
    void* Find(REFIID id) override;

private:
    DispatchAnswers answers_;
};

/// The object behind one of this module's own COM faces; null for every other.
Object OwnObject(IUnknown* unknown);
/// A COM object for a late object; null for Nothing.
ComPtr<IUnknown> UnknownOf(const Object& object);
/// Marks this module.
const void* ModuleMark();

} // namespace talvix
