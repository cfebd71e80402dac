#include "folder/file_name.h"

#include "automation/text.h"

#include <algorithm>
#include <iterator>

namespace talvix {

namespace {

constexpr std::u16string_view kDevices[] = {u"CON",    u"PRN",     u"AUX",   u"NUL",
                                            u"CONIN$", u"CONOUT$", u"CLOCK$"};
/// Followed by one digit; the superscript digits count too.
constexpr std::u16string_view kNumberedDevices[] = {u"COM", u"LPT"};
constexpr std::u16string_view kDeviceDigits = u"0123456789\u00B9\u00B2\u00B3";

bool IsDevice(std::u16string_view name) {
    const std::u16string_view base = Trim(name.substr(0, name.find(u'.')));
    const auto isBase = [&](std::u16string_view device) { return SameName(base, device); };
    const auto isNumbered = [&](std::u16string_view device) {
        return base.size() == device.size() + 1 && SameName(Left(base, device.size()), device) &&
               kDeviceDigits.find(base.back()) != std::u16string_view::npos;
    };
    return std::any_of(std::begin(kDevices), std::end(kDevices), isBase) ||
           std::any_of(std::begin(kNumberedDevices), std::end(kNumberedDevices), isNumbered);
}

} // namespace

bool IsPlainFileName(std::u16string_view name) {
    const bool isLegal = std::all_of(name.begin(), name.end(), [](char16_t each) {
        return each >= u' ' && kNotInFileNames.find(each) == std::u16string_view::npos;
    });
    // The system drops dots and blanks at the end: of "." and ".. ." nothing would be left.
    return isLegal && name.find_first_not_of(u". ") != std::u16string_view::npos && !IsDevice(name);
}

} // namespace talvix
