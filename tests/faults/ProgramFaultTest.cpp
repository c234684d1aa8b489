// Covers the program when its streams and files fail: a full disk, closed streams, pipes that nobody reads, inputs that
// cannot be read and outputs that cannot be written. Exit status and message are those of the manual.

#include <foundation/StringUtils.h>
#include <tests/tools/ProgramRunner.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <unistd.h>

#include <array>
#include <string>
#include <vector>

namespace Quenzo::Tests {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;
using Words = std::vector<std::string>;

// Runs the program by a shell's script, in which "$@" stands for the program and its arguments.
ProgramResult RunByShell(const std::string& script, const Words& arguments) {
    Words command = {"sh", "-c", script, "sh"};
    Words program;
    SplitString(program, QUENZO_TEST_EMULATOR, ' ');
    command.insert(command.end(), program.begin(), program.end());
    command.emplace_back(QUENZO_TEST_PROGRAM);
    command.insert(command.end(), arguments.begin(), arguments.end());
    return Testing::RunProgram(command);
}

std::string Job(const std::string& name) { return std::string(QUENZO_TEST_JOBS "/") + name; }

std::string Probe() { return QUENZO_TEST_PROBES "/hdr10.mkv.json"; }

std::string Preset() { return ShippedPreset("web-h264-aac-mp4.json"); }

// Everything that prints, in both forms.
std::vector<Words> PrintingCommands() {
    const std::string job = Job("two-sources.json");
    std::vector<Words> commands = {
        {"job", "new", "--in", "clip.mov", "--stream", "0", "--preset", Preset(), "--out", "clip.mp4"},
        {"job", "new", "--probe", Probe(), "--preset", Preset(), "--out", "clip.mp4"},
        {"job", "check", job},
        {"job", "check", Job("every-kind-of-value.json")},
        {"job", "show", job},
        {"job", "path", job, "1", "2"},
        {"job", "diff", job, Job("probed-clip.json")},
        {"job", "diff", job, job},
        {"describe", Probe()},
        {"codec", "hevc"},
        {"format", "mkv"},
        {"extension", "mp4"},
        {"uti", "public.heic"},
        {"bitrate", "--codec", "h264", "--size", "1920x1080", "--fps", "30"},
        {"planes", "yuv420p", "--size", "1920x1080"},
        {"orient", "6", "--size", "4032x3024"},
    };
    for (const char* list : {"codecs", "formats", "groups", "layouts", "sample-formats", "pixel-formats", "colours"}) {
        commands.push_back({list});
    }
    const std::vector<Words> plain = commands;
    for (Words command : plain) {
        command.emplace_back("--json");
        commands.push_back(command);
    }
    commands.push_back({"job", "draw", job});
    commands.push_back({"--version"});
    commands.push_back({"--help"});
    commands.push_back({"job", "--help"});
    commands.push_back({"job", "new", "--help"});
    return commands;
}

std::string Text(const Words& command) {
    std::string text;
    for (const std::string& word : command) {
        text += word + ' ';
    }
    return text;
}

TEST(ProgramFaultTest, EveryCommand_PrintsWhenItCan) {
    for (const Words& command : PrintingCommands()) {
        const ProgramResult result = RunByShell(R"(exec "$@")", command);
        EXPECT_TRUE(result.status == 0 || result.status == 1) << Text(command) << result.messages;
        // Two equal jobs have no difference to print.
        EXPECT_EQ(result.output.empty(), command == (Words{"job", "diff", command.back(), command.back()}))
            << Text(command);
    }
}

// What the program says at other times too comes first. Where there is no answer to write nothing fails.
void ExpectUnwritable(const std::string& script, const Words& command, const std::string& reason) {
    const ProgramResult usual = RunByShell(R"(exec "$@")", command);
    const std::string complaint = "quenzo-conf: cannot write to standard output: " + reason + "\n";
    const ProgramResult result = RunByShell(script, command);
    EXPECT_EQ(result.status, usual.output.empty() ? 0 : 4) << Text(command);
    EXPECT_EQ(result.messages, usual.messages + (usual.output.empty() ? "" : complaint)) << Text(command);
}

TEST(ProgramFaultTest, EveryCommand_SaysThatTheDiskIsFull) {
    for (const Words& command : PrintingCommands()) {
        ExpectUnwritable(R"(exec "$@" >/dev/full)", command, "No space left on device");
    }
}

TEST(ProgramFaultTest, EveryCommand_SaysThatStandardOutputIsClosed) {
    for (const Words& command : PrintingCommands()) {
        ExpectUnwritable(R"(exec "$@" >&-)", command, "Bad file descriptor");
    }
}

// The end of a pipe that nobody reads, at a number of one digit, which every shell understands.
class UnreadPipe {
public:
    UnreadPipe() {
        std::array<int, 2> ends = {};
        EXPECT_EQ(pipe(ends.data()), 0);
        close(ends[0]);
        EXPECT_EQ(dup2(ends[1], kNumber), kNumber);
        close(ends[1]);
    }
    UnreadPipe(const UnreadPipe&) = delete;
    UnreadPipe& operator=(const UnreadPipe&) = delete;
    ~UnreadPipe() { close(kNumber); }

    static constexpr int kNumber = 9;
};

TEST(ProgramFaultTest, PipeThatNobodyReads_EndsTheProgramByItsSignal) {
    const UnreadPipe pipe;
    for (const Words& command : {Words{"codecs"}, Words{"codecs", "--json"}, Words{"--help"}}) {
        const ProgramResult result = RunByShell(R"("$@" >&9; echo "$?")", command);
        EXPECT_EQ(result.output, "141\n") << Text(command);
        EXPECT_EQ(result.messages, "") << Text(command);
    }
}

TEST(ProgramFaultTest, PipeThatNobodyReads_IsAnUnwritableOutputWhereTheSignalIsIgnored) {
    const UnreadPipe pipe;
    for (const Words& command : {Words{"codecs"}, Words{"codecs", "--json"}, Words{"--help"}}) {
        ExpectUnwritable(R"(trap "" PIPE; exec "$@" >&9)", command, "Broken pipe");
    }
}

// The commands that read a file, without it.
std::vector<Words> ReadingCommands() {
    return {
        {"job", "check"},
        {"job", "show"},
        {"job", "draw"},
        {"job", "path", "1", "2"},
        {"job", "diff", Job("two-sources.json")},
        {"describe"},
        {"job", "new", "--in", "clip.mov", "--stream", "0", "--out", "clip.mp4", "--preset"},
        {"job", "new", "--preset", Preset(), "--out", "clip.mp4", "--probe"},
    };
}

void ExpectUnreadable(const std::string& script, const std::string& file, const std::string& message) {
    for (Words command : ReadingCommands()) {
        const bool isPath = command.size() > 1 && command[1] == "path";
        command.insert(isPath ? command.begin() + 2 : command.end(), file);
        const ProgramResult result = RunByShell(script, command);
        EXPECT_EQ(result.status, 3) << Text(command);
        EXPECT_EQ(result.output, "") << Text(command);
        EXPECT_EQ(result.messages, "quenzo-conf: cannot read \"" + message + "\n") << Text(command);
    }
}

TEST(ProgramFaultTest, Input_ThatCannotBeReadIsNamed) {
    const TemporaryFolder folder;
    const std::string run = R"(exec "$@")";
    const std::string missing = folder.Path("missing.json");
    ExpectUnreadable(run, missing, missing + "\": No such file or directory");
    ExpectUnreadable(run, folder.Path(""), folder.Path("") + "\": Is a directory");
    const std::string inside = folder.Write("file", "{}") + "/inside";
    ExpectUnreadable(run, inside, inside + "\": Not a directory");
    ExpectUnreadable(run + " <&-", "-", "standard input\": Bad file descriptor");
    ExpectUnreadable(run + " </", "-", "standard input\": Is a directory");
    const std::string closed = folder.Write("closed", "{}");
    ASSERT_EQ(chmod(closed.c_str(), 0), 0);
    // Nothing is closed to root.
    if (geteuid() != 0) {
        ExpectUnreadable(run, closed, closed + "\": Permission denied");
    }
}

TEST(ProgramFaultTest, Output_ThatCannotBeWrittenIsNamedAndNothingIsLeftBehind) {
    const TemporaryFolder folder;
    const std::string file = folder.Write("file", "what was there");
    struct Case {
        std::string target;
        std::string reason;
    };
    for (const Case& each : {Case{"/dev/full", "No space left on device"},
                             Case{folder.Path("missing/job.dot"), "No such file or directory"},
                             Case{file + "/job.dot", "Not a directory"}}) {
        const Words draw = {"job", "draw", Job("two-sources.json"), "-o", each.target};
        const ProgramResult result = RunProgram(draw);
        EXPECT_EQ(result.status, each.target == "/dev/full" ? 2 : 4) << each.target;
        EXPECT_EQ(result.output, "");
        EXPECT_THAT(result.messages, StartsWith("quenzo-conf: ")) << each.target;
        EXPECT_THAT(result.messages, HasSubstr(each.target == "/dev/full" ? each.target : each.reason));
    }
    EXPECT_EQ(folder.List(), Words{"file"});
    EXPECT_EQ(folder.Read("file"), "what was there");
}

TEST(ProgramFaultTest, Output_OnAFullDevice) {
    const TemporaryFolder folder;
    // The picture's form comes from its name.
    const std::string full = folder.Path("full.dot");
    ASSERT_EQ(symlink("/dev/full", full.c_str()), 0);
    const ProgramResult result = RunProgram({"job", "draw", Job("two-sources.json"), "-o", full});
    EXPECT_EQ(result.status, 4);
    EXPECT_EQ(result.messages, "quenzo-conf: cannot write \"" + full + "\": No space left on device\n");
    EXPECT_EQ(folder.List(), Words{"full.dot"});
}

// A file that is opened gets the first number that is free; were that of a closed stream, messages would land in it.
TEST(ProgramFaultTest, ClosedStreams_DoNotMixWithFiles) {
    const TemporaryFolder folder;
    const std::string job = Job("two-sources.json");
    for (const char* name : {"open.svg", "open.dot"}) {
        EXPECT_EQ(RunProgram({"job", "draw", job, "-o", folder.Path(name)}).status, 0);
    }
    for (const std::string closed : {"<&-", ">&-", "2>&-", "<&- >&-", "<&- 2>&-", "<&- >&- 2>&-"}) {
        for (const std::string name : {".svg", ".dot"}) {
            const std::string picture = folder.Path("closed" + name);
            const ProgramResult result = RunByShell(R"(exec "$@" )" + closed, {"job", "draw", job, "-o", picture});
            EXPECT_EQ(result.status, 0) << closed;
            EXPECT_EQ(result.output + result.messages, "") << closed;
            EXPECT_EQ(folder.Read("closed" + name), folder.Read("open" + name)) << closed;
        }
    }
    EXPECT_EQ(RunByShell(R"(exec "$@" 2>&-)", {"codec", "nobody-knows-this"}).status, 1);
    EXPECT_EQ(RunByShell(R"(exec "$@" 2>/dev/full)", {"no-such-command"}).status, 2);
}

}  // namespace
}  // namespace Quenzo::Tests
