#include "platform/win32/com/event_connection.h"

#include "automation/failure.h"
#include "platform/win32/com/bstr.h"
#include "platform/win32/com/com_ptr.h"
#include "platform/win32/com/guards.h"
#include "platform/win32/com/variant.h"

#include <ocidl.h>

namespace talvix {

namespace {

/// Owns what an ITypeInfo hands out.
class TypeAttributes {
public:
    explicit TypeAttributes(ITypeInfo* info) : info_(info) { info_->GetTypeAttr(&attributes_); }
    TypeAttributes(const TypeAttributes&) = delete;
    TypeAttributes& operator=(const TypeAttributes&) = delete;
    ~TypeAttributes() {
        if (attributes_ != nullptr) {
            info_->ReleaseTypeAttr(attributes_);
        }
    }
    const TYPEATTR* Get() const { return attributes_; }

private:
    ITypeInfo* info_;
    TYPEATTR* attributes_ = nullptr;
};

/// The default source interface of a class.
ComPtr<ITypeInfo> DefaultSource(ITypeInfo* classInfo) {
    const TypeAttributes attributes(classInfo);
    constexpr INT kWanted = IMPLTYPEFLAG_FDEFAULT | IMPLTYPEFLAG_FSOURCE;
    ComPtr<ITypeInfo> source;
    for (UINT at = 0; attributes.Get() != nullptr && at < attributes.Get()->cImplTypes; ++at) {
        INT flags = 0;
        HREFTYPE reference = 0;
        if (SUCCEEDED(classInfo->GetImplTypeFlags(at, &flags)) && (flags & kWanted) == kWanted &&
            SUCCEEDED(classInfo->GetRefTypeOfImplType(at, &reference)) &&
            SUCCEEDED(classInfo->GetRefTypeInfo(reference, source.Out()))) {
            return source;
        }
    }
    return nullptr;
}

ComPtr<ITypeInfo> SourceInfo(IUnknown* object) {
    const auto provider = ComPtr<IProvideClassInfo>::From(object);
    ComPtr<ITypeInfo> classInfo;
    if (!provider || FAILED(provider->GetClassInfo(classInfo.Out())) || !classInfo) {
        return nullptr;
    }
    return DefaultSource(classInfo.Get());
}

std::map<DISPID, std::u16string> NamesIn(ITypeInfo* source) {
    std::map<DISPID, std::u16string> names;
    const TypeAttributes attributes(source);
    for (UINT at = 0; attributes.Get() != nullptr && at < attributes.Get()->cFuncs; ++at) {
        FUNCDESC* function = nullptr;
        if (FAILED(source->GetFuncDesc(at, &function))) {
            continue;
        }
        Bstr name;
        UINT count = 0;
        if (SUCCEEDED(source->GetNames(function->memid, name.Out(), 1, &count)) && count == 1) {
            names[function->memid] = name.Text();
        }
        source->ReleaseFuncDesc(function);
    }
    return names;
}

std::map<DISPID, std::u16string> NamesByOrder(std::span<const std::u16string_view> order) {
    std::map<DISPID, std::u16string> names;
    for (std::size_t at = 0; at < order.size(); ++at) {
        names[static_cast<DISPID>(at) + 1] = order[at];
    }
    return names;
}

ComPtr<IConnectionPoint> FirstPoint(IConnectionPointContainer* container) {
    ComPtr<IEnumConnectionPoints> points;
    ComPtr<IConnectionPoint> point;
    ULONG fetched = 0;
    if (SUCCEEDED(container->EnumConnectionPoints(points.Out())) && points) {
        points->Next(1, point.Out(), &fetched);
    }
    return point;
}

ComPtr<IConnectionPoint> DefaultPoint(IUnknown* object, ITypeInfo* source) {
    const auto container = ComPtr<IConnectionPointContainer>::From(object);
    if (!container) {
        return nullptr;
    }
    IID id{};
    bool known = false;
    if (const auto provider = ComPtr<IProvideClassInfo2>::From(object)) {
        known = SUCCEEDED(provider->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &id));
    }
    if (!known && source != nullptr) {
        const TypeAttributes attributes(source);
        known = attributes.Get() != nullptr;
        id = known ? attributes.Get()->guid : id;
    }
    ComPtr<IConnectionPoint> point;
    if (known && SUCCEEDED(container->FindConnectionPoint(id, point.Out())) && point) {
        return point;
    }
    return FirstPoint(container.Get());
}

} // namespace

STDMETHODIMP EventListener::GetTypeInfoCount(UINT* count) {
    if (count == nullptr) {
        return E_POINTER;
    }
    *count = 0;
    return S_OK;
}

STDMETHODIMP EventListener::Invoke(DISPID member, REFIID, LCID, WORD, DISPPARAMS* parameters,
                                   VARIANT*, EXCEPINFO*, UINT*) {
    const ComPtr<EventListener> alive(this);
    const auto name = names_.find(member);
    if (name == names_.end()) {
        return DISP_E_MEMBERNOTFOUND;
    }
    Guarded([&] {
        const UINT count = parameters == nullptr ? 0 : parameters->cArgs;
        std::vector<Value> values(count);
        for (UINT at = 0; at < count; ++at) {
            values[at] = ToValue(parameters->rgvarg[count - 1 - at]);
        }
        const std::vector<Value> before = values;
        sink_->OnEvent(name->second, values);
        for (UINT at = 0; at < count; ++at) {
            if (values[at] != before[at]) {
                WriteBack(values[at], parameters->rgvarg[count - 1 - at]);
            }
        }
        return S_OK;
    });
    return S_OK;
}

void* EventListener::Find(REFIID id) {
    return id == source_ || id == IID_IUnknown || id == IID_IDispatch
               ? static_cast<IDispatch*>(this)
               : nullptr;
}

Subscription ConnectToEvents(IUnknown* object, std::shared_ptr<EventSink> sink,
                             std::span<const std::u16string_view> order) {
    const ComPtr<ITypeInfo> source = SourceInfo(object);
    const ComPtr<IConnectionPoint> point = DefaultPoint(object, source.Get());
    IID id{};
    if (!point || FAILED(point->GetConnectionInterface(&id))) {
        throw Failure(failure_number::kMemberNotFound, u"The object raises no events");
    }
    const auto listener = MakeCom<EventListener>(
        id, source ? NamesIn(source.Get()) : NamesByOrder(order), std::move(sink));
    DWORD cookie = 0;
    const HRESULT result = point->Advise(listener.Get(), &cookie);
    if (FAILED(result)) {
        throw Failure(result, u"The object's events cannot be connected");
    }
    return {static_cast<void*>(listener.Get()),
            [point, cookie](void*) { point->Unadvise(cookie); }};
}

} // namespace talvix
