#include "workbench/host/mail_item.h"

#include "automation/coercion.h"
#include "automation/failure.h"
#include "automation/text.h"
#include "workbench/host/host_object.h"

namespace talvix::host {

namespace {

constexpr std::int32_t kMessageFormat = 3; // olMSG
constexpr std::int32_t kSave = 0;
constexpr std::int32_t kDiscard = 1;
constexpr double kSecondsPerDay = 86400;
constexpr double kDayOf1970 = 25569;

/// What the item and its attachments work on.
struct MailState {
    Mail original;
    Mail mail;
    MailFiling filing;
    const Culture& culture;
};
using SharedState = std::shared_ptr<MailState>;

std::u16string AddressText(const MailAddress& address) {
    return address.name.empty() ? address.address : address.name;
}

std::u16string AddressList(const std::vector<MailAddress>& addresses) {
    std::u16string text;
    for (const MailAddress& each : addresses) {
        text += (text.empty() ? u"" : u"; ") + AddressText(each);
    }
    return text;
}

std::u16string PathIn(const MailState& state, const HostCall& call) {
    std::u16string path = ToText(call.At(0), state.culture);
    if (path.empty()) {
        throw Failure(failure_number::kInvalidArgument, u"A path to save to is needed");
    }
    return path;
}

/// The attachment that a number, counted from 1, names at the moment.
std::size_t PlaceOf(const MailState& state, const Value& number) {
    const std::int32_t place = ToLong(number, state.culture);
    const auto count = static_cast<std::int32_t>(state.mail.attachments.size());
    if (place < 1 || place > count) {
        throw Failure(failure_number::kBadIndex,
                      u"There are the attachments 1 to " + DecimalText(count));
    }
    return static_cast<std::size_t>(place - 1);
}

Object MakeAttachment(const SharedState& state, std::size_t place) {
    const auto attachment = [state, place]() -> MailAttachment& {
        return state->mail.attachments.at(place);
    };
    return std::make_shared<HostObject>(
        u"Attachment",
        std::vector<HostObject::Member>{
            {u"FileName", [=](const HostCall&) -> Value { return attachment().fileName; }},
            {u"DisplayName", [=](const HostCall&) -> Value { return attachment().fileName; }},
            {u"Size",
             [=](const HostCall&) -> Value {
                 return static_cast<std::int32_t>(attachment().content.size());
             }},
            {u"SaveAsFile",
             [=](const HostCall& call) -> Value {
                 state->filing.saveFile(PathIn(*state, call), attachment().content);
                 return {};
             }},
            {u"Delete", [=](const HostCall&) -> Value {
                 auto& all = state->mail.attachments;
                 all.erase(all.begin() + static_cast<std::ptrdiff_t>(place));
                 return {};
             }}});
}

Object MakeAttachments(const SharedState& state) {
    return std::make_shared<HostObject>(
        u"Attachments", std::vector<HostObject::Member>{
                            {u"Count",
                             [state](const HostCall&) -> Value {
                                 return static_cast<std::int32_t>(state->mail.attachments.size());
                             }},
                            {u"Item", [state](const HostCall& call) -> Value {
                                 return MakeAttachment(state, PlaceOf(*state, call.At(0)));
                             }}});
}

Value SaveAs(const MailState& state, const HostCall& call) {
    const std::u16string path = PathIn(state, call);
    if (ToLong(call.At(1), state.culture) != kMessageFormat) {
        throw Failure(failure_number::kInvalidArgument, u"Only format 3 (.msg) can be saved");
    }
    state.filing.saveMessage(state.mail, path);
    return {};
}

Value Close(MailState& state, const HostCall& call) {
    switch (ToLong(call.At(0), state.culture)) {
    case kSave:
        state.original = state.mail;
        return {};
    case kDiscard:
        state.mail = state.original;
        return {};
    default:
        throw Failure(failure_number::kInvalidArgument, u"0 saves, 1 discards");
    }
}

Value SentOn(const Mail& mail) {
    return mail.sent ? Value(Date{static_cast<double>(*mail.sent) / kSecondsPerDay + kDayOf1970})
                     : Value();
}

} // namespace

Object MakeMailItem(const Mail& mail, MailFiling filing, const Culture& culture) {
    const auto state =
        std::make_shared<MailState>(MailState{mail, mail, std::move(filing), culture});
    const auto text = [state](std::u16string (*read)(const Mail&)) {
        return [state, read](const HostCall&) -> Value { return read(state->mail); };
    };
    // Not called "MailItem": a wrapper for Outlook's own items could do nothing with it.
    return std::make_shared<HostObject>(
        u"MailFile",
        std::vector<HostObject::Member>{
            {u"Subject", text([](const Mail& each) { return each.subject; })},
            {u"SenderName", text([](const Mail& each) {
                 return each.from ? AddressText(*each.from) : std::u16string();
             })},
            {u"To", text([](const Mail& each) { return AddressList(each.to); })},
            {u"CC", text([](const Mail& each) { return AddressList(each.cc); })},
            {u"Body", text([](const Mail& each) { return each.text; })},
            {u"HTMLBody", text([](const Mail& each) { return each.html; })},
            {u"SentOn", [state](const HostCall&) { return SentOn(state->mail); }},
            {u"Attachments", Constant(MakeAttachments(state))},
            {u"SaveAs", [state](const HostCall& call) { return SaveAs(*state, call); }},
            {u"Close", [state](const HostCall& call) { return Close(*state, call); }}});
}

} // namespace talvix::host
