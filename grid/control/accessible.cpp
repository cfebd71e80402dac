#include "grid/control/accessible.h"

#include "automation/failure.h"
#include "grid/control/client_area.h"
#include "grid/control/list_enumerator.h"
#include "platform/win32/com/bstr.h"
#include "platform/win32/com/guards.h"

namespace talvix::grid {

namespace {

/// Children by their numbers, as a client enumerates them.
struct ChildTraits {
    using Element = LONG;
    using Result = VARIANT;
    static Result HandOut(const Element& element) {
        VARIANT result{};
        result.vt = VT_I4;
        result.lVal = element;
        return result;
    }
};
using ChildEnumerator = ListEnumerator<IEnumVARIANT, ChildTraits>;

HRESULT NoText(BSTR* text) {
    if (text == nullptr) {
        return E_INVALIDARG;
    }
    *text = nullptr;
    return S_FALSE;
}

} // namespace

void* Accessible::Find(REFIID id) {
    return id == IID_IDispatch ? static_cast<IDispatch*>(this) : Unknown::Find(id);
}

template <typename Ask>
HRESULT Accessible::Of(const VARIANT& child, Ask&& ask) {
    if (child.vt != VT_I4) {
        return E_INVALIDARG;
    }
    if (Window() == nullptr) {
        return CO_E_OBJNOTCONNECTED;
    }
    return Guarded([&]() -> HRESULT {
        if (child.lVal < 0 || child.lVal > ChildCount()) {
            return E_INVALIDARG;
        }
        return ask(child.lVal);
    });
}

HRESULT Accessible::Text(const VARIANT& child, BSTR* text, std::u16string Element::*member) {
    if (text == nullptr) {
        return E_INVALIDARG;
    }
    *text = nullptr;
    return Of(child, [&](LONG number) -> HRESULT {
        const std::u16string found = Describe(number).*member;
        if (found.empty()) {
            return S_FALSE;
        }
        *text = Bstr(found).Detach();
        return S_OK;
    });
}

/// A child is handed out as an object where it is one, else as its number.
HRESULT Accessible::Hand(LONG child, VARIANT* result) {
    if (child == CHILDID_SELF) {
        result->vt = VT_I4;
        result->lVal = CHILDID_SELF;
        return S_OK;
    }
    if (ComPtr<IAccessible> object = Child(child)) {
        result->vt = VT_DISPATCH;
        result->pdispVal = object.Detach();
        return S_OK;
    }
    result->vt = VT_I4;
    result->lVal = child;
    return S_OK;
}

STDMETHODIMP Accessible::GetTypeInfoCount(UINT* count) {
    if (count == nullptr) {
        return E_POINTER;
    }
    *count = 0;
    return S_OK;
}

STDMETHODIMP Accessible::get_accParent(IDispatch** parent) {
    if (parent == nullptr) {
        return E_INVALIDARG;
    }
    *parent = nullptr;
    return Window() == nullptr ? CO_E_OBJNOTCONNECTED : Guarded([&] { return Parent(parent); });
}

STDMETHODIMP Accessible::get_accChildCount(LONG* count) {
    if (count == nullptr) {
        return E_INVALIDARG;
    }
    *count = 0;
    return Window() == nullptr ? CO_E_OBJNOTCONNECTED : Guarded([&] {
        *count = ChildCount();
        return S_OK;
    });
}

STDMETHODIMP Accessible::get_accChild(VARIANT child, IDispatch** object) {
    if (object == nullptr) {
        return E_INVALIDARG;
    }
    *object = nullptr;
    return Of(child, [&](LONG number) {
        *object = number == CHILDID_SELF ? nullptr : Child(number).Detach();
        return *object == nullptr ? S_FALSE : S_OK;
    });
}

STDMETHODIMP Accessible::get_accName(VARIANT child, BSTR* name) {
    return Text(child, name, &Element::name);
}

STDMETHODIMP Accessible::get_accValue(VARIANT child, BSTR* value) {
    return Text(child, value, &Element::value);
}

STDMETHODIMP Accessible::get_accDefaultAction(VARIANT child, BSTR* action) {
    return Text(child, action, &Element::defaultAction);
}

STDMETHODIMP Accessible::get_accDescription(VARIANT, BSTR* text) {
    return NoText(text);
}

STDMETHODIMP Accessible::get_accHelp(VARIANT, BSTR* text) {
    return NoText(text);
}

STDMETHODIMP Accessible::get_accKeyboardShortcut(VARIANT, BSTR* text) {
    return NoText(text);
}

STDMETHODIMP Accessible::get_accRole(VARIANT child, VARIANT* role) {
    if (role == nullptr) {
        return E_INVALIDARG;
    }
    role->vt = VT_EMPTY;
    return Of(child, [&](LONG number) {
        role->lVal = Describe(number).role;
        role->vt = VT_I4;
        return S_OK;
    });
}

STDMETHODIMP Accessible::get_accState(VARIANT child, VARIANT* state) {
    if (state == nullptr) {
        return E_INVALIDARG;
    }
    state->vt = VT_EMPTY;
    return Of(child, [&](LONG number) {
        state->lVal = Describe(number).state;
        state->vt = VT_I4;
        return S_OK;
    });
}

STDMETHODIMP Accessible::get_accFocus(VARIANT* child) {
    if (child == nullptr) {
        return E_INVALIDARG;
    }
    child->vt = VT_EMPTY;
    if (Window() == nullptr || GetFocus() != Window()) {
        return S_FALSE;
    }
    return Guarded([&] { return Hand(FocusedChild(), child); });
}

STDMETHODIMP Accessible::get_accSelection(VARIANT* children) {
    if (children == nullptr) {
        return E_INVALIDARG;
    }
    children->vt = VT_EMPTY;
    if (Window() == nullptr) {
        return CO_E_OBJNOTCONNECTED;
    }
    return Guarded([&]() -> HRESULT {
        std::vector<LONG> selected = SelectedChildren();
        if (selected.empty()) {
            return S_FALSE;
        }
        if (selected.size() == 1) {
            return Hand(selected.front(), children);
        }
        children->punkVal = new ChildEnumerator(std::move(selected));
        children->vt = VT_UNKNOWN;
        return S_OK;
    });
}

STDMETHODIMP Accessible::accSelect(LONG flags, VARIANT child) {
    return Of(child, [&](LONG number) {
        Select(flags, number);
        return S_OK;
    });
}

STDMETHODIMP Accessible::accLocation(LONG* left, LONG* top, LONG* width, LONG* height,
                                     VARIANT child) {
    if (left == nullptr || top == nullptr || width == nullptr || height == nullptr) {
        return E_INVALIDARG;
    }
    return Of(child, [&](LONG number) {
        RECT place = Describe(number).place;
        MapWindowPoints(Window(), nullptr, reinterpret_cast<POINT*>(&place), 2);
        *left = place.left;
        *top = place.top;
        *width = place.right - place.left;
        *height = place.bottom - place.top;
        return S_OK;
    });
}

STDMETHODIMP Accessible::accNavigate(LONG way, VARIANT start, VARIANT* end) {
    if (end == nullptr) {
        return E_INVALIDARG;
    }
    end->vt = VT_EMPTY;
    return Of(start, [&](LONG number) -> HRESULT {
        const LONG count = ChildCount();
        LONG next = 0;
        if (number == CHILDID_SELF) {
            next = way == NAVDIR_FIRSTCHILD ? 1 : way == NAVDIR_LASTCHILD ? count : 0;
        } else {
            const bool forward = way == NAVDIR_NEXT || way == NAVDIR_DOWN || way == NAVDIR_RIGHT;
            const bool back = way == NAVDIR_PREVIOUS || way == NAVDIR_UP || way == NAVDIR_LEFT;
            next = forward ? number + 1 : back ? number - 1 : 0;
        }
        return next < 1 || next > count ? S_FALSE : Hand(next, end);
    });
}

STDMETHODIMP Accessible::accHitTest(LONG left, LONG top, VARIANT* child) {
    if (child == nullptr) {
        return E_INVALIDARG;
    }
    child->vt = VT_EMPTY;
    if (Window() == nullptr) {
        return CO_E_OBJNOTCONNECTED;
    }
    return Guarded([&]() -> HRESULT {
        POINT point{left, top};
        MapWindowPoints(nullptr, Window(), &point, 1);
        const RECT client = ClientOf(Window());
        return PtInRect(&client, point) == FALSE ? S_FALSE : Hand(ChildAt(point), child);
    });
}

STDMETHODIMP Accessible::accDoDefaultAction(VARIANT child) {
    return Of(child, [&](LONG number) {
        Act(number);
        return S_OK;
    });
}

} // namespace talvix::grid
