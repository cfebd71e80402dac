#include "common/mod_message_handling.h"

namespace talvix {

namespace {

constexpr std::int32_t kInformationStyle = 64;
constexpr const char16_t* kUserText =
    u"Um automatisch einen Projektordner erstellen zu können, werden noch Angaben benötigt. Bitte "
    u"ergänzen Sie die Informationen bevor Sie fortfahren.\r\nSie können den Speicherort "
    u"alternativ "
    u"auch manuell angeben. ";

} // namespace

void RegisterMessages(const Late& common) {
    common.Call(u"AddMessageDescription", kMissingProjectData, u"Projectnumber empty (Store Path):",
                true, kUserText, kInformationStyle, u"Fehlende Informationen", true, true);
}

} // namespace talvix
