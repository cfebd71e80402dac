#include "tests/fakes/fake_mail.h"

#include "automation/text.h"

namespace talvix {

FakeMail::FakeMail(FakePlatform& fakes)
    : fakes_(fakes),
      mail_(std::make_shared<Expando>(u"MailItem", &fakes.journal)),
      attachments_(std::make_shared<Expando>(u"Attachments", &fakes.journal, true)) {
    fakes.files.MakeFolder(u"C:\\Temp");
    attachments_->On(u"count", [this](std::span<const Value>) -> Value {
        return static_cast<std::int32_t>(names.size());
    });
    attachments_->On(u"Item", [this](std::span<const Value> arguments) {
        return MakeAttachment(*arguments[0].If<std::int32_t>());
    });
    SavesTo(*mail_, u"SaveAs", 5000);
    mail_->With(u"Close", Empty()).With(u"Attachments", attachments_);
}

void FakeMail::SavesTo(Expando& object, std::u16string_view member, std::int64_t length) {
    object.On(member, [this, length](std::span<const Value> arguments) -> Value {
        if (saveFails) {
            throw Failure(failure_number::kUnexpected, u"Not saved");
        }
        fakes_.files.MakeFile(*arguments[0].If<std::u16string>(), length);
        return {};
    });
}

Value FakeMail::MakeAttachment(std::int32_t number) {
    const auto at = static_cast<std::size_t>(number - 1);
    auto made = std::make_shared<Expando>(u"Attachment" + DecimalText(number), &fakes_.journal);
    made->With(u"FileName", names.at(at));
    SavesTo(*made, u"SaveAsFile", 100 + number);
    made->On(u"Delete", [this, at](std::span<const Value>) -> Value {
        names.erase(names.begin() + static_cast<std::ptrdiff_t>(at));
        return {};
    });
    return made;
}

void FakeMail::RegisterWrapper() {
    fakes_.objects.classes[u"Redemption.SafeMailItem"] = [this]() -> Object {
        auto wrapper =
            std::make_shared<Expando>(u"Safe" + DecimalText(++wrappers_), &fakes_.journal);
        wrapper->With(u"Item", Nothing()).With(u"Close", Empty());
        wrapper->With(u"Attachments", attachments_);
        SavesTo(*wrapper, u"SaveAs", 7000);
        return wrapper;
    };
}

} // namespace talvix
