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

void Main::InitSGDMS() {
    SetUpGrid(attachment_, gridEvents_, events_);
}

void Main::Init() {
    ResumeNext next{attachment_.trace, u"Init"};
    attachment_.silentImport = false;
    {
        PassScope scope(attachment_);
        const Grid grid = attachment_.dmsGrid;
        std::int32_t count = 0;
        next([&] { count = grid.RowCount(); });
        for (std::int32_t number = 1; number <= count; ++number) {
            GridRow row;
            if (next([&] { row = grid.RowAt(number); })) {
                PresentRow(attachment_, row, false);
            }
        }
    }
    CheckVersion(attachment_);
    RefreshGrid(attachment_);
    BuildContextMenu(attachment_);
}

void Main::AddDMSItem(const DocumentRecord& record, const ItemFiling& filing) {
    talvix::AddDMSItem(attachment_, record, filing);
}

void Main::AddFile(std::u16string_view physicalStore1, std::u16string_view subject,
                   std::u16string_view status, std::u16string_view longDescription,
                   Date creationDate, Date modificationDate) {
    talvix::AddFile(attachment_, physicalStore1, subject, status, longDescription, creationDate,
                    modificationDate);
}

void Main::FillActionCombo(std::u16string_view selectedId) {
    talvix::FillActionCombo(attachment_, selectedId);
}

void Main::NewDMSItem() {
    talvix::NewDMSItem(attachment_);
}

void Main::DeleteDMSItem() {
    talvix::DeleteDMSItem(attachment_);
}

void Main::OpenDocument(std::int32_t id) {
    talvix::OpenDocument(attachment_, id);
}

void Main::btnOpenDocument_Click() {
    talvix::OpenDocument(attachment_, kSelectedDocuments);
}

void Main::btnNewDocument_Click() {
    talvix::btnNewDocument_Click(attachment_);
}

void Main::btnChangeDocument_Click() {
    talvix::btnChangeDocument_Click(attachment_);
}

void Main::btnDeleteDocument_Click() {
    talvix::DeleteDMSItem(attachment_);
}

void Main::btnExportDocuments_Click() {
    talvix::btnExportDocuments_Click(attachment_);
}

void Main::AddFilesFromProjectFolder(bool silent) {
    talvix::AddFilesFromProjectFolder(attachment_, silent);
}

void Main::AddFilesFromProjectFolderEvent() {
    ImportProjectFolder(attachment_);
}

void Main::btnOpenFolder_Click() {
    talvix::btnOpenFolder_Click(attachment_);
}

void Main::btnDMSSetStore_Click() {
    talvix::btnDMSSetStore_Click(attachment_);
}

void Main::btnDMSDeletetStore_Click() {
    talvix::btnDMSDeletetStore_Click(attachment_);
}

bool Main::MkDirs(std::u16string_view pathIn) {
    return talvix::MkDirs(attachment_.platform.files, attachment_.trace, pathIn);
}

} // namespace talvix
