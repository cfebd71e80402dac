#pragma once

#include "automation/late_object.h"
#include "platform/win32/com/com_ptr.h"
#include "platform/win32/com/unknown.h"

#include <windows.h>
#include <oleauto.h>

#include <functional>

namespace talvix {

/// A sequence as automation clients walk over it.
class EnumVariant : public Unknown<IEnumVARIANT> {
public:
    using Maker = std::function<std::shared_ptr<Sequence>()>;
    /// `maker` makes the sequence anew for clones.
    explicit EnumVariant(Maker maker) : maker_(std::move(maker)), sequence_(maker_()) {}

    STDMETHODIMP Next(ULONG count, VARIANT* elements, ULONG* fetched) override;
    STDMETHODIMP Skip(ULONG count) override;
    STDMETHODIMP Reset() override;
    STDMETHODIMP Clone(IEnumVARIANT** copy) override;

private:
    Maker maker_;
    std::shared_ptr<Sequence> sequence_;
    ULONG passed_ = 0;
};

/// A foreign object's enumerator as a sequence.
class EnumSequence : public Sequence {
public:
    explicit EnumSequence(ComPtr<IEnumVARIANT> elements) : elements_(std::move(elements)) {}
    std::optional<Value> Next() override;
    void Restart() override { elements_->Reset(); }

private:
    ComPtr<IEnumVARIANT> elements_;
};

} // namespace talvix
