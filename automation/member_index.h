#pragma once

#include "automation/late_object.h"

#include <vector>

namespace talvix {

/// What a member table says of one member. Parameters are names separated by blanks, optional ones
/// in brackets: "Column Value [StartRow]".
struct MemberShape {
    std::u16string_view name;
    unsigned access = 0;
    std::u16string_view parameters;
};

/// Names, numbers and parameters of one kind of object; look-ups go by hash. A member's number is
/// its place in the table counted from `firstId`.
class MemberIndex {
public:
    MemberIndex(std::vector<MemberShape> shapes, MemberId firstId);

    std::optional<MemberId> Find(std::u16string_view name) const {
        const std::int32_t place = Search(name.data(), name.size());
        return place < 0 ? std::nullopt : std::optional(firstId_ + place);
    }
    std::optional<std::size_t> FindParameter(MemberId member, std::u16string_view name) const;
    /// A member's place in the table; Failure for a number that no member has. The members below go
    /// by place.
    std::size_t PlaceOf(MemberId member) const;
    /// Checks the way of access; what is not allowed raises Failure.
    void Check(std::size_t place, unsigned access) const;
    /// Number of parameters, optional ones included.
    std::size_t ParameterCount(std::size_t place) const {
        return entries_[place].parameters.size();
    }
    /// Positions the arguments (named ones included) and fills gaps with Missing.
    void Arrange(std::size_t own, std::span<const Value> values,
                 std::span<const std::u16string_view> names, std::vector<Value>& out) const;
    /// Raises Failure for a required parameter without an argument.
    void Require(std::size_t place, std::span<const Value> arguments) const;
    std::span<const MemberShape> Shapes() const { return shapes_; }
    MemberId FirstId() const { return firstId_; }

private:
    struct Parameter {
        std::u16string_view name;
        bool optional = false;
    };
    struct Entry {
        std::vector<Parameter> parameters;
        std::size_t required = 0;
    };
    void Enter(std::size_t place);
    std::int32_t Search(const char16_t* name, std::size_t length) const;

    std::vector<MemberShape> shapes_;
    std::vector<Entry> entries_;
    std::vector<std::int32_t> slots_; ///< open addressing, -1 for free
    MemberId firstId_;
};

} // namespace talvix
