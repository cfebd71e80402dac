#include "folder/unc_conversion.h"

#include "automation/resume_next.h"
#include "automation/text.h"

namespace talvix {

namespace {

std::u16string_view UpToNul(std::u16string_view text) {
    return text.substr(0, text.find(u'\0'));
}

/// A share and what of the path lies below it.
struct Match {
    std::u16string_view shareName;
    std::u16string_view remainder;
};

/// Characters are compared, not path components: "C:\Dat" begins "C:\Daten" too.
class ShareSearch {
public:
    ShareSearch(const Culture& culture, std::u16string_view path)
        : culture_(culture), path_(path), upper_(culture.UpperCase(path)) {}

    std::optional<Match> Find(const std::vector<Share>& shares) const {
        std::optional<Match> prefix;
        for (const Share& share : shares) {
            const std::u16string folder = culture_.UpperCase(GetSharePath(share.data));
            if (folder.empty()) {
                continue;
            }
            if (folder == upper_) {
                return Match{share.name, {}}; // the first exact one goes before all others
            }
            if (!prefix && upper_.starts_with(folder)) {
                prefix = Match{share.name, path_.substr(folder.size())};
            }
        }
        return prefix;
    }

private:
    const Culture& culture_;
    std::u16string_view path_;
    std::u16string upper_;
};

std::u16string UnderComputer(const Culture& culture, std::u16string_view computer,
                             const Match& match) {
    std::u16string tail = std::u16string(match.shareName) + u"\\" + std::u16string(match.remainder);
    for (int run = 0; run < 2; ++run) {
        tail = Replace(tail, u"\\\\", u"\\");
    }
    return u"\\\\" + culture.LowerCase(Trim(UpToNul(computer))) + u"\\" + tail;
}

} // namespace

std::u16string GetSharePath(std::u16string_view shareData) {
    const std::size_t start = shareData.find(u"Path");
    if (start == std::u16string_view::npos) {
        return {};
    }
    const std::u16string_view line = UpToNul(shareData.substr(start));
    const std::size_t equals = line.find(u'=');
    return std::u16string(equals == std::u16string_view::npos ? std::u16string_view()
                                                              : line.substr(equals + 1));
}

std::u16string ConvertToUNC(Network& network, const Culture& culture, Trace& trace,
                            std::u16string_view path) {
    ResumeNext next{trace, u"ConvertToUNC"};
    if (Mid(path, 2).starts_with(u':')) {
        std::optional<std::u16string> remote;
        next([&] { remote = network.RemoteName(Left(path, 2)); });
        if (remote) {
            return std::u16string(Trim(UpToNul(*remote))) + std::u16string(Mid(path, 3));
        }
    }
    std::optional<std::u16string> computer;
    next([&] { computer = network.ComputerName(); });
    ShareTable shares;
    if (computer) {
        next([&] { shares = network.Shares(); });
    }
    if (shares == nullptr) {
        return std::u16string(path);
    }
    const std::optional<Match> match = ShareSearch(culture, path).Find(*shares);
    return match ? UnderComputer(culture, *computer, *match) : std::u16string(path);
}

} // namespace talvix
