#include "automation/failure.h"
#include "fuzz/fuzz.h"
#include "grid/model/delimited_text.h"

using namespace talvix;

/// Whatever is read can be written and reads back the same.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::u16string input = TextOfInput(data, size);
    std::u16string_view rest = input;
    const std::u16string_view given = NextPiece(rest);
    const std::u16string separator(
        given.size() == 1 && given != u"\"" && given != u"\r" && given != u"\n" ? given : u";");
    try {
        const auto lines = grid::ReadDelimited(rest, separator);
        std::u16string written;
        for (const auto& line : lines) {
            for (std::size_t at = 0; at < line.size(); ++at) {
                written += at == 0 ? u"" : separator;
                grid::AppendField(written, line[at], separator);
            }
            written += u"\r\n";
        }
        const auto again = grid::ReadDelimited(written, separator);
        Require(again.size() == lines.size());
        for (std::size_t at = 0; at < lines.size(); ++at) {
            Require(again[at].size() == lines[at].size());
            for (std::size_t field = 0; field < lines[at].size(); ++field) {
                Require(again[at][field].text == lines[at][field].text);
            }
        }
    } catch (const Failure&) {
        return 0; // refused with its line
    }
    return 0;
}
