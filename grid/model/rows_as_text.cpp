#include "grid/model/rows_as_text.h"

#include "automation/coercion.h"
#include "automation/dates.h"
#include "automation/failure.h"
#include "automation/text.h"
#include "grid/model/delimited_text.h"

#include <algorithm>
#include <cstdio>

namespace talvix::grid {

namespace {

/// Fewest digits that are read back as the same number. The library's own conversion to the
/// shortest form would weigh more than the rest of the grid's model.
std::u16string PlainText(double number) {
    char digits[40]{};
    for (int precision = 15; precision <= 17; ++precision) {
        std::snprintf(digits, sizeof digits, "%.*g", precision, number);
        std::replace(digits, digits + sizeof digits, ',',
                     '.'); // a host may have set its own locale
        const auto read = PlainNumber(FromUtf8(digits));
        if (read && *read == number) {
            break;
        }
    }
    return FromUtf8(digits);
}

Value ReadField(const Field& field, DataType type) {
    if (!field.quoted && field.text.empty()) {
        return {};
    }
    if (field.quoted || type == DataType::Text) {
        return field.text;
    }
    if (type == DataType::Date) {
        const auto date = ReadIsoText(field.text);
        return date ? Value(*date) : Value(field.text);
    }
    const auto number = PlainNumber(field.text);
    if (!number) {
        return field.text;
    }
    const bool isLong = *number >= INT32_MIN && *number <= INT32_MAX &&
                        *number == static_cast<double>(static_cast<std::int32_t>(*number));
    return isLong ? Value(static_cast<std::int32_t>(*number)) : Value(*number);
}

Field WriteField(const Value& value, DataType type) {
    if (const auto* text = value.If<std::u16string>()) {
        return {*text, text->empty() || !ReadField({*text, false}, type).Is<std::u16string>()};
    }
    if (const auto* date = value.If<Date>()) {
        return {IsoText(*date), false};
    }
    const auto number = NumericContent(value);
    return {number ? PlainText(*number) : std::u16string(), false};
}

} // namespace

std::u16string SaveRows(GridModel& model, std::u16string_view separator) {
    std::u16string out;
    const std::size_t columns = model.columns.Count();
    for (const Slot slot : model.rows.DataRows()) {
        for (std::size_t position = 0; position < columns; ++position) {
            const std::size_t column = model.columns.IndexAt(position);
            const Value value = model.rows.GetAt(slot, column);
            out += position > 0 ? separator : std::u16string_view();
            AppendField(out, WriteField(value, model.columns.At(column).dataType), separator);
        }
        out += u"\r\n";
    }
    return out;
}

void LoadRows(GridModel& model, std::u16string_view text, std::u16string_view separator) {
    const std::vector<std::vector<Field>> lines = ReadDelimited(text, separator);
    const std::size_t columns = model.columns.Count();
    for (std::size_t line = 0; line < lines.size(); ++line) {
        if (lines[line].size() > columns) {
            throw Failure(failure_number::kInvalidArgument,
                          u"Line " + DecimalText(static_cast<long long>(line) + 1) + u" has " +
                              DecimalText(static_cast<long long>(lines[line].size())) +
                              u" fields, the grid has " +
                              DecimalText(static_cast<long long>(columns)) + u" columns");
        }
    }
    for (const std::vector<Field>& line : lines) {
        const RowRef row = model.rows.Add();
        for (std::size_t position = 0; position < line.size(); ++position) {
            const std::size_t column = model.columns.IndexAt(position);
            model.rows.Set(row, column,
                           ReadField(line[position], model.columns.At(column).dataType));
        }
    }
    model.Changed();
}

namespace {

std::vector<RowRef> SelectedDataRows(GridModel& model) {
    std::vector<RowRef> rows;
    for (const Range& range : model.rows.Ranges()) {
        for (std::int32_t number = range.first; number <= range.second; ++number) {
            const RowRef row = model.rows.At(number);
            if (model.rows.HeadingOf(row) == nullptr) {
                rows.push_back(row);
            }
        }
    }
    return rows;
}

std::vector<std::size_t> TextColumns(const GridModel& model) {
    std::vector<std::size_t> columns;
    for (std::size_t position = 0; position < model.columns.Count(); ++position) {
        const std::size_t index = model.columns.IndexAt(position);
        const Column& column = model.columns.At(index);
        if (!column.hidden && column.dataType != DataType::Image) {
            columns.push_back(index);
        }
    }
    return columns;
}

} // namespace

std::u16string SelectedRowsAsText(GridModel& model) {
    constexpr std::u16string_view kTab = u"\t";
    const std::vector<RowRef> rows = SelectedDataRows(model);
    const std::vector<std::size_t> columns = TextColumns(model);
    std::u16string out;
    const auto appendLine = [&](auto&& textOf) {
        for (std::size_t at = 0; at < columns.size(); ++at) {
            out += at > 0 ? kTab : std::u16string_view();
            AppendField(out, {textOf(columns[at]), false}, kTab);
        }
        out += u"\r\n";
    };
    if (!rows.empty()) {
        appendLine([&](std::size_t column) { return model.columns.At(column).caption; });
    }
    for (const RowRef& row : rows) {
        appendLine([&](std::size_t column) { return model.TextOf(row, column); });
    }
    return out;
}

std::vector<std::u16string> SelectedFiles(GridModel& model) {
    if (!model.options.fileColumn) {
        return {};
    }
    std::vector<std::u16string> files;
    for (const RowRef& row : SelectedDataRows(model)) {
        const Value value = model.rows.Get(row, *model.options.fileColumn);
        const auto* path = value.If<std::u16string>();
        if (path != nullptr && !path->empty()) {
            files.push_back(*path);
        }
    }
    return files;
}

} // namespace talvix::grid
