#include "grid/model/text_pool.h"

#include "automation/text.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

namespace talvix::grid {

namespace {

constexpr std::size_t kFirstSize = 64;

/// Bits of an address: programs get the lower 47 bits of 64, on Windows as on Linux.
constexpr unsigned kAddressBits = sizeof(void*) == 4 ? 32 : 48;
constexpr std::uint64_t kAddress = (std::uint64_t{1} << kAddressBits) - 1;

std::uint64_t HashPart(std::uint32_t hash) {
    return (std::uint64_t{hash} << 32U) & ~kAddress;
}

std::size_t BytesOf(std::size_t length) {
    return sizeof(PooledText) + length * sizeof(char16_t);
}

} // namespace

TextPool::Entry TextPool::EntryOf(PooledText* text) {
    return reinterpret_cast<std::uintptr_t>(text) | HashPart(text->hash);
}

PooledText* TextPool::TextIn(Entry entry) {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): an entry is looked at in one piece
    return reinterpret_cast<PooledText*>(static_cast<std::uintptr_t>(entry & kAddress));
}

TextPool::~TextPool() {
    for (const Entry entry : entries_) {
        if (entry != 0) {
            EndText(TextIn(entry));
        }
    }
}

PooledText* TextPool::NewText(std::u16string_view text, std::uint32_t hash) {
    void* memory = memory_.Take(BytesOf(text.size()));
    auto* pooled = new (memory) PooledText{0, static_cast<std::uint32_t>(text.size()), hash, 0};
    if (!text.empty()) {
        std::memcpy(static_cast<void*>(pooled + 1), text.data(), text.size() * sizeof(char16_t));
    }
    return pooled;
}

void TextPool::EndText(PooledText* text) {
    memory_.GiveBack(text, BytesOf(text->length));
}

std::size_t TextPool::SlotOf(std::u16string_view text, std::uint32_t hash) const {
    const std::size_t mask = entries_.size() - 1;
    const std::uint64_t part = HashPart(hash);
    std::size_t slot = hash & mask;
    while (entries_[slot] != 0 &&
           ((entries_[slot] & ~kAddress) != part || !TextIn(entries_[slot])->Holds(text))) {
        slot = (slot + 1) & mask;
    }
    return slot;
}

PooledText* TextPool::Intern(std::u16string_view text) {
    if (count_ * 3 >= entries_.size() * 2) {
        MakeRoom();
    }
    const auto hash = static_cast<std::uint32_t>(UnitHash(text));
    Entry& entry = entries_[SlotOf(text, hash)];
    if (entry == 0) {
        entry = EntryOf(NewText(text, hash));
        ++count_;
    } else if (TextIn(entry)->references == 0) {
        --unused_;
    }
    PooledText* pooled = TextIn(entry);
    ++pooled->references;
    return pooled;
}

/// Takes the unused texts out of all clusters of slots, each from its beginning on. Cannot fail.
void TextPool::Sweep() {
    const std::size_t mask = entries_.size() - 1;
    const auto begin = static_cast<std::size_t>(
        std::find(entries_.begin(), entries_.end(), Entry{0}) - entries_.begin());
    for (std::size_t at = 0; at < entries_.size(); ++at) {
        const std::size_t slot = (begin + at) & mask;
        while (entries_[slot] != 0 && TextIn(entries_[slot])->references == 0) {
            EndText(TextIn(entries_[slot]));
            CloseGap(slot);
            --count_;
        }
    }
    unused_ = 0;
}

/// Frees a slot and moves the texts behind it up, so that no search stops too early at the gap.
void TextPool::CloseGap(std::size_t slot) {
    const std::size_t mask = entries_.size() - 1;
    std::size_t gap = slot;
    entries_[gap] = 0;
    for (std::size_t next = (gap + 1) & mask; entries_[next] != 0; next = (next + 1) & mask) {
        const std::size_t home = TextIn(entries_[next])->hash & mask;
        const bool reachable = ((next - home) & mask) >= ((next - gap) & mask);
        if (reachable) {
            entries_[gap] = std::exchange(entries_[next], 0);
            gap = next;
        }
    }
}

void TextPool::MakeRoom() {
    if (unused_ > count_ / 4) {
        Sweep();
        return;
    }
    std::vector<Entry> old(entries_.empty() ? kFirstSize : entries_.size() * 2, 0);
    old.swap(entries_);
    const std::size_t mask = entries_.size() - 1;
    for (const Entry entry : old) {
        if (entry != 0) {
            std::size_t slot = TextIn(entry)->hash & mask;
            while (entries_[slot] != 0) {
                slot = (slot + 1) & mask;
            }
            entries_[slot] = entry;
        }
    }
}

} // namespace talvix::grid
