#include "grid/model/shown_text.h"

#include "automation/coercion.h"

namespace talvix::grid {

std::u16string ShownText(const Value& value, DataType type, const Culture& culture) {
    if (value.Is<Object>() || value.Is<List>() || value.Is<ErrorCode>() || value.Is<Missing>()) {
        return {};
    }
    const auto number = NumericContent(value);
    if (type == DataType::Date && number) {
        return culture.DateText(Date{*number});
    }
    return ToText(value, culture);
}

} // namespace talvix::grid
