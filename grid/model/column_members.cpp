#include "automation/coercion.h"
#include "automation/text.h"
#include "grid/model/grid_objects.h"
#include "grid/model/item_sequence.h"

#include <algorithm>
#include <iterator>

namespace talvix::grid {

namespace {

using access::kGet;
using access::kGetPut;
using access::kMethod;
constexpr std::int32_t kWidest = 10000;

using Call = MemberCall;

Value ColumnAtPosition(const SharedGrid& grid, std::size_t position) {
    return std::make_shared<ColumnObject>(grid, grid->columns.IndexAt(position));
}

Value Item(ColumnsObject& columns, const Call& call) {
    return std::make_shared<ColumnObject>(columns.model,
                                          columns.model->columns.IndexOf(call.At(0)));
}

Value Add(ColumnsObject& columns, const Call& call) {
    const Column& added = columns.model->AddColumn(ToText(call.At(0), columns.model->culture));
    return std::make_shared<ColumnObject>(columns.model, added.index);
}

Value Position(ColumnObject& column, const Call& call) {
    GridModel& model = *column.model;
    if (!call.IsPut()) {
        return static_cast<std::int32_t>(model.columns.PositionOf(column.index));
    }
    model.columns.Move(column.index, ToLong(*call.put, model.culture));
    model.Changed();
    return {};
}

Value Caption(ColumnObject& column, const Call& call) {
    if (!call.IsPut()) {
        return column.Target().caption;
    }
    column.Target().caption = ToText(*call.put, column.model->culture);
    column.model->Changed();
    return {};
}

Value Width(ColumnObject& column, const Call& call) {
    if (!call.IsPut()) {
        return column.Target().width;
    }
    const std::int32_t width = ToLong(*call.put, column.model->culture);
    if (width < 0 || width > kWidest) {
        throw Failure(failure_number::kInvalidArgument, u"A width lies between 0 and 10000");
    }
    column.Target().width = width;
    column.model->Changed();
    return {};
}

Value Hidden(ColumnObject& column, const Call& call) {
    if (!call.IsPut()) {
        return column.Target().hidden;
    }
    column.Target().hidden = ToBoolean(*call.put, column.model->culture);
    column.model->ColumnsChanged();
    return {};
}

/// Reads or writes one of a few numbers.
template <typename Code, std::size_t count>
Value Choice(ColumnObject& column, const Call& call, Code Column::*member,
             const Code (&known)[count], std::u16string_view allowed) {
    if (!call.IsPut()) {
        return static_cast<std::int32_t>(column.Target().*member);
    }
    const auto code = static_cast<Code>(ToLong(*call.put, column.model->culture));
    if (std::find(std::begin(known), std::end(known), code) == std::end(known)) {
        throw Failure(failure_number::kInvalidArgument, allowed);
    }
    column.Target().*member = code;
    column.model->ColumnsChanged();
    return {};
}

Value AnyAlignment(ColumnObject& column, const Call& call, Alignment Column::*member) {
    static constexpr Alignment known[] = {Alignment::Centre, Alignment::Left, Alignment::Right};
    return Choice(column, call, member, known,
                  u"An alignment is 3 (centred), 4 (left) or 6 (right)");
}

Value Type(ColumnObject& column, const Call& call) {
    static constexpr DataType known[] = {DataType::Long, DataType::Date, DataType::Text,
                                         DataType::Image};
    return Choice(column, call, &Column::dataType, known,
                  u"A data type is 3 (Long), 7 (Date), 8 (Text) or 65 (Image)");
}

Value BestFit(ColumnObject& column, const Call&) {
    const std::size_t which[] = {column.index};
    if (!column.model->FitColumns(which)) {
        throw Failure(failure_number::kInvalidArgument,
                      u"A column can be fitted to its texts once the grid has a window");
    }
    return {};
}

Value SortOrder(ColumnObject& column, const Call&) {
    const auto sorting = column.model->rows.Sorting();
    if (!sorting || sorting->column != column.index) {
        return std::int32_t{-1};
    }
    return std::int32_t{sorting->descending ? 1 : 0};
}

std::vector<Member<ColumnsObject>> ColumnsTable() {
    return {
        {{u"Item", kGet, u"KeyOrPosition"}, Item},
        {{u"Count", kGet, u""},
         [](ColumnsObject& columns, const Call&) -> Value {
             return static_cast<std::int32_t>(columns.model->columns.Count());
         }},
        {{u"Add", kMethod, u"Key"}, Add},
    };
}

std::vector<Member<ColumnObject>> ColumnTable() {
    return {
        {{u"Key", kGet, u""},
         [](ColumnObject& column, const Call&) -> Value { return column.Target().key; }},
        {{u"Position", kGetPut, u""}, Position},
        {{u"Index", kGet, u""},
         [](ColumnObject& column, const Call&) -> Value {
             return static_cast<std::int32_t>(column.index);
         }},
        {{u"Caption", kGetPut, u""}, Caption},
        {{u"DataType", kGetPut, u""}, Type},
        {{u"Width", kGetPut, u""}, Width},
        {{u"Alignment", kGetPut, u""},
         [](ColumnObject& column, const Call& call) {
             return AnyAlignment(column, call, &Column::alignment);
         }},
        {{u"HeaderAlignment", kGetPut, u""},
         [](ColumnObject& column, const Call& call) {
             return AnyAlignment(column, call, &Column::headerAlignment);
         }},
        {{u"Hidden", kGetPut, u""}, Hidden},
        {{u"SortOrder", kGet, u""}, SortOrder},
        {{u"BestFit", kMethod, u""}, BestFit},
    };
}

} // namespace

const MemberTable<ColumnsObject>& ColumnsObject::Members() {
    static const MemberTable<ColumnsObject> members(ColumnsTable(), kDefaultMember);
    return members;
}

std::shared_ptr<Sequence> ColumnsObject::Enumerate() {
    const SharedGrid grid = model;
    return std::make_shared<ItemSequence>(grid->columns.Count(), [grid](std::size_t position) {
        return ColumnAtPosition(grid, position);
    });
}

const MemberTable<ColumnObject>& ColumnObject::Members() {
    static const MemberTable<ColumnObject> members(ColumnTable());
    return members;
}

} // namespace talvix::grid
