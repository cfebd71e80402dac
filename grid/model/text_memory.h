#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace talvix::grid {

/// Where a piece of memory lies, half as long as an address and the same in every program; 0 for
/// nowhere.
using TextPlace = std::uint32_t;

/// Memory for a grid's many short texts, aligned for 32-bit numbers: cut from large blocks in steps
/// of 4 bytes, given back into one list per size. A long text has a block of its own, which goes
/// when it is given back; the other blocks go with the object.
class TextMemory {
public:
    TextMemory() = default;
    TextMemory(const TextMemory&) = delete;
    TextMemory& operator=(const TextMemory&) = delete;
    ~TextMemory() = default;

    TextPlace Take(std::size_t bytes);
    /// `bytes` is what was asked for. Cannot fail.
    void GiveBack(TextPlace place, std::size_t bytes);
    /// The memory at a place that was taken; it stays there until it is given back.
    void* At(TextPlace place) const {
        return blocks_[place / kSteps].get() + place % kSteps * kStep;
    }

private:
    static constexpr std::size_t kStep = 4;
    static constexpr std::size_t kLongest = 4096; ///< bytes that come from a block of many
    static constexpr std::size_t kBlock = std::size_t{64} * 1024;
    static constexpr std::size_t kSteps = kBlock / kStep;
    static constexpr std::size_t kMostBlocks = (std::uint64_t{1} << 32U) / kSteps;
    std::size_t AddBlock();
    TextPlace Cut(std::size_t bytes);
    TextPlace TakeOwnBlock(std::size_t bytes);

    std::array<TextPlace, kLongest / kStep + 1> free_{};
    std::vector<std::unique_ptr<std::byte[]>> blocks_; ///< their first steps are not used
    std::vector<std::size_t> vacant_;                  ///< numbers of blocks that are gone
    std::size_t ownBlocks_ = 0;
    std::size_t current_ = 0; ///< the block that is being cut
    std::size_t left_ = 0;    ///< its bytes that are not cut off yet
};

} // namespace talvix::grid
