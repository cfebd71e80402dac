#include "platform/literal_path.h"

#include "automation/text.h"

namespace talvix {

namespace {

constexpr std::u16string_view kNetwork = u"UNC\\";

} // namespace

std::u16string_view BehindLiteralMark(std::u16string_view path) {
    return path.starts_with(kLiteralMark) ? path.substr(kLiteralMark.size()) : path;
}

bool HoldsWildcards(std::u16string_view path) {
    return BehindLiteralMark(path).find_first_of(u"*?") != std::u16string_view::npos;
}

std::u16string PlainPath(std::u16string_view path) {
    const std::u16string_view plain = BehindLiteralMark(path);
    if (plain.size() < path.size() && SameName(Left(plain, kNetwork.size()), kNetwork)) {
        return u"\\\\" + std::u16string(plain.substr(kNetwork.size()));
    }
    return std::u16string(plain);
}

} // namespace talvix
