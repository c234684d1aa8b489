// Covers DisplayMatrix::FromRotation at every quarter of a degree over four turns: the entries against sines in long
// double, the angle read back, and which of the matrices have an orientation.

#include <Conf/Interfaces/DisplayMatrix.h>

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <numbers>
#include <optional>

namespace Quenzo::Conf {
namespace {

constexpr int kFirst = -720 * 4;
constexpr int kLast = 720 * 4;

// Calls the function with each angle, in quarters of a degree, and its matrix.
template <typename Function>
void ForEachAngle(const Function& function) {
    for (int quarters = kFirst; quarters <= kLast; ++quarters) {
        const double degrees = quarters / 4.0;
        const testing::ScopedTrace trace(__FILE__, __LINE__, degrees);
        function(quarters, DisplayMatrix::FromRotation(degrees));
    }
}

bool IsDeadBand(int quarters) { return quarters >= -4 && quarters <= 4; }

// The angle as a number of quarters from 0 to 1439.
int WithinOneTurn(int quarters) { return ((quarters % 1440) + 1440) % 1440; }

// A sine times 65536, from the first eighth of the turn, where it is most precise.
long double Sine(int quarters) {
    const int q = WithinOneTurn(quarters);
    if (q >= 720) {
        return -Sine(q - 720);
    }
    if (q > 360) {
        return Sine(720 - q);
    }
    const long double unit = std::numbers::pi_v<long double> / 720;
    return 65536 * (q <= 180 ? std::sin(q * unit) : std::cos((360 - q) * unit));
}

// Cut off toward zero, which may go either way for a whole number that the angle in radians only comes near to.
void ExpectCutOff(std::int32_t actual, long double exact) {
    constexpr long double margin = 1e-9L;
    if (actual != static_cast<std::int32_t>(exact - margin)) {
        EXPECT_EQ(actual, static_cast<std::int32_t>(exact + margin));
    }
}

// What the entries of a rotation say, in degrees from -180 to 180.
long double AngleOf(const DisplayMatrix& matrix) {
    return std::atan2(static_cast<long double>(matrix.m[1]), static_cast<long double>(matrix.m[0])) * 180 /
           std::numbers::pi_v<long double>;
}

// The nearest orientation without mirroring, for a number of quarter turns.
ImageOrientation Turned(int quarterTurns) {
    constexpr std::array<ImageOrientation, 4> orientations = {ImageOrientation::Normal, ImageOrientation::Rotated90,
                                                              ImageOrientation::Rotated180,
                                                              ImageOrientation::Rotated270};
    return orientations.at(static_cast<std::size_t>(quarterTurns % 4));
}

void ExpectSineAndCosine(int quarters, const DisplayMatrix& matrix) {
    ExpectCutOff(matrix.m[0], Sine(quarters + 360));
    ExpectCutOff(matrix.m[1], Sine(quarters));
    EXPECT_EQ(matrix.m[3], -matrix.m[1]);
    EXPECT_EQ(matrix.m[4], matrix.m[0]);
}

TEST(FromRotationSweep, WithinTheDeadBand_IsTheIdentity) {
    ForEachAngle([](int quarters, const DisplayMatrix& matrix) {
        if (IsDeadBand(quarters)) {
            EXPECT_EQ(matrix, DisplayMatrix::s_default);
        }
    });
}

TEST(FromRotationSweep, LinearPart_IsSineAndCosine) {
    ForEachAngle([](int quarters, const DisplayMatrix& matrix) {
        if (!IsDeadBand(quarters)) {
            ExpectSineAndCosine(quarters, matrix);
        }
    });
}

TEST(FromRotationSweep, OtherEntries_AreThoseOfTheIdentity) {
    ForEachAngle([](int, const DisplayMatrix& matrix) {
        const std::array<std::int32_t, 5> others = {matrix.m[2], matrix.m[5], matrix.m[6], matrix.m[7], matrix.m[8]};
        EXPECT_EQ(others, (std::array<std::int32_t, 5>{0, 0, 0, 0, 1073741824}));
        EXPECT_TRUE(matrix.IsValidMatrix());
    });
}

TEST(FromRotationSweep, OnlyTheDeadBandAndFullTurns_AreTheDefault) {
    ForEachAngle([](int quarters, const DisplayMatrix& matrix) {
        EXPECT_EQ(matrix.IsDefault(), IsDeadBand(quarters) || quarters % 1440 == 0);
    });
}

TEST(FromRotationSweep, WholeDegrees_AreReadBackWithinOneTurn) {
    ForEachAngle([](int quarters, const DisplayMatrix& matrix) {
        if (quarters % 4 == 0) {
            EXPECT_EQ(matrix.GetRotation(), IsDeadBand(quarters) ? 0 : WithinOneTurn(quarters) / 4);
        }
    });
}

TEST(FromRotationSweep, QuartersOfADegree_AreReadBackRounded) {
    ForEachAngle([](int quarters, const DisplayMatrix& matrix) {
        if (!IsDeadBand(quarters) && quarters % 2 != 0) {
            EXPECT_EQ(matrix.GetRotation(), (WithinOneTurn(quarters) + 2) / 4 % 360);
        }
    });
}

TEST(FromRotationSweep, HalvesOfADegree_AreRoundedAsTheEntriesSay) {
    ForEachAngle([](int quarters, const DisplayMatrix& matrix) {
        if (!IsDeadBand(quarters) && quarters % 4 != 0 && quarters % 2 == 0) {
            const auto nearest = static_cast<int>(std::lround(AngleOf(matrix)));
            EXPECT_EQ(matrix.GetRotation(), (nearest + 360) % 360);
        }
    });
}

// An angle has the orientation of a quarter turn if it is rounded to that turn's whole degree.
std::optional<ImageOrientation> ExpectedOrientation(int quarters, const DisplayMatrix& matrix) {
    const int q = IsDeadBand(quarters) ? 0 : WithinOneTurn(quarters);
    const int nearest = (q + 180) / 360;
    const int distance = std::abs(q - nearest * 360);
    // At half a degree it depends on where the entries were cut off.
    const bool rounded = distance == 2 ? std::abs(std::remainder(AngleOf(matrix), 90.0L)) < 0.5L : distance < 2;
    return rounded ? std::optional(Turned(nearest)) : std::nullopt;
}

TEST(FromRotationSweep, Orientation_IsThereNearQuarterTurnsOnly) {
    ForEachAngle([](int quarters, const DisplayMatrix& matrix) {
        EXPECT_EQ(matrix.GetOrientation(), ExpectedOrientation(quarters, matrix));
    });
}

}  // namespace
}  // namespace Quenzo::Conf
