#include <tools/ProbeStreams.h>

#include <tools/Failure.h>
#include <tools/ProbeNames.h>

#include <Conf/Interfaces/DisplayMatrix.h>
#include <Conf/Interfaces/IFormatCodecAudio.h>
#include <Conf/Interfaces/IFormatCodecSubtitle.h>
#include <Conf/Interfaces/IFormatCodecVideo.h>
#include <Conf/Interfaces/Stub.h>
#include <foundation/StringUtils.h>

#include <boost/rational.hpp>

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <functional>
#include <iterator>
#include <optional>
#include <string_view>

namespace Quenzo::Tools {

namespace {

using Conf::DisplayMatrix;
using Conf::IFormatCodec;
using Conf::IFormatCodecAudio;
using Conf::IFormatCodecSubtitle;
using Conf::IFormatCodecVideo;
using Core::Property;
using Ratio = boost::rational<long long>;

// Two numbers with a sign between; nothing when they are no such text or the second is 0.
std::optional<Ratio> ParseRatio(const std::string& text, char sign) {
    const std::size_t at = text.find(sign);
    std::int32_t numerator = 0;
    std::int32_t denominator = 0;
    if (at == std::string::npos || !ToNumber(std::string_view(text).substr(0, at), numerator) ||
        !ToNumber(std::string_view(text).substr(at + 1), denominator) || denominator == 0) {
        return std::nullopt;
    }
    return Ratio(numerator, denominator);
}

// Seconds with six decimals, exactly.
std::optional<Ratio> ParseSeconds(const std::string& text) {
    const std::size_t point = text.find('.');
    std::int64_t seconds = 0;
    std::uint32_t millionths = 0;
    if (point == std::string::npos || text.size() - point != 7 || text.starts_with('-') ||
        !ToNumber(std::string_view(text).substr(0, point), seconds) || seconds > 1'000'000'000'000 ||
        !ToNumber(std::string_view(text).substr(point + 1), millionths)) {
        return std::nullopt;
    }
    return Ratio(seconds * 1'000'000 + millionths, 1'000'000);
}

// "\n00000000:  0  65536  0\n00000001: ...": a line for each row, its number in front.
std::optional<DisplayMatrix> ParseMatrix(const std::string& text) {
    std::vector<std::string> lines;
    SplitString(lines, text, '\n');
    DisplayMatrix matrix;
    std::size_t count = 0;
    for (const std::string& line : lines) {
        std::vector<std::string> words;
        SplitString(words, line.substr(std::min(line.find(':'), line.size() - 1) + 1), ' ');
        for (const std::string& word : words) {
            if (!word.empty() && (count == matrix.m.size() || !ToNumber(word, matrix.m[count++]))) {
                return std::nullopt;
            }
        }
    }
    return count == matrix.m.size() ? std::optional(matrix) : std::nullopt;
}

// What follows from other members, or only a decoder needs.
bool FollowsFromOthers(const std::string& member) {
    static constexpr std::string_view names[] = {
        "index",           "codec_long_name", "codec_type",           "codec_tag", "coded_width",
        "coded_height",    "has_b_frames",    "display_aspect_ratio", "refs",      "is_avc",
        "nal_length_size", "start_pts",       "duration_ts",          "nb_frames", "r_frame_rate",
        "extradata_size",  "channels",        "bits_per_sample",      "id",
    };
    return std::find(std::begin(names), std::end(names), member) != std::end(names);
}

// A value that says that there is nothing to say.
bool IsNothing(const std::string& value) {
    static constexpr std::string_view values[] = {"", "0", "0.000000", "unknown", "N/A", "0/0", "-99", "false"};
    return std::find(std::begin(values), std::end(values), value) != std::end(values);
}

// Describes one stream: each member of ffprobe's that has a place goes there, and every other is collected.
class StreamMapper {
public:
    StreamMapper(const Members& stream, Property& tree, NotMapped& notMapped)
        : stream_(stream), tree_(tree), notMapped_(notMapped) {}

    // Calls `take` for each member with a value; it says whether there was a place for it.
    void Map(const std::function<bool(const std::string& name, const std::string& value)>& take) {
        stream_.ForEach([&](const std::string& name, const std::string& value) {
            const bool isNothing = IsNothing(value) && name != "profile";
            if (!isNothing && !FollowsFromOthers(name) && !TakeCommon(name, value) && !take(name, value)) {
                notMapped_.Add(name, value);
            }
        });
        stream_.Object("disposition").ForEach([&](const std::string& name, const std::string& value) {
            const bool hasPlace = name == "default" || name == "attached_pic" || name == "still_image";
            if (value == "1" && !hasPlace) {
                notMapped_.Add("disposition", name);
            }
        });
    }

    bool HasDisposition(const char* name) const { return stream_.Object("disposition").Text(name) == "1"; }

    template <typename T>
    bool Set(const std::string& key, const std::optional<T>& value) {
        if (value) {
            tree_.SetChildT<T>(key, *value);
        }
        return value.has_value();
    }

    bool SetNumber(const std::string& key, const std::string& text) {
        long long number = 0;
        return ToNumber(text, number) && Set(key, std::optional(number));
    }

private:
    bool TakeCommon(const std::string& name, const std::string& value) {
        if (name == "codec_name") {
            return Set(IFormatCodec::TAG_CODEC_ID, CodecOfProbe(value));
        }
        if (name == "codec_tag_string") {
            return value.starts_with('[') || Set(IFormatCodec::TAG_FOURCC, std::optional(value));
        }
        if (name == "profile") {
            const std::string codec = CodecOfProbe(stream_.Text("codec_name").value_or("")).value_or("");
            return Set(IFormatCodec::TAG_PROFILE, ProfileOfProbe(codec, value));
        }
        if (name == "bit_rate") {
            return SetNumber(IFormatCodec::TAG_BITRATE, value);
        }
        if (name == "time_base") {
            return Set(IFormatCodec::TAG_STREAM_TIMEBASE, ParseRatio(value, '/'));
        }
        return name == "duration" && Set(IFormatCodec::TAG_ORIGINAL_DURATION, ParseSeconds(value));
    }

    const Members& stream_;
    Property& tree_;
    NotMapped& notMapped_;
};

// The tags: the language has a place in the metadata, all others go into the stream's own.
void MapTags(const Members& stream, const SP<IFormatCodec>& description) {
    Property metadata = description->GetMetadata();
    Property ofStream = description->GetStreamMetadata();
    stream.Object("tags").ForEach([&](const std::string& name, const std::string& value) {
        const bool isLanguage = name == IFormatCodec::TAG_LANGUAGE;
        (isLanguage ? metadata : ofStream).SetChildT<std::string>(name, value);
    });
    description->SetMetadata(metadata);
    description->SetStreamMetadata(ofStream);
}

// The three colour characteristics go together: all that a description takes, or none.
void MapColour(const Members& stream, const SP<IFormatCodecVideo>& video, NotMapped& notMapped) {
    const auto text = [&stream](const char* name) { return stream.Text(name).value_or("unknown"); };
    const std::string primaries = text("color_primaries");
    const std::string transfer = text("color_transfer");
    const std::string matrix = text("color_space");
    video->SetColorSpace({PrimariesOfProbe(primaries).value_or(Conf::ColorPrimaries::UNSPECIFIED),
                          TransferOfProbe(transfer).value_or(Conf::TransferFunction::UNSPECIFIED),
                          MatrixOfProbe(matrix).value_or(Conf::YCbCrMatrix::UNSPECIFIED)});
    const bool isStored = video->GetColorPrimaries() != Conf::ColorPrimaries::UNSPECIFIED;
    if (!isStored && !(IsNothing(primaries) && IsNothing(transfer) && IsNothing(matrix))) {
        notMapped.Add("colour", fmt::format("{}/{}/{} (primaries/transfer/matrix)", primaries, transfer, matrix));
    }
}

void MapGeometry(const Members& stream, const SP<IFormatCodecVideo>& video, NotMapped& notMapped) {
    unsigned width = 0;
    unsigned height = 0;
    if (ToNumber(stream.Text("width").value_or(""), width) && ToNumber(stream.Text("height").value_or(""), height)) {
        const Ratio aspect = ParseRatio(stream.Text("sample_aspect_ratio").value_or(""), ':').value_or(1);
        const Ratio shape = aspect > 0 ? aspect : 1;
        video->InitByPixelAspect(width, height, static_cast<unsigned>(shape.numerator()),
                                 static_cast<unsigned>(shape.denominator()));
    }
    stream.ForEachObject("side_data_list", [&](const Members& data) {
        const std::string type = data.Text("side_data_type").value_or("");
        const auto matrix = ParseMatrix(data.Text("displaymatrix").value_or(""));
        if (type == "Display Matrix" && matrix) {
            video->SetDisplayMatrix(*matrix);
        } else {
            notMapped.Add("side data", type);
        }
    });
}

// A picture has no rate: ffprobe then names that of a clock.
void MapFrameRate(const Members& stream, const SP<IFormatCodecVideo>& video, bool isPicture) {
    const auto average = ParseRatio(stream.Text("avg_frame_rate").value_or(""), '/');
    const auto rate = average ? average : ParseRatio(stream.Text("r_frame_rate").value_or(""), '/');
    if (rate && *rate > 0 && !isPicture) {
        video->SetFrameRate(*rate);
    }
}

// Whether a member has found its place where the picture's size, shape, rate and format were mapped.
bool IsInGeometry(const Property& tree, const std::string& name, const std::string& value) {
    if (name == "width" || name == "height") {
        return tree.FindChild(IFormatCodecVideo::TAG_WIDTH) != tree.end();
    }
    if (name == "sample_aspect_ratio") {
        const auto aspect = ParseRatio(value, ':');
        return value == "0:1" || (aspect && *aspect > 0);
    }
    if (name == "pix_fmt") {
        return PixelFormatOfProbe(value).has_value();
    }
    if (name == "avg_frame_rate") {
        return ParseRatio(value, '/').has_value();
    }
    // What was made of these is told together.
    return name == "color_primaries" || name == "color_transfer" || name == "color_space";
}

bool TakeVideoValue(StreamMapper& mapper, const std::string& name, const std::string& value) {
    if (name == "color_range") {
        const auto range = ColorRangeOfProbe(value);
        return range &&
               mapper.Set(IFormatCodecVideo::TAG_COLOR_RANGE, std::optional<long long>(static_cast<int>(*range)));
    }
    if (name == "field_order") {
        return mapper.Set(IFormatCodecVideo::TAG_INTERLACE_FLAG, std::optional(value != "progressive"));
    }
    if (name == "level") {
        return mapper.SetNumber(IFormatCodecVideo::TAG_PROFILE_LEVEL, value);
    }
    return name == "bits_per_raw_sample" && mapper.SetNumber(IFormatCodecVideo::TAG_COLOR_DEPTH, value);
}

SP<IFormatCodec> DescribeVideo(const Members& stream, const StreamPlace& place, NotMapped& notMapped) {
    SP<IFormatCodecVideo> video = IFormatCodecVideo::Create();
    const Members disposition = stream.Object("disposition");
    const bool isCover = disposition.Text("attached_pic") == "1";
    const bool isStill = place.isInPicture || disposition.Text("still_image") == "1";
    MapGeometry(stream, video, notMapped);
    MapFrameRate(stream, video, isCover || isStill);
    MapColour(stream, video, notMapped);
    if (const auto format = PixelFormatOfProbe(stream.Text("pix_fmt").value_or(""))) {
        video->SetPixelFormat(*format);
    }
    Property tree = video->GetProperty();
    StreamMapper mapper(stream, tree, notMapped);
    tree.SetChildT<long long>(IFormatCodec::TAG_STREAM_ID, place.index);
    tree.SetChildT<bool>(IFormatCodecVideo::TAG_COVER_FLAG, isCover);
    tree.SetChildT<bool>(IFormatCodec::TAG_DEFAULT_STREAM, mapper.HasDisposition("default"));
    if (isStill) {
        tree.SetChildT<bool>(IFormatCodecVideo::TAG_IMAGE_FLAG, true);
    }
    mapper.Map([&](const std::string& name, const std::string& value) {
        return IsInGeometry(tree, name, value) || TakeVideoValue(mapper, name, value);
    });
    video->SetProperty(tree);
    return video;
}

SP<IFormatCodec> DescribeAudio(const Members& stream, const StreamPlace& place, NotMapped& notMapped) {
    SP<IFormatCodecAudio> audio = IFormatCodecAudio::Create();
    std::optional<Conf::ChannelLayout> layout = LayoutOfProbe(stream.Text("channel_layout").value_or(""));
    int channels = 0;
    // Containers such as WAV store a number of channels only; the usual layout of that many is a good guess.
    if (!layout && !stream.Has("channel_layout") && ToNumber(stream.Text("channels").value_or(""), channels)) {
        const auto& rows = Conf::LayoutRecord::EnumerateValid();
        const bool isUsual = std::any_of(
            rows.begin(), rows.end(), [channels](const Conf::LayoutRecord& row) { return row.channels == channels; });
        layout = isUsual ? std::optional(Conf::LayoutRecord::Find(channels).layout) : std::nullopt;
        notMapped.Add("channel_layout", fmt::format("of {} channels, taken to be the usual one", channels));
    }
    if (layout) {
        audio->SetChannelLayout(*layout);
    }
    const auto format = SampleFormatOfProbe(stream.Text("sample_fmt").value_or(""));
    if (format) {
        audio->SetSampleFormat(*format);
    }
    Property tree = audio->GetProperty();
    StreamMapper mapper(stream, tree, notMapped);
    tree.SetChildT<long long>(IFormatCodec::TAG_STREAM_ID, place.index);
    tree.SetChildT<bool>(IFormatCodec::TAG_DEFAULT_STREAM, mapper.HasDisposition("default"));
    mapper.Map([&](const std::string& name, const std::string& value) {
        if (name == "sample_fmt") {
            return format.has_value();
        }
        if (name == "channel_layout") {
            return layout.has_value();
        }
        return name == "sample_rate" && mapper.SetNumber(IFormatCodecAudio::TAG_SAMPLE_RATE, value);
    });
    audio->SetProperty(tree);
    return audio;
}

SP<IFormatCodec> DescribeSubtitle(const Members& stream, const StreamPlace& place, NotMapped& notMapped) {
    SP<IFormatCodecSubtitle> subtitle = IFormatCodecSubtitle::Create();
    Property tree = subtitle->GetProperty();
    StreamMapper mapper(stream, tree, notMapped);
    tree.SetChildT<long long>(IFormatCodec::TAG_STREAM_ID, place.index);
    tree.SetChildT<bool>(IFormatCodec::TAG_DEFAULT_STREAM, mapper.HasDisposition("default"));
    mapper.Map([&](const std::string& name, const std::string& value) {
        if (name == "width") {
            return mapper.SetNumber(IFormatCodecSubtitle::TAG_DVB_WIDTH, value);
        }
        return name == "height" && mapper.SetNumber(IFormatCodecSubtitle::TAG_DVB_HEIGHT, value);
    });
    subtitle->SetProperty(tree);
    return subtitle;
}

}  // namespace

void NotMapped::Add(const std::string& what, const std::string& value) {
    lines_.push_back(fmt::format("{}: {} {}", subject_, what, Quoted(value)));
}

SP<IFormatCodec> DescribeStream(const Members& stream, const StreamPlace& place, NotMapped& notMapped) {
    const std::string type = stream.Text("codec_type").value_or("");
    SP<IFormatCodec> description;
    if (type == "video") {
        description = DescribeVideo(stream, place, notMapped);
    } else if (type == "audio") {
        description = DescribeAudio(stream, place, notMapped);
    } else if (type == "subtitle") {
        description = DescribeSubtitle(stream, place, notMapped);
    } else {
        notMapped.Add("the whole stream, of type", type);
        return nullptr;
    }
    MapTags(stream, description);
    return description;
}

}  // namespace Quenzo::Tools
