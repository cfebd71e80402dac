#include "workbench/program/selected_documents.h"

#include "automation/coercion.h"
#include "automation/text.h"

namespace talvix::workbench {

namespace {

constexpr std::int32_t kMostAsked = 10'000; // rows

std::int32_t NumberOf(const Late& object, std::u16string_view member) {
    return static_cast<std::int32_t>(NumericContent(object.Call(member)).value_or(0));
}

struct RowRange {
    std::int32_t first;
    std::int32_t last;
};

std::vector<RowRange> Ranges(const Late& grid) {
    const Late selection = grid[u"Selection"];
    std::vector<RowRange> ranges;
    const std::int32_t count = NumberOf(selection, u"Count");
    for (std::int32_t at = 1; at <= count; ++at) {
        const Late range = selection(u"Item", at);
        const std::int32_t first = NumberOf(range, u"First");
        ranges.push_back({first, NumberOf(range, u"Last")});
    }
    return ranges;
}

} // namespace

std::u16string DocumentsText(std::size_t count) {
    return DecimalText(static_cast<long long>(count)) + (count == 1 ? u" Dokument" : u" Dokumente");
}

std::u16string SelectionText(const Late& grid) {
    const std::vector<RowRange> ranges = Ranges(grid);
    std::int32_t count = 0;
    for (const RowRange& range : ranges) {
        count += range.last - range.first + 1;
    }
    if (NumberOf(grid[u"Groups"], u"Count") > 0) {
        if (count > kMostAsked) {
            return u"Viele ausgewählt";
        }
        for (const RowRange& range : ranges) {
            for (std::int32_t number = range.first; number <= range.last; ++number) {
                count -= grid(u"Rows", number).Call(u"IsGroup") == Value(true) ? 1 : 0;
            }
        }
    }
    return count == 0 ? std::u16string() : DecimalText(count) + u" ausgewählt";
}

std::vector<std::u16string> SelectedTexts(const Late& grid, std::u16string_view column) {
    std::vector<std::u16string> texts;
    for (const RowRange& range : Ranges(grid)) {
        for (std::int32_t number = range.first; number <= range.last; ++number) {
            const Late row = grid(u"Rows", number);
            const Value value = row.Call(u"Value", column);
            const auto* text = value.If<std::u16string>();
            if (row.Call(u"IsGroup") != Value(true) && text != nullptr && !text->empty()) {
                texts.push_back(*text);
            }
        }
    }
    return texts;
}

} // namespace talvix::workbench
