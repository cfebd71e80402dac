#include "grid/model/text_memory.h"

#include <cstdlib>
#include <new>

namespace talvix::grid {

void* TextMemory::Take(std::size_t bytes) {
    if (bytes > kLongest) {
        void* memory = std::malloc(bytes);
        if (memory == nullptr) {
            throw std::bad_alloc();
        }
        return memory;
    }
    const std::size_t place = (bytes + kStep - 1) / kStep;
    Free*& first = free_[place];
    if (first == nullptr) {
        return Cut(place * kStep);
    }
    Free* taken = first;
    first = taken->next;
    return taken;
}

void* TextMemory::Cut(std::size_t bytes) {
    if (left_ < bytes) { // what is left of the old block is too short for most texts
        blocks_.push_back(std::make_unique<std::byte[]>(kBlock));
        left_ = kBlock;
    }
    left_ -= bytes;
    return blocks_.back().get() + left_;
}

void TextMemory::GiveBack(void* memory, std::size_t bytes) {
    if (bytes > kLongest) {
        std::free(memory);
        return;
    }
    Free*& first = free_[(bytes + kStep - 1) / kStep];
    first = new (memory) Free{first};
}

} // namespace talvix::grid
