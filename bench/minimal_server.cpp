// The least that a COM server can be: one class without members. What a process needs to load it
// and to create its object is the measure for the component's first creation.
#include <windows.h>
#include <unknwn.h>

namespace {

class Nothing final : public IClassFactory {
public:
    STDMETHODIMP QueryInterface(REFIID, void** result) override {
        *result = this;
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 1; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP CreateInstance(IUnknown*, REFIID, void** result) override {
        *result = this;
        return S_OK;
    }
    STDMETHODIMP LockServer(BOOL) override { return S_OK; }
};

Nothing nothing;

} // namespace

STDAPI DllGetClassObject(REFCLSID, REFIID, void** result) {
    *result = &nothing;
    return S_OK;
}

STDAPI DllCanUnloadNow() {
    return S_FALSE;
}
