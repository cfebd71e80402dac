#include "platform/win32/com/late_dispatch.h"

#include "automation/failure.h"
#include "platform/win32/com/bstr.h"
#include "platform/win32/com/dispatch_interfaces.h"
#include "platform/win32/com/dispatch_object.h"
#include "platform/win32/com/enum_variant.h"
#include "platform/win32/com/guards.h"
#include "platform/win32/com/type_library.h"
#include "platform/win32/com/variant.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace talvix {

namespace {

const char moduleMark = 0;

constexpr UINT kMostArguments = 1024;

/// Place of the `at`-th argument as automation stores it (last one first, named ones before).
std::size_t PlaceOf(const DISPPARAMS& parameters, UINT at) {
    if (at >= parameters.cNamedArgs) {
        return parameters.cArgs - 1 - at;
    }
    const DISPID place = parameters.rgdispidNamedArgs[at];
    if (place < 0 || place >= static_cast<DISPID>(kMostArguments)) {
        throw Failure(DISP_E_PARAMNOTFOUND, u"There is no such parameter");
    }
    return static_cast<std::size_t>(place);
}

void Unpack(const DISPPARAMS& parameters, bool isPut, std::vector<Value>& values) {
    if (parameters.cArgs > kMostArguments || parameters.cNamedArgs > parameters.cArgs) {
        throw Failure(DISP_E_BADPARAMCOUNT, u"Too many arguments");
    }
    // A put has its new value first, named DISPID_PROPERTYPUT.
    const bool named =
        isPut && parameters.cNamedArgs > 0 && parameters.rgdispidNamedArgs[0] == DISPID_PROPERTYPUT;
    const UINT first = named ? 1 : 0;
    std::size_t count = parameters.cArgs - parameters.cNamedArgs;
    for (UINT at = first; at < parameters.cNamedArgs; ++at) {
        count = std::max(count, PlaceOf(parameters, at) + 1);
    }
    values.resize(count + first);
    if (parameters.cNamedArgs > first) {
        std::fill(values.begin(), values.end(), Value(Missing()));
    }
    for (UINT at = first; at < parameters.cArgs; ++at) {
        AssignValue(values[PlaceOf(parameters, at)], parameters.rgvarg[at]);
    }
    if (named) {
        AssignValue(values.back(), parameters.rgvarg[0]);
    }
}

using Buffer = std::vector<Value>;

/// Memory for arguments and for a face that waits for the next call of the first thread that made
/// one; other threads do without.
struct Spare {
    LONG owner = 0;
    Buffer* buffer = nullptr;
    void* face = nullptr;
    ~Spare() {
        delete buffer;
        ::operator delete(face);
    }
    bool IsMine() {
        const auto self = static_cast<LONG>(GetCurrentThreadId());
        return owner == self || InterlockedCompareExchange(&owner, self, 0) == 0;
    }
};
Spare waiting;

/// The arguments of a call, in memory that calls hand on to each other with nothing but texts in
/// it.
class ArgumentBuffer {
public:
    ArgumentBuffer() : isMine_(waiting.IsMine()), values_(isMine_ ? TakeSpare() : New()) {}
    ArgumentBuffer(const ArgumentBuffer&) = delete;
    ArgumentBuffer& operator=(const ArgumentBuffer&) = delete;
    ~ArgumentBuffer() {
        for (Value& value : *values_) {
            const auto* text = value.If<std::u16string>();
            if (text == nullptr || text->size() > kLongestKept) {
                value = Value();
            }
        }
        if (values_->size() <= kMostKept && isMine_ && waiting.buffer == nullptr) {
            waiting.buffer = values_.release();
        }
    }
    Buffer& Values() const { return *values_; }

private:
    static constexpr std::size_t kLongestKept = 1024;
    static constexpr std::size_t kMostKept = 32;
    static std::unique_ptr<Buffer> New() { return std::make_unique<Buffer>(); }
    static std::unique_ptr<Buffer> TakeSpare() {
        Buffer* spare = std::exchange(waiting.buffer, nullptr);
        return spare != nullptr ? std::unique_ptr<Buffer>(spare) : New();
    }
    bool isMine_;
    std::unique_ptr<Buffer> values_;
};

void Describe(const Failure& failure, const LateObject& source, EXCEPINFO& exception) {
    exception = EXCEPINFO{};
    exception.scode = failure.Number();
    exception.bstrSource = Bstr(source.TypeName()).Detach();
    exception.bstrDescription = Bstr(failure.Text()).Detach();
}

ComPtr<IUnknown> NewEnumerator(const Object& object) {
    const auto sequence = MakeCom<EnumVariant>([object] { return object->Enumerate(); });
    return ComPtr<IUnknown>(static_cast<IEnumVARIANT*>(sequence.Get()));
}

} // namespace

const void* ModuleMark() {
    return &moduleMark;
}

HRESULT DispatchAnswers::TypeInfo(UINT index, ITypeInfo** info) const {
    if (info == nullptr) {
        return E_POINTER;
    }
    *info = nullptr;
    return index != 0 ? DISP_E_BADINDEX
                      : Guarded([&] { return FindTypeInfo(u"_" + target_->TypeName(), info); });
}

HRESULT DispatchAnswers::IdsOfNames(REFIID id, LPOLESTR* names, UINT count, DISPID* ids) const {
    if (id != IID_NULL) {
        return DISP_E_UNKNOWNINTERFACE;
    }
    if (names == nullptr || ids == nullptr || count == 0) {
        return E_INVALIDARG;
    }
    return Guarded([&] {
        std::fill(ids, ids + count, DISPID_UNKNOWN);
        const auto member =
            names[0] == nullptr ? std::nullopt : target_->FindMember(Text(names[0]));
        if (!member) {
            return DISP_E_UNKNOWNNAME;
        }
        ids[0] = *member;
        HRESULT result = S_OK;
        for (UINT at = 1; at < count; ++at) {
            const auto place = names[at] == nullptr
                                   ? std::nullopt
                                   : target_->FindParameter(*member, Text(names[at]));
            ids[at] = place ? static_cast<DISPID>(*place) : DISPID_UNKNOWN;
            result = place ? result : DISP_E_UNKNOWNNAME;
        }
        return result;
    });
}

void DispatchAnswers::Call(DISPID member, WORD flags, const DISPPARAMS& parameters,
                           VARIANT* result) const {
    if (member == DISPID_NEWENUM) {
        const ComPtr<IUnknown> elements = NewEnumerator(target_);
        if (result != nullptr) {
            result->vt = VT_UNKNOWN;
            result->punkVal = ComPtr<IUnknown>(elements).Detach();
        }
        return;
    }
    const bool isPut = (flags & access::kAnyPut) != 0;
    const ArgumentBuffer buffer;
    Unpack(parameters, isPut, buffer.Values());
    const Value answer = target_->Invoke(member, flags, {buffer.Values(), {}});
    if (result != nullptr && !isPut) {
        ToVariant(answer, *result);
    }
}

HRESULT DispatchAnswers::Invoke(DISPID member, REFIID id, WORD flags, DISPPARAMS* parameters,
                                VARIANT* result, EXCEPINFO* exception) const {
    if (id != IID_NULL) {
        return DISP_E_UNKNOWNINTERFACE;
    }
    if (result != nullptr) {
        VariantInit(result);
    }
    return Guarded([&]() -> HRESULT {
        try {
            static const DISPPARAMS kNone{};
            const bool hasArguments = parameters != nullptr && parameters->rgvarg != nullptr;
            Call(member, flags, hasArguments ? *parameters : kNone, result);
            return S_OK;
        } catch (const std::exception&) {
            const Failure failure = CurrentFailure();
            if (exception == nullptr) {
                return FAILED(failure.Number()) ? failure.Number() : E_FAIL;
            }
            Describe(failure, *target_, *exception);
            return DISP_E_EXCEPTION;
        }
    });
}

void* LateDispatch::operator new(std::size_t bytes) {
    void* spare = waiting.IsMine() ? std::exchange(waiting.face, nullptr) : nullptr;
    return spare != nullptr ? spare : ::operator new(bytes);
}

void LateDispatch::operator delete(void* memory) {
    if (waiting.face == nullptr && waiting.IsMine()) {
        waiting.face = memory;
    } else {
        ::operator delete(memory);
    }
}

void* LateDispatch::Find(REFIID id) {
    if (void* own = Unknown::Find(id)) {
        return own;
    }
    const std::u16string_view kind = KindOfInterface(id);
    bool isOurs = false;
    if (!kind.empty()) { // a name may need memory, and there may be none
        Guarded([&] {
            isOurs = Target()->TypeName() == kind;
            return S_OK;
        });
    }
    return isOurs ? static_cast<IDispatch*>(this) : nullptr;
}

STDMETHODIMP LateDispatch::GetTypeInfoCount(UINT* count) {
    if (count == nullptr) {
        return E_POINTER;
    }
    ComPtr<ITypeInfo> info;
    *count = SUCCEEDED(answers_.TypeInfo(0, info.Out())) ? 1 : 0;
    return S_OK;
}

STDMETHODIMP LateDispatch::GetTypeInfo(UINT index, LCID, ITypeInfo** info) {
    return answers_.TypeInfo(index, info);
}

STDMETHODIMP LateDispatch::GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID,
                                         DISPID* ids) {
    return answers_.IdsOfNames(id, names, count, ids);
}

STDMETHODIMP LateDispatch::Invoke(DISPID member, REFIID id, LCID, WORD flags,
                                  DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                  UINT*) {
    const ComPtr<LateDispatch> alive(this);
    return answers_.Invoke(member, id, flags, parameters, result, exception);
}

const void* STDMETHODCALLTYPE LateDispatch::Module() {
    return ModuleMark();
}

Object OwnObject(IUnknown* unknown) {
    const auto own = ComPtr<ILateObject>::From(unknown);
    return own && own->Module() == ModuleMark() ? own->Target()->Self() : nullptr;
}

ComPtr<IUnknown> UnknownOf(const Object& object) {
    if (object == nullptr) {
        return nullptr;
    }
    if (void* face = object->Face()) {
        return ComPtr<IUnknown>(static_cast<IUnknown*>(face));
    }
    return ComPtr<IUnknown>::Adopt(static_cast<IDispatch*>(new LateDispatch(object)));
}

} // namespace talvix
