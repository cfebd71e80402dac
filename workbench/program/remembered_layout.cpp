#include "workbench/program/remembered_layout.h"

#include "automation/failure.h"
#include "workbench/program/user_memory.h"

namespace talvix::workbench {

namespace {

constexpr const wchar_t* kLayout = L"Layout";

std::u16string LayoutOf(const Late& grid) {
    const Value layout = grid.Call(u"SaveLayout");
    const auto* text = layout.If<std::u16string>();
    return text == nullptr ? std::u16string() : *text;
}

} // namespace

std::u16string RestoreLayout(const Late& grid) {
    try {
        if (const std::u16string remembered = Remembered(kLayout); !remembered.empty()) {
            grid.Call(u"LoadLayout", remembered);
        }
    } catch (const Failure&) { // whoever damaged it: the columns stand as they are designed
    }
    return LayoutOf(grid);
}

void RememberLayout(const Late& grid, const std::u16string& restored) {
    const std::u16string layout = LayoutOf(grid);
    if (layout != restored) {
        Remember(kLayout, layout);
    }
}

} // namespace talvix::workbench
