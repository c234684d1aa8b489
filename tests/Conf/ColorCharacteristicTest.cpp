// Covers Conf/Interfaces/ColorCharacteristic.h: the numbers of the code points and which of them are valid.

#include <Conf/Interfaces/ColorCharacteristic.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <type_traits>
#include <vector>

namespace Quenzo::Conf {
namespace {

static_assert(std::is_same_v<std::underlying_type_t<ColorPrimaries>, std::int32_t>);
static_assert(std::is_same_v<std::underlying_type_t<TransferFunction>, std::int32_t>);
static_assert(std::is_same_v<std::underlying_type_t<YCbCrMatrix>, std::int32_t>);
static_assert(sizeof(ColorSpace) == 12 && std::is_trivially_copyable_v<ColorSpace>);

template <typename Code>
std::int32_t Number(Code code) {
    return static_cast<std::int32_t>(code);
}

// The numbers from -10 to 300 that a predicate accepts, in ascending order.
template <typename Code>
std::vector<int> Accepted(bool (*isValid)(Code)) {
    std::vector<int> accepted;
    for (int number = -10; number <= 300; ++number) {
        if (isValid(static_cast<Code>(number))) {
            accepted.push_back(number);
        }
    }
    return accepted;
}

template <typename Code>
void ExpectExtremesInvalid(bool (*isValid)(Code)) {
    for (const std::int32_t number :
         {std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::min() + 1, 1 << 16,
          (1 << 16) + 1, 1 << 30, std::numeric_limits<std::int32_t>::max() - 1,
          std::numeric_limits<std::int32_t>::max()}) {
        EXPECT_FALSE(isValid(static_cast<Code>(number))) << number;
    }
}

TEST(ColorPrimaries, Enumerators_HaveTheNumbersOfH273) {
    EXPECT_EQ(Number(ColorPrimaries::BT709), 1);
    EXPECT_EQ(Number(ColorPrimaries::UNSPECIFIED), 2);
    EXPECT_EQ(Number(ColorPrimaries::BT470M), 4);
    EXPECT_EQ(Number(ColorPrimaries::BT470BG), 5);
    EXPECT_EQ(Number(ColorPrimaries::SMPTE170M), 6);
    EXPECT_EQ(Number(ColorPrimaries::SMPTE240M), 7);
    EXPECT_EQ(Number(ColorPrimaries::FILM), 8);
    EXPECT_EQ(Number(ColorPrimaries::BT2020), 9);
    EXPECT_EQ(Number(ColorPrimaries::SMPTE428), 10);
    EXPECT_EQ(Number(ColorPrimaries::SMPTE431), 11);
    EXPECT_EQ(Number(ColorPrimaries::SMPTE432), 12);
    EXPECT_EQ(Number(ColorPrimaries::JEDEC_P22), 22);
}

TEST(TransferFunction, Enumerators_HaveTheNumbersOfH273) {
    EXPECT_EQ(Number(TransferFunction::BT709), 1);
    EXPECT_EQ(Number(TransferFunction::UNSPECIFIED), 2);
    EXPECT_EQ(Number(TransferFunction::BT470M), 4);
    EXPECT_EQ(Number(TransferFunction::BT470BG), 5);
    EXPECT_EQ(Number(TransferFunction::SMPTE170M), 6);
    EXPECT_EQ(Number(TransferFunction::SMPTE240M), 7);
    EXPECT_EQ(Number(TransferFunction::LINEAR), 8);
    EXPECT_EQ(Number(TransferFunction::LOG100), 9);
    EXPECT_EQ(Number(TransferFunction::LOG316), 10);
    EXPECT_EQ(Number(TransferFunction::IEC61966_2_4), 11);
    EXPECT_EQ(Number(TransferFunction::BT1361), 12);
    EXPECT_EQ(Number(TransferFunction::IEC61966_2_1), 13);
    EXPECT_EQ(Number(TransferFunction::BT2020_10), 14);
    EXPECT_EQ(Number(TransferFunction::BT2020_12), 15);
    EXPECT_EQ(Number(TransferFunction::SMPTE2084), 16);
    EXPECT_EQ(Number(TransferFunction::SMPTE428), 17);
    EXPECT_EQ(Number(TransferFunction::ARIB_STD_B67), 18);
}

TEST(YCbCrMatrix, Enumerators_HaveTheNumbersOfH273) {
    EXPECT_EQ(Number(YCbCrMatrix::IDENTITY), 0);
    EXPECT_EQ(Number(YCbCrMatrix::BT709), 1);
    EXPECT_EQ(Number(YCbCrMatrix::UNSPECIFIED), 2);
    EXPECT_EQ(Number(YCbCrMatrix::FCC), 4);
    EXPECT_EQ(Number(YCbCrMatrix::BT470BG), 5);
    EXPECT_EQ(Number(YCbCrMatrix::SMPTE170M), 6);
    EXPECT_EQ(Number(YCbCrMatrix::SMPTE240M), 7);
    EXPECT_EQ(Number(YCbCrMatrix::YCGCO), 8);
    EXPECT_EQ(Number(YCbCrMatrix::BT2020_NCL), 9);
    EXPECT_EQ(Number(YCbCrMatrix::BT2020_CL), 10);
    EXPECT_EQ(Number(YCbCrMatrix::SMPTE2085), 11);
    EXPECT_EQ(Number(YCbCrMatrix::CHROMATICITY_DERIVED_NCL), 12);
    EXPECT_EQ(Number(YCbCrMatrix::CHROMATICITY_DERIVED_CL), 13);
    EXPECT_EQ(Number(YCbCrMatrix::ICTCP), 14);
    EXPECT_EQ(Number(YCbCrMatrix::IPT_C2), 15);
    EXPECT_EQ(Number(YCbCrMatrix::YCGCO_RE), 16);
    EXPECT_EQ(Number(YCbCrMatrix::YCGCO_RO), 17);
}

TEST(IsValidColorPrimaries, EveryNumber_IsAMemberOrNot) {
    EXPECT_EQ(Accepted(IsValidColorPrimaries), (std::vector<int>{1, 5, 6, 9, 12}));
    ExpectExtremesInvalid(IsValidColorPrimaries);
}

TEST(IsValidTransferFunction, EveryNumber_IsAMemberOrNot) {
    EXPECT_EQ(Accepted(IsValidTransferFunction), (std::vector<int>{1, 4, 5, 6, 8, 13, 16, 18}));
    ExpectExtremesInvalid(IsValidTransferFunction);
}

TEST(IsValidYCbCrMatrix, EveryNumber_IsAMemberOrNot) {
    EXPECT_EQ(Accepted(IsValidYCbCrMatrix), (std::vector<int>{0, 1, 5, 6, 7, 9}));
    ExpectExtremesInvalid(IsValidYCbCrMatrix);
}

TEST(ColorCharacteristic, Unspecified_IsInvalidInAllThree) {
    EXPECT_FALSE(IsValidColorPrimaries(ColorPrimaries::UNSPECIFIED));
    EXPECT_FALSE(IsValidTransferFunction(TransferFunction::UNSPECIFIED));
    EXPECT_FALSE(IsValidYCbCrMatrix(YCbCrMatrix::UNSPECIFIED));
}

TEST(ColorSpace, Members_StandInTheOrderPrimariesTransferMatrix) {
    const ColorSpace space = {ColorPrimaries::BT2020, TransferFunction::SMPTE2084, YCbCrMatrix::BT2020_NCL};
    EXPECT_EQ(space.primaries, ColorPrimaries::BT2020);
    EXPECT_EQ(space.transfer, TransferFunction::SMPTE2084);
    EXPECT_EQ(space.matrix, YCbCrMatrix::BT2020_NCL);
}

TEST(ColorSpace, Default_IsUnspecifiedThroughout) {
    EXPECT_EQ(Number(ColorSpace().primaries), 2);
    EXPECT_EQ(Number(ColorSpace().transfer), 2);
    EXPECT_EQ(Number(ColorSpace().matrix), 2);
}

TEST(ColorSpace, Equality_ComparesAllMembers) {
    const ColorSpace space = {ColorPrimaries::BT709, TransferFunction::BT709, YCbCrMatrix::BT709};
    EXPECT_EQ(space, (ColorSpace{ColorPrimaries::BT709, TransferFunction::BT709, YCbCrMatrix::BT709}));
    EXPECT_NE(space, (ColorSpace{ColorPrimaries::BT2020, TransferFunction::BT709, YCbCrMatrix::BT709}));
    EXPECT_NE(space, (ColorSpace{ColorPrimaries::BT709, TransferFunction::LINEAR, YCbCrMatrix::BT709}));
    EXPECT_NE(space, (ColorSpace{ColorPrimaries::BT709, TransferFunction::BT709, YCbCrMatrix::IDENTITY}));
}

}  // namespace
}  // namespace Quenzo::Conf
