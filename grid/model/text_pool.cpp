#include "grid/model/text_pool.h"

#include "automation/text.h"

#include <cstring>
#include <new>
#include <utility>

namespace talvix::grid {

namespace {

constexpr std::size_t kFirstSize = 64;

/// The lowest bit is always set and says nothing.
std::size_t Home(std::uint32_t hash, std::size_t mask) {
    return (hash >> 1U) & mask;
}

std::size_t BytesOf(std::size_t length) {
    return sizeof(PooledText) + length * sizeof(char16_t);
}

} // namespace

TextPool::~TextPool() {
    for (PooledText* text : slots_) {
        if (text != nullptr) {
            EndText(text);
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
    const std::size_t mask = slots_.size() - 1;
    std::size_t slot = Home(hash, mask);
    while (hashes_[slot] != 0 && (hashes_[slot] != hash || !slots_[slot]->Holds(text))) {
        slot = (slot + 1) & mask;
    }
    return slot;
}

PooledText* TextPool::Intern(std::u16string_view text) {
    if (count_ * 3 >= slots_.size() * 2) {
        Grow();
    }
    const auto hash = static_cast<std::uint32_t>(UnitHash(text)) | 1U; // never 0
    const std::size_t slot = SlotOf(text, hash);
    if (slots_[slot] == nullptr) {
        slots_[slot] = NewText(text, hash);
        hashes_[slot] = hash;
        ++count_;
    }
    ++slots_[slot]->references;
    return slots_[slot];
}

void TextPool::Release(PooledText* text) {
    if (--text->references > 0) {
        return;
    }
    const std::size_t slot = SlotOf(text->View(), text->hash);
    slots_[slot] = nullptr;
    hashes_[slot] = 0;
    EndText(text);
    --count_;
    CloseGap(slot);
}

/// Moves the texts behind a freed slot up, so that no search stops too early at the gap.
void TextPool::CloseGap(std::size_t slot) {
    const std::size_t mask = slots_.size() - 1;
    std::size_t gap = slot;
    for (std::size_t next = (gap + 1) & mask; hashes_[next] != 0; next = (next + 1) & mask) {
        const std::size_t home = Home(hashes_[next], mask);
        const bool reachable = ((next - home) & mask) >= ((next - gap) & mask);
        if (reachable) {
            slots_[gap] = std::exchange(slots_[next], nullptr);
            hashes_[gap] = std::exchange(hashes_[next], 0);
            gap = next;
        }
    }
}

void TextPool::Grow() {
    std::vector<PooledText*> old(slots_.empty() ? kFirstSize : slots_.size() * 2, nullptr);
    std::vector<std::uint32_t> hashes(old.size(), 0);
    old.swap(slots_);
    hashes_.swap(hashes);
    for (PooledText* text : old) {
        if (text != nullptr) {
            const std::size_t slot = SlotOf(text->View(), text->hash);
            slots_[slot] = text;
            hashes_[slot] = text->hash;
        }
    }
}

} // namespace talvix::grid
