#include "tests/fakes/main_rig.h"

#include "automation/failure.h"
#include "tests/fakes/stepping_object.h"

#include <algorithm>

namespace talvix {

namespace {

template <typename Elements>
Value ElementOf(const Elements& elements, std::span<const Value> arguments) {
    const auto* name = arguments.size() == 1 ? arguments[0].If<std::u16string>() : nullptr;
    const auto found = name == nullptr ? elements.end() : elements.find(*name);
    if (found == elements.end()) {
        throw Failure(failure_number::kBadIndex, u"No such element");
    }
    return found->second;
}

Expando::Handler ByName(std::u16string_view key, const Value& element) {
    return [key = std::u16string(key), element](std::span<const Value> arguments) {
        if (arguments.size() != 1 || arguments[0] != Value(key)) {
            throw Failure(failure_number::kBadIndex, u"No such element");
        }
        return element;
    };
}

} // namespace

MainRig::MainRig()
    : model(std::make_shared<grid::GridModel>(fakes.locale)),
      gridObject(std::make_shared<grid::GridObject>(model)),
      folderProperty(std::make_shared<Expando>(u"UserProperty", &fakes.journal, true)),
      item(std::make_shared<Expando>(u"Item", &fakes.journal, true)),
      page(std::make_shared<Expando>(u"Page", &fakes.journal, true)),
      common(std::make_shared<Expando>(u"Common", &fakes.journal)),
      managing(std::make_shared<Expando>(u"Managing", &fakes.journal)),
      main(std::make_shared<Main>(fakes.ports, fakes.trace, forms)) {
    folderProperty->With(u"Value", u"P:\\Proj");
    properties[u"Speicherort Dokumente"] = folderProperty;
    page->On(u"Controls",
             ByName(u"DMSGrid", std::make_shared<SteppingObject>(gridObject, fakes.journal)));
    auto inspector = std::make_shared<Expando>(u"Inspector", &fakes.journal, true);
    inspector->On(u"ModifiedFormPages", ByName(u"Dokumente", page));
    auto application = std::make_shared<Expando>(u"Application", &fakes.journal, true);
    application->With(u"Version", u"10.0.0.2627");
    item->With(u"GetInspector", inspector).With(u"Application", application);
    auto collection = std::make_shared<Expando>(u"UserProperties");
    collection->On(u"Item", [this](std::span<const Value> arguments) {
        return ElementOf(properties, arguments);
    });
    item->With(u"UserProperties", collection);
    common->On(u"ReadGlobalSetting",
               [this](std::span<const Value> arguments) { return ElementOf(settings, arguments); });
    common->With(u"Log", Empty());
    common->With(u"strCurrentUser", u"Erika Muster").With(u"AddMessageDescription", Empty());
    managing->With(u"Item", item).With(u"WriteGridDataToItemBody", Empty());
    managing->On(u"GetNextID", [this](std::span<const Value>) -> Value { return nextId++; });
}

std::u16string MainRig::Folder() const {
    const auto* text = folderProperty->Field(u"Value").If<std::u16string>();
    return text == nullptr ? u"<no text>" : *text;
}

void MainRig::SetProperty(std::u16string_view name, std::u16string_view value) {
    std::shared_ptr<Expando>& property = properties[std::u16string(name)];
    if (property == nullptr) {
        property = std::make_shared<Expando>(u"UserProperty", &fakes.journal, true);
    }
    property->With(u"Value", value);
}

Lines MainRig::LinesOf(std::initializer_list<std::u16string_view> words) const {
    Lines found;
    for (const std::u16string& line : JournalLines()) {
        if (std::any_of(words.begin(), words.end(),
                        [&](std::u16string_view word) { return line.starts_with(word); })) {
            found.push_back(line);
        }
    }
    return found;
}

void MainRig::Reference() {
    const auto other = std::make_shared<Expando>(u"Other");
    main->ReferenceLibraries(common, managing, other, other, other, other);
}

void MainRig::Attach() {
    Reference();
    main->InitSGDMS();
    main->Init();
    fakes.journal.Clear();
}

Late MainRig::AddRow(const Value& objectType, std::u16string_view store,
                     std::u16string_view description) const {
    Late row = Late(gridObject)[u"Rows"][u"Add"];
    row.SetAt(u"Value", u"ObjectType", objectType);
    row.SetAt(u"Value", u"PhysicalStore1", store);
    row.SetAt(u"Value", u"ObjectDescription", description);
    return row;
}

Lines MainRig::GridCalls(const std::function<void()>& deed) {
    Lines calls;
    fakes.journal.onGridCall = [&](std::u16string call) { calls.push_back(std::move(call)); };
    deed();
    fakes.journal.onGridCall = nullptr;
    return calls;
}

} // namespace talvix
