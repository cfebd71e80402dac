#include "folder/unc_conversion.h"
#include "fuzz/fuzz.h"
#include "tests/fakes/fake_platform.h"

using namespace talvix;

/// A path is given back as it is, or in a network form.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static FakePlatform fakes;
    fakes.journal.Clear();
    fakes.trace.notes.clear();
    FakeNetwork network(fakes.journal);
    const std::u16string input = TextOfInput(data, size);
    std::u16string_view rest = input;
    const std::u16string_view path = NextPiece(rest);
    network.computer = std::u16string(NextPiece(rest));
    network.drives[u"X:"] = std::u16string(NextPiece(rest));
    while (!rest.empty()) {
        const std::u16string_view name = NextPiece(rest);
        const std::u16string folder(NextPiece(rest));
        network.AddShare(std::u16string(name),
                         u"Type=0" + std::u16string(1, u'\0') + u"Path=" + folder);
    }
    const std::u16string converted = ConvertToUNC(network, fakes.locale, fakes.trace, path);
    Require(converted == path || converted.starts_with(u"\\\\") || path.starts_with(u"X:"));
    Require(ConvertToUNC(network, fakes.locale, fakes.trace, path) == converted);
    return 0;
}
