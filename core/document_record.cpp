#include "core/document_record.h"

namespace talvix {

namespace {

constexpr std::int32_t kLong = 3;
constexpr std::int32_t kDate = 7;
constexpr std::int32_t kText = 8;
constexpr std::int32_t kImage = 65;

constexpr std::int32_t kStatusCell = 3;
constexpr std::int32_t kLeft = 4;
constexpr std::int32_t kRight = 6;

constexpr DocumentColumn kColumns[] = {
    {field::kId, u"Nr.", kLong, true, 0, 0},
    {field::kObjectType, u"Objekt Typ", kLong, true, 0, 0},
    {field::kIcon, u"", kImage, false, 15, kLeft},
    {field::kSubject, u"Name/Betreff", kText, false, 140, kLeft},
    {field::kItemSize, u"Größe", kText, false, 70, kRight},
    {field::kObjectDescription, u"Typ", kText, false, 120, kLeft},
    {field::kCreator, u"Erstellt von", kText, true, 0, 0},
    {field::kCreationDate, u"Erstellt am", kDate, false, 100, kLeft},
    {field::kLastModificationBy, u"Geändert von", kText, true, 0, 0},
    {field::kModificationDate, u"Geändert am", kDate, true, 0, 0},
    {field::kStatus, u"Status", kText, false, 30, kStatusCell},
    {field::kLongDescription, u"Notizen", kText, true, 0, 0},
    {field::kPhysicalStore1, u"Speicherort", kText, true, 0, 0},
    {field::kPhysicalStore2, u"Ordner", kText, true, 0, 0},
    {field::kPhysicalStore3, u"Speicherort3", kText, true, 0, 0},
};

} // namespace

std::span<const DocumentColumn> DocumentColumns() {
    return kColumns;
}

} // namespace talvix
