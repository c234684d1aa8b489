#pragma once

#include <concepts>
#include <limits>

namespace Quenzo {

/// Converts a floating-point value to an integer toward zero. A value that does not fit gives the nearest integer that
/// does, and NaN gives 0, on every machine: the plain conversion is undefined then.
template <std::integral To>
constexpr To SaturatingTruncate(double value) noexcept {
    // The largest value may round up to a power of two when it turns into a double, so "not below it" means too large.
    constexpr To lowest = std::numeric_limits<To>::lowest();
    constexpr To largest = std::numeric_limits<To>::max();
    if (value != value) {
        return 0;
    }
    if (value <= static_cast<double>(lowest)) {
        return lowest;
    }
    if (value >= static_cast<double>(largest)) {
        return largest;
    }
    return static_cast<To>(value);
}

/// The same, to the nearest integer and from the middle between two away from zero.
template <std::integral To>
To SaturatingRound(double value) noexcept {
    // Which is std::round, but <cmath> takes longer to compile than all that stands in the headers here.
    return SaturatingTruncate<To>(__builtin_round(value));
}

}  // namespace Quenzo
