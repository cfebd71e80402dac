#include "core/presentation_pass.h"

#include "automation/text.h"
#include "common/general.h"
#include "common/settings.h"
#include "platform/literal_path.h"

#include <utility>

namespace talvix {

namespace {

/// Where the name of a network path's server begins; nothing for another path.
std::optional<std::size_t> StartOfServer(std::u16string_view path) {
    const std::u16string_view plain = BehindLiteralMark(path);
    if (plain.size() < path.size()) {
        const bool isNetwork = SameName(Left(plain, 4), u"UNC\\");
        return isNetwork ? std::optional(path.size() - plain.size() + 4) : std::nullopt;
    }
    const bool isNetwork = path.starts_with(u"\\\\") && !path.starts_with(u"\\\\.\\");
    return isNetwork ? std::optional<std::size_t>(2) : std::nullopt;
}

/// "\\server\share" of a network path, else "".
std::u16string_view NetworkRoot(std::u16string_view path) {
    const auto server = StartOfServer(path);
    if (!server) {
        return {};
    }
    const std::size_t share = path.find(u'\\', *server);
    if (share == std::u16string_view::npos) {
        return {};
    }
    return path.substr(0, path.find(u'\\', share + 1));
}

} // namespace

bool PresentationPass::FileIconsDisabled() {
    if (!iconsDisabled_) {
        iconsDisabled_ = talvix::FileIconsDisabled(platform_.registry, trace_);
    }
    return *iconsDisabled_;
}

void PresentationPass::Expect(std::u16string_view path, const FileFacts& facts) {
    expectedPath_ = path;
    expected_ = facts;
}

std::optional<FileFacts> PresentationPass::Query(std::u16string_view path) {
    if (expected_ && expectedPath_ == path) {
        return std::exchange(expected_, std::nullopt);
    }
    const std::u16string root = platform_.locale.UpperCase(NetworkRoot(path));
    const auto known = root.empty() ? rootAnswers_.end() : rootAnswers_.find(root);
    if (known != rootAnswers_.end() && !known->second) {
        return std::nullopt;
    }
    if (const auto told = listed_.Ask(path)) {
        return told->facts;
    }
    auto facts = platform_.files.Query(path);
    if (!facts && !root.empty() && known == rootAnswers_.end()) {
        rootAnswers_[root] = platform_.files.Query(NetworkRoot(path)).has_value();
        if (!rootAnswers_[root]) {
            return facts;
        }
    }
    if (!facts) {
        listed_.NoteMissing(path);
    }
    return facts;
}

std::int32_t PresentationPass::IconIndex(std::u16string_view path) {
    return GetSmallIconIndex(platform_.shell, path);
}

std::u16string PresentationPass::TypeName(std::u16string_view path) {
    return platform_.shell.Classes().TypeName(path);
}

} // namespace talvix
