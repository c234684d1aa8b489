// The look-ups and calculations of quenzo-conf, run as a user runs them.

#include <tests/tools/ProgramRunner.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace Quenzo::Tests {
namespace {

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

std::string Output(const std::vector<std::string>& arguments) {
    const auto result = RunProgram(arguments);
    EXPECT_EQ(result.status, 0) << arguments.front();
    EXPECT_EQ(result.messages, "");
    return result.output;
}

void ExpectMessage(const std::vector<std::string>& arguments, int status, const std::string& message) {
    const auto result = RunProgram(arguments);
    EXPECT_EQ(result.status, status);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.messages, "quenzo-conf: " + message + "\n");
}

long Lines(const std::string& text) { return std::count(text.begin(), text.end(), '\n'); }

TEST(Catalogues, HaveALineForEachEntryAndOneForTheHeader) {
    EXPECT_EQ(Lines(Output({"codecs"})), 1 + 360);
    EXPECT_EQ(Lines(Output({"formats"})), 1 + 195);
    EXPECT_EQ(Lines(Output({"layouts"})), 1 + 28);
    EXPECT_EQ(Lines(Output({"sample-formats"})), 1 + 10);
    EXPECT_EQ(Lines(Output({"pixel-formats"})), 1 + 58);
}

TEST(Catalogues, ShowWhatIsKnownInColumns) {
    EXPECT_THAT(Output({"codecs"}),
                AllOf(StartsWith("id                           class      display name        remarks\n"
                                 "CODEC_ID_MPEG1VIDEO          video      MPEG-1              proprietary\n"),
                      HasSubstr("\nCODEC_ID_H265                video      H.265               proprietary, decoder "
                                "disabled, encoder disabled\n"),
                      HasSubstr("\nCODEC_ID_TRUEHD              audio      TrueHD              decoder black-listed, "
                                "encoder black-listed\n"),
                      EndsWith("CODEC_ID_NONE                other      NONE                -\n")));
    EXPECT_THAT(Output({"formats"}), HasSubstr("\njpeg                          picture         -             jpeg, "
                                               "jpg, jpe\n"));
    EXPECT_THAT(Output({"layouts"}), StartsWith("id                 channels\n"
                                                "MONO                      1\n"
                                                "STEREO                    2\n"));
    EXPECT_THAT(Output({"sample-formats"}),
                StartsWith("id               bits  planar  float  signed  twin\n"
                           "SAMPLE_FMT_U8       8  no      no     no      SAMPLE_FMT_U8P\n"));
    EXPECT_THAT(Output({"pixel-formats"}),
                StartsWith("name        number  components  planes  chroma     bits  shift  range    flags\n"
                           "YUV420P          0           3       3  1/2 x 1/2     8      0  limited  planar, YUV\n"));
    EXPECT_THAT(Output({"groups"}), AllOf(StartsWith("group          kind       tip                           "
                                                     "extensions\n"
                                                     "All Files      all files  *.*                           *\n"),
                                          HasSubstr("\nMP4            video      -                             mp4, "
                                                    "m4v, mpeg4\n")));
    EXPECT_THAT(Output({"colours"}), AllOf(StartsWith("primaries:\nnumber  name         accepted  meaning\n"
                                                      "     1  BT709        yes       ITU-R BT.709; also"),
                                           HasSubstr("\ntransfer functions:\n"), HasSubstr("\nmatrices:\n")));
}

TEST(Catalogues, AreJsonOnDemand) {
    EXPECT_THAT(Output({"layouts", "--json"}),
                StartsWith("{\n  \"layouts\": [\n    {\n      \"id\": \"MONO\",\n      \"channels\": 1\n    },\n"));
    EXPECT_THAT(Output({"sample-formats", "--json"}), StartsWith("{\n  \"sampleFormats\": [\n"));
}

TEST(Codec, ShowsAllThatIsKnown) {
    EXPECT_EQ(Output({"codec", "aac"}),
              "codec:           CODEC_ID_AAC\n"
              "meaning:         Advanced Audio Coding (ISO/IEC 13818-7, ISO/IEC 14496-3).\n"
              "class:           audio\n"
              "display name:    AAC\n"
              "short name:      -\n"
              "catalogues:      audio codecs, all codecs, proprietary codecs\n"
              "proprietary:     yes\n"
              "decoding:        enabled\n"
              "encoding:        enabled\n"
              "bitrate needed:  yes\n");
    EXPECT_THAT(Output({"codec", "hevc"}),
                AllOf(StartsWith("codec:         CODEC_ID_H265\n"), HasSubstr("\nshort name:    HEVC\n"),
                      HasSubstr("\ndecoding:      disabled\nencoding:      disabled\n")));
    EXPECT_THAT(Output({"codec", "CODEC_ID_MLP"}), HasSubstr("\ndecoding:        black-listed\n"));
    EXPECT_THAT(Output({"codec", "pcm_s16le"}), HasSubstr("\nbitrate needed:  no\n"));
    EXPECT_THAT(Output({"codec", "JPEG"}), HasSubstr("\ncatalogues:    -\n"));
}

TEST(Codec, IsJsonOnDemand) {
    EXPECT_EQ(Output({"codec", "--json", "H.264"}), R"({
  "codec": "CODEC_ID_H264",
  "meaning": "H.264 / AVC video (ITU-T H.264, ISO/IEC 14496-10).",
  "class": "video",
  "displayName": "H.264",
  "shortName": "H264",
  "catalogues": [
    "video codecs",
    "all codecs",
    "proprietary codecs"
  ],
  "proprietary": true,
  "decoding": "enabled",
  "encoding": "enabled"
}
)");
}

TEST(Codec, NamesTheNearestOfOneThatIsUnknown) {
    ExpectMessage({"codec", "h246"}, 1, "there is no codec \"h246\"; the nearest: CODEC_ID_H264");
    ExpectMessage({"codec", "xyzzy"}, 1, "there is no codec \"xyzzy\" (quenzo-conf codecs lists them)");
    ExpectMessage({"codec", "a b"}, 1, "there is no codec \"a b\" (quenzo-conf codecs lists them)");
}

TEST(Format, ShowsAllThatIsKnown) {
    EXPECT_EQ(Output({"format", "MKV"}),
              "container:                matroska\n"
              "meaning:                  Matroska (RFC 9559).\n"
              "class:                    other\n"
              "display name:             MATROSKA\n"
              "catalogues:               -\n"
              "extensions:               mkv\n"
              "extension of a new file:  mkv\n"
              "reading:                  enabled\n"
              "writing:                  enabled\n");
    EXPECT_THAT(Output({"format", "heics"}),
                AllOf(HasSubstr("\nclass:                    animation\n"),
                      HasSubstr("\ncatalogues:               HEIF pictures, still and animated pictures\n")));
    EXPECT_THAT(Output({"format", "com.sony.arw-raw-image"}),
                HasSubstr("\nclass:                    raw photograph\n"));
    ExpectMessage({"format", "matrsoka"}, 1, "there is no container \"matrsoka\"; the nearest: matroska");
}

TEST(Extension, ShowsContainersAndGroups) {
    EXPECT_EQ(Output({"extension", ".MP4"}),
              "extension:     mp4\n"
              "containers:    mp4, psp, ipod\n"
              "new files of:  mp4, psp, ipod\n"
              "groups:        All Video, MP4, QuickTime\n");
    EXPECT_EQ(Output({"extension", "jpg"}),
              "extension:     jpg\n"
              "containers:    jpeg\n"
              "new files of:  -\n"
              "groups:        All images\n");
    ExpectMessage({"extension", "mp44"}, 1, "there is no extension \"mp44\"; the nearest: mp4");
    ExpectMessage({"extension", ""}, 1, "there is no extension \"\" (quenzo-conf groups lists them)");
    ExpectMessage({"extension", "."}, 1, "there is no extension \".\" (quenzo-conf groups lists them)");
}

TEST(Uti, ShowsHowAPictureIsOpened) {
    EXPECT_EQ(Output({"uti", "public.png"}),
              "type identifier:            public.png\n"
              "can be opened:              yes\n"
              "container:                  png\n"
              "codec:                      CODEC_ID_PNG\n"
              "container of an animation:  apng\n"
              "codec of an animation:      CODEC_ID_APNG\n"
              "extensions:                 png\n");
    EXPECT_THAT(Output({"uti", "com.microsoft.ICO"}), StartsWith("type identifier:            com.microsoft.ico\n"
                                                                 "can be opened:              no\n"
                                                                 "container:                  -\n"));
    ExpectMessage({"uti", "com.apple.pct"}, 1,
                  "there is no type identifier \"com.apple.pct\"; the nearest: com.apple.pict, com.apple.atx, "
                  "com.apple.icns");
}

TEST(Bitrate, ProposesThree) {
    EXPECT_EQ(Output({"bitrate", "--codec", "h264", "--size", "1920x1080", "--fps", "30"}),
              "codec:              CODEC_ID_H264\n"
              "size:               1920x1080\n"
              "frames per second:  30\n"
              "bits per second:    9109810\n"
              "lowest:             4554905\n"
              "highest:            18219620\n");
    EXPECT_EQ(Output({"bitrate", "--codec", "h264", "--size", "1920x1080", "--fps", "30", "--quality", "32", "--json"}),
              "{\n  \"codec\": \"CODEC_ID_H264\",\n  \"size\": \"1920x1080\",\n  \"framesPerSecond\": \"30\",\n"
              "  \"quality\": 32,\n  \"bitsPerSecond\": 3036603,\n  \"lowest\": 1518301,\n  \"highest\": 6073206\n}\n");
}

TEST(Bitrate, ExplainsEachStep) {
    EXPECT_EQ(
        Output({"bitrate", "--codec", "av1", "--size", "1920X1080", "--fps", "12.5", "--quality", "32", "--explain"}),
        "codec:              CODEC_ID_AV1\n"
        "size:               1920x1080\n"
        "frames per second:  25/2\n"
        "quality:            32\n"
        "bits per second:    1085585\n"
        "lowest:             542792\n"
        "highest:            2171170\n"
        "\n"
        "step                  how                                                     value\n"
        "exponent              the numbers of an older codec; the share follows below  1.771597724\n"
        "multiplier            of the same codec                                       0.02258715704\n"
        "side                  square root of 1920 x 1080                              1440\n"
        "kilobits per second   multiplier x side ^ exponent                            8896.299049\n"
        "frame rate factor     below 25: fps x 0.7 / 25 + 0.3                          0.65\n"
        "bits per second       kilobits x factor x 1024, without the fraction          5921376\n"
        "share of the codec    x 0.55, without the fraction                            3256756\n"
        "lowest                half of it                                              1628378\n"
        "highest               twice                                                   6513512\n"
        "share of the quality  1 - (32 - 1) x 2/3 / 31; all three x this               0.3333333333\n");
    EXPECT_THAT(Output({"bitrate", "--codec", "prores", "--size", "16x16", "--fps", "60", "--explain"}),
                AllOf(HasSubstr("CODEC_ID_PRORES has no numbers of its own: those of CODEC_ID_H264 serve"),
                      HasSubstr("above 30: (fps - 30) x 0.1 / 20 + 1")));
}

TEST(Bitrate, RefusesWhatMakesNoSense) {
    const auto with = [](const std::string& codec, const std::string& size, const std::string& fps) {
        return std::vector<std::string>{"bitrate", "--codec", codec, "--size", size, "--fps", fps};
    };
    ExpectMessage(with("flac", "1x1", "1"), 1,
                  "CODEC_ID_FLAC is no video codec; bit rates are proposed for video only");
    for (const char* size : {"1x", "x1", "0x1", "1x-1", "1920", "1x1x1", "2147483648x1", "", "a"}) {
        ExpectMessage(with("h264", size, "1"), 2,
                      "\"" + std::string(size) + "\" is not a size such as 1920x1080, each side from 1 to 2147483647");
    }
    for (const char* fps : {"1/0", "-1", "1/", "/1", "1.", ".5", "", "a", "1e3", "1000001", "1.0000000001"}) {
        ExpectMessage(
            with("h264", "1x1", fps), 2,
            "\"" + std::string(fps) + "\" is not a frame rate such as 25, 30000/1001 or 29.97, of at most 1000000");
    }
    auto arguments = with("h264", "1x1", "1");
    arguments.insert(arguments.end(), {"--quality", "33"});
    ExpectMessage(arguments, 2, "\"33\" is not a quality, which is a whole number from 1, the best, to 32");
}

TEST(Planes, ShowsSizes) {
    EXPECT_EQ(Output({"planes", "nv12", "--size", "1921x1081"}),
              "pixel format:  NV12\n"
              "size:          1921x1081\n"
              "bytes:         3116403\n"
              "\n"
              "plane  width  height  bytes in a row    bytes\n"
              "    0   1921    1081            1921  2076601\n"
              "    1    961     541            1922  1039802\n");
    ExpectMessage({"planes", "nv13", "--size", "1x1"}, 1, "there is no pixel format \"nv13\"; the nearest: NV12");
}

TEST(Orient, ShowsAnExifOrientation) {
    EXPECT_EQ(Output({"orient", "6", "--size", "1920x1080"}),
              "orientation:                Rotated90, turned clockwise by 90 degrees\n"
              "Exif number:                6\n"
              "mirrored:                   no\n"
              "degrees clockwise:          90\n"
              "degrees counter-clockwise:  270\n"
              "size:                       1920x1080\n"
              "size when shown:            1080x1920\n"
              "size when shown, even:      1080x1920\n"
              "matrix:                     0 65536 0 -65536 0 0 70778880 0 1073741824\n"
              "\n"
              "row     x  y  projective\n"
              "  0     0  1           0\n"
              "  1    -1  0           0\n"
              "  2  1080  0           1\n");
}

TEST(Orient, TakesNamesAnglesAndDirections) {
    const auto of = [](const std::string& turn) { return Output({"orient", turn, "--size", "30x20"}); };
    const std::string turned = of("6");
    for (const char* turn :
         {"rotated90", "Rotated 90", "90", "90cw", "90Cw", "90deg", "90DEG", "-270", "270ccw", "450", "90.0"}) {
        EXPECT_EQ(of(turn), turned) << turn;
    }
    EXPECT_EQ(of("8"), of("90ccw"));
    EXPECT_EQ(of("8"), of("90CCW"));
    EXPECT_THAT(of("2"), HasSubstr("\nmirrored:                   yes\n"
                                   "degrees clockwise:          0\ndegrees counter-clockwise:  0\n"));
    EXPECT_THAT(of("5"), HasSubstr("\nmirrored:                   yes\n"
                                   "degrees clockwise:          270\ndegrees counter-clockwise:  90\n"));
    EXPECT_THAT(of("5deg"), AllOf(StartsWith("orientation:                none of the eight\n"
                                             "mirrored:                   no\n"
                                             "degrees clockwise:          5\n"),
                                  HasSubstr("\nsize when shown:            32x23\n")));
}

TEST(Orient, SaysAnglesToAHundredthOfADegree) {
    const auto of = [](const std::string& turn) { return Output({"orient", turn, "--size", "30x20"}); };
    EXPECT_THAT(of("-22.5"), HasSubstr("\ndegrees clockwise:          337.5\ndegrees counter-clockwise:  22.5\n"));
    EXPECT_THAT(of("1.5"), HasSubstr("\ndegrees clockwise:          1.5\ndegrees counter-clockwise:  358.5\n"));
    EXPECT_THAT(of("33.337"), HasSubstr("\ndegrees clockwise:          33.34\ndegrees counter-clockwise:  326.66\n"));
    EXPECT_THAT(of("359.5"), HasSubstr("\ndegrees clockwise:          359.5\ndegrees counter-clockwise:  0.5\n"));
    EXPECT_THAT(of("359.999"), HasSubstr("\ndegrees clockwise:          0\ndegrees counter-clockwise:  0\n"));
    EXPECT_THAT(Output({"orient", "1.5", "--size", "30x20", "--json"}),
                HasSubstr("\n  \"degreesClockwise\": 1.5,\n  \"degreesCounterClockwise\": 358.5,\n"));
}

TEST(Orient, SaysWhenTheMatrixCannotHoldTheTranslation) {
    const auto messages = [](const std::string& turn, const std::string& size) {
        const auto result = RunProgram({"orient", turn, "--size", size});
        EXPECT_EQ(result.status, 0);
        return result.messages;
    };
    const std::string right =
        "quenzo-conf: note: the matrix cannot hold the translation to the right by 40000, which is 32768 or more\n";
    const std::string down =
        "quenzo-conf: note: the matrix cannot hold the translation down by 32768, which is 32768 or more\n";
    EXPECT_EQ(messages("6", "40000x40000"), right);
    EXPECT_EQ(messages("8", "32768x2"), down);
    EXPECT_EQ(messages("3", "40000x32768"), right + down);
    EXPECT_EQ(messages("3", "32767x32767"), "");
    EXPECT_EQ(messages("1", "40000x40000"), "");
}

TEST(Orient, RefusesWhatMakesNoSense) {
    for (const char* turn : {"", "1e3", "90x", "cw", "1000001", "-"}) {
        const std::string angle = std::string(turn) == "cw" ? "" : turn;
        ExpectMessage(
            {"orient", "--size", "1x1", "--", turn}, 2,
            "\"" + angle +
                "\" is not an angle in degrees such as 90, -90 or 22.5, without an exponent and of at most 1000000 "
                "either way");
    }
    ExpectMessage({"orient", "rotated91", "--size", "1x1"}, 1,
                  "there is no orientation \"rotated91\"; the nearest: Rotated90, Rotated180, Rotated270");
    ExpectMessage({"orient", "abc", "--size", "1x1"}, 1,
                  "there is no orientation \"abc\"; there is Normal, MirroredHorizontally, Rotated180, "
                  "MirroredVertically, Transposed, Rotated90, Transversed, Rotated270");
}

}  // namespace
}  // namespace Quenzo::Tests
