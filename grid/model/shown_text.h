#pragma once

#include "automation/culture.h"
#include "automation/value.h"
#include "grid/model/column_set.h"

namespace talvix::grid {

/// How a cell of a column of this kind is shown: dates and numbers in the user's form, "" for what
/// has no text.
std::u16string ShownText(const Value& value, DataType type, const Culture& culture);

} // namespace talvix::grid
