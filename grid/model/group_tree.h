#pragma once

#include "grid/model/cell_store.h"
#include "grid/model/column_set.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace talvix::grid {

/// A line of the display: a data row's slot, or the complement of a group heading's node.
using Line = std::int32_t;
constexpr bool IsHeading(Line line) {
    return line < 0;
}
/// Place of a heading's node in its tree.
constexpr std::size_t NodeOfHeading(Line heading) {
    const Line node = ~heading;
    return static_cast<std::size_t>(node);
}
constexpr std::int32_t kNoNode = -1;

struct Grouping {
    std::size_t column = 0; ///< index
    bool descending = false;
};

/// A group heading.
struct GroupNode {
    std::int32_t parent = kNoNode;
    std::int32_t level = 0;
    std::int32_t id = 0;
    std::int32_t rows = 0; ///< data rows below, at all depths; 0 once it is gone
    bool expanded = true;
    bool selected = false;
    Value value;
    std::u16string path; ///< the values from the outermost group on, to know it again
};

/// The group headings over the data rows.
class GroupTree {
public:
    /// What a new tree is made from: rows in group order, one list of sort keys per grouping.
    struct Source {
        const std::vector<Slot>& rows;
        const std::vector<Grouping>& groups;
        const std::vector<std::vector<std::uint64_t>>& keys;
        const CellStore& cells;
        const ColumnSet& columns;
        const Culture& culture;
        std::function<std::int32_t()> newId;
    };

    /// Builds all headings anew. One that was there before keeps its number, stays open or closed
    /// and selected or not. `groupOf` receives the innermost heading of each slot.
    void Build(const Source& source, std::vector<Line>& display,
               std::vector<std::int32_t>& groupOf);
    void Clear() { nodes_.clear(); }

    std::vector<GroupNode>& Nodes() { return nodes_; }
    const std::vector<GroupNode>& Nodes() const { return nodes_; }
    GroupNode& At(std::int32_t node) { return nodes_[static_cast<std::size_t>(node)]; }
    const GroupNode& At(std::int32_t node) const { return nodes_[static_cast<std::size_t>(node)]; }
    /// The node with the id, or kNoNode. `hint` is looked at first.
    std::int32_t Find(std::int32_t id, std::int32_t hint) const;
    /// Takes one data row out of a heading and all above it; the number of headings that are gone.
    std::int32_t TakeRow(std::int32_t node);

private:
    std::int32_t Open(const Source& source, Slot slot, std::size_t level, std::int32_t parent);

    std::vector<GroupNode> nodes_;
    std::vector<GroupNode> former_;
};

} // namespace talvix::grid
