#pragma once

#include "automation/late.h"
#include "workbench/host/list_history.h"
#include "workbench/host/project.h"

#include <functional>
#include <memory>
#include <string>

namespace talvix::host {

/// What the host's objects need of the program around them.
struct HostServices {
    std::function<void(std::u16string_view text, std::u16string_view title, std::int32_t style)>
        showMessage;
    std::function<void()> listWritten; ///< after the list went into the item
    std::function<std::u16string()> projectXml;
    /// Saves the exported list; `xml` is what the component handed over.
    std::function<void(std::u16string_view name, std::u16string_view xml)> exportList;
    std::u16string userName;
    std::u16string outlookVersion = u"11.0.0.8206";
};

/// The host's side of one project: the item with its form pages and the six sibling libraries.
class Host {
public:
    /// `documentGrid` stands on the page "Dokumente" as `DMSGrid`, `actionGrid` on "Betreuung" as
    /// `sgActions`.
    Host(std::shared_ptr<Project> project, HostServices services, Late documentGrid,
         Late actionGrid);

    /// The arguments of `ReferenceLibraries`, in their order.
    std::vector<Value> Libraries() const { return libraries_; }
    Object Item() const { return item_; }
    /// What the list was before each of its changes.
    ListHistory& History() { return history_; }

private:
    Object MakeItem();
    Object MakeInspector();
    Object MakeUserProperties();
    Object MakeCommon();
    Object MakeManaging();
    Object MakeExport();

    struct Message {
        std::u16string text;
        std::u16string title;
        std::int32_t style = 0;
    };
    std::shared_ptr<Project> project_;
    HostServices services_;
    Late documentGrid_;
    Late actionGrid_;
    std::map<std::int32_t, Message> messages_;
    ListHistory history_;
    Object item_;
    std::vector<Value> libraries_;
};

/// Puts documents into the grid's rows, by column key; columns that the grid lacks are passed over.
void LoadRows(const Late& grid, const std::vector<Document>& documents);
/// The grid's data rows as documents, empty fields left out.
std::vector<Document> ReadRows(const Late& grid);
/// Sets up the actions grid and fills it.
void LoadActions(const Late& grid, const std::vector<Action>& actions);

} // namespace talvix::host
