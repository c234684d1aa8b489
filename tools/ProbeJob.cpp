#include <tools/ProbeJob.h>

#include <tools/Files.h>
#include <tools/JobFile.h>
#include <tools/ProbeReader.h>

#include <Conf/Interfaces/BitrateCalculator.h>
#include <Conf/Interfaces/IFormatCodecSubtitle.h>
#include <Conf/Interfaces/IFormatCodecVideo.h>
#include <Conf/Interfaces/Stub.h>
#include <foundation/Throw.h>

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <vector>

namespace Quenzo::Tools {

namespace {

using Conf::IFormatCodec;
using Conf::IFormatCodecSubtitle;
using Conf::IFormatCodecVideo;
using Conf::IPreset;
using Conf::ITranscodingMetaGraph;
using Core::Property;

// Subtitles are of two kinds; the descriptions do not tell them apart, but the codecs do.
bool IsPictureSubtitle(const Property& tree) {
    const std::array<const std::string*, 4> codecs = {
        &IFormatCodecSubtitle::CODEC_ID_DVD_SUBTITLE, &IFormatCodecSubtitle::CODEC_ID_DVB_SUBTITLE,
        &IFormatCodecSubtitle::CODEC_ID_HDMV_PGS_SUBTITLE, &IFormatCodecSubtitle::CODEC_ID_XSUB};
    const auto codec = tree.FindChild(IFormatCodec::TAG_CODEC_ID);
    return codec != tree.end() && std::any_of(codecs.begin(), codecs.end(),
                                              [&codec](const std::string* id) { return *id == codec->GetString(); });
}

std::string StreamTypeOf(const IFormatCodec& description) {
    const bool isSubtitle = description.GetCodecType() == Conf::MediaType::SubtitlesText;
    return IPreset::PresetStreamTypeFormMediaType(isSubtitle && IsPictureSubtitle(description.GetProperty())
                                                      ? Conf::MediaType::SubtitlesVideo
                                                      : description.GetCodecType());
}

// Hands out a preset's streams: of each type the first, then the second, and so on.
class PresetStreams {
public:
    explicit PresetStreams(SP<const IPreset> preset) : preset_(std::move(preset)) {}

    // The next stream of that type, or null when there is none left.
    const Property* Next(const std::string& type) {
        std::vector<std::uint32_t> indices;
        preset_->GetStreamIndices(type, indices);
        const std::size_t next = taken_[type]++;
        return next < indices.size() ? &preset_->GetProperty()[IPreset::KEY_STREAMS][indices[next]] : nullptr;
    }

private:
    SP<const IPreset> preset_;
    std::map<std::string, std::size_t> taken_;
};

// A value of the preset's, or else of the stream's; null when neither has it.
const Property* FindValue(const Property& settings, const Property& stream, const std::string& key) {
    for (const Property* tree : {&settings, &stream}) {
        if (const auto child = tree->FindChild(key); child != tree->end()) {
            return &*child;
        }
    }
    return nullptr;
}

int QualityOf(const Property& settings) {
    const auto mode = settings.FindChild(IFormatCodec::TAG_BITRATE_MODE);
    const auto quality = settings.FindChild(IFormatCodec::TAG_QUALITY);
    const bool counts =
        mode != settings.end() && mode->GetString() == IFormatCodec::TAG_BITRATE_MODE_VBR && quality != settings.end();
    return counts ? static_cast<int>(quality->GetInt64()) : 0;
}

// The bit rate for the preset's codec: of the size and the rate that the preset asks for, or else of the stream's.
std::int64_t ProposeFor(const Property& settings, const Property& stream) {
    const auto number = [&](const std::string& key) {
        const Property* const value = FindValue(settings, stream, key);
        return value != nullptr ? value->GetInt64() : 0;
    };
    const Property* const rate = FindValue(settings, stream, IFormatCodecVideo::TAG_FPS);
    const auto framesPerSecond = rate != nullptr ? rate->GetRatio() : boost::rational<long long>(0);
    return Conf::GetDefaultVideoBitrate(settings[IFormatCodec::TAG_CODEC_ID].GetString(),
                                        number(IFormatCodecVideo::TAG_WIDTH), number(IFormatCodecVideo::TAG_HEIGHT),
                                        boost::rational_cast<double>(framesPerSecond), QualityOf(settings));
}

// The preset's settings, with a bit rate when it leaves that of video open.
Property Completed(Property settings, const ProbedStream& stream) {
    const bool isVideo = stream.description->GetCodecType() == Conf::MediaType::Video;
    const auto codec = settings.FindChild(IFormatCodec::TAG_CODEC_ID);
    const bool isOpen = settings.FindChild(IFormatCodec::TAG_BITRATE) == settings.end();
    if (isVideo && isOpen && codec != settings.end()) {
        const std::int64_t bitrate = ProposeFor(settings, stream.description->GetProperty());
        settings.SetChildT<long long>(IFormatCodec::TAG_BITRATE, bitrate);
        Note(fmt::format("stream {}: {} bits per second proposed", stream.index, bitrate));
    }
    return settings;
}

}  // namespace

ExitStatus MakeJobFromProbe(const ProbeJob& job) {
    const ProbedMedia media = ReadProbe(ReadWhole(job.probeFile), job.probeFile);
    const auto preset = LoadPreset(job.presetFile);
    const Property& file = media.file->GetProperty();
    const auto path = file.FindChild(Conf::IFormatFile::TAG_FILE_PATH);
    if (path == file.end()) {
        QUENZO_THROW(Failure(ExitStatus::Unreadable,
                             fmt::format("{} does not name the file that was probed", Quoted(job.probeFile))));
    }
    if (media.streams.empty()) {
        QUENZO_THROW(Failure(ExitStatus::No, fmt::format("{} has no stream to convert", Quoted(path->GetString()))));
    }
    const auto graph = ITranscodingMetaGraph::Create();
    const auto source = graph->AddNode(ITranscodingMetaGraph::MakeInFileDescription(path->GetString()));
    std::vector<ITranscodingMetaGraph::NodeId> nodes;
    for (const ProbedStream& stream : media.streams) {
        nodes.push_back(graph->AddNode(ITranscodingMetaGraph::MakeRawStreamDescription(stream.index)));
        graph->AddLink(source, nodes.back(), stream.description->GetProperty());
    }
    const auto target = graph->AddNode(DescribeOutput(preset, job.outputPath, job.losslessToDvd));
    for (const std::string& line : media.notMapped) {
        Note("not mapped: " + line);
    }
    PresetStreams settings(preset);
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const std::string type = StreamTypeOf(*media.streams[i].description);
        if (const Property* const next = settings.Next(type)) {
            graph->AddLink(nodes[i], target, Completed(*next, media.streams[i]));
        } else {
            NoteThatItLeadsNowhere(fmt::format("stream {} ({})", media.streams[i].index, type));
        }
    }
    PrintJob(*graph);
    return ExitStatus::Done;
}

}  // namespace Quenzo::Tools
