#pragma once

#include "automation/member_table.h"
#include "grid/model/grid_model.h"

#include <memory>

namespace talvix::grid {

using SharedGrid = std::shared_ptr<GridModel>;

/// The grid as automation clients see it.
class GridObject : public Tabled<GridObject> {
public:
    explicit GridObject(SharedGrid grid) : model(std::move(grid)) {}
    static const MemberTable<GridObject>& Members();
    std::u16string TypeName() const override { return u"Grid"; }
    Subscription Subscribe(std::shared_ptr<EventSink> sink,
                           std::span<const std::u16string_view>) override {
        return model->events.Connect(sink);
    }
    const SharedGrid model;
};

class ColumnsObject : public Tabled<ColumnsObject> {
public:
    explicit ColumnsObject(SharedGrid grid) : model(std::move(grid)) {}
    static const MemberTable<ColumnsObject>& Members();
    std::u16string TypeName() const override { return u"Columns"; }
    std::shared_ptr<Sequence> Enumerate() override;
    const SharedGrid model;
};

class ColumnObject : public Tabled<ColumnObject> {
public:
    ColumnObject(SharedGrid grid, std::size_t columnIndex)
        : model(std::move(grid)), index(columnIndex) {}
    static const MemberTable<ColumnObject>& Members();
    std::u16string TypeName() const override { return u"Column"; }
    Column& Target() const { return model->columns.At(index); }
    const SharedGrid model;
    const std::size_t index;
};

class RowsObject : public Tabled<RowsObject> {
public:
    explicit RowsObject(SharedGrid grid) : model(std::move(grid)) {}
    static const MemberTable<RowsObject>& Members();
    std::u16string TypeName() const override { return u"Rows"; }
    std::shared_ptr<Sequence> Enumerate() override;
    const SharedGrid model;
};

class RowObject : public Tabled<RowObject> {
public:
    RowObject(SharedGrid grid, RowRef rowRef) : model(std::move(grid)), row(rowRef) {}
    static const MemberTable<RowObject>& Members();
    std::u16string TypeName() const override { return u"Row"; }
    const SharedGrid model;
    const RowRef row;
};

class GroupsObject : public Tabled<GroupsObject> {
public:
    explicit GroupsObject(SharedGrid grid) : model(std::move(grid)) {}
    static const MemberTable<GroupsObject>& Members();
    std::u16string TypeName() const override { return u"Groups"; }
    std::shared_ptr<Sequence> Enumerate() override;
    const SharedGrid model;
};

class SelectionObject : public Tabled<SelectionObject> {
public:
    explicit SelectionObject(SharedGrid grid) : model(std::move(grid)) {}
    static const MemberTable<SelectionObject>& Members();
    std::u16string TypeName() const override { return u"Selection"; }
    std::shared_ptr<Sequence> Enumerate() override;
    const SharedGrid model;
};

class RangeObject : public Tabled<RangeObject> {
public:
    explicit RangeObject(Range rowRange) : range(std::move(rowRange)) {}
    static const MemberTable<RangeObject>& Members();
    std::u16string TypeName() const override { return u"Range"; }
    const Range range;
};

class HitTestObject : public Tabled<HitTestObject> {
public:
    explicit HitTestObject(HitResult result) : hit(result) {}
    static const MemberTable<HitTestObject>& Members();
    std::u16string TypeName() const override { return u"HitTest"; }
    const HitResult hit;
};

/// The Row object of a row; Nothing for no row.
Value RowValue(const SharedGrid& grid, const RowRef& row);
/// The row that a Row object of this grid, a row number or Nothing stands for.
RowRef RowFrom(const SharedGrid& grid, const Value& rowOrNumber);
/// Order argument: 0 or left out is ascending, 1 descending; anything else raises Failure.
bool IsDescending(const Value& order, const Culture& culture);

} // namespace talvix::grid

// Rows are called for every cell: their calls are compiled once, for speed, with their members.
extern template class talvix::MemberTable<talvix::grid::RowsObject>;
extern template class talvix::MemberTable<talvix::grid::RowObject>;
extern template class talvix::Tabled<talvix::grid::RowsObject>;
extern template class talvix::Tabled<talvix::grid::RowObject>;
