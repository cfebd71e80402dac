#include "core/main.h"

#include "automation/resume_next.h"
#include "common/mod_message_handling.h"
#include "core/grid_setup.h"
#include "core/row_presentation.h"
#include "folder/folder_import.h"
#include "folder/project_folder_store.h"
#include "operations/action_combo.h"
#include "operations/enter_document.h"
#include "ui/context_menu.h"
#include "ui/dms_dispatcher.h"
#include "ui/document_commands.h"

namespace talvix {

namespace {

/// An object or Nothing; anything else raises Failure.
Late ObjectIn(const Value& value) {
    if (!value.Is<Object>()) {
        throw Failure(failure_number::kNoObject, u"An object was expected");
    }
    return Late(value);
}

} // namespace

Main::Main(Platform& platform, Trace& trace, Forms& forms)
    : attachment_{platform, trace, forms}, gridEvents_(std::make_shared<GridEvents>(attachment_)) {}

Main::~Main() {
    ResumeNext next{attachment_.trace, u"Class_Terminate"};
    gridEvents_->Detach();
    next([&] { attachment_.forms.Unload(); });
    next([&] { events_.reset(); });
    next([&] { attachment_.dmsGrid = Grid(); });
}

void Main::ReferenceLibraries(const Value& talvixCommon, const Value& talvixManaging,
                              const Value& talvixPlanning, const Value& talvixBudgets,
                              const Value& talvixControlling, const Value& talvixExport) {
    ResumeNext next{attachment_.trace, u"ReferenceLibraries"};
    next([&] { attachment_.talvixCommon = ObjectIn(talvixCommon); });
    next([&] { RegisterMessages(attachment_.talvixCommon); });
    StoreSibling(attachment_.talvixManaging, talvixManaging);
    StoreSibling(attachment_.talvixPlanning, talvixPlanning);
    StoreSibling(attachment_.talvixBudgets, talvixBudgets);
    StoreSibling(attachment_.talvixControlling, talvixControlling);
    StoreSibling(attachment_.talvixExport, talvixExport);
}

void Main::StoreSibling(Late& sibling, const Value& object) {
    ResumeNext next{attachment_.trace, u"ReferenceLibraries"};
    next([&] { sibling = Late(); });
    next([&] { sibling = ObjectIn(object); });
}

void Main::DereferenceLibraries() {
    ResumeNext next{attachment_.trace, u"DereferenceLibraries"};
    for (Late* sibling :
         {&attachment_.talvixExport, &attachment_.talvixControlling, &attachment_.talvixBudgets,
          &attachment_.talvixPlanning, &attachment_.talvixManaging, &attachment_.talvixCommon}) {
        next([&] { *sibling = Late(); });
    }
}

template <typename Work>
void Main::Run(std::u16string_view procedure, Work&& work) {
    ResumeNext{attachment_.trace, procedure}(work);
}

void Main::InitSGDMS() {
    Run(u"InitSGDMS", [&] { SetUpGrid(attachment_, gridEvents_, events_); });
}

void Main::PresentRows() {
    ResumeNext next{attachment_.trace, u"Init"};
    const PassScope scope(attachment_);
    const Grid grid = attachment_.dmsGrid;
    std::int32_t count = 0;
    next([&] { count = grid.RowCount(); });
    for (std::int32_t number = 1; number <= count; ++number) {
        next([&] { PresentRow(attachment_, grid.RowAt(number), false); });
    }
}

void Main::Init() {
    attachment_.silentImport = false;
    Run(u"Init", [&] { PresentRows(); });
    Run(u"Init", [&] { CheckVersion(attachment_); });
    Run(u"Init", [&] { RefreshGrid(attachment_); });
    Run(u"Init", [&] { BuildContextMenu(attachment_); });
}

void Main::AddDMSItem(const DocumentRecord& record, const ItemFiling& filing) {
    Run(u"AddDMSItem", [&] { talvix::AddDMSItem(attachment_, record, filing); });
}

void Main::AddFile(std::u16string_view physicalStore1, std::u16string_view subject,
                   std::u16string_view status, std::u16string_view longDescription,
                   Date creationDate, Date modificationDate) {
    Run(u"AddFile", [&] {
        talvix::AddFile(attachment_, physicalStore1, subject, status, longDescription, creationDate,
                        modificationDate);
    });
}

void Main::FillActionCombo(std::u16string_view selectedId) {
    Run(u"FillActionCombo", [&] { talvix::FillActionCombo(attachment_, selectedId); });
}

void Main::NewDMSItem() {
    Run(u"NewDMSItem", [&] { talvix::NewDMSItem(attachment_); });
}

void Main::DeleteDMSItem() {
    Run(u"DeleteDMSItem", [&] { talvix::DeleteDMSItem(attachment_); });
}

void Main::OpenDocument(std::int32_t id) {
    Run(u"OpenDocument", [&] { talvix::OpenDocument(attachment_, id); });
}

void Main::btnOpenDocument_Click() {
    Run(u"btnOpenDocument_Click", [&] { talvix::OpenDocument(attachment_, kSelectedDocuments); });
}

void Main::btnNewDocument_Click() {
    Run(u"btnNewDocument_Click", [&] { talvix::btnNewDocument_Click(attachment_); });
}

void Main::btnChangeDocument_Click() {
    Run(u"btnChangeDocument_Click", [&] { talvix::btnChangeDocument_Click(attachment_); });
}

void Main::btnDeleteDocument_Click() {
    Run(u"btnDeleteDocument_Click", [&] { talvix::DeleteDMSItem(attachment_); });
}

void Main::btnExportDocuments_Click() {
    Run(u"btnExportDocuments_Click", [&] { talvix::btnExportDocuments_Click(attachment_); });
}

void Main::AddFilesFromProjectFolder(bool silent) {
    Run(u"AddFilesFromProjectFolder",
        [&] { talvix::AddFilesFromProjectFolder(attachment_, silent); });
}

void Main::AddFilesFromProjectFolderEvent() {
    Run(u"AddFilesFromProjectFolderEvent", [&] { ImportProjectFolder(attachment_); });
}

void Main::btnOpenFolder_Click() {
    Run(u"btnOpenFolder_Click", [&] { talvix::btnOpenFolder_Click(attachment_); });
}

void Main::btnDMSSetStore_Click() {
    Run(u"btnDMSSetStore_Click", [&] { talvix::btnDMSSetStore_Click(attachment_); });
}

void Main::btnDMSDeletetStore_Click() {
    Run(u"btnDMSDeletetStore_Click", [&] { talvix::btnDMSDeletetStore_Click(attachment_); });
}

bool Main::MkDirs(std::u16string_view pathIn) {
    bool done = false;
    Run(u"MkDirs",
        [&] { done = talvix::MkDirs(attachment_.platform.files, attachment_.trace, pathIn); });
    return done;
}

} // namespace talvix
