#pragma once

#include <span>
#include <string_view>

namespace talvix::grid {

/// An event of the grid; its number is its place in the list, counted from 1. Parameters are names
/// separated by blanks, "&" before those passed by reference.
struct EventShape {
    std::u16string_view name;
    std::u16string_view parameters;
};

std::span<const EventShape> EventShapes();

/// Number of an event by name; 0 for an unknown one.
int EventNumber(std::u16string_view name);
/// True when the event's parameter at `place` (from 0) is passed by reference.
bool IsByReference(std::u16string_view event, std::size_t place);

} // namespace talvix::grid
