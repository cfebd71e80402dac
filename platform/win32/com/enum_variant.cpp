#include "platform/win32/com/enum_variant.h"

#include "platform/win32/com/guards.h"
#include "platform/win32/com/variant.h"

namespace talvix {

STDMETHODIMP EnumVariant::Next(ULONG count, VARIANT* elements, ULONG* fetched) {
    return Guarded([&] {
        ULONG done = 0;
        for (; done < count; ++done) {
            const auto value = sequence_->Next();
            if (!value) {
                break;
            }
            ToVariant(*value, elements[done]);
        }
        passed_ += done;
        if (fetched != nullptr) {
            *fetched = done;
        }
        return done == count ? S_OK : S_FALSE;
    });
}

STDMETHODIMP EnumVariant::Skip(ULONG count) {
    return Guarded([&] {
        for (; count > 0 && sequence_->Next(); --count) {
            ++passed_;
        }
        return count == 0 ? S_OK : S_FALSE;
    });
}

STDMETHODIMP EnumVariant::Reset() {
    return Guarded([&] {
        sequence_->Restart();
        passed_ = 0;
        return S_OK;
    });
}

STDMETHODIMP EnumVariant::Clone(IEnumVARIANT** copy) {
    return Guarded([&] {
        const auto twin = MakeCom<EnumVariant>(maker_);
        twin->Skip(passed_);
        *copy = ComPtr<IEnumVARIANT>(twin.Get()).Detach();
        return S_OK;
    });
}

std::optional<Value> EnumSequence::Next() {
    Variant element;
    ULONG fetched = 0;
    if (elements_->Next(1, element.Get(), &fetched) != S_OK || fetched == 0) {
        return std::nullopt;
    }
    return ToValue(*element.Get());
}

} // namespace talvix
