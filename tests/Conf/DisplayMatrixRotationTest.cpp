// Covers the rotations of Conf/Interfaces/DisplayMatrix.h: the functions on nine bare integers, the way an angle is
// brought into one turn, and matrices made from angles.

#include <Conf/Interfaces/DisplayMatrix.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <numbers>

namespace Quenzo::Conf {
namespace {

using ffmpeg::av_display_matrix_flip;
using ffmpeg::av_display_rotation_get;
using ffmpeg::av_display_rotation_set;
using ffmpeg::get_rotation;

using Entries = std::array<std::int32_t, 9>;
using Linear = std::array<std::int32_t, 4>;

constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kHighest = std::numeric_limits<std::int32_t>::max();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

constexpr Entries kIdentity = {65536, 0, 0, 0, 65536, 0, 0, 0, 1073741824};
constexpr Entries kZero = {};
constexpr Entries kCounted = {1, 2, 3, 4, 5, 6, 7, 8, 9};

// A matrix with this linear part; whatever stands in the other entries must not matter.
Entries With(std::int32_t m0, std::int32_t m1, std::int32_t m3, std::int32_t m4) {
    return {m0, m1, 11, m3, m4, -13, 17, -19, 23};
}

Entries Set(double angle) {
    Entries entries = kCounted;
    av_display_rotation_set(entries.data(), angle);
    return entries;
}

Entries Flip(Entries entries, int hflip, int vflip) {
    av_display_matrix_flip(entries.data(), hflip, vflip);
    return entries;
}

Linear LinearPart(const Entries& m) { return {m[0], m[1], m[3], m[4]}; }

TEST(RotationGet, LinearPart_TellsTheAngleCounterClockwise) {
    EXPECT_EQ(av_display_rotation_get(kIdentity.data()), 0);
    EXPECT_DOUBLE_EQ(av_display_rotation_get(With(0, 65536, -65536, 0).data()), -90);
    EXPECT_DOUBLE_EQ(av_display_rotation_get(With(0, -65536, 65536, 0).data()), 90);
    EXPECT_DOUBLE_EQ(av_display_rotation_get(With(-65536, 0, 0, -65536).data()), -180);
    EXPECT_DOUBLE_EQ(av_display_rotation_get(With(46340, 46340, -46340, 46340).data()), -45);
    EXPECT_DOUBLE_EQ(av_display_rotation_get(With(-1, -1, 1, -1).data()), 135);
}

TEST(RotationGet, Columns_AreScaledToOne) {
    EXPECT_DOUBLE_EQ(av_display_rotation_get(With(30000, 1, -30000, 1).data()), -45);
    EXPECT_DOUBLE_EQ(av_display_rotation_get(With(kHighest, 1, -kHighest, 1).data()), -45);
    EXPECT_DOUBLE_EQ(av_display_rotation_get(With(kLowest, kLowest, kLowest, kLowest).data()), 135);
    // The first column is 5 long and the second 13: the angle is that of (3/5, 5/13), 32.6609 degrees.
    EXPECT_NEAR(av_display_rotation_get(With(3, 5, 4, 12).data()), -32.660913, 1e-6);
}

TEST(RotationGet, ColumnOfZeros_IsNaN) {
    EXPECT_TRUE(std::isnan(av_display_rotation_get(kZero.data())));
    EXPECT_TRUE(std::isnan(av_display_rotation_get(With(0, 65536, 0, 65536).data())));
    EXPECT_TRUE(std::isnan(av_display_rotation_get(With(65536, 0, 65536, 0).data())));
}

TEST(RotationSet, EveryEntry_IsReplaced) {
    EXPECT_EQ(Set(0), kIdentity);
    EXPECT_EQ(Set(90), (Entries{0, 65536, 0, -65536, 0, 0, 0, 0, 1073741824}));
    EXPECT_EQ(Set(180), (Entries{-65536, 0, 0, 0, -65536, 0, 0, 0, 1073741824}));
    EXPECT_EQ(Set(-90), (Entries{0, -65536, 0, 65536, 0, 0, 0, 0, 1073741824}));
    EXPECT_EQ(Set(0.5), (Entries{65533, 571, 0, -571, 65533, 0, 0, 0, 1073741824}));
}

TEST(RotationSet, AngleThatIsNotFinite_GivesNoRotation) {
    for (const double angle : {kInfinity, -kInfinity, kNaN}) {
        EXPECT_EQ(Set(angle), (Entries{0, 0, 0, 0, 0, 0, 0, 0, 1073741824})) << angle;
    }
}

TEST(RotationSet, Get_GivesTheOppositeAngle) {
    for (int angle = -179; angle < 180; ++angle) {
        // The entries are cut off after 16 bits: that is at most 1.5/65536 across the direction, 0.0014 degrees.
        EXPECT_NEAR(av_display_rotation_get(Set(angle).data()), -angle, 0.0014) << angle;
    }
}

TEST(MatrixFlip, NoFlag_LeavesTheMatrixAlone) {
    EXPECT_EQ(Flip(kCounted, 0, 0), kCounted);
    EXPECT_EQ(Flip(With(kLowest, kHighest, 0, -1), 0, 0), With(kLowest, kHighest, 0, -1));
}

TEST(MatrixFlip, EachFlag_NegatesItsColumn) {
    EXPECT_EQ(Flip(kCounted, 1, 0), (Entries{-1, 2, 3, -4, 5, 6, -7, 8, 9}));
    EXPECT_EQ(Flip(kCounted, 0, 1), (Entries{1, -2, 3, 4, -5, 6, 7, -8, 9}));
    EXPECT_EQ(Flip(kCounted, 1, 1), (Entries{-1, -2, 3, -4, -5, 6, -7, -8, 9}));
}

TEST(MatrixFlip, AnyFlagOtherThanZero_IsSet) {
    EXPECT_EQ(Flip(kCounted, -1, 0), Flip(kCounted, 1, 0));
    EXPECT_EQ(Flip(kCounted, 0, 256), Flip(kCounted, 0, 1));
    EXPECT_EQ(Flip(kCounted, kLowest, 2), Flip(kCounted, 1, 1));
}

TEST(MatrixFlip, LowestNumber_StaysAsItIs) {
    constexpr Entries lowest = {kLowest, kLowest, kLowest, kLowest, kLowest, kLowest, kLowest, kLowest, kLowest};
    EXPECT_EQ(Flip(lowest, 1, 1), lowest);
    EXPECT_EQ(Flip(With(kHighest, kLowest + 1, 0, -1), 1, 1),
              (Entries{-kHighest, kHighest, 11, 0, 1, -13, -17, 19, 23}));
}

RC_GTEST_PROP(MatrixFlip, Twice_RestoresTheMatrix, (const Entries& entries, bool hflip, bool vflip)) {
    const int h = hflip ? 1 : 0;
    const int v = vflip ? 1 : 0;
    RC_ASSERT(Flip(Flip(entries, h, v), h, v) == entries);
    RC_ASSERT(Flip(Flip(entries, h, 0), 0, v) == Flip(entries, h, v));
}

TEST(GetRotation, Null_IsZero) { EXPECT_EQ(get_rotation(nullptr), 0); }

TEST(GetRotation, MatrixWithoutAnAngle_IsZero) {
    EXPECT_EQ(get_rotation(kZero.data()), 0);
    EXPECT_EQ(get_rotation(With(0, 65536, 0, 65536).data()), 0);
    EXPECT_EQ(get_rotation(With(65536, 0, 65536, 0).data()), 0);
}

TEST(GetRotation, Angle_IsClockwiseAndWithinOneTurn) {
    EXPECT_EQ(get_rotation(kIdentity.data()), 0);
    EXPECT_EQ(get_rotation(With(0, 65536, -65536, 0).data()), 90);
    EXPECT_EQ(get_rotation(With(-65536, 0, 0, -65536).data()), 180);
    EXPECT_EQ(get_rotation(With(0, -65536, 65536, 0).data()), 270);
    EXPECT_EQ(get_rotation(With(46340, -46340, 46340, 46340).data()), 315);
    EXPECT_EQ(get_rotation(With(65526, -1143, 1143, 65526).data()), 359);
}

TEST(GetRotation, ZeroAngle_IsNeverNegativeZero) {
    // 0.4 degrees either way are rounded to nothing.
    EXPECT_FALSE(std::signbit(get_rotation(Set(0.4).data())));
    EXPECT_FALSE(std::signbit(get_rotation(Set(-0.4).data())));
    EXPECT_EQ(get_rotation(Set(-0.4).data()), 0);
}

RC_GTEST_PROP(GetRotation, AnyMatrix_GivesAWholeNumberFrom0To359, (const Entries& entries)) {
    const double rotation = get_rotation(entries.data());
    RC_ASSERT(rotation == std::floor(rotation));
    RC_ASSERT(rotation >= 0);
    RC_ASSERT(rotation <= 359);
}

RC_GTEST_PROP(GetRotation, Member_IsTheSameFunction, (const Entries& entries)) {
    DisplayMatrix matrix;
    matrix.m = entries;
    RC_ASSERT(matrix.GetRotation() == get_rotation(entries.data()));
}

TEST(NormalizeRotation, WithinATurn_IsKept) {
    for (int quarters = 0; quarters <= 359 * 4; ++quarters) {
        EXPECT_EQ(NormalizeRotation(quarters / 4.0), quarters / 4.0);
    }
}

TEST(NormalizeRotation, JustBelowAFullTurn_IsNegative) {
    EXPECT_EQ(NormalizeRotation(359), 359);
    EXPECT_EQ(NormalizeRotation(359.09375), 359.09375);
    EXPECT_EQ(NormalizeRotation(359.109375), -0.890625);
    EXPECT_EQ(NormalizeRotation(359.5), -0.5);
    EXPECT_EQ(NormalizeRotation(359.9375), -0.0625);
    EXPECT_EQ(NormalizeRotation(360), 0);
}

TEST(NormalizeRotation, JustBelowZero_IsKept) {
    EXPECT_EQ(NormalizeRotation(-0.5), -0.5);
    EXPECT_EQ(NormalizeRotation(-0.890625), -0.890625);
    EXPECT_EQ(NormalizeRotation(-0.90625), 359.09375);
    EXPECT_EQ(NormalizeRotation(-1), 359);
}

TEST(NormalizeRotation, SeveralTurns_AreTakenAway) {
    for (int turns = -5; turns <= 5; ++turns) {
        const double full = turns * 360.0;
        EXPECT_EQ(NormalizeRotation(full), 0) << turns;
        EXPECT_EQ(NormalizeRotation(full + 0.25), 0.25) << turns;
        EXPECT_EQ(NormalizeRotation(full + 90), 90) << turns;
        EXPECT_EQ(NormalizeRotation(full + 359), 359) << turns;
        EXPECT_EQ(NormalizeRotation(full + 359.5), -0.5) << turns;
    }
}

TEST(NormalizeRotation, ManyTurns_AreTakenAwayInOneFusedStep) {
    // 277777777777777 turns are 99999999999999720 degrees, which is no double; rounded first, 272 or 288 would be left.
    EXPECT_EQ(NormalizeRotation(1e17), 280);
    EXPECT_EQ(NormalizeRotation(-1e17), 80);
}

TEST(NormalizeRotation, NotNormal_IsZero) {
    for (const double degrees : {kNaN, kInfinity, -kInfinity, std::numeric_limits<double>::denorm_min(),
                                 -std::numeric_limits<double>::denorm_min(), 2e-308, 0.0, -0.0}) {
        EXPECT_EQ(NormalizeRotation(degrees), 0) << degrees;
        EXPECT_FALSE(std::signbit(NormalizeRotation(degrees))) << degrees;
    }
    constexpr double smallest = std::numeric_limits<double>::min();
    EXPECT_EQ(NormalizeRotation(smallest), smallest);
    EXPECT_EQ(NormalizeRotation(-smallest), -smallest);
}

TEST(FromRotation, QuarterTurns_AreOrientations) {
    const DisplayMatrix right = DisplayMatrix::FromRotation(90);
    EXPECT_EQ(right.m, (Entries{0, 65536, 0, -65536, 0, 0, 0, 0, 1073741824}));
    EXPECT_EQ(right, DisplayMatrix(ImageOrientation::Rotated90));
    EXPECT_EQ(right.GetRotation(), 90);
    EXPECT_EQ(right.GetOrientation(), ImageOrientation::Rotated90);
    const DisplayMatrix left = DisplayMatrix::FromRotation(-90);
    EXPECT_EQ(left, DisplayMatrix(ImageOrientation::Rotated270));
    EXPECT_EQ(left.GetRotation(), 270);
    EXPECT_EQ(left.GetOrientation(), ImageOrientation::Rotated270);
}

TEST(FromRotation, WithinTheDeadBand_IsTheIdentity) {
    for (const double angle : {0.0, -0.0, 0.5, -0.5, 1.0, -1.0, kNaN}) {
        EXPECT_EQ(DisplayMatrix::FromRotation(angle).m, kIdentity) << angle;
    }
}

TEST(FromRotation, JustOutsideTheDeadBand_IsARotation) {
    EXPECT_EQ(LinearPart(DisplayMatrix::FromRotation(1.01).m), (Linear{65525, 1155, -1155, 65525}));
    EXPECT_EQ(LinearPart(DisplayMatrix::FromRotation(-1.01).m), (Linear{65525, -1155, 1155, 65525}));
    EXPECT_NE(DisplayMatrix::FromRotation(std::nextafter(1.0, 2.0)).m, kIdentity);
    EXPECT_NE(DisplayMatrix::FromRotation(std::nextafter(-1.0, -2.0)).m, kIdentity);
}

TEST(FromRotation, InfiniteAngle_IsNotValid) {
    EXPECT_FALSE(DisplayMatrix::FromRotation(kInfinity).IsValidMatrix());
    EXPECT_FALSE(DisplayMatrix::FromRotation(-kInfinity).IsValidMatrix());
}

TEST(FromRotation, Entries_AreCutOffTowardZero) {
    struct Row {
        double angle;
        Linear linear;
    };
    // Made with 90 decimal digits from the angle in radians as a double holds it. Where a sine is one half, that angle
    // lies now above and now below the exact one.
    const std::array<Row, 20> rows = {{
        {10, {64540, 11380, -11380, 64540}},    {30, {56755, 32767, -32767, 56755}},
        {45, {46340, 46340, -46340, 46340}},    {60, {32768, 56755, -56755, 32768}},
        {120, {-32767, 56755, -56755, -32767}}, {135, {-46340, 46340, -46340, -46340}},
        {150, {-56755, 32767, -32767, -56755}}, {200, {-61583, -22414, 22414, -61583}},
        {225, {-46340, -46340, 46340, -46340}}, {240, {-32768, -56755, 56755, -32768}},
        {269.75, {-285, -65535, 65535, -285}},  {300, {32768, -56755, 56755, 32768}},
        {330, {56755, -32768, 32768, 56755}},   {359.5, {65533, -571, 571, 65533}},
        {390, {56755, 32767, -32767, 56755}},   {-30, {56755, -32767, 32767, 56755}},
        {-359.5, {65533, 571, -571, 65533}},    {-405, {46340, -46340, 46340, 46340}},
        {1e6, {11380, -64540, 64540, 11380}},   {-1e9, {11380, 64540, -64540, 11380}},
    }};
    for (const Row& row : rows) {
        EXPECT_EQ(LinearPart(DisplayMatrix::FromRotation(row.angle).m), row.linear) << row.angle;
    }
}

}  // namespace
}  // namespace Quenzo::Conf
