// The command describe: what becomes of ffprobe's output. The outputs for fourteen clips lie in tests/data/probe, each
// with the descriptions that are expected of it, and the script that makes the clips.

#include <tests/tools/ProgramRunner.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

namespace Quenzo::Tests {
namespace {

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

const std::filesystem::path kProbes = QUENZO_TEST_PROBES;

// The output of ffprobe for one stream with these members, and its description as the program prints it.
std::string Described(const std::string& members) {
    const auto result = RunProgram({"describe", "-"}, R"({"streams":[{)" + members + R"(}],"format":{}})");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.messages, "");
    return result.output;
}

std::string DescribedVideo(const std::string& members) { return Described(R"("codec_type":"video",)" + members); }

std::string DescribedAudio(const std::string& members) { return Described(R"("codec_type":"audio",)" + members); }

void ExpectRefused(const std::string& text, const std::string& reason) {
    const auto result = RunProgram({"describe", "-"}, text);
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.messages, "quenzo-conf: \"-\" is not what ffprobe prints as JSON: " + reason + "\n");
}

class DescribeClip : public testing::TestWithParam<const char*> {};

TEST_P(DescribeClip, IsAsWrittenDown) {
    const std::filesystem::path probe = kProbes / (std::string(GetParam()) + ".json");
    const auto result = RunProgram({"describe", probe.string()});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.messages, "");
    EXPECT_EQ(result.output, ReadFile(kProbes / (std::string(GetParam()) + ".txt")));
    EXPECT_EQ(RunProgram({"describe", "-"}, ReadFile(probe)).output, result.output);
}

INSTANTIATE_TEST_SUITE_P(All, DescribeClip,
                         testing::Values("anamorphic.vob", "audio-only.flac", "audio-only.wav", "chapters.webm",
                                         "cover-art.mp3", "hdr10.mkv", "interlaced.ts", "mirrored.mov",
                                         "professional.mov", "rotated.mp4", "still-image.jpg", "subtitles.mkv",
                                         "surround.mkv", "timed-text.mp4"));

TEST(Describe, IsJsonOnDemand) {
    const auto result = RunProgram({"describe", "--json", (kProbes / "audio-only.wav.json").string()});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, R"({
  "file": {
    "format_file": {
      "metadata": {},
      "filePath": "audio-only.wav",
      "container": "wav",
      "file_size": 35358,
      "encoder": "Lavf59.27.100"
    }
  },
  "streams": [
    {
      "index": 0,
      "format_codec_audio": {
        "metadata": {},
        "codec.options.encode": {},
        "stream_id": 0,
        "stream_metadata": {},
        "layout": "MONO",
        "sample_format": "SAMPLE_FMT_S16",
        "bits_per_sample": 16,
        "default_stream": false,
        "codec_id": "CODEC_ID_PCM_S16LE",
        "sample_rate": 44100,
        "stream_timebase": [
          1,
          44100
        ],
        "original_duration": [
          2,
          5
        ],
        "bitrate": 705600
      }
    }
  ],
  "notMapped": [
    "stream 0: channel_layout \"of 1 channels, taken to be the usual one\""
  ]
}
)");
}

TEST(Describe, KnowsCodecsByTheirOtherNames) {
    EXPECT_THAT(DescribedVideo(R"("codec_name":"hevc")"), HasSubstr("\n    codec_id: CODEC_ID_H265\n"));
    EXPECT_THAT(DescribedVideo(R"("codec_name":"interplayvideo")"),
                HasSubstr("\n    codec_id: CODEC_ID_INTERPLAY_VIDEO\n"));
    EXPECT_THAT(DescribedVideo(R"("codec_name":"cfhd")"), HasSubstr("\n    codec_id: CODEC_ID_CFHD\n"));
    EXPECT_THAT(DescribedAudio(R"("codec_name":"sonicls")"), HasSubstr("\n    codec_id: CODEC_ID_SONIC_LS\n"));
}

TEST(Describe, ListsWhatHasNoPlace) {
    EXPECT_THAT(DescribedVideo(R"("codec_name":"vvc","pix_fmt":"x2rgb10le","profile":"Odd","bit_rate":"much",)"
                               R"("time_base":"1/0","sample_aspect_ratio":"-1:2","avg_frame_rate":"25",)"
                               R"("color_range":"some","level":"high","new_member":7,"disposition":{"forced":1},)"
                               R"("side_data_list":[{"side_data_type":"Content light level metadata"},)"
                               R"({"side_data_type":"Display Matrix","displaymatrix":"1 2 3"}])"),
                EndsWith("not mapped\n"
                         "  stream 0: side data \"Content light level metadata\"\n"
                         "  stream 0: side data \"Display Matrix\"\n"
                         "  stream 0: codec_name \"vvc\"\n"
                         "  stream 0: pix_fmt \"x2rgb10le\"\n"
                         "  stream 0: profile \"Odd\"\n"
                         "  stream 0: bit_rate \"much\"\n"
                         "  stream 0: time_base \"1/0\"\n"
                         "  stream 0: sample_aspect_ratio \"-1:2\"\n"
                         "  stream 0: avg_frame_rate \"25\"\n"
                         "  stream 0: color_range \"some\"\n"
                         "  stream 0: level \"high\"\n"
                         "  stream 0: new_member \"7\"\n"
                         "  stream 0: disposition \"forced\"\n"));
    EXPECT_THAT(DescribedAudio(R"("channels":9,"sample_fmt":"s20","sample_rate":"fast")"),
                EndsWith("not mapped\n"
                         "  stream 0: channel_layout \"of 9 channels, taken to be the usual one\"\n"
                         "  stream 0: sample_fmt \"s20\"\n"
                         "  stream 0: sample_rate \"fast\"\n"));
    EXPECT_THAT(Described(R"("codec_type":"data","codec_name":"bin_data")"),
                AllOf(EndsWith("not mapped\n  stream 0: the whole stream, of type \"data\"\n"),
                      Not(HasSubstr("format_codec"))));
}

TEST(Describe, MapsEveryChannelLayout) {
    const std::pair<const char*, const char*> layouts[] = {
        {"mono", "MONO"},
        {"stereo", "STEREO"},
        {"2.1", "2POINT1"},
        {"3.0", "SURROUND"},
        {"3.0(back)", "2_1"},
        {"3.1", "3POINT1"},
        {"4.0", "4POINT0"},
        {"quad", "QUAD"},
        {"quad(side)", "2_2"},
        {"4.1", "4POINT1"},
        {"5.0", "5POINT0_BACK"},
        {"5.0(side)", "5POINT0"},
        {"5.1", "5POINT1_BACK"},
        {"5.1(side)", "5POINT1"},
        {"6.0", "6POINT0"},
        {"6.0(front)", "6POINT0_FRONT"},
        {"hexagonal", "HEXAGONAL"},
        {"6.1", "6POINT1"},
        {"6.1(back)", "6POINT1_BACK"},
        {"6.1(front)", "6POINT1_FRONT"},
        {"7.0", "7POINT0"},
        {"7.0(front)", "7POINT0_FRONT"},
        {"7.1", "7POINT1"},
        {"7.1(wide)", "7POINT1_WIDE_BACK"},
        {"7.1(wide-side)", "7POINT1_WIDE"},
        {"octagonal", "OCTAGONAL"},
        {"hexadecagonal", "HEXADECAGONAL"},
        {"downmix", "STEREO_DOWNMIX"},
    };
    for (const auto& [name, textId] : layouts) {
        EXPECT_THAT(DescribedAudio(R"("channel_layout":")" + std::string(name) + '"'),
                    HasSubstr("\n    layout: " + std::string(textId) + "\n"))
            << name;
    }
}

TEST(Describe, MapsPixelFormats) {
    const std::pair<const char*, int> formats[] = {
        {"yuv420p", 0},   {"rgb24", 2},       {"gray", 8},        {"pal8", 11},        {"nv12", 23},
        {"bgr565be", 40}, {"bgr565le", 41},   {"rgb48le", 35},    {"yuv422p10le", 64}, {"p010le", 158},
        {"0rgb", 118},    {"rgbaf16le", 207}, {"rgbaf32le", 220}, {"gbrap", 111},
    };
    for (const auto& [name, number] : formats) {
        EXPECT_THAT(DescribedVideo(R"("pix_fmt":")" + std::string(name) + '"'),
                    HasSubstr("\n    PIXELFORMAT: " + std::to_string(number) + "\n"))
            << name;
    }
    EXPECT_THAT(DescribedVideo(R"("pix_fmt":"yuv420p10be")"), EndsWith("  stream 0: pix_fmt \"yuv420p10be\"\n"));
}

TEST(Describe, MapsColourAllOrNone) {
    const auto colour = [](const std::string& primaries, const std::string& transfer, const std::string& matrix) {
        return DescribedVideo(R"("color_primaries":")" + primaries + R"(","color_transfer":")" + transfer +
                              R"(","color_space":")" + matrix + '"');
    };
    EXPECT_THAT(colour("bt2020", "arib-std-b67", "bt2020nc"),
                HasSubstr("\n    color_primaries: 9\n    color_transfer_function: 18\n    color_matrix: 9\n"));
    EXPECT_THAT(colour("smpte432", "iec61966-2-1", "gbr"),
                HasSubstr("\n    color_primaries: 12\n    color_transfer_function: 13\n    color_matrix: 0\n"));
    EXPECT_THAT(colour("bt2020", "bt2020-10", "bt2020c"),
                AllOf(Not(HasSubstr("color_primaries:")),
                      EndsWith("  stream 0: colour \"bt2020/bt2020-10/bt2020c (primaries/transfer/matrix)\"\n")));
}

TEST(Describe, TakesTheContainerFromTheExtensionWhereTheDemuxerReadsSeveral) {
    const auto container = [](const std::string& demuxer, const std::string& name) {
        return RunProgram({"describe", "-"}, R"({"streams":[],"format":{"filename":")" + name + R"(","format_name":")" +
                                                 demuxer + R"("}})")
            .output;
    };
    EXPECT_THAT(container("matroska,webm", "a.MKV"), HasSubstr("container: matroska\n"));
    EXPECT_THAT(container("matroska,webm", "a.webm"), HasSubstr("container: webm\n"));
    EXPECT_THAT(container("matroska,webm", "a"), HasSubstr("container: matroska\n"));
    EXPECT_THAT(container("mov,mp4,m4a,3gp,3g2,mj2", "a.m4a"), HasSubstr("container: m4a\n"));
    EXPECT_THAT(container("mov,mp4,m4a,3gp,3g2,mj2", "a.dat"), HasSubstr("container: mov,mp4,m4a,3gp,3g2,mj2\n"));
    EXPECT_THAT(container("png_pipe", "a.png"), HasSubstr("container: png\n"));
    EXPECT_THAT(container("nonesuch", "a"), EndsWith("not mapped\n  file: format_name \"nonesuch\"\n"));
}

TEST(Describe, RefusesWhatIsNoProbeOutput) {
    ExpectRefused("", "line 1, column 1: The document is empty.");
    ExpectRefused("{\"streams\":[}", "line 1, column 13: Invalid value.");
    // A byte order mark is accepted, and does not count as a column.
    ExpectRefused("\xEF\xBB\xBF{\"streams\":[}", "line 1, column 13: Invalid value.");
    const std::string members =
        "it has no members \"streams\" and \"format\"; run ffprobe with -show_streams -show_format";
    ExpectRefused("{}", members);
    ExpectRefused("[]", members);
    ExpectRefused("1", members);
    ExpectRefused(R"({"streams":[]})", members);
    ExpectRefused(R"({"streams":[{"index":-1}],"format":{}})", "a stream has the index -1");
}

TEST(Describe, TakesWhatIsStrangeWithoutHarm) {
    EXPECT_EQ(RunProgram({"describe", "-"}, R"({"streams":{},"format":[],"chapters":1})").output,
              "file\n  format_file\n    metadata\n");
    EXPECT_EQ(RunProgram({"describe", "-"}, R"({"streams":[1,null,[]],"format":null})").status, 0);
    const std::string deep(100000, '[');
    const std::string shut(100000, ']');
    EXPECT_EQ(
        RunProgram({"describe", "-"}, R"({"streams":[{"codec_type":"video","x":)" + deep + shut + R"(}],"format":{}})")
            .status,
        0);
    EXPECT_THAT(DescribedVideo(R"("width":4294967296,"height":1)"),
                EndsWith("  stream 0: width \"4294967296\"\n  stream 0: height \"1\"\n"));
    EXPECT_THAT(DescribedVideo(R"("duration":"-1.000000","bit_rate":1e3)"),
                EndsWith("  stream 0: duration \"-1.000000\"\n  stream 0: bit_rate \"1e3\"\n"));
}

// The way from a clip to its description with the real prober, where it is installed.
TEST(Describe, ReadsWhatTheInstalledProberPrints) {
    if (std::system("command -v ffmpeg ffprobe >/dev/null 2>&1") != 0) {
        GTEST_SKIP() << "ffmpeg is not installed";
    }
    const TemporaryFolder folder;
    const auto made = Testing::RunProgram({(kProbes / "make-clips").string(), folder.Path("clips")});
    ASSERT_EQ(made.status, 0) << made.messages;
    const auto result = RunProgram({"describe", folder.Path("clips/rotated.mp4.json")});
    EXPECT_EQ(result.status, 0) << result.messages;
    EXPECT_THAT(result.output,
                AllOf(StartsWith("file\n  format_file\n"), HasSubstr("\n    container: mp4\n"),
                      HasSubstr("\n    codec_id: CODEC_ID_H264\n"), HasSubstr("\n    width: 640\n    height: 360\n"),
                      HasSubstr("\n    DISPLAYMATRIX: 0:65536:0:-65536:0:0:23592960:0:1073741824\n"),
                      HasSubstr("\n    frameRateRatio: 30000/1001\n"), HasSubstr("\n    codec_id: CODEC_ID_AAC\n"),
                      HasSubstr("\n      language: eng\n")));
    EXPECT_THAT(RunProgram({"describe", folder.Path("clips/hdr10.mkv.json")}).output,
                HasSubstr("\n    color_primaries: 9\n    color_transfer_function: 16\n    color_matrix: 9\n"));
    EXPECT_EQ(folder.List(), std::vector<std::string>{"clips"});
}

}  // namespace
}  // namespace Quenzo::Tests
