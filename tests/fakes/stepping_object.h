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
    Value Invoke(MemberId member, unsigned access, Arguments arguments) override {
        journal_.Step(name_);
        Value value = target_->Invoke(member, access, arguments);
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
    Object target_;
    Journal& journal_;
    std::u16string name_;
};

} // namespace talvix
