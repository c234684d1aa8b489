// Covers Conf/Interfaces/Transform2D.h: the operations entry by entry, how exactly they are rounded, and the angle read
// back. The bounding boxes and chains of operations have files of their own.

#include <Conf/Interfaces/Transform2D.h>

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <numbers>
#include <type_traits>

namespace Quenzo::Conf {
namespace {

using Entries = std::array<double, 9>;

constexpr double kPi = std::numbers::pi;
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kLargest = std::numeric_limits<double>::max();

constexpr Entries kIdentity = {1, 0, 0, 0, 1, 0, 0, 0, 1};
constexpr Entries kCounted = {2, 3, 5, 7, 11, 13, 17, 19, 23};

static_assert(sizeof(Transform2D) == 72);
static_assert(std::is_trivially_copyable_v<Transform2D>);

void ExpectNear(const Transform2D& transform, const Entries& expected) {
    for (std::size_t i = 0; i < 9; ++i) {
        EXPECT_NEAR(transform.m[i], expected[i], 1e-15) << "m" << i;
    }
}

TEST(Transform2D, Default_IsTheIdentity) {
    EXPECT_EQ(Transform2D().m, kIdentity);
    EXPECT_EQ(Transform2D(), Transform2D{kIdentity});
}

TEST(Transform2D, Equality_ComparesEveryEntry) {
    for (std::size_t i = 0; i < 9; ++i) {
        Transform2D other{kCounted};
        other.m[i] += 0.5;
        EXPECT_NE(other, Transform2D{kCounted}) << "m" << i;
    }
    EXPECT_EQ(Transform2D{kCounted}, Transform2D{kCounted});
}

TEST(Transform2D, Operations_ReturnTheObjectItself) {
    Transform2D transform;
    EXPECT_EQ(&transform.Translate(1, 2), &transform);
    EXPECT_EQ(&transform.Translate(0, 0), &transform);
    EXPECT_EQ(&transform.Scale(2, 3), &transform);
    EXPECT_EQ(&transform.Scale(1, 1), &transform);
    EXPECT_EQ(&transform.Rotate(1), &transform);
}

TEST(Translate, Identity_SetsTheTranslation) {
    EXPECT_EQ(Transform2D().Translate(3, -4).m, (Entries{1, 0, 0, 0, 1, 0, 3, -4, 1}));
}

TEST(Translate, AnyMatrix_AddsTheFirstRowsToTheThird) {
    EXPECT_EQ(Transform2D{kCounted}.Translate(10, 100).m, (Entries{2, 3, 5, 7, 11, 13, 737, 1149, 1373}));
    EXPECT_EQ(Transform2D{kCounted}.Translate(10, 0).m, (Entries{2, 3, 5, 7, 11, 13, 37, 49, 73}));
    EXPECT_EQ(Transform2D{kCounted}.Translate(0, 100).m, (Entries{2, 3, 5, 7, 11, 13, 717, 1119, 1323}));
}

TEST(Translate, ByZero_TouchesNothing) {
    EXPECT_EQ(Transform2D{kCounted}.Translate(0, 0).m, kCounted);
    EXPECT_EQ(Transform2D{kCounted}.Translate(-0.0, 0.0).m, kCounted);
    // Calculated, infinity times zero would be NaN.
    const Entries infinite = {kInfinity, 0, 0, 0, kInfinity, 0, 1, 2, 3};
    EXPECT_EQ(Transform2D{infinite}.Translate(0, 0).m, infinite);
    EXPECT_TRUE(std::isnan(Transform2D{infinite}.Translate(0, 1).m[6]));
}

TEST(Translate, Sums_AreFusedFirstAlongTheXAxis) {
    // The square needs 61 bits; only a fused sum keeps the last one.
    const double a = 1 + 0x1p-30;
    const double exact = 0x1p-29 + 0x1p-60;
    EXPECT_EQ(Transform2D({a, a, a, 0, 0, 0, -1, -1, -1}).Translate(a, 0).m,
              (Entries{a, a, a, 0, 0, 0, exact, exact, exact}));
    EXPECT_EQ(Transform2D({0, 0, 0, a, a, a, -1, -1, -1}).Translate(0, a).m,
              (Entries{0, 0, 0, a, a, a, exact, exact, exact}));
    // Adding 1 to 2^53 changes nothing and adding 2 does; the other way round the end would be 2^53 + 4.
    const double big = 0x1p53;
    EXPECT_EQ(Transform2D({1, 1, 1, 2, 2, 2, big, big, big}).Translate(1, 1).m,
              (Entries{1, 1, 1, 2, 2, 2, big + 2, big + 2, big + 2}));
}

TEST(Translate, NaN_IsNotZero) {
    const Transform2D transform = Transform2D().Translate(kNaN, 0);
    EXPECT_TRUE(std::isnan(transform.m[6]));
    EXPECT_TRUE(std::isnan(transform.m[7]));
}

TEST(Scale, AnyMatrix_MultipliesTheFirstTwoRows) {
    EXPECT_EQ(Transform2D{kCounted}.Scale(10, 100).m, (Entries{20, 30, 50, 700, 1100, 1300, 17, 19, 23}));
    EXPECT_EQ(Transform2D{kCounted}.Scale(-1, 1).m, (Entries{-2, -3, -5, 7, 11, 13, 17, 19, 23}));
    EXPECT_EQ(Transform2D{kCounted}.Scale(1, 0).m, (Entries{2, 3, 5, 0, 0, 0, 17, 19, 23}));
}

TEST(Scale, ByOne_TouchesNothing) { EXPECT_EQ(Transform2D{kCounted}.Scale(1, 1).m, kCounted); }

TEST(Scale, AfterTranslate_LeavesTheTranslationAlone) {
    EXPECT_EQ(Transform2D().Translate(5, 6).Scale(2, 3).m, (Entries{2, 0, 0, 0, 3, 0, 5, 6, 1}));
    EXPECT_EQ(Transform2D().Scale(2, 3).Translate(5, 6).m, (Entries{2, 0, 0, 0, 3, 0, 10, 18, 1}));
}

TEST(Rotate, QuarterTurns_SwapTheAxes) {
    ExpectNear(Transform2D().Rotate(kPi / 2), {0, 1, 0, -1, 0, 0, 0, 0, 1});
    ExpectNear(Transform2D().Rotate(kPi), {-1, 0, 0, 0, -1, 0, 0, 0, 1});
    ExpectNear(Transform2D().Rotate(-kPi / 2), {0, -1, 0, 1, 0, 0, 0, 0, 1});
    ExpectNear(Transform2D{{2, 3, 5, 7, 11, 13, 17, 19, 23}}.Rotate(kPi / 2), {7, 11, 13, -2, -3, -5, 17, 19, 23});
}

TEST(Rotate, AThirdOfAHalfTurn_HasTheSineBesideTheCosine) {
    const double sine = 0.86602540378443864676;
    ExpectNear(Transform2D().Rotate(kPi / 3), {0.5, sine, 0, -sine, 0.5, 0, 0, 0, 1});
}

TEST(Rotate, ByZero_IsCalculatedLikeAnyOther) {
    EXPECT_EQ(Transform2D{kCounted}.Rotate(0).m, kCounted);
    const Transform2D infinite = Transform2D({kInfinity, 0, 0, 0, 1, 0, 0, 0, 1}).Rotate(0);
    EXPECT_EQ(infinite.m[0], kInfinity);
    EXPECT_TRUE(std::isnan(infinite.m[3]));
}

TEST(Rotate, Sums_AreNotFused) {
    int fusedWouldDiffer = 0;
    for (int step = 1; step < 100; ++step) {
        const double angle = step / 16.0;
        const double c = std::cos(angle);
        const double s = std::sin(angle);
        const Transform2D transform = Transform2D({1.1, 0, 0, 2.3, 0, 0, 0, 0, 1}).Rotate(angle);
        // Through memory, so that no compiler can fuse what the test expects.
        const volatile double cx = c * 1.1;
        const volatile double sy = s * 2.3;
        const volatile double sx = -s * 1.1;
        const volatile double cy = c * 2.3;
        EXPECT_EQ(transform.m[0], cx + sy) << angle;
        EXPECT_EQ(transform.m[3], sx + cy) << angle;
        fusedWouldDiffer += std::fma(c, 1.1, sy) != cx + sy || std::fma(s, 2.3, cx) != cx + sy ? 1 : 0;
    }
    EXPECT_GT(fusedWouldDiffer, 10);
}

TEST(Rotate, InfiniteAngle_GivesNaNInTheFirstTwoRows) {
    const Transform2D transform = Transform2D().Rotate(kInfinity);
    for (std::size_t i = 0; i < 6; ++i) {
        EXPECT_TRUE(std::isnan(transform.m[i])) << "m" << i;
    }
    EXPECT_EQ(transform.m[8], 1);
}

// The angle of a matrix with these first two rows.
double Rotation(double m0, double m1, double m3, double m4) {
    return Transform2D{{m0, m1, 0, m3, m4, 0, 0, 0, 1}}.GetRotation();
}

TEST(GetRotation, Identity_IsZero) { EXPECT_EQ(Transform2D().GetRotation(), 0); }

TEST(GetRotation, FirstRow_TellsTheAngle) {
    EXPECT_DOUBLE_EQ(Rotation(0, 1, 0, 0), kPi / 2);
    EXPECT_DOUBLE_EQ(Rotation(0, -1, 0, 0), -kPi / 2);
    EXPECT_DOUBLE_EQ(Rotation(5, 5, 0, 0), kPi / 4);
    EXPECT_DOUBLE_EQ(Rotation(-5, 5, 0, 0), 3 * kPi / 4);
    EXPECT_DOUBLE_EQ(Rotation(-5, -5, 0, 0), -3 * kPi / 4);
    EXPECT_DOUBLE_EQ(Rotation(1e200, 1e200, 0, 0), kPi / 4);
    EXPECT_DOUBLE_EQ(Rotation(1e-200, -1e-200, 0, 0), -kPi / 4);
}

TEST(GetRotation, HalfTurnWithoutAPositiveSine_IsNegative) {
    EXPECT_DOUBLE_EQ(Rotation(-1, 0, 0, -1), -kPi);
    EXPECT_DOUBLE_EQ(Rotation(-1, -0.0, 0, -1), -kPi);
    EXPECT_DOUBLE_EQ(Rotation(-1, 1e-300, 0, -1), kPi);
}

TEST(GetRotation, SecondRow_TellsTheAngleOnlyIfTheFirstIsZero) {
    EXPECT_EQ(Rotation(0, 0, 0, 1), 0);
    EXPECT_DOUBLE_EQ(Rotation(0, 0, 0, -1), kPi);
    EXPECT_DOUBLE_EQ(Rotation(0, 0, -1, 0), kPi / 2);
    EXPECT_DOUBLE_EQ(Rotation(0, 0, 1, 0), kPi / 2 + kPi);
    EXPECT_DOUBLE_EQ(Rotation(0, 0, -1, 1), kPi / 4);
    EXPECT_DOUBLE_EQ(Rotation(0, 0, 1, 1), -kPi / 4);
    EXPECT_DOUBLE_EQ(Rotation(0, 0, -1, -1), 3 * kPi / 4);
    EXPECT_DOUBLE_EQ(Rotation(0, 0, 1, -1), 5 * kPi / 4);
    EXPECT_DOUBLE_EQ(Rotation(1, 0, -1, 0), 0);
}

TEST(GetRotation, NoLengthInEitherRow_IsNaN) {
    EXPECT_TRUE(std::isnan(Rotation(0, 0, 0, 0)));
    EXPECT_TRUE(std::isnan(Transform2D{}.Scale(0, 0).GetRotation()));
    EXPECT_TRUE(std::isnan((Transform2D{{0, 0, 1, 0, 0, 1, 1, 1, 1}}.GetRotation())));
}

TEST(GetRotation, EntriesThatAreNotFinite_FollowIeee754) {
    EXPECT_TRUE(std::isnan(Rotation(kNaN, 0, 0, 1)));
    EXPECT_TRUE(std::isnan(Rotation(kInfinity, 0, 0, 1)));
    EXPECT_DOUBLE_EQ(Rotation(1, kInfinity, 0, 1), kPi / 2);
    EXPECT_DOUBLE_EQ(Rotation(kLargest, kLargest, 0, 0), kPi / 2);
}

TEST(GetRotation, AfterRotate_IsTheAngleWithinOneTurn) {
    for (int degrees = -720; degrees <= 720; ++degrees) {
        const double rotation = Transform2D().Rotate(degrees * kPi / 180).GetRotation();
        EXPECT_GE(rotation, -kPi);
        EXPECT_LE(rotation, kPi);
        const double turns = (degrees - rotation * 180 / kPi) / 360;
        // An arc cosine loses half of its digits where it is flat.
        EXPECT_NEAR(turns, std::round(turns), 1e-8) << degrees;
    }
}

}  // namespace
}  // namespace Quenzo::Conf
