#pragma once

#include "core/attachment.h"
#include "core/forms.h"
#include "core/grid_events.h"
#include "operations/add_document.h"

namespace talvix {

/// The component's one public class: it attaches to a host and its document grid, and does what the
/// page's buttons and the grid's events ask for. No member raises anything.
class Main {
public:
    /// `forms` is shared with the other `Main` objects of the thread.
    Main(Platform& platform, Trace& trace, Forms& forms);
    Main(const Main&) = delete;
    Main& operator=(const Main&) = delete;
    ~Main();

    /// Takes the six sibling libraries; one that is no object is left as Nothing.
    void ReferenceLibraries(const Value& talvixCommon, const Value& talvixManaging,
                            const Value& talvixPlanning, const Value& talvixBudgets,
                            const Value& talvixControlling, const Value& talvixExport);
    void DereferenceLibraries();
    /// Finds and sets up the grid `DMSGrid` on the page "Dokumente".
    void InitSGDMS();
    /// Presents every row that the host has put into the grid.
    void Init();
    void AddDMSItem(const DocumentRecord& record, const ItemFiling& filing);
    void AddFile(std::u16string_view physicalStore1, std::u16string_view subject,
                 std::u16string_view status, std::u16string_view longDescription, Date creationDate,
                 Date modificationDate);
    void FillActionCombo(std::u16string_view selectedId);
    void NewDMSItem();
    void DeleteDMSItem();
    void OpenDocument(std::int32_t id);
    void AddFilesFromProjectFolder(bool silent);
    void AddFilesFromProjectFolderEvent();
    void btnOpenDocument_Click();
    void btnNewDocument_Click();
    void btnChangeDocument_Click();
    void btnDeleteDocument_Click();
    void btnExportDocuments_Click();
    void btnOpenFolder_Click();
    void btnDMSSetStore_Click();
    void btnDMSDeletetStore_Click();
    bool MkDirs(std::u16string_view pathIn);

    bool StopImport() const { return attachment_.stopImport; }
    void SetStopImport(bool stop) { attachment_.stopImport = stop; }
    const std::u16string& strAddingFile() const { return attachment_.strAddingFile; }
    void SetStrAddingFile(std::u16string name) { attachment_.strAddingFile = std::move(name); }

    /// Keeps `owner` alive while an event of the grid is handled.
    void SetOwner(std::weak_ptr<void> owner) { gridEvents_->SetOwner(std::move(owner)); }
    Platform& Ports() const { return attachment_.platform; }
    /// What it is attached to, for the procedures that work on it.
    Attachment& Attached() { return attachment_; }

private:
    /// Runs a procedure; what its own statements let through ends it.
    template <typename Work>
    void Run(std::u16string_view procedure, Work&& work);
    void PresentRows();
    void StoreSibling(Late& sibling, const Value& object);

    Attachment attachment_;
    std::shared_ptr<GridEvents> gridEvents_;
    Subscription events_;
};

} // namespace talvix
