#include "common/settings.h"

#include "automation/resume_next.h"
#include "common/mod_registry_access.h"

namespace talvix {

bool FileIconsDisabled(Registry& registry, Trace& trace) {
    ResumeNext next{trace, u"FileIconsDisabled"};
    std::int32_t setting = 0;
    for (const std::uint32_t root : {kLocalMachine, kCurrentUser}) {
        if (next.If(
                [&] { return RegValueExists(registry, root, kTalvixKey, u"FileIconsDisabled"); })) {
            next([&] { setting = RegGetDWord(registry, root, kTalvixKey, u"FileIconsDisabled"); });
        }
    }
    return setting == 1;
}

} // namespace talvix
