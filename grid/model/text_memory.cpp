#include "grid/model/text_memory.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace talvix::grid {

TextPlace TextMemory::Take(std::size_t bytes) {
    if (bytes > kLongest) {
        return TakeOwnBlock(bytes);
    }
    const std::size_t steps = (bytes + kStep - 1) / kStep;
    if (free_[steps] == 0) {
        return Cut(steps * kStep);
    }
    const TextPlace taken = free_[steps];
    std::memcpy(&free_[steps], At(taken), sizeof taken);
    return taken;
}

/// The number of a new block without memory.
std::size_t TextMemory::AddBlock() {
    if (blocks_.size() == kMostBlocks) {
        throw std::bad_alloc();
    }
    blocks_.emplace_back();
    return blocks_.size() - 1;
}

TextPlace TextMemory::Cut(std::size_t bytes) {
    if (left_ < bytes + kStep) { // what is left of the old block is too short for most texts
        auto memory = std::make_unique_for_overwrite<std::byte[]>(kBlock);
        current_ = AddBlock();
        blocks_[current_] = std::move(memory);
        left_ = kBlock;
    }
    left_ -= bytes;
    return static_cast<TextPlace>(current_ * kSteps + left_ / kStep);
}

TextPlace TextMemory::TakeOwnBlock(std::size_t bytes) {
    if (vacant_.capacity() <= ownBlocks_) { // giving back is not to need memory
        vacant_.reserve(std::max<std::size_t>(16, vacant_.capacity() * 2));
    }
    auto memory = std::make_unique_for_overwrite<std::byte[]>(bytes + kStep);
    std::size_t block = 0;
    if (vacant_.empty()) {
        block = AddBlock();
    } else {
        block = vacant_.back();
        vacant_.pop_back();
    }
    blocks_[block] = std::move(memory);
    ++ownBlocks_;
    return static_cast<TextPlace>(block * kSteps + 1);
}

void TextMemory::GiveBack(TextPlace place, std::size_t bytes) {
    if (bytes > kLongest) {
        blocks_[place / kSteps].reset();
        vacant_.push_back(place / kSteps);
        --ownBlocks_;
        return;
    }
    TextPlace& first = free_[(bytes + kStep - 1) / kStep];
    std::memcpy(At(place), &first, sizeof first);
    first = place;
}

} // namespace talvix::grid
