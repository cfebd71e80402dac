#include "tests/proof/failing_memory.h"

#include <cstdlib>
#include <new>

namespace talvix {

namespace {

bool isArmed = false;
bool counts = false;
bool failsOn = false;
std::size_t planned = 0;
std::size_t asked = 0;

/// Memory, or nothing when this piece is not to be had.
void* Piece(std::size_t size) noexcept {
    if (isArmed && counts) {
        ++asked;
        if (planned > 0 && (asked == planned || (failsOn && asked > planned))) {
            return nullptr;
        }
    }
    return std::malloc(size == 0 ? 1 : size);
}

} // namespace

FailingMemory::FailingMemory(std::size_t failAt, bool failOn) {
    planned = failAt;
    failsOn = failOn;
    asked = 0;
    isArmed = true;
}

FailingMemory::~FailingMemory() {
    isArmed = false;
}

std::size_t FailingMemory::Asked() const {
    return asked;
}

CountedMemory::CountedMemory() : outer_(counts) {
    counts = true;
}

CountedMemory::~CountedMemory() {
    counts = outer_;
}

} // namespace talvix

void* operator new(std::size_t size) {
    void* piece = talvix::Piece(size);
    if (piece == nullptr) {
        throw std::bad_alloc();
    }
    return piece;
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return talvix::Piece(size);
}

void* operator new[](std::size_t size) {
    return operator new(size);
}

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return talvix::Piece(size);
}

void operator delete(void* piece) noexcept {
    std::free(piece);
}

void operator delete(void* piece, std::size_t) noexcept {
    std::free(piece);
}

void operator delete[](void* piece) noexcept {
    std::free(piece);
}

void operator delete[](void* piece, std::size_t) noexcept {
    std::free(piece);
}
