#pragma once

#include "automation/late_object.h"
#include "tests/fakes/journal.h"

namespace talvix {

/// Stands before another object and takes a step of the journal with each call; objects that it
/// yields stand behind one like it.
class SteppingObject : public LateObject {
public:
    SteppingObject(Object target, Journal& journal)
        : target_(std::move(target)), journal_(journal) {}

    std::optional<MemberId> FindMember(std::u16string_view name) override {
        name_ = name;
        return target_->FindMember(name);
    }
    Value Invoke(MemberId member, unsigned access, const Arguments& arguments) override {
        journal_.Step(name_);
        if (journal_.onGridCall) {
            const bool isPut = (access & access::kAnyPut) != 0;
            const auto* key =
                arguments.values.empty() ? nullptr : arguments.values[0].If<std::u16string>();
            journal_.onGridCall(name_ + (key == nullptr ? u"" : u" " + *key) +
                                (isPut ? u" =" : u""));
        }
        if (journal_.isGridGone) {
            throw Failure(failure_number::kObjectGone, u"The grid is gone");
        }
        const std::vector<Value> own = Unwrapped(arguments.values);
        Value value = target_->Invoke(member, access, {own, arguments.names});
        const auto* object = value.If<Object>();
        return object == nullptr || *object == nullptr
                   ? value
                   : Value(std::make_shared<SteppingObject>(*object, journal_));
    }
    std::u16string TypeName() const override { return target_->TypeName(); }
    Subscription Subscribe(std::shared_ptr<EventSink> sink,
                           std::span<const std::u16string_view> order) override {
        journal_.Step(u"subscribe");
        return target_->Subscribe(std::move(sink), order);
    }

private:
    /// Objects that stand behind another one of these give the object itself.
    static std::vector<Value> Unwrapped(std::span<const Value> values) {
        std::vector<Value> own(values.begin(), values.end());
        for (Value& value : own) {
            const auto* object = value.If<Object>();
            const auto stepping =
                object == nullptr ? nullptr : std::dynamic_pointer_cast<SteppingObject>(*object);
            if (stepping != nullptr) {
                value = stepping->target_;
            }
        }
        return own;
    }

    Object target_;
    Journal& journal_;
    std::u16string name_;
};

} // namespace talvix
