#pragma once

#include "automation/culture.h"

namespace talvix {

/// The rules of the user who is logged on.
class Win32Locale : public Culture {
public:
    std::u16string UpperCase(std::u16string_view text) const override;
    std::u16string LowerCase(std::u16string_view text) const override;
    std::string SortKey(std::u16string_view text) const override;
    std::u16string DateText(Date date) const override;
    std::optional<Date> ReadDate(std::u16string_view text) const override;
    std::u16string NumberText(double number) const override;
    std::optional<double> ReadNumber(std::u16string_view text) const override;
    std::u16string GroupedText(double number) const override;
};

} // namespace talvix
