#include "grid/control/accessible.h"
#include "grid/control/client_area.h"
#include "platform/win32/com/bstr.h"

#include <algorithm>

namespace talvix::grid {

namespace {

/// Children before the first row.
LONG HeaderChildren(const GridModel& model) {
    return model.layout.headerVisible ? 1 : 0;
}

class AccessibleGrid : public Accessible {
public:
    using Accessible::Accessible;

protected:
    LONG ChildCount() override {
        return HeaderChildren(Model()) + static_cast<LONG>(Model().rows.ShownNumbers().size());
    }

    Element Describe(LONG child) override {
        if (child != CHILDID_SELF) {
            return DescribeChild(child);
        }
        Element table;
        table.name = u"Liste";
        table.role = ROLE_SYSTEM_TABLE;
        table.state = STATE_SYSTEM_FOCUSABLE | (GetFocus() == Window() ? STATE_SYSTEM_FOCUSED : 0) |
                      (Model().options.multiSelect ? STATE_SYSTEM_MULTISELECTABLE : 0);
        table.place = ClientOf(Window());
        return table;
    }

    HRESULT Parent(IDispatch** parent) override {
        return AccessibleObjectFromWindow(Window(), static_cast<DWORD>(OBJID_WINDOW), IID_IDispatch,
                                          reinterpret_cast<void**>(parent));
    }

    ComPtr<IAccessible> Child(LONG child) override {
        return MakeAccessibleRow(Shared(), RowOf(child));
    }

    void Act(LONG child) override {
        if (child != CHILDID_SELF) {
            VARIANT self{};
            self.vt = VT_I4;
            Child(child)->accDoDefaultAction(self);
        }
    }

    void Select(LONG flags, LONG child) override {
        const RowRef row = child == CHILDID_SELF ? RowRef{} : RowOf(child);
        if (row.id == 0) {
            return;
        }
        RowModel& rows = Model().rows;
        const std::int32_t number = rows.NumberOf(row);
        const RowRef anchor = rows.Current();
        if ((flags & SELFLAG_TAKESELECTION) != 0) {
            rows.ClearSelection();
        }
        if ((flags & SELFLAG_EXTENDSELECTION) != 0 && anchor.id != 0) {
            const std::int32_t from = rows.NumberOf(anchor);
            rows.SelectUnfiltered(std::min(from, number), std::max(from, number));
        }
        if ((flags & (SELFLAG_TAKESELECTION | SELFLAG_ADDSELECTION)) != 0) {
            rows.Select(row, true);
        }
        if ((flags & SELFLAG_REMOVESELECTION) != 0) {
            rows.Select(row, false);
        }
        if ((flags & SELFLAG_TAKEFOCUS) != 0) {
            SetFocus(Window());
            rows.SetCurrent(row);
            if (Model().view != nullptr) {
                Model().view->ScrollTo(number);
            }
        }
        Model().Changed();
    }

    LONG FocusedChild() override { return AccessibleChildOf(Model(), Model().rows.Current()); }

    std::vector<LONG> SelectedChildren() override {
        std::vector<LONG> children;
        const std::vector<std::int32_t>& shown = Model().rows.ShownNumbers();
        for (const Range& range : Model().rows.Ranges()) {
            auto at = std::lower_bound(shown.begin(), shown.end(), range.first);
            for (; at != shown.end() && *at <= range.second; ++at) {
                children.push_back(HeaderChildren(Model()) + static_cast<LONG>(at - shown.begin()) +
                                   1);
            }
        }
        return children;
    }

    LONG ChildAt(POINT point) override {
        const HitResult hit = Model().HitTest(point.x, point.y);
        if (hit.area == Area::Heading) {
            return 1;
        }
        return hit.row == 0 ? CHILDID_SELF : AccessibleChildOf(Model(), Model().rows.At(hit.row));
    }

private:
    /// No row for the header.
    RowRef RowOf(LONG child) {
        const LONG line = child - HeaderChildren(Model()) - 1;
        const std::vector<std::int32_t>& shown = Model().rows.ShownNumbers();
        return line < 0 ? RowRef{} : Model().rows.At(shown.at(static_cast<std::size_t>(line)));
    }

    Element DescribeChild(LONG child) {
        Element element;
        const ComPtr<IAccessible> object = Child(child);
        // A row describes itself; asked here through its own interface it stays in one place.
        VARIANT self{};
        self.vt = VT_I4;
        VARIANT number{};
        object->get_accRole(self, &number);
        element.role = number.lVal;
        object->get_accState(self, &number);
        element.state = number.lVal;
        const auto text = [&](HRESULT (STDMETHODCALLTYPE IAccessible::*member)(VARIANT, BSTR*)) {
            Bstr found;
            (object.Get()->*member)(self, found.Out());
            return found.Text();
        };
        element.name = text(&IAccessible::get_accName);
        element.value = text(&IAccessible::get_accValue);
        element.defaultAction = text(&IAccessible::get_accDefaultAction);
        LONG left = 0;
        LONG top = 0;
        LONG width = 0;
        LONG height = 0;
        object->accLocation(&left, &top, &width, &height, self);
        element.place = RECT{left, top, left + width, top + height};
        MapWindowPoints(nullptr, Window(), reinterpret_cast<POINT*>(&element.place), 2);
        return element;
    }
};

} // namespace

LONG AccessibleChildOf(GridModel& model, const RowRef& row) {
    if (!model.rows.IsAlive(row)) {
        return CHILDID_SELF;
    }
    const std::vector<std::int32_t>& shown = model.rows.ShownNumbers();
    const std::int32_t number = model.rows.NumberOf(row);
    const auto found = std::lower_bound(shown.begin(), shown.end(), number);
    return found == shown.end() || *found != number
               ? CHILDID_SELF
               : HeaderChildren(model) + static_cast<LONG>(found - shown.begin()) + 1;
}

ComPtr<IAccessible> MakeAccessibleGrid(SharedWindow window) {
    return ComPtr<IAccessible>::Adopt(new AccessibleGrid(std::move(window)));
}

} // namespace talvix::grid
