#pragma once

#include "grid/model/text_memory.h"

#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

namespace talvix::grid {

/// A text that stands in the pool once, however many cells hold it. Its units follow the header.
struct PooledText {
    std::uint32_t references = 0;
    std::uint32_t length = 0;
    std::uint32_t hash = 0;
    std::uint32_t mark = 0; ///< free for whoever walks over the texts, such as a sort's rank

    std::u16string_view View() const {
        return {reinterpret_cast<const char16_t*>(this + 1), length};
    }
    bool Holds(std::u16string_view text) const {
        return length == text.size() &&
               (length == 0 || std::memcmp(this + 1, text.data(), length * sizeof(char16_t)) == 0);
    }
};

/// All texts of a grid, each kept once and counted.
class TextPool {
public:
    TextPool() = default;
    TextPool(const TextPool&) = delete;
    TextPool& operator=(const TextPool&) = delete;
    ~TextPool();

    /// The pool's own copy, with one reference more.
    PooledText* Intern(std::u16string_view text);
    /// Gives one reference back; the last one ends the text.
    void Release(PooledText* text);
    std::size_t Size() const { return count_; }

private:
    PooledText* NewText(std::u16string_view text, std::uint32_t hash);
    void EndText(PooledText* text);
    void Grow();
    std::size_t SlotOf(std::u16string_view text, std::uint32_t hash) const;
    void CloseGap(std::size_t slot);

    TextMemory memory_;
    std::vector<PooledText*> slots_;
    std::vector<std::uint32_t>
        hashes_; ///< of the texts in the slots, 0 for a free slot: searched first
    std::size_t count_ = 0;
};

} // namespace talvix::grid
