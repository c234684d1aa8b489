// Covers Conf/Interfaces/PixelFormatDescription: the table, its look-ups and their failures, and solid colours over a
// grid of colours. PixelFormatSweepTest covers the plane sizes.

#include <Conf/Interfaces/PixelFormatDescription.h>
#include <tests/Conf/Failures.h>
#include <tests/Conf/TableSupport.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <map>
#include <ostream>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace Quenzo {
namespace {

using Conf::Testing::ExpectText;
using Conf::Testing::OneCharacterOff;
using Conf::Testing::OnFourThreads;

constexpr int none = 0;
constexpr int planar = 2;
constexpr int rgb = 4;
constexpr int alpha = 8;
constexpr int yuv = 16;
constexpr int floating = 32;
constexpr int gray = 64;
constexpr int unspecified = 0;
constexpr int limited = 1;
constexpr int full = 2;

struct Row {
    PixFmt format;
    std::int32_t id;
    std::string_view name;
    int components;
    int planes;
    int log2ChromaW;
    int log2ChromaH;
    int bits;
    int shift;
    int flags;
    int range;

    friend bool operator==(const Row&, const Row&) = default;

    friend std::ostream& operator<<(std::ostream& os, const Row& row) {
        return os << row.id << ' ' << row.name << ' ' << row.components << ' ' << row.planes << ' ' << row.log2ChromaW
                  << ' ' << row.log2ChromaH << ' ' << row.bits << ' ' << row.shift << ' ' << row.flags << ' '
                  << row.range;
    }
};

constexpr auto expectedRows = std::to_array<Row>({
    {PixFmt::YUV420P, 0, "YUV420P", 3, 3, 1, 1, 8, 0, planar | yuv, limited},
    {PixFmt::RGB24, 2, "RGB24", 3, 1, 0, 0, 8, 0, rgb, unspecified},
    {PixFmt::BGR24, 3, "BGR24", 3, 1, 0, 0, 8, 0, rgb, unspecified},
    {PixFmt::YUV422P, 4, "YUV422P", 3, 3, 1, 0, 8, 0, planar | yuv, limited},
    {PixFmt::YUV444P, 5, "YUV444P", 3, 3, 0, 0, 8, 0, planar | yuv, limited},
    {PixFmt::YUV410P, 6, "YUV410P", 3, 3, 2, 2, 8, 0, planar | yuv, limited},
    {PixFmt::YUV411P, 7, "YUV411P", 3, 3, 2, 0, 8, 0, planar | yuv, limited},
    {PixFmt::GRAY8, 8, "GRAY8", 1, 1, 0, 0, 8, 0, gray, full},
    {PixFmt::PAL8, 11, "PAL8", 1, 2, 0, 0, 8, 0, none, unspecified},
    {PixFmt::YUVJ420P, 12, "YUVJ420P", 3, 3, 1, 1, 8, 0, planar | yuv, full},
    {PixFmt::YUVJ422P, 13, "YUVJ422P", 3, 3, 1, 0, 8, 0, planar | yuv, full},
    {PixFmt::YUVJ444P, 14, "YUVJ444P", 3, 3, 0, 0, 8, 0, planar | yuv, full},
    {PixFmt::BGR8, 17, "BGR8", 3, 1, 0, 0, 8, 0, rgb, unspecified},
    {PixFmt::NV12, 23, "NV12", 3, 2, 1, 1, 8, 0, planar | yuv, limited},
    {PixFmt::NV21, 24, "NV21", 3, 2, 1, 1, 8, 0, planar | yuv, limited},
    {PixFmt::ARGB, 25, "ARGB", 4, 1, 0, 0, 8, 0, rgb | alpha, unspecified},
    {PixFmt::RGBA, 26, "RGBA", 4, 1, 0, 0, 8, 0, rgb | alpha, unspecified},
    {PixFmt::ABGR, 27, "ABGR", 4, 1, 0, 0, 8, 0, rgb | alpha, unspecified},
    {PixFmt::BGRA, 28, "BGRA", 4, 1, 0, 0, 8, 0, rgb | alpha, unspecified},
    {PixFmt::YUV440P, 31, "YUV440P", 3, 3, 0, 1, 8, 0, planar | yuv, limited},
    {PixFmt::YUVJ440P, 32, "YUVJ440P", 3, 3, 0, 1, 8, 0, planar | yuv, full},
    {PixFmt::YUVA420P, 33, "YUVA420P", 4, 4, 1, 1, 8, 0, planar | alpha | yuv, limited},
    {PixFmt::_0RGB, 118, "0RGB", 3, 1, 0, 0, 8, 0, rgb, unspecified},
    {PixFmt::RGB0, 119, "RGB0", 3, 1, 0, 0, 8, 0, rgb, unspecified},
    {PixFmt::_0BGR, 120, "0BGR", 3, 1, 0, 0, 8, 0, rgb, unspecified},
    {PixFmt::BGR0, 121, "BGR0", 3, 1, 0, 0, 8, 0, rgb, unspecified},
    {PixFmt::YUVA444P, 79, "YUVA444P", 4, 4, 0, 0, 8, 0, planar | alpha | yuv, limited},
    {PixFmt::YUVA422P, 78, "YUVA422P", 4, 4, 1, 0, 8, 0, planar | alpha | yuv, limited},
    {PixFmt::YUVJ411P, 138, "YUVJ411P", 3, 3, 2, 0, 8, 0, planar | yuv, full},
    {PixFmt::GBRP, 71, "GBRP", 3, 3, 0, 0, 8, 0, planar | rgb, unspecified},
    {PixFmt::GBRAP, 111, "GBRAP", 4, 4, 0, 0, 8, 0, planar | rgb | alpha, unspecified},
    {PixFmt::BGR565BE, 40, "BGR565BE", 3, 1, 0, 0, 8, 0, rgb, unspecified},
    {PixFmt::BGR565LE, 41, "BGR565LE", 3, 1, 0, 0, 8, 0, rgb, unspecified},
    {PixFmt::RGB48, 35, "RGB48", 3, 1, 0, 0, 16, 0, rgb, unspecified},
    {PixFmt::RGBA64, 105, "RGBA64", 4, 1, 0, 0, 16, 0, rgb | alpha, unspecified},
    {PixFmt::BGR48, 58, "BGR48", 3, 1, 0, 0, 16, 0, rgb, unspecified},
    {PixFmt::BGRA64, 107, "BGRA64", 4, 1, 0, 0, 16, 0, rgb | alpha, unspecified},
    {PixFmt::YUV420P10, 62, "YUV420P10", 3, 3, 1, 1, 10, 0, planar | yuv, limited},
    {PixFmt::YUV422P10, 64, "YUV422P10", 3, 3, 1, 0, 10, 0, planar | yuv, limited},
    {PixFmt::YUV444P10, 68, "YUV444P10", 3, 3, 0, 0, 10, 0, planar | yuv, limited},
    {PixFmt::YUV420P12, 123, "YUV420P12", 3, 3, 1, 1, 12, 0, planar | yuv, limited},
    {PixFmt::YUV422P12, 127, "YUV422P12", 3, 3, 1, 0, 12, 0, planar | yuv, limited},
    {PixFmt::YUV444P12, 131, "YUV444P12", 3, 3, 0, 0, 12, 0, planar | yuv, limited},
    {PixFmt::YUV420P16, 45, "YUV420P16", 3, 3, 1, 1, 16, 0, planar | yuv, limited},
    {PixFmt::YUV422P16, 47, "YUV422P16", 3, 3, 1, 0, 16, 0, planar | yuv, limited},
    {PixFmt::YUV444P16, 49, "YUV444P16", 3, 3, 0, 0, 16, 0, planar | yuv, limited},
    {PixFmt::YUVA420P10, 87, "YUVA420P10", 4, 4, 1, 1, 10, 0, planar | alpha | yuv, limited},
    {PixFmt::YUVA422P10, 89, "YUVA422P10", 4, 4, 1, 0, 10, 0, planar | alpha | yuv, limited},
    {PixFmt::YUVA444P10, 91, "YUVA444P10", 4, 4, 0, 0, 10, 0, planar | alpha | yuv, limited},
    {PixFmt::YUVA422P12, 185, "YUVA422P12", 4, 4, 1, 0, 12, 0, planar | alpha | yuv, limited},
    {PixFmt::YUVA444P12, 187, "YUVA444P12", 4, 4, 0, 0, 12, 0, planar | alpha | yuv, limited},
    {PixFmt::YUVA420P16, 93, "YUVA420P16", 4, 4, 1, 1, 16, 0, planar | alpha | yuv, limited},
    {PixFmt::YUVA422P16, 95, "YUVA422P16", 4, 4, 1, 0, 16, 0, planar | alpha | yuv, limited},
    {PixFmt::YUVA444P16, 97, "YUVA444P16", 4, 4, 0, 0, 16, 0, planar | alpha | yuv, limited},
    {PixFmt::P010, 158, "P010", 3, 2, 1, 1, 10, 6, planar | yuv, limited},
    {PixFmt::P016, 169, "P016", 3, 2, 1, 1, 16, 0, planar | yuv, limited},
    {PixFmt::RGBAF16, 207, "RGBAF16", 4, 1, 0, 0, 16, 0, rgb | alpha | floating, unspecified},
    {PixFmt::RGBAF32, 220, "RGBAF32", 4, 1, 0, 0, 32, 0, rgb | alpha | floating, unspecified},
});

constexpr Row expectedNone = {PixFmt::NONE, -1, "NONE", 0, 0, 0, 0, 0, 0, none, unspecified};

// What a program linked in front of the library would read at load; that it runs at load is the point.
// NOLINTBEGIN(cert-err58-cpp)
const std::string nameAtLoad = PixFmtDescription::Find(PixFmt::YUVA420P10).name;
const std::string noneAtLoad = PixFmtDescription::Find("NONE").name;
const PixFmt lastIdAtLoad = PixFmtDescription::s_supportedFormats.back();
// NOLINTEND(cert-err58-cpp)

static_assert(std::is_same_v<std::underlying_type_t<PixFmt>, std::int32_t>);
static_assert(std::is_same_v<std::underlying_type_t<PixelColorRange>, std::int32_t>);
static_assert(std::is_same_v<PixColor, std::array<std::uint8_t, 4>>);
static_assert(std::is_same_v<decltype(PixFmtDescription::name), std::string>);
static_assert(std::is_same_v<decltype(PixFmtDescription::flags), std::int32_t>);
static_assert(PixFmtDescription::Planar == 2 && PixFmtDescription::Rgb == 4 && PixFmtDescription::Alpha == 8);
static_assert(PixFmtDescription::Yuv == 16 && PixFmtDescription::Float == 32 && PixFmtDescription::Gray == 64);

constexpr std::int32_t kLargest = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();

Row AsRow(const PixFmtDescription& description) {
    const auto& [id, name, components, planes, log2ChromaW, log2ChromaH, bits, shift, flags, range] = description;
    return {id,    static_cast<std::int32_t>(id), name, components, planes, log2ChromaW, log2ChromaH, bits, shift,
            flags, static_cast<int>(range)};
}

// The name of the format that is found, or "nothing"; what is supported must be found.
template <typename Key>
std::string Found(const Key& key) {
    try {
        const PixFmtDescription& description = PixFmtDescription::Find(key);
        EXPECT_EQ(PixFmtDescription::IsSupported(key), &description != &PixFmtDescription::s_none);
        return description.name;
    } catch (const std::logic_error&) {
        EXPECT_FALSE(PixFmtDescription::IsSupported(key));
        return "nothing";
    }
}

bool IsName(const std::string& text) {
    return text == "NONE" ||
           std::any_of(expectedRows.begin(), expectedRows.end(), [&text](const Row& row) { return row.name == text; });
}

void ExpectNoId(std::int32_t id, const std::string& message) {
    EXPECT_FALSE(PixFmtDescription::IsSupported(PixFmt{id})) << id;
    ExpectText<std::logic_error>([&] { PixFmtDescription::Find(PixFmt{id}); }, message);
}

void ExpectNoName(const std::string& name) {
    EXPECT_FALSE(PixFmtDescription::IsSupported(name)) << name;
    ExpectText<std::logic_error>([&] { PixFmtDescription::Find(name); }, "Unknown pixel format name: " + name);
}

TEST(PixelFormatDescriptionTest, List_HasTheRowsInOrder) {
    const auto& rows = PixFmtDescription::s_list;
    ASSERT_EQ(rows.size(), 58U);
    ASSERT_EQ(expectedRows.size(), 58U);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(AsRow(rows[i]), expectedRows[i]);
    }
}

TEST(PixelFormatDescriptionTest, SupportedFormats_HasTheIdsInTheSameOrder) {
    ASSERT_EQ(PixFmtDescription::s_supportedFormats.size(), 58U);
    for (std::size_t i = 0; i < expectedRows.size(); ++i) {
        EXPECT_EQ(static_cast<std::int32_t>(PixFmtDescription::s_supportedFormats[i]), expectedRows[i].id);
    }
}

TEST(PixelFormatDescriptionTest, None_HasNothing) { EXPECT_EQ(AsRow(PixFmtDescription::s_none), expectedNone); }

TEST(PixelFormatDescriptionTest, Constructor_TakesTheFieldsInTheirOrder) {
    const PixFmtDescription own(PixFmt::P010, "OWN", 1, 2, 3, 4, 5, 6, -7, PixelColorRange::Full);
    EXPECT_EQ(AsRow(own), (Row{PixFmt::P010, 158, "OWN", 1, 2, 3, 4, 5, 6, -7, full}));
}

TEST(PixelFormatDescriptionTest, Find_AtLoadTimeGivesCompleteRows) {
    EXPECT_EQ(nameAtLoad, "YUVA420P10");
    EXPECT_EQ(noneAtLoad, "NONE");
    EXPECT_EQ(static_cast<std::int32_t>(lastIdAtLoad), 220);
}

TEST(PixelFormatDescriptionTest, FindById_GivesTheRowInTheList) {
    for (std::size_t i = 0; i < expectedRows.size(); ++i) {
        EXPECT_TRUE(PixFmtDescription::IsSupported(expectedRows[i].format));
        EXPECT_EQ(&PixFmtDescription::Find(expectedRows[i].format), &PixFmtDescription::s_list[i]);
        EXPECT_EQ(&PixFmtDescription::Find(PixFmt{expectedRows[i].id}), &PixFmtDescription::s_list[i]);
    }
}

TEST(PixelFormatDescriptionTest, FindById_OfNoFormatGivesNone) {
    EXPECT_EQ(&PixFmtDescription::Find(PixFmt::NONE), &PixFmtDescription::s_none);
    EXPECT_EQ(&PixFmtDescription::Find(PixFmt{-1}), &PixFmtDescription::s_none);
    EXPECT_FALSE(PixFmtDescription::IsSupported(PixFmt::NONE));
}

TEST(PixelFormatDescriptionTest, FindById_OfAnyOtherIdThrows) {
    std::map<std::int32_t, std::string> names = {{-1, "NONE"}};
    for (const Row& row : expectedRows) {
        names.emplace(row.id, row.name);
    }
    for (std::int32_t id = -300; id <= 600; ++id) {
        const auto known = names.find(id);
        EXPECT_EQ(Found(PixFmt{id}), known != names.end() ? known->second : "nothing") << id;
    }
}

TEST(PixelFormatDescriptionTest, FindById_OfAnUnknownIdNamesIt) {
    ExpectNoId(1, "Unknown pixel format id: 1");
    ExpectNoId(-2, "Unknown pixel format id: -2");
    ExpectNoId(219, "Unknown pixel format id: 219");
    ExpectNoId(221, "Unknown pixel format id: 221");
    ExpectNoId(256, "Unknown pixel format id: 256");
    ExpectNoId(kLargest, "Unknown pixel format id: 2147483647");
    ExpectNoId(kLowest, "Unknown pixel format id: -2147483648");
}

TEST(PixelFormatDescriptionTest, FindByName_GivesTheRowInTheList) {
    for (std::size_t i = 0; i < expectedRows.size(); ++i) {
        const std::string name(expectedRows[i].name);
        EXPECT_TRUE(PixFmtDescription::IsSupported(name));
        EXPECT_EQ(&PixFmtDescription::Find(name), &PixFmtDescription::s_list[i]);
    }
}

TEST(PixelFormatDescriptionTest, FindByName_OfNoFormatGivesNone) {
    EXPECT_EQ(&PixFmtDescription::Find("NONE"), &PixFmtDescription::s_none);
    EXPECT_FALSE(PixFmtDescription::IsSupported("NONE"));
}

TEST(PixelFormatDescriptionTest, FindByName_OfAnUnknownNameNamesIt) {
    ExpectNoName("");
    ExpectNoName("Y");
    ExpectNoName("YU");
    ExpectNoName("none");
    ExpectNoName("yuv420p");
    ExpectNoName("_0RGB");
    ExpectNoName(" YUV420P");
    ExpectNoName("YUV420P ");
    ExpectNoName("YUV420P11");
    ExpectNoName("YUV420P10LE");
    ExpectNoName("BGR565");
    ExpectNoName(std::string(10000, 'N'));
    ExpectNoName("YUV420P1" + std::string(10000, 'x') + "UV420P10");
}

// A text of the C kind, like that of an exception, ends at a zero, but a name does not.
TEST(PixelFormatDescriptionTest, FindByName_WithAZeroAfterItThrows) {
    const std::string name("NV12\0", 5);
    EXPECT_FALSE(PixFmtDescription::IsSupported(name));
    ExpectText<std::logic_error>([&] { PixFmtDescription::Find(name); }, "Unknown pixel format name: NV12");
}

TEST(PixelFormatDescriptionTest, FindByName_OneCharacterOffFindsAnotherFormatOrThrows) {
    for (const Row& row : expectedRows) {
        for (const char other : {'x', '4', 'A'}) {
            for (const std::string& name : OneCharacterOff(row.name, other)) {
                EXPECT_EQ(Found(name), IsName(name) ? name : "nothing");
            }
        }
    }
}

RC_GTEST_PROP(PixelFormatDescriptionTest, FindByName_OfAnyTextFindsItOrThrows, ()) {
    const auto text = *rc::gen::container<std::string>(rc::gen::elementOf(std::string("YUVARGBP0124568")));
    RC_ASSERT(Found(text) == (IsName(text) ? text : "nothing"));
}

void ExpectNoPlane(const PixFmtDescription& format, int plane) {
    const auto number = static_cast<std::uint8_t>(plane);
    ExpectText<std::invalid_argument>([&] { format.GetPlanWidth(100, number); }, "Unexpected plane");
    ExpectText<std::invalid_argument>([&] { format.GetPlanHeight(100, number); }, "Unexpected plane");
    ExpectText<std::invalid_argument>([&] { format.GetPlanWidthSize(100, number); }, "Unexpected plane");
    ExpectText<std::invalid_argument>([&] { format.GetPlanFullSize(100, 100, number); }, "Unexpected plane");
}

TEST(PixelFormatDescriptionTest, PlaneFunctions_BeyondTheLastPlaneThrow) {
    ExpectNoPlane(PixFmtDescription::Find("YUV420P"), 3);
    ExpectNoPlane(PixFmtDescription::s_none, 0);
    for (const PixFmtDescription& format : PixFmtDescription::s_list) {
        ExpectNoPlane(format, format.planes);
        ExpectNoPlane(format, format.planes + 1);
        ExpectNoPlane(format, 255);
    }
}

PixColor Color(const std::string& format, const PixColor& rgba) {
    return PixFmtDescription::Find(format).MakeColor(rgba);
}

constexpr PixColor kWhite = {255, 255, 255, 255};
constexpr PixColor kBlack = {0, 0, 0, 255};
constexpr PixColor kZeros = {0, 0, 0, 0};

TEST(PixelFormatDescriptionTest, MakeColor_OfWhiteAndBlack) {
    EXPECT_EQ(Color("YUV420P", kWhite), (PixColor{235, 128, 128, 255}));
    EXPECT_EQ(Color("YUV420P", kBlack), (PixColor{16, 128, 128, 255}));
    EXPECT_EQ(Color("YUVJ420P", kWhite), (PixColor{255, 128, 128, 255}));
    EXPECT_EQ(Color("YUVJ420P", kBlack), (PixColor{0, 128, 128, 255}));
    EXPECT_EQ(Color("NV12", kWhite), (PixColor{235, 128, 128, 0}));
    EXPECT_EQ(Color("GRAY8", kWhite), (PixColor{255, 0, 0, 0}));
    EXPECT_EQ(Color("GRAY8", kBlack), kZeros);
    EXPECT_EQ(Color("BGR565LE", kWhite), (PixColor{255, 255, 0, 0}));
}

TEST(PixelFormatDescriptionTest, MakeColor_OfThePrimaries) {
    EXPECT_EQ(Color("YUV444P", {255, 0, 0, 7}), (PixColor{81, 90, 240, 7}));
    EXPECT_EQ(Color("YUV444P", {0, 255, 0, 7}), (PixColor{144, 54, 34, 7}));
    EXPECT_EQ(Color("YUV444P", {0, 0, 255, 7}), (PixColor{41, 240, 110, 7}));
    EXPECT_EQ(Color("NV21", {255, 0, 0, 7}), (PixColor{81, 240, 90, 0}));
    EXPECT_EQ(Color("YUVJ444P", {255, 0, 0, 7}), (PixColor{76, 85, 255, 7}));
    EXPECT_EQ(Color("YUVJ444P", {0, 255, 0, 7}), (PixColor{149, 44, 21, 7}));
    EXPECT_EQ(Color("YUVJ444P", {0, 0, 255, 7}), (PixColor{29, 255, 108, 7}));
}

TEST(PixelFormatDescriptionTest, MakeColor_OrdersTheBytesByFormat) {
    constexpr PixColor color = {1, 2, 3, 4};
    EXPECT_EQ(Color("RGB24", color), (PixColor{1, 2, 3, 0}));
    EXPECT_EQ(Color("BGR24", color), (PixColor{3, 2, 1, 0}));
    EXPECT_EQ(Color("ARGB", color), (PixColor{4, 1, 2, 3}));
    EXPECT_EQ(Color("0RGB", color), (PixColor{4, 1, 2, 3}));
    EXPECT_EQ(Color("RGBA", color), (PixColor{1, 2, 3, 4}));
    EXPECT_EQ(Color("RGB0", color), (PixColor{1, 2, 3, 4}));
    EXPECT_EQ(Color("ABGR", color), (PixColor{4, 3, 2, 1}));
    EXPECT_EQ(Color("0BGR", color), (PixColor{4, 3, 2, 1}));
    EXPECT_EQ(Color("BGRA", color), (PixColor{3, 2, 1, 4}));
    EXPECT_EQ(Color("BGR0", color), (PixColor{3, 2, 1, 4}));
    EXPECT_EQ(Color("GBRP", color), (PixColor{2, 3, 1, 0}));
    EXPECT_EQ(Color("GBRAP", color), (PixColor{2, 3, 1, 4}));
}

TEST(PixelFormatDescriptionTest, MakeColor_Packs565InTheFormatsByteOrder) {
    EXPECT_EQ(Color("BGR565BE", {255, 0, 0, 9}), (PixColor{0x00, 0x1F, 0, 0}));
    EXPECT_EQ(Color("BGR565BE", {0, 255, 0, 9}), (PixColor{0x07, 0xE0, 0, 0}));
    EXPECT_EQ(Color("BGR565BE", {0, 0, 255, 9}), (PixColor{0xF8, 0x00, 0, 0}));
    EXPECT_EQ(Color("BGR565LE", {255, 0, 0, 9}), (PixColor{0x1F, 0x00, 0, 0}));
    EXPECT_EQ(Color("BGR565LE", {0, 255, 0, 9}), (PixColor{0xE0, 0x07, 0, 0}));
    EXPECT_EQ(Color("BGR565LE", {7, 3, 7, 9}), kZeros);
}

TEST(PixelFormatDescriptionTest, MakeColor_WithoutSuchAPixelGivesZeros) {
    EXPECT_EQ(Color("PAL8", kWhite), kZeros);
    EXPECT_EQ(Color("BGR8", kWhite), kZeros);
    EXPECT_EQ(Color("NONE", kWhite), kZeros);
    EXPECT_EQ(PixFmtDescription(PixFmt::P010, "OWN", 3, 2, 1, 1, 8, 0, 0, PixelColorRange::Full).MakeColor(kWhite),
              kZeros);
    EXPECT_EQ(PixFmtDescription(PixFmt{1}, "OWN", 3, 2, 1, 1, 8, 0, 0, PixelColorRange::Full).MakeColor(kWhite),
              kZeros);
    EXPECT_EQ(PixFmtDescription(PixFmt{kLargest}, "OWN", 3, 2, 1, 1, 8, 0, 0, PixelColorRange::Full).MakeColor(kWhite),
              kZeros);
}

TEST(PixelFormatDescriptionTest, MakeColor_OfMoreThanEightBitsThrows) {
    int refused = 0;
    for (const Row& row : expectedRows) {
        if (row.bits > 8) {
            ExpectText<std::invalid_argument>([&] { Color(std::string(row.name), kWhite); },
                                              "Not implemented for HDR formats");
            ++refused;
        }
    }
    EXPECT_EQ(refused, 25);
    const PixFmtDescription nineBits(PixFmt::RGB24, "OWN", 3, 1, 0, 0, 9, 0, 0, PixelColorRange::Full);
    ExpectText<std::invalid_argument>([&] { nineBits.MakeColor(kWhite); }, "Not implemented for HDR formats");
}

// The bytes of a pixel in each format of 8 bits: a letter for a component, h and l for the halves of a 5-6-5 pixel.
constexpr auto colorBytes = std::to_array<std::pair<std::string_view, std::string_view>>({
    {"YUV420P", "YUVA"},  {"YUV422P", "YUVA"},  {"YUV444P", "YUVA"},  {"YUV410P", "YUVA"},  {"YUV411P", "YUVA"},
    {"YUV440P", "YUVA"},  {"YUVA420P", "YUVA"}, {"YUVA422P", "YUVA"}, {"YUVA444P", "YUVA"}, {"YUVJ420P", "yuvA"},
    {"YUVJ422P", "yuvA"}, {"YUVJ444P", "yuvA"}, {"YUVJ440P", "yuvA"}, {"YUVJ411P", "yuvA"}, {"NV12", "YUV0"},
    {"NV21", "YVU0"},     {"GRAY8", "y000"},    {"RGB24", "RGB0"},    {"BGR24", "BGR0"},    {"ARGB", "ARGB"},
    {"0RGB", "ARGB"},     {"RGBA", "RGBA"},     {"RGB0", "RGBA"},     {"ABGR", "ABGR"},     {"0BGR", "ABGR"},
    {"BGRA", "BGRA"},     {"BGR0", "BGRA"},     {"GBRP", "GBR0"},     {"GBRAP", "GBRA"},    {"BGR565BE", "hl00"},
    {"BGR565LE", "lh00"}, {"PAL8", "0000"},     {"BGR8", "0000"},
});

int DividedRoundingDown(int number, int divisor) { return (number - (number % divisor + divisor) % divisor) / divisor; }

// Capitals are components in video range, small letters in full range.
std::map<char, int> Components(int r, int g, int b, int a) {
    std::map<char, int> bytes = {{'0', 0}, {'R', r}, {'G', g}, {'B', b}, {'A', a}};
    bytes['Y'] = DividedRoundingDown(263 * r + 516 * g + 100 * b + 16896, 1024);
    bytes['U'] = DividedRoundingDown(450 * b - 152 * r - 298 * g + 511, 1024) + 128;
    bytes['V'] = DividedRoundingDown(450 * r - 377 * g - 73 * b + 511, 1024) + 128;
    bytes['y'] = DividedRoundingDown((bytes['Y'] - 16) * 1192 + 512, 1024);
    bytes['u'] = DividedRoundingDown(bytes['U'] * 1161 - 17024, 1024);
    bytes['v'] = DividedRoundingDown(bytes['V'] * 1161 - 17024, 1024);
    const int pixel = b / 8 * 2048 + g / 4 * 32 + r / 8;
    bytes['h'] = pixel / 256;
    bytes['l'] = pixel % 256;
    return bytes;
}

void ExpectColorInAllFormats(int r, int g, int b, int a) {
    const auto byte = [](int number) { return static_cast<std::uint8_t>((number % 256 + 256) % 256); };
    const PixColor rgba = {byte(r), byte(g), byte(b), byte(a)};
    const std::map<char, int> bytes = Components(r, g, b, a);
    for (const auto& [format, letters] : colorBytes) {
        PixColor expected = {};
        std::transform(letters.begin(), letters.end(), expected.begin(),
                       [&](char letter) { return byte(bytes.at(letter)); });
        ASSERT_EQ(Color(std::string(format), rgba), expected) << format << ' ' << r << ' ' << g << ' ' << b << ' ' << a;
    }
}

TEST(PixelFormatDescriptionTest, MakeColor_ModelKnowsAllFormatsOfEightBits) {
    std::set<std::string_view> ofEightBits;
    for (const Row& row : expectedRows) {
        if (row.bits == 8) {
            ofEightBits.insert(row.name);
        }
    }
    std::set<std::string_view> known;
    for (const auto& [format, letters] : colorBytes) {
        known.insert(format);
    }
    EXPECT_EQ(known, ofEightBits);
    EXPECT_EQ(colorBytes.size(), ofEightBits.size());
}

TEST(PixelFormatDescriptionTest, MakeColor_OverAGridOfColours) {
    constexpr int steps = 256 / 15 + 1;
    for (int i = 0; i < steps * steps * steps; ++i) {
        const int r = i / (steps * steps) * 15;
        const int g = i / steps % steps * 15;
        const int b = i % steps * 15;
        ASSERT_NO_FATAL_FAILURE(ExpectColorInAllFormats(r, g, b, (r + g + b) % 256));
    }
}

TEST(PixelFormatDescriptionTest, MakeColor_OfAllGreysAndAllAlphas) {
    for (int level = 0; level <= 255; ++level) {
        ASSERT_NO_FATAL_FAILURE(ExpectColorInAllFormats(level, level, level, 255 - level));
    }
}

TEST(PixelFormatDescriptionTest, Find_FromManyThreadsGivesTheSameRows) {
    const auto count = [] {
        return std::count_if(expectedRows.begin(), expectedRows.end(), [](const Row& row) {
            return &PixFmtDescription::Find(std::string(row.name)) == &PixFmtDescription::Find(row.format);
        });
    };
    EXPECT_EQ(OnFourThreads(count), (std::array<std::size_t, 4>{58, 58, 58, 58}));
}

}  // namespace
}  // namespace Quenzo
