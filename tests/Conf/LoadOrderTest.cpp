// Covers the order of initialisation: a constant read by another unit's load-time code holds its full value. This unit
// copies constants into objects of its own at load, as any client's tables would; the tests look at the copies. Linked
// statically, with this unit before the library's or after it, the copies would be empty if the order were left to
// chance. The values are of all lengths, since a compiler may treat up to 15 characters, which fit into the string
// object itself, unlike longer ones.

#include <Conf/Interfaces/ImplNames.h>
#include <Conf/Interfaces/Vocabulary/AudioVocabulary.h>
#include <Conf/Interfaces/Vocabulary/CodecVocabulary.h>
#include <Conf/Interfaces/Vocabulary/ConstraintVocabulary.h>
#include <Conf/Interfaces/Vocabulary/FileVocabulary.h>
#include <Conf/Interfaces/Vocabulary/FormatVocabulary.h>
#include <Conf/Interfaces/Vocabulary/GraphVocabulary.h>
#include <Conf/Interfaces/Vocabulary/PresetVocabulary.h>
#include <Conf/Interfaces/Vocabulary/SubtitleVocabulary.h>
#include <Conf/Interfaces/Vocabulary/VideoVocabulary.h>
#include <gtest/gtest.h>
#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace Quenzo::Conf {
namespace {

namespace ImplNames = Quenzo::Proc::ImplNames;

// What the check warns of, code that runs at load, is what is tested here.
// NOLINTBEGIN(cert-err58-cpp)
const std::string metadataAtLoad = FormatVocabulary::TAG_METADATA;
const std::string quickTimeAtLoad = FileVocabulary::FORMAT_QUICKTIME;

struct Copy {
    std::string atLoad;
    std::string expected;
};

// Up to 15 characters.
const std::vector<Copy> shortCopies = {
    {FormatVocabulary::TAG_METADATA, "metadata"},
    {CodecVocabulary::CODEC_ID_NONE, "CODEC_ID_NONE"},
    {CodecVocabulary::TAG_BITRATE, "bitrate"},
    {VideoVocabulary::CODEC_ID_H264, "CODEC_ID_H264"},
    {VideoVocabulary::TAG_WIDTH, "width"},
    {AudioVocabulary::CODEC_ID_AAC, "CODEC_ID_AAC"},
    {AudioVocabulary::TAG_LAYOUT, "layout"},
    {SubtitleVocabulary::CODEC_ID_ASS, "CODEC_ID_ASS"},
    {SubtitleVocabulary::NATIVE_CHARSET_ENCODING, "UTF-8"},
    {FileVocabulary::FORMAT_MP4, "mp4"},
    {FileVocabulary::GROUP_ALL_IMAGES, "All images"},
    {PresetVocabulary::STREAM_TYPE_SUBTITLES_VIDEO, "subtitles_video"},
    {PresetVocabulary::KEY_FILTER_AUDIO_CODEC, "$$AUDIO_CODEC$$"},
    {GraphVocabulary::KEY_SOURCE, "source"},
    {ImplNames::FFMPEG, "FFMPEG_IMPL"},
};

// 16 to 22 characters.
const std::vector<Copy> longCopies = {
    {CodecVocabulary::TAG_CODEC_OPTIONS_ENCODE, "codec.options.encode"},
    {CodecVocabulary::CODEC_ID_FFMETADATA, "CODEC_ID_FFMETADATA"},
    {VideoVocabulary::TAG_USE_HW_CONTEXT, "use_hardware_context"},
    {VideoVocabulary::CODEC_ID_MPEG2VIDEO, "CODEC_ID_MPEG2VIDEO"},
    {AudioVocabulary::TAG_CH_LAYOUT_7POINT1_WIDE_BACK, "7POINT1_WIDE_BACK"},
    {AudioVocabulary::CODEC_ID_ADPCM_ZORK, "CODEC_ID_PCM_ZORK"},
    {SubtitleVocabulary::TAG_FORMAT_CODEC_SUBTITLE, "format_codec_subtitle"},
    {FileVocabulary::FORMAT_NIKON_RAW, "com.nikon.raw-image"},
    {PresetVocabulary::KEY_FILTER_SUBTITLE_CODEC, "$$SUBTITLE_CODEC$$"},
    {ConstraintVocabulary::DESCRIPTION_ID_EVEN_SIZE, "even-size-description"},
    {GraphVocabulary::MERGE_WITH_INDEX, "$$MERGE_WITH_INDEX$$"},
    {ImplNames::VIDEO_TOOLBOX_HW, "VIDEO_TOOLBOX_HW_IMPL"},
};

// More than 22 characters; the owners that are missing have no value of that length.
const std::vector<Copy> veryLongCopies = {
    {VideoVocabulary::TAG_COLOR_TRANSFER_FUNCTION, "color_transfer_function"},
    {VideoVocabulary::TAG_DISABLE_TRANSPARENCY, "disable_encoding_transparency"},
    {VideoVocabulary::TAG_MPEG4_PROFILE_ADVANCED_SCALABLE_TEXTURE, "advanced_scalable_texture"},
    {VideoVocabulary::CODEC_ID_MPEG2VIDEO_XVMC, "CODEC_ID_MPEG2VIDEO_XVMC"},
    {AudioVocabulary::CODEC_ID_PCM_S16LE_PLANAR, "CODEC_ID_PCM_S16LE_PLANAR"},
    {AudioVocabulary::CODEC_ID_ADPCM_EA_MAXIS_XA, "CODEC_ID_ADPCM_EA_MAXIS_XA"},
    {SubtitleVocabulary::CODEC_ID_HDMV_PGS_SUBTITLE, "CODEC_ID_HDMV_PGS_SUBTITLE"},
    {SubtitleVocabulary::CODEC_ID_HDMV_TEXT_SUBTITLE, "CODEC_ID_HDMV_TEXT_SUBTITLE"},
    {FileVocabulary::FORMAT_QUICKTIME, "mov,mp4,m4a,3gp,3g2,mj2"},
    {FileVocabulary::FORMAT_HASSELBLAD_3FR_RAW, "com.hasselblad.3fr-raw-image"},
    {FileVocabulary::TAG_MP4_ITUNES_COMPATIBLE_MODE, "mp4ITunesCompatibleMode"},
    {ImplNames::MEDIA_CODEC_NDK_OGL, "MEDIA_CODEC_NDK_OGL_IMPL"},
};

// A table made at load with constants as keys, like a catalogue: were they empty, one entry would be left of four.
const std::map<std::string, int> tableAtLoad = {
    {VideoVocabulary::CODEC_ID_VP9, 1},
    {AudioVocabulary::CODEC_ID_PCM_S16LE_PLANAR, 2},
    {SubtitleVocabulary::CODEC_ID_HDMV_PGS_SUBTITLE, 3},
    {FileVocabulary::FORMAT_QUICKTIME, 4},
};

// NOLINTEND(cert-err58-cpp)

void ExpectFullValues(const std::vector<Copy>& copies, std::size_t shortest, std::size_t longest) {
    for (const Copy& copy : copies) {
        EXPECT_EQ(copy.atLoad, copy.expected);
        EXPECT_GE(copy.expected.size(), shortest) << copy.expected;
        EXPECT_LE(copy.expected.size(), longest) << copy.expected;
    }
}

TEST(LoadOrderTest, SingleObjects_HoldTheFullValue) {
    EXPECT_EQ(metadataAtLoad, "metadata");
    EXPECT_EQ(quickTimeAtLoad, "mov,mp4,m4a,3gp,3g2,mj2");
}

TEST(LoadOrderTest, ValuesOfUpToFifteenCharacters_AreCopiedInFull) { ExpectFullValues(shortCopies, 1, 15); }

TEST(LoadOrderTest, ValuesOfSixteenToTwentyTwoCharacters_AreCopiedInFull) { ExpectFullValues(longCopies, 16, 22); }

TEST(LoadOrderTest, ValuesOfMoreThanTwentyTwoCharacters_AreCopiedInFull) {
    ExpectFullValues(veryLongCopies, 23, std::string::npos);
}

TEST(LoadOrderTest, TableKeyedByConstants_HasAllItsEntries) {
    const std::map<std::string, int> expected = {
        {"CODEC_ID_VP9", 1},
        {"CODEC_ID_PCM_S16LE_PLANAR", 2},
        {"CODEC_ID_HDMV_PGS_SUBTITLE", 3},
        {"mov,mp4,m4a,3gp,3g2,mj2", 4},
    };
    EXPECT_EQ(tableAtLoad, expected);
}

}  // namespace
}  // namespace Quenzo::Conf
