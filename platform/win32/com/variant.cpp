#include "platform/win32/com/variant.h"

#include "automation/failure.h"
#include "platform/win32/com/bstr.h"
#include "platform/win32/com/com_ptr.h"
#include "platform/win32/com/dispatch_object.h"
#include "platform/win32/com/late_dispatch.h"

#include <optional>

namespace talvix {

namespace {

constexpr int kDeepest = 16;

[[noreturn]] void RaiseUnknownKind() {
    throw Failure(failure_number::kTypeMismatch, u"A value of this kind has no meaning here");
}

Value Unsigned64(ULONGLONG number) {
    return number <= static_cast<ULONGLONG>(INT64_MAX) ? Value(static_cast<std::int64_t>(number))
                                                       : Value(static_cast<double>(number));
}

Value FromDecimal(DECIMAL& decimal) {
    double number = 0;
    if (FAILED(VarR8FromDec(&decimal, &number))) {
        RaiseUnknownKind();
    }
    return number;
}

Value FromError(SCODE code) {
    return code == DISP_E_PARAMNOTFOUND ? Value(Missing())
                                        : Value(ErrorCode{static_cast<std::int32_t>(code)});
}

/// A whole number by its kind, from where it lies; nothing for other kinds.
std::optional<Value> WholeNumber(VARTYPE kind, const void* at) {
    switch (kind) {
    case VT_I1:
        return Value(static_cast<std::int16_t>(*static_cast<const signed char*>(at)));
    case VT_UI1:
        return Value(std::uint8_t{*static_cast<const BYTE*>(at)});
    case VT_I2:
        return Value(std::int16_t{*static_cast<const SHORT*>(at)});
    case VT_UI2:
        return Value(static_cast<std::int32_t>(*static_cast<const USHORT*>(at)));
    case VT_I4:
    case VT_INT:
        return Value(static_cast<std::int32_t>(*static_cast<const LONG*>(at)));
    case VT_UI4:
    case VT_UINT:
        return Value(static_cast<std::int64_t>(*static_cast<const ULONG*>(at)));
    case VT_I8:
        return Value(static_cast<std::int64_t>(*static_cast<const LONGLONG*>(at)));
    case VT_UI8:
        return Unsigned64(*static_cast<const ULONGLONG*>(at));
    default:
        return std::nullopt;
    }
}

/// A scalar by its kind, from where it lies.
Value Scalar(VARTYPE kind, void* at) {
    if (auto whole = WholeNumber(kind, at)) {
        return *whole;
    }
    switch (kind) {
    case VT_R4:
        return *static_cast<FLOAT*>(at);
    case VT_R8:
        return *static_cast<DOUBLE*>(at);
    case VT_CY:
        return Currency{static_cast<CY*>(at)->int64};
    case VT_DATE:
        return Date{*static_cast<DATE*>(at)};
    case VT_BOOL:
        return *static_cast<VARIANT_BOOL*>(at) != VARIANT_FALSE;
    case VT_BSTR:
        return Bstr::View(*static_cast<BSTR*>(at));
    case VT_ERROR:
        return FromError(*static_cast<SCODE*>(at));
    case VT_DECIMAL:
        return FromDecimal(*static_cast<DECIMAL*>(at));
    case VT_DISPATCH:
        return WrapDispatch(*static_cast<IDispatch**>(at));
    case VT_UNKNOWN:
        return WrapUnknown(*static_cast<IUnknown**>(at));
    default:
        RaiseUnknownKind();
    }
}

Value FromVariant(const VARIANT& variant, int depth);

/// Elements of one dimension, the last one innermost.
Value FromArray(SAFEARRAY* array, VARTYPE kind, UINT dimension, std::vector<LONG>& place,
                int depth) {
    LONG lower = 0;
    LONG upper = -1;
    if (FAILED(SafeArrayGetLBound(array, dimension, &lower)) ||
        FAILED(SafeArrayGetUBound(array, dimension, &upper))) {
        RaiseUnknownKind();
    }
    std::vector<Value> elements;
    for (LONG at = lower; at <= upper; ++at) {
        place[dimension - 1] = at;
        if (dimension < place.size()) {
            elements.push_back(FromArray(array, kind, dimension + 1, place, depth));
            continue;
        }
        void* element = nullptr;
        if (FAILED(SafeArrayPtrOfIndex(array, place.data(), &element))) {
            RaiseUnknownKind();
        }
        elements.push_back(kind == VT_VARIANT
                               ? FromVariant(*static_cast<VARIANT*>(element), depth + 1)
                               : Scalar(kind, element));
    }
    return List(std::make_shared<const std::vector<Value>>(std::move(elements)));
}

Value FromSafeArray(SAFEARRAY* array, VARTYPE kind, int depth) {
    if (array == nullptr || SafeArrayGetDim(array) == 0) {
        return List(std::make_shared<const std::vector<Value>>());
    }
    std::vector<LONG> place(SafeArrayGetDim(array));
    return FromArray(array, kind, 1, place, depth);
}

Value FromVariant(const VARIANT& variant, int depth) {
    if (depth > kDeepest) {
        RaiseUnknownKind();
    }
    const bool byReference = (variant.vt & VT_BYREF) != 0;
    if (byReference && variant.byref == nullptr) {
        return {};
    }
    const auto kind = static_cast<VARTYPE>(variant.vt & ~(VT_BYREF | VT_ARRAY));
    if ((variant.vt & VT_ARRAY) != 0) {
        return FromSafeArray(byReference ? *variant.pparray : variant.parray, kind, depth);
    }
    if (kind == VT_EMPTY) {
        return {};
    }
    if (kind == VT_NULL) {
        return Null();
    }
    if (byReference) {
        return kind == VT_VARIANT ? FromVariant(*variant.pvarVal, depth + 1)
                                  : Scalar(kind, variant.byref);
    }
    if (kind == VT_DECIMAL) {
        DECIMAL decimal = variant.decVal;
        return FromDecimal(decimal);
    }
    return Scalar(kind, const_cast<LONGLONG*>(&variant.llVal));
}

} // namespace

Value ToValue(const VARIANT& variant) {
    return FromVariant(variant, 0);
}

void AssignValue(Value& value, const VARIANT& variant) {
    if (variant.vt == VT_BSTR) {
        value.AssignText(Bstr::View(variant.bstrVal));
    } else if (variant.vt == (VT_BYREF | VT_VARIANT) && variant.pvarVal != nullptr &&
               variant.pvarVal->vt == VT_BSTR) {
        value.AssignText(Bstr::View(variant.pvarVal->bstrVal));
    } else {
        value = ToValue(variant);
    }
}

namespace {

struct VariantWriter {
    VARIANT& variant;

    void operator()(const Empty&) const { variant.vt = VT_EMPTY; }
    void operator()(const Null&) const { variant.vt = VT_NULL; }
    void operator()(const Missing&) const {
        variant.vt = VT_ERROR;
        variant.scode = DISP_E_PARAMNOTFOUND;
    }
    void operator()(bool value) const {
        variant.vt = VT_BOOL;
        variant.boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
    }
    void operator()(std::uint8_t value) const {
        variant.vt = VT_UI1;
        variant.bVal = value;
    }
    void operator()(std::int16_t value) const {
        variant.vt = VT_I2;
        variant.iVal = value;
    }
    void operator()(std::int32_t value) const {
        variant.vt = VT_I4;
        variant.lVal = value;
    }
    void operator()(std::int64_t value) const {
        variant.vt = VT_I8;
        variant.llVal = value;
    }
    void operator()(float value) const {
        variant.vt = VT_R4;
        variant.fltVal = value;
    }
    void operator()(double value) const {
        variant.vt = VT_R8;
        variant.dblVal = value;
    }
    void operator()(const Currency& value) const {
        variant.vt = VT_CY;
        variant.cyVal.int64 = value.scaled;
    }
    void operator()(const Date& value) const {
        variant.vt = VT_DATE;
        variant.date = value.days;
    }
    void operator()(const std::u16string& value) const {
        variant.bstrVal = Bstr(value).Detach();
        variant.vt = VT_BSTR;
    }
    void operator()(const Object& value) const {
        ComPtr<IUnknown> unknown = UnknownOf(value);
        ComPtr<IDispatch> dispatch = ComPtr<IDispatch>::From(unknown.Get());
        if (dispatch || !unknown) {
            variant.vt = VT_DISPATCH;
            variant.pdispVal = dispatch.Detach();
        } else {
            variant.vt = VT_UNKNOWN;
            variant.punkVal = unknown.Detach();
        }
    }
    void operator()(const List& value) const {
        const std::size_t count = value == nullptr ? 0 : value->size();
        SAFEARRAY* array = SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(count));
        if (array == nullptr) {
            throw std::bad_alloc();
        }
        variant.vt = VT_ARRAY | VT_VARIANT;
        variant.parray = array;
        auto* elements = static_cast<VARIANT*>(array->pvData);
        for (std::size_t at = 0; at < count; ++at) {
            ToVariant((*value)[at], elements[at]);
        }
    }
    void operator()(const ErrorCode& value) const {
        variant.vt = VT_ERROR;
        variant.scode = value.number;
    }
};

} // namespace

void ToVariant(const Value& value, VARIANT& variant) {
    VariantInit(&variant);
    std::visit(VariantWriter{variant}, value.Content());
}

void WriteBack(const Value& value, VARIANT& variant) {
    if ((variant.vt & VT_BYREF) == 0 || (variant.vt & VT_ARRAY) != 0 || variant.byref == nullptr) {
        return;
    }
    Variant source;
    ToVariant(value, *source.Get());
    const auto kind = static_cast<VARTYPE>(variant.vt & ~VT_BYREF);
    if (kind == VT_VARIANT) {
        VariantCopy(variant.pvarVal, source.Get());
        return;
    }
    Variant converted;
    if (FAILED(VariantChangeType(converted.Get(), source.Get(), 0, kind))) {
        return;
    }
    switch (kind) {
    case VT_BOOL:
        *variant.pboolVal = converted.Get()->boolVal;
        break;
    case VT_I2:
        *variant.piVal = converted.Get()->iVal;
        break;
    case VT_I4:
    case VT_INT:
        *variant.plVal = converted.Get()->lVal;
        break;
    case VT_R4:
        *variant.pfltVal = converted.Get()->fltVal;
        break;
    case VT_R8:
        *variant.pdblVal = converted.Get()->dblVal;
        break;
    case VT_BSTR:
        std::swap(*variant.pbstrVal, converted.Get()->bstrVal);
        break;
    default:
        break;
    }
}

} // namespace talvix
