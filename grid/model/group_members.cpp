#include "automation/coercion.h"
#include "automation/text.h"
#include "grid/model/grid_objects.h"
#include "grid/model/item_sequence.h"

#include <algorithm>

namespace talvix::grid {

namespace {

using access::kGet;
using access::kMethod;

using Call = MemberCall;

/// A place counted from 1, as an index from 0.
std::size_t Place(const Value& value, std::size_t count, const Culture& culture,
                  std::u16string_view what) {
    const std::int32_t place = ToLong(value, culture);
    if (place < 1 || static_cast<std::size_t>(place) > count) {
        throw Failure(failure_number::kBadIndex, std::u16string(what) +
                                                     u" are numbered from 1 to " +
                                                     DecimalText(static_cast<long long>(count)));
    }
    return static_cast<std::size_t>(place) - 1;
}

std::size_t GroupPlace(const GroupsObject& groups, const Value& value) {
    return Place(value, groups.model->rows.Groups().size(), groups.model->culture, u"Groups");
}

Value GroupColumn(const SharedGrid& grid, std::size_t place) {
    return std::make_shared<ColumnObject>(grid, grid->rows.Groups()[place].column);
}

Value AddGroup(GroupsObject& object, const Call& call) {
    GridModel& model = *object.model;
    const std::size_t column = model.columns.IndexOf(call.At(0));
    std::vector<Grouping> groups = model.rows.Groups();
    if (std::any_of(groups.begin(), groups.end(),
                    [&](const Grouping& group) { return group.column == column; })) {
        throw Failure(failure_number::kInvalidArgument,
                      u"The grid is grouped by this column already");
    }
    groups.push_back({column, IsDescending(call.At(1), model.culture)});
    model.ChangeGroups(std::move(groups));
    return std::make_shared<ColumnObject>(object.model, column);
}

Value RemoveGroup(GroupsObject& object, const Call& call) {
    GridModel& model = *object.model;
    std::vector<Grouping> groups = model.rows.Groups();
    groups.erase(groups.begin() + static_cast<std::ptrdiff_t>(GroupPlace(object, call.At(0))));
    model.ChangeGroups(std::move(groups));
    return {};
}

Value ClearGroups(GroupsObject& object, const Call&) {
    if (!object.model->rows.Groups().empty()) {
        object.model->ChangeGroups({});
    }
    return {};
}

Value RangeAt(SelectionObject& selection, const Call& call) {
    const std::vector<Range>& ranges = selection.model->rows.Ranges();
    const std::size_t place =
        Place(call.At(0), ranges.size(), selection.model->culture, u"Ranges of the selection");
    return std::make_shared<RangeObject>(ranges[place]);
}

Value AddRange(SelectionObject& selection, const Call& call) {
    GridModel& model = *selection.model;
    const std::int32_t first = ToLong(call.At(0), model.culture);
    const std::int32_t last = ToLong(call.At(1), model.culture);
    model.rows.SelectRange(first, last);
    model.Changed();
    return {};
}

Value ClearSelection(SelectionObject& selection, const Call&) {
    selection.model->rows.ClearSelection();
    selection.model->Changed();
    return {};
}

std::vector<Member<GroupsObject>> GroupsTable() {
    return {
        {{u"Item", kGet, u"Index"},
         [](GroupsObject& groups, const Call& call) {
             return GroupColumn(groups.model, GroupPlace(groups, call.At(0)));
         }},
        {{u"Count", kGet, u""},
         [](GroupsObject& groups, const Call&) -> Value {
             return static_cast<std::int32_t>(groups.model->rows.Groups().size());
         }},
        {{u"Add", kMethod, u"Column [Order]"}, AddGroup},
        {{u"Remove", kMethod, u"Index"}, RemoveGroup},
        {{u"Clear", kMethod, u""}, ClearGroups},
    };
}

std::vector<Member<SelectionObject>> SelectionTable() {
    return {
        {{u"Item", kGet, u"Index"}, RangeAt},
        {{u"Count", kGet, u""},
         [](SelectionObject& selection, const Call&) -> Value {
             return static_cast<std::int32_t>(selection.model->rows.Ranges().size());
         }},
        {{u"Add", kMethod, u"First Last"}, AddRange},
        {{u"Clear", kMethod, u""}, ClearSelection},
    };
}

std::vector<Member<RangeObject>> RangeTable() {
    return {
        {{u"First", kGet, u""},
         [](RangeObject& object, const Call&) -> Value { return object.range.first; }},
        {{u"Last", kGet, u""},
         [](RangeObject& object, const Call&) -> Value { return object.range.second; }},
    };
}

std::vector<Member<HitTestObject>> HitTestTable() {
    return {
        {{u"Row", kGet, u""},
         [](HitTestObject& test, const Call&) -> Value { return test.hit.row; }},
        {{u"Column", kGet, u""},
         [](HitTestObject& test, const Call&) -> Value { return test.hit.column; }},
        {{u"Area", kGet, u""},
         [](HitTestObject& test, const Call&) -> Value {
             return static_cast<std::int32_t>(test.hit.area);
         }},
    };
}

} // namespace

const MemberTable<GroupsObject>& GroupsObject::Members() {
    static const MemberTable<GroupsObject> members(GroupsTable(), kDefaultMember);
    return members;
}

std::shared_ptr<Sequence> GroupsObject::Enumerate() {
    const SharedGrid grid = model;
    return std::make_shared<ItemSequence>(
        grid->rows.Groups().size(),
        [grid, groups = grid->rows.Groups()](std::size_t place) -> Value {
            return std::make_shared<ColumnObject>(grid, groups[place].column);
        });
}

const MemberTable<SelectionObject>& SelectionObject::Members() {
    static const MemberTable<SelectionObject> members(SelectionTable(), kDefaultMember);
    return members;
}

std::shared_ptr<Sequence> SelectionObject::Enumerate() {
    const auto ranges = std::make_shared<std::vector<Range>>(model->rows.Ranges());
    return std::make_shared<ItemSequence>(ranges->size(), [ranges](std::size_t at) -> Value {
        return std::make_shared<RangeObject>((*ranges)[at]);
    });
}

const MemberTable<RangeObject>& RangeObject::Members() {
    static const MemberTable<RangeObject> members(RangeTable());
    return members;
}

const MemberTable<HitTestObject>& HitTestObject::Members() {
    static const MemberTable<HitTestObject> members(HitTestTable());
    return members;
}

} // namespace talvix::grid
