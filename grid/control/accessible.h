#pragma once

#include "grid/model/grid_objects.h"
#include "platform/win32/com/com_ptr.h"
#include "platform/win32/com/unknown.h"

#include <windows.h>

#include <memory>
#include <oleacc.h>

namespace talvix::grid {

/// What the accessible objects of one window share. They may outlive the window; then they answer
/// that they are gone.
struct AccessibleWindow {
    SharedGrid model;
    HWND window = nullptr; ///< null once it is gone
};
using SharedWindow = std::shared_ptr<AccessibleWindow>;

/// What an assistive program asks of one element: the object itself or one of its children.
struct Element {
    std::u16string name;
    std::u16string value;
    std::u16string defaultAction;
    LONG role = 0;
    LONG state = 0;
    RECT place{}; ///< pixels from the window's corner
};

/// The parts of IAccessible that are the same for the table and its rows. Children are numbered
/// from 1.
class Accessible : public Unknown<IAccessible> {
public:
    explicit Accessible(SharedWindow window) : window_(std::move(window)) {}

    STDMETHODIMP GetTypeInfoCount(UINT* count) override;
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return E_NOTIMPL;
    }
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                        UINT*) override {
        return E_NOTIMPL;
    }
    STDMETHODIMP get_accParent(IDispatch** parent) override;
    STDMETHODIMP get_accChildCount(LONG* count) override;
    STDMETHODIMP get_accChild(VARIANT child, IDispatch** object) override;
    STDMETHODIMP get_accName(VARIANT child, BSTR* name) override;
    STDMETHODIMP get_accValue(VARIANT child, BSTR* value) override;
    STDMETHODIMP get_accDescription(VARIANT, BSTR* text) override;
    STDMETHODIMP get_accRole(VARIANT child, VARIANT* role) override;
    STDMETHODIMP get_accState(VARIANT child, VARIANT* state) override;
    STDMETHODIMP get_accHelp(VARIANT, BSTR* text) override;
    STDMETHODIMP get_accHelpTopic(BSTR*, VARIANT, LONG*) override { return S_FALSE; }
    STDMETHODIMP get_accKeyboardShortcut(VARIANT, BSTR* text) override;
    STDMETHODIMP get_accFocus(VARIANT* child) override;
    STDMETHODIMP get_accSelection(VARIANT* children) override;
    STDMETHODIMP get_accDefaultAction(VARIANT child, BSTR* action) override;
    STDMETHODIMP accSelect(LONG flags, VARIANT child) override;
    STDMETHODIMP accLocation(LONG* left, LONG* top, LONG* width, LONG* height,
                             VARIANT child) override;
    STDMETHODIMP accNavigate(LONG way, VARIANT start, VARIANT* end) override;
    STDMETHODIMP accHitTest(LONG left, LONG top, VARIANT* child) override;
    STDMETHODIMP accDoDefaultAction(VARIANT child) override;
    STDMETHODIMP put_accName(VARIANT, BSTR) override { return E_NOTIMPL; }
    STDMETHODIMP put_accValue(VARIANT, BSTR) override { return E_NOTIMPL; }

protected:
    void* Find(REFIID id) override;
    GridModel& Model() const { return *window_->model; }
    HWND Window() const { return window_->window; }
    const SharedWindow& Shared() const { return window_; }

    virtual LONG ChildCount() = 0;
    /// `child` is 0 for the object itself. Failure for what is not there.
    virtual Element Describe(LONG child) = 0;
    virtual HRESULT Parent(IDispatch** parent) = 0;
    /// A child that is an object of its own; null for one that is not.
    virtual ComPtr<IAccessible> Child(LONG) { return nullptr; }
    virtual void Act(LONG child) = 0;
    virtual void Select(LONG, LONG) {}
    /// The child with the focus, 0 for none.
    virtual LONG FocusedChild() { return 0; }
    virtual std::vector<LONG> SelectedChildren() { return {}; }
    /// The child at a point of the window, 0 for none.
    virtual LONG ChildAt(POINT) { return 0; }

private:
    /// Runs a question about the object or a child of it.
    template <typename Ask>
    HRESULT Of(const VARIANT& child, Ask&& ask);
    HRESULT Text(const VARIANT& child, BSTR* text, std::u16string Element::*member);
    HRESULT Hand(LONG child, VARIANT* result);

    SharedWindow window_;
};

/// The grid as a table: its children are the header, while it can be seen, and the shown rows.
ComPtr<IAccessible> MakeAccessibleGrid(SharedWindow window);
/// A row with its cells as children; the header for no row.
ComPtr<IAccessible> MakeAccessibleRow(SharedWindow window, const RowRef& row);
/// The child of the table that stands for a row, 0 for one that is not shown.
LONG AccessibleChildOf(GridModel& model, const RowRef& row);

} // namespace talvix::grid
