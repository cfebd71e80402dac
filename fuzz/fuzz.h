#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

namespace talvix {

/// The input as UTF-16 code units, whatever they are.
inline std::u16string TextOfInput(const std::uint8_t* data, std::size_t size) {
    std::u16string text;
    for (std::size_t at = 0; at + 1 < size; at += 2) {
        text += static_cast<char16_t>(data[at] | (data[at + 1] << 8));
    }
    return text;
}

/// Cuts the next piece off, up to a NUL character.
inline std::u16string_view NextPiece(std::u16string_view& rest) {
    const std::u16string_view piece = rest.substr(0, rest.find(u'\0'));
    rest.remove_prefix(piece.size() < rest.size() ? piece.size() + 1 : piece.size());
    return piece;
}

/// What must hold; a fuzzer stops with the input that breaks it.
inline void Require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

} // namespace talvix
