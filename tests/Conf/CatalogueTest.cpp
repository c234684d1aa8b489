// Covers the catalogues of Conf/Interfaces/Stub: every one of them whole and in order, which of them are the same
// object, and how they are printed. The long ones stand in CatalogueRows/.

#include <Conf/Interfaces/Stub.h>
#include <tests/Conf/CatalogueSupport.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <limits>
#include <set>
#include <sstream>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

namespace Quenzo::Conf {
namespace {

using Testing::Joined;
using Testing::Strings;

using Getter = const Strings& (*)();

void ExpectCatalogue(Getter get, const Strings& expected, std::size_t size) {
    ASSERT_EQ(expected.size(), size);
    EXPECT_EQ(get(), expected);
    EXPECT_EQ(&get(), &get());
}

TEST(CatalogueTest, GetAllVideoCodecs_IsTheList) {
    ExpectCatalogue(GetAllVideoCodecs, Testing::ExpectedVideoCodecs(), 195);
}

TEST(CatalogueTest, GetAllAudioCodecs_IsTheList) {
    ExpectCatalogue(GetAllAudioCodecs, Testing::ExpectedAudioCodecs(), 134);
}

TEST(CatalogueTest, GetAllSubtitleCodecs_IsTheList) {
    ExpectCatalogue(GetAllSubtitleCodecs, Testing::ExpectedSubtitleCodecs(), 22);
}

TEST(CatalogueTest, GetAllCodecIds_IsTheThreeListsAndTheIdsOfNoKind) {
    const Strings streams = Joined(Joined(Testing::ExpectedVideoCodecs(), Testing::ExpectedAudioCodecs()),
                                   Testing::ExpectedSubtitleCodecs());
    ExpectCatalogue(GetAllCodecIds, Joined(streams, Testing::ExpectedCodecsOfNoKind()), 360);
}

TEST(CatalogueTest, GetAllCodecIds_HasNoneThreeTimes) {
    const Strings& ids = GetAllCodecIds();
    std::vector<std::size_t> positions;
    for (std::size_t i = 0; i < ids.size(); ++i) {
        if (ids[i] == "CODEC_ID_NONE") {
            positions.push_back(i);
        }
    }
    EXPECT_EQ(positions, (std::vector<std::size_t>{194, 328, 359}));
}

TEST(CatalogueTest, GetAllCodecIds_LacksSixOfTheConstants) {
    const std::set<std::string> listed(GetAllCodecIds().begin(), GetAllCodecIds().end());
    EXPECT_EQ(listed.size(), 358U);
    Strings unlisted;
    std::set_difference(Testing::AllCodecConstants().begin(), Testing::AllCodecConstants().end(), listed.begin(),
                        listed.end(), std::back_inserter(unlisted));
    EXPECT_EQ(unlisted, (Strings{"CODEC_ID_8SVX_RAW", "CODEC_ID_AUTO", "CODEC_ID_CFHD", "CODEC_ID_JPEG", "CODEC_ID_PSD",
                                 "CODEC_ID_VP7"}));
}

TEST(CatalogueTest, GetRAWImageFormatList_IsTheList) {
    ExpectCatalogue(GetRAWImageFormatList, Testing::ExpectedRawPhotographs(), 45);
}

TEST(CatalogueTest, GetHEIFImageFormatList_IsTheList) {
    ExpectCatalogue(GetHEIFImageFormatList, {"heif", "heic", "heics"}, 3);
}

TEST(CatalogueTest, GetQZPFormatList_IsTheList) { ExpectCatalogue(GetQZPFormatList, {"qzp-1.0"}, 1); }

TEST(CatalogueTest, GetCDFormatList_IsTheList) { ExpectCatalogue(GetCDFormatList, {"cda"}, 1); }

TEST(CatalogueTest, GetAudioContainerList_IsTheList) {
    ExpectCatalogue(GetAudioContainerList, Testing::ExpectedAudioContainers(), 20);
}

TEST(CatalogueTest, GetTextSubtitleContainerList_IsTheList) {
    ExpectCatalogue(GetTextSubtitleContainerList, {"ass", "ssa", "srt"}, 3);
}

TEST(CatalogueTest, GetDisabledFormatParserList_IsEmpty) { ExpectCatalogue(GetDisabledFormatParserList, {}, 0); }

TEST(CatalogueTest, GetDisabledFormatMuxerList_IsEmpty) { ExpectCatalogue(GetDisabledFormatMuxerList, {}, 0); }

TEST(CatalogueTest, GetDisabledDecoderList_IsTheList) {
    ExpectCatalogue(GetDisabledDecoderList, {"CODEC_ID_H265", "CODEC_ID_EAC3", "CODEC_ID_AMR_NB", "CODEC_ID_AMR_WB"},
                    4);
}

TEST(CatalogueTest, GetDisabledEncoderList_IsTheList) {
    ExpectCatalogue(
        GetDisabledEncoderList,
        {"CODEC_ID_H265", "CODEC_ID_AMR_NB", "CODEC_ID_AMR_WB", "CODEC_ID_EAC3", "CODEC_ID_DTS", "CODEC_ID_FFV1"}, 6);
}

TEST(CatalogueTest, GetBlackListedEncoders_IsTheList) {
    ExpectCatalogue(GetBlackListedEncoders, {"CODEC_ID_TRUEHD", "CODEC_ID_MLP"}, 2);
}

TEST(CatalogueTest, GetBlackListedDecoders_IsTheList) {
    ExpectCatalogue(GetBlackListedDecoders, {"CODEC_ID_TRUEHD", "CODEC_ID_MLP"}, 2);
}

TEST(CatalogueTest, GetExternalDecoderList_IsEmpty) { ExpectCatalogue(GetExternalDecoderList, {}, 0); }

TEST(CatalogueTest, GetExternalEncoderList_IsEmpty) { ExpectCatalogue(GetExternalEncoderList, {}, 0); }

TEST(CatalogueTest, GetMuxerImplList_IsTheList) {
    ExpectCatalogue(GetMuxerImplList, {"FFMPEG_IMPL", "LIBHEIF_IMPL"}, 2);
}

TEST(CatalogueTest, GetParserImplList_IsTheList) {
    ExpectCatalogue(GetParserImplList, {"FFMPEG_IMPL", "LIBHEIF_IMPL", "RAW_IMPL", "APPLE_IMPL"}, 4);
}

TEST(CatalogueTest, GetDecoderImplList_IsTheList) {
    ExpectCatalogue(GetDecoderImplList, {"FFMPEG_IMPL", "FFMPEG_FDK_IMPL", "NVDEC", "DIRECTX_IMPL"}, 4);
}

TEST(CatalogueTest, GetEncoderImplList_IsTheList) {
    ExpectCatalogue(GetEncoderImplList, {"AMF", "FFMPEG_IMPL", "NVENC", "QSV", "DIRECTX_IMPL"}, 5);
}

TEST(CatalogueTest, GetAllImplList_IsTheList) {
    ExpectCatalogue(GetAllImplList, Testing::ExpectedImplementations(), 16);
}

TEST(CatalogueTest, GetProprietaryCodecs_IsTheList) {
    ExpectCatalogue(GetProprietaryCodecs, Testing::ExpectedProprietaryCodecs(), 21);
}

TEST(CatalogueTest, EveryList_IsAnObjectOfItsOwnButTheExternalOnes) {
    constexpr auto lists = std::to_array<Getter>({
        GetAllVideoCodecs,
        GetAllAudioCodecs,
        GetAllSubtitleCodecs,
        GetAllCodecIds,
        GetRAWImageFormatList,
        GetHEIFImageFormatList,
        GetQZPFormatList,
        GetCDFormatList,
        GetAudioContainerList,
        GetTextSubtitleContainerList,
        GetDisabledFormatParserList,
        GetDisabledFormatMuxerList,
        GetDisabledDecoderList,
        GetDisabledEncoderList,
        GetBlackListedEncoders,
        GetBlackListedDecoders,
        GetExternalDecoderList,
        GetMuxerImplList,
        GetParserImplList,
        GetDecoderImplList,
        GetEncoderImplList,
        GetAllImplList,
        GetProprietaryCodecs,
    });
    std::set<const Strings*> objects;
    for (const Getter get : lists) {
        objects.insert(&get());
    }
    EXPECT_EQ(objects.size(), 23U);
    EXPECT_EQ(&GetExternalEncoderList(), &GetExternalDecoderList());
    EXPECT_NE(&GetBlackListedEncoders(), &GetBlackListedDecoders());
}

// The entries sorted, so that one that stands there twice shows.
Strings Sorted(Strings entries) {
    std::sort(entries.begin(), entries.end());
    return entries;
}

Strings Sorted(const std::unordered_set<std::string>& entries) {
    return Sorted(Strings(entries.begin(), entries.end()));
}

TEST(CatalogueTest, GetImageContainerSet_OfStillPicturesIsTheSet) {
    const auto& containers = GetImageContainerSet(AnimatedImages::Exclude);
    EXPECT_EQ(containers.size(), 45U);
    EXPECT_EQ(Sorted(containers), Sorted(Testing::ExpectedStillPictures()));
}

TEST(CatalogueTest, GetImageContainerSet_OfAnimationsTooHasSixMore) {
    const auto& containers = GetImageContainerSet(AnimatedImages::Include);
    const Strings animations = {"ajpegxl", "apng", "avis", "awebp", "gif", "heics"};
    EXPECT_EQ(containers.size(), 51U);
    EXPECT_EQ(Sorted(containers), Sorted(Joined(Testing::ExpectedStillPictures(), animations)));
}

TEST(CatalogueTest, GetImageContainerSet_IncludesAnimationsForOneOnly) {
    EXPECT_EQ(static_cast<int>(AnimatedImages::Exclude), 0);
    EXPECT_EQ(static_cast<int>(AnimatedImages::Include), 1);
    const auto& still = GetImageContainerSet(AnimatedImages::Exclude);
    EXPECT_NE(&GetImageContainerSet(AnimatedImages::Include), &still);
    EXPECT_EQ(&GetImageContainerSet(AnimatedImages::Include), &GetImageContainerSet(AnimatedImages{1}));
    for (const int other : {0, -1, 2, 3, 257, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        EXPECT_EQ(&GetImageContainerSet(AnimatedImages{other}), &still) << other;
    }
}

TEST(CatalogueTest, GetFormatExtensionList_IsTheList) {
    const auto& pairs = GetFormatExtensionList();
    EXPECT_EQ(pairs.size(), 137U);
    EXPECT_EQ(pairs, Testing::ExpectedFormatExtensions());
    EXPECT_EQ(&GetFormatExtensionList(), &pairs);
}

TEST(CatalogueTest, EveryEntry_IsAConstantOfTheVocabulary) {
    for (const std::string& id : GetAllCodecIds()) {
        EXPECT_THAT(Testing::AllCodecConstants(), testing::Contains(id));
    }
    for (const auto& [format, extension] : GetFormatExtensionList()) {
        EXPECT_THAT(Testing::AllContainerConstants(), testing::Contains(format)) << extension;
    }
}

std::string Printed(const Strings& catalogue) {
    std::ostringstream stream;
    stream << catalogue << '|' << catalogue;
    return stream.str();
}

TEST(CatalogueTest, Print_JoinsTheEntriesInOrder) {
    EXPECT_EQ(Printed(GetTextSubtitleContainerList()), "ass, ssa, srt|ass, ssa, srt");
    EXPECT_EQ(Printed(GetCDFormatList()), "cda|cda");
    EXPECT_EQ(Printed(GetExternalDecoderList()), "|");
    EXPECT_EQ(Printed({"", "a, b", ""}), ", a, b, |, a, b, ");
}

}  // namespace
}  // namespace Quenzo::Conf
