#include "automation/resume_next.h"

namespace talvix {

void ResumeNext::Skipped() noexcept {
    try {
        trace_.Note(procedure_, u"skipped: " + CurrentFailure().Text());
    } catch (...) { // a note that cannot be written is not worth failing for
    }
}

} // namespace talvix
