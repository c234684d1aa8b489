// Covers Conf/Interfaces/TranslationUtils and the short codec names of Stub: the display name of every codec id and
// container, written out in CatalogueRows/, the names derived for other texts, and the texts without a name.

#include <Conf/Interfaces/Stub.h>
#include <Conf/Interfaces/TranslationUtils.h>
#include <tests/Conf/CatalogueSupport.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Quenzo::Conf {
namespace {

using Testing::Strings;

using Names = std::map<std::string, std::string>;
using Translation = bool (*)(const std::string&, std::string&);

const std::string kUntouched = "untouched";  // NOLINT(cert-err58-cpp): short enough to need no memory

void ExpectName(Translation translate, const std::string& id, const std::string& expected) {
    std::string name = kUntouched;
    EXPECT_TRUE(translate(id, name)) << id;
    EXPECT_EQ(name, expected) << id;
}

void ExpectNoName(Translation translate, const std::string& id) {
    std::string name = kUntouched;
    EXPECT_FALSE(translate(id, name)) << id;
    EXPECT_EQ(name, kUntouched) << id;
}

Names CodecNames() {
    return {
#include <tests/Conf/CatalogueRows/CodecDisplayNames.inc>
    };
}

Names FormatNames() {
    return {
#include <tests/Conf/CatalogueRows/FormatDisplayNames.inc>
    };
}

TEST(TranslationUtilsTest, TranslateCodecId_NamesEveryCodec) {
    const Names names = CodecNames();
    ASSERT_EQ(names.size(), 363U);
    for (const auto& [id, name] : names) {
        ExpectName(TranslateCodecId, id, name);
    }
}

TEST(TranslationUtilsTest, TranslateCodecId_OfEveryConstantButAutoIsExpected) {
    const Names names = CodecNames();
    Strings unexpected;
    for (const std::string& id : Testing::AllCodecConstants()) {
        if (!names.contains(id)) {
            unexpected.push_back(id);
        }
    }
    EXPECT_EQ(unexpected, Strings{"CODEC_ID_AUTO"});
    EXPECT_EQ(Testing::AllCodecConstants().size(), names.size() + 1);
}

TEST(TranslationUtilsTest, TranslateCodecId_HasIrregularNamesOnPurpose) {
    ExpectName(TranslateCodecId, "CODEC_ID_JPEG", "LJPEG");
    ExpectName(TranslateCodecId, "CODEC_ID_MPEG2VIDEO_XVMC", "MPEG-2");
    ExpectName(TranslateCodecId, "CODEC_ID_H261", "H261");
    ExpectName(TranslateCodecId, "CODEC_ID_H263", "H.263");
    ExpectName(TranslateCodecId, "CODEC_ID_VMDVIDEO", "VMD Video");
    ExpectName(TranslateCodecId, "CODEC_ID_VMDAUDIO", "VMD AUDIO");
    ExpectName(TranslateCodecId, "CODEC_ID_HDMV_PGS_SUBTITLE", "PGS Subtitle");
    ExpectName(TranslateCodecId, "CODEC_ID_DVD_SUBTITLE", "DVD SUBTITLE");
}

TEST(TranslationUtilsTest, TranslateCodecId_DerivesTheNamesOfOthers) {
    ExpectName(TranslateCodecId, "CODEC_ID_", "");
    ExpectName(TranslateCodecId, "CODEC_ID_AAC_LATM", "AAC LATM");
    ExpectName(TranslateCodecId, "CODEC_ID_PCM_S16LE", "PCM");
    ExpectName(TranslateCodecId, "CODEC_ID_PCM_ALAW", "PCM");
    ExpectName(TranslateCodecId, "CODEC_ID_ADPCM_MS", "PCM");
    ExpectName(TranslateCodecId, "CODEC_ID_S302M", "S302M");
    ExpectName(TranslateCodecId, "CODEC_ID_PCM_", "PCM");
    ExpectName(TranslateCodecId, "CODEC_ID_ADPCM_", "PCM");
    ExpectName(TranslateCodecId, "CODEC_ID_PCM", "PCM");
    ExpectName(TranslateCodecId, "CODEC_ID_ADPCM", "ADPCM");
    ExpectName(TranslateCodecId, "CODEC_ID_DPCM_X", "DPCM X");
    ExpectName(TranslateCodecId, "CODEC_ID_X_PCM_Y", "X PCM Y");
    ExpectName(TranslateCodecId, "CODEC_ID_pcm_s16le", "pcm s16le");
    ExpectName(TranslateCodecId, "CODEC_ID_x", "x");
    ExpectName(TranslateCodecId, "CODEC_ID__", " ");
    ExpectName(TranslateCodecId, "CODEC_ID____", "   ");
    ExpectName(TranslateCodecId, "CODEC_ID_CODEC_ID_H264", "CODEC ID H264");
    ExpectName(TranslateCodecId, "CODEC_ID_H264 ", "H264 ");
    ExpectName(TranslateCodecId, "CODEC_ID_h264", "h264");
    ExpectName(TranslateCodecId, "CODEC_ID_AUTO_", "AUTO ");
    ExpectName(TranslateCodecId, "CODEC_ID_AUT", "AUT");
    ExpectName(TranslateCodecId, "CODEC_ID_auto", "auto");
    ExpectName(TranslateCodecId, std::string("CODEC_ID_AUTO\0", 14), std::string("AUTO\0", 5));
    ExpectName(TranslateCodecId, std::string("CODEC_ID_H264\0_", 15), std::string("H264\0 ", 6));
    ExpectName(TranslateCodecId, "CODEC_ID_" + std::string(100000, '_'), std::string(100000, ' '));
}

TEST(TranslationUtilsTest, TranslateCodecId_OfOtherTextsLeavesTheNameAlone) {
    ExpectNoName(TranslateCodecId, "CODEC_ID_AUTO");
    ExpectNoName(TranslateCodecId, "CODEC_ID");
    ExpectNoName(TranslateCodecId, "");
    ExpectNoName(TranslateCodecId, "C");
    ExpectNoName(TranslateCodecId, "XCODEC_ID_H264");
    ExpectNoName(TranslateCodecId, " CODEC_ID_H264");
    ExpectNoName(TranslateCodecId, "codec_id_h264");
    ExpectNoName(TranslateCodecId, "Codec_ID_H264");
    ExpectNoName(TranslateCodecId, "CODEC-ID-H264");
    ExpectNoName(TranslateCodecId, "H264");
    ExpectNoName(TranslateCodecId, "mp4");
    ExpectNoName(TranslateCodecId, std::string("\0CODEC_ID_H264", 14));
    ExpectNoName(TranslateCodecId, std::string("CODEC_ID\0H264", 13));
}

TEST(TranslationUtilsTest, TranslateCodecId_OfItsOwnDestination) {
    std::string text = "CODEC_ID_WMAV2";
    EXPECT_TRUE(TranslateCodecId(text, text));
    EXPECT_EQ(text, "WMA V2");
    text = "CODEC_ID_A_LONG_ID_THAT_NOBODY_KNOWS";
    EXPECT_TRUE(TranslateCodecId(text, text));
    EXPECT_EQ(text, "A LONG ID THAT NOBODY KNOWS");
}

// What an id that has no name of its own shows as.
std::string Derived(const std::string& rest) {
    if (rest.compare(0, 4, "PCM_") == 0 || rest.compare(0, 6, "ADPCM_") == 0) {
        return "PCM";
    }
    std::string name;
    for (const char c : rest) {
        name += c == '_' ? ' ' : c;
    }
    return name;
}

TEST(TranslationUtilsTest, TranslateCodecId_OfEveryIdentifierAndWhatResemblesIt) {
    const Names names = CodecNames();
    for (const std::string& text : Testing::Probes()) {
        if (text.rfind("CODEC_ID_", 0) != 0 || text == "CODEC_ID_AUTO") {
            ExpectNoName(TranslateCodecId, text);
        } else if (!names.contains(text)) {
            ExpectName(TranslateCodecId, text, Derived(text.substr(9)));
        }
    }
}

RC_GTEST_PROP(TranslationUtilsTest, TranslateCodecId_HasNoUnderscoreInADerivedName, (const std::string& rest)) {
    std::string name;
    RC_PRE(!CodecNames().contains("CODEC_ID_" + rest));
    RC_ASSERT(TranslateCodecId("CODEC_ID_" + rest, name));
    RC_ASSERT(name == Derived(rest));
}

TEST(TranslationUtilsTest, TranslateFormatId_NamesTheContainersThatHaveAName) {
    const Names names = FormatNames();
    ASSERT_EQ(names.size(), 100U);
    for (const auto& [id, name] : names) {
        ExpectName(TranslateFormatId, id, name);
    }
}

TEST(TranslationUtilsTest, TranslateFormatId_IsTheUpperCaseWithEightExceptions) {
    const Names exceptions = {{"image2pipe", "IMAGE2 PIPE"}, {"mpeg1video", "MPEG1 VIDEO"},
                              {"mpeg2video", "MPEG2 VIDEO"}, {"mpegts", "MPEG-TS"},
                              {"mpeg2ts", "MPEG2-TS"},       {"rawvideo", "RAW VIDEO"},
                              {"jpeg2000", "MJPEG"},         {"alias_pix", "ALIAS PIX"}};
    Names irregular;
    for (const auto& [id, name] : FormatNames()) {
        std::string shown;
        EXPECT_TRUE(TranslateFormatId(id, shown));
        if (shown != Testing::InUpperCase(id)) {
            irregular[id] = shown;
        }
    }
    EXPECT_EQ(irregular, exceptions);
}

TEST(TranslationUtilsTest, TranslateFormatId_OfEveryOtherTextLeavesTheNameAlone) {
    const Names names = FormatNames();
    for (const std::string& text : Testing::Probes()) {
        if (!names.contains(text)) {
            ExpectNoName(TranslateFormatId, text);
        }
    }
    ExpectNoName(TranslateFormatId, "mkv");
    ExpectNoName(TranslateFormatId, "jpeg");
    ExpectNoName(TranslateFormatId, "MP4");
}

TEST(TranslationUtilsTest, TranslateFormatId_NamesContainersOfTheVocabularyOnly) {
    const Names names = FormatNames();
    std::size_t named = 0;
    for (const std::string& container : Testing::AllContainerConstants()) {
        named += names.contains(container) ? 1 : 0;
    }
    EXPECT_EQ(named, 100U);
}

const Names& ShortNames() {
    static const Names names = {
        {"CODEC_ID_H264", "H264"},        {"CODEC_ID_H265", "HEVC"},        {"CODEC_ID_AV1", "AV1"},
        {"CODEC_ID_VP8", "VP8"},          {"CODEC_ID_VP9", "VP9"},          {"CODEC_ID_MPEG4", "MPEG4"},
        {"CODEC_ID_MPEG1VIDEO", "MPEG1"}, {"CODEC_ID_MPEG2VIDEO", "MPEG2"}, {"CODEC_ID_MJPEG", "MJPEG"},
        {"CODEC_ID_PRORES", "ProRes"},
    };
    return names;
}

TEST(TranslationUtilsTest, GetDisplayCodecName_IsTheShortNameOrTheText) {
    ASSERT_EQ(ShortNames().size(), 10U);
    std::size_t shortened = 0;
    for (const std::string& text : Testing::Probes()) {
        const auto name = ShortNames().find(text);
        EXPECT_EQ(GetDisplayCodecName(text), name != ShortNames().end() ? name->second : text);
        shortened += name != ShortNames().end() ? 1 : 0;
    }
    EXPECT_EQ(shortened, 10U);
    EXPECT_EQ(GetDisplayCodecName("CODEC_ID_AAC"), "CODEC_ID_AAC");
    EXPECT_EQ(GetDisplayCodecName("CODEC_ID_H265"), "HEVC");
}

TEST(TranslationUtilsTest, GetDisplayCodecName_TakesAPartOfALongerText) {
    constexpr std::string_view text = "CODEC_ID_H265,CODEC_ID_AV1";
    EXPECT_EQ(GetDisplayCodecName(text.substr(0, 13)), "HEVC");
    EXPECT_EQ(GetDisplayCodecName(text.substr(14)), "AV1");
    EXPECT_EQ(GetDisplayCodecName(text), "CODEC_ID_H265,CODEC_ID_AV1");
    EXPECT_EQ(GetDisplayCodecName(std::string_view()), "");
}

}  // namespace
}  // namespace Quenzo::Conf
