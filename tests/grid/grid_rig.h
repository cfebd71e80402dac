#pragma once

#include "automation/coercion.h"
#include "automation/failure.h"
#include "automation/late.h"
#include "automation/text.h"
#include "tests/fakes/expando.h"
#include "tests/fakes/fake_culture.h"

namespace talvix::grid {

/// A new grid: the model itself in portable suites, the registered control in those for COM.
Late GridUnderTest();

/// A grid reached by name, with columns of each type.
struct GridRig {
    GridRig() : grid(GridUnderTest()) {
        Column(u"Name", 8);
        Column(u"Number", 3);
        Column(u"When", 7);
        Column(u"Icon", 65);
    }
    Late Column(std::u16string_view key, int type) const {
        const Late column = grid[u"Columns"](u"Add", key);
        column.Set(u"DataType", type);
        return column;
    }
    Late Add(std::u16string_view name, const Value& number = {}, const Value& when = {}) const {
        const Late row = grid[u"Rows"][u"Add"];
        row.SetAt(u"Value", u"Name", name);
        row.SetAt(u"Value", u"Number", number);
        row.SetAt(u"Value", u"When", when);
        return row;
    }
    Late Row(int number) const { return grid(u"Rows", number); }
    int Count() const { return Long(grid[u"Rows"].Call(u"Count")); }
    int Long(const Value& value) const { return ToLong(value, culture); }
    std::u16string Names() const {
        std::u16string names;
        for (int number = 1; number <= Count(); ++number) {
            names +=
                (number > 1 ? u" " : u"") + ToText(Row(number).Call(u"Text", u"Name"), culture);
        }
        return names;
    }
    std::u16string Ranges() const {
        std::u16string text;
        const Late selection = grid[u"Selection"];
        for (int at = 1; at <= Long(selection.Call(u"Count")); ++at) {
            const Late range = grid(u"Selection", at);
            text += DecimalText(Long(range.Call(u"First"))) + u"-" +
                    DecimalText(Long(range.Call(u"Last"))) + u" ";
        }
        return text;
    }
    FakeCulture culture;
    Late grid;
};

template <typename Request>
std::u16string Refusal(Request&& request) {
    try {
        request();
    } catch (const Failure& failure) {
        return failure.Text();
    }
    return u"not refused";
}

} // namespace talvix::grid
