// Covers Conf/Interfaces/SampleFormatsDescription: the table, its look-ups and their failures.

#include <Conf/Interfaces/SampleFormatsDescription.h>
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
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace Quenzo::Conf {
namespace {

using Testing::ExpectFormatFailure;
using Testing::OneCharacterOff;
using Testing::OnFourThreads;

constexpr bool yes = true;
constexpr bool no = false;

struct Row {
    SampleFormats format;
    std::int32_t value;
    std::string_view textId;
    std::int32_t bits;
    bool planar;
    bool isFloat;
    bool isSigned;
    std::int32_t twin;

    friend bool operator==(const Row&, const Row&) = default;

    friend std::ostream& operator<<(std::ostream& os, const Row& row) {
        return os << row.value << ' ' << row.textId << ' ' << row.bits << ' ' << row.planar << ' ' << row.isFloat << ' '
                  << row.isSigned << ' ' << row.twin;
    }
};

constexpr auto expectedRows = std::to_array<Row>({
    {SampleFormats::SAMPLE_FMT_NONE, -1, "SAMPLE_FMT_NONE", 0, no, no, no, -1},
    {SampleFormats::SAMPLE_FMT_U8, 0, "SAMPLE_FMT_U8", 8, no, no, no, 5},
    {SampleFormats::SAMPLE_FMT_S16, 1, "SAMPLE_FMT_S16", 16, no, no, yes, 6},
    {SampleFormats::SAMPLE_FMT_S32, 2, "SAMPLE_FMT_S32", 32, no, no, yes, 7},
    {SampleFormats::SAMPLE_FMT_FLT, 3, "SAMPLE_FMT_FLT", 32, no, yes, yes, 8},
    {SampleFormats::SAMPLE_FMT_DBL, 4, "SAMPLE_FMT_DBL", 64, no, yes, yes, 9},
    {SampleFormats::SAMPLE_FMT_U8P, 5, "SAMPLE_FMT_U8P", 8, yes, no, no, 0},
    {SampleFormats::SAMPLE_FMT_S16P, 6, "SAMPLE_FMT_S16P", 16, yes, no, yes, 1},
    {SampleFormats::SAMPLE_FMT_S32P, 7, "SAMPLE_FMT_S32P", 32, yes, no, yes, 2},
    {SampleFormats::SAMPLE_FMT_FLTP, 8, "SAMPLE_FMT_FLTP", 32, yes, yes, yes, 3},
    {SampleFormats::SAMPLE_FMT_DBLP, 9, "SAMPLE_FMT_DBLP", 64, yes, yes, yes, 4},
});

// What a program linked in front of the library would read at load; that it runs at load is the point.
// NOLINTBEGIN(cert-err58-cpp)
const std::string textIdAtLoad = SampleFmtRecord::Find(SampleFormats::SAMPLE_FMT_FLTP).textId;
const std::string validTextIdAtLoad = SampleFmtRecord::EnumerateValid().back().textId;
const std::int32_t bitsAtLoad = SampleFmtRecord::Find("SAMPLE_FMT_S16P").bits;
// NOLINTEND(cert-err58-cpp)

static_assert(std::is_same_v<std::underlying_type_t<SampleFormats>, std::int32_t>);
static_assert(std::is_aggregate_v<SampleFmtRecord>);
static_assert(std::is_same_v<decltype(SampleFmtRecord::textId), std::string>);

constexpr std::int32_t kLargest = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();

Row AsRow(const SampleFmtRecord& record) {
    const auto& [format, bits, textId, planar, isFloat, isSigned, twin] = record;
    return {format,   static_cast<std::int32_t>(format), textId, bits, planar, isFloat,
            isSigned, static_cast<std::int32_t>(twin)};
}

// The text id of the row that is found, or "nothing".
template <typename... Key>
std::string Found(const Key&... key) {
    try {
        return SampleFmtRecord::Find(key...).textId;
    } catch (const FormatException&) {
        return "nothing";
    }
}

bool IsTextId(const std::string& text) {
    return std::any_of(expectedRows.begin(), expectedRows.end(),
                       [&text](const Row& row) { return row.textId == text; });
}

void ExpectNoFormat(std::int32_t value) {
    ExpectFormatFailure([&] { SampleFmtRecord::Find(SampleFormats{value}); },
                        "Provided sample format is not found in list");
}

void ExpectNoTextId(const std::string& textId) {
    ExpectFormatFailure([&] { SampleFmtRecord::Find(textId); }, "Provided sample textId is not found in list");
}

void ExpectNoBits(int bits) {
    ExpectFormatFailure([&] { SampleFmtRecord::Find(bits); }, "Provided sample bits is not found in list");
}

void ExpectNoBits(int bits, bool isFloat) {
    ExpectFormatFailure([&] { SampleFmtRecord::Find(bits, isFloat); },
                        "Provided sample bits and float specifier is not found in list");
}

TEST(SampleFormatsDescriptionTest, Enumerate_HasTheRowsInOrder) {
    const auto& rows = SampleFmtRecord::Enumerate();
    ASSERT_EQ(rows.size(), 11U);
    ASSERT_EQ(expectedRows.size(), 11U);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(AsRow(rows[i]), expectedRows[i]);
    }
}

TEST(SampleFormatsDescriptionTest, EnumerateValid_HasAllRowsButNoneInOrder) {
    const auto& rows = SampleFmtRecord::EnumerateValid();
    ASSERT_EQ(rows.size(), 10U);
    EXPECT_EQ(rows.front().textId, "SAMPLE_FMT_U8");
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(AsRow(rows[i]), expectedRows[i + 1]);
    }
}

TEST(SampleFormatsDescriptionTest, Enumerate_ReturnsTheSameRowsEveryTime) {
    EXPECT_EQ(&SampleFmtRecord::Enumerate(), &SampleFmtRecord::Enumerate());
    EXPECT_EQ(&SampleFmtRecord::EnumerateValid(), &SampleFmtRecord::EnumerateValid());
}

TEST(SampleFormatsDescriptionTest, Find_AtLoadTimeGivesCompleteRows) {
    EXPECT_EQ(textIdAtLoad, "SAMPLE_FMT_FLTP");
    EXPECT_EQ(validTextIdAtLoad, "SAMPLE_FMT_DBLP");
    EXPECT_EQ(bitsAtLoad, 16);
}

TEST(SampleFormatsDescriptionTest, Twin_OfTheTwinIsTheRowItself) {
    for (const SampleFmtRecord& row : SampleFmtRecord::Enumerate()) {
        EXPECT_EQ(&SampleFmtRecord::Find(SampleFmtRecord::Find(row.twin).twin), &row) << row.textId;
    }
}

TEST(SampleFormatsDescriptionTest, FindByFormat_GivesTheRowInTheTable) {
    for (std::size_t i = 0; i < expectedRows.size(); ++i) {
        EXPECT_EQ(&SampleFmtRecord::Find(expectedRows[i].format), &SampleFmtRecord::Enumerate()[i]);
        EXPECT_EQ(&SampleFmtRecord::Find(SampleFormats{expectedRows[i].value}), &SampleFmtRecord::Enumerate()[i]);
    }
}

TEST(SampleFormatsDescriptionTest, FindByFormat_OutsideTheEnumerationThrows) {
    ExpectNoFormat(-2);
    ExpectNoFormat(10);
    ExpectNoFormat(255);
    ExpectNoFormat(kLargest);
    ExpectNoFormat(kLowest);
}

TEST(SampleFormatsDescriptionTest, FindByTextId_GivesTheRowInTheTable) {
    for (std::size_t i = 0; i < expectedRows.size(); ++i) {
        EXPECT_EQ(&SampleFmtRecord::Find(std::string(expectedRows[i].textId)), &SampleFmtRecord::Enumerate()[i]);
    }
}

TEST(SampleFormatsDescriptionTest, FindByTextId_OfAnotherTextThrows) {
    ExpectNoTextId("");
    ExpectNoTextId("S");
    ExpectNoTextId("S16");
    ExpectNoTextId("NONE");
    ExpectNoTextId("SAMPLE_FMT_");
    ExpectNoTextId("SAMPLE_FMT_S24");
    ExpectNoTextId("sample_fmt_s16");
    ExpectNoTextId("SAMPLE_FMT_s16");
    ExpectNoTextId(" SAMPLE_FMT_S16");
    ExpectNoTextId("SAMPLE_FMT_S16 ");
    ExpectNoTextId("SAMPLE_FMT_S16PP");
    ExpectNoTextId("SAMPLE_FMTxS16");
    ExpectNoTextId(std::string("SAMPLE_FMT_U8\0", 14));
    ExpectNoTextId(std::string(10000, 'S'));
    ExpectNoTextId("SAMPLE_F" + std::string(10000, 'x') + "E_FMT_U8");
}

TEST(SampleFormatsDescriptionTest, FindByTextId_OneCharacterOffFindsAnotherRowOrThrows) {
    for (const Row& row : expectedRows) {
        for (const char other : {'x', '1', 'P'}) {
            for (const std::string& text : OneCharacterOff(row.textId, other)) {
                EXPECT_EQ(Found(text), IsTextId(text) ? text : "nothing");
            }
        }
    }
}

RC_GTEST_PROP(SampleFormatsDescriptionTest, FindByTextId_OfAnyTailFindsItOrThrows, (const std::string& tail)) {
    const std::string text = "SAMPLE_FMT_" + tail;
    RC_ASSERT(Found(text) == (IsTextId(text) ? text : "nothing"));
}

TEST(SampleFormatsDescriptionTest, FindByBits_GivesTheFirstRow) {
    const std::map<int, std::string> expected = {
        {0, "SAMPLE_FMT_NONE"}, {8, "SAMPLE_FMT_U8"},   {16, "SAMPLE_FMT_S16"},
        {32, "SAMPLE_FMT_S32"}, {64, "SAMPLE_FMT_DBL"},
    };
    EXPECT_EQ(&SampleFmtRecord::Find(32), &SampleFmtRecord::Enumerate()[3]);
    for (int bits = -100; bits <= 100; ++bits) {
        const auto row = expected.find(bits);
        EXPECT_EQ(Found(bits), row != expected.end() ? row->second : "nothing") << bits;
    }
}

TEST(SampleFormatsDescriptionTest, FindByBits_OfAnotherNumberThrows) {
    ExpectNoBits(24);
    ExpectNoBits(-1);
    ExpectNoBits(1);
    ExpectNoBits(kLargest);
    ExpectNoBits(kLowest);
}

TEST(SampleFormatsDescriptionTest, FindByBitsAndFloat_GivesTheFirstRow) {
    const std::map<std::pair<int, bool>, std::string> expected = {
        {{0, false}, "SAMPLE_FMT_NONE"}, {{8, false}, "SAMPLE_FMT_U8"},  {{16, false}, "SAMPLE_FMT_S16"},
        {{32, false}, "SAMPLE_FMT_S32"}, {{32, true}, "SAMPLE_FMT_FLT"}, {{64, true}, "SAMPLE_FMT_DBL"},
    };
    EXPECT_EQ(&SampleFmtRecord::Find(32, true), &SampleFmtRecord::Enumerate()[4]);
    for (int bits = -100; bits <= 100; ++bits) {
        for (const bool isFloat : {false, true}) {
            const auto row = expected.find({bits, isFloat});
            EXPECT_EQ(Found(bits, isFloat), row != expected.end() ? row->second : "nothing") << bits << ' ' << isFloat;
        }
    }
}

TEST(SampleFormatsDescriptionTest, FindByBitsAndFloat_WithoutSuchARowThrows) {
    ExpectNoBits(64, false);
    ExpectNoBits(0, true);
    ExpectNoBits(8, true);
    ExpectNoBits(16, true);
    ExpectNoBits(24, false);
    ExpectNoBits(kLowest, false);
}

TEST(SampleFormatsDescriptionTest, Find_FromManyThreadsGivesTheSameRows) {
    const auto count = [] {
        return std::count_if(expectedRows.begin(), expectedRows.end(), [](const Row& row) {
            return &SampleFmtRecord::Find(std::string(row.textId)) == &SampleFmtRecord::Find(row.format);
        });
    };
    EXPECT_EQ(OnFourThreads(count), (std::array<std::size_t, 4>{11, 11, 11, 11}));
}

}  // namespace
}  // namespace Quenzo::Conf
