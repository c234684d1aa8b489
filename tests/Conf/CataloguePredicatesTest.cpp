// Covers the predicates of Conf/Interfaces/Stub: each asked for every identifier of the vocabulary and for texts that
// only resemble one, and compared with membership in the list as it is written out in CatalogueRows/.

#include <Conf/Interfaces/Stub.h>
#include <tests/Conf/CatalogueSupport.h>
#include <tests/Conf/TableSupport.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstddef>
#include <limits>
#include <set>
#include <string>

namespace Quenzo::Conf {
namespace {

using Testing::ExpectFormatFailure;
using Testing::Joined;
using Testing::Strings;

// The predicate must hold for these texts and for no others.
template <typename Predicate>
void ExpectMembers(const Predicate& predicate, const Strings& members) {
    const std::set<std::string> expected(members.begin(), members.end());
    std::size_t found = 0;
    for (const std::string& text : Testing::Probes()) {
        const bool holds = predicate(text);
        EXPECT_EQ(holds, expected.contains(text)) << '"' << text.substr(0, 100) << '"';
        found += holds ? 1 : 0;
    }
    EXPECT_EQ(found, expected.size());
}

TEST(CataloguePredicatesTest, Probes_AreManyAndHoldAllIdentifiers) {
    const std::set<std::string> probes(Testing::Probes().begin(), Testing::Probes().end());
    EXPECT_GT(probes.size(), 50000U);
    EXPECT_EQ(Testing::AllCodecConstants().size(), 364U);
    EXPECT_GT(Testing::AllIdentifiers().size(), 900U);
    for (const std::string& identifier : Testing::AllIdentifiers()) {
        EXPECT_TRUE(probes.contains(identifier)) << identifier;
    }
}

TEST(CataloguePredicatesTest, IsVideoCodec_IsMembership) {
    ExpectMembers(IsVideoCodec, Testing::ExpectedVideoCodecs());
}

TEST(CataloguePredicatesTest, IsAudioCodec_IsMembership) {
    ExpectMembers(IsAudioCodec, Testing::ExpectedAudioCodecs());
}

TEST(CataloguePredicatesTest, IsSubtitleCodec_IsMembership) {
    ExpectMembers(IsSubtitleCodec, Testing::ExpectedSubtitleCodecs());
}

TEST(CataloguePredicatesTest, IsAudioContainer_IsMembership) {
    ExpectMembers(IsAudioContainer, Testing::ExpectedAudioContainers());
}

TEST(CataloguePredicatesTest, IsTextSubtitleContainer_IsMembership) {
    ExpectMembers(IsTextSubtitleContainer, {"ass", "ssa", "srt"});
}

TEST(CataloguePredicatesTest, IsProprietaryCodec_IsMembership) {
    ExpectMembers(IsProprietaryCodec, Testing::ExpectedProprietaryCodecs());
}

TEST(CataloguePredicatesTest, IsExternalDecoder_IsNeverTrue) { ExpectMembers(IsExternalDecoder, {}); }

TEST(CataloguePredicatesTest, IsExternalEncoder_IsNeverTrue) { ExpectMembers(IsExternalEncoder, {}); }

Strings StillPicturesAndRaw() { return Joined(Testing::ExpectedStillPictures(), Testing::ExpectedRawPhotographs()); }

TEST(CataloguePredicatesTest, IsImageContainer_IsMembershipAmongStillPicturesAndRawPhotographs) {
    ExpectMembers([](const std::string& text) { return IsImageContainer(text, AnimatedImages::Exclude); },
                  StillPicturesAndRaw());
}

TEST(CataloguePredicatesTest, IsImageContainer_WithAnimationsHasSixMore) {
    ExpectMembers([](const std::string& text) { return IsImageContainer(text, AnimatedImages::Include); },
                  Joined(StillPicturesAndRaw(), {"ajpegxl", "apng", "avis", "awebp", "gif", "heics"}));
}

TEST(CataloguePredicatesTest, IsImageContainer_IncludesAnimationsForOneOnly) {
    for (const int other : {0, -1, 2, 257, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        EXPECT_FALSE(IsImageContainer("gif", AnimatedImages{other})) << other;
        EXPECT_TRUE(IsImageContainer("bmp", AnimatedImages{other})) << other;
        EXPECT_TRUE(IsImageContainer("com.sony.arw-raw-image", AnimatedImages{other})) << other;
    }
    EXPECT_TRUE(IsImageContainer("gif", AnimatedImages{1}));
}

TEST(CataloguePredicatesTest, None_IsAVideoAndAnAudioCodec) {
    EXPECT_TRUE(IsVideoCodec("CODEC_ID_NONE"));
    EXPECT_TRUE(IsAudioCodec("CODEC_ID_NONE"));
    EXPECT_FALSE(IsSubtitleCodec("CODEC_ID_NONE"));
}

TEST(CataloguePredicatesTest, UnlistedIds_BelongToNoKind) {
    for (const char* id : {"CODEC_ID_JPEG", "CODEC_ID_VP7", "CODEC_ID_CFHD", "CODEC_ID_PSD", "CODEC_ID_8SVX_RAW",
                           "CODEC_ID_AUTO", "CODEC_ID_TTF"}) {
        EXPECT_FALSE(IsVideoCodec(id) || IsAudioCodec(id) || IsSubtitleCodec(id)) << id;
    }
    EXPECT_FALSE(IsVideoCodec("codec_id_h264"));
}

TEST(CataloguePredicatesTest, RawPhotographsWithoutACatalogue_AreNoPictures) {
    EXPECT_FALSE(IsImageContainer("com.nikon.nefx-raw-image", AnimatedImages::Include));
    EXPECT_FALSE(IsImageContainer("com.sony.axr-raw-image", AnimatedImages::Include));
}

RC_GTEST_PROP(CataloguePredicatesTest, Predicates_AreFalseForAnyOtherText, (const std::string& text)) {
    const auto known = std::set<std::string>(Testing::AllIdentifiers().begin(), Testing::AllIdentifiers().end());
    RC_PRE(!known.contains(text));
    RC_ASSERT_FALSE(IsVideoCodec(text) || IsAudioCodec(text) || IsSubtitleCodec(text) || IsProprietaryCodec(text));
    RC_ASSERT_FALSE(IsAudioContainer(text) || IsTextSubtitleContainer(text));
    RC_ASSERT_FALSE(IsImageContainer(text, AnimatedImages::Include));
}

// What keeps its own bit rate: uncompressed samples of whole bytes in one piece, but unsigned 16-bit big-endian, and
// the lossless codecs.
const Strings& CodecsWithoutBitrate() {
    static const Strings ids = {"CODEC_ID_PCM_U8",    "CODEC_ID_PCM_S8",    "CODEC_ID_PCM_U16LE", "CODEC_ID_PCM_S16BE",
                                "CODEC_ID_PCM_S16LE", "CODEC_ID_PCM_U32BE", "CODEC_ID_PCM_U32LE", "CODEC_ID_PCM_S24BE",
                                "CODEC_ID_PCM_S24LE", "CODEC_ID_PCM_S32BE", "CODEC_ID_PCM_S32LE", "CODEC_ID_PCM_U24BE",
                                "CODEC_ID_PCM_U24LE", "CODEC_ID_FLAC",      "CODEC_ID_ALAC"};
    return ids;
}

void ExpectNoAudioCodec(const std::string& id) {
    ExpectFormatFailure([&id] { IsAudioBitrateRequired(id); }, "Provided audio codec id is not found in list:" + id);
}

TEST(CataloguePredicatesTest, IsAudioBitrateRequired_IsFalseForPcmAndLosslessCodecs) {
    ASSERT_EQ(CodecsWithoutBitrate().size(), 15U);
    for (const std::string& id : CodecsWithoutBitrate()) {
        EXPECT_FALSE(IsAudioBitrateRequired(id)) << id;
    }
}

TEST(CataloguePredicatesTest, IsAudioBitrateRequired_IsTrueForTheOtherAudioCodecs) {
    const std::set<std::string> without(CodecsWithoutBitrate().begin(), CodecsWithoutBitrate().end());
    std::size_t required = 0;
    for (const std::string& id : Testing::ExpectedAudioCodecs()) {
        EXPECT_EQ(IsAudioBitrateRequired(id), !without.contains(id)) << id;
        required += without.contains(id) ? 0 : 1;
    }
    EXPECT_EQ(required, 119U);
}

TEST(CataloguePredicatesTest, IsAudioBitrateRequired_IsTrueForUnusualPcmAndForNone) {
    EXPECT_TRUE(IsAudioBitrateRequired("CODEC_ID_PCM_U16BE"));
    EXPECT_TRUE(IsAudioBitrateRequired("CODEC_ID_PCM_MULAW"));
    EXPECT_TRUE(IsAudioBitrateRequired("CODEC_ID_PCM_S8_PLANAR"));
    EXPECT_TRUE(IsAudioBitrateRequired("CODEC_ID_AAC"));
    EXPECT_TRUE(IsAudioBitrateRequired("CODEC_ID_NONE"));
}

TEST(CataloguePredicatesTest, IsAudioBitrateRequired_ThrowsForEveryOtherIdentifier) {
    const Strings audio = Testing::ExpectedAudioCodecs();
    const std::set<std::string> known(audio.begin(), audio.end());
    std::size_t refused = 0;
    for (const std::string& identifier : Testing::AllIdentifiers()) {
        if (!known.contains(identifier)) {
            ExpectNoAudioCodec(identifier);
            ++refused;
        }
    }
    EXPECT_EQ(refused, Testing::AllIdentifiers().size() - 134);
}

TEST(CataloguePredicatesTest, IsAudioBitrateRequired_ThrowsForOtherTexts) {
    ExpectNoAudioCodec("");
    ExpectNoAudioCodec("CODEC_ID_H264");
    ExpectNoAudioCodec("CODEC_ID_8SVX_RAW");
    ExpectNoAudioCodec("codec_id_aac");
    ExpectNoAudioCodec("CODEC_ID_AAC ");
    ExpectNoAudioCodec(" CODEC_ID_FLAC");
    ExpectNoAudioCodec("CODEC_ID_PCM_S16L");
    ExpectNoAudioCodec("CODEC_ID_PCM_U24");
    ExpectNoAudioCodec("{}");
    ExpectNoAudioCodec(std::string(5000, 'A'));
}

TEST(CataloguePredicatesTest, IsAudioBitrateRequired_SaysWhereItFailed) {
    Testing::ExpectRaised<FormatException>([] { IsAudioBitrateRequired("x"); },
                                           "Provided audio codec id is not found in list:x", "Conf/Interfaces/Stub.cpp",
                                           "IsAudioBitrateRequired");
}

TEST(CataloguePredicatesTest, IsAudioBitrateRequired_ReportsTheWholeIdAfterAZeroCharacter) {
    const std::string id("CODEC_ID_AAC\0X", 14);
    const auto failure = Quenzo::Testing::Raised<FormatException>([&id] { IsAudioBitrateRequired(id); });
    EXPECT_EQ(Quenzo::Testing::TagOf<Exception::TagDescription>(failure),
              "Provided audio codec id is not found in list:" + id);
}

}  // namespace
}  // namespace Quenzo::Conf
