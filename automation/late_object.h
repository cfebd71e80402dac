#pragma once

#include "automation/value.h"

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace talvix {

/// A member's number within its object. 0 is the default member.
using MemberId = std::int32_t;
inline constexpr MemberId kDefaultMember = 0;

/// How a member is reached; a call may allow several ways at once.
namespace access {
inline constexpr unsigned kMethod = 1;
inline constexpr unsigned kGet = 2;
inline constexpr unsigned kPut = 4;
inline constexpr unsigned kPutReference = 8;
inline constexpr unsigned kCall = kMethod | kGet;
inline constexpr unsigned kGetPut = kGet | kPut;
inline constexpr unsigned kAnyPut = kPut | kPutReference;
} // namespace access

/// Arguments in the order of the member's parameters. `names` belong to the last values; for a put
/// the new value follows all of them as the last value and has no name.
struct Arguments {
    std::span<const Value> values;
    std::span<const std::u16string_view> names;
};

/// Receives the events of an object by name; an argument that the event passes by reference may be
/// changed in place.
class EventSink {
public:
    virtual ~EventSink() = default;
    virtual void OnEvent(std::u16string_view name, std::span<Value> arguments) = 0;
};

/// Lasts as long as the connection is wanted; letting go of it ends the connection.
using Subscription = std::shared_ptr<void>;

/// The elements of a collection, one after the other.
class Sequence {
public:
    virtual ~Sequence() = default;
    virtual std::optional<Value> Next() = 0;
    virtual void Restart() = 0;
};

/// A thing with members that are called by name. Whatever cannot be done raises Failure.
class LateObject : public std::enable_shared_from_this<LateObject> {
public:
    LateObject() = default;
    LateObject(const LateObject&) = delete;
    LateObject& operator=(const LateObject&) = delete;
    virtual ~LateObject() = default;

    /// The number of the member called `name` (ASCII case ignored), or nothing.
    virtual std::optional<MemberId> FindMember(std::u16string_view name) = 0;
    /// Place of a member's parameter by name, or nothing.
    virtual std::optional<std::size_t> FindParameter(MemberId member, std::u16string_view name);
    virtual Value Invoke(MemberId member, unsigned access, const Arguments& arguments) = 0;
    /// The name of the object's kind, as a script's TypeName shows it.
    virtual std::u16string TypeName() const = 0;
    /// Connects a sink to the object's events. Objects without events raise Failure.
    /// `order` names the events by their numbers from 1, for an object that does not tell them.
    virtual Subscription Subscribe(std::shared_ptr<EventSink> sink,
                                   std::span<const std::u16string_view> order);
    /// The elements, for objects that are collections; others raise Failure.
    virtual std::shared_ptr<Sequence> Enumerate();

    /// The face that the object has outside already, for the edge that knows its kind; null for
    /// none.
    virtual void* Face() const { return nullptr; }

    Object Self() { return shared_from_this(); }
};

/// Calls a member by name. An unknown name raises Failure with the name in its text.
Value InvokeByName(LateObject& object, std::u16string_view name, unsigned access,
                   const Arguments& arguments);

} // namespace talvix
