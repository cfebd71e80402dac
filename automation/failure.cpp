#include "automation/failure.h"

#include "automation/text.h"

namespace talvix {

Failure::Failure(std::int32_t number, std::u16string_view text)
    : number_(number), text_(text), narrow_(ToUtf8(text)) {}

Failure CurrentFailure() {
    try {
        throw;
    } catch (const Failure& failure) {
        return failure;
    } catch (const std::exception& failure) {
        return {failure_number::kUnexpected, FromUtf8(failure.what())};
    } catch (...) {
        return {failure_number::kUnexpected, u"Unknown failure"};
    }
}

} // namespace talvix
