#pragma once

#include "automation/late_object.h"

#include <functional>
#include <string>
#include <vector>

namespace talvix::host {

/// One call of a host object's member.
struct HostCall {
    std::span<const Value> arguments; ///< without the new value of a put
    const Value* put = nullptr;

    /// An argument; Missing for one that was not given.
    Value At(std::size_t place) const {
        return place < arguments.size() ? arguments[place] : Value(Missing());
    }
};

/// An object of the host whose members are listed when it is made.
class HostObject : public LateObject {
public:
    using Handler = std::function<Value(const HostCall&)>;
    struct Member {
        std::u16string name;
        Handler handler;
        bool writable = false;
    };
    HostObject(std::u16string typeName, std::vector<Member> members)
        : typeName_(std::move(typeName)), members_(std::move(members)) {}

    std::optional<MemberId> FindMember(std::u16string_view name) override;
    Value Invoke(MemberId member, unsigned access, const Arguments& arguments) override;
    std::u16string TypeName() const override { return typeName_; }

private:
    std::u16string typeName_;
    std::vector<Member> members_; ///< numbered from 1; one called "Item" is the default member too
};

/// A handler for a member that always yields the same.
HostObject::Handler Constant(Value value);
/// A handler for a text that is read and put; `changed` is set by a put of another text.
HostObject::Handler TextMember(std::u16string& text, bool& changed);

} // namespace talvix::host
