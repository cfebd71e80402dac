#include "grid/model/group_tree.h"

#include "automation/coercion.h"

#include <algorithm>

namespace talvix::grid {

namespace {

constexpr char16_t kPathSeparator = 0x1F;

std::u16string PathPart(const Value& value, const Culture& culture) {
    const auto number = NumericContent(value);
    if (number) {
        return culture.NumberText(*number);
    }
    const auto* text = value.If<std::u16string>();
    return text == nullptr ? std::u16string() : culture.UpperCase(*text);
}

} // namespace

void GroupTree::Build(const Source& source, std::vector<Line>& display,
                      std::vector<std::int32_t>& groupOf) {
    former_ = std::move(nodes_);
    std::sort(former_.begin(), former_.end(),
              [](const GroupNode& left, const GroupNode& right) { return left.path < right.path; });
    nodes_.clear();
    display.clear();
    std::vector<std::int32_t> open(source.groups.size(), kNoNode);
    std::vector<std::uint64_t> last(source.groups.size(), 0);
    for (const Slot slot : source.rows) {
        bool differs = display.empty();
        for (std::size_t level = 0; level < open.size(); ++level) {
            const std::uint64_t key = source.keys[level][slot];
            differs = differs || key != last[level];
            if (differs) {
                last[level] = key;
                open[level] = Open(source, slot, level, level == 0 ? kNoNode : open[level - 1]);
                display.push_back(~open[level]);
            }
            ++At(open[level]).rows;
        }
        groupOf[slot] = open.back();
        display.push_back(static_cast<Line>(slot));
    }
    former_.clear();
}

std::int32_t GroupTree::Open(const Source& source, Slot slot, std::size_t level,
                             std::int32_t parent) {
    GroupNode node;
    node.parent = parent;
    node.level = static_cast<std::int32_t>(level);
    node.value = source.cells.Get(slot, source.groups[level].column);
    const std::u16string& key = source.columns.At(source.groups[level].column).key;
    node.path = (parent == kNoNode ? std::u16string() : At(parent).path) + kPathSeparator + key +
                u'=' + PathPart(node.value, source.culture);
    const auto former = std::lower_bound(
        former_.begin(), former_.end(), node.path,
        [](const GroupNode& left, const std::u16string& path) { return left.path < path; });
    const bool isKnown = former != former_.end() && former->path == node.path && former->rows > 0;
    node.id = isKnown ? former->id : source.newId();
    node.expanded = !isKnown || former->expanded;
    node.selected = isKnown && former->selected;
    nodes_.push_back(std::move(node));
    return static_cast<std::int32_t>(nodes_.size()) - 1;
}

std::int32_t GroupTree::Find(std::int32_t id, std::int32_t hint) const {
    const auto isIt = [&](const GroupNode& node) { return node.id == id && node.rows > 0; };
    if (hint >= 0 && static_cast<std::size_t>(hint) < nodes_.size() && isIt(At(hint))) {
        return hint;
    }
    const auto found = std::find_if(nodes_.begin(), nodes_.end(), isIt);
    return found == nodes_.end() ? kNoNode : static_cast<std::int32_t>(found - nodes_.begin());
}

std::int32_t GroupTree::TakeRow(std::int32_t node) {
    std::int32_t gone = 0;
    for (; node != kNoNode; node = At(node).parent) {
        gone += --At(node).rows == 0 ? 1 : 0;
    }
    return gone;
}

} // namespace talvix::grid
