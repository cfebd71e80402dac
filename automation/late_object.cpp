#include "automation/late_object.h"

#include "automation/failure.h"

namespace talvix {

std::optional<std::size_t> LateObject::FindParameter(MemberId, std::u16string_view) {
    return std::nullopt;
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): those who override it keep the sink.
Subscription LateObject::Subscribe(std::shared_ptr<EventSink>,
                                   std::span<const std::u16string_view>) {
    throw Failure(failure_number::kMemberNotFound, TypeName() + u" raises no events");
}

std::shared_ptr<Sequence> LateObject::Enumerate() {
    throw Failure(failure_number::kMemberNotFound, TypeName() + u" is not a collection");
}

Value InvokeByName(LateObject& object, std::u16string_view name, unsigned access,
                   const Arguments& arguments) {
    const auto member = object.FindMember(name);
    if (!member) {
        throw Failure(failure_number::kUnknownName,
                      object.TypeName() + u" has no member \"" + std::u16string(name) + u"\"");
    }
    return object.Invoke(*member, access, arguments);
}

} // namespace talvix
