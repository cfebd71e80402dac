#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <string_view>

namespace talvix {

/// Numbers of the failures that automation clients know; each is the system's own result code.
namespace failure_number {
inline constexpr std::int32_t kUnexpected = static_cast<std::int32_t>(0x8000FFFF);
inline constexpr std::int32_t kUnknownName = static_cast<std::int32_t>(0x80020006);
inline constexpr std::int32_t kMemberNotFound = static_cast<std::int32_t>(0x80020003);
inline constexpr std::int32_t kTypeMismatch = static_cast<std::int32_t>(0x80020005);
inline constexpr std::int32_t kBadIndex = static_cast<std::int32_t>(0x8002000B);
inline constexpr std::int32_t kBadArgumentCount = static_cast<std::int32_t>(0x8002000E);
inline constexpr std::int32_t kArgumentNotOptional = static_cast<std::int32_t>(0x8002000F);
inline constexpr std::int32_t kInvalidArgument = static_cast<std::int32_t>(0x80070057);
inline constexpr std::int32_t kNoObject = static_cast<std::int32_t>(0x800A005B);
inline constexpr std::int32_t kObjectGone = static_cast<std::int32_t>(0x800401FD);
} // namespace failure_number

/// A request that could not be met: the system's result code and a text for people.
class Failure : public std::exception {
public:
    Failure(std::int32_t number, std::u16string_view text);

    std::int32_t Number() const noexcept { return number_; }
    const std::u16string& Text() const noexcept { return text_; }
    const char* what() const noexcept override { return narrow_.c_str(); }

private:
    std::int32_t number_;
    std::u16string text_;
    std::string narrow_;
};

/// The failure in flight, whatever was thrown, as a Failure. Call it inside a handler only.
Failure CurrentFailure();

} // namespace talvix
