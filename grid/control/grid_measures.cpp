#include "grid/control/grid_painter.h"
#include "grid/model/shown_text.h"
#include "platform/win32/device_context.h"
#include "platform/win32/wide.h"

#include <algorithm>

namespace talvix::grid {

namespace {

constexpr std::int32_t kAroundText = 12;  // units on both sides of a text together
constexpr std::int32_t kAroundArrow = 14; // room for the sort arrow
constexpr std::int32_t kImageWidth = 22;
constexpr std::int32_t kNarrowest = 24;
constexpr std::int32_t kWidestFit = 900;
constexpr std::size_t kMeasuredTexts = 64;

/// Keeps the texts with the most characters: they are the only ones that are measured.
class LongestTexts {
public:
    void Offer(std::u16string text) {
        if (texts_.size() == kMeasuredTexts && text.size() <= texts_.front().size()) {
            return;
        }
        if (texts_.size() == kMeasuredTexts) {
            std::pop_heap(texts_.begin(), texts_.end(), IsLonger);
            texts_.pop_back();
        }
        texts_.push_back(std::move(text));
        std::push_heap(texts_.begin(), texts_.end(), IsLonger);
    }
    const std::vector<std::u16string>& Texts() const { return texts_; }

private:
    static bool IsLonger(const std::u16string& left, const std::u16string& right) {
        return left.size() > right.size();
    }
    std::vector<std::u16string> texts_; ///< a heap, the shortest first
};

} // namespace

std::int32_t GridPainter::WidthOf(HDC dc, std::u16string_view text) const {
    SIZE size{};
    GetTextExtentPoint32W(dc, WideUnits(text), static_cast<int>(text.size()), &size);
    return size.cx;
}

std::int32_t GridPainter::BestWidth(std::size_t column) {
    const Column& design = model_.columns.At(column);
    const ScreenDc screen;
    const Chosen chosen(screen.Get(), font_.Get());
    const std::int32_t dpi = model_.layout.metrics.dpi;
    const auto units = [&](std::int32_t pixels) { return MulDiv(pixels, 96, dpi) + kAroundText; };
    std::int32_t width = units(WidthOf(screen.Get(), design.caption)) + kAroundArrow;
    if (design.dataType == DataType::Image) {
        width = std::max(design.caption.empty() ? 0 : width, kImageWidth);
    } else {
        LongestTexts longest;
        for (const Slot slot : model_.rows.DataRows()) {
            longest.Offer(
                ShownText(model_.rows.GetAt(slot, column), design.dataType, model_.culture));
        }
        for (const std::u16string& text : longest.Texts()) {
            width = std::max(width, units(WidthOf(screen.Get(), text)));
        }
    }
    if (model_.layout.FirstVisible() == static_cast<std::int32_t>(column)) {
        width += model_.options.groupIndent * static_cast<int>(model_.rows.Groups().size());
    }
    return std::clamp(width, kNarrowest, kWidestFit);
}

std::optional<GridPainter::CutText> GridPainter::CutTextAt(POINT point) {
    const Layout& layout = model_.layout;
    const HitResult hit = model_.HitTest(point.x, point.y);
    if (hit.column < 0 || (hit.area != Area::Heading && hit.area != Area::Cell)) {
        return std::nullopt;
    }
    const auto position = static_cast<std::size_t>(hit.column);
    const std::size_t index = model_.columns.IndexAt(position);
    const Column& column = model_.columns.At(index);
    const bool isHeading = hit.area == Area::Heading;
    if (!isHeading && column.dataType == DataType::Image) {
        return std::nullopt;
    }
    CutText cut;
    cut.text = isHeading ? column.caption : model_.TextOf(model_.rows.At(hit.row), index);
    const std::int32_t top =
        isHeading ? layout.GroupBoxBottom() : layout.TopOfLine(layout.LineAt(point.y));
    const std::int32_t height = isHeading ? layout.metrics.headerHeight : layout.metrics.rowHeight;
    const std::int32_t left = layout.LeftOf(position);
    cut.place = RECT{left, top, left + layout.WidthAt(position), top + height};
    std::int32_t room = layout.WidthAt(position) - layout.Scaled(8);
    if (layout.FirstVisible() == static_cast<std::int32_t>(index) && !isHeading) {
        room -= layout.Scaled(model_.options.groupIndent *
                              static_cast<int>(model_.rows.Groups().size()));
    }
    const ScreenDc screen;
    const Chosen chosen(screen.Get(), font_.Get());
    return WidthOf(screen.Get(), cut.text) > room ? std::optional(std::move(cut)) : std::nullopt;
}

} // namespace talvix::grid
