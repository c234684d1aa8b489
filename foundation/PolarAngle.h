#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace Quenzo {

/// A number of more digits than a double has: the nearest double, and what that lacks.
struct PreciseNumber {
    double value;
    double rest;
};

/// The difference of two such numbers, of which the first is the larger, none of them below 0.
constexpr PreciseNumber operator-(PreciseNumber larger, PreciseNumber smaller) noexcept {
    const double value = larger.value - smaller.value;
    return {value, larger.value - value - smaller.value + (larger.rest - smaller.rest)};
}

/// The angle of the direction (x, y) in radians, from -pi to pi: std::atan2, but the same to the last bit on every
/// machine. C libraries round theirs differently; this takes only operations that IEEE 754 rounds alike everywhere.
/// Differs from the true angle by less than one unit in the last place. Neither coordinate may be NaN or lie
/// beyond 2^1000 either way.
inline double PolarAngle(double y, double x) noexcept {
    constexpr PreciseNumber kHalfTurn = {3.141592653589793, 1.2246467991473532e-16};
    constexpr PreciseNumber kQuarterTurn = {1.5707963267948966, 6.123233995736766e-17};
    // The arctangents of 0/8 to 8/8.
    constexpr std::array<PreciseNumber, 9> kEighths = {{{0.0, 0.0},
                                                        {0.12435499454676144, -3.1253241424539383e-18},
                                                        {0.24497866312686414, 1.0698755618734451e-17},
                                                        {0.35877067027057225, -2.4623815582638635e-17},
                                                        {0.4636476090008061, 2.2698777452961687e-17},
                                                        {0.5585993153435624, -5.4556305485916264e-18},
                                                        {0.6435011087932844, 1.5834785051444286e-17},
                                                        {0.7188299996216245, -2.1478388444456983e-17},
                                                        {0.7853981633974483, 3.061616997868383e-17}}};
    const double longer = std::max(std::abs(x), std::abs(y));
    const double shorter = std::min(std::abs(x), std::abs(y));
    if (longer == 0) {
        return std::copysign(std::signbit(x) ? kHalfTurn.value : 0, y);
    }
    // Turned back by the nearest of the known angles, the direction has a tangent of at most about 1/16, where seven
    // terms of the arctangent's series suffice.
    const double eighths = std::round(shorter / longer * 8);
    PreciseNumber angle = kEighths[static_cast<std::size_t>(eighths)];
    const double divisor = std::fma(eighths / 8, shorter, longer);
    const double dividend = std::fma(-eighths / 8, longer, shorter);
    const double tangent = dividend / divisor;
    const double square = tangent * tangent;
    double series = 0;
    for (const double odd : {13.0, 11.0, 9.0, 7.0, 5.0, 3.0}) {
        series = square * (1 / odd - series);
    }
    // The division's remainder and the rest of the series, which are too small to change the tangent itself.
    const double less = tangent * series - std::fma(-tangent, divisor, dividend) / divisor;
    double toward = 1;
    if (std::abs(y) > std::abs(x)) {
        angle = kQuarterTurn - angle;
        toward = -toward;
    }
    if (std::signbit(x)) {
        angle = kHalfTurn - angle;
        toward = -toward;
    }
    return std::copysign(angle.value + (toward * tangent + (angle.rest - toward * less)), y);
}

}  // namespace Quenzo
