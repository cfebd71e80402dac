#pragma once

#include "automation/coercion.h"
#include "automation/failure.h"
#include "platform/win32/locale.h"
#include "tests/com/com_host.h"
#include "tests/com/dialog_answers.h"
#include "tests/fakes/expando.h"

namespace talvix {

/// A handler that yields the element of that name.
template <typename Elements>
Expando::Handler ByName(const Elements& elements) {
    return [&elements](std::span<const Value> arguments) -> Value {
        const auto* name = arguments.size() == 1 ? arguments[0].If<std::u16string>() : nullptr;
        const auto found = name == nullptr ? elements.end() : elements.find(*name);
        if (found == elements.end()) {
            throw Failure(failure_number::kBadIndex, u"No such element");
        }
        return found->second;
    };
}

/// A host of ours around the registered component and the registered grid.
struct ComponentRig {
    ComponentRig() {
        property->With(u"Value", folder.Path());
        const auto properties = std::make_shared<Expando>(u"UserProperties");
        userProperties[u"Speicherort Dokumente"] = property;
        properties->On(u"Item", ByName(userProperties));
        const auto page = std::make_shared<Expando>(u"Page");
        controls[u"DMSGrid"] = grid.Get();
        page->On(u"Controls", ByName(controls));
        const auto inspector = std::make_shared<Expando>(u"Inspector");
        pages[u"Dokumente"] = page;
        inspector->On(u"ModifiedFormPages", ByName(pages));
        const auto application = std::make_shared<Expando>(u"Application");
        application->With(u"Version", u"10.0.0.2627");
        item->With(u"GetInspector", inspector)
            .With(u"Application", application)
            .With(u"UserProperties", properties);
        common->With(u"strCurrentUser", u"Erika Muster").With(u"AddMessageDescription", Empty());
        common->On(u"ReadGlobalSetting", ByName(settings));
        common->With(u"Log", Empty());
        managing->With(u"Item", item).With(u"WriteGridDataToItemBody", Empty());
        managing->On(u"GetNextID", [this](std::span<const Value>) -> Value { return nextId++; });
    }
    void Attach() {
        const Object other = std::make_shared<Expando>(u"Other");
        main.Call(u"ReferenceLibraries", common, managing, other, other, other, other);
        main.Call(u"InitSGDMS");
        main.Call(u"Init");
    }
    int Rows() const { return ToLong(grid[u"Rows"].Call(u"Count"), locale); }
    std::u16string Cell(int row, std::u16string_view key) const {
        return ToText(grid(u"Rows", row).Call(u"Text", key), locale);
    }
    /// A further user property.
    void SetProperty(std::u16string_view name, std::u16string_view value) {
        auto made = std::make_shared<Expando>(u"UserProperty");
        made->With(u"Value", value);
        userProperties[std::u16string(name)] = made;
    }
    std::u16string StoredFolder() const { return ToText(property->Field(u"Value"), locale); }

    Win32Locale locale;
    TemporaryFolder folder;
    Journal journal;
    Late grid = CreateByName(u"TalvixGrid.Grid");
    Late main = CreateByName(u"TalvixDMS.Main");
    std::shared_ptr<Expando> property = std::make_shared<Expando>(u"UserProperty");
    std::shared_ptr<Expando> item = std::make_shared<Expando>(u"Item");
    std::shared_ptr<Expando> common = std::make_shared<Expando>(u"Common", &journal);
    std::shared_ptr<Expando> managing = std::make_shared<Expando>(u"Managing", &journal);
    std::map<std::u16string, Value> userProperties;
    std::map<std::u16string, Value> controls;
    std::map<std::u16string, Value> pages;
    std::map<std::u16string, Value> settings;
    int nextId = 1;
};

} // namespace talvix
