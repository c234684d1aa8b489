// Covers the catalogues and tables when memory runs out while they are made: each is asked for the first time here, as
// often as it has allocations, and is complete once one call has succeeded. No other test of this program may use a
// catalogue, and none is asked twice before it is there.

#include <Conf/Interfaces/AppleUTI.h>
#include <Conf/Interfaces/BitrateCalculator.h>
#include <Conf/Interfaces/IFormatCodecVideo.h>
#include <Conf/Interfaces/MediaTypeUtils.h>
#include <Conf/Interfaces/Stub.h>
#include <Conf/Interfaces/TranslationUtils.h>
#include <tests/faults/EveryAllocation.h>

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <new>
#include <string>
#include <string_view>

namespace Quenzo::Conf {
namespace {

using Quenzo::Testing::FailingMemory;
using Quenzo::Testing::LiveBlocks;
using Quenzo::Testing::Shortage;

struct Catalogue {
    std::string_view name;
    std::size_t (*size)();
    std::size_t expected;
};

#define SIZE_OF(question, expected)                                                   \
    {                                                                                 \
#question, [] { return static_cast<std::size_t>(question.size()); }, expected \
    }

// The list of all codecs is made from three others, which stay when it fails: they come first.
constexpr auto kCatalogues = std::to_array<Catalogue>({
    SIZE_OF(GetAllVideoCodecs(), 195),
    SIZE_OF(GetAllAudioCodecs(), 134),
    SIZE_OF(GetAllSubtitleCodecs(), 22),
    SIZE_OF(GetAllCodecIds(), 360),
    SIZE_OF(GetRAWImageFormatList(), 45),
    SIZE_OF(GetHEIFImageFormatList(), 3),
    SIZE_OF(GetAudioContainerList(), 20),
    SIZE_OF(GetTextSubtitleContainerList(), 3),
    SIZE_OF(GetQZPFormatList(), 1),
    SIZE_OF(GetCDFormatList(), 1),
    SIZE_OF(GetDisabledDecoderList(), 4),
    SIZE_OF(GetDisabledEncoderList(), 6),
    SIZE_OF(GetBlackListedEncoders(), 2),
    SIZE_OF(GetBlackListedDecoders(), 2),
    SIZE_OF(GetMuxerImplList(), 2),
    SIZE_OF(GetParserImplList(), 4),
    SIZE_OF(GetDecoderImplList(), 4),
    SIZE_OF(GetEncoderImplList(), 5),
    SIZE_OF(GetAllImplList(), 16),
    SIZE_OF(GetProprietaryCodecs(), 21),
    SIZE_OF(GetImageContainerSet(AnimatedImages::Include), 51),
    SIZE_OF(GetImageContainerSet(AnimatedImages::Exclude), 45),
    SIZE_OF(GetFormatExtensionList(), 137),
    SIZE_OF(GetExtensionsByFormat("jpeg"), 3),
    SIZE_OF(GetFormatsByExtension("mp4"), 3),
    SIZE_OF(UTI::FindFormatID("public.heic"), 4),
    SIZE_OF(UTI::FindCodecID("public.heic"), 13),
    SIZE_OF(UTI::FindAnimatedFormatID("public.png"), 4),
    SIZE_OF(UTI::FindAnimatedCodecID("public.png"), 13),
});

#undef SIZE_OF

struct FirstUse {
    std::size_t size = 0;
    long failures = 0;
};

// A failure within a function-local static must leave it to be made by the next call. No block may stay behind before
// the call that succeeds.
FirstUse UseFirst(const Catalogue& catalogue) {
    const long before = LiveBlocks();
    for (FirstUse use;; ++use.failures) {
        const FailingMemory fault(use.failures + 1, use.failures % 2 == 0 ? Shortage::Once : Shortage::Lasting);
        try {
            use.size = catalogue.size();
            return use;
        } catch (const std::bad_alloc&) {
            if (LiveBlocks() != before) {
                return use;
            }
        }
    }
}

TEST(CatalogueAllocationTest, FirstUse_IsRepeatedUntilTheCatalogueIsComplete) {
    long failures = 0;
    for (const Catalogue& catalogue : kCatalogues) {
        const FirstUse use = UseFirst(catalogue);
        EXPECT_EQ(use.size, catalogue.expected) << catalogue.name << " after " << use.failures << " failures";
        failures += use.failures;
    }
    EXPECT_GT(failures, 500);
}

TEST(CatalogueAllocationTest, Answers_TakenAsValuesComeWholeOrNotAtAll) {
    using Quenzo::Testing::ExpectAllOrNothing;
    const auto none = [] { return std::string(); };
    const auto same = [](const std::string& answer) { return answer; };
    ExpectAllOrNothing(
        none, [](std::string& answer) { answer = GetSupportedFormatExtensions("All images").back(); }, same);
    ExpectAllOrNothing(
        none, [](std::string& answer) { answer = GetSupportedFormats().back().second; }, same);
    ExpectAllOrNothing(
        none, [](std::string& answer) { answer = GetFormatExtentionTip("All Audio"); }, same);
    ExpectAllOrNothing(
        none, [](std::string& answer) { answer = GetDisplayCodecName("a codec with a name that takes memory"); }, same);
    ExpectAllOrNothing(
        none, [](std::string& answer) { TranslateCodecId("CODEC_ID_A_CODEC_THAT_NOBODY_KNOWS", answer); }, same);
}

TEST(CatalogueAllocationTest, LookUps_TakeNoMemory) {
    const std::string codec = "CODEC_ID_MPEG2VIDEO_XVMC";
    const std::string container = "com.hasselblad.3fr-raw-image";
    std::array<bool, 6> answers = {};
    std::int64_t bitrate = 0;
    bool hasStruck = false;
    {
        const FailingMemory fault(1, Shortage::Lasting);
        answers = {IsVideoCodec(codec),       IsAudioCodec(codec),         IsSubtitleCodec(codec),
                   IsProprietaryCodec(codec), IsAudioContainer(container), IsImageContainer(container, {})};
        bitrate = GetDefVideoBitrate(IFormatCodecVideo::CODEC_ID_H264, 1920, 1080, 30);
        hasStruck = fault.HasStruck();
    }
    EXPECT_EQ(answers, (std::array{true, false, false, true, false, true}));
    EXPECT_EQ(bitrate, 9109810);
    EXPECT_FALSE(hasStruck);
}

TEST(CatalogueAllocationTest, Bitrates_OfADescription) {
    const auto video = IFormatCodecVideo::Create();
    video->InitByPixelAspect(1920, 1080, 1, 1);
    video->SetFrameRate(30, 1);
    Core::Property tree = video->GetProperty();
    tree.SetChildT<std::string>(IFormatCodecVideo::TAG_CODEC_ID, IFormatCodecVideo::CODEC_ID_H264);
    tree.SetChildT<std::string>(IFormatCodecVideo::TAG_BITRATE_MODE, IFormatCodecVideo::TAG_BITRATE_MODE_CBR);
    tree.SetChildT<long long>(IFormatCodecVideo::TAG_BITRATE, 1000);
    video->SetProperty(tree);
    const auto ask = [&](std::int64_t& bitrate) {
        bitrate = GetDefaultVideoBitrate(SP<const IFormatCodec>(video)) + GetMaxBitrate(tree);
    };
    Quenzo::Testing::FailEveryAllocation(
        [] { return std::int64_t{0}; }, ask,
        [](std::int64_t bitrate, bool hasFailed) { EXPECT_EQ(bitrate, hasFailed ? 0 : 9109810 + 1000); });
}

}  // namespace
}  // namespace Quenzo::Conf
