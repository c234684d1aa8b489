// Covers Conf/Interfaces/BitrateCalculator by figures: the power law, the frame rates, the quality, the proposals by
// codec and by description, and the bounds of a described stream, with all their failures.

#include <Conf/Interfaces/BitrateCalculator.h>
#include <Conf/Interfaces/Exceptions.h>
#include <Conf/Interfaces/IFormatCodecAudio.h>
#include <Conf/Interfaces/IFormatCodecSubtitle.h>
#include <Conf/Interfaces/IFormatCodecVideo.h>
#include <tests/Conf/CatalogueSupport.h>
#include <tests/Conf/DescriptionSupport.h>

#include <gtest/gtest.h>
#include <boost/rational.hpp>

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace Quenzo::Conf {
namespace {

using Core::Property;
using Testing::ExpectMissing;
using Testing::ExpectRaised;
using Testing::ExpectWrongType;
using Testing::Tree;
using Testing::VideoWith;
using Ratio = boost::rational<long long>;

constexpr std::int64_t kLargest = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kLowest = std::numeric_limits<std::int64_t>::min();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();

static_assert(std::is_same_v<std::underlying_type_t<Boundary>, int>);
static_assert(static_cast<int>(Boundary::Min) == 0 && static_cast<int>(Boundary::Max) == 1);

struct Model {
    std::string_view codecId;
    double exponent;
    double multiplier;
    double share;
};

constexpr auto kModels = std::to_array<Model>({
    {"CODEC_ID_H264", 1.77159772378506, 0.02258715704279473, 1},
    {"CODEC_ID_THEORA", 1.77159772378506, 0.02258715704279473, 1},
    {"CODEC_ID_VP8", 1.77159772378506, 0.02258715704279473, 1},
    {"CODEC_ID_MPEG4", 1.68161903598991, 0.039488084819935404, 1},
    {"CODEC_ID_MPEG1VIDEO", 1.1524191046175, 4.788692545981473, 1},
    {"CODEC_ID_MPEG2VIDEO", 1.1524191046175, 4.788692545981473, 1},
    {"CODEC_ID_MJPEG", 1.50756587151362, 0.2715574111367215, 1},
    {"CODEC_ID_WMV2", 1.3067181463997, 0.9020295949258734, 1},
    {"CODEC_ID_H263", 1.13639167694174, 2.0705909478945586, 1},
    {"CODEC_ID_GIF", 1.7147259693685, 0.4569878257741088, 1},
    {"CODEC_ID_H265", 1.77159772378506, 0.02258715704279473, 0.7},
    {"CODEC_ID_VP9", 1.77159772378506, 0.02258715704279473, 0.7},
    {"CODEC_ID_AV1", 1.77159772378506, 0.02258715704279473, 0.55},
});

TEST(BitrateCalculatorTest, GetVideoBitrateModel_HasTheNumbersOfEachFamily) {
    for (const Model& expected : kModels) {
        SCOPED_TRACE(expected.codecId);
        const auto& [codecId, exponent, multiplier, share] = GetVideoBitrateModel(expected.codecId);
        EXPECT_EQ(codecId, expected.codecId);
        EXPECT_EQ(exponent, expected.exponent);
        EXPECT_EQ(multiplier, expected.multiplier);
        EXPECT_EQ(share, expected.share);
    }
}

TEST(BitrateCalculatorTest, EveryOtherText_CountsAsH264) {
    std::set<std::string_view> modelled;
    for (const Model& model : kModels) {
        modelled.insert(model.codecId);
    }
    std::size_t others = 0;
    for (const std::string& text : Testing::Probes()) {
        if (!modelled.contains(text)) {
            EXPECT_EQ(&GetVideoBitrateModel(text), &GetVideoBitrateModel("CODEC_ID_H264")) << text.substr(0, 100);
            EXPECT_EQ(GetDefVideoBitrate(text, 1920, 1080, 30), 9109810) << text.substr(0, 100);
            ++others;
        }
    }
    EXPECT_EQ(others, Testing::Probes().size() - kModels.size());
}

TEST(BitrateCalculatorTest, GetFrameRateFactor_IsOneFromTwentyFiveToThirty) {
    EXPECT_EQ(GetFrameRateFactor(25), 1.0);
    EXPECT_EQ(GetFrameRateFactor(29.97), 1.0);
    EXPECT_EQ(GetFrameRateFactor(30), 1.0);
    EXPECT_DOUBLE_EQ(GetFrameRateFactor(50), 1.1);
    EXPECT_DOUBLE_EQ(GetFrameRateFactor(60), 1.15);
    EXPECT_DOUBLE_EQ(GetFrameRateFactor(120), 1.45);
    EXPECT_DOUBLE_EQ(GetFrameRateFactor(12.5), 0.65);
    EXPECT_DOUBLE_EQ(GetFrameRateFactor(0), 0.3);
    EXPECT_DOUBLE_EQ(GetFrameRateFactor(-50), -1.1);
    EXPECT_LT(GetFrameRateFactor(24.999), 1.0);
    EXPECT_GT(GetFrameRateFactor(24.999), 0.9999);
    EXPECT_GT(GetFrameRateFactor(30.001), 1.0);
    EXPECT_LT(GetFrameRateFactor(30.001), 1.0001);
    EXPECT_EQ(GetFrameRateFactor(kInfinity), kInfinity);
    EXPECT_EQ(GetFrameRateFactor(-kInfinity), -kInfinity);
}

TEST(BitrateCalculatorTest, CorrectBitrateByFPS_GivesBitsPerSecond) {
    EXPECT_EQ(CorrectBitrateByFPS(1000, 25), 1024000);
    EXPECT_EQ(CorrectBitrateByFPS(1000, 30), 1024000);
    EXPECT_EQ(CorrectBitrateByFPS(1000, 50), 1126400);
    EXPECT_EQ(CorrectBitrateByFPS(1000, 0), 307200);
    // 0.35 and 0.3 have no exact value in binary: their sum stays just below 0.65.
    EXPECT_EQ(CorrectBitrateByFPS(1000, 12.5), 665599);
    EXPECT_EQ(CorrectBitrateByFPS(0, 60), 0);
    EXPECT_EQ(CorrectBitrateByFPS(1.0 / 2048, 25), 0);
    EXPECT_EQ(CorrectBitrateByFPS(3.0 / 2048, 25), 1);
    EXPECT_EQ(CorrectBitrateByFPS(-3.0 / 2048, 25), -1);
    EXPECT_EQ(CorrectBitrateByFPS(-1000, 25), -1024000);
}

TEST(BitrateCalculatorTest, CorrectBitrateByFPS_StaysInRange) {
    EXPECT_EQ(CorrectBitrateByFPS(1e300, 25), kLargest);
    EXPECT_EQ(CorrectBitrateByFPS(-1e300, 25), kLowest);
    EXPECT_EQ(CorrectBitrateByFPS(1e300, -1000), kLowest);
    EXPECT_EQ(CorrectBitrateByFPS(9007199254740992, 25), kLargest);
    EXPECT_EQ(CorrectBitrateByFPS(9007199254740991, 25), 9223372036854774784);
    EXPECT_EQ(CorrectBitrateByFPS(-9007199254740992, 25), kLowest);
    EXPECT_EQ(CorrectBitrateByFPS(1, kInfinity), kLargest);
    EXPECT_EQ(CorrectBitrateByFPS(1, -kInfinity), kLowest);
    EXPECT_EQ(CorrectBitrateByFPS(0, kInfinity), 0);
    EXPECT_EQ(CorrectBitrateByFPS(kNoNumber, 25), 0);
    EXPECT_EQ(CorrectBitrateByFPS(kInfinity, 25), kLargest);
}

TEST(BitrateCalculatorTest, CalculateBitrate_TakesTheExponentFirst) {
    constexpr std::array<double, 2> h264 = {1.77159772378506, 0.02258715704279473};
    EXPECT_EQ(CalculateBitrate(1920, 1080, 30, h264.data()), 9109810);
    EXPECT_EQ(CalculateBitrate(1080, 1920, 30, h264.data()), 9109810);
    EXPECT_EQ(CalculateBitrate(1440, 1440, 30, h264.data()), 9109810);
    EXPECT_EQ(CalculateBitrate(1920, 1080, 60, h264.data()), 10476281);
    constexpr std::array<double, 2> square = {2, 3};
    EXPECT_EQ(CalculateBitrate(4, 9, 25, square.data()), 110592);
    EXPECT_EQ(CalculateBitrate(0.25, 1, 25, square.data()), 768);
    EXPECT_EQ(CalculateBitrate(4, -9, 25, square.data()), 0);
    EXPECT_EQ(CalculateBitrate(-4, -9, 25, square.data()), 110592);
    EXPECT_EQ(CalculateBitrate(0, 9, 25, square.data()), 0);
    constexpr std::array<double, 2> constant = {0, 1};
    EXPECT_EQ(CalculateBitrate(0, 9, 25, constant.data()), 1024);
}

TEST(BitrateCalculatorTest, GetDefVideoBitrate_OfEachFamily) {
    struct Figures {
        const char* codecId;
        std::int64_t hd;        // 1920 x 1080 at 30
        std::int64_t fast;      // 1280 x 720 at 50
        std::int64_t slow;      // 640 x 480 at 12.5
        std::int64_t smallest;  // 176 x 144 at 25
    };
    constexpr auto figures = std::to_array<Figures>({
        {"CODEC_ID_H264", 9109810, 4885838, 1091004, 184123},
        {"CODEC_ID_THEORA", 9109810, 4885838, 1091004, 184123},
        {"CODEC_ID_VP8", 9109810, 4885838, 1091004, 184123},
        {"CODEC_ID_MPEG4", 8278058, 4604715, 1080327, 203979},
        {"CODEC_ID_MPEG1VIDEO", 21393122, 14748095, 4627375, 1690720},
        {"CODEC_ID_MPEG2VIDEO", 21393122, 14748095, 4627375, 1690720},
        {"CODEC_ID_MJPEG", 16054660, 9583510, 2473998, 580400},
        {"CODEC_ID_WMV2", 12376855, 8014960, 2310417, 696357},
        {"CODEC_ID_H263", 8232488, 5712354, 1808162, 673996},
        {"CODEC_ID_GIF", 121879530, 66892157, 15410962, 2792056},
        {"CODEC_ID_H265", 6376867, 3420086, 763702, 128886},
        {"CODEC_ID_VP9", 6376867, 3420086, 763702, 128886},
        {"CODEC_ID_AV1", 5010395, 2687210, 600052, 101267},
        {"CODEC_ID_PRORES", 9109810, 4885838, 1091004, 184123},
        {"CODEC_ID_AAC", 9109810, 4885838, 1091004, 184123},
        {"", 9109810, 4885838, 1091004, 184123},
    });
    for (const Figures& row : figures) {
        EXPECT_EQ(GetDefVideoBitrate(row.codecId, 1920, 1080, 30), row.hd) << row.codecId;
        EXPECT_EQ(GetDefVideoBitrate(row.codecId, 1280, 720, 50), row.fast) << row.codecId;
        EXPECT_EQ(GetDefVideoBitrate(row.codecId, 640, 480, 12.5), row.slow) << row.codecId;
        EXPECT_EQ(GetDefVideoBitrate(row.codecId, 176, 144, 25), row.smallest) << row.codecId;
    }
}

TEST(BitrateCalculatorTest, GetDefVideoBitrate_OfSomeSizesAndRates) {
    EXPECT_EQ(GetDefVideoBitrate("CODEC_ID_H264", 1920, 1080, 60), 10476281);
    EXPECT_EQ(GetDefVideoBitrate("CODEC_ID_MPEG4", 1280, 720, 25), 4186104);
    EXPECT_EQ(GetDefVideoBitrate("CODEC_ID_H264", 1920, 1080, 25), 9109810);
    EXPECT_EQ(GetDefVideoBitrate("CODEC_ID_H264", 1920, 1080, 24.999), 9109555);
    EXPECT_EQ(GetDefVideoBitrate("CODEC_ID_H264", 1920, 1080, 0), 2732943);
    EXPECT_EQ(GetDefVideoBitrate("CODEC_ID_H264", 1920, 1080, -1), 2477868);
    EXPECT_EQ(GetDefVideoBitrate("CODEC_ID_H264", 1920, 1080, -50), -10020791);
    EXPECT_EQ(GetDefVideoBitrate("CODEC_ID_H264", 7680, 4320, 120), 153987490);
    EXPECT_EQ(GetDefVideoBitrate("CODEC_ID_H264", 1, 1, 25), 23);
    EXPECT_EQ(GetDefVideoBitrate("CODEC_ID_H264", 0, 1080, 25), 0);
    EXPECT_EQ(GetDefVideoBitrate("CODEC_ID_H264", -1920, 1080, 25), 0);
    EXPECT_EQ(GetDefVideoBitrate("CODEC_ID_H264", -1920, -1080, 25), 9109810);
    EXPECT_EQ(GetDefVideoBitrate("CODEC_ID_H264", kLargest, kLargest, 25), kLargest);
    EXPECT_EQ(GetDefVideoBitrate("CODEC_ID_H264", kLowest, kLowest, 25), kLargest);
    EXPECT_EQ(GetDefVideoBitrate("CODEC_ID_H264", kLowest, kLargest, 25), 0);
}

TEST(BitrateCalculatorTest, NormBitrate_GoesFromAllToAThird) {
    EXPECT_EQ(NormBitrate(9109810, 1), 9109810);
    EXPECT_EQ(NormBitrate(9109810, 2), 8913900);
    EXPECT_EQ(NormBitrate(9109810, 16), 6171161);
    EXPECT_EQ(NormBitrate(9109810, 31), 3232513);
    EXPECT_EQ(NormBitrate(9109810, 32), 3036603);
    EXPECT_EQ(NormBitrate(-9109810, 32), -3036603);
    EXPECT_EQ(NormBitrate(0, 17), 0);
    EXPECT_EQ(NormBitrate(kLargest, 1), kLargest);
    EXPECT_EQ(NormBitrate(kLowest, 1), kLowest);
}

TEST(BitrateCalculatorTest, NormBitrate_DoesNotCheckTheQuality) {
    EXPECT_EQ(NormBitrate(9109810, 0), 9305719);
    EXPECT_EQ(NormBitrate(9109810, -1), 9501629);
    EXPECT_EQ(NormBitrate(9109810, 33), 2840693);
    EXPECT_EQ(NormBitrate(9109810, 48), -97954);
    EXPECT_EQ(NormBitrate(9109810, 100), -10285269);
    EXPECT_EQ(NormBitrate(1, std::numeric_limits<int>::max()), -46182443);
    EXPECT_EQ(NormBitrate(1, std::numeric_limits<int>::min()), 46182445);
    EXPECT_EQ(NormBitrate(kLargest, std::numeric_limits<int>::max()), kLowest);
    EXPECT_EQ(NormBitrate(kLargest, std::numeric_limits<int>::min()), kLargest);
    EXPECT_EQ(NormBitrate(kLowest, std::numeric_limits<int>::min()), kLowest);
}

void ExpectProposals(int quality, double fps, std::int64_t lowest, std::int64_t usual, std::int64_t highest) {
    EXPECT_EQ(GetMinVideoBitrate("CODEC_ID_H264", 1920, 1080, fps, quality), lowest) << quality;
    EXPECT_EQ(GetDefaultVideoBitrate("CODEC_ID_H264", 1920, 1080, fps, quality), usual) << quality;
    EXPECT_EQ(GetMaxVideoBitrate("CODEC_ID_H264", 1920, 1080, fps, quality), highest) << quality;
}

TEST(BitrateCalculatorTest, Proposals_AreHalfAndTwiceScaledByQuality) {
    ExpectProposals(1, 30, 4554905, 9109810, 18219620);
    ExpectProposals(2, 30, 4456950, 8913900, 17827800);
    ExpectProposals(16, 30, 3085580, 6171161, 12342323);
    ExpectProposals(31, 30, 1616256, 3232513, 6465026);
    ExpectProposals(32, 30, 1518301, 3036603, 6073206);
}

TEST(BitrateCalculatorTest, Proposals_HalveAnOddBitrateDownwardsBeforeTheyScaleIt) {
    ExpectProposals(1, 60, 5238140, 10476281, 20952562);
    ExpectProposals(32, 60, 1746046, 3492093, 6984187);
    ExpectProposals(0, -50, -5010395, -10020791, -20041582);
}

TEST(BitrateCalculatorTest, Proposals_IgnoreAQualityOutOfRange) {
    for (const int quality : {0, -1, 33, 34, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        ExpectProposals(quality, 30, 4554905, 9109810, 18219620);
    }
}

TEST(BitrateCalculatorTest, Proposals_StayInRange) {
    for (const int quality : {0, 33}) {
        ExpectProposals(quality, kInfinity, 4611686018427387903, kLargest, kLargest);
        ExpectProposals(quality, 1e300, 4611686018427387903, kLargest, kLargest);
        ExpectProposals(quality, -kInfinity, -4611686018427387904, kLowest, kLowest);
        ExpectProposals(quality, -1e300, -4611686018427387904, kLowest, kLowest);
    }
    // Scaling goes through double, which has no 2^62 - 1.
    ExpectProposals(1, kInfinity, 4611686018427387904, kLargest, kLargest);
    ExpectProposals(1, -kInfinity, -4611686018427387904, kLowest, kLowest);
}

// A description of full HD video in H.264 at 30 frames per second.
SP<IFormatCodecVideo> Described(const std::string& mode, long long quality) {
    return VideoWith({Property("bitrate_mode", mode), Property("codec_id", "CODEC_ID_H264"), Property("width", 1920),
                      Property("height", 1080), Property("frameRateRatio", Ratio(30)), Property("quality", quality)});
}

void ExpectDescribed(const SP<const IFormatCodec>& codec, std::int64_t lowest, std::int64_t usual,
                     std::int64_t highest) {
    EXPECT_EQ(GetMinVideoBitrate(codec), lowest);
    EXPECT_EQ(GetDefaultVideoBitrate(codec), usual);
    EXPECT_EQ(GetMaxVideoBitrate(codec), highest);
}

TEST(BitrateCalculatorTest, Described_ScalesByQualityInModeVbrOnly) {
    ExpectDescribed(Described("VBR", 32), 1518301, 3036603, 6073206);
    ExpectDescribed(Described("VBR", 16), 3085580, 6171161, 12342323);
    ExpectDescribed(Described("VBR", 1), 4554905, 9109810, 18219620);
    for (const char* mode : {"CBR", "CBR_AUTO", "", "vbr", "VBR ", "VBR_"}) {
        SCOPED_TRACE(mode);
        ExpectDescribed(Described(mode, 32), 4554905, 9109810, 18219620);
    }
}

TEST(BitrateCalculatorTest, Described_TakesTheLow32BitsOfTheQuality) {
    for (const long long quality : {0LL, 33LL, -1LL, 1LL << 32, 0xFFFFFFFFLL, (1LL << 32) + 33}) {
        SCOPED_TRACE(quality);
        ExpectDescribed(Described("VBR", quality), 4554905, 9109810, 18219620);
    }
    ExpectDescribed(Described("VBR", (1LL << 32) + 16), 3085580, 6171161, 12342323);
    ExpectDescribed(Described("VBR", -(1LL << 32) + 16), 3085580, 6171161, 12342323);
}

std::int64_t UsualFor(const Property& changed) {
    const SP<IFormatCodecVideo> video = Described("CBR", 1);
    Testing::Put(*video, changed);
    return GetDefaultVideoBitrate(video);
}

TEST(BitrateCalculatorTest, Described_ReadsCodecSizeAndRate) {
    EXPECT_EQ(UsualFor(Property("codec_id", "CODEC_ID_GIF")), 121879530);
    EXPECT_EQ(UsualFor(Property("codec_id", "CODEC_ID_AV1")), 5010395);
    EXPECT_EQ(UsualFor(Property("codec_id", "")), 9109810);
    EXPECT_EQ(UsualFor(Property("width", 0)), 0);
    EXPECT_EQ(UsualFor(Property("height", 0)), 0);
    EXPECT_EQ(UsualFor(Property("frameRateRatio", Ratio(60))), 10476281);
    EXPECT_EQ(UsualFor(Property("frameRateRatio", Ratio(30000, 1001))), 9109810);
    EXPECT_EQ(UsualFor(Property("frameRateRatio", Ratio(24000, 1001))), 8848619);
    EXPECT_EQ(UsualFor(Property("frameRateRatio", Ratio(0))), 2732943);
    EXPECT_EQ(UsualFor(Property("frameRateRatio", Ratio(-1))), 2477868);
    EXPECT_EQ(UsualFor(Property("frameRateRatio", Ratio(-50))), -10020791);
}

// A product that overflows the denominator leaves 0 there on many machines; here it is put there.
TEST(BitrateCalculatorTest, Described_TakesARateWithoutADenominatorForNoRate) {
    const auto rate = std::bit_cast<Ratio>(std::array<long long, 2>{1, 0});
    ASSERT_EQ(rate.denominator(), 0);
    EXPECT_EQ(UsualFor(Property("frameRateRatio", rate)), 2732943);
}

TEST(BitrateCalculatorTest, Described_TakesTheLow32BitsOfTheSizeWithoutSign) {
    EXPECT_EQ(UsualFor(Property("width", (1LL << 32) + 1920)), 9109810);
    EXPECT_EQ(UsualFor(Property("width", -(1LL << 32) + 1920)), 9109810);
    EXPECT_EQ(UsualFor(Property("height", (7LL << 32) + 1080)), 9109810);
    EXPECT_EQ(UsualFor(Property("height", 1LL << 32)), 0);
    EXPECT_EQ(UsualFor(Property("width", 4294967295)), 3837335045262);
    EXPECT_EQ(UsualFor(Property("width", -1)), 3837335045262);
}

TEST(BitrateCalculatorTest, Described_LeavesTheDescriptionAsItIs) {
    const SP<IFormatCodecVideo> video = Described("VBR", 16);
    const Property before = video->GetProperty();
    ExpectDescribed(video, 3085580, 6171161, 12342323);
    EXPECT_EQ(video->GetProperty(), before);
    EXPECT_EQ(video->GetRefCount(), 1);
}

using FromDescription = std::int64_t (*)(const SP<const IFormatCodec>&);
constexpr auto kFromDescription =
    std::to_array<FromDescription>({GetDefaultVideoBitrate, GetMinVideoBitrate, GetMaxVideoBitrate});

void ExpectIncompatible(const SP<const IFormatCodec>& codec) {
    for (const FromDescription proposal : kFromDescription) {
        ExpectRaised<ConfException>([&] { proposal(codec); }, "Incompatible type of IFormatCodec structure",
                                    "Conf/Interfaces/BitrateCalculator.cpp", "(");
        const auto failure = Quenzo::Testing::Raised<ConfException>([&] { proposal(codec); });
        EXPECT_EQ(Quenzo::Testing::TagOf<Exception::TagDescription>(failure),
                  "Incompatible type of IFormatCodec structure");
    }
}

TEST(BitrateCalculatorTest, Described_OfAnythingButVideoThrows) {
    ExpectIncompatible(nullptr);
    ExpectIncompatible(IFormatCodec::CreateUndefined());
    ExpectIncompatible(IFormatCodecAudio::Create());
    ExpectIncompatible(IFormatCodecSubtitle::Create());
    const SP<IFormatCodec> named = IFormatCodec::CreateUndefined();
    named->SetProperty(Described("CBR", 1)->GetProperty());
    ExpectIncompatible(named);
    EXPECT_EQ(named->GetRefCount(), 1);
}

TEST(BitrateCalculatorTest, Described_WithoutAKeyThrows) {
    for (const FromDescription proposal : kFromDescription) {
        for (const char* key : {"bitrate_mode", "codec_id", "width", "height", "frameRateRatio", "quality"}) {
            const SP<IFormatCodecVideo> video = Described("VBR", 16);
            Testing::Drop(*video, key);
            ExpectMissing([&] { proposal(video); }, "format_codec_video", key);
        }
    }
    const SP<IFormatCodecVideo> constant = Described("CBR", 16);
    Testing::Drop(*constant, "quality");
    ExpectDescribed(constant, 4554905, 9109810, 18219620);
}

TEST(BitrateCalculatorTest, Described_ReadsItsKeysInOrder) {
    for (const FromDescription proposal : kFromDescription) {
        const SP<IFormatCodecVideo> video = Described("VBR", 16);
        for (const char* key : {"quality", "frameRateRatio", "height", "width", "codec_id", "bitrate_mode"}) {
            Testing::Drop(*video, key);
            ExpectMissing([&] { proposal(video); }, "format_codec_video", key);
        }
    }
}

TEST(BitrateCalculatorTest, Described_WithAKeyOfAnotherTypeThrows) {
    const auto expect = [](const Property& changed, PropertyTypes type, const std::string& getter) {
        for (const FromDescription proposal : kFromDescription) {
            const SP<IFormatCodecVideo> video = Described("VBR", 16);
            Testing::Put(*video, changed);
            ExpectWrongType([&] { proposal(video); }, changed.GetName(), type, getter);
        }
    };
    expect(Property("bitrate_mode", 1), PropertyTypes::Int64, "GetString");
    expect(Property("codec_id", true), PropertyTypes::Bool, "GetString");
    expect(Property("width", "1920"), PropertyTypes::String, "GetInt64");
    expect(Property("height", Ratio(1080)), PropertyTypes::Ratio, "GetInt64");
    expect(Property("frameRateRatio", 30), PropertyTypes::Int64, "GetRatio");
    expect(Property("quality", "16"), PropertyTypes::String, "GetInt64");
}

Property Node(const std::string& name, const std::string& mode, std::int64_t bitrate,
              const std::vector<Property>& more = {}) {
    std::vector<Property> children = {Property("bitrate", bitrate), Property("bitrate_mode", mode)};
    children.insert(children.end(), more.begin(), more.end());
    return Tree(name, children);
}

Property Audio(const std::string& codecId, std::int64_t bitrate) {
    return Node("format_codec_audio", "VBR", bitrate, {Property("codec_id", codecId)});
}

Property Video(long long quality, std::int64_t bitrate) {
    return Node("format_codec_video", "VBR", bitrate, {Property("quality", quality)});
}

void ExpectBounds(const Property& node, std::int64_t lowest, std::int64_t highest) {
    EXPECT_EQ(GetBitrateBounded(node, Boundary::Min), lowest) << node.GetName();
    EXPECT_EQ(GetBitrateBounded(node, Boundary::Max), highest) << node.GetName();
    EXPECT_EQ(GetMinBitrate(node), lowest) << node.GetName();
    EXPECT_EQ(GetMaxBitrate(node), highest) << node.GetName();
}

template <typename Check>
void ForBothBounds(const Check& check) {
    for (const Boundary boundary : {Boundary::Min, Boundary::Max}) {
        check([boundary](const Property& node) { GetBitrateBounded(node, boundary); });
    }
    check([](const Property& node) { GetMinBitrate(node); });
    check([](const Property& node) { GetMaxBitrate(node); });
}

void ExpectRefused(const Property& node, const std::string& text) {
    ForBothBounds([&](const auto& bound) {
        ExpectRaised<std::invalid_argument>([&] { bound(node); }, text, "Conf/Interfaces/BitrateCalculator.cpp",
                                            "GetBitrateBounded");
    });
}

constexpr auto kNodeNames = std::to_array<const char*>(
    {"format_codec_audio", "format_codec_video", "format_codec_subtitle", "format_file", "format_codec_Video", ""});

TEST(BitrateCalculatorTest, Bounds_InModeCbrAreTheBitrateOfAnyNode) {
    for (const char* name : kNodeNames) {
        for (const std::int64_t bitrate :
             {std::int64_t{0}, std::int64_t{1}, std::int64_t{1001}, std::int64_t{-5}, kLargest, kLowest}) {
            ExpectBounds(Node(name, "CBR", bitrate), bitrate, bitrate);
        }
    }
    ExpectBounds(Node("format_codec_audio", "CBR", 1000, {Property("codec_id", "CODEC_ID_FLAC")}), 1000, 1000);
    ExpectBounds(Node("format_codec_video", "CBR", 1000, {Property("quality", 32)}), 1000, 1000);
}

TEST(BitrateCalculatorTest, Bounds_InAnotherModeThrowForAnyNode) {
    for (const char* name : kNodeNames) {
        for (const std::string mode : {"CBR_AUTO", "", "cbr", "vbr", "CBR ", "VBRCBR", "{}"}) {
            ExpectRefused(Node(name, mode, 1000, {Property("codec_id", "CODEC_ID_FLAC"), Property("quality", 1)}),
                          "Unexpected bitrate mode: " + mode);
        }
    }
}

TEST(BitrateCalculatorTest, Bounds_InModeVbrThrowForANodeThatIsNoAudioAndNoVideo) {
    for (const char* name : {"format_codec_subtitle", "format_file", "", "Format_codec_audio", "format_codec_audio ",
                             "format_codec_vide", "codec"}) {
        ExpectRefused(Node(name, "VBR", 1000, {Property("codec_id", "CODEC_ID_FLAC"), Property("quality", 1)}),
                      "Unsupported codec format for bitrate calculation");
    }
}

TEST(BitrateCalculatorTest, Bounds_OfLosslessAudioAreAFifthAround) {
    for (const char* codecId : {"CODEC_ID_FLAC", "CODEC_ID_ALAC"}) {
        ExpectBounds(Audio(codecId, 1000), 800, 1200);
        ExpectBounds(Audio(codecId, 1001), 800, 1201);
        ExpectBounds(Audio(codecId, 1), 0, 1);
        ExpectBounds(Audio(codecId, 0), 0, 0);
        ExpectBounds(Audio(codecId, -1001), -800, -1201);
        ExpectBounds(Audio(codecId, 8'000'000'000'000'000'000), 6'400'000'000'000'000'000, kLargest);
        ExpectBounds(Audio(codecId, kLowest), -7378697629483821056, kLowest);
    }
}

TEST(BitrateCalculatorTest, Bounds_OfOtherAudioAreTheBitrate) {
    for (const std::string& codecId : Testing::AllCodecConstants()) {
        if (codecId != "CODEC_ID_FLAC" && codecId != "CODEC_ID_ALAC") {
            ExpectBounds(Audio(codecId, 1001), 1001, 1001);
        }
    }
    ExpectBounds(Audio("", 1000), 1000, 1000);
    ExpectBounds(Audio("CODEC_ID_flac", 1000), 1000, 1000);
    ExpectBounds(Audio("CODEC_ID_FLAC ", 1000), 1000, 1000);
    ExpectBounds(Audio("CODEC_ID_AAC", kLargest), kLargest, kLargest);
    ExpectBounds(Audio("CODEC_ID_AAC", kLowest), kLowest, kLowest);
}

TEST(BitrateCalculatorTest, Bounds_OfVideoAreHalfAndTwiceScaledByQuality) {
    ExpectBounds(Video(1, 1000), 500, 2000);
    ExpectBounds(Video(16, 1000), 338, 1354);
    ExpectBounds(Video(17, 1000), 327, 1311);
    ExpectBounds(Video(32, 1000), 166, 666);
    ExpectBounds(Video(1, 1001), 500, 2002);
    ExpectBounds(Video(0, -1001), -500, -2002);
    ExpectBounds(Video(1, kLargest), 4611686018427387904, kLargest);
    ExpectBounds(Video(1, kLowest), -4611686018427387904, kLowest);
}

TEST(BitrateCalculatorTest, Bounds_OfVideoTakeTheLow32BitsOfTheQuality) {
    for (const long long quality : {0LL, 33LL, -1LL, 1LL << 32, 0xFFFFFFFFLL, (1LL << 32) + 33}) {
        ExpectBounds(Video(quality, 1000), 500, 2000);
    }
    ExpectBounds(Video((1LL << 32) + 16, 1000), 338, 1354);
    ExpectBounds(Video(-(1LL << 32) + 32, 1000), 166, 666);
}

void ExpectBoundsLack(const Property& node, const std::string& key) {
    ForBothBounds([&](const auto& bound) { ExpectMissing([&] { bound(node); }, node.GetName(), key); });
}

TEST(BitrateCalculatorTest, Bounds_WithoutAKeyThrow) {
    for (const char* name : {"format_codec_audio", "format_codec_video", "format_file"}) {
        ExpectBoundsLack(Tree(name, {}), "bitrate");
        ExpectBoundsLack(Tree(name, {Property("bitrate_mode", "CBR")}), "bitrate");
        ExpectBoundsLack(Tree(name, {Property("bitrate", 1000)}), "bitrate_mode");
    }
    ExpectBoundsLack(Node("format_codec_audio", "VBR", 1000, {Property("quality", 1)}), "codec_id");
    ExpectBoundsLack(Node("format_codec_video", "VBR", 1000, {Property("codec_id", "CODEC_ID_H264")}), "quality");
}

TEST(BitrateCalculatorTest, Bounds_WithAKeyOfAnotherTypeThrow) {
    const auto expect = [](const Property& node, const std::string& key, PropertyTypes type,
                           const std::string& getter) {
        ForBothBounds([&](const auto& bound) { ExpectWrongType([&] { bound(node); }, key, type, getter); });
    };
    const Property mode("bitrate_mode", "VBR");
    const Property bitrate("bitrate", 1000);
    expect(Tree("format_codec_audio", {Property("bitrate", "1000"), mode}), "bitrate", PropertyTypes::String,
           "GetInt64");
    expect(Tree("format_codec_audio", {bitrate, Property("bitrate_mode", 1)}), "bitrate_mode", PropertyTypes::Int64,
           "GetString");
    expect(Tree("format_codec_audio", {bitrate, mode, Property("codec_id", 1)}), "codec_id", PropertyTypes::Int64,
           "GetString");
    expect(Tree("format_codec_video", {bitrate, mode, Property("quality", Ratio(1))}), "quality", PropertyTypes::Ratio,
           "GetInt64");
}

}  // namespace
}  // namespace Quenzo::Conf
