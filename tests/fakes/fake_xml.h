#pragma once

#include "automation/value.h"

#include <string_view>

namespace talvix {

/// What project files need of the system's XML service: a document by its late-bound members
/// (`documentElement`, `selectNodes`) with elements (`nodeName`, `text`, `getAttribute`,
/// `selectNodes` by a name) and lists (`nextNode`). Nothing for a text that is not well formed.
/// Declarations of types and namespaces are not understood and are not well formed here.
Value FakeXmlDocument(std::u16string_view text);

} // namespace talvix
