// A member called by name through IDispatch, beside an object that looks the name up in the
// library's hash table and calls a function.
#include "bench/bench.h"
#include "platform/win32/com/com_ptr.h"

#include <windows.h>
#include <oaidl.h>

#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

namespace talvix::bench {

namespace {

constexpr int kCalls = 200000;

class HashedObject final : public IDispatch {
public:
    HashedObject() {
        const wchar_t* const names[] = {
            L"redraw",    L"rows",       L"columns",       L"groups",      L"selection",
            L"find",      L"sort",       L"currentrow",    L"multiselect", L"stopimport",
            L"imagelist", L"groupbybox", L"strmarkedfile", L"allowedit",   L"hittest"};
        for (const wchar_t* name : names) {
            ids_.emplace(name, static_cast<DISPID>(ids_.size()));
            members_.emplace_back([this](VARIANT& result) {
                result.vt = VT_BOOL;
                result.boolVal = answer_;
            });
        }
    }
    STDMETHODIMP QueryInterface(REFIID, void** result) override {
        *result = this;
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 1; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP GetTypeInfoCount(UINT* count) override {
        *count = 0;
        return S_OK;
    }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
        std::wstring name(names[0]);
        for (wchar_t& unit : name) {
            unit = unit >= L'A' && unit <= L'Z' ? static_cast<wchar_t>(unit + 32) : unit;
        }
        const auto found = ids_.find(name);
        ids[0] = found == ids_.end() ? DISPID_UNKNOWN : found->second;
        return found == ids_.end() ? DISP_E_UNKNOWNNAME : S_OK;
    }
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                        UINT*) override {
        members_[static_cast<std::size_t>(id)](*result);
        return S_OK;
    }

private:
    std::unordered_map<std::wstring, DISPID> ids_;
    std::vector<std::function<void(VARIANT&)>> members_;
    VARIANT_BOOL answer_ = VARIANT_FALSE;
};

double CallByName(IDispatch* object, const wchar_t* name) {
    auto* text = const_cast<wchar_t*>(name);
    DISPPARAMS none{};
    bool isAnswered = true;
    const double start = Now();
    for (int call = 0; call < kCalls; ++call) {
        DISPID id = DISPID_UNKNOWN;
        VARIANT result{};
        isAnswered =
            SUCCEEDED(object->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id)) &&
            SUCCEEDED(object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none,
                                     &result, nullptr, nullptr)) &&
            result.vt == VT_BOOL && isAnswered;
    }
    const double time = Since(start);
    Require(isAnswered, "call by name");
    return time;
}

} // namespace

int CallBench() {
    HashedObject hashed;
    const ComPtr<IDispatch> main = Create(u"TalvixDMS.Main");
    const ComPtr<IDispatch> grid = Create(u"TalvixGrid.Grid");
    Compare(
        {"call-main", "property of `Main` read by name / a hash look-up and the call", 2},
        [&] { return CallByName(main.Get(), L"StopImport"); },
        [&] { return CallByName(&hashed, L"StopImport"); }, 9);
    Compare(
        {"call-grid", "property of the grid read by name / a hash look-up and the call", 2},
        [&] { return CallByName(grid.Get(), L"AllowEdit"); },
        [&] { return CallByName(&hashed, L"AllowEdit"); }, 9);
    return 0;
}

} // namespace talvix::bench
