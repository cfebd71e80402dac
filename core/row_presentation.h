#pragma once

#include "core/attachment.h"

namespace talvix {

/// Brings the derived cells of a data row up to date: "Icon", "ItemSize" and, where asked for,
/// "ObjectDescription". Group headings are left untouched. Nothing is raised: a step that fails is
/// skipped.
void PresentRow(Attachment& attachment, const GridRow& row, bool refreshTypeText = false);

/// The same, "ObjectDescription" included, for a row that was just filled: its kind and location
/// are not read back, and it has no picture that would have to go.
void PresentNewRow(Attachment& attachment, const GridRow& row, std::int32_t objectType,
                   std::u16string_view physicalStore1);

/// The kind of document in a row's "ObjectType"; nothing for an empty cell or one without a number.
std::optional<std::int32_t> ObjectTypeOf(const GridRow& row, const Culture& culture);

} // namespace talvix
