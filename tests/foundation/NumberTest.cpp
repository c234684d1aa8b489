// Covers foundation/Number.h: conversions of floating-point values at the ends of each integer's range and beyond, the
// way of rounding, and the values that are no number.

#include <foundation/Number.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <bit>
#include <cmath>
#include <concepts>
#include <cstdint>
#include <limits>

namespace Quenzo {
namespace {

using Double = std::numeric_limits<double>;

static_assert(SaturatingTruncate<int>(-1.5) == -1, "known to the compiler too");

template <std::integral To>
void Expect(double value, To truncated, To rounded) {
    EXPECT_EQ(SaturatingTruncate<To>(value), truncated) << value;
    EXPECT_EQ(SaturatingRound<To>(value), rounded) << value;
}

template <std::integral To>
void ExpectBoth(double value, To expected) {
    Expect<To>(value, expected, expected);
}

// What lies outside every range.
template <std::integral To>
void ExpectSaturation(To lowest, To largest) {
    ExpectBoth<To>(Double::infinity(), largest);
    ExpectBoth<To>(-Double::infinity(), lowest);
    ExpectBoth<To>(Double::max(), largest);
    ExpectBoth<To>(Double::lowest(), lowest);
    ExpectBoth<To>(1e20, largest);
    ExpectBoth<To>(-1e20, lowest);
    ExpectBoth<To>(Double::quiet_NaN(), 0);
    ExpectBoth<To>(-Double::quiet_NaN(), 0);
    ExpectBoth<To>(Double::denorm_min(), 0);
    ExpectBoth<To>(-Double::denorm_min(), 0);
    ExpectBoth<To>(0.0, 0);
    ExpectBoth<To>(-0.0, 0);
}

TEST(NumberTest, Saturation_OfEveryWidth) {
    ExpectSaturation<std::int8_t>(-128, 127);
    ExpectSaturation<std::uint8_t>(0, 255);
    ExpectSaturation<std::int16_t>(-32768, 32767);
    ExpectSaturation<std::uint16_t>(0, 65535);
    ExpectSaturation<std::int32_t>(std::numeric_limits<int>::min(), 2147483647);
    ExpectSaturation<std::uint32_t>(0, 4294967295U);
    ExpectSaturation<std::int64_t>(std::numeric_limits<std::int64_t>::min(), 9223372036854775807LL);
    ExpectSaturation<std::uint64_t>(0, 18446744073709551615ULL);
}

TEST(NumberTest, Int32_AtTheEndsOfItsRange) {
    constexpr std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
    ExpectBoth<std::int32_t>(2147483646.0, 2147483646);
    ExpectBoth<std::int32_t>(2147483647.0, 2147483647);
    ExpectBoth<std::int32_t>(2147483647.25, 2147483647);
    ExpectBoth<std::int32_t>(2147483648.0, 2147483647);
    Expect<std::int32_t>(2147483646.5, 2147483646, 2147483647);
    ExpectBoth<std::int32_t>(2147483647.5, 2147483647);
    ExpectBoth<std::int32_t>(-2147483648.0, lowest);
    ExpectBoth<std::int32_t>(-2147483648.5, lowest);
    ExpectBoth<std::int32_t>(-2147483649.0, lowest);
    Expect<std::int32_t>(-2147483647.5, -2147483647, lowest);
}

TEST(NumberTest, Uint32_AtTheEndsOfItsRange) {
    ExpectBoth<std::uint32_t>(4294967295.0, 4294967295U);
    Expect<std::uint32_t>(4294967294.5, 4294967294U, 4294967295U);
    ExpectBoth<std::uint32_t>(4294967295.5, 4294967295U);
    ExpectBoth<std::uint32_t>(4294967296.0, 4294967295U);
    ExpectBoth<std::uint32_t>(-0.5, 0U);
    ExpectBoth<std::uint32_t>(-1.0, 0U);
    Expect<std::uint32_t>(0.5, 0U, 1U);
}

TEST(NumberTest, Int64_AtTheEndsOfItsRange) {
    constexpr std::int64_t lowest = std::numeric_limits<std::int64_t>::min();
    ExpectBoth<std::int64_t>(9223372036854774784.0, 9223372036854774784LL);
    ExpectBoth<std::int64_t>(9223372036854775808.0, 9223372036854775807LL);
    ExpectBoth<std::int64_t>(-9223372036854774784.0, -9223372036854774784LL);
    ExpectBoth<std::int64_t>(-9223372036854775808.0, lowest);
    ExpectBoth<std::int64_t>(-9223372036854777856.0, lowest);
    ExpectBoth<std::int64_t>(9007199254740993.0, 9007199254740992LL);
}

TEST(NumberTest, Uint64_AtTheEndsOfItsRange) {
    ExpectBoth<std::uint64_t>(9223372036854775808.0, 9223372036854775808ULL);
    ExpectBoth<std::uint64_t>(18446744073709549568.0, 18446744073709549568ULL);
    ExpectBoth<std::uint64_t>(18446744073709551616.0, 18446744073709551615ULL);
    ExpectBoth<std::uint64_t>(-1.0, 0ULL);
}

TEST(NumberTest, Uint8_AtTheEndsOfItsRange) {
    Expect<std::uint8_t>(254.5, 254, 255);
    ExpectBoth<std::uint8_t>(255.0, 255);
    ExpectBoth<std::uint8_t>(255.5, 255);
    ExpectBoth<std::uint8_t>(256.0, 255);
    ExpectBoth<std::uint8_t>(-0.5, 0);
    Expect<std::uint8_t>(0.5, 0, 1);
    Expect<std::uint8_t>(127.5, 127, 128);
}

TEST(NumberTest, Truncation_IsTowardZero) {
    EXPECT_EQ(SaturatingTruncate<int>(1.9999999), 1);
    EXPECT_EQ(SaturatingTruncate<int>(-1.9999999), -1);
    EXPECT_EQ(SaturatingTruncate<int>(0.9999999), 0);
    EXPECT_EQ(SaturatingTruncate<int>(-0.9999999), 0);
    EXPECT_EQ(SaturatingTruncate<int>(2.0), 2);
}

TEST(NumberTest, Rounding_FromTheMiddleIsAwayFromZero) {
    EXPECT_EQ(SaturatingRound<int>(0.5), 1);
    EXPECT_EQ(SaturatingRound<int>(1.5), 2);
    EXPECT_EQ(SaturatingRound<int>(2.5), 3);
    EXPECT_EQ(SaturatingRound<int>(-0.5), -1);
    EXPECT_EQ(SaturatingRound<int>(-1.5), -2);
    EXPECT_EQ(SaturatingRound<int>(-2.5), -3);
}

TEST(NumberTest, Rounding_BesideTheMiddleIsToTheNearest) {
    EXPECT_EQ(SaturatingRound<int>(0.49999999999999994), 0);
    EXPECT_EQ(SaturatingRound<int>(-0.49999999999999994), 0);
    EXPECT_EQ(SaturatingRound<int>(0.5000000000000001), 1);
    EXPECT_EQ(SaturatingRound<int>(2.4), 2);
    EXPECT_EQ(SaturatingRound<int>(2.6), 3);
    EXPECT_EQ(SaturatingRound<std::int64_t>(4503599627370497.5), 4503599627370498LL);
    EXPECT_EQ(SaturatingRound<std::int64_t>(4503599627370497.0), 4503599627370497LL);
}

// All finite values, and those that are none.
rc::Gen<double> AnyDouble() {
    return rc::gen::map(rc::gen::arbitrary<std::uint64_t>(),
                        [](std::uint64_t bits) { return std::bit_cast<double>(bits * 0x9E3779B97F4A7C15ULL); });
}

RC_GTEST_PROP(NumberTest, Conversion_OfAnyValueIsTheNearestThatFits, ()) {
    const double value = *AnyDouble();
    const auto result = static_cast<double>(SaturatingTruncate<std::int32_t>(value));
    if (std::isnan(value)) {
        RC_ASSERT(result == 0);
    } else if (value >= 2147483647.0) {
        RC_ASSERT(result == 2147483647.0);
    } else if (value <= -2147483648.0) {
        RC_ASSERT(result == -2147483648.0);
    } else {
        RC_ASSERT(std::abs(value - result) < 1);
        RC_ASSERT(std::abs(result) <= std::abs(value));
    }
}

RC_GTEST_PROP(NumberTest, Conversion_OfAnIntegerIsTheIntegerItself, (std::int32_t number)) {
    RC_ASSERT(SaturatingTruncate<std::int32_t>(number) == number);
    RC_ASSERT(SaturatingRound<std::int32_t>(number) == number);
}

}  // namespace
}  // namespace Quenzo
