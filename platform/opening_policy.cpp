#include "platform/opening_policy.h"

#include "automation/text.h"

#include <algorithm>

namespace talvix {

namespace {

constexpr const char16_t* kPolicyKey = u"Software\\Policies\\Talvix\\DMS";

std::u16string Setting(Registry& registry, std::u16string_view name) {
    for (const std::uint32_t root : {kLocalMachine, kCurrentUser}) {
        const auto value = registry.Read(root, kPolicyKey, name);
        if (value && value->type == kRegistryText) {
            return value->text.substr(0, value->text.find(u'\0'));
        }
    }
    return {};
}

/// True when a list divided by ";" holds a name.
bool Holds(std::u16string_view list, std::u16string_view name) {
    while (!list.empty()) {
        const std::size_t end = std::min(list.find(u';'), list.size());
        if (SameName(Trim(list.substr(0, end)), name)) {
            return true;
        }
        list.remove_prefix(std::min(end + 1, list.size()));
    }
    return false;
}

/// What stands before the first ":"; "" for a path, whose drive has one letter.
std::u16string_view SchemeOf(std::u16string_view what) {
    const std::size_t colon = what.find(u':');
    if (colon == std::u16string_view::npos || colon < 2 ||
        what.substr(0, colon).find_first_of(u"\\/") != std::u16string_view::npos) {
        return {};
    }
    return what.substr(0, colon);
}

/// With its dot; "" for a name without one.
std::u16string_view TypeOf(std::u16string_view path) {
    const std::size_t last = path.find_last_not_of(u". ");
    path = path.substr(0, last == std::u16string_view::npos ? 0 : last + 1);
    const std::size_t dot = path.rfind(u'.');
    const bool isInName = dot != std::u16string_view::npos &&
                          path.find_first_of(u"\\/", dot) == std::u16string_view::npos;
    return isInName ? path.substr(dot) : std::u16string_view();
}

} // namespace

OpeningPolicy ReadOpeningPolicy(Registry& registry) {
    return {Setting(registry, u"AllowedSchemes"), Setting(registry, u"AskTypes")};
}

bool AsksBeforeOpening(const OpeningPolicy& policy, std::u16string_view what) {
    const std::u16string_view scheme = SchemeOf(Trim(what));
    const bool isForeign =
        !scheme.empty() && !policy.allowedSchemes.empty() && !Holds(policy.allowedSchemes, scheme);
    const bool isFile = scheme.empty() || SameName(scheme, u"file");
    const std::u16string_view type = isFile ? TypeOf(what) : std::u16string_view();
    return isForeign || (!type.empty() && Holds(policy.askedTypes, type));
}

} // namespace talvix
