#pragma once

#include "grid/model/grid_model.h"

namespace talvix::grid {

/// A display that only remembers what it was asked for.
struct FakeView : GridView {
    void Refresh() override { ++refreshes; }
    void ScrollTo(std::int32_t number) override { scrolledTo = number; }
    std::int64_t Window() const override { return 77; }
    std::int32_t BestWidth(std::size_t) override { return 123; }
    int refreshes = 0;
    std::int32_t scrolledTo = 0;
};

} // namespace talvix::grid
