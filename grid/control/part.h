#pragma once

#include <windows.h>
#include <unknwn.h>

namespace talvix::grid {

class GridControl;

/// One OLE interface of the control. Identity and life are the control's.
template <typename Interface>
class Part : public Interface {
public:
    explicit Part(IUnknown& identity) : identity_(identity) {}
    Part(const Part&) = delete;
    Part& operator=(const Part&) = delete;
    virtual ~Part() = default;

    STDMETHODIMP QueryInterface(REFIID id, void** object) override {
        return identity_.QueryInterface(id, object);
    }
    STDMETHODIMP_(ULONG) AddRef() override { return identity_.AddRef(); }
    STDMETHODIMP_(ULONG) Release() override { return identity_.Release(); }

private:
    IUnknown& identity_;
};

} // namespace talvix::grid
