#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <vector>

namespace talvix::grid {

/// Memory for a grid's many short texts: cut from large blocks in steps of 8 bytes, given back
/// into one list per size. Long texts get memory of their own, which has to be given back; the
/// blocks go with the object.
class TextMemory {
public:
    TextMemory() = default;
    TextMemory(const TextMemory&) = delete;
    TextMemory& operator=(const TextMemory&) = delete;
    ~TextMemory() = default;

    void* Take(std::size_t bytes);
    /// `bytes` is what was asked for.
    void GiveBack(void* memory, std::size_t bytes);

private:
    static constexpr std::size_t kStep = 8;
    static constexpr std::size_t kLongest = 512; ///< bytes of a text that comes from a block
    static constexpr std::size_t kBlock = std::size_t{64} * 1024;
    struct Free {
        Free* next;
    };
    void* Cut(std::size_t bytes);

    std::array<Free*, kLongest / kStep + 1> free_{};
    std::vector<std::unique_ptr<std::byte[]>> blocks_;
    std::size_t left_ = 0; ///< bytes of the last block that are not cut off yet
};

} // namespace talvix::grid
