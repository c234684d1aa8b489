// Jobs made of probed clips, and the comparison of jobs.

#include <tests/tools/ProgramRunner.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace Quenzo::Tests {
namespace {

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

std::string Probe(const std::string& clip) { return QUENZO_TEST_PROBES "/" + clip + ".json"; }

std::vector<std::string> MakeJob(const std::string& clip, const std::string& preset, const std::string& out) {
    return {"job", "new", "--probe", Probe(clip), "--preset", ShippedPreset(preset), "--out", out};
}

struct Expectation {
    const char* clip;
    const char* preset;
    const char* messages;
    const char* firstLines;
};

// Made, checked, drawn, and loaded again the same.
void ExpectJob(const Expectation& expected) {
    const TemporaryFolder folder;
    const auto made = RunProgram(MakeJob(expected.clip, expected.preset, "out"));
    EXPECT_EQ(made.status, 0);
    EXPECT_EQ(made.messages, expected.messages);
    const std::string job = folder.Write("job.json", made.output);
    EXPECT_EQ(RunProgram({"job", "check", job}).output, "valid\n");
    EXPECT_THAT(RunProgram({"job", "show", job}).output, StartsWith(expected.firstLines));
    EXPECT_EQ(RunProgram({"job", "draw", job, "-o", folder.Path("job.svg")}).status, 0);
    EXPECT_THAT(folder.Read("job.svg"), HasSubstr("<svg"));
    const auto difference = RunProgram({"job", "diff", job, "-"}, made.output);
    EXPECT_EQ(difference.status, 0);
    EXPECT_EQ(difference.output, "");
}

TEST(JobNewProbe, TurnsEachStreamIntoANode) {
    ExpectJob({"rotated.mp4", "web-h264-aac-mp4.json",
               "quenzo-conf: note: not mapped: stream 0: chroma_location \"left\"\n",
               "node 1\n  source\n    $$TYPE_ID$$: sourceFile\n    filePath: rotated.mp4\n"
               "node 2\n  streamRaw\n    id: 0\n"
               "node 3\n  streamRaw\n    id: 1\n"
               "node 4\n  preset\n"});
}

TEST(JobNewProbe, ProposesTheBitRateThatThePresetLeavesOpen) {
    ExpectJob({"hdr10.mkv", "archive-hevc10-mkv.json",
               "quenzo-conf: note: not mapped: stream 0: chroma_location \"left\"\n"
               "quenzo-conf: note: not mapped: stream 0: start_time \"0.005000\"\n"
               "quenzo-conf: note: stream 0: 20367968 bits per second proposed\n",
               "node 1\n  source\n    $$TYPE_ID$$: sourceFile\n    filePath: hdr10.mkv\n"});
    const auto made = RunProgram(MakeJob("hdr10.mkv", "archive-hevc10-mkv.json", "out"));
    EXPECT_THAT(made.output, HasSubstr(R"("use_hardware_context":false},"bitrate":20367968}})"));
}

TEST(JobNewProbe, TakesSizeAndRateOfTheStreamWhereThePresetHasNone) {
    const TemporaryFolder folder;
    const std::string preset = folder.Write("p.json", R"({"$$TYPE_ID$$":"x","container":"mp4","fileExtension":"mp4",)"
                                                      R"("$$STREAMS$$":{"video":{"codec_id":"CODEC_ID_H264"}}})");
    const auto made =
        RunProgram({"job", "new", "--probe", Probe("professional.mov"), "--preset", preset, "--out", "a.mp4"});
    EXPECT_EQ(made.status, 0);
    // 1920 x 1080 at 50 frames per second: 9109810 bits at 30, and a tenth more.
    EXPECT_EQ(made.messages, "quenzo-conf: note: stream 0: 10020791 bits per second proposed\n");
}

TEST(JobNewProbe, NamesStreamsThatThePresetHasNoPlaceFor) {
    ExpectJob({"cover-art.mp3", "music-flac.json",
               "quenzo-conf: note: not mapped: stream 0: start_time \"0.025057\"\n"
               "quenzo-conf: note: not mapped: stream 1: start_time \"0.025056\"\n"
               "quenzo-conf: note: stream 1 (video) leads nowhere: the preset has no place for it\n",
               "node 1\n"});
    EXPECT_THAT(RunProgram(MakeJob("surround.mkv", "music-flac.json", "out")).messages,
                EndsWith("quenzo-conf: note: stream 1 (audio) leads nowhere: the preset has no place for it\n"));
}

TEST(JobNewProbe, LinksCarryDescriptions) {
    const auto made = RunProgram(MakeJob("rotated.mp4", "web-h264-aac-mp4.json", "out.mp4"));
    EXPECT_THAT(
        made.output,
        AllOf(HasSubstr(R"({"id":1,"from":1,"to":2,"data":{"format_codec_video":{)"),
              HasSubstr(R"("DISPLAYMATRIX":"0:65536:0:-65536:0:0:23592960:0:1073741824")"),
              HasSubstr(R"({"id":2,"from":1,"to":3,"data":{"format_codec_audio":{"metadata":{"language":"eng"})"),
              HasSubstr(R"({"id":3,"from":2,"to":4,"data":{"video":{"codec_id":"CODEC_ID_H264")")));
}

TEST(JobNewProbe, RefusesWhatMakesNoSense) {
    const std::string preset = ShippedPreset("music-flac.json");
    const auto both = RunProgram({"job", "new", "--probe", Probe("rotated.mp4"), "--in", "a", "--stream", "0",
                                  "--preset", preset, "--out", "b"});
    EXPECT_EQ(both.status, 2);
    EXPECT_EQ(both.messages,
              "quenzo-conf: job new: takes either --in with --stream, or --probe (see quenzo-conf job new --help)\n");
    const auto make = [&preset](const std::string& probe) {
        return RunProgram({"job", "new", "--probe", "-", "--preset", preset, "--out", "b"}, probe);
    };
    EXPECT_EQ(make(R"({"streams":[],"format":{"filename":"a.bin"}})").status, 1);
    EXPECT_EQ(make(R"({"streams":[],"format":{"filename":"a.bin"}})").messages,
              "quenzo-conf: \"a.bin\" has no stream to convert\n");
    EXPECT_EQ(make(R"({"streams":[],"format":{}})").status, 3);
    EXPECT_EQ(make(R"({"streams":[],"format":{}})").messages,
              "quenzo-conf: \"-\" does not name the file that was probed\n");
}

const char* const kBefore =
    R"({"vertices":[{"id":1,"data":{"a":{"x":1,"y":{"z":"old","w":[1,2]},"gone":true}}},{"id":2}],)"
    R"("edges":[{"from":1,"to":2}]})";
const char* const kAfter =
    R"({"vertices":[{"id":1,"data":{"a":{"x":"1","y":{"z":"new","w":[1,2]},"come":{"v":0}}}},{"id":3}],)"
    R"("edges":[{"from":1,"to":3,"data":{"data":{"q":1}}}]})";

TEST(JobDiff, PrintsALineForEachDifference) {
    const TemporaryFolder folder;
    const auto result = RunProgram({"job", "diff", folder.Write("a", kBefore), folder.Write("b", kAfter)});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.messages, "");
    EXPECT_EQ(result.output,
              "~ node 1: a/x: 1 -> \"1\"\n"
              "~ node 1: a/y/z: \"old\" -> \"new\"\n"
              "- node 1: a/gone: true\n"
              "+ node 1: a/come: {\"v\":0}\n"
              "- node 2: data {}\n"
              "- link 1 -> 2: data {}\n"
              "+ node 3: data {}\n"
              "+ link 1 -> 3: data {\"q\":1}\n");
}

TEST(JobDiff, IsJsonOnDemand) {
    const TemporaryFolder folder;
    const auto result = RunProgram({"job", "diff", "--json", folder.Write("a", kBefore), folder.Write("b", kBefore)});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "{\n  \"same\": true,\n  \"differences\": []\n}\n");
}

TEST(JobDiff, SeesNamesOrderAndRepeatedChildren) {
    const auto diff = [](const std::string& before, const std::string& after) {
        const TemporaryFolder folder;
        const auto job = [](const std::string& tree) {
            return R"({"vertices":[{"id":1,"data":)" + tree + R"(}],"edges":[]})";
        };
        return RunProgram({"job", "diff", folder.Write("a", job(before)), folder.Write("b", job(after))}).output;
    };
    EXPECT_EQ(diff(R"({"a":{}})", R"({"b":{}})"), "~ node 1: a {} -> b {}\n");
    EXPECT_EQ(diff(R"({"a":{"x":1,"y":2}})", R"({"a":{"y":2,"x":1}})"),
              "~ node 1: a: {\"x\":1,\"y\":2} -> {\"y\":2,\"x\":1}\n");
    EXPECT_EQ(diff(R"({"a":[{"x":1},{"x":2}]})", R"({"a":[{"x":1},{"x":3},{"x":4}]})"),
              "~ node 1: a/x: 2 -> 3\n+ node 1: a/x: 4\n");
    EXPECT_EQ(diff(R"({"a":1})", R"({"a":{"b":1}})"), "~ node 1: a: 1 -> {\"b\":1}\n");
}

TEST(JobDiff, SeesNodesOfOneIdApart) {
    const TemporaryFolder folder;
    const auto result =
        RunProgram({"job", "diff", folder.Write("a", R"({"vertices":[{"id":1},{"id":1}],"edges":[]})"),
                    folder.Write("b", R"({"vertices":[{"id":1},{"id":1,"data":{"x":{}}}],"edges":[]})")});
    EXPECT_EQ(result.output, "~ node 1 (no. 2): data {} -> x {}\n");
}

TEST(JobDiff, NamesTheFirstFileThatCannotBeRead) {
    const auto result = RunProgram({"job", "diff", "/nonexistent/a", "/nonexistent/b"});
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.messages, "quenzo-conf: cannot read \"/nonexistent/a\": No such file or directory\n");
}

TEST(JobDiff, RefusesStandardInputTwice) {
    const auto result = RunProgram({"job", "diff", "-", "-"});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.messages, "quenzo-conf: only one of the two jobs can come from standard input\n");
}

}  // namespace
}  // namespace Quenzo::Tests
