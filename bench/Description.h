#pragma once

#include <bench/Verify.h>

#include <Conf/Interfaces/IFormatCodecVideo.h>

#include <boost/rational.hpp>

#include <string>
#include <utility>

namespace Quenzo::Bench {

using Rational = boost::rational<long long>;
using VideoKeys = Conf::IFormatCodecVideo;

/// Peers that keep a rational as two integers hand it out like this, without reducing it again.
using Fraction = std::pair<long long, long long>;

/// The values of the description that no constant holds. Made once, so that no column pays for making them.
struct Values {
    const Rational frameRate = {30000, 1001};
    const Rational timeBase = {1, 30000};
    const Rational duration = {15015, 250};
    const Rational otherFrameRate = {25, 1};

    const std::string title = "title";
    const std::string titleText = "The harbour before sunrise";
    const std::string artist = "artist";
    const std::string artistText = "R. Lindqvist";
    const std::string date = "date";
    const std::string dateText = "2023-06-11";
    const std::string genre = "genre";
    const std::string genreText = "documentary";
    const std::string track = "track";
    const std::string languageText = "eng";

    static const Values& Get() {
        static const Values values;
        return values;
    }
};

/// Calls visit(key, value) for what a video description holds beside its metadata node: 8 strings, 10 integers, 3
/// rationals and 2 booleans.
template <typename Visit>
void VisitLeaves(Visit visit) {
    const Values& values = Values::Get();
    visit(VideoKeys::TAG_CODEC_ID, VideoKeys::CODEC_ID_H264);
    visit(VideoKeys::TAG_STREAM_ID, 1LL);
    visit(VideoKeys::TAG_WIDTH, 1920LL);
    visit(VideoKeys::TAG_HEIGHT, 1080LL);
    visit(VideoKeys::TAG_ASPECTX, 64LL);
    visit(VideoKeys::TAG_ASPECTY, 45LL);
    visit(VideoKeys::TAG_FPS, values.frameRate);
    visit(VideoKeys::TAG_STREAM_TIMEBASE, values.timeBase);
    visit(VideoKeys::TAG_ORIGINAL_DURATION, values.duration);
    visit(VideoKeys::TAG_COVER_FLAG, false);
    visit(VideoKeys::TAG_DEFAULT_STREAM, true);
    visit(VideoKeys::TAG_COLOR_PRIMARIES, 9LL);
    visit(VideoKeys::TAG_COLOR_MATRIX, 1LL);
    visit(VideoKeys::TAG_CHROMA_SUBSAMPLING, VideoKeys::TAG_CHROMA_SUBSAMPLING_420);
    visit(VideoKeys::TAG_BITRATE_MODE, VideoKeys::TAG_BITRATE_MODE_VBR);
    visit(VideoKeys::TAG_BITRATE, 8000000LL);
    visit(VideoKeys::TAG_PEAK_BITRATE, 12000000LL);
    visit(VideoKeys::TAG_QUALITY, 5LL);
    visit(VideoKeys::TAG_MULTIPASS_ENCODING, VideoKeys::TAG_ONE_PASS_MODE);
    visit(VideoKeys::TAG_PROFILE, VideoKeys::TAG_X264_PROFILE_HIGH);
    visit(VideoKeys::TAG_PRESET, VideoKeys::TAG_X264_PRESET_MEDIUM);
    visit(VideoKeys::TAG_X264_TUNE, VideoKeys::TAG_X264_TUNE_FILM);
    visit(VideoKeys::TAG_H264_ENTROPY_MODE, VideoKeys::TAG_H264_ENTROPY_CABAC);
}

/// The same for the six children of the metadata node, which is the 24th key.
template <typename Visit>
void VisitMetadata(Visit visit) {
    const Values& values = Values::Get();
    visit(VideoKeys::TAG_LANGUAGE, values.languageText);
    visit(values.title, values.titleText);
    visit(values.artist, values.artistText);
    visit(values.date, values.dateText);
    visit(values.genre, values.genreText);
    visit(values.track, 7LL);
}

/// The same for ten keys that are there already, each with another value of the same kind.
template <typename Visit>
void VisitChanges(Visit visit) {
    visit(VideoKeys::TAG_CODEC_ID, VideoKeys::CODEC_ID_H265);
    visit(VideoKeys::TAG_WIDTH, 1280LL);
    visit(VideoKeys::TAG_HEIGHT, 720LL);
    visit(VideoKeys::TAG_FPS, Values::Get().otherFrameRate);
    visit(VideoKeys::TAG_COVER_FLAG, true);
    visit(VideoKeys::TAG_BITRATE_MODE, VideoKeys::TAG_BITRATE_MODE_CBR);
    visit(VideoKeys::TAG_BITRATE, 4000000LL);
    visit(VideoKeys::TAG_PEAK_BITRATE, 6000000LL);
    visit(VideoKeys::TAG_PRESET, VideoKeys::TAG_X264_PRESET_SLOW);
    visit(VideoKeys::TAG_X264_TUNE, VideoKeys::TAG_X264_TUNE_GRAIN);
}

template <typename Column, typename Node>
void Overwrite(Node& node) {
    VisitChanges([&node](const std::string& key, const auto& value) { Column::Set(node, key, value); });
}

template <typename Column>
typename Column::Tree Build() {
    auto tree = Column::Make(VideoKeys::TAG_FORMAT_CODEC_VIDEO);
    VisitLeaves([&tree](const std::string& key, const auto& value) { Column::Set(tree, key, value); });
    Column::SetNode(tree, VideoKeys::TAG_STREAM_METADATA, [](auto& metadata) {
        VisitMetadata([&metadata](const std::string& key, const auto& value) { Column::Set(metadata, key, value); });
    });
    return tree;
}

template <typename Found, typename Value>
bool Same(const Found& found, const Value& value) {
    return found == value;
}

inline bool Same(const Fraction& found, const Rational& value) {
    return found == Fraction(value.numerator(), value.denominator());
}

/// Ends the program unless all keys read as they were written.
template <typename Column>
void VerifyBuilt(const typename Column::Tree& tree) {
    int count = 0;
    const auto verify = [&count](const auto& node) {
        return [&node, &count](const std::string& key, const auto& value) {
            Verify(Same(Column::template Get<std::decay_t<decltype(value)>>(node, key), value), key.c_str());
            ++count;
        };
    };
    VisitLeaves(verify(tree));
    VisitMetadata(verify(Column::GetNode(tree, VideoKeys::TAG_STREAM_METADATA)));
    Verify(count == 23 + 6, "the number of values in the description");
}

}  // namespace Quenzo::Bench
