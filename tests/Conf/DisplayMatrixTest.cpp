// Covers Conf/Interfaces/DisplayMatrix.h: the record and its constructors, the comparison with the identity, the
// conversion to ordinary units and the correction of the translation. Rotations and orientations have files of their
// own.

#include <Conf/Interfaces/DisplayMatrix.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <type_traits>

namespace Quenzo::Conf {
namespace {

using Entries = std::array<std::int32_t, 9>;

constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kHighest = std::numeric_limits<std::int32_t>::max();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

constexpr Entries kIdentity = {65536, 0, 0, 0, 65536, 0, 0, 0, 1073741824};

static_assert(sizeof(DisplayMatrix) == 36);
static_assert(std::is_trivially_copyable_v<DisplayMatrix>);
static_assert(std::is_standard_layout_v<DisplayMatrix>);
static_assert(!std::is_convertible_v<ImageOrientation, DisplayMatrix>);

// Known to the compiler, so no load-time code can come too late for it.
constexpr DisplayMatrix kMadeByTheCompiler;
static_assert(kMadeByTheCompiler.m == kIdentity);

DisplayMatrix Make(const Entries& entries) {
    DisplayMatrix matrix;
    matrix.m = entries;
    return matrix;
}

TEST(DisplayMatrix, Default_IsTheIdentity) {
    EXPECT_EQ(DisplayMatrix().m, kIdentity);
    EXPECT_EQ(DisplayMatrix::s_default.m, kIdentity);
    EXPECT_EQ(DisplayMatrix(), DisplayMatrix::s_default);
}

TEST(DisplayMatrix, Equality_ComparesEveryEntry) {
    for (std::size_t i = 0; i < 9; ++i) {
        DisplayMatrix other;
        ++other.m[i];
        EXPECT_NE(other, DisplayMatrix()) << "m" << i;
    }
}

TEST(DisplayMatrix, FromOrdinaryUnits_PutsEachWhereItBelongs) {
    EXPECT_EQ(DisplayMatrix(1, 2, 3, 4, 5, 6).m,
              (Entries{65536, 131072, 0, 196608, 262144, 0, 327680, 393216, 1073741824}));
    EXPECT_EQ(DisplayMatrix(-0.5, 0.25, 1.5, -2, -1920, 1080).m,
              (Entries{-32768, 16384, 0, 98304, -131072, 0, -125829120, 70778880, 1073741824}));
    EXPECT_EQ(DisplayMatrix(1, 0, 0, 1, 0, 0).m, kIdentity);
}

TEST(DisplayMatrix, FromOrdinaryUnits_CutsOffTowardZero) {
    constexpr double unit = 1.0 / 65536;
    EXPECT_EQ(DisplayMatrix(1.9 * unit, -1.9 * unit, 0.9 * unit, -0.9 * unit, 2.999 * unit, -2.999 * unit).m,
              (Entries{1, -1, 0, 0, 0, 0, 2, -2, 1073741824}));
}

TEST(DisplayMatrix, FromOrdinaryUnits_SaturatesWhatDoesNotFit) {
    EXPECT_EQ(DisplayMatrix(32768, -32768, 1e300, -1e300, kInfinity, -kInfinity).m,
              (Entries{kHighest, kLowest, 0, kHighest, kLowest, 0, kHighest, kLowest, 1073741824}));
    EXPECT_EQ(DisplayMatrix(32767.99999, -32768.00001, kNaN, kNaN, kNaN, 1e-300).m,
              (Entries{2147483647, kLowest, 0, 0, 0, 0, 0, 0, 1073741824}));
    EXPECT_EQ(DisplayMatrix(32767.9999, -32767.9999, 0, 0, 0, 0).m,
              (Entries{2147483641, -2147483641, 0, 0, 0, 0, 0, 0, 1073741824}));
}

TEST(IsDefault, EveryEntryOfTheLinearPart_Counts) {
    for (const std::size_t i : {0U, 1U, 3U, 4U}) {
        for (const int change : {-1, 1}) {
            DisplayMatrix matrix;
            matrix.m[i] += change;
            EXPECT_FALSE(matrix.IsDefault()) << "m" << i;
        }
    }
}

TEST(IsDefault, OnlyTheLinearPart_IsCompared) {
    EXPECT_TRUE(DisplayMatrix().IsDefault());
    EXPECT_TRUE(Make({65536, 0, 1, 0, 65536, -1, kHighest, kLowest, 0}).IsDefault());
    EXPECT_FALSE(Make({-65536, 0, 0, 0, -65536, 0, 0, 0, 1073741824}).IsDefault());
    EXPECT_FALSE(Make({0, 0, 0, 0, 0, 0, 0, 0, 0}).IsDefault());
}

TEST(IsValidMatrix, ColumnOfZeros_IsInvalid) {
    EXPECT_TRUE(DisplayMatrix().IsValidMatrix());
    EXPECT_FALSE(Make({0, 65536, 0, 0, 65536, 0, 0, 0, 1073741824}).IsValidMatrix());
    EXPECT_FALSE(Make({65536, 0, 0, 65536, 0, 0, 0, 0, 1073741824}).IsValidMatrix());
    EXPECT_FALSE(Make({0, 0, 0, 0, 0, 0, 65536, 65536, 1073741824}).IsValidMatrix());
}

TEST(IsValidMatrix, AnythingElse_IsValid) {
    EXPECT_TRUE(Make({1, 0, 0, 0, 1, 0, 0, 0, 0}).IsValidMatrix());
    EXPECT_TRUE(Make({0, 1, 0, -1, 0, 0, 0, 0, 0}).IsValidMatrix());
    EXPECT_TRUE(Make({1, 1, 0, 0, 0, 0, 0, 0, 0}).IsValidMatrix());
    EXPECT_TRUE(
        Make({kLowest, kLowest, kLowest, kLowest, kLowest, kLowest, kLowest, kLowest, kLowest}).IsValidMatrix());
    EXPECT_TRUE(Make({kHighest, kHighest, 0, kHighest, kHighest, 0, 0, 0, 0}).IsValidMatrix());
}

TEST(GetTransform, EveryEntry_IsConvertedExactly) {
    EXPECT_EQ(DisplayMatrix().GetTransform(), Transform2D());
    EXPECT_EQ(Make({65536, -32768, 536870912, 1, 196608, -1073741824, kLowest, kHighest, 1}).GetTransform().m,
              (std::array<double, 9>{1, -0.5, 0.5, 0x1p-16, 3, -1, -32768, 32768 - 0x1p-16, 0x1p-30}));
}

RC_GTEST_PROP(GetTransform, OfOrdinaryUnits_GivesThemBack, (const std::array<std::int32_t, 6>& numbers)) {
    std::array<double, 6> units{};
    for (std::size_t i = 0; i < 6; ++i) {
        units[i] = numbers[i] / 65536.0;
    }
    const DisplayMatrix matrix(units[0], units[1], units[2], units[3], units[4], units[5]);
    const std::array<double, 9> expected = {units[0], units[1], 0, units[2], units[3], 0, units[4], units[5], 1};
    RC_ASSERT(matrix.GetTransform().m == expected);
}

// The translation, m6 and m7, of a matrix after its correction.
std::array<std::int32_t, 2> Corrected(DisplayMatrix matrix, const FrameSize& size) {
    const DisplayMatrix before = matrix;
    matrix.CorrectTranslation(size);
    for (const std::size_t i : {0U, 1U, 2U, 3U, 4U, 5U, 8U}) {
        EXPECT_EQ(matrix.m[i], before.m[i]) << "m" << i;
    }
    return {matrix.m[6], matrix.m[7]};
}

using Translation = std::array<std::int32_t, 2>;

TEST(CorrectTranslation, PositiveTranslation_IsTakenAway) {
    EXPECT_EQ(Corrected(DisplayMatrix(1, 0, 0, 1, 100, 200), {1920, 1080}), (Translation{0, 0}));
    EXPECT_EQ(Corrected(DisplayMatrix(), {1920, 1080}), (Translation{0, 0}));
}

TEST(CorrectTranslation, NegativeTranslation_IsTurnedRound) {
    EXPECT_EQ(Corrected(DisplayMatrix(1, 0, 0, 1, -100, 200), {1920, 1080}), (Translation{6553600, 0}));
    EXPECT_EQ(Corrected(DisplayMatrix(1, 0, 0, 1, 100, -0.5), {1920, 1080}), (Translation{0, 32768}));
}

TEST(CorrectTranslation, OldTranslation_IsInPlaceWhileMeasuring) {
    // The mirrored frame reaches from -1920 + 500 to 500.
    EXPECT_EQ(Corrected(DisplayMatrix(-1, 0, 0, 1, 500, 0), {1920, 1080}), (Translation{1420 * 65536, 0}));
    EXPECT_EQ(Corrected(DisplayMatrix(1, 0, 0, -1, 0, -20), {1920, 1080}), (Translation{0, 1100 * 65536}));
}

TEST(CorrectTranslation, Twice_FindsNothingLeftToMove) {
    DisplayMatrix matrix(ImageOrientation::Rotated180);
    matrix.CorrectTranslation({1920, 1080});
    EXPECT_EQ(matrix.m[6], 125829120);
    EXPECT_EQ(matrix.m[7], 70778880);
    matrix.CorrectTranslation({1920, 1080});
    EXPECT_EQ(matrix.m[6], 0);
    EXPECT_EQ(matrix.m[7], 0);
}

TEST(CorrectTranslation, FractionOfAPixel_IsCutOffTowardZero) {
    // The corner of the frame of one pixel goes to -1 - 2/65536, exactly.
    EXPECT_EQ(Corrected(Make({-65538, 0, 0, 0, 65536, 0, 0, 0, 1073741824}), {1, 1}), (Translation{65538, 0}));
    // Divided by 1.5, the same frame's corner lies at -43692/65536 precisely, and the other's at -43690.67/65536.
    EXPECT_EQ(Corrected(Make({-65538, 0, 0, 0, 65536, 0, 0, 0, 1610612736}), {1, 1}), (Translation{43692, 0}));
    EXPECT_EQ(Corrected(Make({-65536, 0, 0, 0, 65536, 0, 0, 0, 1610612736}), {1, 1}), (Translation{43690, 0}));
}

TEST(CorrectTranslation, FrameTooLarge_Saturates) {
    EXPECT_EQ(Corrected(DisplayMatrix(-1, 0, 0, -1, 0, 0), {32767, 32768}), (Translation{2147418112, kHighest}));
    EXPECT_EQ(Corrected(DisplayMatrix(-1, 0, 0, -1, 0, 0), {4294967295, 4294967295}),
              (Translation{kHighest, kHighest}));
    EXPECT_EQ(Corrected(Make({kLowest, kLowest, 0, 0, 0, 0, 0, 0, 1073741824}), {4294967295, 1}),
              (Translation{kHighest, kHighest}));
}

TEST(CorrectTranslation, BoxAtInfinityOrNowhere_SaturatesOrIsZero) {
    EXPECT_EQ(Corrected(Make({-65536, 0, 0, 0, -65536, 0, 0, 0, 0}), {10, 10}), (Translation{kHighest, kHighest}));
    EXPECT_EQ(Corrected(Make({0, 0, 0, 0, 0, 0, 0, 0, 0}), {10, 10}), (Translation{0, 0}));
}

}  // namespace
}  // namespace Quenzo::Conf
