#pragma once

#include "automation/culture.h"
#include "grid/model/cell_store.h"
#include "grid/model/column_set.h"

#include <optional>
#include <string>
#include <vector>

namespace talvix::grid {

/// Tells which rows hold a text. Every word of the text has to stand in one of the row's cells as
/// they are shown, without case; all visible columns are searched, or one.
class QuickFilter {
public:
    QuickFilter(const CellStore& cells, const ColumnSet& columns, const Culture& culture)
        : cells_(cells), columns_(columns), culture_(culture) {}

    /// A text of blanks lets every row pass.
    void SetText(std::u16string_view text);
    const std::u16string& Text() const { return text_; }
    /// Nothing for all visible columns.
    void SetColumn(std::optional<std::size_t> column);
    std::optional<std::size_t> Column() const { return column_; }
    bool IsOn() const { return !words_.empty(); }
    bool Passes(Slot slot);
    /// A cell of the row was written, or the slot has another row.
    void Forget(Slot slot);
    /// Columns were shown, hidden or given another kind.
    void ForgetAll() { answers_.clear(); }

private:
    enum class Answer : std::uint8_t { Unknown, Passes, Fails };
    struct Word {
        std::u16string upper;
        bool found = false;
    };
    bool Search(Slot slot);
    /// True once every word was found.
    bool SearchCell(Slot slot, std::size_t column);

    const CellStore& cells_;
    const ColumnSet& columns_;
    const Culture& culture_;
    std::u16string text_;
    std::vector<Word> words_;
    std::optional<std::size_t> column_;
    std::vector<Answer> answers_; ///< by slot
};

} // namespace talvix::grid
