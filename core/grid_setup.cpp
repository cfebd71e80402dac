#include "core/grid_setup.h"

#include "automation/coercion.h"
#include "automation/resume_next.h"
#include "automation/text.h"
#include "common/general.h"
#include "common/settings.h"
#include "core/document_record.h"
#include "core/redraw_pause.h"

namespace talvix {

namespace {

constexpr double kFirstUnaffectedOutlook = 10;

void Connect(Attachment& attachment, std::shared_ptr<EventSink> sink, Subscription& events) {
    ResumeNext next{attachment.trace, u"InitSGDMS"};
    next([&] {
        const Late page = attachment.Item()[u"GetInspector"](u"ModifiedFormPages", u"Dokumente");
        attachment.dmsGrid = Grid(Late(page(u"Controls", u"DMSGrid").AsObject()));
        events.reset();
    });
    if (!events) {
        next([&] { events = attachment.dmsGrid.Connect(std::move(sink)); });
    }
}

void SetBehaviour(Attachment& attachment) {
    const Grid& grid = attachment.dmsGrid;
    ResumeNext next{attachment.trace, u"InitSGDMS"};
    next([&] { grid.SetMultiSelect(true); });
    next([&] { grid.SetFullRowSelect(true); });
    next([&] { grid.SetAllowEdit(false); });
    next([&] { grid.SetHeaderVisible(true); });
}

void SetUpColumn(Attachment& attachment, const DocumentColumn& design, bool hidden) {
    ResumeNext next{attachment.trace, u"InitSGDMS"};
    std::optional<GridColumn> column;
    if (!next([&] { column = attachment.dmsGrid.AddColumn(design.key); })) {
        next([&] { column = attachment.dmsGrid.ColumnAt(design.key); });
    }
    if (!column) {
        return;
    }
    next([&] { column->SetCaption(design.caption); });
    next([&] { column->SetDataType(design.dataType); });
    if (design.width != 0) {
        next([&] { column->SetWidth(design.width); });
    }
    if (design.alignment != 0) {
        next([&] { column->SetAlignment(design.alignment); });
        next([&] { column->SetHeaderAlignment(design.alignment); });
    }
    next([&] { column->SetHidden(hidden); });
}

void SetUpColumns(Attachment& attachment) {
    const bool iconsDisabled = FileIconsDisabled(attachment.platform.registry, attachment.trace);
    for (const DocumentColumn& design : DocumentColumns()) {
        const bool isIcon = design.key == std::u16string_view(field::kIcon);
        SetUpColumn(attachment, design, isIcon ? iconsDisabled : design.hidden);
    }
}

} // namespace

void SetUpGrid(Attachment& attachment, std::shared_ptr<EventSink> sink, Subscription& events) {
    Connect(attachment, std::move(sink), events);
    ResumeNext next{attachment.trace, u"InitSGDMS"};
    const RedrawPause pause(attachment.dmsGrid, attachment.trace, u"InitSGDMS");
    SetBehaviour(attachment);
    SetUpColumns(attachment);
    next([&] { attachment.dmsGrid.SetGroupByBox(true); });
    next([&] {
        attachment.dmsGrid.SetGroupByBoxText(
            u"Um nach einer Spalte zu gruppieren, ziehen Sie die Spaltenüberschrift hierhin.");
    });
    AssignImageList(attachment);
}

void AssignImageList(Attachment& attachment) {
    ResumeNext next{attachment.trace, u"AssignImageList"};
    next([&] { attachment.dmsGrid.SetImageList(attachment.platform.shell.SmallIconList()); });
}

void RefreshGrid(Attachment& attachment) {
    ResumeNext next{attachment.trace, u"RefreshGrid"};
    next([&] { attachment.dmsGrid.RefreshRows(); });
    next([&] { attachment.dmsGrid.RefreshSortWithEmptyList(); });
}

void CheckVersion(Attachment& attachment) {
    ResumeNext next{attachment.trace, u"CheckVersion"};
    double outlook = 0;
    next([&] {
        const Value version = attachment.Item()[u"Application"].Call(u"Version");
        const std::u16string text = ToText(version, attachment.platform.locale);
        const std::size_t point = text.find(u'.');
        outlook = LeadingNumber(Left(text, point == std::u16string::npos ? 0 : point));
    });
    std::u16string system;
    next([&] { system = GetOSName(attachment.platform.system); });
    if (outlook < kFirstUnaffectedOutlook && system == u"Windows 2000") {
        AssignImageList(attachment);
    }
}

} // namespace talvix
