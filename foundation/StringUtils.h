#pragma once

#include <charconv>
#include <concepts>
#include <string>
#include <string_view>
#include <system_error>

namespace Quenzo {

/// Reads a whole text as a decimal integer: an optional minus sign (signed types only), then digits, leading zeros
/// allowed; no plus sign, no blanks, nothing after it. Returns false, and leaves `out` alone, when the text is anything
/// else or the number does not fit.
template <std::integral T>
bool ToNumber(std::string_view text, T& out) {
    T number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || stop != end) {
        return false;
    }
    out = number;
    return true;
}

/// Appends the pieces of a text between separators to a container of strings, as reading lines would: an empty piece
/// between two separators counts, one after the last separator does not, and an empty text has no pieces.
template <typename Container>
void SplitString(Container& out, const std::string& text, char separator) {
    for (std::string::size_type begin = 0; begin < text.size();) {
        const auto end = text.find(separator, begin);
        out.push_back(text.substr(begin, end - begin));
        if (end == std::string::npos) {
            break;
        }
        begin = end + 1;
    }
}

}  // namespace Quenzo
