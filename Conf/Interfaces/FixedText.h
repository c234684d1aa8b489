#pragma once

#include <algorithm>
#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string_view>

namespace Quenzo::Detail {

/// A text of at most so many characters that stands in place. A table of views holds addresses, which are put in each
/// time that the library is loaded, into memory of the process's own; a table of these stays in the file as it is.
template <std::size_t Longest>
class FixedText {
    static_assert(Longest <= UINT8_MAX);

public:
    constexpr FixedText() = default;

    /// A text that is too long is reported: by the compiler, where the table is a constant.
    template <std::convertible_to<std::string_view> Text>
    constexpr FixedText(const Text& text) {
        const std::string_view characters = text;
        if (characters.size() > Longest) {
            throw std::length_error("a text is longer than its table allows");
        }
        std::copy(characters.begin(), characters.end(), characters_.begin());
        size_ = static_cast<std::uint8_t>(characters.size());
    }

    constexpr bool empty() const noexcept { return size_ == 0; }

    constexpr operator std::string_view() const noexcept { return {characters_.data(), size_}; }

    template <std::convertible_to<std::string_view> Text>
    friend constexpr bool operator==(const FixedText& one, const Text& other) noexcept {
        return std::string_view(one) == std::string_view(other);
    }

private:
    std::uint8_t size_ = 0;
    std::array<char, Longest> characters_ = {};
};

/// Room for the longest identifier of a codec, and of a container.
using CodecId = FixedText<27>;
using FormatId = FixedText<28>;

}  // namespace Quenzo::Detail
