#include "automation/failure.h"
#include "workbench/host/host.h"

namespace talvix::host {

namespace {

std::int32_t CountOf(const Late& collection) {
    const Value count = collection.Call(u"Count");
    const auto* number = count.If<std::int32_t>();
    if (number == nullptr) {
        throw Failure(failure_number::kTypeMismatch, u"The grid did not tell its number of rows");
    }
    return *number;
}

std::vector<std::u16string> KeysOf(const Late& grid) {
    std::vector<std::u16string> keys;
    const std::int32_t count = CountOf(grid[u"Columns"]);
    for (std::int32_t position = 0; position < count; ++position) {
        const Value key = grid(u"Columns", position).Call(u"Key");
        if (const auto* text = key.If<std::u16string>()) {
            keys.push_back(*text);
        }
    }
    return keys;
}

} // namespace

void LoadRows(const Late& grid, const std::vector<Document>& documents) {
    const std::vector<std::u16string> keys = KeysOf(grid);
    grid.Set(u"Redraw", false);
    const Late rows = grid[u"Rows"];
    for (const Document& document : documents) {
        const Late row = rows[u"Add"];
        for (const std::u16string& key : keys) {
            const auto field = document.find(key);
            if (field != document.end()) {
                row.SetAt(u"Value", key, field->second);
            }
        }
    }
    grid.Set(u"Redraw", true);
}

std::vector<Document> ReadRows(const Late& grid) {
    const std::vector<std::u16string> keys = KeysOf(grid);
    const Late rows = grid[u"Rows"];
    const std::int32_t count = CountOf(rows);
    std::vector<Document> documents;
    for (std::int32_t number = 1; number <= count; ++number) {
        const Late row = rows(u"Item", number);
        if (row.Call(u"IsGroup") == Value(true)) {
            continue;
        }
        Document document;
        for (const std::u16string& key : keys) {
            Value value = row.Call(u"Value", key);
            if (!value.IsNothing()) {
                document[key] = std::move(value);
            }
        }
        documents.push_back(std::move(document));
    }
    return documents;
}

void LoadActions(const Late& grid, const std::vector<Action>& actions) {
    struct ActionColumn {
        const char16_t* key;
        const char16_t* caption;
        std::int32_t dataType;
        std::int32_t width;
    };
    static constexpr ActionColumn columns[] = {{u"id", u"Nr.", 3, 40},
                                               {u"startdate", u"Beginn", 7, 90},
                                               {u"description", u"Beschreibung", 8, 300}};
    if (CountOf(grid[u"Columns"]) == 0) {
        for (const ActionColumn& column : columns) {
            const Late added = grid[u"Columns"](u"Add", column.key);
            added.Set(u"Caption", column.caption);
            added.Set(u"DataType", column.dataType);
            added.Set(u"Width", column.width);
        }
    }
    grid[u"Rows"].Call(u"Clear");
    for (const Action& action : actions) {
        const Late row = grid[u"Rows"][u"Add"];
        row.SetAt(u"Value", u"id", action.id);
        row.SetAt(u"Value", u"startdate", action.startDate);
        row.SetAt(u"Value", u"description", action.description);
    }
}

} // namespace talvix::host
