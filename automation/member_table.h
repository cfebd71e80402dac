#pragma once

#include "automation/failure.h"
#include "automation/member_index.h"

#include <vector>

namespace talvix {

/// One call of a member, its arguments in parameter order with Missing for those left out.
struct MemberCall {
    unsigned access = 0;
    std::span<const Value> arguments;
    const Value* put = nullptr; ///< the new value of a put, else null

    bool IsPut() const { return put != nullptr; }
    const Value& At(std::size_t place) const { return arguments[place]; }
};

template <typename Target>
struct Member {
    MemberShape shape;
    Value (*handler)(Target&, const MemberCall&);
};

/// The members of one class of objects, and how each is answered.
template <typename Target>
class MemberTable {
public:
    explicit MemberTable(std::vector<Member<Target>> members, MemberId firstId = 1)
        : members_(std::move(members)), index_(ShapesOf(members_), firstId) {}

    const MemberIndex& Index() const { return index_; }
    Value Invoke(Target& target, MemberId member, unsigned access,
                 const Arguments& arguments) const;

private:
    static std::vector<MemberShape> ShapesOf(const std::vector<Member<Target>>& members) {
        std::vector<MemberShape> shapes;
        shapes.reserve(members.size());
        for (const Member<Target>& member : members) {
            shapes.push_back(member.shape);
        }
        return shapes;
    }
    Value Forward(Target& target, MemberId member, unsigned access,
                  const Arguments& arguments) const;

    std::vector<Member<Target>> members_;
    MemberIndex index_;
};

template <typename Target>
Value MemberTable<Target>::Invoke(Target& target, MemberId member, unsigned access,
                                  const Arguments& arguments) const {
    const bool isPut = (access & access::kAnyPut) != 0;
    const std::size_t count =
        arguments.values.size() - (isPut && !arguments.values.empty() ? 1 : 0);
    const std::size_t place = index_.PlaceOf(member);
    const std::size_t known = index_.ParameterCount(place);
    if (count > known) {
        return Forward(target, member, access, arguments);
    }
    index_.Check(place, access);
    MemberCall call{access, arguments.values.first(count), nullptr};
    if (isPut) {
        if (arguments.values.empty()) {
            throw Failure(failure_number::kArgumentNotOptional, u"A value to put is needed");
        }
        call.put = &arguments.values.back();
    }
    std::vector<Value> arranged;
    if (count < known || !arguments.names.empty()) {
        index_.Arrange(place, call.arguments, arguments.names, arranged);
        call.arguments = arranged;
    }
    index_.Require(place, call.arguments);
    return members_[place].handler(target, call);
}

/// Arguments that the member does not take itself go to the default member of what it yields.
template <typename Target>
Value MemberTable<Target>::Forward(Target& target, MemberId member, unsigned access,
                                   const Arguments& arguments) const {
    const std::size_t place = index_.PlaceOf(member);
    const std::size_t own = index_.ParameterCount(place);
    Value yielded = Invoke(target, member, access::kCall, {arguments.values.first(own), {}});
    const auto* object = yielded.If<Object>();
    if (object == nullptr || *object == nullptr) {
        throw Failure(failure_number::kBadArgumentCount,
                      std::u16string(index_.Shapes()[place].name) + u" takes fewer arguments");
    }
    return (*object)->Invoke(kDefaultMember, access,
                             {arguments.values.subspan(own), arguments.names});
}

/// A late object that answers from the member table `Derived::Members()`.
template <typename Derived>
class Tabled : public LateObject {
public:
    std::optional<MemberId> FindMember(std::u16string_view name) override {
        return Derived::Members().Index().Find(name);
    }
    std::optional<std::size_t> FindParameter(MemberId member, std::u16string_view name) override {
        return Derived::Members().Index().FindParameter(member, name);
    }
    Value Invoke(MemberId member, unsigned access, const Arguments& arguments) override {
        return Derived::Members().Invoke(static_cast<Derived&>(*this), member, access, arguments);
    }
};

} // namespace talvix
