#include "grid/model/events.h"

#include "automation/text.h"

namespace talvix::grid {

namespace {

constexpr EventShape kShapes[] = {
    {u"AfterGroupChange", u"a b"},
    {u"BeforeClickSort", u"ColIndex &CancelSort"},
    {u"BeforeGroupChange",
     u"Operation GroupOrColIndex NewIndex &SortOrder &SortType &ShowFooter &Cancel"},
    {u"Click", u""},
    {u"DblClick", u""},
    {u"KeyDown", u"&KeyCode &Shift"},
    {u"MouseDown", u"Button Shift x Y"},
    {u"MouseUp", u"Button Shift x Y"},
    {u"OLEDragOver", u"Data &Effect Button Shift x Y &State"},
    {u"OLEDragDrop", u"Data &Effect Button Shift x Y"},
};

} // namespace

std::span<const EventShape> EventShapes() {
    return kShapes;
}

int EventNumber(std::u16string_view name) {
    int number = 0;
    for (const EventShape& shape : kShapes) {
        ++number;
        if (SameName(shape.name, name)) {
            return number;
        }
    }
    return 0;
}

bool IsByReference(std::u16string_view event, std::size_t place) {
    const int number = EventNumber(event);
    if (number == 0) {
        return false;
    }
    std::u16string_view rest = kShapes[number - 1].parameters;
    for (; place > 0 && !rest.empty(); --place) {
        const std::size_t blank = rest.find(u' ');
        rest = blank == std::u16string_view::npos ? std::u16string_view() : rest.substr(blank + 1);
    }
    return rest.starts_with(u"&");
}

} // namespace talvix::grid
