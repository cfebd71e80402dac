#pragma once

#include "platform/win32/com/com_ptr.h"
#include "platform/win32/com/unknown.h"

#include <windows.h>
#include <ocidl.h>

#include <vector>

namespace talvix::grid {

/// One of COM's enumerators over a list that was made when it was asked for. `Traits` say how an
/// element is handed out.
template <typename Interface, typename Traits>
class ListEnumerator : public Unknown<Interface> {
public:
    using Element = typename Traits::Element;
    using Result = typename Traits::Result;
    explicit ListEnumerator(std::vector<Element> elements, std::size_t at = 0)
        : elements_(std::move(elements)), at_(at) {}

    STDMETHODIMP Next(ULONG count, Result* results, ULONG* fetched) override {
        if (results == nullptr || (fetched == nullptr && count != 1)) {
            return E_POINTER;
        }
        ULONG done = 0;
        for (; done < count && at_ < elements_.size(); ++done) {
            results[done] = Traits::HandOut(elements_[at_++]);
        }
        if (fetched != nullptr) {
            *fetched = done;
        }
        return done == count ? S_OK : S_FALSE;
    }
    STDMETHODIMP Skip(ULONG count) override {
        const bool enough = count <= elements_.size() - at_;
        at_ = enough ? at_ + count : elements_.size();
        return enough ? S_OK : S_FALSE;
    }
    STDMETHODIMP Reset() override {
        at_ = 0;
        return S_OK;
    }
    STDMETHODIMP Clone(Interface** copy) override {
        if (copy == nullptr) {
            return E_POINTER;
        }
        *copy = new ListEnumerator(elements_, at_);
        return S_OK;
    }

private:
    std::vector<Element> elements_;
    std::size_t at_;
};

struct PointTraits {
    using Element = ComPtr<IConnectionPoint>;
    using Result = IConnectionPoint*;
    static Result HandOut(const Element& element) { return Element(element).Detach(); }
};

struct ConnectionEntry {
    ComPtr<IUnknown> sink;
    DWORD cookie;
};

struct ConnectionTraits {
    using Element = ConnectionEntry;
    using Result = CONNECTDATA;
    static Result HandOut(const Element& element) {
        return {ComPtr<IUnknown>(element.sink).Detach(), element.cookie};
    }
};

using PointEnumerator = ListEnumerator<IEnumConnectionPoints, PointTraits>;
using ConnectionEnumerator = ListEnumerator<IEnumConnections, ConnectionTraits>;

} // namespace talvix::grid
