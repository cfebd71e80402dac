#pragma once

#include "automation/late_object.h"

#include <functional>

namespace talvix::grid {

/// A sequence of a known length whose elements are made one by one.
class ItemSequence : public Sequence {
public:
    using Maker = std::function<Value(std::size_t)>;
    ItemSequence(std::size_t count, Maker maker) : count_(count), maker_(std::move(maker)) {}

    std::optional<Value> Next() override {
        return at_ < count_ ? std::optional(maker_(at_++)) : std::nullopt;
    }
    void Restart() override { at_ = 0; }

private:
    std::size_t count_;
    Maker maker_;
    std::size_t at_ = 0;
};

} // namespace talvix::grid
