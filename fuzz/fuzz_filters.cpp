#include "fuzz/fuzz.h"
#include "grid/model/grid_model.h"
#include "tests/fakes/fake_platform.h"
#include "ui/file_dialog.h"

using namespace talvix;

namespace {

/// The list's quick filter: what passes for two words passes for each of them.
void TryQuickFilter(std::u16string_view cell, std::u16string_view words) {
    static const FakeCulture culture;
    grid::GridModel model(culture);
    model.AddColumn(u"A");
    const grid::RowRef row = model.rows.Add();
    model.rows.Set(row, 0, Value(cell));
    model.rows.SetFilter(words, std::nullopt);
    const bool passes = model.rows.PassingCount() == 1;
    const std::size_t blank = words.find(u' ');
    if (passes && blank != std::u16string_view::npos) {
        model.rows.SetFilter(words.substr(0, blank), std::nullopt);
        Require(model.rows.PassingCount() == 1);
        model.rows.SetFilter(words.substr(blank), std::nullopt);
        Require(model.rows.PassingCount() == 1);
    }
    model.rows.SetFilter(u"", std::nullopt);
    Require(model.rows.PassingCount() == 1);
}

} // namespace

/// The dialog's filter always ends as the system's dialog needs it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static FakePlatform fakes;
    const std::u16string input = TextOfInput(data, size);
    std::u16string_view rest = input;
    const std::u16string_view cell = NextPiece(rest);
    TryQuickFilter(cell, NextPiece(rest));
    FileDialog dialog(fakes.ports);
    for (std::size_t pair = 1; pair <= 5; ++pair) {
        const std::u16string_view text = NextPiece(rest);
        dialog.SetFilter(pair, text, NextPiece(rest));
    }
    dialog.Filter = rest;
    const std::u16string filter = dialog.FilterText();
    Require(filter.size() >= 2 && filter.ends_with(std::u16string(2, u'\0')));
    Require(filter.front() != u'\0' || rest.starts_with(u'\0'));
    // NUL characters at the end of a filter are taken off for good.
    Require(dialog.FilterText() == filter || rest.find_first_not_of(u'\0') == rest.npos);
    return 0;
}
