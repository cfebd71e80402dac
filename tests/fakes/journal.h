#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace talvix {

/// What happened, line by line, over all fakes of a test.
class Journal {
public:
    void Write(std::u16string_view line) { lines_.emplace_back(line); }
    void Clear() { lines_.clear(); }
    const std::vector<std::u16string>& Lines() const { return lines_; }
    /// Number of lines that begin with `start`.
    std::size_t Count(std::u16string_view start) const {
        std::size_t count = 0;
        for (const std::u16string& line : lines_) {
            count += line.starts_with(start) ? 1 : 0;
        }
        return count;
    }

private:
    std::vector<std::u16string> lines_;
};

using Lines = std::vector<std::u16string>;

} // namespace talvix
