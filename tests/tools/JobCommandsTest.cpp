// The job commands of quenzo-conf, run as a user runs them: what they print, how they end, what they leave behind.

#include <tests/tools/ProgramRunner.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace Quenzo::Tests {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

const char* const kValid =
    R"({"vertices":[{"id":1,"data":{"source":{"filePath":"a.mov"}}},{"id":2}],"edges":[{"from":1,"to":2}]})";

// Two cycles, an isolated node, three pieces.
const char* const kBroken =
    R"({"vertices":[{"id":1},{"id":2},{"id":3},{"id":4}],"edges":[{"from":1,"to":2},{"from":2,"to":1},{"from":3,"to":3}]})";

ProgramResult MakeMusicJob() {
    return RunProgram({"job", "new", "--in", "a.wav", "--stream", "0", "--preset", ShippedPreset("music-flac.json"),
                       "--out", "a.flac"});
}

// One line on standard error, nothing on standard output.
void ExpectFailure(const ProgramResult& result, int status, const std::string& message) {
    EXPECT_EQ(result.status, status);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.messages, "quenzo-conf: " + message + "\n");
}

TEST(JobNew, PrintsADocument) {
    const auto result = MakeMusicJob();
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.messages, "");
    EXPECT_EQ(
        result.output,
        R"({"vertices":[{"id":1,"data":{"source":{"$$TYPE_ID$$":"sourceFile","filePath":"a.wav"}}},)"
        R"({"id":2,"data":{"streamRaw":{"id":0}}},)"
        R"({"id":3,"data":{"preset":{"name":"Music: FLAC, CD quality","id":"music-flac","$$TYPE_ID$$":"format_flac",)"
        R"("container":"flac","fileExtension":"flac","filePath":"a.flac"}}}],)"
        R"("edges":[{"id":1,"from":1,"to":2,"data":{"data":{}}},)"
        R"({"id":2,"from":2,"to":3,"data":{"audio":{"codec_id":"CODEC_ID_FLAC","layout":"STEREO","sample_rate":44100,)"
        R"("sample_format":"SAMPLE_FMT_S16","bits_per_sample":16,"lossless":true}}}]})");
}

TEST(JobNew, TakesSeveralSourcesWithSeveralStreams) {
    const auto made =
        RunProgram({"job", "new", "--in", "a.mov", "--stream", "0", "--stream", "3", "--in", "b.wav", "--stream", "1",
                    "--preset", ShippedPreset("archive-hevc10-mkv.json"), "--out", "c.mkv"});
    ASSERT_EQ(made.status, 0);
    EXPECT_EQ(made.messages, "");
    const auto shown = RunProgram({"job", "show", "-"}, made.output);
    EXPECT_EQ(shown.status, 0);
    EXPECT_THAT(shown.output, StartsWith("node 1\n  source\n    $$TYPE_ID$$: sourceFile\n    filePath: a.mov\n"
                                         "node 2\n  streamRaw\n    id: 0\n"
                                         "node 3\n  streamRaw\n    id: 3\n"
                                         "node 4\n  source\n    $$TYPE_ID$$: sourceFile\n    filePath: b.wav\n"
                                         "node 5\n  streamRaw\n    id: 1\n"
                                         "node 6\n  preset\n"));
    EXPECT_THAT(shown.output, HasSubstr("link 2: 1 -> 2\nlink 3: 1 -> 3\nlink 4: 4 -> 5\nlink 5: 2 -> 6\n  video\n"));
    EXPECT_THAT(shown.output, HasSubstr("link 6: 3 -> 6\n  audio\n"));
    EXPECT_THAT(shown.output, HasSubstr("link 7: 5 -> 6\n  subtitles_text\n"));
    EXPECT_EQ(RunProgram({"job", "check", "-"}, made.output).output, "valid\n");
}

TEST(JobNew, AStreamBeyondThePresetsLeadsNowhere) {
    const auto made = RunProgram({"job", "new", "--in", "a.mov", "--stream", "0", "--stream", "1", "--stream", "7",
                                  "--preset", ShippedPreset("web-h264-aac-mp4.json"), "--out", "b.mp4"});
    EXPECT_EQ(made.status, 0);
    EXPECT_EQ(made.messages,
              "quenzo-conf: note: stream 7 of \"a.mov\" leads nowhere: the preset has no place for it\n");
    EXPECT_THAT(made.output, HasSubstr(R"({"id":3,"from":1,"to":4,"data":{"data":{}}},{"id":4,"from":2,"to":5,)"));
    EXPECT_THAT(made.output, HasSubstr(R"({"id":5,"from":3,"to":5,)"));
    EXPECT_THAT(made.output, Not(HasSubstr(R"("from":4)")));
    EXPECT_EQ(RunProgram({"job", "check", "-"}, made.output).output, "valid\n");
}

TEST(JobNew, EveryShippedPresetMakesAValidJob) {
    for (const char* preset : {"web-h264-aac-mp4.json", "archive-hevc10-mkv.json", "music-flac.json"}) {
        const auto made =
            RunProgram({"job", "new", "--in", "a", "--stream", "0", "--preset", ShippedPreset(preset), "--out", "b"});
        EXPECT_EQ(RunProgram({"job", "check", "-"}, made.output).status, 0) << preset;
    }
}

TEST(JobNew, DvdReplacesTheContainerAndSaysSo) {
    const auto result = RunProgram({"job", "new", "--in", "a", "--stream", "0", "--preset",
                                    ShippedPreset("music-flac.json"), "--out", "b", "--dvd"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output, HasSubstr(R"("container":"dvd")"));
    EXPECT_EQ(result.messages, "quenzo-conf: note: --dvd: the container is \"dvd\" instead of \"flac\"\n");
}

TEST(JobNew, DvdSaysWhenThereWasNothingToReplace) {
    const TemporaryFolder folder;
    const auto messages = [&folder](const std::string& preset) {
        return RunProgram({"job", "new", "--in", "a", "--stream", "0", "--preset", folder.Write("p.json", preset),
                           "--out", "b", "--dvd"})
            .messages;
    };
    EXPECT_EQ(messages(R"({"$$STREAMS$$":{"video":{}}})"),
              "quenzo-conf: note: --dvd: the container is \"dvd\"; the preset names none\n");
    EXPECT_EQ(messages(R"({"container":"dvd","$$STREAMS$$":{"video":{}}})"), "");
}

TEST(JobNew, TheLibrarysLogCanBeAskedFor) {
    const auto result = RunProgram({"job", "new", "--in", "a", "--stream", "0", "--preset",
                                    ShippedPreset("music-flac.json"), "--out", "b", "--dvd"},
                                   "", {"GLOG_minloglevel=0"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.messages, EndsWith("Replacing output format for lossless conversion to DVD\n"));
}

TEST(JobNew, RefusesAWrongCommandLine) {
    ExpectFailure(RunProgram({"job", "new", "--stream", "0", "--in", "a", "--preset", "p", "--out", "b"}), 2,
                  "--stream 0: stands before the --in that it belongs to (see quenzo-conf job new --help)");
    ExpectFailure(RunProgram({"job", "new", "--in", "a", "--preset", "p", "--out", "b"}), 2,
                  "--in \"a\": needs a --stream after it (see quenzo-conf job new --help)");
    ExpectFailure(RunProgram({"job", "new", "--in", "", "--stream", "0", "--preset", "p", "--out", "b"}), 2,
                  "--in: needs the path of a file (see quenzo-conf job new --help)");
    for (const char* source : {"--in", "--probe"}) {
        ExpectFailure(RunProgram({"job", "new", source, "a", "--preset", "p", "--out", ""}), 2,
                      "--out: needs the path of a file (see quenzo-conf job new --help)");
    }
    for (const char* stream : {"-1", "1x", "4294967296", "+1", "1.0"}) {
        ExpectFailure(
            RunProgram({"job", "new", "--in", "a", "--stream=" + std::string(stream), "--preset", "p", "--out", "b"}),
            2,
            "--stream " + std::string(stream) +
                ": a stream is numbered from 0 to 4294967295 (see quenzo-conf job new --help)");
    }
}

TEST(JobNew, RefusesAPresetThatIsNone) {
    const TemporaryFolder folder;
    const auto make = [](const std::string& preset) {
        return RunProgram({"job", "new", "--in", "a", "--stream", "0", "--preset", preset, "--out", "b"});
    };
    ExpectFailure(make("/nonexistent.json"), 3, "cannot read \"/nonexistent.json\": No such file or directory");
    ExpectFailure(make("/"), 3, "cannot read \"/\": Is a directory");
    const std::string broken = folder.Write("broken.json", "{\n  \"name\" 1}");
    ExpectFailure(make(broken), 3,
                  "\"" + broken + "\" is no preset: line 2, column 10: Missing a colon after a name of object member.");
    const std::string fraction = folder.Write("fraction.json", R"({"width": 1.5})");
    ExpectFailure(make(fraction), 3,
                  "\"" + fraction + "\" is no preset: \"width\" holds 1.5, which is no signed 64-bit integer");
    const std::string text = folder.Write("text.json", R"("a preset")");
    ExpectFailure(make(text), 3,
                  "\"" + text +
                      "\" is no preset: a preset is a tree with named children, and \"preset\" is a single "
                      "value");
}

TEST(JobNew, RefusesAPresetThatDescribesNoStreams) {
    const TemporaryFolder folder;
    const auto refuses = [&folder](const std::string& text, const std::string& reason) {
        const std::string preset = folder.Write("p.json", text);
        const std::string probe = folder.Write("probe.json", R"({"streams":[],"format":{"filename":"a"}})");
        for (const std::vector<std::string>& source :
             {std::vector<std::string>{"--in", "a", "--stream", "0"}, std::vector<std::string>{"--probe", probe}}) {
            std::vector<std::string> arguments = {"job", "new", "--preset", preset, "--out", "b"};
            arguments.insert(arguments.end(), source.begin(), source.end());
            ExpectFailure(RunProgram(arguments), 3, "\"" + preset + "\" is no preset: " + reason);
        }
    };
    for (const char* text : {"{}", "null", R"([{"a":1},{"a":2}])", R"({"$$STREAMS$$":5})", R"({"$$STREAMS$$":{}})"}) {
        refuses(text, "it has no member \"$$STREAMS$$\" that is an object with a member for each stream");
    }
    refuses(R"({"$$STREAMS$$":{"audio":{},"video":5}})", "its stream \"video\" should be an object of settings");
    refuses("\xEF\xBB\xBF{}", "it begins with a byte order mark; save it as UTF-8 without one");
}

TEST(JobNew, NamesASettingThatShouldBeSomethingElse) {
    const TemporaryFolder folder;
    const struct {
        const char* setting;
        const char* reason;
    } rows[] = {
        {R"("codec_id":5)", R"("codec_id" of its stream "video" should be a text)"},
        {R"("bitrate_mode":true)", R"("bitrate_mode" of its stream "video" should be a text)"},
        {R"("quality":"best")", R"("quality" of its stream "video" should be a whole number)"},
        {R"("width":"1920")", R"("width" of its stream "video" should be a whole number)"},
        {R"("height":null)", R"("height" of its stream "video" should be a whole number)"},
        {R"("frameRateRatio":25)",
         R"("frameRateRatio" of its stream "video" should be a fraction such as [30000,1001])"},
    };
    for (const auto& row : rows) {
        const std::string preset =
            folder.Write("p.json", R"({"$$STREAMS$$":{"video":{)" + std::string(row.setting) + "}}}");
        ExpectFailure(RunProgram({"job", "new", "--in", "a", "--stream", "0", "--preset", preset, "--out", "b"}), 3,
                      "\"" + preset + "\" is no preset: " + row.reason);
    }
}

TEST(JobCheck, SaysValid) {
    const auto result = RunProgram({"job", "check", "-"}, kValid);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "valid\n");
    EXPECT_EQ(RunProgram({"job", "check", "-", "--json"}, kValid).output, "{\"valid\":true,\"findings\":[]}\n");
}

TEST(JobCheck, ReportsEveryFindingAtOnce) {
    const auto result = RunProgram({"job", "check", "-"}, kBroken);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output,
              "not valid\n"
              "isolated-node: no link touches node 4\n"
              "cycle: 1 -> 2 -> 1\n"
              "cycle: 3 -> 3\n"
              "disconnected: the job falls into 3 pieces: [1 2] [3] [4]\n");
    EXPECT_EQ(result.messages, "");
    const auto asJson = RunProgram({"job", "check", "--json", "-"}, kBroken);
    EXPECT_EQ(asJson.status, 1);
    EXPECT_EQ(asJson.output,
              R"({"valid":false,"findings":[{"code":"isolated-node","nodes":[4]},{"code":"cycle","nodes":[1,2]},)"
              R"({"code":"cycle","nodes":[3]},{"code":"disconnected","pieces":[[1,2],[3],[4]]}]})"
              "\n");
}

TEST(JobCheck, ReportsTooFewNodes) {
    const auto result = RunProgram({"job", "check", "-"}, R"({"vertices":[],"edges":[]})");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "not valid\ntoo-few-nodes: a job needs at least 2 nodes, and this has 0\n");
}

TEST(JobFile, WhatIsNoJobDocumentIsRefusedWithTheReason) {
    const auto check = [](const std::string& text) { return RunProgram({"job", "check", "-"}, text); };
    ExpectFailure(check(""), 3, "\"-\" is no job document: line 1, column 1: The document is empty.");
    ExpectFailure(check("{\"vertices\":[\n{]}"), 3,
                  "\"-\" is no job document: line 2, column 2: Missing a name for object member.");
    ExpectFailure(check("[1]"), 3, "\"-\" is no job document: The root node must be an object.");
    ExpectFailure(check("\xEF\xBB\xBF" + std::string(kValid)), 3,
                  "\"-\" is no job document: it begins with a byte order mark; save it as UTF-8 without one");
    ExpectFailure(check(R"({"name":"a preset"})"), 3,
                  "\"-\" is no job document: The root object must have two nested arrays named vertices and edges");
    ExpectFailure(check(R"({"vertices":[{"id":1}],"edges":[{"from":1,"to":7}]})"), 3,
                  "\"-\" is no job document: a link names node 7, which it does not have");
    ExpectFailure(check(R"({"vertices":[{"id":1}],"edges":[{"from":1,"to":1},{"from":1,"to":1}]})"), 3,
                  "\"-\" is no job document: it has two links from node 1 to node 1");
    ExpectFailure(check(R"({"vertices":[{"data":{"a":{"b":0.5}}}],"edges":[]})"), 3,
                  "\"-\" is no job document: \"b\" holds 0.5, which is no signed 64-bit integer");
    ExpectFailure(check(std::string(5000, '[')), 3,
                  "\"-\" is no job document: The document is nested deeper than 1000 levels.");
}

TEST(JobFile, WhatCannotBeReadIsNamed) {
    ExpectFailure(RunProgram({"job", "show", "/nonexistent"}), 3,
                  "cannot read \"/nonexistent\": No such file or directory");
    ExpectFailure(RunProgram({"job", "show", "/"}), 3, "cannot read \"/\": Is a directory");
    ExpectFailure(RunProgram({"job", "show", "no\nsuch"}), 3, "cannot read \"no\\012such\": No such file or directory");
}

TEST(JobShow, PrintsJson) {
    const auto result = RunProgram({"job", "show", "-", "--json"}, kValid);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output,
              R"({"nodes":[{"id":1,"name":"source","tree":{"filePath":"a.mov"}},{"id":2,"name":"data","tree":{}}],)"
              R"("links":[{"id":1,"from":1,"to":2,"name":"data","tree":{}}]})"
              "\n");
}

TEST(JobDraw, PrintsDotText) {
    const std::string dot =
        "digraph G {\n0[label=\"Node Id: 1\nsource [node]\n  filePath [string]: a.mov\n\"];\n"
        "1[label=\"Node Id: 2\ndata [node]\n\"];\n0->1 ;\n}\n";
    EXPECT_EQ(RunProgram({"job", "draw", "-"}, kValid).output, dot);
    EXPECT_EQ(RunProgram({"job", "draw", "-", "-o", "-"}, kValid).output, dot);
    const TemporaryFolder folder;
    for (const char* name : {"a.dot", "b.gv"}) {
        const auto result = RunProgram({"job", "draw", "-", "-o", folder.Path(name)}, kValid);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.output, "");
        EXPECT_EQ(folder.Read(name), dot);
    }
}

TEST(JobDraw, DrawsPictures) {
    const TemporaryFolder folder;
    EXPECT_EQ(RunProgram({"job", "draw", "-", "-o", folder.Path("a.svg")}, kValid).status, 0);
    EXPECT_EQ(RunProgram({"job", "draw", "-", "-o", folder.Path("a.png")}, kValid).status, 0);
    EXPECT_EQ(RunProgram({"job", "draw", "-", "-o", folder.Path("B.SVG")}, kValid).status, 0);
    EXPECT_EQ(RunProgram({"job", "draw", "-", "-o", folder.Path("c.Dot")}, kValid).status, 0);
    EXPECT_THAT(folder.Read("a.svg"), HasSubstr("filePath [string]: a.mov"));
    EXPECT_THAT(folder.Read("a.png"), StartsWith("\x89PNG"));
    EXPECT_EQ(folder.Read("B.SVG"), folder.Read("a.svg"));
    EXPECT_THAT(folder.Read("c.Dot"), StartsWith("digraph G {\n"));
    EXPECT_THAT(folder.List(), ElementsAre("B.SVG", "a.png", "a.svg", "c.Dot"));
}

TEST(JobDraw, FailuresLeaveNoFileBehind) {
    const TemporaryFolder folder;
    ExpectFailure(
        RunProgram({"job", "draw", "-", "-o", folder.Path("a.svg")}, kValid, {"PATH=/nonexistent"}), 4,
        "cannot draw: Graphviz's dot is not installed (on Debian: apt-get install graphviz); a .dot file can be "
        "written without it");
    ExpectFailure(RunProgram({"job", "draw", "-", "-o", folder.Path("a.svg")}, "no job"), 3,
                  "\"-\" is no job document: line 1, column 2: Invalid value.");
    ExpectFailure(RunProgram({"job", "draw", "-", "-o", folder.Path("a.jpg")}, kValid), 2,
                  "cannot draw \"" + folder.Path("a.jpg") + "\": its name should end in .dot, .gv, .svg or .png");
    ExpectFailure(RunProgram({"job", "draw", "-", "-o", folder.Path("no/a.dot")}, kValid), 4,
                  "cannot write \"" + folder.Path("no/a.dot") + "\": No such file or directory");
    EXPECT_TRUE(folder.List().empty());
}

TEST(JobDraw, AFailureKeepsThePictureThatIsThere) {
    const TemporaryFolder folder;
    const std::string picture = folder.Write("a.svg", "as it was");
    EXPECT_EQ(RunProgram({"job", "draw", "-", "-o", picture}, "no job").status, 3);
    EXPECT_EQ(folder.Read("a.svg"), "as it was");
}

TEST(JobPath, PrintsTheWayOrSaysThereIsNone) {
    const auto there = RunProgram({"job", "path", "-", "1", "2"}, kValid);
    EXPECT_EQ(there.status, 0);
    EXPECT_EQ(there.output, "1 -> 2\n");
    const auto back = RunProgram({"job", "path", "-", "2", "1"}, kValid);
    EXPECT_EQ(back.status, 1);
    EXPECT_EQ(back.output, "no way from 2 to 1\n");
    EXPECT_EQ(RunProgram({"job", "path", "-", "1", "2", "--json"}, kValid).output,
              "{\"reachable\":true,\"path\":[1,2]}\n");
    EXPECT_EQ(RunProgram({"job", "path", "-", "2", "1", "--json"}, kValid).output,
              "{\"reachable\":false,\"path\":[]}\n");
}

TEST(JobPath, TheAnswerIsNoWhenTheJobDoesNotHaveTheNode) {
    ExpectFailure(RunProgram({"job", "path", "-", "1", "9"}, kValid), 1, "\"-\" has no node 9");
    ExpectFailure(RunProgram({"job", "path", "-", "9", "9"}, kValid), 1, "\"-\" has no node 9");
}

TEST(JobPath, WhatIsNoNodeIdIsWrongUsage) {
    ExpectFailure(RunProgram({"job", "path", "-", "first", "2"}, kValid), 2, "\"first\" is no node id");
    ExpectFailure(RunProgram({"job", "path", "-", "9223372036854775808", "2"}, kValid), 2,
                  "\"9223372036854775808\" is no node id");
}

TEST(Program, UnknownCommandsAreNamedWithThoseThereAre) {
    ExpectFailure(RunProgram({"jobs"}), 2,
                  "there is no command \"jobs\"; there is job, describe, codecs, formats, groups, layouts, "
                  "sample-formats, pixel-formats, "
                  "colours, codec, format, extension, uti, bitrate, planes, orient (see quenzo-conf --help)");
    ExpectFailure(
        RunProgram({"job", "chek", "-"}), 2,
        "there is no command \"chek\"; there is new, check, show, draw, diff, path (see quenzo-conf job --help)");
    ExpectFailure(RunProgram({"codec"}), 2, "ID is required (see quenzo-conf codec --help)");
    ExpectFailure(RunProgram({"job", "path", "-", "1"}), 2, "TO is required (see quenzo-conf job path --help)");
    ExpectFailure(RunProgram({"job", "check", "-", "--dvd"}, kValid), 2,
                  "The following argument was not expected: --dvd (see quenzo-conf job check --help)");
    EXPECT_EQ(RunProgram({}).status, 2);
    EXPECT_EQ(RunProgram({"job"}).status, 2);
    EXPECT_EQ(RunProgram({"job", "check"}).status, 2);
    EXPECT_EQ(RunProgram({"job", "check", "-", "more"}, kValid).status, 2);
    EXPECT_EQ(RunProgram({"job", "check", "-", "--nonsense"}, kValid).status, 2);
}

TEST(Program, HelpAndVersionGoToStandardOutput) {
    const auto help = RunProgram({"job", "--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_EQ(help.messages, "");
    for (const char* command : {"new", "check", "show", "draw", "path"}) {
        EXPECT_THAT(help.output, HasSubstr(command));
    }
    const auto version = RunProgram({"--version"});
    EXPECT_EQ(version.status, 0);
    EXPECT_EQ(version.output, "quenzo-conf " QUENZO_TEST_VERSION "\n");
}

TEST(Program, AFullDiskIsReported) {
    const TemporaryFolder folder;
    ExpectFailure(RunProgram({"job", "draw", "-", "-o", "/dev/full"}, kValid), 2,
                  "cannot draw \"/dev/full\": its name should end in .dot, .gv, .svg or .png");
    std::filesystem::create_symlink("/dev/full", folder.Path("full.dot"));
    ExpectFailure(RunProgram({"job", "draw", "-", "-o", folder.Path("full.dot")}, kValid), 4,
                  "cannot write \"" + folder.Path("full.dot") + "\": No space left on device");
}

}  // namespace
}  // namespace Quenzo::Tests
