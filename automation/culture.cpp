#include "automation/culture.h"

namespace talvix {

bool Culture::SameText(std::u16string_view left, std::u16string_view right) const {
    return left.size() == right.size() && (left == right || UpperCase(left) == UpperCase(right));
}

std::u16string ReplaceNoCase(const Culture& culture, std::u16string_view text,
                             std::u16string_view what, std::u16string_view with) {
    if (!what.empty() && text.starts_with(what) && text.size() < 2 * what.size()) {
        return std::u16string(with).append(text.substr(what.size())); // no room for another one
    }
    const std::u16string upper = culture.UpperCase(text);
    const std::u16string sought = culture.UpperCase(what);
    std::u16string result;
    std::size_t from = 0;
    while (!sought.empty()) {
        const std::size_t found = upper.find(sought, from);
        if (found == std::u16string::npos) {
            break;
        }
        result.append(text.substr(from, found - from)).append(with);
        from = found + sought.size();
    }
    return result.append(text.substr(from));
}

} // namespace talvix
