#pragma once

#include "automation/value.h"

#include <cstdint>
#include <span>
#include <string>

namespace talvix {

/// Keys of the fifteen fields of a document record; the grid's columns carry the same keys.
namespace field {
inline constexpr const char16_t* kId = u"ID";
inline constexpr const char16_t* kObjectType = u"ObjectType";
inline constexpr const char16_t* kIcon = u"Icon";
inline constexpr const char16_t* kSubject = u"Subject";
inline constexpr const char16_t* kItemSize = u"ItemSize";
inline constexpr const char16_t* kObjectDescription = u"ObjectDescription";
inline constexpr const char16_t* kCreator = u"Creator";
inline constexpr const char16_t* kCreationDate = u"CreationDate";
inline constexpr const char16_t* kLastModificationBy = u"LastModificationBy";
inline constexpr const char16_t* kModificationDate = u"ModificationDate";
inline constexpr const char16_t* kStatus = u"Status";
inline constexpr const char16_t* kLongDescription = u"LongDescription";
inline constexpr const char16_t* kPhysicalStore1 = u"PhysicalStore1";
inline constexpr const char16_t* kPhysicalStore2 = u"PhysicalStore2";
inline constexpr const char16_t* kPhysicalStore3 = u"PhysicalStore3";
} // namespace field

/// Kinds of documents in "ObjectType".
inline constexpr std::int32_t kFileDocument = 0;
inline constexpr std::int32_t kOutlookDocument = 1;
inline constexpr std::int32_t kLinkDocument = 2;

/// Width and alignment are the grid's own numbers; 0 leaves the grid's default.
struct DocumentColumn {
    const char16_t* key;
    const char16_t* caption;
    std::int32_t dataType;
    bool hidden;
    std::int32_t width;
    std::int32_t alignment;
};

/// The fifteen columns in their order. "Icon" is hidden as well when file icons are disabled.
std::span<const DocumentColumn> DocumentColumns();

/// The fields that a new row is given.
struct DocumentRecord {
    std::int32_t objectType = kFileDocument;
    std::u16string subject;
    std::u16string creator;
    Date creationDate;
    std::u16string lastModificationBy;
    Date modificationDate;
    std::u16string status;
    std::u16string longDescription;
    std::u16string physicalStore1;
    std::u16string physicalStore2;
    std::u16string physicalStore3;
};

} // namespace talvix
