#include "grid/model/find_index.h"

namespace talvix::grid {

namespace {

constexpr std::size_t kFirstSize = 64;
constexpr std::size_t kFrequentFrom = 24;

} // namespace

void FindIndex::Add(std::uint32_t hash, Slot slot) {
    if (count_ * 3 >= entries_.size() * 2) {
        Grow();
    }
    const std::size_t mask = entries_.size() - 1;
    std::size_t at = hash & mask;
    std::size_t alike = 0;
    for (; entries_[at].slot != kFree; at = (at + 1) & mask) {
        if (entries_[at].hash != hash) {
            continue;
        }
        if (entries_[at].slot == kFrequent || entries_[at].slot == slot) {
            return;
        }
        if (++alike == kFrequentFrom) {
            entries_[at].slot = kFrequent;
            return;
        }
    }
    entries_[at] = {hash, slot};
    ++count_;
}

bool FindIndex::Candidates(std::uint32_t hash, std::vector<Slot>& rows) const {
    rows.clear();
    if (entries_.empty()) {
        return true;
    }
    const std::size_t mask = entries_.size() - 1;
    for (std::size_t at = hash & mask; entries_[at].slot != kFree; at = (at + 1) & mask) {
        if (entries_[at].hash != hash) {
            continue;
        }
        if (entries_[at].slot == kFrequent) {
            return false;
        }
        rows.push_back(entries_[at].slot);
    }
    return true;
}

void FindIndex::Grow() {
    std::vector<Entry> old(entries_.empty() ? kFirstSize : entries_.size() * 2);
    old.swap(entries_);
    const std::size_t mask = entries_.size() - 1;
    for (const Entry& entry : old) {
        std::size_t at = entry.hash & mask;
        while (entry.slot != kFree && entries_[at].slot != kFree) {
            at = (at + 1) & mask;
        }
        if (entry.slot != kFree) {
            entries_[at] = entry;
        }
    }
}

} // namespace talvix::grid
