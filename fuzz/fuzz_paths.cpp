#include "automation/text.h"
#include "common/general.h"
#include "folder/file_name.h"
#include "folder/naming_rule.h"
#include "folder/unc_conversion.h"
#include "fuzz/fuzz.h"

using namespace talvix;

/// Cleaning, joining and taking paths apart fit together.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::u16string input = TextOfInput(data, size);
    std::u16string_view rest = input;
    const std::u16string_view folder = NextPiece(rest);
    const std::u16string_view name = NextPiece(rest);
    const std::u16string cleaned = CleanFileNameText(name, u"_");
    Require(cleaned.size() == name.size());
    Require(CleanFileNameText(cleaned, u"_") == cleaned);
    const std::u16string path = BuildPath(folder, cleaned);
    if (!cleaned.empty() && !folder.empty()) {
        Require(Trim(cleaned).empty() || GetFileName(path) == cleaned);
        Require(BuildPath(std::u16string(folder) + u"\\", cleaned) == path);
        Require(path.size() <= folder.size() + 1 + cleaned.size());
    }
    if (IsPlainFileName(name)) {
        Require(BuildPath(u"P:\\Proj", name) == u"P:\\Proj\\" + std::u16string(name));
        Require(GetFolderPath(BuildPath(u"P:\\Proj", name)) == u"P:\\Proj");
    }
    Require(GetExtensionName(path).size() <= path.size());
    const std::u16string shared = GetSharePath(rest);
    Require(shared.empty() || rest.find(shared) != std::u16string_view::npos);
    return 0;
}
