#include "workbench/host/host.h"

#include "automation/failure.h"
#include "automation/text.h"
#include "workbench/host/host_object.h"

#include <utility>

namespace talvix::host {

namespace {

std::u16string TextOrNone(const Value& value) {
    const auto* text = value.If<std::u16string>();
    return text == nullptr ? std::u16string() : *text;
}

std::int32_t LongIn(const Value& value) {
    const auto* number = value.If<std::int32_t>();
    if (number == nullptr) {
        throw Failure(failure_number::kTypeMismatch, u"A number was expected");
    }
    return *number;
}

/// Yields an element by its name; others are refused by name.
HostObject::Handler ByName(std::vector<std::pair<std::u16string, Value>> elements) {
    return [elements = std::move(elements)](const HostCall& call) {
        const std::u16string name = TextOrNone(call.At(0));
        for (const auto& [known, element] : elements) {
            if (SameName(known, name)) {
                return element;
            }
        }
        throw Failure(failure_number::kBadIndex, u"There is no element \"" + name + u"\"");
    };
}

Object Page(Value control, std::u16string_view name) {
    return std::make_shared<HostObject>(
        u"FormPage",
        std::vector<HostObject::Member>{{u"Controls", ByName({{std::u16string(name), control}})}});
}

} // namespace

Host::Host(std::shared_ptr<Project> project, HostServices services, Late documentGrid,
           Late actionGrid)
    : project_(std::move(project)),
      services_(std::move(services)),
      documentGrid_(std::move(documentGrid)),
      actionGrid_(std::move(actionGrid)),
      item_(MakeItem()) {
    libraries_ = {MakeCommon(), MakeManaging()};
    for (const auto* name : {u"Planning", u"Budgets", u"Controlling"}) {
        libraries_.emplace_back(
            std::make_shared<HostObject>(name, std::vector<HostObject::Member>{}));
    }
    libraries_.emplace_back(MakeExport());
}

Object Host::MakeUserProperties() {
    const auto property = [this](const char16_t* name, std::u16string& text) {
        const auto object = std::make_shared<HostObject>(
            u"UserProperty",
            std::vector<HostObject::Member>{{u"Value", TextMember(text, project_->isChanged), true},
                                            {u"Name", Constant(name)}});
        return std::pair<std::u16string, Value>(name, object);
    };
    return std::make_shared<HostObject>(
        u"UserProperties",
        std::vector<HostObject::Member>{
            {u"Item", ByName({property(u"Projektnummer", project_->number),
                              property(u"Projektname", project_->name),
                              property(u"Speicherort Dokumente", project_->folder)})}});
}

Object Host::MakeInspector() {
    const Object documents = Page(documentGrid_.Get(), u"DMSGrid");
    const Object support = Page(actionGrid_.Get(), u"sgActions");
    return std::make_shared<HostObject>(
        u"Inspector",
        std::vector<HostObject::Member>{
            {u"ModifiedFormPages", ByName({{u"Dokumente", documents}, {u"Betreuung", support}})}});
}

Object Host::MakeItem() {
    const auto application = std::make_shared<HostObject>(
        u"Application",
        std::vector<HostObject::Member>{{u"Version", Constant(services_.outlookVersion)}});
    return std::make_shared<HostObject>(
        u"ProjectItem",
        std::vector<HostObject::Member>{
            {u"GetInspector", Constant(MakeInspector())},
            {u"UserProperties", Constant(MakeUserProperties())},
            {u"Application", Constant(application)},
            {u"Companies", TextMember(project_->company, project_->isChanged), true},
            {u"Subject", TextMember(project_->name, project_->isChanged), true}});
}

Object Host::MakeCommon() {
    const auto readSetting = [this](const HostCall& call) -> Value {
        const auto found = project_->settings.find(TextOrNone(call.At(0)));
        return found == project_->settings.end() ? std::u16string() : found->second;
    };
    const auto addMessage = [this](const HostCall& call) -> Value {
        messages_[LongIn(call.At(0))] = {TextOrNone(call.At(3)), TextOrNone(call.At(5)),
                                         LongIn(call.At(4))};
        return {};
    };
    const auto log = [this](const HostCall& call) -> Value {
        const auto found = messages_.find(LongIn(call.At(0)));
        const Message message = found == messages_.end() ? Message{} : found->second;
        const std::u16string detail = TextOrNone(call.At(1));
        services_.showMessage(message.text + (detail.empty() ? u"" : u"\r\n\r\n" + detail),
                              message.title, message.style);
        return {};
    };
    return std::make_shared<HostObject>(
        u"Common",
        std::vector<HostObject::Member>{{u"strCurrentUser", Constant(services_.userName)},
                                        {u"ReadGlobalSetting", readSetting},
                                        {u"AddMessageDescription", addMessage},
                                        {u"Log", log}});
}

Object Host::MakeExport() {
    const auto exportItem = [this](const HostCall& call) -> Value {
        if (services_.exportList) {
            services_.exportList(TextOrNone(call.At(1)), TextOrNone(call.At(3)));
        }
        return {};
    };
    return std::make_shared<HostObject>(
        u"Export", std::vector<HostObject::Member>{{u"ExportItem", exportItem}});
}

Object Host::MakeManaging() {
    const auto nextId = [this](const HostCall& call) -> Value {
        if (TextOrNone(call.At(0)) != u"DMS") {
            throw Failure(failure_number::kInvalidArgument, u"There is only the list \"DMS\"");
        }
        project_->isChanged = true;
        return project_->nextId++;
    };
    const auto writeList = [this](const HostCall&) -> Value {
        std::vector<Document> now = ReadRows(documentGrid_);
        if (now != project_->documents) {
            history_.Keep(std::exchange(project_->documents, std::move(now)));
        }
        project_->isChanged = true;
        services_.listWritten();
        return {};
    };
    return std::make_shared<HostObject>(
        u"Managing", std::vector<HostObject::Member>{
                         {u"Item", [this](const HostCall&) -> Value { return item_; }},
                         {u"GetNextID", nextId},
                         {u"WriteGridDataToItemBody", writeList},
                         {u"SetUserFieldValues", [](const HostCall&) -> Value { return {}; }},
                         {u"GetXMLDataAsString",
                          [this](const HostCall&) -> Value { return services_.projectXml(); }}});
}

} // namespace talvix::host
