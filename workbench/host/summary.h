#pragma once

#include "automation/culture.h"
#include "workbench/host/project.h"

#include <string>

namespace talvix::host {

/// A list of documents in a few German lines: number of rows, size, kinds of documents with their
/// counts, and the time that reading them in took.
std::u16string Summary(const Project& project, double seconds, const Culture& culture);

} // namespace talvix::host
