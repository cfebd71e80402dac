#include "platform/win32/com/dispatch_object.h"

#include "automation/failure.h"
#include "automation/text.h"
#include "platform/win32/com/bstr.h"
#include "platform/win32/com/enum_variant.h"
#include "platform/win32/com/event_connection.h"
#include "platform/win32/com/late_dispatch.h"
#include "platform/win32/com/variant.h"
#include "platform/win32/system_text.h"

#include <algorithm>
#include <array>
#include <memory>

namespace talvix {

namespace {

/// What script engines answer for a member that is a plain field when it is called as a method.
constexpr HRESULT kNotAFunction = static_cast<HRESULT>(0x800A138A);

class Exception {
public:
    Exception() = default;
    Exception(const Exception&) = delete;
    Exception& operator=(const Exception&) = delete;
    ~Exception() { Clear(); }
    EXCEPINFO info{};

    void Clear() {
        SysFreeString(info.bstrSource);
        SysFreeString(info.bstrDescription);
        SysFreeString(info.bstrHelpFile);
        info = EXCEPINFO{};
    }
    [[noreturn]] void Raise(HRESULT result) {
        if (result != DISP_E_EXCEPTION) {
            throw Failure(result, SystemText(static_cast<DWORD>(result)));
        }
        if (info.pfnDeferredFillIn != nullptr) {
            info.pfnDeferredFillIn(&info);
        }
        const std::int32_t number =
            info.scode != 0 ? info.scode : static_cast<std::int32_t>(0x800A0000 + info.wCode);
        const std::u16string text(Bstr::View(info.bstrDescription));
        throw Failure(number, text.empty() ? SystemText(static_cast<DWORD>(number)) : text);
    }
};

/// Arguments in the order that automation wants: last one first.
class Parameters {
public:
    /// `named` may be empty for a put, which names its new value only.
    Parameters(std::span<const Value> values, std::vector<DISPID> named, bool isPut)
        : count_(values.size()), named_(std::move(named)), isPut_(isPut) {
        if (count_ > inline_.size()) {
            heap_ = std::make_unique<VARIANT[]>(count_);
        }
        for (std::size_t at = 0; at < count_; ++at) {
            VariantInit(&First()[at]);
        }
        for (std::size_t at = 0; at < count_; ++at) {
            ToVariant(values[at], First()[count_ - 1 - at]);
        }
    }
    Parameters(const Parameters&) = delete;
    Parameters& operator=(const Parameters&) = delete;
    ~Parameters() {
        for (std::size_t at = 0; at < count_; ++at) {
            VariantClear(&First()[at]);
        }
    }
    DISPPARAMS Get() {
        if (named_.empty() && isPut_) {
            return {First(), &put_, static_cast<UINT>(count_), 1};
        }
        return {First(), named_.empty() ? nullptr : named_.data(), static_cast<UINT>(count_),
                static_cast<UINT>(named_.size())};
    }

private:
    VARIANT* First() { return heap_ ? heap_.get() : inline_.data(); }

    std::size_t count_;
    std::array<VARIANT, 4> inline_;
    std::unique_ptr<VARIANT[]> heap_;
    std::vector<DISPID> named_;
    bool isPut_;
    DISPID put_ = DISPID_PROPERTYPUT;
};

} // namespace

HRESULT DispatchObject::LookUp(std::u16string_view name, DISPID& id) {
    EndedName ended(name);
    wchar_t* wide = ended.Get();
    HRESULT result = E_NOTIMPL;
    if (!extended_) {
        result = dispatch_->GetIDsOfNames(IID_NULL, &wide, 1, LOCALE_USER_DEFAULT, &id);
        if (result == E_NOTIMPL) {
            extended_ = ComPtr<IDispatchEx>::From(dispatch_.Get());
        }
    }
    if (extended_) {
        const Bstr key(name);
        result = extended_->GetDispID(key.Get(), fdexNameCaseInsensitive, &id);
        if (FAILED(result)) { // engines that know no other case than their own
            result = extended_->GetDispID(key.Get(), fdexNameCaseSensitive, &id);
        }
    }
    return result;
}

/// The first name that passes the test, null for none.
template <typename Test>
const DispatchObject::Name* DispatchObject::FindName(const Test& test) const {
    const auto end = firstNames_.begin() + static_cast<std::ptrdiff_t>(firstCount_);
    const auto first = std::find_if(firstNames_.begin(), end, test);
    if (first != end) {
        return &*first;
    }
    const auto later = std::find_if(moreNames_.begin(), moreNames_.end(), test);
    return later != moreNames_.end() ? &*later : nullptr;
}

void DispatchObject::Note(std::u16string_view name, MemberId id) {
    if (firstCount_ == kFew) {
        moreNames_.push_back({std::u16string(name), id});
        return;
    }
    firstNames_[firstCount_].text = name;
    firstNames_[firstCount_].id = id;
    ++firstCount_;
}

std::optional<MemberId> DispatchObject::FindMember(std::u16string_view name) {
    if (const Name* known = FindName([&](const Name& each) { return each.text == name; })) {
        return known->id;
    }
    DISPID id = DISPID_UNKNOWN;
    const HRESULT result = LookUp(name, id);
    if (result == DISP_E_UNKNOWNNAME || result == DISP_E_MEMBERNOTFOUND) {
        return std::nullopt;
    }
    if (FAILED(result)) {
        throw Failure(result, u"\"" + std::u16string(name) + u"\": " +
                                  SystemText(static_cast<DWORD>(result)));
    }
    Note(name, id);
    return id;
}

std::optional<std::size_t> DispatchObject::FindParameter(MemberId member,
                                                         std::u16string_view name) {
    const Name* known = FindName([&](const Name& each) { return each.id == member; });
    if (known == nullptr) {
        return std::nullopt;
    }
    const std::u16string parameter(name);
    std::array<wchar_t*, 2> texts{const_cast<wchar_t*>(Wide(known->text)),
                                  const_cast<wchar_t*>(Wide(parameter))};
    std::array<DISPID, 2> ids{};
    const HRESULT result =
        dispatch_->GetIDsOfNames(IID_NULL, texts.data(), 2, LOCALE_USER_DEFAULT, ids.data());
    return SUCCEEDED(result) && ids[1] >= 0 ? std::optional(static_cast<std::size_t>(ids[1]))
                                            : std::nullopt;
}

std::vector<DISPID> DispatchObject::NamedIds(MemberId member, const Arguments& arguments,
                                             bool isPut) {
    std::vector<DISPID> ids;
    if (isPut && !arguments.names.empty()) {
        ids.push_back(DISPID_PROPERTYPUT);
    }
    for (std::size_t at = arguments.names.size(); at-- > 0;) {
        const auto place = FindParameter(member, arguments.names[at]);
        if (!place) {
            throw Failure(failure_number::kUnknownName, u"No parameter is called \"" +
                                                            std::u16string(arguments.names[at]) +
                                                            u"\"");
        }
        ids.push_back(static_cast<DISPID>(*place));
    }
    return ids;
}

HRESULT DispatchObject::CallOnce(MemberId member, unsigned access, DISPPARAMS& parameters,
                                 VARIANT* result, EXCEPINFO& exception) {
    const auto flags = static_cast<WORD>(access);
    if (extended_) {
        return extended_->InvokeEx(member, LOCALE_USER_DEFAULT, flags, &parameters, result,
                                   &exception, nullptr);
    }
    UINT wrong = 0;
    const HRESULT answer = dispatch_->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, flags,
                                             &parameters, result, &exception, &wrong);
    if (answer == E_NOTIMPL && member == DISPID_VALUE) {
        extended_ = ComPtr<IDispatchEx>::From(dispatch_.Get());
        return extended_ ? CallOnce(member, access, parameters, result, exception) : answer;
    }
    return answer;
}

/// A property that takes no arguments may yield a collection that does.
HRESULT DispatchObject::CallDefaultOfYielded(MemberId member, unsigned access,
                                             DISPPARAMS& parameters, VARIANT* result,
                                             EXCEPINFO& exception) {
    DISPPARAMS none{};
    Variant yielded;
    HRESULT answer = CallOnce(member, access::kGet, none, yielded.Get(), exception);
    if (FAILED(answer) || yielded.Get()->vt != VT_DISPATCH || yielded.Get()->pdispVal == nullptr) {
        return FAILED(answer) ? answer : DISP_E_BADPARAMCOUNT;
    }
    DispatchObject collection(yielded.Get()->pdispVal);
    return collection.CallOnce(DISPID_VALUE, access, parameters, result, exception);
}

Value DispatchObject::Invoke(MemberId member, unsigned access, const Arguments& arguments) {
    const ComPtr<IDispatch> alive = dispatch_;
    const bool isPut = (access & access::kAnyPut) != 0;
    Parameters packed(arguments.values, NamedIds(member, arguments, isPut), isPut);
    DISPPARAMS parameters = packed.Get();
    Variant result;
    Exception exception;
    VARIANT* out = isPut ? nullptr : result.Get();
    HRESULT answer = CallOnce(member, access, parameters, out, exception.info);
    const bool mayBeField =
        access == access::kCall && (answer == kNotAFunction || answer == DISP_E_MEMBERNOTFOUND);
    if (mayBeField) {
        exception.Clear();
        answer = CallOnce(member, access::kGet, parameters, out, exception.info);
    }
    const bool mayYieldCollection =
        access == access::kCall && parameters.cArgs > 0 && parameters.cNamedArgs == 0 &&
        (answer == DISP_E_BADPARAMCOUNT || (extended_ && answer == E_FAIL));
    if (mayYieldCollection) {
        exception.Clear();
        answer = CallDefaultOfYielded(member, access, parameters, result.Out(), exception.info);
    }
    if (FAILED(answer)) {
        exception.Raise(answer);
    }
    return isPut ? Value() : ToValue(*result.Get());
}

std::u16string DispatchObject::TypeName() const {
    ComPtr<ITypeInfo> info;
    Bstr name;
    if (FAILED(dispatch_->GetTypeInfo(0, LOCALE_USER_DEFAULT, info.Out())) || !info ||
        FAILED(info->GetDocumentation(MEMBERID_NIL, name.Out(), nullptr, nullptr, nullptr))) {
        return u"Object";
    }
    const std::u16string text = name.Text();
    return text.starts_with(u"_") ? text.substr(1) : text;
}

Subscription DispatchObject::Subscribe(std::shared_ptr<EventSink> sink,
                                       std::span<const std::u16string_view> order) {
    return ConnectToEvents(dispatch_.Get(), std::move(sink), order);
}

std::shared_ptr<Sequence> DispatchObject::Enumerate() {
    const Value result = Invoke(DISPID_NEWENUM, access::kCall, {});
    const auto* object = result.If<Object>();
    const ComPtr<IUnknown> unknown = object == nullptr ? nullptr : UnknownOf(*object);
    auto elements = ComPtr<IEnumVARIANT>::From(unknown.Get());
    if (!elements) {
        throw Failure(failure_number::kMemberNotFound, TypeName() + u" is not a collection");
    }
    return std::make_shared<EnumSequence>(elements);
}

Value OpaqueObject::Invoke(MemberId, unsigned, const Arguments&) {
    throw Failure(failure_number::kMemberNotFound, u"The object has no members");
}

Value WrapDispatch(IDispatch* dispatch) {
    if (dispatch == nullptr) {
        return Nothing();
    }
    const Object own = OwnObject(dispatch);
    return own != nullptr ? Value(own) : Value(std::make_shared<DispatchObject>(dispatch));
}

Value WrapUnknown(IUnknown* unknown) {
    if (unknown == nullptr) {
        return Nothing();
    }
    const auto dispatch = ComPtr<IDispatch>::From(unknown);
    return dispatch ? WrapDispatch(dispatch.Get()) : Value(std::make_shared<OpaqueObject>(unknown));
}

} // namespace talvix
