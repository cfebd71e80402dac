#include "automation/failure.h"
#include "grid/control/accessible.h"
#include "grid/control/client_area.h"

#include <algorithm>
#include <array>

namespace talvix::grid {

namespace {

class AccessibleRow : public Accessible {
public:
    AccessibleRow(SharedWindow window, const RowRef& row)
        : Accessible(std::move(window)), row_(row) {}

protected:
    LONG ChildCount() override {
        if (IsGone() || IsGroup()) {
            return 0;
        }
        return static_cast<LONG>(VisiblePositions().size());
    }

    Element Describe(LONG child) override {
        if (IsGone()) {
            Element gone;
            gone.role = ROLE_SYSTEM_ROW;
            gone.state = STATE_SYSTEM_UNAVAILABLE | STATE_SYSTEM_INVISIBLE;
            return gone;
        }
        return child == CHILDID_SELF ? DescribeRow() : DescribeCell(PositionOf(child));
    }

    HRESULT Parent(IDispatch** parent) override {
        *parent = MakeAccessibleGrid(Shared()).Detach();
        return S_OK;
    }

    void Act(LONG child) override {
        if (IsGone()) {
            return;
        }
        if (IsHeader()) {
            if (child != CHILDID_SELF) {
                Model().ClickHeading(Model().columns.IndexAt(PositionOf(child)));
            }
        } else if (const GroupNode* heading = Model().rows.HeadingOf(row_)) {
            Model().rows.SetExpanded(row_, !heading->expanded);
            Model().Changed();
        } else {
            DoubleClick();
        }
    }

    LONG ChildAt(POINT point) override {
        const std::int32_t position = Model().layout.ColumnAt(point.x);
        const std::vector<std::size_t> visible = VisiblePositions();
        const auto found =
            std::find(visible.begin(), visible.end(), static_cast<std::size_t>(position));
        return position < 0 || found == visible.end()
                   ? CHILDID_SELF
                   : static_cast<LONG>(found - visible.begin()) + 1;
    }

private:
    bool IsHeader() const { return row_.id == 0; }
    bool IsGone() { return !IsHeader() && !Model().rows.IsAlive(row_); }
    bool IsGroup() { return !IsHeader() && Model().rows.HeadingOf(row_) != nullptr; }

    std::vector<std::size_t> VisiblePositions() const {
        std::vector<std::size_t> positions;
        for (std::size_t position = 0; position < Model().columns.Count(); ++position) {
            if (Model().layout.WidthAt(position) > 0) {
                positions.push_back(position);
            }
        }
        return positions;
    }
    std::size_t PositionOf(LONG child) const {
        return VisiblePositions().at(static_cast<std::size_t>(child) - 1);
    }

    RECT RowPlace() {
        const Layout& layout = Model().layout;
        const RECT client = ClientOf(Window());
        if (IsHeader()) {
            return {0, layout.GroupBoxBottom(), client.right, layout.RowsTop()};
        }
        const std::int32_t top = Model().PointOf(row_).y - layout.metrics.rowHeight / 2;
        return {0, top, client.right, top + layout.metrics.rowHeight};
    }

    LONG Sight(const RECT& place) {
        const RECT client = ClientOf(Window());
        const LONG rowsTop = IsHeader() ? 0 : Model().layout.RowsTop();
        const bool isOff = place.bottom <= rowsTop || place.top >= client.bottom ||
                           place.right <= 0 || place.left >= client.right;
        return isOff ? STATE_SYSTEM_OFFSCREEN : 0;
    }

    Element DescribeRow() {
        Element element;
        element.role = ROLE_SYSTEM_ROW;
        element.place = RowPlace();
        element.state = Sight(element.place);
        if (IsHeader()) {
            element.name = u"Spalten";
            return element;
        }
        RowModel& rows = Model().rows;
        const bool isCurrent = rows.Current() == row_;
        element.state |= STATE_SYSTEM_FOCUSABLE | STATE_SYSTEM_SELECTABLE |
                         (rows.IsSelected(row_) ? STATE_SYSTEM_SELECTED : 0) |
                         (isCurrent && GetFocus() == Window() ? STATE_SYSTEM_FOCUSED : 0);
        if (const GroupNode* heading = rows.HeadingOf(row_)) {
            element.role = ROLE_SYSTEM_OUTLINEITEM;
            element.name = Model().HeadingText(*heading);
            element.state |= heading->expanded ? STATE_SYSTEM_EXPANDED : STATE_SYSTEM_COLLAPSED;
            element.defaultAction = heading->expanded ? u"Schließen" : u"Öffnen";
            return element;
        }
        for (const std::size_t position : VisiblePositions()) {
            const std::u16string text = Model().TextOf(row_, Model().columns.IndexAt(position));
            const bool isImage =
                Model().columns.At(Model().columns.IndexAt(position)).dataType == DataType::Image;
            if (!text.empty() && !isImage) {
                element.name += (element.name.empty() ? u"" : u"; ") + text;
            }
        }
        element.defaultAction = u"Doppelklick";
        return element;
    }

    Element DescribeCell(std::size_t position) {
        Element element;
        const std::size_t index = Model().columns.IndexAt(position);
        const Column& column = Model().columns.At(index);
        const RECT row = RowPlace();
        const std::int32_t left = Model().layout.LeftOf(position);
        element.place = {left, row.top, left + Model().layout.WidthAt(position), row.bottom};
        element.name = column.caption;
        element.state = Sight(element.place) | STATE_SYSTEM_READONLY;
        if (IsHeader()) {
            element.role = ROLE_SYSTEM_COLUMNHEADER;
            element.defaultAction = u"Sortieren";
            return element;
        }
        element.role = ROLE_SYSTEM_CELL;
        element.value = column.dataType == DataType::Image ? u"" : Model().TextOf(row_, index);
        element.defaultAction = u"Doppelklick";
        return element;
    }

    /// What a mouse's double click on the row raises.
    void DoubleClick() {
        Model().rows.SetCurrent(row_);
        Model().Changed();
        Model().events.Raise(u"DblClick", {});
        if (IsGone()) {
            return;
        }
        const PixelPoint point = Model().PointOf(row_);
        std::array<Value, 4> arguments{std::int16_t{1}, std::int16_t{0}, point.x, point.y};
        Model().events.Raise(u"MouseUp", arguments);
    }

    RowRef row_; ///< none for the header
};

} // namespace

ComPtr<IAccessible> MakeAccessibleRow(SharedWindow window, const RowRef& row) {
    return ComPtr<IAccessible>::Adopt(new AccessibleRow(std::move(window), row));
}

} // namespace talvix::grid
