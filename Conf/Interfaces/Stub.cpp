#include <Conf/Interfaces/Stub.h>

#include <Conf/Interfaces/CodecTable.h>
#include <Conf/Interfaces/Exceptions.h>
#include <Conf/Interfaces/FixedText.h>
#include <Conf/Interfaces/FormatTable.h>
#include <Conf/Interfaces/IPreset.h>
#include <Conf/Interfaces/Kept.h>
#include <Conf/Interfaces/TextIndex.h>
#include <Conf/Interfaces/Vocabulary/Texts.h>
#include <foundation/Throw.h>

#include <fmt/compile.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <ostream>
#include <stdexcept>

namespace Quenzo::Conf {

namespace {

using Detail::AudioText;
using Detail::CodecKind;
using Detail::CodecRow;
using Detail::CodecText;
using Detail::FileText;
using Detail::FormatClass;
using Detail::FormatRow;
using Detail::ImplText;
using Detail::Keep;
using Detail::TextIndex;
using Detail::TextList;
using Detail::VideoText;
using Strings = std::vector<std::string>;

// Room for any identifier in the lists.
using Text = Detail::FixedText<28>;

constexpr auto kHeifFormats =
    std::to_array<Text>({FileText::FORMAT_HEIF, FileText::FORMAT_HEIC, FileText::FORMAT_HEICS});

constexpr auto kAudioContainers = std::to_array<Text>({
    FileText::FORMAT_MP3,  FileText::FORMAT_AAC, FileText::FORMAT_AC3, FileText::FORMAT_ADX,  FileText::FORMAT_AIFF,
    FileText::FORMAT_APE,  FileText::FORMAT_AU,  FileText::FORMAT_DTS, FileText::FORMAT_FLAC, FileText::FORMAT_OGG,
    FileText::FORMAT_OPUS, FileText::FORMAT_VOC, FileText::FORMAT_WAV, FileText::FORMAT_WMA,  FileText::FORMAT_M4A,
    FileText::FORMAT_M4B,  FileText::FORMAT_M4R, FileText::FORMAT_MP2, FileText::FORMAT_MKA,  FileText::FORMAT_F4A,
});

constexpr auto kTextSubtitleContainers =
    std::to_array<Text>({FileText::FORMAT_ASS, FileText::FORMAT_SSA, FileText::FORMAT_SRT});

constexpr auto kDisabledDecoders = std::to_array<Text>(
    {VideoText::CODEC_ID_H265, AudioText::CODEC_ID_EAC3, AudioText::CODEC_ID_AMR_NB, AudioText::CODEC_ID_AMR_WB});

constexpr auto kDisabledEncoders =
    std::to_array<Text>({VideoText::CODEC_ID_H265, AudioText::CODEC_ID_AMR_NB, AudioText::CODEC_ID_AMR_WB,
                         AudioText::CODEC_ID_EAC3, AudioText::CODEC_ID_DTS, VideoText::CODEC_ID_FFV1});

constexpr auto kBlackListed = std::to_array<Text>({AudioText::CODEC_ID_TRUEHD, AudioText::CODEC_ID_MLP});

constexpr auto kMuxers = std::to_array<Text>({ImplText::FFMPEG, ImplText::LIBHEIF});

constexpr auto kParsers = std::to_array<Text>({ImplText::FFMPEG, ImplText::LIBHEIF, ImplText::LIBRAW, ImplText::APPLE});

constexpr auto kDecoders =
    std::to_array<Text>({ImplText::FFMPEG, ImplText::FFMPEG_FDK, ImplText::NVDEC, ImplText::DIRECTX});

constexpr auto kEncoders =
    std::to_array<Text>({ImplText::AMF, ImplText::FFMPEG, ImplText::NVENC, ImplText::QSV, ImplText::DIRECTX});

constexpr auto kImplementations = std::to_array<Text>({
    ImplText::AMF,
    ImplText::FFMPEG,
    ImplText::FFMPEG_FDK,
    ImplText::QSV,
    ImplText::NVENC,
    ImplText::NVDEC,
    ImplText::MEDIA_CODEC,
    ImplText::MEDIA_CODEC_OGL,
    ImplText::MEDIA_CODEC_NDK,
    ImplText::MEDIA_CODEC_NDK_OGL,
    ImplText::LIBRAW,
    ImplText::VIDEO_TOOLBOX_HW,
    ImplText::VIDEO_TOOLBOX_SW,
    ImplText::AUDIO_TOOLBOX,
    ImplText::MEDIA_FOUNDATION,
    ImplText::DIRECTX,
});

constexpr auto kProprietaryCodecs = std::to_array<Text>({
    VideoText::CODEC_ID_H263,       VideoText::CODEC_ID_H264,       VideoText::CODEC_ID_H265,
    VideoText::CODEC_ID_MPEG1VIDEO, VideoText::CODEC_ID_MPEG2VIDEO, VideoText::CODEC_ID_MPEG2VIDEO_XVMC,
    VideoText::CODEC_ID_MPEG4,      VideoText::CODEC_ID_MSMPEG4V1,  VideoText::CODEC_ID_MSMPEG4V2,
    VideoText::CODEC_ID_MSMPEG4V3,  AudioText::CODEC_ID_AAC,        AudioText::CODEC_ID_AAC_LATM,
    AudioText::CODEC_ID_AC3,        AudioText::CODEC_ID_AMR_NB,     AudioText::CODEC_ID_AMR_WB,
    AudioText::CODEC_ID_ATRAC3,     AudioText::CODEC_ID_ATRAC3P,    AudioText::CODEC_ID_EAC3,
    AudioText::CODEC_ID_DTS,        AudioText::CODEC_ID_MP1,        AudioText::CODEC_ID_MP2,
});

// Uncompressed audio has the bit rate that its format gives it. Unsigned 16-bit big-endian is left out on purpose, as
// are the companded, planar and disc variants: presets in use set a bit rate for them.
constexpr auto kCodecsWithoutBitrate = std::to_array<Text>({
    AudioText::CODEC_ID_PCM_U8,
    AudioText::CODEC_ID_PCM_S8,
    AudioText::CODEC_ID_PCM_U16LE,
    AudioText::CODEC_ID_PCM_S16BE,
    AudioText::CODEC_ID_PCM_S16LE,
    AudioText::CODEC_ID_PCM_U32BE,
    AudioText::CODEC_ID_PCM_U32LE,
    AudioText::CODEC_ID_PCM_S24BE,
    AudioText::CODEC_ID_PCM_S24LE,
    AudioText::CODEC_ID_PCM_S32BE,
    AudioText::CODEC_ID_PCM_S32LE,
    AudioText::CODEC_ID_PCM_U24BE,
    AudioText::CODEC_ID_PCM_U24LE,
    AudioText::CODEC_ID_FLAC,
    AudioText::CODEC_ID_ALAC,
});

struct ShortName {
    Detail::CodecId codecId;
    Detail::FixedText<6> name;
};

constexpr auto kShortNames = std::to_array<ShortName>({
    {VideoText::CODEC_ID_H264, "H264"},
    {VideoText::CODEC_ID_H265, "HEVC"},
    {VideoText::CODEC_ID_AV1, "AV1"},
    {VideoText::CODEC_ID_VP8, "VP8"},
    {VideoText::CODEC_ID_VP9, "VP9"},
    {VideoText::CODEC_ID_MPEG4, "MPEG4"},
    {VideoText::CODEC_ID_MPEG1VIDEO, "MPEG1"},
    {VideoText::CODEC_ID_MPEG2VIDEO, "MPEG2"},
    {VideoText::CODEC_ID_MJPEG, "MJPEG"},
    {VideoText::CODEC_ID_PRORES, "ProRes"},
});

template <std::size_t N>
Strings ToStrings(const std::array<Text, N>& texts) {
    return {texts.begin(), texts.end()};
}

void AppendListed(Strings& codecs, CodecKind kind) {
    for (const CodecRow& row : Detail::kCodecs) {
        if (row.kind == kind && row.catalogue == Detail::Listed) {
            codecs.emplace_back(row.id);
        }
    }
}

Strings ListedCodecs(CodecKind kind) {
    Strings codecs;
    AppendListed(codecs, kind);
    return codecs;
}

Strings ListedCodecsAndNone(CodecKind kind) {
    Strings codecs = ListedCodecs(kind);
    codecs.emplace_back(CodecText::CODEC_ID_NONE);
    return codecs;
}

Strings AllCodecIds() {
    Strings codecs = GetAllVideoCodecs();
    codecs.insert(codecs.end(), GetAllAudioCodecs().begin(), GetAllAudioCodecs().end());
    codecs.insert(codecs.end(), GetAllSubtitleCodecs().begin(), GetAllSubtitleCodecs().end());
    AppendListed(codecs, CodecKind::Other);
    return codecs;
}

Strings RawFormats() {
    Strings formats;
    for (const FormatRow& row : Detail::kFormats) {
        if (row.kind == FormatClass::Raw) {
            formats.emplace_back(row.id);
        }
    }
    return formats;
}

std::unordered_set<std::string> ImageContainers(bool animated) {
    std::unordered_set<std::string> containers;
    for (const FormatRow& row : Detail::kFormats) {
        if (row.kind == FormatClass::Picture || (animated && row.kind == FormatClass::Animation)) {
            containers.emplace(row.id);
        }
    }
    return containers;
}

std::vector<std::pair<std::string, std::string>> FormatExtensions() {
    std::vector<std::pair<std::string, std::string>> pairs;
    pairs.reserve(Detail::kFormatExtensions.size());
    for (const Detail::FormatExtension& row : Detail::kFormatExtensions) {
        pairs.emplace_back(row.format, row.extension);
    }
    return pairs;
}

bool IsListed(const std::string& codecId, CodecKind kind) {
    const CodecRow* const row = Detail::FindCodec(codecId);
    return row != nullptr && row->kind == kind && row->catalogue == Detail::Listed;
}

bool HasOnlyStreamsOf(const SP<const IPreset>& preset, const std::string& streamType) {
    if (preset == nullptr) {
        QUENZO_THROW(std::invalid_argument("preset is NULL"));
    }
    std::vector<std::uint32_t> indices;
    preset->GetStreamIndices(streamType, indices);
    return !indices.empty() && indices.size() == preset->GetStreamCount();
}

}  // namespace

const Strings& GetAllVideoCodecs() {
    static const Strings& list = Keep(ListedCodecsAndNone(CodecKind::Video));
    return list;
}

const Strings& GetAllAudioCodecs() {
    static const Strings& list = Keep(ListedCodecsAndNone(CodecKind::Audio));
    return list;
}

const Strings& GetAllSubtitleCodecs() {
    static const Strings& list = Keep(ListedCodecs(CodecKind::Subtitle));
    return list;
}

const Strings& GetAllCodecIds() {
    static const Strings& list = Keep(AllCodecIds());
    return list;
}

const Strings& GetRAWImageFormatList() {
    static const Strings& list = Keep(RawFormats());
    return list;
}

const Strings& GetHEIFImageFormatList() {
    static const Strings& list = Keep(ToStrings(kHeifFormats));
    return list;
}

const Strings& GetQZPFormatList() {
    static const Strings& list = Keep(Strings{std::string(FileText::FORMAT_QZP_1_0)});
    return list;
}

const Strings& GetCDFormatList() {
    static const Strings& list = Keep(Strings{std::string(FileText::FORMAT_CDA)});
    return list;
}

const Strings& GetAudioContainerList() {
    static const Strings& list = Keep(ToStrings(kAudioContainers));
    return list;
}

const Strings& GetTextSubtitleContainerList() {
    static const Strings& list = Keep(ToStrings(kTextSubtitleContainers));
    return list;
}

const Strings& GetDisabledFormatParserList() {
    static const Strings& list = Keep(Strings());
    return list;
}

const Strings& GetDisabledFormatMuxerList() {
    static const Strings& list = Keep(Strings());
    return list;
}

const Strings& GetDisabledDecoderList() {
    static const Strings& list = Keep(ToStrings(kDisabledDecoders));
    return list;
}

const Strings& GetDisabledEncoderList() {
    static const Strings& list = Keep(ToStrings(kDisabledEncoders));
    return list;
}

const Strings& GetBlackListedEncoders() {
    static const Strings& list = Keep(ToStrings(kBlackListed));
    return list;
}

const Strings& GetBlackListedDecoders() {
    static const Strings& list = Keep(ToStrings(kBlackListed));
    return list;
}

const Strings& GetExternalDecoderList() {
    static const Strings& list = Keep(Strings());
    return list;
}

const Strings& GetExternalEncoderList() { return GetExternalDecoderList(); }

const Strings& GetMuxerImplList() {
    static const Strings& list = Keep(ToStrings(kMuxers));
    return list;
}

const Strings& GetParserImplList() {
    static const Strings& list = Keep(ToStrings(kParsers));
    return list;
}

const Strings& GetDecoderImplList() {
    static const Strings& list = Keep(ToStrings(kDecoders));
    return list;
}

const Strings& GetEncoderImplList() {
    static const Strings& list = Keep(ToStrings(kEncoders));
    return list;
}

const Strings& GetAllImplList() {
    static const Strings& list = Keep(ToStrings(kImplementations));
    return list;
}

const Strings& GetProprietaryCodecs() {
    static const Strings& list = Keep(ToStrings(kProprietaryCodecs));
    return list;
}

const std::unordered_set<std::string>& GetImageContainerSet(AnimatedImages animated) {
    if (animated == AnimatedImages::Include) {
        static const std::unordered_set<std::string>& withAnimations = Keep(ImageContainers(true));
        return withAnimations;
    }
    static const std::unordered_set<std::string>& still = Keep(ImageContainers(false));
    return still;
}

const std::vector<std::pair<std::string, std::string>>& GetFormatExtensionList() {
    static const std::vector<std::pair<std::string, std::string>>& list = Keep(FormatExtensions());
    return list;
}

bool IsVideoCodec(const std::string& codecId) {
    return IsListed(codecId, CodecKind::Video) || codecId == CodecText::CODEC_ID_NONE;
}

bool IsAudioCodec(const std::string& codecId) {
    return IsListed(codecId, CodecKind::Audio) || codecId == CodecText::CODEC_ID_NONE;
}

bool IsSubtitleCodec(const std::string& codecId) { return IsListed(codecId, CodecKind::Subtitle); }

bool IsAudioContainer(const std::string& container) {
    static constexpr TextIndex<TextList<kAudioContainers>> index;
    return index.Contains(container);
}

bool IsTextSubtitleContainer(const std::string& container) {
    static constexpr TextIndex<TextList<kTextSubtitleContainers>> index;
    return index.Contains(container);
}

bool IsProprietaryCodec(const std::string& codecId) {
    static constexpr TextIndex<TextList<kProprietaryCodecs>> index;
    return index.Contains(codecId);
}

bool IsExternalDecoder(const std::string& codecId) {
    const Strings& list = GetExternalDecoderList();
    return std::find(list.begin(), list.end(), codecId) != list.end();
}

bool IsExternalEncoder(const std::string& codecId) { return IsExternalDecoder(codecId); }

bool IsImageContainer(const std::string& container, AnimatedImages animated) {
    const FormatRow* const row = Detail::FindFormat(container);
    if (row == nullptr) {
        return false;
    }
    switch (row->kind) {
        case FormatClass::Picture:
        case FormatClass::Raw: return true;
        case FormatClass::Animation: return animated == AnimatedImages::Include;
        case FormatClass::Other: return false;
    }
    return false;
}

bool IsAudioBitrateRequired(const std::string& codecId) {
    static constexpr TextIndex<TextList<kCodecsWithoutBitrate>> index;
    if (index.Contains(codecId)) {
        return false;
    }
    if (!IsAudioCodec(codecId)) {
        QUENZO_THROW(FormatException() << Exception::TagDescription(
                         fmt::format(FMT_COMPILE("Provided audio codec id is not found in list:{}"), codecId)));
    }
    return true;
}

std::string GetDisplayCodecName(std::string_view codecId) {
    const auto* const found = std::find_if(kShortNames.begin(), kShortNames.end(),
                                           [codecId](const ShortName& row) { return row.codecId == codecId; });
    return std::string(found != kShortNames.end() ? std::string_view(found->name) : codecId);
}

bool IsAudioOnlyPreset(const SP<const IPreset>& preset) { return HasOnlyStreamsOf(preset, IPreset::STREAM_TYPE_AUDIO); }

bool IsVideoOnlyPreset(const SP<const IPreset>& preset) { return HasOnlyStreamsOf(preset, IPreset::STREAM_TYPE_VIDEO); }

std::ostream& operator<<(std::ostream& stream, const Strings& catalogue) {
    const char* separator = "";
    for (const std::string& entry : catalogue) {
        stream << separator << entry;
        separator = ", ";
    }
    return stream;
}

}  // namespace Quenzo::Conf
