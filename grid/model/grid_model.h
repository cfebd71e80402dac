#pragma once

#include "automation/event_source.h"
#include "grid/model/layout.h"
#include "grid/model/row_model.h"

#include <memory>
#include <span>
#include <string>

namespace talvix::grid {

/// The window that shows a grid, while there is one.
class GridView {
public:
    virtual ~GridView() = default;
    /// Something to be seen has changed.
    virtual void Refresh() = 0;
    /// Pixels at 96 dpi that the column's caption and longest texts need.
    virtual std::int32_t BestWidth(std::size_t column) = 0;
    /// Bring a row to the middle of things.
    virtual void ScrollTo(std::int32_t number) = 0;
    virtual std::int64_t Window() const = 0;
};

/// The options that only change looks and manners.
struct GridOptions {
    std::u16string groupByBoxText;
    std::int32_t groupIndent = 18;
    std::int64_t imageList = 0;
    bool multiSelect = true;
    bool fullRowSelect = true;
    bool allowEdit = false;
    std::optional<std::size_t> fileColumn; ///< index of the column that holds paths of files
};

struct HitResult {
    std::int32_t row = 0;     ///< number, 0 for none
    std::int32_t column = -1; ///< position, -1 for none
    Area area = Area::Nothing;
};

struct PixelPoint {
    std::int32_t x = 0;
    std::int32_t y = 0;
};

/// How the grouping changes, as the event that asks beforehand numbers it.
enum class GroupOperation : std::int32_t { Add = 1, Remove = 2, Move = 3 };

/// A grid with all that can be done to it, with or without a window.
class GridModel {
public:
    explicit GridModel(const Culture& userCulture)
        : culture(userCulture), columns(culture), rows(columns, culture), layout(columns) {}
    GridModel(const GridModel&) = delete;
    GridModel& operator=(const GridModel&) = delete;
    ~GridModel() = default;

    const Culture& culture;
    ColumnSet columns;
    RowModel rows;
    Layout layout;
    GridOptions options;
    EventSource events;
    GridView* view = nullptr;

    Column& AddColumn(std::u16string_view key);
    bool Redraw() const { return redraw_; }
    /// While off, nothing is painted, scrolled or sorted into place; on, all that waited is done.
    void SetRedraw(bool on);
    /// Columns were moved, shown, hidden or given another kind.
    void ColumnsChanged();
    /// Tells the window that something changed.
    void Changed() const;
    void Sort(std::size_t column, bool descending);
    void RefreshSort();
    /// Opens the headings above a row and scrolls it into view.
    void Expand(const RowRef& row);
    /// Replaces the grouping and raises AfterGroupChange.
    void ChangeGroups(std::vector<Grouping> groups);
    HitResult HitTest(std::int32_t x, std::int32_t y);
    /// A point that hits the row, as far as it is in sight; of no row, one below the header.
    PixelPoint PointOf(const RowRef& row);
    /// How a cell is shown; a heading gives "Caption: value (count)".
    std::u16string TextOf(const RowRef& row, std::size_t column) const;
    std::u16string HeadingText(const GroupNode& node) const;

    /// Gives columns the width that their texts need; false without a window to measure with.
    bool FitColumns(std::span<const std::size_t> which);

    // What a user's hands do; the events that ask beforehand are raised.
    /// Sorts by the column, the other way round when it was sorted by it. False when refused.
    bool ClickHeading(std::size_t column);
    bool SortByUser(std::size_t column, bool descending);
    /// Groups by one column more, at a place in the grouping. False when refused.
    bool GroupByUser(std::size_t column, std::size_t place);
    bool UngroupByUser(std::size_t place);
    bool MoveGroupByUser(std::size_t from, std::size_t to);

private:
    bool AskGroupChange(GroupOperation operation, std::int32_t what, std::int32_t place);

    bool redraw_ = true;
    bool placementWaits_ = false;
    std::vector<RowRef> revealsWait_;
};

} // namespace talvix::grid
