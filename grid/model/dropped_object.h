#pragma once

#include "automation/member_table.h"

#include <optional>
#include <string>
#include <vector>

namespace talvix::grid {

/// What is dragged over the grid, as listeners of OLEDragOver and OLEDragDrop see it. It is a copy
/// and stays good after the event.
class DroppedObject : public Tabled<DroppedObject> {
public:
    /// A form that the source does not offer is missing.
    DroppedObject(std::optional<std::vector<std::u16string>> files,
                  std::optional<std::u16string> text)
        : files_(std::move(files)), text_(std::move(text)) {}
    static const MemberTable<DroppedObject>& Members();
    std::u16string TypeName() const override { return u"DroppedData"; }

    bool Offers(std::int32_t format) const;
    /// Full paths in the source's order; empty when it offers no files.
    Value Files() const;
    /// Empty when the source offers no text.
    std::u16string Text() const { return text_.value_or(u""); }

private:
    std::optional<std::vector<std::u16string>> files_;
    std::optional<std::u16string> text_;
};

} // namespace talvix::grid
