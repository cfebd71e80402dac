#pragma once

#include "core/attachment.h"

namespace talvix {

/// Brings the derived cells of a data row up to date: "Icon", "ItemSize" and, where asked for,
/// "ObjectDescription". Group headings are left untouched. Nothing is raised: a step that fails is
/// skipped.
void PresentRow(Attachment& attachment, const GridRow& row, bool refreshTypeText = false);

/// The kind of document in a row's "ObjectType"; nothing for an empty cell or one without a number.
std::optional<std::int32_t> ObjectTypeOf(const GridRow& row, const Culture& culture);

} // namespace talvix
