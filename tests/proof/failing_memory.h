#pragma once

#include <cstddef>

namespace talvix {

/// While it lives, pieces of memory that are asked for within CountedMemory are counted, and the
/// planned one cannot be had.
class FailingMemory {
public:
    /// Fails the `failAt`-th piece (0 for none), with `failOn` all from there on.
    FailingMemory(std::size_t failAt, bool failOn);
    FailingMemory(const FailingMemory&) = delete;
    FailingMemory& operator=(const FailingMemory&) = delete;
    ~FailingMemory();
    std::size_t Asked() const;
};

/// The length of a block whose memory counts.
class CountedMemory {
public:
    CountedMemory();
    CountedMemory(const CountedMemory&) = delete;
    CountedMemory& operator=(const CountedMemory&) = delete;
    ~CountedMemory();

private:
    bool outer_;
};

} // namespace talvix
