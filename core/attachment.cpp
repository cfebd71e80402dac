#include "core/attachment.h"

#include "automation/coercion.h"

namespace talvix {

std::u16string Attachment::ReadGlobalSetting(std::u16string_view name) const {
    return ToText(talvixCommon.Call(u"ReadGlobalSetting", name), platform.locale);
}

std::u16string Attachment::UserProperty(std::u16string_view name) const {
    const Late property = Item()[u"UserProperties"](u"Item", name);
    return ToText(property.Call(u"Value"), platform.locale);
}

void Attachment::SetUserProperty(std::u16string_view name, std::u16string_view text) const {
    Item()[u"UserProperties"](u"Item", name).Set(u"Value", text);
}

} // namespace talvix
