#include "folder/file_name.h"
#include "folder/project_copy.h"
#include "fuzz/fuzz.h"
#include "tests/fakes/main_rig.h"

using namespace talvix;

/// Whatever a document is called, its copy lies directly in the folder under a name that was free,
/// or nowhere.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static MainRig rig;
    const std::u16string input = TextOfInput(data, size);
    std::u16string_view rest = input;
    const std::u16string name(NextPiece(rest));
    FakeFiles& files = rig.fakes.files;
    files.Clear();
    rig.fakes.journal.Clear();
    rig.fakes.trace.notes.clear();
    files.MakeFolder(u"P:\\Proj");
    files.MakeFile(u"C:\\Quelle.doc", 5);
    for (int count = 0; !rest.empty() && count < 8; ++count) {
        const std::u16string_view taken = NextPiece(rest);
        if (IsPlainFileName(taken)) {
            files.MakeFile(u"P:\\Proj\\" + std::u16string(taken), 1);
        }
    }
    const std::size_t before = files.List(u"P:\\Proj").files.size();
    const auto placed = PlaceCopy(rig.main->Attached(), u"C:\\Quelle.doc", u"P:\\Proj", name);
    const std::size_t after = files.List(u"P:\\Proj").files.size();
    Require(placed.has_value() == (after == before + 1));
    if (placed) {
        const std::u16string_view path = placed->path;
        Require(path.starts_with(u"P:\\Proj\\") && IsPlainFileName(path.substr(8)));
        Require(files.Query(path)->length == 5);
    }
    return 0;
}
