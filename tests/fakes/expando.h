#pragma once

#include "automation/late_object.h"
#include "tests/fakes/journal.h"

#include <functional>
#include <iosfwd>
#include <map>
#include <vector>

namespace talvix {

/// An object whose members are given to it at run time, as a host's script would make one. What is
/// called can be written into a journal.
class Expando : public LateObject {
public:
    using Handler = std::function<Value(std::span<const Value>)>;

    /// A quiet object takes steps of the journal but writes no lines.
    explicit Expando(std::u16string name, Journal* journal = nullptr, bool quiet = false)
        : name_(std::move(name)), journal_(journal), quiet_(quiet) {}

    /// A member that yields a value and can be put.
    Expando& With(std::u16string_view member, Value value);
    /// A member that is called.
    Expando& On(std::u16string_view member, Handler handler);
    void Remove(std::u16string_view member);
    Value& Field(std::u16string_view member);

    std::optional<MemberId> FindMember(std::u16string_view name) override;
    Value Invoke(MemberId member, unsigned access, const Arguments& arguments) override;
    std::u16string TypeName() const override { return name_; }

private:
    struct Entry {
        std::u16string name;
        Value value;
        Handler handler;
        bool removed = false;
    };
    Entry& Make(std::u16string_view member);
    void Note(const Entry& entry, std::span<const Value> values, bool isPut);

    std::u16string name_;
    Journal* journal_;
    bool quiet_;
    std::vector<Entry> entries_;
};

/// Short form of a value for journals.
std::u16string Shown(const Value& value);
/// How a failing comparison shows a value.
void PrintTo(const Value& value, std::ostream* out);

} // namespace talvix
