#pragma once

#include <cstdint>
#include <string_view>

namespace talvix {

// Message-box styles and answers are the system's own numbers.
inline constexpr std::int32_t kPlainMessage = 0;     ///< OK
inline constexpr std::int32_t kQuestion = 36;        ///< Yes and No, question mark
inline constexpr std::int32_t kWarningQuestion = 52; ///< Yes and No, exclamation mark
inline constexpr std::int32_t kExclamation = 48;     ///< OK, exclamation mark
inline constexpr std::int32_t kInformation = 64;     ///< OK, information icon
inline constexpr std::int32_t kAnswerYes = 6;

/// Message boxes.
class Messages {
public:
    virtual ~Messages() = default;

    /// Shows a message until it is answered; yields the number of the button. An empty title shows
    /// the component's name. 0 when it cannot be shown.
    virtual std::int32_t Show(std::u16string_view text, std::int32_t style,
                              std::u16string_view title) = 0;
};

} // namespace talvix
