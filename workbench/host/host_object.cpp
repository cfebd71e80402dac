#include "workbench/host/host_object.h"

#include "automation/failure.h"
#include "automation/text.h"

namespace talvix::host {

std::optional<MemberId> HostObject::FindMember(std::u16string_view name) {
    for (std::size_t at = 0; at < members_.size(); ++at) {
        if (SameName(members_[at].name, name)) {
            return static_cast<MemberId>(at) + 1;
        }
    }
    return std::nullopt;
}

Value HostObject::Invoke(MemberId member, unsigned access, const Arguments& arguments) {
    if (member == kDefaultMember) {
        member = FindMember(u"Item").value_or(FindMember(u"Value").value_or(kDefaultMember));
    }
    if (member < 1 || static_cast<std::size_t>(member) > members_.size()) {
        throw Failure(failure_number::kMemberNotFound, typeName_ + u" has no such member");
    }
    const bool isPut = (access & access::kAnyPut) != 0 && !arguments.values.empty();
    HostCall call{arguments.values, nullptr};
    if (isPut) {
        call.put = &arguments.values.back();
        call.arguments = arguments.values.first(arguments.values.size() - 1);
    }
    const Member& called = members_[static_cast<std::size_t>(member) - 1];
    if (isPut && !called.writable) {
        throw Failure(failure_number::kMemberNotFound, u"\"" + called.name + u"\" is read only");
    }
    return called.handler(call);
}

HostObject::Handler Constant(Value value) {
    return [value = std::move(value)](const HostCall&) { return value; };
}

HostObject::Handler TextMember(std::u16string& text, bool& changed) {
    return [&text, &changed](const HostCall& call) -> Value {
        if (call.put == nullptr) {
            return text;
        }
        const auto* given = call.put->If<std::u16string>();
        if (given == nullptr && !call.put->IsNothing()) {
            throw Failure(failure_number::kTypeMismatch, u"A text was expected");
        }
        const std::u16string next = given == nullptr ? std::u16string() : *given;
        changed = changed || next != text;
        text = next;
        return {};
    };
}

} // namespace talvix::host
