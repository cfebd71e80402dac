#include "grid/model/saved_layout.h"

#include "automation/failure.h"
#include "automation/text.h"
#include "grid/model/delimited_text.h"

#include <algorithm>
#include <iterator>

namespace talvix::grid {

namespace {

constexpr std::u16string_view kSeparator = u";";
constexpr std::u16string_view kLayoutMark = u"TalvixGrid.Layout";
constexpr std::u16string_view kStateMark = u"TalvixGrid.State";
constexpr std::int32_t kVersion = 1;
constexpr std::int32_t kWidestColumn = 10000;

using Record = std::vector<Field>;

[[noreturn]] void Refuse(std::size_t line, std::u16string_view why) {
    throw Failure(failure_number::kInvalidArgument,
                  u"Line " + DecimalText(static_cast<long long>(line) + 1) +
                      u" of the saved layout: " + std::u16string(why));
}

void Append(std::u16string& out, std::initializer_list<std::u16string_view> texts,
            std::initializer_list<std::int32_t> numbers) {
    bool first = true;
    const auto append = [&](std::u16string_view text) {
        out += first ? std::u16string_view() : kSeparator;
        AppendField(out, {std::u16string(text), false}, kSeparator);
        first = false;
    };
    for (const std::u16string_view text : texts) {
        append(text);
    }
    for (const std::int32_t number : numbers) {
        append(DecimalText(number));
    }
    out += u"\r\n";
}

/// One line, checked for its number of fields; numbers are read with their limits.
class SavedLine {
public:
    SavedLine(const Record& record, std::size_t number) : record_(record), number_(number) {}

    std::u16string_view Kind() const { return record_.front().text; }
    std::u16string_view Text(std::size_t at) const {
        if (at >= record_.size()) {
            Refuse(number_, u"a field is missing");
        }
        return record_[at].text;
    }
    std::int32_t Number(std::size_t at, std::int32_t lowest, std::int32_t highest) const {
        const auto number = PlainNumber(Text(at));
        if (!number || *number < lowest || *number > highest ||
            *number != static_cast<std::int32_t>(*number)) {
            Refuse(number_, u"\"" + std::u16string(Text(at)) + u"\" is no number from " +
                                DecimalText(lowest) + u" to " + DecimalText(highest));
        }
        return static_cast<std::int32_t>(*number);
    }
    bool Flag(std::size_t at) const { return Number(at, 0, 1) != 0; }

private:
    const Record& record_;
    std::size_t number_;
};

/// A layout that was read and checked, before anything of the grid is touched.
struct ReadLayout {
    struct ColumnPlace {
        std::size_t index;
        std::int32_t width;
        bool hidden;
    };
    std::vector<ColumnPlace> columns;
    std::optional<Grouping> sorting;
    std::vector<Grouping> groups;
};

std::optional<std::size_t> IndexOf(const ColumnSet& columns, std::u16string_view key) {
    for (std::size_t index = 0; index < columns.Count(); ++index) {
        if (SameName(columns.At(index).key, key)) {
            return index;
        }
    }
    return std::nullopt;
}

void CheckMark(const std::vector<Record>& records, std::u16string_view mark) {
    if (records.empty() || records.front().front().text != mark) {
        Refuse(0, u"\"" + std::u16string(mark) + u"\" was expected");
    }
    SavedLine(records.front(), 0).Number(1, kVersion, kVersion);
}

/// Takes a line of the layout; false for a line of another kind.
bool TakeLine(const SavedLine& line, const ColumnSet& columns, ReadLayout& read) {
    const std::u16string_view kind = line.Kind();
    if (kind == u"Column") {
        const std::int32_t width = line.Number(2, 0, kWidestColumn);
        const bool hidden = line.Flag(3);
        const auto index = IndexOf(columns, line.Text(1));
        const bool isNew = index && std::none_of(read.columns.begin(), read.columns.end(),
                                                 [&](const ReadLayout::ColumnPlace& each) {
                                                     return each.index == *index;
                                                 });
        if (isNew) {
            read.columns.push_back({*index, width, hidden});
        }
        return true;
    }
    if (kind != u"Sort" && kind != u"Group") {
        return false;
    }
    const bool descending = line.Flag(2);
    if (const auto index = IndexOf(columns, line.Text(1)); index && kind == u"Sort") {
        read.sorting = Grouping{*index, descending};
    } else if (index &&
               std::none_of(read.groups.begin(), read.groups.end(),
                            [&](const Grouping& group) { return group.column == *index; })) {
        read.groups.push_back({*index, descending});
    }
    return true;
}

ReadLayout Read(const std::vector<Record>& records, const ColumnSet& columns) {
    ReadLayout read;
    for (std::size_t at = 1; at < records.size(); ++at) {
        if (!TakeLine(SavedLine(records[at], at), columns, read)) {
            Refuse(at, u"\"" + records[at].front().text + u"\" is not known");
        }
    }
    return read;
}

void Apply(GridModel& model, ReadLayout read) {
    std::int32_t position = 0;
    for (const ReadLayout::ColumnPlace& place : read.columns) {
        model.columns.Move(place.index, position++);
        model.columns.At(place.index).width = place.width;
        model.columns.At(place.index).hidden = place.hidden;
    }
    if (read.sorting) {
        model.rows.SortBy(read.sorting->column, read.sorting->descending);
    } else {
        model.rows.Unsort();
    }
    model.ChangeGroups(std::move(read.groups));
    model.ColumnsChanged();
}

void AppendLayout(std::u16string& out, const GridModel& model) {
    for (std::size_t position = 0; position < model.columns.Count(); ++position) {
        const Column& column = model.columns.At(model.columns.IndexAt(position));
        Append(out, {u"Column", column.key}, {column.width, column.hidden ? 1 : 0});
    }
    if (const auto sorting = model.rows.Sorting()) {
        Append(out, {u"Sort", model.columns.At(sorting->column).key},
               {sorting->descending ? 1 : 0});
    }
    for (const Grouping& group : model.rows.Groups()) {
        Append(out, {u"Group", model.columns.At(group.column).key}, {group.descending ? 1 : 0});
    }
}

struct DesignSwitch {
    bool GridOptions::*option;
    bool Layout::*layout;
    bool& In(GridModel& model) const {
        return option != nullptr ? model.options.*option : model.layout.*layout;
    }
};
constexpr DesignSwitch kSwitches[] = {{&GridOptions::multiSelect, nullptr},
                                      {&GridOptions::fullRowSelect, nullptr},
                                      {&GridOptions::allowEdit, nullptr},
                                      {nullptr, &Layout::headerVisible},
                                      {nullptr, &Layout::groupByBox}};

/// What stands before the layout in a state.
struct ReadDesign {
    std::vector<bool> switches;
    GridOptions options;
    std::vector<Column> columns;
};

template <typename Code>
Code CodeAt(const SavedLine& line, std::size_t at, std::initializer_list<Code> known) {
    const std::int32_t number = line.Number(at, 0, INT16_MAX);
    const auto* found = std::find(known.begin(), known.end(), static_cast<Code>(number));
    if (found == known.end()) {
        line.Number(at, -1, -1); // refuses
    }
    return *found;
}

bool TakeDesign(const SavedLine& line, ReadDesign& read) {
    if (line.Kind() == u"Grid") {
        read.options.groupByBoxText = line.Text(1);
        read.options.groupIndent = line.Number(2, 0, 1000);
        read.switches.clear();
        for (std::size_t at = 0; at < std::size(kSwitches); ++at) {
            read.switches.push_back(line.Flag(3 + at));
        }
        return true;
    }
    if (line.Kind() != u"Design") {
        return false;
    }
    Column column;
    column.key = line.Text(1);
    column.caption = line.Text(2);
    column.dataType =
        CodeAt(line, 3, {DataType::Long, DataType::Date, DataType::Text, DataType::Image});
    column.alignment = CodeAt(line, 4, {Alignment::Centre, Alignment::Left, Alignment::Right});
    column.headerAlignment =
        CodeAt(line, 5, {Alignment::Centre, Alignment::Left, Alignment::Right});
    if (column.key.empty()) {
        line.Number(1, 0, 0); // refuses
    }
    read.columns.push_back(std::move(column));
    return true;
}

} // namespace

std::u16string SaveLayout(const GridModel& model) {
    std::u16string out;
    Append(out, {kLayoutMark}, {kVersion});
    AppendLayout(out, model);
    return out;
}

void LoadLayout(GridModel& model, std::u16string_view text) {
    const std::vector<Record> records = ReadDelimited(text, kSeparator);
    CheckMark(records, kLayoutMark);
    Apply(model, Read(records, model.columns));
}

std::u16string SaveState(const GridModel& model) {
    std::u16string out;
    Append(out, {kStateMark}, {kVersion});
    const auto flag = [](bool on) { return on ? 1 : 0; };
    Append(out, {u"Grid", model.options.groupByBoxText},
           {model.options.groupIndent, flag(model.options.multiSelect),
            flag(model.options.fullRowSelect), flag(model.options.allowEdit),
            flag(model.layout.headerVisible), flag(model.layout.groupByBox)});
    for (std::size_t index = 0; index < model.columns.Count(); ++index) {
        const Column& column = model.columns.At(index);
        Append(out, {u"Design", column.key, column.caption},
               {static_cast<std::int32_t>(column.dataType),
                static_cast<std::int32_t>(column.alignment),
                static_cast<std::int32_t>(column.headerAlignment)});
    }
    AppendLayout(out, model);
    return out;
}

void LoadState(GridModel& model, std::u16string_view text) {
    std::vector<Record> records = ReadDelimited(text, kSeparator);
    CheckMark(records, kStateMark);
    ReadDesign design;
    ColumnSet all(model.culture); // the columns as they will be, for the layout to be checked with
    for (std::size_t index = 0; index < model.columns.Count(); ++index) {
        all.Add(model.columns.At(index).key);
    }
    std::vector<Record> layout{records.front()};
    for (std::size_t at = 1; at < records.size(); ++at) {
        if (!TakeDesign(SavedLine(records[at], at), design)) {
            layout.push_back(std::move(records[at]));
        } else if (!design.columns.empty() && !IndexOf(all, design.columns.back().key)) {
            all.Add(design.columns.back().key);
        }
    }
    ReadLayout read = Read(layout, all);
    for (const Column& column : design.columns) {
        const auto index = IndexOf(model.columns, column.key);
        Column& own = index ? model.columns.At(*index) : model.AddColumn(column.key);
        own.caption = column.caption;
        own.dataType = column.dataType;
        own.alignment = column.alignment;
        own.headerAlignment = column.headerAlignment;
    }
    if (!design.switches.empty()) {
        model.options.groupByBoxText = design.options.groupByBoxText;
        model.options.groupIndent = design.options.groupIndent;
        for (std::size_t at = 0; at < std::size(kSwitches); ++at) {
            kSwitches[at].In(model) = design.switches[at];
        }
    }
    Apply(model, std::move(read));
}

} // namespace talvix::grid
