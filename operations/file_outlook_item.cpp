#include "operations/file_outlook_item.h"

#include "automation/coercion.h"
#include "automation/resume_next.h"
#include "common/general.h"
#include "folder/copy_to_project_folder.h"
#include "folder/naming_rule.h"

namespace talvix {

namespace {

constexpr std::int32_t kMessageFormat = 3; // olMSG
constexpr std::int32_t kDiscard = 1;       // olDiscard

/// One item on its way into the project folder. Each step that fails is passed over.
class ItemFiler {
public:
    ItemFiler(Attachment& attachment, const DocumentRecord& record, const ItemFiling& filing)
        : attachment_(attachment),
          record_(record),
          filing_(filing),
          next_(attachment.trace, u"AddDMSItem"),
          item_(filing.item) {
        MakeSafeWrappers();
    }

    void SaveWhole() { SaveMessage(wrapperA_); }

    /// The deletions are discarded in the end, so only the copy lacks the attachments.
    void SaveWithoutAttachments() {
        if (wrapperB_) {
            next_([&] { wrapperB_.Set(u"Item", item_.Get()); });
        } else {
            wrapperB_ = item_;
        }
        DeleteAttachments();
        SaveMessage(wrapperB_);
        next_([&] { wrapperB_[u"Item"].Call(u"Close", kDiscard); });
        next_([&] { wrapperB_.Call(u"Close", kDiscard); });
        next_([&] { item_.Call(u"Close", kDiscard); });
        next_([&] { wrapperB_.Set(u"Item", Nothing()); });
    }

    /// The last attachment goes first.
    void SaveAttachments() {
        std::u16string temporary;
        std::u16string name;
        for (std::int32_t number = AttachmentCount(wrapperA_); number >= 1; --number) {
            next_([&] {
                const Late file = wrapperA_[u"Attachments"](u"Item", number);
                name = ToText(file.Call(u"FileName"), attachment_.platform.locale);
            });
            next_([&] { temporary = TemporaryFile(); });
            next_(
                [&] { wrapperA_[u"Attachments"](u"Item", number).Call(u"SaveAsFile", temporary); });
            CopySaved(temporary, name, name);
        }
    }

private:
    /// Outlook asks the user before a program may read an item; the wrapper spares that question.
    void MakeSafeWrappers() {
        std::u16string programId = u"Redemption.Safe";
        next_([&] { programId += item_.AsObject()->TypeName(); });
        for (Late* wrapper : {&wrapperA_, &wrapperB_}) {
            next_([&] { *wrapper = Late(attachment_.platform.objects.Create(programId)); });
        }
        if (wrapperA_) {
            next_([&] { wrapperA_.Set(u"Item", item_.Get()); });
        } else {
            wrapperA_ = item_;
            wrapperB_ = Late();
        }
    }

    void SaveMessage(const Late& saver) {
        std::u16string temporary;
        next_([&] { temporary = TemporaryFile(); });
        const std::u16string name = CleanFileNameText(record_.subject, u"_") + u".msg";
        next_([&] { saver.Call(u"SaveAs", temporary, kMessageFormat); });
        CopySaved(temporary, record_.subject, name);
    }

    void CopySaved(const std::u16string& temporary, const std::u16string& subject,
                   const std::u16string& name) {
        if (!next_.If([&] { return FileExistsOnDisk(attachment_.platform.files, temporary); })) {
            return;
        }
        CopyToProjectFolder(attachment_,
                            {temporary, subject, record_.status, record_.longDescription, name,
                             record_.creationDate, record_.modificationDate, filing_.subfolder});
    }

    void DeleteAttachments() {
        for (std::int32_t number = AttachmentCount(item_); number >= 1; --number) {
            next_([&] { item_[u"Attachments"](u"Item", number).Call(u"Delete"); });
        }
    }

    std::int32_t AttachmentCount(const Late& owner) {
        std::int32_t count = 0;
        next_([&] {
            count = ToLong(owner[u"Attachments"].Call(u"count"), attachment_.platform.locale);
        });
        return count;
    }

    /// The same file for everything, whatever its kind; it is never removed.
    std::u16string TemporaryFile() const {
        return BuildPath(attachment_.platform.files.TemporaryFolder(), u"tmp.msg");
    }

    Attachment& attachment_;
    const DocumentRecord& record_;
    const ItemFiling& filing_;
    ResumeNext next_;
    Late item_;
    Late wrapperA_;
    Late wrapperB_;
};

void FileTwice(Attachment& attachment, const DocumentRecord& record, ItemFiling filing) {
    filing.writeToBody = false;
    for (const std::int32_t operation : {2, 1}) {
        filing.operation = operation;
        AddDMSItem(attachment, record, filing);
    }
}

} // namespace

void FileOutlookItem(Attachment& attachment, const DocumentRecord& record,
                     const ItemFiling& filing) {
    {
        ItemFiler filer(attachment, record, filing);
        switch (filing.operation) {
        case 0:
            filer.SaveWhole();
            break;
        case 1:
            filer.SaveWithoutAttachments();
            break;
        case 2:
            filer.SaveAttachments();
            break;
        case 3:
            FileTwice(attachment, record, filing);
            break;
        default:
            return;
        }
    }
    ResumeNext next{attachment.trace, u"AddDMSItem"};
    if (filing.writeToBody) {
        next([&] { attachment.talvixManaging.Call(u"WriteGridDataToItemBody"); });
    }
}

} // namespace talvix
