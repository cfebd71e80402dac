#pragma once

#include "automation/late_object.h"
#include "platform/win32/com/com_ptr.h"

#include <windows.h>
#include <oleauto.h>

#include <array>
#include <dispex.h>
#include <string>

namespace talvix {

/// An automation object from outside. A name is looked up once; objects that answer only through
/// IDispatchEx, as script classes may, are reached through it.
class DispatchObject : public LateObject {
public:
    explicit DispatchObject(IDispatch* dispatch) : dispatch_(dispatch) {}

    std::optional<MemberId> FindMember(std::u16string_view name) override;
    std::optional<std::size_t> FindParameter(MemberId member, std::u16string_view name) override;
    Value Invoke(MemberId member, unsigned access, const Arguments& arguments) override;
    std::u16string TypeName() const override;
    Subscription Subscribe(std::shared_ptr<EventSink> sink,
                           std::span<const std::u16string_view> order) override;
    std::shared_ptr<Sequence> Enumerate() override;

    void* Face() const override { return static_cast<IUnknown*>(dispatch_.Get()); }
    IDispatch* Dispatch() const { return dispatch_.Get(); }

private:
    struct Name {
        std::u16string text;
        MemberId id = 0;
    };
    static constexpr std::size_t kFew = 2; ///< most objects are asked for no more
    template <typename Test>
    const Name* FindName(const Test& test) const;
    void Note(std::u16string_view name, MemberId id);
    HRESULT LookUp(std::u16string_view name, DISPID& id);
    HRESULT CallOnce(MemberId member, unsigned access, DISPPARAMS& parameters, VARIANT* result,
                     EXCEPINFO& exception);
    std::vector<DISPID> NamedIds(MemberId member, const Arguments& arguments, bool isPut);
    HRESULT CallDefaultOfYielded(MemberId member, unsigned access, DISPPARAMS& parameters,
                                 VARIANT* result, EXCEPINFO& exception);

    ComPtr<IDispatch> dispatch_;
    ComPtr<IDispatchEx> extended_; ///< set once the plain interface has answered "not implemented"
    std::array<Name, kFew> firstNames_; ///< of those looked up
    std::size_t firstCount_ = 0;
    std::vector<Name> moreNames_;
};

/// An object that has no members to call, such as a picture of a foreign kind.
class OpaqueObject : public LateObject {
public:
    explicit OpaqueObject(IUnknown* unknown) : unknown_(unknown) {}
    std::optional<MemberId> FindMember(std::u16string_view) override { return std::nullopt; }
    Value Invoke(MemberId member, unsigned access, const Arguments& arguments) override;
    std::u16string TypeName() const override { return u"Unknown"; }
    void* Face() const override { return unknown_.Get(); }

private:
    ComPtr<IUnknown> unknown_;
};

/// The late object for a COM object; an object of this module's own comes back as itself, null as
/// Nothing.
Value WrapDispatch(IDispatch* dispatch);
Value WrapUnknown(IUnknown* unknown);

} // namespace talvix
