#include "grid/model/gestures.h"

#include <algorithm>

namespace talvix::grid {

void Gestures::SelectFromAnchor(std::int32_t number) {
    const std::int32_t from = model_.rows.IsAlive(anchor_) ? model_.rows.NumberOf(anchor_) : number;
    model_.rows.ClearSelection();
    model_.rows.SelectUnfiltered(std::min(from, number), std::max(from, number));
}

void Gestures::MakeCurrent(std::int32_t number, bool control, bool shift) {
    const RowRef row = model_.rows.At(number);
    const bool several = model_.options.multiSelect;
    if (shift && several) {
        if (!model_.rows.IsAlive(anchor_)) {
            anchor_ = model_.rows.Current().id != 0 ? model_.rows.Current() : row;
        }
        SelectFromAnchor(number);
    } else if (!control || !several) {
        model_.rows.ClearSelection();
        model_.rows.Select(row, true);
        anchor_ = row;
    }
    const bool selected = model_.rows.IsSelected(row);
    std::vector<Range> kept = selected ? std::vector<Range>() : model_.rows.Ranges();
    model_.rows.SetCurrent(row);
    if (!selected) { // becoming current must not select here
        model_.rows.ClearSelection();
        for (const Range& range : kept) {
            model_.rows.SelectRange(range.first, range.second);
        }
    }
}

void Gestures::ClickRow(std::int32_t number, bool control, bool shift) {
    const RowRef row = model_.rows.At(number);
    if (control && !shift && model_.options.multiSelect) {
        model_.rows.Select(row, !model_.rows.IsSelected(row));
        anchor_ = row;
    }
    MakeCurrent(number, control, shift);
    model_.Changed();
}

void Gestures::Move(Step step, std::int32_t pageLines, bool control, bool shift) {
    const std::vector<std::int32_t> shown = model_.rows.ShownNumbers();
    if (shown.empty()) {
        return;
    }
    const RowRef current = model_.rows.Current();
    const std::int32_t number = current.id == 0 ? 0 : model_.rows.NumberOf(current);
    const auto place = static_cast<std::int32_t>(
        std::lower_bound(shown.begin(), shown.end(), number) - shown.begin());
    const auto last = static_cast<std::int32_t>(shown.size()) - 1;
    const std::int32_t distances[] = {-1, 1, -pageLines, pageLines, -last - 1, last + 1};
    std::int32_t next =
        number == 0 && step != Step::Last ? 0 : place + distances[static_cast<int>(step)];
    next = std::clamp(next, 0, last);
    MakeCurrent(shown[static_cast<std::size_t>(next)], control, shift);
    model_.Changed();
    if (model_.view != nullptr) {
        model_.view->ScrollTo(shown[static_cast<std::size_t>(next)]);
    }
}

void Gestures::SelectAll() {
    if (model_.options.multiSelect && model_.rows.Count() > 0) {
        model_.rows.SelectUnfiltered(1, model_.rows.Count());
        model_.Changed();
    }
}

void Gestures::ToggleCurrent() {
    const RowRef current = model_.rows.Current();
    if (current.id != 0) {
        const bool selected = model_.rows.IsSelected(current);
        if (!selected && !model_.options.multiSelect) {
            model_.rows.ClearSelection();
        }
        model_.rows.Select(current, !selected);
        model_.Changed();
    }
}

void Gestures::SetExpanded(const RowRef& row, bool expanded) {
    if (model_.rows.IsAlive(row) && model_.rows.HeadingOf(row) != nullptr) {
        model_.rows.SetExpanded(row, expanded);
        model_.Changed();
    }
}

void Gestures::ToggleHeading(std::int32_t number) {
    const RowRef row = model_.rows.At(number);
    const GroupNode* heading = model_.rows.HeadingOf(row);
    if (heading != nullptr) {
        SetExpanded(row, !heading->expanded);
    }
}

std::size_t Gestures::SearchColumn() const {
    if (const auto sorting = model_.rows.Sorting()) {
        return sorting->column;
    }
    for (std::size_t position = 0; position < model_.columns.Count(); ++position) {
        const Column& column = model_.columns.At(model_.columns.IndexAt(position));
        if (!column.hidden && column.dataType == DataType::Text) {
            return column.index;
        }
    }
    return model_.columns.Count();
}

void Gestures::TypeText(std::u16string_view typed) {
    const std::size_t column = SearchColumn();
    const std::vector<std::int32_t> shown = model_.rows.ShownNumbers();
    if (column >= model_.columns.Count() || shown.empty() || typed.empty()) {
        return;
    }
    const std::u16string sought = model_.culture.UpperCase(typed);
    const RowRef current = model_.rows.Current();
    const std::int32_t number = current.id == 0 ? 0 : model_.rows.NumberOf(current);
    // A single letter goes on to the next row, a longer text may stay where it is.
    const std::int32_t from = typed.size() == 1 ? number + 1 : std::max(number, 1);
    const auto first = static_cast<std::size_t>(std::lower_bound(shown.begin(), shown.end(), from) -
                                                shown.begin());
    for (std::size_t step = 0; step < shown.size(); ++step) {
        const std::int32_t candidate = shown[(first + step) % shown.size()];
        const RowRef row = model_.rows.At(candidate);
        if (model_.rows.HeadingOf(row) == nullptr &&
            model_.culture.UpperCase(model_.TextOf(row, column)).starts_with(sought)) {
            MakeCurrent(candidate, false, false);
            model_.Changed();
            if (model_.view != nullptr) {
                model_.view->ScrollTo(candidate);
            }
            return;
        }
    }
}

} // namespace talvix::grid
