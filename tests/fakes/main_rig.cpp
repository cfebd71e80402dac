#include "tests/fakes/main_rig.h"

#include "automation/failure.h"
#include "tests/fakes/stepping_object.h"

namespace talvix {

namespace {

std::shared_ptr<Expando> Collection(std::u16string_view name, std::u16string_view key,
                                    const Value& element) {
    auto collection = std::make_shared<Expando>(std::u16string(name));
    collection->On(u"Item", [key = std::u16string(key), element](std::span<const Value> arguments) {
        if (arguments.size() != 1 || arguments[0] != Value(key)) {
            throw Failure(failure_number::kBadIndex, u"No such element");
        }
        return element;
    });
    return collection;
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
      main(std::make_shared<Main>(fakes.ports, fakes.trace)) {
    folderProperty->With(u"Value", u"P:\\Proj");
    page->On(u"Controls",
             ByName(u"DMSGrid", std::make_shared<SteppingObject>(gridObject, fakes.journal)));
    auto inspector = std::make_shared<Expando>(u"Inspector", &fakes.journal, true);
    inspector->On(u"ModifiedFormPages", ByName(u"Dokumente", page));
    auto application = std::make_shared<Expando>(u"Application", &fakes.journal, true);
    application->With(u"Version", u"10.0.0.2627");
    item->With(u"GetInspector", inspector).With(u"Application", application);
    item->With(u"UserProperties",
               Collection(u"UserProperties", u"Speicherort Dokumente", folderProperty));
    common->With(u"strCurrentUser", u"Erika Muster").With(u"AddMessageDescription", Empty());
    managing->With(u"Item", item).With(u"WriteGridDataToItemBody", Empty());
    managing->On(u"GetNextID", [this](std::span<const Value>) -> Value { return nextId++; });
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

} // namespace talvix
