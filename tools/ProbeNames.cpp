#include <tools/ProbeNames.h>

#include <tools/Vocabulary.h>

#include <Conf/Interfaces/IFormatCodecAudio.h>
#include <Conf/Interfaces/IFormatCodecVideo.h>
#include <Conf/Interfaces/MediaTypeUtils.h>
#include <foundation/StringUtils.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <iterator>
#include <string_view>

namespace Quenzo::Tools {

namespace {

using Conf::ChannelLayout;
using Conf::ColorPrimaries;
using Conf::IFormatCodecAudio;
using Conf::IFormatCodecVideo;
using Conf::TransferFunction;
using Conf::YCbCrMatrix;

template <typename Value>
struct Named {
    std::string_view name;
    Value value;
};

template <typename Value, std::size_t N>
std::optional<Value> Find(const Named<Value> (&rows)[N], std::string_view name) {
    const auto* const found =
        std::find_if(std::begin(rows), std::end(rows), [name](const Named<Value>& row) { return row.name == name; });
    return found != std::end(rows) ? std::optional<Value>(found->value) : std::nullopt;
}

// All others are the codec id in lower case, without its prefix.
const Named<const std::string*> kCodecs[] = {
    {"adpcm_vima", &IFormatCodecAudio::CODEC_ID_ADPCM_VIMA},
    {"adpcm_zork", &IFormatCodecAudio::CODEC_ID_ADPCM_ZORK},
    {"alias_pix", &IFormatCodecVideo::CODEC_ID_PIX},
    {"hevc", &IFormatCodecVideo::CODEC_ID_H265},
    {"interplayvideo", &IFormatCodecVideo::CODEC_ID_INTERPLAY_VIDEO},
    {"sonicls", &IFormatCodecAudio::CODEC_ID_SONIC_LS},
};

constexpr Named<ColorPrimaries> kPrimaries[] = {
    {"bt709", ColorPrimaries::BT709},         {"bt470m", ColorPrimaries::BT470M},
    {"bt470bg", ColorPrimaries::BT470BG},     {"smpte170m", ColorPrimaries::SMPTE170M},
    {"smpte240m", ColorPrimaries::SMPTE240M}, {"film", ColorPrimaries::FILM},
    {"bt2020", ColorPrimaries::BT2020},       {"smpte428", ColorPrimaries::SMPTE428},
    {"smpte431", ColorPrimaries::SMPTE431},   {"smpte432", ColorPrimaries::SMPTE432},
    {"ebu3213", ColorPrimaries::JEDEC_P22},   {"jedec-p22", ColorPrimaries::JEDEC_P22},
};

constexpr Named<TransferFunction> kTransferFunctions[] = {
    {"bt709", TransferFunction::BT709},
    {"bt470m", TransferFunction::BT470M},
    {"bt470bg", TransferFunction::BT470BG},
    {"smpte170m", TransferFunction::SMPTE170M},
    {"smpte240m", TransferFunction::SMPTE240M},
    {"linear", TransferFunction::LINEAR},
    {"log100", TransferFunction::LOG100},
    {"log316", TransferFunction::LOG316},
    {"iec61966-2-4", TransferFunction::IEC61966_2_4},
    {"bt1361e", TransferFunction::BT1361},
    {"iec61966-2-1", TransferFunction::IEC61966_2_1},
    {"bt2020-10", TransferFunction::BT2020_10},
    {"bt2020-12", TransferFunction::BT2020_12},
    {"smpte2084", TransferFunction::SMPTE2084},
    {"smpte428", TransferFunction::SMPTE428},
    {"arib-std-b67", TransferFunction::ARIB_STD_B67},
};

constexpr Named<YCbCrMatrix> kMatrices[] = {
    {"gbr", YCbCrMatrix::IDENTITY},
    {"bt709", YCbCrMatrix::BT709},
    {"fcc", YCbCrMatrix::FCC},
    {"bt470bg", YCbCrMatrix::BT470BG},
    {"smpte170m", YCbCrMatrix::SMPTE170M},
    {"smpte240m", YCbCrMatrix::SMPTE240M},
    {"ycgco", YCbCrMatrix::YCGCO},
    {"bt2020nc", YCbCrMatrix::BT2020_NCL},
    {"bt2020c", YCbCrMatrix::BT2020_CL},
    {"smpte2085", YCbCrMatrix::SMPTE2085},
    {"chroma-derived-nc", YCbCrMatrix::CHROMATICITY_DERIVED_NCL},
    {"chroma-derived-c", YCbCrMatrix::CHROMATICITY_DERIVED_CL},
    {"ictcp", YCbCrMatrix::ICTCP},
};

// "Side" and "back" say where the surround channels are: a plain 5.1 has them at the back.
constexpr Named<ChannelLayout> kLayouts[] = {
    {"mono", ChannelLayout::MONO},
    {"stereo", ChannelLayout::STEREO},
    {"downmix", ChannelLayout::STEREO_DOWNMIX},
    {"2.1", ChannelLayout::_2POINT1},
    {"3.0", ChannelLayout::SURROUND},
    {"3.0(back)", ChannelLayout::_2_1},
    {"3.1", ChannelLayout::_3POINT1},
    {"4.0", ChannelLayout::_4POINT0},
    {"quad", ChannelLayout::QUAD},
    {"quad(side)", ChannelLayout::_2_2},
    {"4.1", ChannelLayout::_4POINT1},
    {"5.0", ChannelLayout::_5POINT0_BACK},
    {"5.0(side)", ChannelLayout::_5POINT0},
    {"5.1", ChannelLayout::_5POINT1_BACK},
    {"5.1(side)", ChannelLayout::_5POINT1},
    {"6.0", ChannelLayout::_6POINT0},
    {"6.0(front)", ChannelLayout::_6POINT0_FRONT},
    {"hexagonal", ChannelLayout::HEXAGONAL},
    {"6.1", ChannelLayout::_6POINT1},
    {"6.1(back)", ChannelLayout::_6POINT1_BACK},
    {"6.1(front)", ChannelLayout::_6POINT1_FRONT},
    {"7.0", ChannelLayout::_7POINT0},
    {"7.0(front)", ChannelLayout::_7POINT0_FRONT},
    {"7.1", ChannelLayout::_7POINT1},
    {"7.1(wide)", ChannelLayout::_7POINT1_WIDE_BACK},
    {"7.1(wide-side)", ChannelLayout::_7POINT1_WIDE},
    {"octagonal", ChannelLayout::OCTAGONAL},
    {"hexadecagonal", ChannelLayout::HEXADECAGONAL},
};

struct ProfileRow {
    const std::string& codecId;
    std::string_view name;
    const std::string& profile;
};

const ProfileRow kProfiles[] = {
    {IFormatCodecVideo::CODEC_ID_H264, "Baseline", IFormatCodecVideo::TAG_X264_PROFILE_BASELINE},
    {IFormatCodecVideo::CODEC_ID_H264, "Constrained Baseline", IFormatCodecVideo::TAG_X264_PROFILE_BASELINE},
    {IFormatCodecVideo::CODEC_ID_H264, "Main", IFormatCodecVideo::TAG_X264_PROFILE_MAIN},
    {IFormatCodecVideo::CODEC_ID_H264, "Extended", IFormatCodecVideo::TAG_X264_PROFILE_EXTENDED},
    {IFormatCodecVideo::CODEC_ID_H264, "High", IFormatCodecVideo::TAG_X264_PROFILE_HIGH},
    {IFormatCodecVideo::CODEC_ID_H264, "High 10", IFormatCodecVideo::TAG_X264_PROFILE_HIGH10},
    {IFormatCodecVideo::CODEC_ID_H264, "High 4:2:2", IFormatCodecVideo::TAG_X264_PROFILE_HIGH422},
    {IFormatCodecVideo::CODEC_ID_H264, "High 4:4:4 Predictive", IFormatCodecVideo::TAG_X264_PROFILE_HIGH444},
    {IFormatCodecVideo::CODEC_ID_H265, "Main", IFormatCodecVideo::TAG_X265_PROFILE_MAIN},
    {IFormatCodecVideo::CODEC_ID_H265, "Main 10", IFormatCodecVideo::TAG_X265_PROFILE_MAIN10},
    {IFormatCodecVideo::CODEC_ID_MPEG2VIDEO, "4:2:2", IFormatCodecVideo::TAG_MPEG2_PROFILE_422},
    {IFormatCodecVideo::CODEC_ID_MPEG2VIDEO, "High", IFormatCodecVideo::TAG_MPEG2_PROFILE_HIGH},
    {IFormatCodecVideo::CODEC_ID_MPEG2VIDEO, "Main", IFormatCodecVideo::TAG_MPEG2_PROFILE_MAIN},
    {IFormatCodecVideo::CODEC_ID_MPEG2VIDEO, "Simple", IFormatCodecVideo::TAG_MPEG2_PROFILE_SIMPLE},
    {IFormatCodecVideo::CODEC_ID_MPEG4, "Simple Profile", IFormatCodecVideo::TAG_MPEG4_PROFILE_SIMPLE},
    {IFormatCodecVideo::CODEC_ID_MPEG4, "Advanced Simple Profile",
     IFormatCodecVideo::TAG_MPEG4_PROFILE_ADVANCED_SIMPLE},
    {IFormatCodecVideo::CODEC_ID_PRORES, "Proxy", IFormatCodecVideo::TAG_PRORES_PROFILE_422PROXY},
    {IFormatCodecVideo::CODEC_ID_PRORES, "LT", IFormatCodecVideo::TAG_PRORES_PROFILE_422LT},
    {IFormatCodecVideo::CODEC_ID_PRORES, "Standard", IFormatCodecVideo::TAG_PRORES_PROFILE_422},
    {IFormatCodecVideo::CODEC_ID_PRORES, "HQ", IFormatCodecVideo::TAG_PRORES_PROFILE_422HQ},
    {IFormatCodecVideo::CODEC_ID_PRORES, "4444", IFormatCodecVideo::TAG_PRORES_PROFILE_4444},
    {IFormatCodecVideo::CODEC_ID_PRORES, "XQ", IFormatCodecVideo::TAG_PRORES_PROFILE_4444XQ},
    {IFormatCodecVideo::CODEC_ID_VP9, "Profile 0", IFormatCodecVideo::TAG_VP9_PROFILE_0},
    {IFormatCodecVideo::CODEC_ID_VP9, "Profile 1", IFormatCodecVideo::TAG_VP9_PROFILE_1},
    {IFormatCodecVideo::CODEC_ID_VP9, "Profile 2", IFormatCodecVideo::TAG_VP9_PROFILE_2},
    {IFormatCodecVideo::CODEC_ID_VP9, "Profile 3", IFormatCodecVideo::TAG_VP9_PROFILE_3},
    {IFormatCodecVideo::CODEC_ID_AV1, "Main", IFormatCodecVideo::TAG_AV1_PROFILE_MAIN},
    {IFormatCodecVideo::CODEC_ID_AV1, "High", IFormatCodecVideo::TAG_AV1_PROFILE_HIGH},
    {IFormatCodecVideo::CODEC_ID_AV1, "Professional", IFormatCodecVideo::TAG_AV1_PROFILE_PROFESSIONAL},
    {IFormatCodecAudio::CODEC_ID_AAC, "Main", IFormatCodecAudio::TAG_AAC_PROFILE_MAIN},
    {IFormatCodecAudio::CODEC_ID_AAC, "LC", IFormatCodecAudio::TAG_AAC_PROFILE_LOW},
    {IFormatCodecAudio::CODEC_ID_AAC, "SSR", IFormatCodecAudio::TAG_AAC_PROFILE_SSR},
    {IFormatCodecAudio::CODEC_ID_AAC, "LTP", IFormatCodecAudio::TAG_AAC_PROFILE_LTP},
    {IFormatCodecAudio::CODEC_ID_AAC, "HE-AAC", IFormatCodecAudio::TAG_AAC_PROFILE_HE},
    {IFormatCodecAudio::CODEC_ID_AAC, "HE-AACv2", IFormatCodecAudio::TAG_AAC_PROFILE_HE_V2},
    {IFormatCodecAudio::CODEC_ID_AAC, "LD", IFormatCodecAudio::TAG_AAC_PROFILE_LD},
    {IFormatCodecAudio::CODEC_ID_AAC, "ELD", IFormatCodecAudio::TAG_AAC_PROFILE_ELD},
};

std::string Capitals(std::string_view text) {
    std::string capitals(text);
    std::transform(capitals.begin(), capitals.end(), capitals.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return capitals;
}

bool IsFormat(const std::string& name) { return !MeaningOfFormat(name).empty(); }

}  // namespace

std::optional<std::string> CodecOfProbe(const std::string& name) {
    if (const auto other = Find(kCodecs, name)) {
        return **other;
    }
    const std::string id = "CODEC_ID_" + Capitals(name);
    return MeaningOfCodec(id).empty() ? std::nullopt : std::optional(id);
}

std::optional<std::string> ProfileOfProbe(const std::string& codecId, const std::string& name) {
    const auto* const found = std::find_if(std::begin(kProfiles), std::end(kProfiles), [&](const ProfileRow& row) {
        return row.codecId == codecId && row.name == name;
    });
    return found != std::end(kProfiles) ? std::optional(found->profile) : std::nullopt;
}

std::optional<PixFmt> PixelFormatOfProbe(const std::string& name) {
    std::string capitals = Capitals(name == "gray" ? "gray8" : name);
    // The library's formats are those of little-endian machines and do not say so, except where they know both.
    if (!PixFmtDescription::IsSupported(capitals) && capitals.ends_with("LE")) {
        capitals.resize(capitals.size() - 2);
    }
    return PixFmtDescription::IsSupported(capitals) ? std::optional(PixFmtDescription::Find(capitals).id)
                                                    : std::nullopt;
}

std::optional<PixelColorRange> ColorRangeOfProbe(const std::string& name) {
    static constexpr Named<PixelColorRange> ranges[] = {{"tv", PixelColorRange::Limited},
                                                        {"pc", PixelColorRange::Full}};
    return Find(ranges, name);
}

std::optional<ColorPrimaries> PrimariesOfProbe(const std::string& name) { return Find(kPrimaries, name); }

std::optional<TransferFunction> TransferOfProbe(const std::string& name) { return Find(kTransferFunctions, name); }

std::optional<YCbCrMatrix> MatrixOfProbe(const std::string& name) { return Find(kMatrices, name); }

std::optional<ChannelLayout> LayoutOfProbe(const std::string& name) { return Find(kLayouts, name); }

std::optional<Conf::SampleFormats> SampleFormatOfProbe(const std::string& name) {
    const std::string textId = "SAMPLE_FMT_" + Capitals(name);
    for (const Conf::SampleFmtRecord& row : Conf::SampleFmtRecord::EnumerateValid()) {
        if (row.textId == textId) {
            return row.format;
        }
    }
    return std::nullopt;
}

std::optional<std::string> ContainerOfProbe(const std::string& demuxer, const std::string& fileName) {
    std::vector<std::string> names;
    SplitString(names, demuxer, ',');
    const std::string extension = std::filesystem::path(fileName).extension().string();
    const auto& byExtension = Conf::GetFormatsByExtension(extension.empty() ? extension : extension.substr(1));
    for (const std::string& name : names) {
        if (std::find(byExtension.begin(), byExtension.end(), name) != byExtension.end()) {
            return name;
        }
    }
    // The demuxers of single pictures are named after how they read, not what.
    const bool isOfPictures = demuxer == "image2" || demuxer.ends_with("_pipe");
    if (isOfPictures && !byExtension.empty()) {
        return byExtension.front();
    }
    if (IsFormat(demuxer)) {
        return demuxer;
    }
    const auto known = std::find_if(names.begin(), names.end(), IsFormat);
    return known != names.end() ? std::optional(*known) : std::nullopt;
}

}  // namespace Quenzo::Tools
