// Covers Conf/Interfaces/BitrateCalculator by sweeps over codecs, sizes, frame rates and qualities against a model in
// long double, and by the laws that hold between the proposals.

#include <Conf/Interfaces/BitrateCalculator.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <ostream>
#include <string>
#include <vector>

namespace Quenzo::Conf {
namespace {

constexpr std::int64_t kLargest = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kLowest = std::numeric_limits<std::int64_t>::min();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();

struct Codec {
    const char* id;
    long double exponent;
    long double multiplier;
    double share;
};

constexpr auto kCodecs = std::to_array<Codec>({
    {"CODEC_ID_H264", 1.77159772378506L, 0.02258715704279473L, 1},
    {"CODEC_ID_THEORA", 1.77159772378506L, 0.02258715704279473L, 1},
    {"CODEC_ID_VP8", 1.77159772378506L, 0.02258715704279473L, 1},
    {"CODEC_ID_MPEG4", 1.68161903598991L, 0.039488084819935404L, 1},
    {"CODEC_ID_MPEG1VIDEO", 1.1524191046175L, 4.788692545981473L, 1},
    {"CODEC_ID_MPEG2VIDEO", 1.1524191046175L, 4.788692545981473L, 1},
    {"CODEC_ID_MJPEG", 1.50756587151362L, 0.2715574111367215L, 1},
    {"CODEC_ID_WMV2", 1.3067181463997L, 0.9020295949258734L, 1},
    {"CODEC_ID_H263", 1.13639167694174L, 2.0705909478945586L, 1},
    {"CODEC_ID_GIF", 1.7147259693685L, 0.4569878257741088L, 1},
    {"CODEC_ID_H265", 1.77159772378506L, 0.02258715704279473L, 0.7},
    {"CODEC_ID_VP9", 1.77159772378506L, 0.02258715704279473L, 0.7},
    {"CODEC_ID_AV1", 1.77159772378506L, 0.02258715704279473L, 0.55},
    {"CODEC_ID_PRORES", 1.77159772378506L, 0.02258715704279473L, 1},
    {"codec_id_gif", 1.77159772378506L, 0.02258715704279473L, 1},
    {"", 1.77159772378506L, 0.02258715704279473L, 1},
});

struct Size {
    long long width;
    long long height;
};

constexpr auto kSizes = std::to_array<Size>({
    {0, 0},
    {0, 1080},
    {1, 1},
    {1, 2},
    {16, 16},
    {176, 144},
    {352, 288},
    {640, 480},
    {720, 576},
    {1280, 720},
    {1920, 1080},
    {1080, 1920},
    {3840, 2160},
    {7680, 4320},
    {2147483647, 1},
    {2147483647, 2147483647},
    {4294967295, 4294967295},
    {-1, 1},
    {1920, -1080},
    {-1920, -1080},
    {kLargest, kLargest},
    {kLowest, kLowest},
});

constexpr auto kRates =
    std::to_array<double>({0,    12.5, 24.999, 25,  29.97, 30,        30.001,    50,         60,    120,   240,
                           -0.0, -1,   -5,     -50, -1000, kInfinity, kNoNumber, -kInfinity, 1e300, -1e300});

// The integers that a result may be.
struct Interval {
    std::int64_t lowest;
    std::int64_t highest;

    bool Holds(std::int64_t bitrate) const { return lowest <= bitrate && bitrate <= highest; }
    bool IsExact() const { return lowest == highest; }

    friend std::ostream& operator<<(std::ostream& os, const Interval& interval) {
        return os << '[' << interval.lowest << ", " << interval.highest << ']';
    }
};

std::int64_t Truncated(long double value) {
    if (std::isnan(value)) {
        return 0;
    }
    if (value >= 9223372036854775808.0L) {
        return kLargest;
    }
    return value <= -9223372036854775808.0L ? kLowest : static_cast<std::int64_t>(value);
}

long double FactorFor(double fps) {
    const long double rate = fps;
    if (rate > 30) {
        return (rate - 30) / 200 + 1;
    }
    if (rate < 25) {
        return rate * 7 / 250 + 0.3L;
    }
    return 1;  // a rate that is no number is neither above nor below
}

// The power law is computed with a square root, a power and a few products, each rounded: the result in double is off
// by some units in its last place, and by less than one part in 10^14. Where both ends of that range drop to the same
// integer, only this integer is right. What happens to the integer after that is plain arithmetic with one rounding a
// step, which has one right result.
Interval LawOf(const Codec& codec, const Size& size, double fps) {
    const long double pixels = static_cast<long double>(size.width) * static_cast<long double>(size.height);
    const long double bits = codec.multiplier * std::pow(std::sqrt(pixels), codec.exponent) * FactorFor(fps) * 1024.0L;
    const long double error = std::fabs(bits) < 1e300L ? std::fabs(bits) * 1e-14L : 0;
    return {Truncated(bits - error), Truncated(bits + error)};
}

template <typename Step>
Interval Apply(const Interval& interval, const Step& step) {
    return {step(interval.lowest), step(interval.highest)};
}

Interval UsualFor(const Codec& codec, const Size& size, double fps) {
    const Interval law = LawOf(codec, size, fps);
    return codec.share == 1 ? law : Apply(law, [&codec](std::int64_t bitrate) {
        return Truncated(static_cast<double>(bitrate) * codec.share);
    });
}

std::int64_t Scaled(std::int64_t bitrate, int quality) {
    if (quality < 1 || quality > 32) {
        return bitrate;
    }
    const double factor = 1.0 + (quality - 1) * -0.6666666666666666 / 31;
    return Truncated(factor * static_cast<double>(bitrate));
}

std::int64_t Half(std::int64_t bitrate) { return bitrate / 2; }

std::int64_t Same(std::int64_t bitrate) { return bitrate; }

std::int64_t Twice(std::int64_t bitrate) {
    if (bitrate > kLargest / 2) {
        return kLargest;
    }
    return bitrate < kLowest / 2 ? kLowest : bitrate * 2;
}

using ByCodec = std::int64_t (*)(const std::string&, long long, long long, double, int);

struct Proposal {
    const char* name;
    ByCodec propose;
    std::int64_t (*change)(std::int64_t);
};

constexpr auto kProposals = std::to_array<Proposal>({
    {"lowest", GetMinVideoBitrate, Half},
    {"usual", GetDefaultVideoBitrate, Same},
    {"highest", GetMaxVideoBitrate, Twice},
});

struct Tally {
    std::size_t all = 0;
    std::size_t exact = 0;

    void Count(const Interval& interval) {
        ++all;
        exact += interval.IsExact() ? 1 : 0;
    }
};

void ExpectEveryQuality(const Codec& codec, const Size& size, double fps, const Interval& usual) {
    for (const Proposal& proposal : kProposals) {
        for (int quality = -1; quality <= 34; ++quality) {
            const Interval expected =
                Apply(usual, [&](std::int64_t bitrate) { return Scaled(proposal.change(bitrate), quality); });
            const std::int64_t bitrate = proposal.propose(codec.id, size.width, size.height, fps, quality);
            EXPECT_TRUE(expected.Holds(bitrate))
                << proposal.name << ' ' << codec.id << ' ' << size.width << 'x' << size.height << ' ' << fps << ' '
                << quality << ": " << bitrate << ' ' << expected;
        }
    }
}

TEST(BitrateSweepTest, Proposals_FollowTheModelEverywhere) {
    Tally tally;
    for (const Codec& codec : kCodecs) {
        for (const Size& size : kSizes) {
            for (const double fps : kRates) {
                const Interval usual = UsualFor(codec, size, fps);
                const std::int64_t bitrate = GetDefVideoBitrate(codec.id, size.width, size.height, fps);
                EXPECT_TRUE(usual.Holds(bitrate)) << codec.id << ' ' << size.width << 'x' << size.height << ' ' << fps
                                                  << ": " << bitrate << ' ' << usual;
                ExpectEveryQuality(codec, size, fps, usual);
                tally.Count(usual);
            }
        }
    }
    EXPECT_EQ(tally.all, kCodecs.size() * kSizes.size() * kRates.size());
    // Few sizes are so large that the model leaves a choice.
    EXPECT_GT(tally.exact * 10, tally.all * 9);
}

void ExpectOneRightAnswer(const Codec& codec, const Size& size) {
    for (const double fps : {12.5, 24.999, 25.0, 29.97, 30.0, 30.001, 50.0, 60.0, 120.0}) {
        const Interval usual = UsualFor(codec, size, fps);
        EXPECT_TRUE(usual.IsExact()) << codec.id << ' ' << size.width << ' ' << fps;
        EXPECT_EQ(GetDefVideoBitrate(codec.id, size.width, size.height, fps), usual.lowest);
    }
}

TEST(BitrateSweepTest, UsualSizes_LeaveTheModelNoChoice) {
    for (const Codec& codec : kCodecs) {
        for (const Size& size : {Size{176, 144}, Size{640, 480}, Size{1280, 720}, Size{1920, 1080}, Size{7680, 4320}}) {
            ExpectOneRightAnswer(codec, size);
        }
    }
}

TEST(BitrateSweepTest, EveryWidth_FollowsTheModel) {
    Tally tally;
    for (long long width = 1; width <= 8192; ++width) {
        const Codec& codec = kCodecs.at(static_cast<std::size_t>(width) % kCodecs.size());
        const Interval usual = UsualFor(codec, {width, 1080}, 23.976);
        const std::int64_t bitrate = GetDefVideoBitrate(codec.id, width, 1080, 23.976);
        EXPECT_TRUE(usual.Holds(bitrate)) << codec.id << ' ' << width << ": " << bitrate << ' ' << usual;
        tally.Count(usual);
    }
    EXPECT_GT(tally.exact, tally.all - 10);
}

// The quality is scaled by (46.5 - (quality - 1)) / 46.5, or nearly: -2/3 is kept with sixteen digits.
TEST(BitrateSweepTest, NormBitrate_FollowsTheModelForEveryQuality) {
    constexpr auto qualities = std::to_array<int>({std::numeric_limits<int>::min(),
                                                   std::numeric_limits<int>::min() + 1,
                                                   -1000000,
                                                   -2,
                                                   -1,
                                                   0,
                                                   1,
                                                   2,
                                                   16,
                                                   31,
                                                   32,
                                                   33,
                                                   34,
                                                   46,
                                                   47,
                                                   48,
                                                   49,
                                                   1000000,
                                                   std::numeric_limits<int>::max() - 1,
                                                   std::numeric_limits<int>::max()});
    constexpr auto bitrates = std::to_array<long long>(
        {kLowest, kLowest + 1, -9109810, -1, 0, 1, 2, 3, 1000, 9109810, 500000000, kLargest - 1, kLargest});
    for (const int quality : qualities) {
        for (const long long bitrate : bitrates) {
            const long double steps = static_cast<long double>(quality) - 1;
            const long double exact = (1 - steps * 0.6666666666666666L / 31) * static_cast<long double>(bitrate);
            const long double error = (1 + std::fabs(steps)) * std::fabs(static_cast<long double>(bitrate)) * 1e-15L;
            const Interval expected = {Truncated(exact - error), Truncated(exact + error)};
            EXPECT_TRUE(expected.Holds(NormBitrate(bitrate, quality)))
                << bitrate << ' ' << quality << ": " << NormBitrate(bitrate, quality) << ' ' << expected;
        }
    }
}

struct Query {
    std::string codecId;
    long long width;
    long long height;
    double fps;
};

// A codec, a size up to 16384 x 16384 and a frame rate from 0 to 240.
Query AnyQuery() {
    const long long side = 16385;
    return {kCodecs.at(*rc::gen::inRange<std::size_t>(0, kCodecs.size())).id, *rc::gen::inRange<long long>(0, side),
            *rc::gen::inRange<long long>(0, side), *rc::gen::inRange(0, 240001) / 1000.0};
}

std::int64_t Ask(ByCodec propose, const Query& query, int quality) {
    return propose(query.codecId, query.width, query.height, query.fps, quality);
}

RC_GTEST_PROP(BitrateSweepTest, ABetterQuality_NeverGivesLess, ()) {
    const Query query = AnyQuery();
    const int better = *rc::gen::inRange(1, 33);
    const int worse = *rc::gen::inRange(better, 33);
    for (const Proposal& proposal : kProposals) {
        RC_ASSERT(Ask(proposal.propose, query, better) >= Ask(proposal.propose, query, worse));
    }
}

RC_GTEST_PROP(BitrateSweepTest, TheBestQuality_KeepsTheBitrate, ()) {
    const Query query = AnyQuery();
    for (const Proposal& proposal : kProposals) {
        RC_ASSERT(Ask(proposal.propose, query, 1) == Ask(proposal.propose, query, 0));
    }
}

RC_GTEST_PROP(BitrateSweepTest, MorePixels_NeverGiveLess, ()) {
    const Query query = AnyQuery();
    Query larger = query;
    larger.width += *rc::gen::inRange<long long>(0, 1000);
    larger.height += *rc::gen::inRange<long long>(0, 1000);
    const int quality = *rc::gen::inRange(-1, 35);
    for (const Proposal& proposal : kProposals) {
        RC_ASSERT(Ask(proposal.propose, larger, quality) >= Ask(proposal.propose, query, quality));
    }
}

RC_GTEST_PROP(BitrateSweepTest, MoreFrames_NeverGiveLess, ()) {
    const Query query = AnyQuery();
    Query faster = query;
    faster.fps += *rc::gen::inRange(0, 100000) / 1000.0;
    const int quality = *rc::gen::inRange(-1, 35);
    RC_ASSERT(Ask(GetDefaultVideoBitrate, faster, quality) >= Ask(GetDefaultVideoBitrate, query, quality));
}

RC_GTEST_PROP(BitrateSweepTest, WidthAndHeight_MayChangePlaces, ()) {
    const Query query = AnyQuery();
    Query turned = query;
    std::swap(turned.width, turned.height);
    RC_ASSERT(Ask(GetDefaultVideoBitrate, turned, 0) == Ask(GetDefaultVideoBitrate, query, 0));
}

RC_GTEST_PROP(BitrateSweepTest, Proposals_StandInOrder, ()) {
    const Query query = AnyQuery();
    const int quality = *rc::gen::inRange(-1, 35);
    const std::int64_t lowest = Ask(GetMinVideoBitrate, query, quality);
    const std::int64_t usual = Ask(GetDefaultVideoBitrate, query, quality);
    RC_ASSERT(0 <= lowest);
    RC_ASSERT(lowest <= usual);
    RC_ASSERT(usual <= Ask(GetMaxVideoBitrate, query, quality));
}

RC_GTEST_PROP(BitrateSweepTest, AnyInput_HasAnAnswer, (long long width, long long height, double fps, int quality)) {
    const std::int64_t usual = GetDefVideoBitrate("CODEC_ID_H265", width, height, fps);
    RC_ASSERT(GetMaxVideoBitrate("CODEC_ID_H265", width, height, fps, 0) == Twice(usual));
    RC_ASSERT(GetMinVideoBitrate("CODEC_ID_H265", width, height, fps, 0) == usual / 2);
    RC_ASSERT(GetDefaultVideoBitrate("CODEC_ID_H265", width, height, fps, quality) == Scaled(usual, quality));
}

}  // namespace
}  // namespace Quenzo::Conf
