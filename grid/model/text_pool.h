#pragma once

#include "grid/model/text_memory.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace talvix::grid {

/// A text that stands in the pool once, however many cells hold it. Its units follow the header.
struct PooledText {
    std::uint32_t references = 0;
    std::uint32_t length = 0;
    std::uint32_t mark = 0; ///< free for whoever walks over the texts, such as a sort's rank

    std::u16string_view View() const {
        return {reinterpret_cast<const char16_t*>(this + 1), length};
    }
};

/// All texts of a grid, each kept once and counted. Texts that nothing holds any more are swept out
/// together: when they take a good part of the memory, and when nothing else is left.
class TextPool {
public:
    TextPool() = default;
    TextPool(const TextPool&) = delete;
    TextPool& operator=(const TextPool&) = delete;
    ~TextPool();

    /// Where the pool's own copy lies, with one reference more.
    TextPlace Intern(std::u16string_view text);
    /// The text at a place. It stays where it is as long as it is held.
    PooledText* At(TextPlace place) const { return static_cast<PooledText*>(memory_.At(place)); }
    /// Gives one reference back.
    void Release(TextPlace place) {
        if (--At(place)->references == 0) {
            LetGo(*At(place));
        }
    }
    /// Number of the texts that are held.
    std::size_t Size() const { return count_ - unused_; }

private:
    /// A slot of the table; a free one has no place.
    struct Entry {
        std::uint32_t hash = 0; ///< of the text, and compared before the text is looked at
        TextPlace place = 0;
    };
    static constexpr std::size_t kFewBytes = std::size_t{64} * 1024;

    TextPlace NewText(std::u16string_view text);
    void EndText(TextPlace place);
    void LetGo(const PooledText& text);
    void MakeRoom();
    void Sweep();
    std::size_t SlotOf(std::u16string_view text, std::uint32_t hash) const;
    void CloseGap(std::size_t slot);

    TextMemory memory_;
    std::vector<Entry> entries_; ///< open addressing by the lower bits of the hash
    std::size_t count_ = 0;
    std::size_t bytes_ = 0;
    std::size_t unused_ = 0; ///< of the texts that are counted
    std::size_t unusedBytes_ = 0;
};

} // namespace talvix::grid
