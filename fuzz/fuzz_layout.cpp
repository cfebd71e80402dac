#include "automation/failure.h"
#include "fuzz/fuzz.h"
#include "grid/model/grid_objects.h"
#include "grid/model/saved_layout.h"
#include "tests/fakes/fake_culture.h"

using namespace talvix;

/// A layout is taken or refused as a whole; what was taken can be saved and taken again.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const FakeCulture culture;
    grid::GridModel model(culture);
    for (const auto* key : {u"Name", u"Zahl", u"a"}) {
        model.AddColumn(key);
    }
    model.rows.Set(model.rows.Add(), 0, Value(u"x"));
    const std::u16string before = grid::SaveLayout(model);
    try {
        grid::LoadLayout(model, TextOfInput(data, size));
    } catch (const Failure&) {
        Require(grid::SaveLayout(model) == before);
        return 0;
    }
    const std::u16string saved = grid::SaveLayout(model);
    grid::LoadLayout(model, saved);
    Require(grid::SaveLayout(model) == saved);
    Require(model.rows.DataRows().size() == 1);
    return 0;
}
