// Covers Conf/Interfaces/SampleInfo: setting the three values, and merging under both strategies, for all pairs of
// formats and all pairs of layouts.

#include <Conf/Interfaces/SampleInfo.h>
#include <tests/Conf/TableSupport.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

namespace Quenzo::Conf {
namespace {

using Testing::ExpectFormatFailure;

using Strategy = SampleInfo::MergeStrategy;

static_assert(static_cast<int>(Strategy::Maximum) == 0);
static_assert(static_cast<int>(Strategy::FillUnset) == 1);
static_assert(std::is_trivially_copyable_v<SampleInfo>);

constexpr std::int32_t kLargest = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();

constexpr auto kRates = std::to_array<std::int32_t>({kLowest, -2, -1, 0, 1, 8000, 44100, 48000, 192000, kLargest});

// Bits of the sample formats from SAMPLE_FMT_NONE on, and channels of the layouts from UNKNOWN on.
constexpr std::array<int, 11> kBits = {0, 8, 16, 32, 32, 64, 8, 16, 32, 32, 64};
constexpr std::array<int, 29> kChannels = {0, 1, 2, 3, 3, 3, 4, 4, 5, 4, 4, 5, 6,  5, 6,
                                           6, 6, 6, 7, 7, 7, 7, 7, 8, 8, 8, 8, 16, 2};

SampleInfo Made(SampleFormats format, std::int32_t rate, ChannelLayout layout) {
    SampleInfo info;
    info.Init(format, rate, layout);
    return info;
}

// The format of a place in kBits, at no rate and without a layout.
SampleInfo WithFormat(std::size_t place) {
    return Made(SampleFormats{static_cast<std::int32_t>(place) - 1}, -1, ChannelLayout::UNKNOWN);
}

SampleInfo WithLayout(std::size_t place) {
    return Made(SampleFormats::SAMPLE_FMT_NONE, -1, ChannelLayout{static_cast<std::int32_t>(place)});
}

SampleInfo WithRate(std::int32_t rate) { return Made(SampleFormats::SAMPLE_FMT_NONE, rate, ChannelLayout::UNKNOWN); }

SampleInfo Merged(SampleInfo info, const SampleInfo& other, Strategy strategy) {
    return info.MergeWith(other, strategy);
}

void Expect(const SampleInfo& info, std::int32_t rate, const std::string& format, const std::string& layout) {
    EXPECT_EQ(info.sampleRate, rate);
    EXPECT_EQ(info.format, &SampleFmtRecord::Find(format)) << format;
    EXPECT_EQ(info.layout, &LayoutRecord::Find(layout)) << layout;
}

// That it is made at load is the point.
const SampleInfo infoAtLoad;  // NOLINT(cert-err58-cpp)

TEST(SampleInfoTest, Default_IsUnset) {
    Expect(SampleInfo(), -1, "SAMPLE_FMT_NONE", "UNKNOWN");
    Expect(infoAtLoad, -1, "SAMPLE_FMT_NONE", "UNKNOWN");
}

TEST(SampleInfoTest, Fields_StandInTheirOrder) {
    const auto& [rate, format, layout] = infoAtLoad;
    EXPECT_EQ(&rate, &infoAtLoad.sampleRate);
    EXPECT_EQ(&format, &infoAtLoad.format);
    EXPECT_EQ(&layout, &infoAtLoad.layout);
}

void ExpectInitStores(const SampleFmtRecord& format, std::int32_t rate, const LayoutRecord& layout) {
    const SampleInfo info = Made(format.format, rate, layout.layout);
    EXPECT_EQ(info.sampleRate, rate);
    EXPECT_EQ(info.format, &format);
    EXPECT_EQ(info.layout, &layout);
}

TEST(SampleInfoTest, Init_StoresRateAndRowsOfTheTables) {
    for (const SampleFmtRecord& format : SampleFmtRecord::Enumerate()) {
        for (const LayoutRecord& layout : LayoutRecord::Enumerate()) {
            ExpectInitStores(format, 48000, layout);
        }
    }
    for (const std::int32_t rate : kRates) {
        ExpectInitStores(SampleFmtRecord::Find(16), rate, LayoutRecord::Find(2));
    }
}

TEST(SampleInfoTest, Init_WithAnUnknownValueThrowsAndChangesNothing) {
    SampleInfo info = Made(SampleFormats::SAMPLE_FMT_FLT, 44100, ChannelLayout::STEREO);
    const auto expectThrow = [&info](std::int32_t format, std::int32_t layout, const std::string& message) {
        ExpectFormatFailure([&] { info.Init(SampleFormats{format}, 48000, ChannelLayout{layout}); }, message);
        Expect(info, 44100, "SAMPLE_FMT_FLT", "STEREO");
    };
    expectThrow(10, 1, "Provided sample format is not found in list");
    expectThrow(-2, 1, "Provided sample format is not found in list");
    expectThrow(1, 29, "Provided ChannelLayout is not found in list");
    expectThrow(1, -1, "Provided ChannelLayout is not found in list");
    expectThrow(kLargest, kLargest, "Provided sample format is not found in list");
}

TEST(SampleInfoTest, MaximumOfFormats_TakesTheMoreBitsAndKeepsItsOwnAmongEquals) {
    for (std::size_t own = 0; own < kBits.size(); ++own) {
        for (std::size_t other = 0; other < kBits.size(); ++other) {
            const std::size_t expected = kBits.at(own) >= kBits.at(other) ? own : other;
            EXPECT_EQ(Merged(WithFormat(own), WithFormat(other), Strategy::Maximum), WithFormat(expected))
                << own << ' ' << other;
        }
    }
}

TEST(SampleInfoTest, FillUnsetFormats_KeepsItsOwnUnlessItHasNone) {
    for (std::size_t own = 0; own < kBits.size(); ++own) {
        for (std::size_t other = 0; other < kBits.size(); ++other) {
            EXPECT_EQ(Merged(WithFormat(own), WithFormat(other), Strategy::FillUnset),
                      WithFormat(own != 0 ? own : other))
                << own << ' ' << other;
        }
    }
}

TEST(SampleInfoTest, MaximumOfLayouts_TakesTheMoreChannelsAndKeepsItsOwnAmongEquals) {
    for (std::size_t own = 0; own < kChannels.size(); ++own) {
        for (std::size_t other = 0; other < kChannels.size(); ++other) {
            const std::size_t expected = kChannels.at(own) >= kChannels.at(other) ? own : other;
            EXPECT_EQ(Merged(WithLayout(own), WithLayout(other), Strategy::Maximum), WithLayout(expected))
                << own << ' ' << other;
        }
    }
}

TEST(SampleInfoTest, FillUnsetLayouts_KeepsItsOwnUnlessItHasNone) {
    for (std::size_t own = 0; own < kChannels.size(); ++own) {
        for (std::size_t other = 0; other < kChannels.size(); ++other) {
            EXPECT_EQ(Merged(WithLayout(own), WithLayout(other), Strategy::FillUnset),
                      WithLayout(own != 0 ? own : other))
                << own << ' ' << other;
        }
    }
}

TEST(SampleInfoTest, MergedRates_AreTheLargerOrFillTheUnsetOne) {
    for (const std::int32_t own : kRates) {
        for (const std::int32_t other : kRates) {
            EXPECT_EQ(Merged(WithRate(own), WithRate(other), Strategy::Maximum), WithRate(own > other ? own : other));
            EXPECT_EQ(Merged(WithRate(own), WithRate(other), Strategy::FillUnset), WithRate(own == -1 ? other : own));
        }
    }
}

TEST(SampleInfoTest, MergeWith_MaximumLooksAtEachFieldAlone) {
    using enum SampleFormats;
    using enum ChannelLayout;
    Expect(Merged(Made(SAMPLE_FMT_S32, 44100, MONO), Made(SAMPLE_FMT_FLT, 48000, STEREO), Strategy::Maximum), 48000,
           "SAMPLE_FMT_S32", "STEREO");
    Expect(Merged(Made(SAMPLE_FMT_FLT, 48000, _5POINT1), Made(SAMPLE_FMT_S32, 44100, _5POINT1_BACK), Strategy::Maximum),
           48000, "SAMPLE_FMT_FLT", "5POINT1");
    Expect(Merged(Made(SAMPLE_FMT_S16P, -1, UNKNOWN), Made(SAMPLE_FMT_S32, 0, MONO), Strategy::Maximum), 0,
           "SAMPLE_FMT_S32", "MONO");
    Expect(Merged(Made(SAMPLE_FMT_S16, 8000, STEREO), SampleInfo(), Strategy::Maximum), 8000, "SAMPLE_FMT_S16",
           "STEREO");
}

TEST(SampleInfoTest, MergeWith_FillUnsetLooksAtEachFieldAlone) {
    using enum SampleFormats;
    using enum ChannelLayout;
    const SampleInfo other = Made(SAMPLE_FMT_DBL, 192000, HEXADECAGONAL);
    Expect(Merged(SampleInfo(), other, Strategy::FillUnset), 192000, "SAMPLE_FMT_DBL", "HEXADECAGONAL");
    Expect(Merged(Made(SAMPLE_FMT_U8, -1, UNKNOWN), other, Strategy::FillUnset), 192000, "SAMPLE_FMT_U8",
           "HEXADECAGONAL");
    Expect(Merged(Made(SAMPLE_FMT_NONE, -1, MONO), other, Strategy::FillUnset), 192000, "SAMPLE_FMT_DBL", "MONO");
    Expect(Merged(Made(SAMPLE_FMT_NONE, 0, UNKNOWN), other, Strategy::FillUnset), 0, "SAMPLE_FMT_DBL", "HEXADECAGONAL");
    Expect(Merged(Made(SAMPLE_FMT_U8, 8000, MONO), other, Strategy::FillUnset), 8000, "SAMPLE_FMT_U8", "MONO");
}

TEST(SampleInfoTest, MergeWith_AnotherStrategyChangesNothing) {
    const SampleInfo other = Made(SampleFormats::SAMPLE_FMT_DBL, 192000, ChannelLayout::HEXADECAGONAL);
    for (const std::int32_t strategy : {2, -1, 256, kLargest, kLowest}) {
        Expect(Merged(SampleInfo(), other, Strategy{strategy}), -1, "SAMPLE_FMT_NONE", "UNKNOWN");
    }
}

TEST(SampleInfoTest, MergeWith_ReturnsTheObjectItself) {
    SampleInfo info;
    EXPECT_EQ(&info.MergeWith(SampleInfo(), Strategy::Maximum), &info);
    EXPECT_EQ(&info.MergeWith(SampleInfo(), Strategy::FillUnset), &info);
    EXPECT_EQ(&info.MergeWith(SampleInfo(), Strategy{2}), &info);
}

TEST(SampleInfoTest, MergeWith_LeavesTheOtherAlone) {
    const SampleInfo other = Made(SampleFormats::SAMPLE_FMT_U8, 8000, ChannelLayout::MONO);
    Merged(Made(SampleFormats::SAMPLE_FMT_DBL, 192000, ChannelLayout::QUAD), other, Strategy::Maximum);
    Expect(other, 8000, "SAMPLE_FMT_U8", "MONO");
}

// A client's own row: the table has the last word on channels.
TEST(SampleInfoTest, MergeWith_MaximumAsksTheTableForTheChannels) {
    const std::string ownText = "OWN";
    const LayoutRecord tooMany = {ChannelLayout::STEREO, 99, ownText};
    SampleInfo other;
    other.layout = &tooMany;
    Expect(Merged(Made(SampleFormats::SAMPLE_FMT_NONE, -1, ChannelLayout::QUAD), other, Strategy::Maximum), -1,
           "SAMPLE_FMT_NONE", "QUAD");
}

TEST(SampleInfoTest, MergeWith_MaximumOfARowWithoutALayoutThrowsAndChangesNothing) {
    const std::string ownText = "OWN";
    const LayoutRecord unknownRow = {ChannelLayout{29}, 99, ownText};
    SampleInfo other = Made(SampleFormats::SAMPLE_FMT_DBL, 192000, ChannelLayout::STEREO);
    other.layout = &unknownRow;
    const SampleInfo before = Made(SampleFormats::SAMPLE_FMT_S16, 8000, ChannelLayout::MONO);
    SampleInfo info = before;
    ExpectFormatFailure([&] { info.MergeWith(other, Strategy::Maximum); },
                        "Provided ChannelLayout is not found in list");
    EXPECT_EQ(info, before);
}

TEST(SampleInfoTest, Equality_ComparesAllThree) {
    using enum SampleFormats;
    using enum ChannelLayout;
    const SampleInfo info = Made(SAMPLE_FMT_S16, 44100, STEREO);
    EXPECT_EQ(info, Made(SAMPLE_FMT_S16, 44100, STEREO));
    EXPECT_NE(info, Made(SAMPLE_FMT_S16P, 44100, STEREO));
    EXPECT_NE(info, Made(SAMPLE_FMT_S16, 48000, STEREO));
    EXPECT_NE(info, Made(SAMPLE_FMT_S16, 44100, STEREO_DOWNMIX));
}

SampleInfo AnyInfo() {
    return Made(SampleFormats{*rc::gen::inRange<std::int32_t>(-1, 10)}, *rc::gen::arbitrary<std::int32_t>(),
                ChannelLayout{*rc::gen::inRange<std::int32_t>(0, 29)});
}

RC_GTEST_PROP(SampleInfoTest, MergeWith_ItselfOrAgainChangesNothing, ()) {
    const SampleInfo first = AnyInfo();
    const SampleInfo second = AnyInfo();
    for (const Strategy strategy : {Strategy::Maximum, Strategy::FillUnset}) {
        SampleInfo same = first;
        RC_ASSERT(same.MergeWith(same, strategy) == first);
        const SampleInfo once = Merged(first, second, strategy);
        RC_ASSERT(Merged(once, second, strategy) == once);
        RC_ASSERT(Merged(once, first, strategy) == once);
    }
}

RC_GTEST_PROP(SampleInfoTest, MergeWith_MaximumIsAsLargeWhicheverSideHoldsIt, ()) {
    const SampleInfo first = AnyInfo();
    const SampleInfo second = AnyInfo();
    const SampleInfo left = Merged(first, second, Strategy::Maximum);
    const SampleInfo right = Merged(second, first, Strategy::Maximum);
    RC_ASSERT(left.sampleRate == right.sampleRate);
    RC_ASSERT(left.layout->channels == right.layout->channels);
    RC_ASSERT(left.format->bits == right.format->bits);
}

}  // namespace
}  // namespace Quenzo::Conf
