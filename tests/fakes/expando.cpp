#include "tests/fakes/expando.h"

#include "automation/coercion.h"
#include "automation/failure.h"
#include "automation/text.h"
#include "tests/fakes/fake_culture.h"

#include <ostream>

namespace talvix {

Expando::Entry& Expando::Make(std::u16string_view member) {
    for (Entry& entry : entries_) {
        if (SameName(entry.name, member)) {
            entry.removed = false;
            return entry;
        }
    }
    entries_.push_back({std::u16string(member), {}, {}, false});
    return entries_.back();
}

Expando& Expando::With(std::u16string_view member, Value value) {
    Make(member).value = std::move(value);
    return *this;
}

Expando& Expando::On(std::u16string_view member, Handler handler) {
    Make(member).handler = std::move(handler);
    return *this;
}

void Expando::Remove(std::u16string_view member) {
    Make(member).removed = true;
}

Value& Expando::Field(std::u16string_view member) {
    return Make(member).value;
}

std::optional<MemberId> Expando::FindMember(std::u16string_view name) {
    for (std::size_t at = 0; at < entries_.size(); ++at) {
        if (SameName(entries_[at].name, name) && !entries_[at].removed) {
            return static_cast<MemberId>(at) + 1;
        }
    }
    return std::nullopt;
}

void Expando::Note(const Entry& entry, std::span<const Value> values, bool isPut) {
    if (journal_ == nullptr || quiet_) {
        return;
    }
    std::u16string line = name_ + u"." + entry.name;
    for (std::size_t at = 0; at < values.size(); ++at) {
        line += isPut && at + 1 == values.size() ? u" = " : (at == 0 ? u" " : u", ");
        line += Shown(values[at]);
    }
    journal_->Write(line);
}

Value Expando::Invoke(MemberId member, unsigned access, const Arguments& arguments) {
    const auto place = static_cast<std::size_t>(member) - 1;
    if (place >= entries_.size() || entries_[place].removed) {
        throw Failure(failure_number::kMemberNotFound, u"No such member");
    }
    const bool isPut = (access & access::kAnyPut) != 0;
    if (journal_ != nullptr) {
        journal_->Step(entries_[place].name);
    }
    Note(entries_[place], arguments.values, isPut);
    if (entries_[place].handler) {
        const Handler handler = entries_[place].handler;
        return handler(arguments.values);
    }
    if (isPut) {
        entries_[place].value = arguments.values.back();
        return {};
    }
    Value value = entries_[place].value;
    if (!arguments.values.empty() && value.Is<Object>() && *value.If<Object>() != nullptr) {
        return (*value.If<Object>())->Invoke(kDefaultMember, access, arguments);
    }
    return value;
}

std::u16string Shown(const Value& value) {
    if (const auto* object = value.If<Object>()) {
        return *object == nullptr ? u"Nothing" : (*object)->TypeName();
    }
    if (value.Is<Missing>()) {
        return u"missing";
    }
    if (const auto* list = value.If<List>()) {
        return u"list of " + DecimalText(static_cast<long long>((*list)->size()));
    }
    return value.Is<ErrorCode>() ? u"error" : ToText(value, FakeCulture());
}

void PrintTo(const Value& value, std::ostream* out) {
    *out << "kind " << value.Content().index() << ": " << ToUtf8(Shown(value));
}

} // namespace talvix
