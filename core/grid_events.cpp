#include "core/grid_events.h"

#include "automation/coercion.h"
#include "automation/resume_next.h"
#include "automation/text.h"
#include "common/general.h"
#include "core/document_record.h"
#include "core/forms.h"
#include "core/row_presentation.h"
#include "ui/context_menu.h"
#include "ui/document_commands.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace talvix {

namespace {

constexpr std::int32_t kIconWidth = 15;
constexpr std::int32_t kAddGroup = 1;
constexpr std::int32_t kEnter = 13;
constexpr std::int32_t kBackspace = 8;
constexpr std::int32_t kDelete = 46;
constexpr std::int32_t kCtrlOrAlt = 2;
constexpr std::int32_t kLeftButton = 1;
constexpr std::int32_t kRightButton = 2;

/// The arguments of one event. What is missing or of a wrong kind raises Failure.
class EventArguments {
public:
    EventArguments(std::span<Value> values, const Culture& culture)
        : values_(values), culture_(culture) {}

    std::int32_t Long(std::size_t place) const { return ToLong(At(place), culture_); }
    void Set(std::size_t place, bool value) { At(place) = value; }

private:
    Value& At(std::size_t place) const {
        if (place >= values_.size()) {
            throw Failure(failure_number::kBadArgumentCount, u"The event lacks an argument");
        }
        return values_[place];
    }
    std::span<Value> values_;
    const Culture& culture_;
};

bool IsIconColumn(Attachment& attachment, std::int32_t position) {
    return SameName(attachment.dmsGrid.ColumnAt(position).Key(), field::kIcon);
}

void DMSGrid_AfterGroupChange(Attachment& attachment, EventArguments&) {
    ResumeNext next{attachment.trace, u"DMSGrid_AfterGroupChange"};
    const Grid grid = attachment.dmsGrid;
    std::int32_t count = 0;
    next([&] { count = grid.ColumnCount(); });
    std::u16string first;
    for (std::int32_t position = 0; position < count && first.empty(); ++position) {
        next([&] {
            const GridColumn column = grid.ColumnAt(position);
            first = column.IsHidden() ? u"" : column.Key();
        });
    }
    std::int32_t width = kIconWidth;
    if (SameName(first, field::kIcon)) {
        next([&] {
            const std::int32_t groups = grid.GroupCount();
            width = groups * grid.GroupIndent() + kIconWidth;
        });
    }
    next([&] { grid.ColumnAt(field::kIcon).SetWidth(width); });
}

void DMSGrid_BeforeClickSort(Attachment& attachment, EventArguments& arguments) {
    if (IsIconColumn(attachment, arguments.Long(0))) {
        arguments.Set(1, true);
    }
}

void DMSGrid_BeforeGroupChange(Attachment& attachment, EventArguments& arguments) {
    if (arguments.Long(0) == kAddGroup && IsIconColumn(attachment, arguments.Long(1))) {
        arguments.Set(6, true);
    }
}

void DMSGrid_Click(Attachment& attachment, EventArguments&) {
    attachment.forms.isDoubleClick = false;
}

void DMSGrid_DblClick(Attachment& attachment, EventArguments&) {
    attachment.forms.isDoubleClick = true;
}

void DMSGrid_KeyDown(Attachment& attachment, EventArguments& arguments) {
    const std::int32_t key = arguments.Long(0);
    const std::int32_t shift = arguments.Long(1);
    if (key == kEnter && shift < kCtrlOrAlt) {
        OpenDocument(attachment, kSelectedDocuments);
    } else if ((key == kDelete || key == kBackspace) && shift == 0) {
        DeleteDMSItem(attachment);
    }
}

void DMSGrid_MouseDown(Attachment& attachment, EventArguments&) {
    attachment.forms.isDoubleClick = false;
}

void ShowContextMenu(Attachment& attachment, std::int32_t x, std::int32_t y) {
    ResumeNext next{attachment.trace, u"DMSGrid_MouseUp"};
    const Grid grid = attachment.dmsGrid;
    SystemInfo& system = attachment.platform.system;
    GridHit hit;
    next([&] {
        const float left = PixelsToPoints(system, x);
        const float top = PixelsToPoints(system, y);
        hit = grid.HitTest(left, top);
    });
    bool isNoLink = false;
    if (hit.isDataRow) {
        if (hit.row != 0) {
            next([&] { grid.SetCurrentRow(hit.row); });
        }
        isNoLink = next.If([&] {
            return ObjectTypeOf(grid.CurrentRow(), attachment.platform.locale) != kLinkDocument;
        });
    }
    const std::shared_ptr<PopupMenu> menu = attachment.contextMenu;
    if (menu == nullptr) {
        return;
    }
    for (const std::int32_t command :
         {menu_command::kOpen, menu_command::kDelete, menu_command::kChange}) {
        next([&] { menu->SetEnabled(command, hit.isDataRow); });
    }
    next([&] { menu->SetEnabled(menu_command::kProperties, hit.isDataRow && isNoLink); });
    next([&] { menu->SetEnabled(menu_command::kReadFolder, true); });
    UpdateCheckMarks(attachment);
    std::int32_t command = 0;
    next([&] { command = menu->Show(grid.Window(), kReturnCommand, kAtMouse, kAtMouse); });
    DispatchCommand(attachment, command);
}

void DMSGrid_MouseUp(Attachment& attachment, EventArguments& arguments) {
    const std::int32_t button = arguments.Long(0);
    if (button == kRightButton) {
        ShowContextMenu(attachment, arguments.Long(2), arguments.Long(3));
    } else if (button == kLeftButton) {
        const bool opens = std::exchange(attachment.forms.isDoubleClick, false);
        if (opens) {
            OpenDocument(attachment, kSelectedDocuments);
        }
        attachment.forms.isDoubleClick = false;
    }
}

/// The grid proposes the effect of a drop; a drop adds no document.
void Ignore(Attachment&, EventArguments&) {}

struct Handler {
    std::u16string_view event;
    void (*handle)(Attachment& attachment, EventArguments& arguments);
};
constexpr Handler kHandlers[] = {{u"AfterGroupChange", DMSGrid_AfterGroupChange},
                                 {u"BeforeClickSort", DMSGrid_BeforeClickSort},
                                 {u"BeforeGroupChange", DMSGrid_BeforeGroupChange},
                                 {u"Click", DMSGrid_Click},
                                 {u"DblClick", DMSGrid_DblClick},
                                 {u"KeyDown", DMSGrid_KeyDown},
                                 {u"MouseDown", DMSGrid_MouseDown},
                                 {u"MouseUp", DMSGrid_MouseUp},
                                 {u"OLEDragOver", Ignore},
                                 {u"OLEDragDrop", Ignore}};

} // namespace

void GridEvents::OnEvent(std::u16string_view name, std::span<Value> values) {
    const std::shared_ptr<void> alive = owner_.lock();
    if (attachment_ == nullptr) {
        return;
    }
    attachment_->trace.Note(u"DMSGrid", name);
    const auto* handler =
        std::find_if(std::begin(kHandlers), std::end(kHandlers),
                     [&](const Handler& each) { return SameName(each.event, name); });
    if (handler == std::end(kHandlers)) {
        return;
    }
    Attachment& attachment = *attachment_;
    ResumeNext next{attachment.trace, name};
    next([&] {
        EventArguments arguments(values, attachment.platform.locale);
        handler->handle(attachment, arguments);
    });
}

} // namespace talvix
