#include "automation/member_index.h"

#include "automation/failure.h"
#include "automation/text.h"

#include <algorithm>

namespace talvix {

namespace {

std::size_t TableSize(std::size_t count) {
    std::size_t size = 8;
    while (size < count * 3) {
        size *= 2;
    }
    return size;
}

std::u16string Quoted(std::u16string_view name) {
    return u"\"" + std::u16string(name) + u"\"";
}

} // namespace

MemberIndex::MemberIndex(std::vector<MemberShape> shapes, MemberId firstId)
    : shapes_(std::move(shapes)),
      entries_(shapes_.size()),
      slots_(TableSize(shapes_.size()), -1),
      firstId_(firstId) {
    for (std::size_t place = 0; place < shapes_.size(); ++place) {
        Enter(place);
    }
}

void MemberIndex::Enter(std::size_t place) {
    std::size_t slot = NameHash(shapes_[place].name) & (slots_.size() - 1);
    while (slots_[slot] >= 0) {
        slot = (slot + 1) & (slots_.size() - 1);
    }
    slots_[slot] = static_cast<std::int32_t>(place);
    std::u16string_view rest = shapes_[place].parameters;
    while (!rest.empty()) {
        std::u16string_view name = rest.substr(0, rest.find(u' '));
        rest.remove_prefix(std::min(rest.size(), name.size() + 1));
        const bool optional = name.front() == u'[';
        entries_[place].required += optional ? 0 : 1;
        entries_[place].parameters.push_back(
            {optional ? name.substr(1, name.size() - 2) : name, optional});
    }
}

/// Place of a member, -1 for none. Every call by name goes through here: two numbers are handed on
/// in registers, a view would lie in memory.
std::int32_t MemberIndex::Search(const char16_t* name, std::size_t length) const {
    const std::u16string_view wanted(name, length);
    std::size_t slot = NameHash(wanted) & (slots_.size() - 1);
    while (slots_[slot] >= 0 &&
           !SameName(shapes_[static_cast<std::size_t>(slots_[slot])].name, wanted)) {
        slot = (slot + 1) & (slots_.size() - 1);
    }
    return slots_[slot];
}

std::size_t MemberIndex::PlaceOf(MemberId member) const {
    const std::int64_t place = static_cast<std::int64_t>(member) - firstId_;
    if (place < 0 || place >= static_cast<std::int64_t>(shapes_.size())) {
        throw Failure(failure_number::kMemberNotFound, u"No such member");
    }
    return static_cast<std::size_t>(place);
}

std::optional<std::size_t> MemberIndex::FindParameter(MemberId member,
                                                      std::u16string_view name) const {
    const std::vector<Parameter>& parameters = entries_[PlaceOf(member)].parameters;
    for (std::size_t place = 0; place < parameters.size(); ++place) {
        if (SameName(parameters[place].name, name)) {
            return place;
        }
    }
    return std::nullopt;
}

void MemberIndex::Check(std::size_t place, unsigned access) const {
    const MemberShape& shape = shapes_[place];
    const bool isPut = (access & access::kAnyPut) != 0;
    const unsigned wanted = isPut ? access::kPut : access::kCall;
    if ((shape.access & wanted) == 0) {
        throw Failure(failure_number::kMemberNotFound,
                      Quoted(shape.name) + (isPut ? u" is read only" : u" cannot be read"));
    }
}

void MemberIndex::Arrange(std::size_t own, std::span<const Value> values,
                          std::span<const std::u16string_view> names,
                          std::vector<Value>& out) const {
    const Entry& entry = entries_[own];
    out.assign(entry.parameters.size(), Value(Missing()));
    const std::size_t positional = values.size() - std::min(values.size(), names.size());
    for (std::size_t place = 0; place < positional; ++place) {
        out[place] = values[place];
    }
    for (std::size_t named = positional; named < values.size(); ++named) {
        const auto place =
            FindParameter(firstId_ + static_cast<MemberId>(own), names[named - positional]);
        if (!place) {
            throw Failure(failure_number::kUnknownName,
                          u"No parameter is called " + Quoted(names[named - positional]));
        }
        out[*place] = values[named];
    }
}

void MemberIndex::Require(std::size_t place, std::span<const Value> arguments) const {
    const Entry& entry = entries_[place];
    for (std::size_t at = 0; at < entry.required; ++at) {
        if (arguments[at].Is<Missing>()) {
            throw Failure(failure_number::kArgumentNotOptional,
                          Quoted(shapes_[place].name) + u" needs the argument " +
                              Quoted(entry.parameters[at].name));
        }
    }
}

} // namespace talvix
