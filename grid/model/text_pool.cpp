#include "grid/model/text_pool.h"

#include "automation/text.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

namespace talvix::grid {

namespace {

constexpr std::size_t kFirstSize = 64;

std::size_t BytesOf(std::size_t length) {
    return sizeof(PooledText) + length * sizeof(char16_t);
}

} // namespace

TextPool::~TextPool() {
    for (const Entry& entry : entries_) {
        if (entry.place != 0) {
            EndText(entry.place);
        }
    }
}

TextPlace TextPool::NewText(std::u16string_view text) {
    const TextPlace place = memory_.Take(BytesOf(text.size()));
    auto* pooled =
        new (memory_.At(place)) PooledText{0, static_cast<std::uint32_t>(text.size()), 0};
    if (!text.empty()) {
        std::memcpy(static_cast<void*>(pooled + 1), text.data(), text.size() * sizeof(char16_t));
    }
    return place;
}

void TextPool::EndText(TextPlace place) {
    const std::size_t bytes = BytesOf(At(place)->length);
    memory_.GiveBack(place, bytes);
    bytes_ -= bytes;
    --count_;
}

void TextPool::LetGo(const PooledText& text) {
    ++unused_;
    unusedBytes_ += BytesOf(text.length);
    if (unused_ == count_ || unusedBytes_ > bytes_ / 2 + kFewBytes) {
        Sweep();
    }
}

std::size_t TextPool::SlotOf(std::u16string_view text, std::uint32_t hash) const {
    const std::size_t mask = entries_.size() - 1;
    std::size_t slot = hash & mask;
    while (entries_[slot].place != 0 &&
           (entries_[slot].hash != hash || At(entries_[slot].place)->View() != text)) {
        slot = (slot + 1) & mask;
    }
    return slot;
}

TextPlace TextPool::Intern(std::u16string_view text) {
    if (count_ * 3 >= entries_.size() * 2) {
        MakeRoom();
    }
    const auto hash = static_cast<std::uint32_t>(UnitHash(text));
    Entry& entry = entries_[SlotOf(text, hash)];
    if (entry.place == 0) {
        entry = {hash, NewText(text)};
        ++count_;
        bytes_ += BytesOf(text.size());
    } else if (At(entry.place)->references == 0) {
        --unused_;
        unusedBytes_ -= BytesOf(text.size());
    }
    ++At(entry.place)->references;
    return entry.place;
}

/// Takes the unused texts out of all clusters of slots, each from its beginning on. Cannot fail.
void TextPool::Sweep() {
    const std::size_t mask = entries_.size() - 1;
    const auto isFree = [](const Entry& entry) { return entry.place == 0; };
    const auto begin = static_cast<std::size_t>(
        std::find_if(entries_.begin(), entries_.end(), isFree) - entries_.begin());
    for (std::size_t at = 0; at < entries_.size(); ++at) {
        const std::size_t slot = (begin + at) & mask;
        while (!isFree(entries_[slot]) && At(entries_[slot].place)->references == 0) {
            EndText(entries_[slot].place);
            CloseGap(slot);
        }
    }
    unused_ = 0;
    unusedBytes_ = 0;
    if (count_ == 0) {
        entries_ = {};
    }
}

/// Frees a slot and moves the texts behind it up, so that no search stops too early at the gap.
void TextPool::CloseGap(std::size_t slot) {
    const std::size_t mask = entries_.size() - 1;
    std::size_t gap = slot;
    entries_[gap] = {};
    for (std::size_t next = (gap + 1) & mask; entries_[next].place != 0; next = (next + 1) & mask) {
        const std::size_t home = entries_[next].hash & mask;
        const bool reachable = ((next - home) & mask) >= ((next - gap) & mask);
        if (reachable) {
            entries_[gap] = std::exchange(entries_[next], {});
            gap = next;
        }
    }
}

void TextPool::MakeRoom() {
    if (unused_ > count_ / 4) {
        Sweep();
        return;
    }
    std::vector<Entry> old(entries_.empty() ? kFirstSize : entries_.size() * 2);
    old.swap(entries_);
    const std::size_t mask = entries_.size() - 1;
    for (const Entry& entry : old) {
        if (entry.place != 0) {
            std::size_t slot = entry.hash & mask;
            while (entries_[slot].place != 0) {
                slot = (slot + 1) & mask;
            }
            entries_[slot] = entry;
        }
    }
}

} // namespace talvix::grid
