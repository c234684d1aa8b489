// Covers Conf/Interfaces/FrameInfo.h and Rect.h: the layout of the records, their defaults and equality, and how frames
// are printed.

#include <Conf/Interfaces/FrameInfo.h>
#include <Conf/Interfaces/Rect.h>
#include <tests/Conf/Grouping.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <iomanip>
#include <limits>
#include <locale>
#include <sstream>
#include <string>
#include <type_traits>

// Three places from which clients print: outside the library's namespaces and inside either of them.
namespace FrameInfoClient {

template <typename T>
std::string Print(const T& value) {
    std::ostringstream out;
    out << value;
    return out.str();
}

}  // namespace FrameInfoClient

namespace Quenzo {

std::string PrintFromQuenzo(const FrameSize& size, const Conf::FrameInfo& info) {
    std::ostringstream out;
    out << size << '|' << info;
    return out.str();
}

namespace Conf {

std::string PrintFromConf(const FrameSize& size, const FrameInfo& info) {
    std::ostringstream out;
    out << size << '|' << info;
    return out.str();
}

namespace {

using FrameInfoClient::Print;

constexpr std::uint32_t kLargest = std::numeric_limits<std::uint32_t>::max();

static_assert(sizeof(FrameSize) == 8 && std::is_trivially_copyable_v<FrameSize>);
static_assert(sizeof(FrameInfo) == 16 && std::is_trivially_copyable_v<FrameInfo>);
static_assert(sizeof(Proc::RectT<double, double>) == 32);
static_assert(std::is_trivially_copyable_v<Proc::RectT<double, double>>);
static_assert(std::is_aggregate_v<FrameSize> && std::is_aggregate_v<FrameInfo>);

TEST(FrameSize, Members_StandInTheOrderWidthHeight) {
    const FrameSize size = {1920, 1080};
    EXPECT_EQ(size.width, 1920U);
    EXPECT_EQ(size.height, 1080U);
}

TEST(FrameSize, Default_IsEmpty) { EXPECT_EQ(FrameSize(), (FrameSize{0, 0})); }

TEST(FrameSize, Equality_ComparesBothMembers) {
    const FrameSize size = {1920, 1080};
    EXPECT_EQ(size, (FrameSize{1920, 1080}));
    EXPECT_NE(size, (FrameSize{1921, 1080}));
    EXPECT_NE(size, (FrameSize{1920, 1081}));
}

TEST(FrameInfo, Members_StandInTheOrderWidthHeightAspectXAspectY) {
    const FrameInfo info = {720, 576, 64, 45};
    EXPECT_EQ(info.width, 720U);
    EXPECT_EQ(info.height, 576U);
    EXPECT_EQ(info.aspectX, 64U);
    EXPECT_EQ(info.aspectY, 45U);
}

TEST(FrameInfo, Default_IsEmptyWithSquarePixels) {
    EXPECT_EQ(FrameInfo(), (FrameInfo{0, 0, 1, 1}));
    EXPECT_EQ((FrameInfo{1920, 1080}), (FrameInfo{1920, 1080, 1, 1}));
}

TEST(FrameInfo, Equality_ComparesAllMembers) {
    const FrameInfo info = {720, 576, 64, 45};
    EXPECT_EQ(info, (FrameInfo{720, 576, 64, 45}));
    EXPECT_NE(info, (FrameInfo{721, 576, 64, 45}));
    EXPECT_NE(info, (FrameInfo{720, 577, 64, 45}));
    EXPECT_NE(info, (FrameInfo{720, 576, 65, 45}));
    EXPECT_NE(info, (FrameInfo{720, 576, 64, 46}));
}

TEST(RectT, Members_StandInTheOrderLeftTopWidthHeight) {
    const Proc::RectT<double, double> rect = {1.5, -2, 3, 4};
    EXPECT_EQ(rect.left, 1.5);
    EXPECT_EQ(rect.top, -2);
    EXPECT_EQ(rect.width, 3);
    EXPECT_EQ(rect.height, 4);
}

TEST(RectT, Default_IsEmptyAtTheOrigin) {
    EXPECT_EQ((Proc::RectT<double, double>()), (Proc::RectT<double, double>{0, 0, 0, 0}));
}

TEST(RectT, PositionAndSize_MayHaveTypesOfTheirOwn) {
    const Proc::RectT<int, unsigned> rect = {-1, -2, 3, 4};
    static_assert(std::is_same_v<decltype(rect.left), int>);
    static_assert(std::is_same_v<decltype(rect.top), int>);
    static_assert(std::is_same_v<decltype(rect.width), unsigned>);
    static_assert(std::is_same_v<decltype(rect.height), unsigned>);
    EXPECT_EQ(rect, (Proc::RectT<int, unsigned>{-1, -2, 3, 4}));
}

TEST(RectT, Equality_ComparesAllMembers) {
    const Proc::RectT<double, double> rect = {1, 2, 3, 4};
    EXPECT_NE(rect, (Proc::RectT<double, double>{0, 2, 3, 4}));
    EXPECT_NE(rect, (Proc::RectT<double, double>{1, 0, 3, 4}));
    EXPECT_NE(rect, (Proc::RectT<double, double>{1, 2, 0, 4}));
    EXPECT_NE(rect, (Proc::RectT<double, double>{1, 2, 3, 0}));
}

TEST(FrameInfoPrint, FrameSize_IsWidthTimesHeight) {
    EXPECT_EQ(Print(FrameSize{1920, 1080}), "1920x1080");
    EXPECT_EQ(Print(FrameSize{0, 0}), "0x0");
    EXPECT_EQ(Print(FrameSize{kLargest, kLargest}), "4294967295x4294967295");
}

TEST(FrameInfoPrint, FrameInfo_AddsThePixelAspect) {
    EXPECT_EQ(Print(FrameInfo{720, 576, 64, 45}), "720x576 ax=64 ay=45");
    EXPECT_EQ(Print(FrameInfo{0, 0, 0, 0}), "0x0 ax=0 ay=0");
    EXPECT_EQ(Print(FrameInfo{kLargest, 2147483648, kLargest, 4294967294}),
              "4294967295x2147483648 ax=4294967295 ay=4294967294");
}

TEST(FrameInfoPrint, FromEveryNamespace_FindsTheSameOperators) {
    EXPECT_EQ(PrintFromQuenzo({1, 2}, {3, 4, 5, 6}), "1x2|3x4 ax=5 ay=6");
    EXPECT_EQ(PrintFromConf({1, 2}, {3, 4, 5, 6}), "1x2|3x4 ax=5 ay=6");
}

TEST(FrameInfoPrint, CalledByItsQualifiedName_IsInConf) {
    std::ostringstream out;
    std::ostream& (*const printSize)(std::ostream&, const FrameSize&) = &Quenzo::Conf::operator<<;
    std::ostream& (*const printInfo)(std::ostream&, const FrameInfo&) = &Quenzo::Conf::operator<<;
    EXPECT_EQ(&printSize(out, {1, 2}), &out);
    EXPECT_EQ(&printInfo(out, {3, 4, 5, 6}), &out);
    EXPECT_EQ(out.str(), "1x23x4 ax=5 ay=6");
}

TEST(FrameInfoPrint, StreamWithAnotherBaseOrSigns_StillPrintsPlainDecimals) {
    std::ostringstream out;
    out << std::hex << std::showbase << std::showpos << FrameSize{255, 16} << ' ' << FrameInfo{255, 16, 10, 11};
    EXPECT_EQ(out.str(), "255x16 255x16 ax=10 ay=11");
    EXPECT_EQ(out.flags() & std::ios_base::basefield, std::ios_base::hex);
}

TEST(FrameInfoPrint, StreamWithAGroupingLocale_StillPrintsPlainDecimals) {
    std::ostringstream out;
    out.imbue(Testing::GroupingLocale());
    out << 10000 << ' ' << FrameSize{10000, 2000} << ' ' << FrameInfo{10000, 2000, 3000, 4000};
    EXPECT_EQ(out.str(), "10,000 10000x2000 10000x2000 ax=3000 ay=4000");
}

TEST(FrameInfoPrint, FieldWidth_CountsForTheWholeText) {
    std::ostringstream out;
    out << std::setfill('.') << std::setw(9) << FrameSize{16, 9} << std::setw(18) << FrameInfo{1, 2, 3, 4};
    EXPECT_EQ(out.str(), ".....16x9.....1x2 ax=3 ay=4");
}

}  // namespace
}  // namespace Conf
}  // namespace Quenzo
