// Covers the makers of the standard trees: source file, output file, raw stream, controlled-by marker, merge entries.

#include <Conf/Interfaces/ITranscodingMetaGraph.h>
#include <tests/Conf/DescriptionSupport.h>
#include <tests/Conf/Failures.h>

#include <glog/logging.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

namespace Quenzo::Conf::Testing {
namespace {

using Builders = ITranscodingMetaGraph;
using Core::Property;

constexpr unsigned int kLargestIndex = 4294967295U;

class FixedPreset : public RefCounted<IPreset> {
public:
    explicit FixedPreset(Property tree) : tree_(std::move(tree)) {}

    std::size_t GetStreamCount() const override { return 0; }
    void GetStreamIndices(const std::string& /*streamType*/, std::vector<std::uint32_t>& /*indices*/) const override {}
    const Property& GetProperty() const override { return tree_; }

private:
    Property tree_;
};

SP<const IPreset> MakePreset(Property tree) { return SP<const IPreset>(new FixedPreset(std::move(tree))); }

Property WebPreset() {
    return Tree("web",
                {Property("name", "Web"), Property("container", "mov"),
                 Tree("$$STREAMS$$", {Property("video", "h264"), Property("audio", "aac")}), Property("quality", 5)});
}

// What is logged while it lives.
class LogLines : public google::LogSink {
public:
    LogLines() { google::AddLogSink(this); }
    LogLines(const LogLines&) = delete;
    LogLines& operator=(const LogLines&) = delete;
    ~LogLines() override { google::RemoveLogSink(this); }

    void send(google::LogSeverity severity, const char* /*path*/, const char* /*file*/, int /*line*/,
              const google::LogMessageTime& /*time*/, const char* message, std::size_t length) override {
        lines_.push_back(std::string(google::GetLogSeverityName(severity)) + " " + std::string(message, length));
    }

    const std::vector<std::string>& Lines() const { return lines_; }

private:
    std::vector<std::string> lines_;
};

TEST(GraphBuildersTest, GetControlledBy_HoldsTheIndexUnderItsOwnName) {
    EXPECT_EQ(Builders::GetControlledBy(3), Tree("$$CONTROLLED_BY$$", {Property("$$CONTROLLED_BY$$", 3LL)}));
    EXPECT_EQ(Builders::GetControlledBy(0), Tree("$$CONTROLLED_BY$$", {Property("$$CONTROLLED_BY$$", 0LL)}));
}

TEST(GraphBuildersTest, GetControlledBy_WidensWithoutSign) {
    EXPECT_EQ(Builders::GetControlledBy(kLargestIndex),
              Tree("$$CONTROLLED_BY$$", {Property("$$CONTROLLED_BY$$", 4294967295LL)}));
}

TEST(GraphBuildersTest, MakeRawStreamDescription_HoldsTheStreamId) {
    EXPECT_EQ(Builders::MakeRawStreamDescription(0), Tree("streamRaw", {Property("id", 0LL)}));
    EXPECT_EQ(Builders::MakeRawStreamDescription(kLargestIndex), Tree("streamRaw", {Property("id", 4294967295LL)}));
}

TEST(GraphBuildersTest, MakeInFileDescription_HoldsTypeAndPath) {
    EXPECT_EQ(Builders::MakeInFileDescription(ioPath("/media/clip.mov")),
              Tree("source", {Property("$$TYPE_ID$$", "sourceFile"), Property("filePath", "/media/clip.mov")}));
}

TEST(GraphBuildersTest, MakeInFileDescription_KeepsThePathInUtf8) {
    const std::string path =
        "Sch\xC3\xB6ne Gr\xC3\xBC\xC3\x9F"
        "e/\xE6\x98\xA0\xE7\x94\xBB \"1\".mkv";
    EXPECT_EQ(Builders::MakeInFileDescription(ioPath(path))["filePath"].GetString(), path);
    EXPECT_EQ(Builders::MakeInFileDescription(ioPath(""))["filePath"].GetString(), "");
}

TEST(GraphBuildersTest, MakeOutFileDescription_TakesThePresetWithoutItsStreams) {
    const LogLines log;
    EXPECT_EQ(Builders::MakeOutFileDescription(MakePreset(WebPreset()), ioPath("out.mov"), false),
              Tree("web", {Property("name", "Web"), Property("container", "mov"), Property("quality", 5),
                           Property("filePath", "out.mov")}));
    EXPECT_EQ(log.Lines(), std::vector<std::string>());
}

TEST(GraphBuildersTest, MakeOutFileDescription_LosslessToDvdReplacesTheContainerAndLogsOnce) {
    const LogLines log;
    EXPECT_EQ(Builders::MakeOutFileDescription(MakePreset(WebPreset()), ioPath("out.vob"), true),
              Tree("web", {Property("name", "Web"), Property("container", "dvd"), Property("quality", 5),
                           Property("filePath", "out.vob")}));
    EXPECT_EQ(log.Lines(), std::vector<std::string>{"INFO Replacing output format for lossless conversion to DVD"});
}

TEST(GraphBuildersTest, MakeOutFileDescription_LosslessToDvdAddsAContainerWhenThePresetHasNone) {
    const LogLines log;
    EXPECT_EQ(Builders::MakeOutFileDescription(MakePreset(Property("empty")), ioPath("out.vob"), true),
              Tree("empty", {Property("filePath", "out.vob"), Property("container", "dvd")}));
    EXPECT_EQ(log.Lines().size(), 1U);
}

TEST(GraphBuildersTest, MakeOutFileDescription_ReplacesAPathAndAContainerInPlace) {
    const Property preset =
        Tree("p", {Property("filePath", 7), Tree("container", {Property("inner", true)}), Property("last", "x")});
    const LogLines log;
    EXPECT_EQ(Builders::MakeOutFileDescription(MakePreset(preset), ioPath("a/b"), true),
              Tree("p", {Property("filePath", "a/b"), Property("container", "dvd"), Property("last", "x")}));
    EXPECT_EQ(log.Lines().size(), 1U);
}

TEST(GraphBuildersTest, MakeOutFileDescription_LeavesThePresetAsItWas) {
    const SP<const IPreset> preset = MakePreset(WebPreset());
    const LogLines log;
    Builders::MakeOutFileDescription(preset, ioPath("out.vob"), true);
    EXPECT_EQ(preset->GetProperty(), WebPreset());
    EXPECT_EQ(preset->GetRefCount(), 1);
}

TEST(GraphBuildersTest, MakeOutFileDescription_WithoutAPresetThrows) {
    const LogLines log;
    ExpectText<std::invalid_argument>([] { Builders::MakeOutFileDescription(nullptr, ioPath("out"), true); },
                                      "preset is NULL");
    EXPECT_EQ(log.Lines(), std::vector<std::string>());
}

TEST(GraphBuildersTest, MakeOutFileDescription_OfAPresetThatIsALeafThrowsAndLogsNothing) {
    const LogLines log;
    EXPECT_THROW(Builders::MakeOutFileDescription(MakePreset(Property("leaf", 1)), ioPath("out"), true),
                 Core::MethodIsNotApplicable);
    EXPECT_EQ(log.Lines(), std::vector<std::string>());
}

TEST(GraphBuildersTest, AddSlaveStreamIndex_MakesTheListAndAnEntry) {
    Property master = Tree("video", {Property("codec", "h264")});
    Builders::AddSlaveStreamIndex(master, Tree("overlay", {Property("x", 10)}), 2);
    const Property settings = Tree("$$MERGE_SETTINGS$$", {Property("x", 10)});
    EXPECT_EQ(master, Tree("video", {Property("codec", "h264"),
                                     Tree("$$MERGE_WITH$$", {Tree("", {Property("$$MERGE_WITH$$", 2LL), settings})})}));
}

TEST(GraphBuildersTest, AddSlaveStreamIndex_TwiceAddsTwoEntries) {
    Property master("video");
    Builders::AddSlaveStreamIndex(master, Tree("first", {Property("x", 1)}), 1);
    Builders::AddSlaveStreamIndex(master, Property("second"), kLargestIndex);
    const Property first = Tree("", {Property("$$MERGE_WITH$$", 1LL), Tree("$$MERGE_SETTINGS$$", {Property("x", 1)})});
    const Property second = Tree("", {Property("$$MERGE_WITH$$", 4294967295LL), Property("$$MERGE_SETTINGS$$")});
    EXPECT_EQ(master, Tree("video", {Tree("$$MERGE_WITH$$", {first, second})}));
}

TEST(GraphBuildersTest, AddSlaveStreamIndex_KeepsACopyOfTheSettings) {
    Property master("video");
    Property settings = Tree("settings", {Property("x", 1)});
    Builders::AddSlaveStreamIndex(master, settings, 1);
    settings.SetChildT<long long>("x", 2);
    EXPECT_EQ(master["$$MERGE_WITH$$"][0U]["$$MERGE_SETTINGS$$"]["x"].GetInt64(), 1);
}

TEST(GraphBuildersTest, AddSlaveStreamIndex_TakesSettingsFromTheMasterItself) {
    Property master = Tree("video", {Tree("inner", {Property("x", 1)})});
    Builders::AddSlaveStreamIndex(master, master["inner"], 1);
    Builders::AddSlaveStreamIndex(master, master, 2);
    EXPECT_EQ(master["$$MERGE_WITH$$"].Count(), 2U);
    EXPECT_EQ(master["$$MERGE_WITH$$"][0U]["$$MERGE_SETTINGS$$"], Tree("$$MERGE_SETTINGS$$", {Property("x", 1)}));
    EXPECT_EQ(master["$$MERGE_WITH$$"][1U]["$$MERGE_SETTINGS$$"].Count(), 2U);
}

TEST(GraphBuildersTest, AddSlaveStreamIndex_OnALeafThrowsAndChangesNothing) {
    Property leaf("leaf", "text");
    EXPECT_THROW(Builders::AddSlaveStreamIndex(leaf, Property("settings"), 1), Core::MethodIsNotApplicable);
    EXPECT_EQ(leaf, Property("leaf", "text"));
    Property masked = Tree("video", {Property("$$MERGE_WITH$$", 5)});
    EXPECT_THROW(Builders::AddSlaveStreamIndex(masked, Property("settings"), 1), Core::MethodIsNotApplicable);
    EXPECT_EQ(masked, Tree("video", {Property("$$MERGE_WITH$$", 5)}));
}

TEST(GraphBuildersTest, MergeEntries_SurviveADocument) {
    Property master = Builders::MakeRawStreamDescription(0);
    Builders::AddSlaveStreamIndex(master, Property("settings"), 1);
    Builders::AddSlaveStreamIndex(master, Property("settings"), 2);
    const SP<ITranscodingMetaGraph> graph = ITranscodingMetaGraph::Create();
    graph->AddNode(master);
    const SP<Core::MemoryOutput> output = Core::MemoryOutput::Create();
    graph->Save(output);
    const SP<ITranscodingMetaGraph> loaded = ITranscodingMetaGraph::Create();
    loaded->Load(Core::MemoryInput::Create(output->GetBytes()));
    EXPECT_EQ((*loaded)[1], master);
}

}  // namespace
}  // namespace Quenzo::Conf::Testing
