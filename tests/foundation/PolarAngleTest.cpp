// Covers foundation/PolarAngle.h: the directions whose angles are known, angles against arctangents in long double, and
// some to the last bit, which no machine may give otherwise.

#include <foundation/PolarAngle.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <numbers>

namespace Quenzo {
namespace {

constexpr double kPi = std::numbers::pi;

TEST(PolarAngle, EighthsOfATurn_AreTheNearestNumbers) {
    EXPECT_EQ(PolarAngle(0, 1), 0);
    EXPECT_EQ(PolarAngle(1, 1), kPi / 4);
    EXPECT_EQ(PolarAngle(1, 0), kPi / 2);
    EXPECT_EQ(PolarAngle(1, -1), kPi * 3 / 4);
    EXPECT_EQ(PolarAngle(0, -1), kPi);
    EXPECT_EQ(PolarAngle(-1, -1), -kPi * 3 / 4);
    EXPECT_EQ(PolarAngle(-1, 0), -kPi / 2);
    EXPECT_EQ(PolarAngle(-1, 1), -kPi / 4);
}

TEST(PolarAngle, Zero_KeepsItsSignAndTakesTheOtherOnesSide) {
    for (const double x : {0.0, 1.0}) {
        EXPECT_EQ(PolarAngle(0.0, x), 0);
        EXPECT_FALSE(std::signbit(PolarAngle(0.0, x)));
        EXPECT_EQ(PolarAngle(-0.0, x), 0);
        EXPECT_TRUE(std::signbit(PolarAngle(-0.0, x)));
        EXPECT_EQ(PolarAngle(0.0, -x), kPi);
        EXPECT_EQ(PolarAngle(-0.0, -x), -kPi);
    }
}

TEST(PolarAngle, LastBit_IsTheSameOnEveryMachine) {
    EXPECT_EQ(PolarAngle(1, 3), 0x1.4978fa3269ee1p-2);
    EXPECT_EQ(PolarAngle(3, 1), 0x1.3fc176b7a856p+0);
    EXPECT_EQ(PolarAngle(5, -12), 0x1.5f97315254857p+1);
    EXPECT_EQ(PolarAngle(-0.0001, 7), -0x1.df5959ef2f9a1p-17);
    EXPECT_EQ(PolarAngle(-1e300, 1e-300), -kPi / 2);
    EXPECT_EQ(PolarAngle(1e-300, 1e300), 0);
    EXPECT_EQ(PolarAngle(std::numeric_limits<double>::denorm_min(), 1), std::numeric_limits<double>::denorm_min());
}

// How far the angle is from the true one, in units in the last place.
long double Error(double y, double x) {
    const double angle = std::abs(PolarAngle(y, x));
    const double unit = std::nextafter(angle, std::numeric_limits<double>::infinity()) - angle;
    return std::abs(std::abs(std::atan2(static_cast<long double>(y), static_cast<long double>(x))) - angle) / unit;
}

TEST(PolarAngle, TenThousandthsOfATurn_AreTrueToTheLastPlace) {
    for (int step = -5000; step <= 5000; ++step) {
        const double direction = step * kPi / 5000;
        EXPECT_LT(Error(std::sin(direction), std::cos(direction)), 1) << step;
    }
}

// Between two of the known angles the next one is taken, and both sides have to agree.
TEST(PolarAngle, WhereTheNextKnownAngleIsTaken_GrowsOn) {
    for (int sixteenths = 1; sixteenths < 16; sixteenths += 2) {
        const double middle = sixteenths / 16.0;
        const double below = std::nextafter(middle, 0);
        const double above = std::nextafter(middle, 1);
        EXPECT_LE(PolarAngle(below, 1), PolarAngle(middle, 1)) << middle;
        EXPECT_LE(PolarAngle(middle, 1), PolarAngle(above, 1)) << middle;
        EXPECT_LT(Error(below, 1), 1) << middle;
        EXPECT_LT(Error(middle, 1), 1) << middle;
        EXPECT_LT(Error(above, 1), 1) << middle;
    }
}

RC_GTEST_PROP(PolarAngle, AnyDirection_IsTrueToTheLastPlace, (std::int32_t y, std::int32_t x, std::uint8_t halvings)) {
    RC_ASSERT(Error(std::ldexp(y, -halvings), x) < 1);
    RC_ASSERT(Error(y, std::ldexp(x, -halvings)) < 1);
}

}  // namespace
}  // namespace Quenzo
