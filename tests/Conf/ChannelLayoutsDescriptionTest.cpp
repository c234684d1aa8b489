// Covers Conf/Interfaces/ChannelLayoutsDescription: the table, its look-ups and their failures, the loss between all
// pairs of layouts, and the choice of the best candidate.

#include <Conf/Interfaces/ChannelLayoutsDescription.h>
#include <Conf/Interfaces/Vocabulary/AudioVocabulary.h>
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
#include <vector>

namespace Quenzo::Conf {
namespace {

using Testing::ExpectFormatFailure;
using Testing::OneCharacterOff;
using Testing::OnFourThreads;

constexpr const char* kNoSuchLayout = "Provided ChannelLayout is not found in list";
constexpr const char* kNoSuchTextId = "Provided Channel TextID is not found in list";
constexpr const char* kNoSuchCount = "Provided number of channels is not found in list";

struct Row {
    ChannelLayout layout;
    std::int32_t value;
    std::string_view textId;
    std::int32_t channels;

    friend bool operator==(const Row&, const Row&) = default;

    friend std::ostream& operator<<(std::ostream& os, const Row& row) {
        return os << row.value << ' ' << row.textId << ' ' << row.channels;
    }
};

constexpr auto expectedRows = std::to_array<Row>({
    {ChannelLayout::UNKNOWN, 0, "UNKNOWN", 0},
    {ChannelLayout::MONO, 1, "MONO", 1},
    {ChannelLayout::STEREO, 2, "STEREO", 2},
    {ChannelLayout::_2POINT1, 3, "2POINT1", 3},
    {ChannelLayout::_2_1, 4, "2_1", 3},
    {ChannelLayout::SURROUND, 5, "SURROUND", 3},
    {ChannelLayout::_3POINT1, 6, "3POINT1", 4},
    {ChannelLayout::_4POINT0, 7, "4POINT0", 4},
    {ChannelLayout::_4POINT1, 8, "4POINT1", 5},
    {ChannelLayout::_2_2, 9, "2_2", 4},
    {ChannelLayout::QUAD, 10, "QUAD", 4},
    {ChannelLayout::_5POINT0, 11, "5POINT0", 5},
    {ChannelLayout::_5POINT1, 12, "5POINT1", 6},
    {ChannelLayout::_5POINT0_BACK, 13, "5POINT0_BACK", 5},
    {ChannelLayout::_5POINT1_BACK, 14, "5POINT1_BACK", 6},
    {ChannelLayout::_6POINT0, 15, "6POINT0", 6},
    {ChannelLayout::_6POINT0_FRONT, 16, "6POINT0_FRONT", 6},
    {ChannelLayout::HEXAGONAL, 17, "HEXAGONAL", 6},
    {ChannelLayout::_6POINT1, 18, "6POINT1", 7},
    {ChannelLayout::_6POINT1_BACK, 19, "6POINT1_BACK", 7},
    {ChannelLayout::_6POINT1_FRONT, 20, "6POINT1_FRONT", 7},
    {ChannelLayout::_7POINT0, 21, "7POINT0", 7},
    {ChannelLayout::_7POINT0_FRONT, 22, "7POINT0_FRONT", 7},
    {ChannelLayout::_7POINT1, 23, "7POINT1", 8},
    {ChannelLayout::_7POINT1_WIDE, 24, "7POINT1_WIDE", 8},
    {ChannelLayout::_7POINT1_WIDE_BACK, 25, "7POINT1_WIDE_BACK", 8},
    {ChannelLayout::OCTAGONAL, 26, "OCTAGONAL", 8},
    {ChannelLayout::HEXADECAGONAL, 27, "HEXADECAGONAL", 16},
    {ChannelLayout::STEREO_DOWNMIX, 28, "STEREO_DOWNMIX", 2},
});

// What a program linked in front of the library would read at load; that it runs at load is the point.
// NOLINTBEGIN(cert-err58-cpp)
const std::string textIdAtLoad = LayoutRecord::Find("7POINT1_WIDE_BACK").textId;
const std::int32_t channelsAtLoad = LayoutRecord::Find(ChannelLayout::HEXADECAGONAL).channels;
// NOLINTEND(cert-err58-cpp)

static_assert(std::is_same_v<std::underlying_type_t<ChannelLayout>, std::int32_t>);
static_assert(std::is_aggregate_v<LayoutRecord>);

constexpr std::int32_t kLargest = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();

Row AsRow(const LayoutRecord& record) {
    const auto& [layout, channels, textId] = record;
    return {layout, static_cast<std::int32_t>(layout), textId, channels};
}

// The text id of the row that is found, or "nothing".
template <typename Key>
std::string Found(const Key& key) {
    try {
        return LayoutRecord::Find(key).textId;
    } catch (const FormatException&) {
        return "nothing";
    }
}

bool IsTextId(const std::string& text) {
    return std::any_of(expectedRows.begin(), expectedRows.end(),
                       [&text](const Row& row) { return row.textId == text; });
}

void ExpectNoTextId(const std::string& textId) {
    ExpectFormatFailure([&] { LayoutRecord::Find(textId); }, kNoSuchTextId);
}

void ExpectNoCount(int channels) {
    ExpectFormatFailure([&] { LayoutRecord::Find(channels); }, kNoSuchCount);
}

void ExpectNoLayout(std::int32_t value) {
    ExpectFormatFailure([&] { LayoutRecord::Find(ChannelLayout{value}); }, kNoSuchLayout);
}

TEST(ChannelLayoutsDescriptionTest, Enumerate_HasTheRowsInOrder) {
    const auto& rows = LayoutRecord::Enumerate();
    ASSERT_EQ(rows.size(), 29U);
    ASSERT_EQ(expectedRows.size(), 29U);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(AsRow(rows[i]), expectedRows[i]);
    }
}

TEST(ChannelLayoutsDescriptionTest, EnumerateValid_HasAllRowsButUnknownInOrder) {
    const auto& rows = LayoutRecord::EnumerateValid();
    ASSERT_EQ(rows.size(), 28U);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(AsRow(rows[i]), expectedRows[i + 1]);
    }
}

TEST(ChannelLayoutsDescriptionTest, Enumerate_ReturnsTheSameRowsEveryTime) {
    EXPECT_EQ(&LayoutRecord::Enumerate(), &LayoutRecord::Enumerate());
    EXPECT_EQ(&LayoutRecord::EnumerateValid(), &LayoutRecord::EnumerateValid());
}

TEST(ChannelLayoutsDescriptionTest, TextId_IsTheConstantOfTheVocabulary) {
    EXPECT_EQ(LayoutRecord::Find(ChannelLayout::UNKNOWN).textId, AudioVocabulary::TAG_CH_LAYOUT_UNKNOWN);
    EXPECT_EQ(LayoutRecord::Find(ChannelLayout::_2_1).textId, AudioVocabulary::TAG_CH_LAYOUT_2_1);
    EXPECT_EQ(LayoutRecord::Find(ChannelLayout::STEREO_DOWNMIX).textId, AudioVocabulary::TAG_CH_LAYOUT_STEREO_DOWNMIX);
}

TEST(ChannelLayoutsDescriptionTest, Find_AtLoadTimeGivesCompleteRows) {
    EXPECT_EQ(textIdAtLoad, "7POINT1_WIDE_BACK");
    EXPECT_EQ(channelsAtLoad, 16);
}

TEST(ChannelLayoutsDescriptionTest, FindByLayout_GivesTheRowInTheTable) {
    for (std::size_t i = 0; i < expectedRows.size(); ++i) {
        EXPECT_EQ(&LayoutRecord::Find(expectedRows[i].layout), &LayoutRecord::Enumerate()[i]);
        EXPECT_EQ(&LayoutRecord::Find(ChannelLayout{expectedRows[i].value}), &LayoutRecord::Enumerate()[i]);
    }
}

TEST(ChannelLayoutsDescriptionTest, FindByLayout_OutsideTheEnumerationThrows) {
    ExpectNoLayout(-1);
    ExpectNoLayout(29);
    ExpectNoLayout(30);
    ExpectNoLayout(255);
    ExpectNoLayout(256);
    ExpectNoLayout(kLargest);
    ExpectNoLayout(kLowest);
}

TEST(ChannelLayoutsDescriptionTest, FindByTextId_GivesTheRowInTheTable) {
    for (std::size_t i = 0; i < expectedRows.size(); ++i) {
        EXPECT_EQ(&LayoutRecord::Find(std::string(expectedRows[i].textId)), &LayoutRecord::Enumerate()[i]);
    }
}

TEST(ChannelLayoutsDescriptionTest, FindByTextId_OfAnotherTextThrows) {
    ExpectNoTextId("");
    ExpectNoTextId("2");
    ExpectNoTextId("S");
    ExpectNoTextId("2_");
    ExpectNoTextId("stereo");
    ExpectNoTextId("Stereo");
    ExpectNoTextId(" STEREO");
    ExpectNoTextId("STEREO ");
    ExpectNoTextId("_5POINT1");
    ExpectNoTextId("5.1");
    ExpectNoTextId("2POINT2");
    ExpectNoTextId("7POINT1_WIDE_BACK_");
    ExpectNoTextId("7POINT1_xxx_BACK");
    ExpectNoTextId("7POINT1_xIDE_BACK");
    ExpectNoTextId(std::string("STEREO\0", 7));
    ExpectNoTextId(std::string(1, '\0'));
    ExpectNoTextId(std::string(10000, 'S'));
}

TEST(ChannelLayoutsDescriptionTest, FindByTextId_OneCharacterOffFindsAnotherRowOrThrows) {
    for (const Row& row : expectedRows) {
        for (const char other : {'x', '1', 'P'}) {
            for (const std::string& text : OneCharacterOff(row.textId, other)) {
                EXPECT_EQ(Found(text), IsTextId(text) ? text : "nothing");
            }
        }
    }
}

RC_GTEST_PROP(ChannelLayoutsDescriptionTest, FindByTextId_OfAnyTextFindsItOrThrows, (const std::string& text)) {
    RC_ASSERT(Found(text) == (IsTextId(text) ? text : "nothing"));
}

TEST(ChannelLayoutsDescriptionTest, FindByChannels_GivesTheFirstRowInTheTable) {
    const std::map<int, std::string> expected = {
        {0, "UNKNOWN"}, {1, "MONO"},    {2, "STEREO"},  {3, "2POINT1"}, {4, "3POINT1"},
        {5, "4POINT1"}, {6, "5POINT1"}, {7, "6POINT1"}, {8, "7POINT1"}, {16, "HEXADECAGONAL"},
    };
    EXPECT_EQ(&LayoutRecord::Find(3), &LayoutRecord::Enumerate()[3]);
    EXPECT_EQ(&LayoutRecord::Find(16), &LayoutRecord::Enumerate()[27]);
    for (int channels = -100; channels <= 100; ++channels) {
        const auto row = expected.find(channels);
        EXPECT_EQ(Found(channels), row != expected.end() ? row->second : "nothing") << channels;
    }
}

TEST(ChannelLayoutsDescriptionTest, FindByChannels_OfAnotherNumberThrows) {
    ExpectNoCount(9);
    ExpectNoCount(15);
    ExpectNoCount(17);
    ExpectNoCount(-1);
    ExpectNoCount(kLargest);
    ExpectNoCount(kLowest);
}

// The numbers of channels of the layouts in the order of their values.
constexpr std::array<int, 29> kChannels = {0, 1, 2, 3, 3, 3, 4, 4, 5, 4, 4, 5, 6,  5, 6,
                                           6, 6, 6, 7, 7, 7, 7, 7, 8, 8, 8, 8, 16, 2};

std::uint32_t ExpectedLoss(std::size_t from, std::size_t to) {
    const int dropped = std::max(kChannels.at(from) - kChannels.at(to), 0);
    const int added = std::max(kChannels.at(to) - kChannels.at(from), 0);
    return static_cast<std::uint32_t>(dropped > 0 ? dropped + 100 : added);
}

ChannelLayout LayoutAt(std::size_t value) { return ChannelLayout{static_cast<std::int32_t>(value)}; }

TEST(ChannelLayoutsDescriptionTest, GetChannelLayoutLoss_OfAllPairsCountsChannels) {
    for (std::size_t from = 0; from < 29; ++from) {
        for (std::size_t to = 0; to < 29; ++to) {
            EXPECT_EQ(GetChannelLayoutLoss(LayoutAt(from), LayoutAt(to)), ExpectedLoss(from, to)) << from << ' ' << to;
        }
    }
}

TEST(ChannelLayoutsDescriptionTest, GetChannelLayoutLoss_WeighsDroppedChannelsAboveAddedOnes) {
    EXPECT_EQ(GetChannelLayoutLoss(ChannelLayout::_5POINT1, ChannelLayout::STEREO), 104U);
    EXPECT_EQ(GetChannelLayoutLoss(ChannelLayout::STEREO, ChannelLayout::_5POINT1), 4U);
    EXPECT_EQ(GetChannelLayoutLoss(ChannelLayout::STEREO, ChannelLayout::STEREO_DOWNMIX), 0U);
    EXPECT_EQ(GetChannelLayoutLoss(ChannelLayout::UNKNOWN, ChannelLayout::HEXADECAGONAL), 16U);
    EXPECT_EQ(GetChannelLayoutLoss(ChannelLayout::HEXADECAGONAL, ChannelLayout::UNKNOWN), 116U);
}

TEST(ChannelLayoutsDescriptionTest, GetChannelLayoutLoss_OfAValueOutsideTheEnumerationThrows) {
    const auto expectThrow = [](std::int32_t from, std::int32_t to) {
        ExpectFormatFailure([&] { GetChannelLayoutLoss(ChannelLayout{from}, ChannelLayout{to}); }, kNoSuchLayout);
    };
    expectThrow(29, 2);
    expectThrow(2, 29);
    expectThrow(-1, -1);
    expectThrow(2, kLargest);
    expectThrow(kLowest, 2);
}

TEST(ChannelLayoutsDescriptionTest, FindBestChannelLayout_WithoutCandidatesIsUnknown) {
    EXPECT_EQ(FindBestChannelLayout(ChannelLayout::STEREO, {}), ChannelLayout::UNKNOWN);
    EXPECT_EQ(FindBestChannelLayout(ChannelLayout{99}, {}), ChannelLayout::UNKNOWN);
}

TEST(ChannelLayoutsDescriptionTest, FindBestChannelLayout_TakesTheSmallestLoss) {
    using enum ChannelLayout;
    EXPECT_EQ(FindBestChannelLayout(_5POINT1, {STEREO, _7POINT1}), _7POINT1);
    EXPECT_EQ(FindBestChannelLayout(_5POINT1, {_7POINT1, STEREO}), _7POINT1);
    EXPECT_EQ(FindBestChannelLayout(_5POINT1, {MONO, STEREO, _4POINT0}), _4POINT0);
    EXPECT_EQ(FindBestChannelLayout(MONO, {HEXADECAGONAL, UNKNOWN}), HEXADECAGONAL);
    EXPECT_EQ(FindBestChannelLayout(STEREO, {UNKNOWN, MONO, HEXADECAGONAL, SURROUND, QUAD}), SURROUND);
}

TEST(ChannelLayoutsDescriptionTest, FindBestChannelLayout_TakesTheFirstAmongEquals) {
    using enum ChannelLayout;
    EXPECT_EQ(FindBestChannelLayout(_5POINT1, {_5POINT1_BACK, _5POINT1}), _5POINT1_BACK);
    EXPECT_EQ(FindBestChannelLayout(_5POINT1, {STEREO, HEXAGONAL, _5POINT1, _6POINT0}), HEXAGONAL);
    EXPECT_EQ(FindBestChannelLayout(STEREO, {STEREO_DOWNMIX, STEREO}), STEREO_DOWNMIX);
    EXPECT_EQ(FindBestChannelLayout(STEREO, {STEREO, STEREO}), STEREO);
}

TEST(ChannelLayoutsDescriptionTest, FindBestChannelLayout_ReturnsASingleCandidateUnseen) {
    EXPECT_EQ(FindBestChannelLayout(ChannelLayout::STEREO, {ChannelLayout::MONO}), ChannelLayout::MONO);
    EXPECT_EQ(FindBestChannelLayout(ChannelLayout::STEREO, {ChannelLayout{29}}), ChannelLayout{29});
    EXPECT_EQ(FindBestChannelLayout(ChannelLayout::STEREO, {ChannelLayout{-7}}), ChannelLayout{-7});
    EXPECT_EQ(FindBestChannelLayout(ChannelLayout{99}, {ChannelLayout::MONO}), ChannelLayout::MONO);
}

TEST(ChannelLayoutsDescriptionTest, FindBestChannelLayout_OfAValueOutsideTheEnumerationThrows) {
    using enum ChannelLayout;
    const auto expectThrow = [](ChannelLayout from, const std::vector<ChannelLayout>& candidates) {
        ExpectFormatFailure([&] { FindBestChannelLayout(from, candidates); }, kNoSuchLayout);
    };
    expectThrow(STEREO, {STEREO, ChannelLayout{29}});
    expectThrow(STEREO, {ChannelLayout{29}, STEREO});
    expectThrow(STEREO, {STEREO, MONO, ChannelLayout{-1}});
    expectThrow(STEREO, {STEREO, STEREO, ChannelLayout{kLargest}, STEREO});
    expectThrow(ChannelLayout{29}, {STEREO, MONO});
}

RC_GTEST_PROP(ChannelLayoutsDescriptionTest, FindBestChannelLayout_IsTheFirstMinimumOfTheLosses, ()) {
    const auto value = rc::gen::inRange<std::size_t>(0, 29);
    const auto from = *value;
    const auto candidates = *rc::gen::nonEmpty(rc::gen::container<std::vector<std::size_t>>(value));
    std::vector<ChannelLayout> layouts;
    std::vector<std::uint32_t> losses;
    for (const std::size_t candidate : candidates) {
        layouts.push_back(LayoutAt(candidate));
        losses.push_back(ExpectedLoss(from, candidate));
    }
    const auto first = std::min_element(losses.begin(), losses.end()) - losses.begin();
    RC_ASSERT(FindBestChannelLayout(LayoutAt(from), layouts) == layouts[static_cast<std::size_t>(first)]);
}

TEST(ChannelLayoutsDescriptionTest, Find_FromManyThreadsGivesTheSameRows) {
    const auto count = [] {
        return std::count_if(expectedRows.begin(), expectedRows.end(), [](const Row& row) {
            return &LayoutRecord::Find(std::string(row.textId)) == &LayoutRecord::Find(row.layout);
        });
    };
    EXPECT_EQ(OnFourThreads(count), (std::array<std::size_t, 4>{29, 29, 29, 29}));
}

}  // namespace
}  // namespace Quenzo::Conf
