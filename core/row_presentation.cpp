#include "core/row_presentation.h"

#include "automation/coercion.h"
#include "automation/resume_next.h"
#include "core/document_record.h"

namespace talvix {

namespace {

constexpr double kBytesPerKilobyte = 1024;

struct Presentation {
    std::u16string size = u"1 KB";
    std::u16string type = u"Projektdokument";
    std::int32_t icon = -1;
};

std::u16string SizeText(std::int64_t length, const Culture& locale) {
    const double kilobytes = static_cast<double>(length) / kBytesPerKilobyte;
    return (kilobytes > 1 ? locale.GroupedText(kilobytes) : u"1") + u" KB";
}

/// The pass that is running, or else one for this row alone.
class RunningPass {
public:
    explicit RunningPass(Attachment& attachment) {
        if (attachment.pass == nullptr) {
            own_.emplace(attachment);
        }
    }

private:
    std::optional<PassScope> own_;
};

class RowPresenter {
public:
    RowPresenter(Attachment& attachment, const GridRow& row, bool refreshTypeText)
        : attachment_(attachment),
          row_(row),
          refreshTypeText_(refreshTypeText),
          next_(attachment.trace, u"PresentRow") {}

    void Present() {
        if (next_.If([&] { return row_.IsGroup(); })) {
            return;
        }
        std::optional<std::int32_t> objectType;
        next_([&] { objectType = ObjectTypeOf(row_, attachment_.platform.locale); });
        std::u16string path;
        if (objectType == kFileDocument) {
            next_([&] {
                path = ToText(row_.Get(field::kPhysicalStore1), attachment_.platform.locale);
            });
        }
        Describe(objectType, path);
        Write();
    }

    void PresentNew(std::int32_t objectType, std::u16string_view physicalStore1) {
        isNew_ = true;
        Describe(objectType, physicalStore1);
        Write();
    }

private:
    void Describe(std::optional<std::int32_t> objectType, std::u16string_view path) {
        if (objectType == kFileDocument) {
            DescribeFile(path);
        } else if (objectType == kOutlookDocument) {
            shown_.type = u"Outlook-Element";
        } else if (objectType == kLinkDocument) {
            shown_.type = u"Internetverknüpfung";
            ShowPicture(kLinkPicture);
        }
    }

    void DescribeFile(std::u16string_view path) {
        std::optional<FileFacts> facts;
        next_([&] { facts = attachment_.pass->Query(path); });
        if (!facts || facts->isFolder) {
            ShowPicture(kMissingFilePicture);
            return;
        }
        if (!isNew_) { // a file that is back again sheds the picture of the missing one
            next_([&] { row_.SetPicture(field::kIcon, Nothing()); });
        }
        if (!attachment_.pass->FileIconsDisabled()) {
            next_([&] { shown_.icon = attachment_.pass->IconIndex(path) + 1; });
        }
        next_([&] { shown_.size = SizeText(facts->length, attachment_.platform.locale); });
        if (refreshTypeText_) {
            next_([&] { TakeTypeName(attachment_.pass->TypeName(path)); });
        }
    }

    void TakeTypeName(std::u16string name) {
        if (!name.empty()) {
            shown_.type = std::move(name);
        }
    }

    void ShowPicture(std::int32_t number) {
        next_(
            [&] { row_.SetPicture(field::kIcon, attachment_.platform.pictures.Picture(number)); });
    }

    void Write() {
        next_([&] { row_.Set(field::kIcon, shown_.icon); });
        next_([&] { row_.Set(field::kItemSize, std::move(shown_.size)); });
        if (refreshTypeText_) {
            next_([&] { row_.Set(field::kObjectDescription, std::move(shown_.type)); });
        }
    }

    Attachment& attachment_;
    const GridRow& row_;
    bool refreshTypeText_;
    bool isNew_ = false;
    ResumeNext next_;
    Presentation shown_;
};

} // namespace

std::optional<std::int32_t> ObjectTypeOf(const GridRow& row, const Culture& culture) {
    const Value value = row.Get(field::kObjectType);
    const auto* text = value.If<std::u16string>();
    if (value.IsNothing() || (text != nullptr && text->empty())) {
        return std::nullopt;
    }
    const double number = ToNumber(value, culture);
    const auto whole = static_cast<std::int32_t>(number >= 0 && number <= 2 ? number : -1);
    return whole == number ? std::optional(whole) : std::nullopt;
}

void PresentRow(Attachment& attachment, const GridRow& row, bool refreshTypeText) {
    const RunningPass pass(attachment);
    RowPresenter(attachment, row, refreshTypeText).Present();
}

void PresentNewRow(Attachment& attachment, const GridRow& row, std::int32_t objectType,
                   std::u16string_view physicalStore1) {
    const RunningPass pass(attachment);
    RowPresenter(attachment, row, true).PresentNew(objectType, physicalStore1);
}

} // namespace talvix
