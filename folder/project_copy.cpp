#include "folder/project_copy.h"

#include "automation/resume_next.h"
#include "automation/text.h"
#include "common/general.h"
#include "folder/file_name.h"
#include "folder/unc_conversion.h"
#include "platform/literal_path.h"

#include <utility>

namespace talvix {

namespace {

constexpr int kLastNumber = 100;
constexpr std::int16_t kEndedByUser = 1223; // ERROR_CANCELLED
constexpr std::int16_t kOtherFailure = 31;  // ERROR_GEN_FAILURE
constexpr std::u16string_view kTemporaryStart = u"~TalvixDMS-";
constexpr std::u16string_view kTemporaryEnd = u".tmp";

/// The names that a document may take in a folder: its own, then numbered ones.
class Candidates {
public:
    Candidates(Files& files, std::u16string folder, std::u16string name)
        : files_(files),
          folder_(std::move(folder)),
          name_(std::move(name)),
          extension_(GetExtensionName(name_)),
          base_(Left(name_, name_.size() - std::min(name_.size(), extension_.size() + 1))) {}

    /// Without a "." in its name a document loses its last character and gains a "." at the end.
    std::u16string Path() const {
        return number_ == 0 ? BuildPath(folder_, name_)
                            : BuildPath(folder_, base_ + u" (" + DecimalText(number_) + u")" +
                                                     u"." + extension_);
    }
    /// Goes on to the first name that is not in use; false when even the last one is.
    bool FindFree() {
        while (IsTaken()) {
            if (number_ == kLastNumber) {
                return false;
            }
            ++number_;
        }
        return true;
    }
    /// The name that was free has been taken meanwhile.
    bool FindNextFree() {
        if (number_ == kLastNumber) {
            return false;
        }
        ++number_;
        return FindFree();
    }
    bool IsFolder() const {
        const auto facts = files_.Query(Path());
        return facts && facts->isFolder;
    }
    bool IsNumbered() const { return number_ > 0; }

private:
    bool IsTaken() const { return files_.Query(Path()).has_value(); }

    Files& files_;
    std::u16string folder_;
    std::u16string name_;
    std::u16string extension_;
    std::u16string base_;
    int number_ = 0;
};

/// A file under a name of its own that goes at the end, whatever happens.
class TemporaryCopy {
public:
    TemporaryCopy(Attachment& attachment, const std::u16string& folder)
        : attachment_(attachment),
          path_(BuildPath(folder, std::u16string(kTemporaryStart) +
                                      attachment.platform.system.UniqueText() +
                                      std::u16string(kTemporaryEnd))) {}
    TemporaryCopy(const TemporaryCopy&) = delete;
    TemporaryCopy& operator=(const TemporaryCopy&) = delete;
    ~TemporaryCopy() {
        ResumeNext next{attachment_.trace, u"CopyToProjectFolder"};
        if (!isPlaced_ && next.If([&] { return FileExistsOnDisk(Disk(), path_); })) {
            next([&] { Disk().Remove(path_); });
        }
    }
    const std::u16string& Path() const { return path_; }
    Renamed Place(const std::u16string& path) {
        const Renamed renamed = Disk().Rename(path_, path);
        isPlaced_ = renamed == Renamed::Done;
        return renamed;
    }

private:
    Files& Disk() const { return attachment_.platform.files; }

    Attachment& attachment_;
    std::u16string path_;
    bool isPlaced_ = false;
};

/// One copy on its way; any step of it raises Failure where it cannot go on.
class Copying {
public:
    Copying(Attachment& attachment, std::u16string source, const std::u16string& folder,
            const std::u16string& name)
        : attachment_(attachment),
          source_(std::move(source)),
          candidates_(attachment.platform.files, folder, name) {}

    std::u16string Run() {
        const bool isFree = candidates_.FindFree();
        const std::u16string target = Converted(candidates_.Path());
        source_ = Converted(source_);
        return isFree ? CopyAndRename(target) : CopyOverLast(target);
    }
    bool IsNumbered() const { return candidates_.IsNumbered(); }

private:
    std::u16string CopyAndRename(std::u16string target) {
        TemporaryCopy copy(attachment_, GetFolderPath(target));
        Copy(copy.Path());
        while (copy.Place(target) == Renamed::Taken) {
            const bool isFree = candidates_.FindNextFree();
            target = Converted(candidates_.Path());
            if (!isFree) {
                return CopyOverLast(target);
            }
        }
        return target;
    }
    /// All names are in use: the shell asks whether the last one may be replaced.
    std::u16string CopyOverLast(const std::u16string& target) {
        if (candidates_.IsFolder()) {
            throw Failure(failure_number::kUnexpected, u"All names are in use");
        }
        Copy(target);
        return target;
    }
    void Copy(const std::u16string& target) {
        const std::int16_t result = CopyFileShell(attachment_.platform.shell, source_, target);
        if (result != 0) {
            throw Failure(failure_number::kUnexpected, u"The copy failed: " + DecimalText(result));
        }
    }
    std::u16string Converted(const std::u16string& path) const {
        return ConvertToUNC(attachment_.platform.network, attachment_.platform.locale,
                            attachment_.trace, path);
    }

    Attachment& attachment_;
    std::u16string source_;
    Candidates candidates_;
};

} // namespace

std::int16_t CopyFileShell(Shell& shell, std::u16string_view source, std::u16string_view target) {
    const ShellCopy copy = shell.Copy(source, target);
    if (copy.result == 0) {
        return copy.aborted ? kEndedByUser : std::int16_t{0};
    }
    const auto shortened = static_cast<std::int16_t>(copy.result & 0x7FFF);
    return shortened == 0 ? kOtherFailure : shortened;
}

std::optional<PlacedDocument> PlaceCopy(Attachment& attachment, const std::u16string& source,
                                        const std::u16string& folder, const std::u16string& name) {
    ResumeNext next{attachment.trace, u"CopyToProjectFolder"};
    std::optional<PlacedDocument> placed;
    next([&] {
        // A pattern as the source would copy more than one file.
        if (!IsPlainFileName(name) || HoldsWildcards(source)) {
            throw Failure(failure_number::kInvalidArgument, u"No name for a file: " + name);
        }
        Copying copying(attachment, source, folder, name);
        const std::u16string path = copying.Run();
        placed = PlacedDocument{path, copying.IsNumbered()};
    });
    return placed;
}

bool IsUnfinishedCopy(std::u16string_view name) {
    return name.starts_with(kTemporaryStart) && name.ends_with(kTemporaryEnd);
}

} // namespace talvix
