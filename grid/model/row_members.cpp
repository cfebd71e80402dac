#include "automation/coercion.h"
#include "grid/model/grid_objects.h"
#include "grid/model/item_sequence.h"

namespace talvix::grid {

namespace {

constexpr unsigned kGet = access::kGet;
constexpr unsigned kGetPut = access::kGet | access::kPut;
constexpr unsigned kMethod = access::kMethod;

using Call = MemberCall;

Value Item(RowsObject& rows, const Call& call) {
    const std::int32_t number = ToLong(call.At(0), rows.model->culture);
    return RowValue(rows.model, rows.model->rows.At(number));
}

Value Add(RowsObject& rows, const Call&) {
    const RowRef row = rows.model->rows.Add();
    rows.model->Changed();
    return RowValue(rows.model, row);
}

Value Remove(RowsObject& rows, const Call& call) {
    const RowRef row = RowFrom(rows.model, call.At(0));
    if (row.id == 0) {
        throw Failure(failure_number::kBadIndex, u"A row or a row number from 1 on was expected");
    }
    rows.model->rows.Remove(row);
    rows.model->Changed();
    return {};
}

Value Clear(RowsObject& rows, const Call&) {
    rows.model->rows.Clear();
    rows.model->Changed();
    return {};
}

Value CellValue(RowObject& row, const Call& call) {
    GridModel& model = *row.model;
    const std::size_t column = model.columns.IndexOf(call.At(0));
    if (!call.IsPut()) {
        return model.rows.Get(row.row, column);
    }
    if (call.put->Is<Missing>()) {
        throw Failure(failure_number::kArgumentNotOptional, u"A cell needs a value");
    }
    model.rows.Set(row.row, column, *call.put);
    model.Changed();
    return {};
}

Value CellText(RowObject& row, const Call& call) {
    return row.model->TextOf(row.row, row.model->columns.IndexOf(call.At(0)));
}

Value Picture(RowObject& row, const Call& call) {
    GridModel& model = *row.model;
    const std::size_t column = model.columns.IndexOf(call.At(0));
    if (!call.IsPut()) {
        return model.rows.PictureOf(row.row, column);
    }
    model.rows.SetPicture(row.row, column, *call.put);
    model.Changed();
    return {};
}

Value Expanded(RowObject& row, const Call& call) {
    GridModel& model = *row.model;
    if (!call.IsPut()) {
        const GroupNode* heading = model.rows.HeadingOf(row.row);
        return heading != nullptr && heading->expanded;
    }
    model.rows.SetExpanded(row.row, ToBoolean(*call.put, model.culture));
    model.Changed();
    return {};
}

Value Selected(RowObject& row, const Call& call) {
    GridModel& model = *row.model;
    if (!call.IsPut()) {
        return model.rows.IsSelected(row.row);
    }
    model.rows.Select(row.row, ToBoolean(*call.put, model.culture));
    model.Changed();
    return {};
}

std::vector<Member<RowsObject>> RowsTable() {
    return {
        {{u"Item", kGet, u"Number"}, Item},
        {{u"Count", kGet, u""},
         [](RowsObject& rows, const Call&) -> Value { return rows.model->rows.Count(); }},
        {{u"Add", kMethod, u""}, Add},
        {{u"Remove", kMethod, u"RowOrNumber"}, Remove},
        {{u"Clear", kMethod, u""}, Clear},
    };
}

std::vector<Member<RowObject>> RowTable() {
    return {
        {{u"Value", kGetPut, u"Column"}, CellValue},
        {{u"Text", kGet, u"Column"}, CellText},
        {{u"Picture", kGetPut, u"Column"}, Picture},
        {{u"IsGroup", kGet, u""},
         [](RowObject& row, const Call&) -> Value {
             return row.model->rows.HeadingOf(row.row) != nullptr;
         }},
        {{u"Number", kGet, u""},
         [](RowObject& row, const Call&) -> Value { return row.model->rows.NumberOf(row.row); }},
        {{u"Level", kGet, u""},
         [](RowObject& row, const Call&) -> Value { return row.model->rows.LevelOf(row.row); }},
        {{u"Expanded", kGetPut, u""}, Expanded},
        {{u"Selected", kGetPut, u""}, Selected},
        {{u"Id", kGet, u""}, [](RowObject& row, const Call&) -> Value { return row.row.id; }},
    };
}

} // namespace

const MemberTable<RowsObject>& RowsObject::Members() {
    static const MemberTable<RowsObject> members(RowsTable(), kDefaultMember);
    return members;
}

/// The rows as they stand now, whatever moves or goes meanwhile.
std::shared_ptr<Sequence> RowsObject::Enumerate() {
    const SharedGrid grid = model;
    auto refs = std::make_shared<std::vector<RowRef>>();
    for (std::int32_t number = 1; number <= grid->rows.Count(); ++number) {
        refs->push_back(grid->rows.At(number));
    }
    return std::make_shared<ItemSequence>(
        refs->size(), [grid, refs](std::size_t at) { return RowValue(grid, (*refs)[at]); });
}

const MemberTable<RowObject>& RowObject::Members() {
    static const MemberTable<RowObject> members(RowTable(), kDefaultMember);
    return members;
}

} // namespace talvix::grid

template class talvix::MemberTable<talvix::grid::RowsObject>;
template class talvix::MemberTable<talvix::grid::RowObject>;
template class talvix::Tabled<talvix::grid::RowsObject>;
template class talvix::Tabled<talvix::grid::RowObject>;
