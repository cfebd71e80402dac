#include "automation/value.h"

#include "automation/late_object.h"

namespace talvix {

bool Value::IsNothing() const {
    const auto* object = If<Object>();
    return IsAbsent() || Is<Null>() || (object != nullptr && *object == nullptr);
}

void Value::AssignText(std::u16string_view text) {
    if (auto* own = std::get_if<std::u16string>(&storage_)) {
        own->assign(text);
    } else {
        storage_.emplace<std::u16string>(text);
    }
}

} // namespace talvix
