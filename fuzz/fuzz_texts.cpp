#include "core/grid_setup.h"
#include "fuzz/fuzz.h"
#include "operations/action_combo.h"
#include "tests/fakes/main_rig.h"

#include <cstring>

using namespace talvix;

namespace {

/// The number that stands in an entry is the one that the entry was made with.
void TryAction(std::u16string_view entry) {
    const std::u16string number = ActionNumberIn(entry);
    Require(number == u"-1" || entry.find(number + u" (") != std::u16string_view::npos);
    const std::u16string made = u"Nr. " + std::u16string(entry) + u" (1.1.): x";
    if (entry.find(u" (") == std::u16string_view::npos && !entry.starts_with(u"(")) {
        Require(ActionNumberIn(made) == entry);
    }
}

void TryVersion(MainRig& rig, std::u16string_view version) {
    Late(Value(rig.item))[u"Application"].Set(u"Version", version);
    CheckVersion(rig.main->Attached());
}

/// A size is a grouped number and its unit, never less than one.
void TrySize(MainRig& rig, std::int64_t length) {
    rig.fakes.files.MakeFile(u"P:\\Proj\\a.doc", length);
    rig.main->Init();
    const std::u16string size = *rig.Cell(1, u"ItemSize").If<std::u16string>();
    Require(size.ends_with(u" KB") && size.size() > 3 && size.front() != u'0');
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static MainRig rig;
    static const bool attached = [] {
        rig.Attach();
        rig.AddRow(0, u"P:\\Proj\\a.doc");
        return true;
    }();
    rig.fakes.journal.Clear();
    rig.fakes.trace.notes.clear();
    std::int64_t length = 0;
    if (attached && size >= sizeof length && size % 8 == 0) {
        std::memcpy(&length, data, sizeof length);
        TrySize(rig, length & INT64_MAX);
    }
    const std::u16string input = TextOfInput(data, size);
    TryAction(input);
    TryVersion(rig, input);
    return 0;
}
