// Covers the plane sizes of Conf/Interfaces/PixelFormatDescription: every format at every width and height from 1 to 65
// and at sizes from one end of 32 bits to the other, against a model that is made of the planes' own facts.

#include <Conf/Interfaces/PixelFormatDescription.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <boost/multiprecision/cpp_int.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <ostream>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace Quenzo {
namespace {

using Exact = boost::multiprecision::int128_t;

constexpr std::int32_t kLargest = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int64_t kLargest64 = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kLowest64 = std::numeric_limits<std::int64_t>::min();

// Bytes for a column of a plane, and how many columns and rows of the frame share one of the plane's.
struct Plane {
    int bytes;
    int columns;
    int rows;
};

// 256 colours of 4 bytes whatever the frame's size.
constexpr Plane kPalette = {4, 0, 0};

struct Format {
    std::string_view name;
    std::array<Plane, 4> fourPlanes;  // those that are missing are made of no bytes

    std::span<const Plane> Planes() const {
        const auto count =
            std::count_if(fourPlanes.begin(), fourPlanes.end(), [](const Plane& p) { return p.bytes > 0; });
        return {fourPlanes.begin(), static_cast<std::size_t>(count)};
    }
};

constexpr auto formats = std::to_array<Format>({
    {"YUV420P", {{{1, 1, 1}, {1, 2, 2}, {1, 2, 2}}}},
    {"RGB24", {{{3, 1, 1}}}},
    {"BGR24", {{{3, 1, 1}}}},
    {"YUV422P", {{{1, 1, 1}, {1, 2, 1}, {1, 2, 1}}}},
    {"YUV444P", {{{1, 1, 1}, {1, 1, 1}, {1, 1, 1}}}},
    {"YUV410P", {{{1, 1, 1}, {1, 4, 4}, {1, 4, 4}}}},
    {"YUV411P", {{{1, 1, 1}, {1, 4, 1}, {1, 4, 1}}}},
    {"GRAY8", {{{1, 1, 1}}}},
    {"PAL8", {{{1, 1, 1}, kPalette}}},
    {"YUVJ420P", {{{1, 1, 1}, {1, 2, 2}, {1, 2, 2}}}},
    {"YUVJ422P", {{{1, 1, 1}, {1, 2, 1}, {1, 2, 1}}}},
    {"YUVJ444P", {{{1, 1, 1}, {1, 1, 1}, {1, 1, 1}}}},
    {"BGR8", {{{1, 1, 1}}}},
    {"NV12", {{{1, 1, 1}, {2, 2, 2}}}},
    {"NV21", {{{1, 1, 1}, {2, 2, 2}}}},
    {"ARGB", {{{4, 1, 1}}}},
    {"RGBA", {{{4, 1, 1}}}},
    {"ABGR", {{{4, 1, 1}}}},
    {"BGRA", {{{4, 1, 1}}}},
    {"YUV440P", {{{1, 1, 1}, {1, 1, 2}, {1, 1, 2}}}},
    {"YUVJ440P", {{{1, 1, 1}, {1, 1, 2}, {1, 1, 2}}}},
    {"YUVA420P", {{{1, 1, 1}, {1, 2, 2}, {1, 2, 2}, {1, 1, 1}}}},
    {"0RGB", {{{4, 1, 1}}}},
    {"RGB0", {{{4, 1, 1}}}},
    {"0BGR", {{{4, 1, 1}}}},
    {"BGR0", {{{4, 1, 1}}}},
    {"YUVA444P", {{{1, 1, 1}, {1, 1, 1}, {1, 1, 1}, {1, 1, 1}}}},
    {"YUVA422P", {{{1, 1, 1}, {1, 2, 1}, {1, 2, 1}, {1, 1, 1}}}},
    {"YUVJ411P", {{{1, 1, 1}, {1, 4, 1}, {1, 4, 1}}}},
    {"GBRP", {{{1, 1, 1}, {1, 1, 1}, {1, 1, 1}}}},
    {"GBRAP", {{{1, 1, 1}, {1, 1, 1}, {1, 1, 1}, {1, 1, 1}}}},
    {"BGR565BE", {{{1, 1, 1}}}},
    {"BGR565LE", {{{1, 1, 1}}}},
    {"RGB48", {{{6, 1, 1}}}},
    {"RGBA64", {{{8, 1, 1}}}},
    {"BGR48", {{{6, 1, 1}}}},
    {"BGRA64", {{{8, 1, 1}}}},
    {"YUV420P10", {{{2, 1, 1}, {2, 2, 2}, {2, 2, 2}}}},
    {"YUV422P10", {{{2, 1, 1}, {2, 2, 1}, {2, 2, 1}}}},
    {"YUV444P10", {{{2, 1, 1}, {2, 1, 1}, {2, 1, 1}}}},
    {"YUV420P12", {{{2, 1, 1}, {2, 2, 2}, {2, 2, 2}}}},
    {"YUV422P12", {{{2, 1, 1}, {2, 2, 1}, {2, 2, 1}}}},
    {"YUV444P12", {{{2, 1, 1}, {2, 1, 1}, {2, 1, 1}}}},
    {"YUV420P16", {{{2, 1, 1}, {2, 2, 2}, {2, 2, 2}}}},
    {"YUV422P16", {{{2, 1, 1}, {2, 2, 1}, {2, 2, 1}}}},
    {"YUV444P16", {{{2, 1, 1}, {2, 1, 1}, {2, 1, 1}}}},
    {"YUVA420P10", {{{2, 1, 1}, {2, 2, 2}, {2, 2, 2}, {2, 1, 1}}}},
    {"YUVA422P10", {{{2, 1, 1}, {2, 2, 1}, {2, 2, 1}, {2, 1, 1}}}},
    {"YUVA444P10", {{{2, 1, 1}, {2, 1, 1}, {2, 1, 1}, {2, 1, 1}}}},
    {"YUVA422P12", {{{2, 1, 1}, {2, 2, 1}, {2, 2, 1}, {2, 1, 1}}}},
    {"YUVA444P12", {{{2, 1, 1}, {2, 1, 1}, {2, 1, 1}, {2, 1, 1}}}},
    {"YUVA420P16", {{{2, 1, 1}, {2, 2, 2}, {2, 2, 2}, {2, 1, 1}}}},
    {"YUVA422P16", {{{2, 1, 1}, {2, 2, 1}, {2, 2, 1}, {2, 1, 1}}}},
    {"YUVA444P16", {{{2, 1, 1}, {2, 1, 1}, {2, 1, 1}, {2, 1, 1}}}},
    {"P010", {{{2, 1, 1}, {4, 2, 2}}}},
    {"P016", {{{2, 1, 1}, {4, 2, 2}}}},
    {"RGBAF16", {{{8, 1, 1}}}},
    {"RGBAF32", {{{16, 1, 1}}}},
});

struct Sizes {
    std::int32_t width;
    std::int32_t height;
    std::int64_t rowBytes;
    std::int64_t bytes;

    friend bool operator==(const Sizes&, const Sizes&) = default;

    friend std::ostream& operator<<(std::ostream& os, const Sizes& sizes) {
        return os << sizes.width << 'x' << sizes.height << ", row " << sizes.rowBytes << ", plane " << sizes.bytes;
    }
};

std::int64_t Nearest(const Exact& value) {
    if (value > kLargest64) {
        return kLargest64;
    }
    return value < kLowest64 ? kLowest64 : static_cast<std::int64_t>(value);
}

std::int32_t DividedRoundingUp(std::int32_t size, int divisor) {
    return static_cast<std::int32_t>(std::ceil(size / static_cast<double>(divisor)));
}

Sizes Expected(const Plane& plane, std::int32_t width, std::int32_t height) {
    const bool isPalette = plane.columns == 0;
    const std::int32_t columns = isPalette ? 256 : DividedRoundingUp(width, plane.columns);
    const std::int32_t rows = isPalette ? 1 : DividedRoundingUp(height, plane.rows);
    const std::int64_t rowBytes = std::int64_t{columns} * plane.bytes;
    return {columns, rows, rowBytes, Nearest(Exact(rowBytes) * rows)};
}

Sizes Actual(const PixFmtDescription& description, std::uint8_t plane, std::int32_t width, std::int32_t height) {
    return {description.GetPlanWidth(width, plane), description.GetPlanHeight(height, plane),
            description.GetPlanWidthSize(width, plane), description.GetPlanFullSize(width, height, plane)};
}

void ExpectSizes(const Format& format, const PixFmtDescription& description, std::int32_t width, std::int32_t height) {
    Exact all = 0;
    std::uint8_t number = 0;
    for (const Plane& plane : format.Planes()) {
        const Sizes expected = Expected(plane, width, height);
        all += Exact(expected.rowBytes) * expected.height;
        ASSERT_EQ(Actual(description, number, width, height), expected)
            << format.name << ", plane " << int{number} << " of " << width << 'x' << height;
        ++number;
    }
    ASSERT_EQ(description.GetAllPlanesFullSize(width, height), Nearest(all))
        << format.name << ' ' << width << 'x' << height;
}

void ExpectSizesOfAllFormats(const std::vector<std::int32_t>& sides) {
    for (const Format& format : formats) {
        const PixFmtDescription& description = PixFmtDescription::Find(std::string(format.name));
        for (const std::int32_t width : sides) {
            for (const std::int32_t height : sides) {
                ASSERT_NO_FATAL_FAILURE(ExpectSizes(format, description, width, height));
            }
        }
    }
}

TEST(PixelFormatSweepTest, Model_KnowsEveryFormatAndItsNumberOfPlanes) {
    ASSERT_EQ(formats.size(), 58U);
    for (std::size_t i = 0; i < formats.size(); ++i) {
        EXPECT_EQ(formats[i].name, PixFmtDescription::s_list[i].name);
        EXPECT_EQ(formats[i].Planes().size(), PixFmtDescription::s_list[i].planes) << formats[i].name;
    }
}

TEST(PixelFormatSweepTest, AllFormats_AtAllSizesFrom1To65) {
    std::vector<std::int32_t> sides;
    for (std::int32_t side = 1; side <= 65; ++side) {
        sides.push_back(side);
    }
    ExpectSizesOfAllFormats(sides);
}

TEST(PixelFormatSweepTest, AllFormats_AtLargeSizes) { ExpectSizesOfAllFormats({1, 1917, 1919, 4096, 65535, kLargest}); }

TEST(PixelFormatSweepTest, AllFormats_AtZeroAndNegativeSizes) {
    ExpectSizesOfAllFormats(
        {kLowest, kLowest + 1, -65535, -1919, -1917, -65, -5, -4, -3, -2, -1, 0, 1, 1919, kLargest});
}

std::int64_t AllPlanes(const std::string& name, std::int32_t width, std::int32_t height) {
    return PixFmtDescription::Find(name).GetAllPlanesFullSize(width, height);
}

TEST(PixelFormatSweepTest, GetAllPlanesFullSize_OfKnownFrames) {
    EXPECT_EQ(AllPlanes("YUV420P", 1920, 1080), 3110400);
    EXPECT_EQ(AllPlanes("YUV420P10", 1920, 1080), 6220800);
    EXPECT_EQ(AllPlanes("NV12", 1920, 1080), 3110400);
    EXPECT_EQ(AllPlanes("P010", 1920, 1080), 6220800);
    EXPECT_EQ(AllPlanes("RGBAF32", 1920, 1080), 33177600);
    EXPECT_EQ(AllPlanes("RGBAF16", 1920, 1080), 16588800);
    EXPECT_EQ(AllPlanes("RGB24", 1920, 1080), 6220800);
    EXPECT_EQ(AllPlanes("BGR565LE", 1920, 1080), 2073600);
    EXPECT_EQ(AllPlanes("PAL8", 1920, 1080), 2074624);
    EXPECT_EQ(AllPlanes("YUVA420P", 3, 3), 26);
    EXPECT_EQ(AllPlanes("NV12", 3, 3), 17);
    EXPECT_EQ(AllPlanes("YUV420P", 0, 0), 0);
    EXPECT_EQ(AllPlanes("NONE", 1920, 1080), 0);
}

TEST(PixelFormatSweepTest, GetPlanFullSize_BeyondAllBoundsIsTheNearestNumber) {
    const PixFmtDescription& rgba = PixFmtDescription::Find("RGBAF32");
    EXPECT_EQ(rgba.GetPlanWidthSize(kLargest, 0), 34359738352);
    EXPECT_EQ(rgba.GetPlanWidthSize(kLowest, 0), -34359738368);
    EXPECT_EQ(rgba.GetPlanFullSize(kLargest, kLargest, 0), kLargest64);
    EXPECT_EQ(rgba.GetPlanFullSize(kLowest, kLowest, 0), kLargest64);
    EXPECT_EQ(rgba.GetPlanFullSize(kLowest, kLargest, 0), kLowest64);
    EXPECT_EQ(rgba.GetPlanFullSize(kLargest, kLowest, 0), kLowest64);
}

TEST(PixelFormatSweepTest, GetAllPlanesFullSize_BeyondAllBoundsIsTheNearestNumber) {
    EXPECT_EQ(AllPlanes("YUV420P", kLargest, kLargest), 6917529023346114561);
    EXPECT_EQ(AllPlanes("YUV422P", kLargest, kLargest), 9223372030412324865);
    EXPECT_EQ(AllPlanes("YUV444P", kLargest, kLargest), kLargest64);
    EXPECT_EQ(AllPlanes("YUV444P", kLowest, kLargest), kLowest64);
    EXPECT_EQ(AllPlanes("GRAY8", kLargest, kLargest), 4611686014132420609);
    EXPECT_EQ(AllPlanes("GRAY8", kLowest, kLowest), 4611686018427387904);
}

TEST(PixelFormatSweepTest, Palette_IsOfOneSizeWhateverTheFrames) {
    const PixFmtDescription& description = PixFmtDescription::Find("PAL8");
    for (const std::int32_t side : {kLowest, -1, 0, 1, 17, 1920, kLargest}) {
        EXPECT_EQ(Actual(description, 1, side, side), (Sizes{256, 1, 1024, 1024})) << side;
    }
}

TEST(PixelFormatSweepTest, GetPlanWidth_OfOddSizesRoundsUp) {
    EXPECT_EQ(PixFmtDescription::Find("YUV420P").GetPlanWidth(1919, 1), 960);
    EXPECT_EQ(PixFmtDescription::Find("YUV410P").GetPlanWidth(1917, 1), 480);
    EXPECT_EQ(PixFmtDescription::Find("YUV410P").GetPlanWidth(kLargest, 2), 536870912);
    EXPECT_EQ(PixFmtDescription::Find("YUV410P").GetPlanWidth(kLowest, 2), -536870912);
    EXPECT_EQ(PixFmtDescription::Find("YUV420P").GetPlanWidth(-3, 1), -1);
    EXPECT_EQ(PixFmtDescription::Find("YUVA420P").GetPlanWidth(100, 3), 100);
    EXPECT_EQ(PixFmtDescription::Find("YUV422P").GetPlanHeight(1081, 1), 1081);
    EXPECT_EQ(PixFmtDescription::Find("YUV440P").GetPlanHeight(1081, 1), 541);
}

// Fields are eight bits wide: a description of a client's own may shift by more than there are bits in a size.
TEST(PixelFormatSweepTest, GetPlanWidth_ShiftedOutAltogetherIsRoundedUp) {
    for (const std::uint8_t log2 : std::to_array<std::uint8_t>({32, 33, 63, 64, 255})) {
        const PixFmtDescription own(PixFmt{1000}, "OWN", 3, 3, log2, log2, 8, 0, 0, PixelColorRange::Limited);
        EXPECT_EQ(own.GetPlanWidth(kLargest, 1), 1);
        EXPECT_EQ(own.GetPlanHeight(1, 2), 1);
        EXPECT_EQ(own.GetPlanWidth(0, 1), 0);
        EXPECT_EQ(own.GetPlanWidth(-1, 1), 0);
        EXPECT_EQ(own.GetPlanHeight(kLowest, 1), 0);
    }
}

TEST(PixelFormatSweepTest, GetAllPlanesFullSize_OfAClientsOwnFormatSumsAllItsPlanes) {
    const PixFmtDescription own(PixFmt{1000}, "OWN", 4, 255, 1, 1, 8, 0, 0, PixelColorRange::Limited);
    EXPECT_EQ(own.GetAllPlanesFullSize(10, 10), 253 * 100 + 2 * 25);
    EXPECT_EQ(own.GetAllPlanesFullSize(kLargest, kLargest), kLargest64);
}

RC_GTEST_PROP(PixelFormatSweepTest, PlaneSizes_GrowWithTheFrame, (std::int32_t width, std::int32_t height)) {
    const Format& format = formats[*rc::gen::inRange<std::size_t>(0, 58)];
    const PixFmtDescription& description = PixFmtDescription::Find(std::string(format.name));
    const auto wider = *rc::gen::inRange<std::int64_t>(width, std::int64_t{kLargest} + 1);
    for (std::uint8_t plane = 0; plane < description.planes; ++plane) {
        const Sizes before = Actual(description, plane, width, height);
        const Sizes after = Actual(description, plane, static_cast<std::int32_t>(wider), height);
        RC_ASSERT(before.width <= after.width);
        RC_ASSERT(before.rowBytes <= after.rowBytes);
        RC_ASSERT(height < 0 || before.bytes <= after.bytes);
        RC_ASSERT(height > 0 || format.name == "PAL8" || before.bytes >= after.bytes);
    }
}

RC_GTEST_PROP(PixelFormatSweepTest, AllFormats_AtAnySize, (std::int32_t width, std::int32_t height)) {
    for (const Format& format : formats) {
        ExpectSizes(format, PixFmtDescription::Find(std::string(format.name)), width, height);
        RC_ASSERT(!testing::Test::HasFatalFailure());
    }
}

}  // namespace
}  // namespace Quenzo
