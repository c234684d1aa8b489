// Covers the DOT text of a graph, to the letter. That a DOT reader takes it is covered in GraphDotReaderTest.cpp.

#include <tests/Conf/GraphSupport.h>
#include <tests/Conf/Grouping.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <locale>
#include <stdexcept>
#include <string>
#include <vector>

namespace Quenzo::Conf::Testing {
namespace {

using namespace std::string_literals;
using Core::Property;
using ::testing::HasSubstr;
using ::testing::Not;

// The text between the header and the footer.
std::string DrawnInside(const Graph& graph) {
    const std::string text = Drawn(graph);
    const std::string header = "digraph G {\n";
    const std::string footer = "}\n";
    EXPECT_EQ(text.substr(0, header.size()), header);
    EXPECT_EQ(text.substr(text.size() - footer.size()), footer);
    return text.substr(header.size(), text.size() - header.size() - footer.size());
}

// The line of the only link, whose tree is given.
std::string DrawnLink(const Property& tree) {
    const Graph graph = MakeGraph(1, {});
    const std::string nodes = DrawnInside(graph);
    graph->AddLink(1, 1, tree);
    return DrawnInside(graph).substr(nodes.size());
}

std::string DrawnNode(const Property& tree) {
    const Graph graph = ITranscodingMetaGraph::Create();
    graph->AddNode(tree);
    return DrawnInside(graph);
}

TEST(GraphDotTest, SaveInToDot_OfAnEmptyGraphIsHeaderAndFooter) {
    EXPECT_EQ(Drawn(ITranscodingMetaGraph::Create()), "digraph G {\n}\n");
}

TEST(GraphDotTest, SaveInToDot_OfAJob) {
    const Graph graph = ITranscodingMetaGraph::Create();
    graph->AddNode(ITranscodingMetaGraph::MakeInFileDescription(ioPath("clip.mov")));
    graph->AddNode(ITranscodingMetaGraph::MakeRawStreamDescription(0));
    graph->AddLink(1, 2, Property("data"));
    EXPECT_EQ(Drawn(graph),
              "digraph G {\n"
              "0[label=\"Node Id: 1\n"
              "source [node]\n"
              "  $$TYPE_ID$$ [string]: sourceFile\n"
              "  filePath [string]: clip.mov\n"
              "\"];\n"
              "1[label=\"Node Id: 2\n"
              "streamRaw [node]\n"
              "  id [int64]: 0\n"
              "\"];\n"
              "0->1 ;\n"
              "}\n");
}

TEST(GraphDotTest, SaveInToDot_NamesNodesByPositionAndKeepsIdsInLabels) {
    const Graph graph = MakeGraph(4, {{4, 3}, {1, 4}, {3, 3}});
    graph->RemoveNode(2);
    EXPECT_EQ(Drawn(graph),
              "digraph G {\n"
              "0[label=\"Node Id: 1\nnode [int64]: 1\n\"];\n"
              "1[label=\"Node Id: 3\nnode [int64]: 3\n\"];\n"
              "2[label=\"Node Id: 4\nnode [int64]: 4\n\"];\n"
              "2->1 [label=\"link [string]: 4>3\n\"];\n"
              "0->2 [label=\"link [string]: 1>4\n\"];\n"
              "1->1 [label=\"link [string]: 3>3\n\"];\n"
              "}\n");
}

TEST(GraphDotTest, SaveInToDot_DrawsALinkHandedOnToTheNextNode) {
    const Graph graph = MakeGraph(3, {});
    graph->AddLink(1, 2, Property("data"));
    graph->RemoveNode(2);
    EXPECT_EQ(Drawn(graph),
              "digraph G {\n"
              "0[label=\"Node Id: 1\nnode [int64]: 1\n\"];\n"
              "1[label=\"Node Id: 3\nnode [int64]: 3\n\"];\n"
              "0->1 ;\n"
              "}\n");
}

TEST(GraphDotTest, SaveInToDot_IntoNoOutputThrows) {
    ExpectText<std::invalid_argument>([] { MakeGraph(1, {})->SaveInToDot(nullptr); }, "output is null");
}

// Sets the locale of the program while it lives.
class GlobalLocale {
public:
    explicit GlobalLocale(const std::locale& locale) : before_(std::locale::global(locale)) {}
    GlobalLocale(const GlobalLocale&) = delete;
    GlobalLocale& operator=(const GlobalLocale&) = delete;
    ~GlobalLocale() { std::locale::global(before_); }

private:
    std::locale before_;
};

TEST(GraphDotTest, SaveInToDot_WritesPlainNumbersWhateverTheLocaleOfTheProgram) {
    const Graph graph = MakeGraph(1002, {{1001, 1002}});
    const GlobalLocale locale(GroupingLocale());
    const std::string drawn = Drawn(graph);
    EXPECT_THAT(drawn, HasSubstr("1000[label=\"Node Id: 1001\nnode [int64]: 1001\n\"];\n"
                                 "1001[label=\"Node Id: 1002\nnode [int64]: 1002\n\"];\n"
                                 "1000->1001 [label=\"link [string]: 1001>1002\n\"];\n"
                                 "}\n"));
    EXPECT_THAT(drawn, Not(HasSubstr(",")));
}

TEST(GraphDotTest, SaveInToDot_ShowsNegativeIds) {
    EXPECT_EQ(Drawn(Loaded(R"({"vertices":[{"id":-7}],"edges":[]})")),
              "digraph G {\n0[label=\"Node Id: -7\ndata [node]\n\"];\n}\n");
}

TEST(GraphDotTest, SaveInToDot_LeavesOutTheLabelOfTheEmptyLinkTreeOnly) {
    EXPECT_EQ(DrawnLink(Property("data")), "0->0 ;\n");
    EXPECT_EQ(DrawnLink(Property("Data")), "0->0 [label=\"Data [node]\n\"];\n");
    EXPECT_EQ(DrawnLink(Property("")), "0->0 [label=\" [node]\n\"];\n");
    EXPECT_EQ(DrawnLink(Property()), "0->0 [label=\" [none]\n\"];\n");
    EXPECT_EQ(DrawnLink(Property("data", "")), "0->0 [label=\"data [string]: \n\"];\n");
    EXPECT_EQ(DrawnLink(Property("data", false)), "0->0 [label=\"data [bool]: false\n\"];\n");
    Property parent("parent");
    const Property none = parent.SetChild("data", Property());
    EXPECT_EQ(DrawnLink(none), "0->0 [label=\"data [none]\n\"];\n");
    Property full("data");
    full.SetChildT<long long>("a", 1);
    EXPECT_EQ(DrawnLink(full), "0->0 [label=\"data [node]\n  a [int64]: 1\n\"];\n");
}

TEST(GraphDotTest, SaveInToDot_OfALinkLoadedWithoutDataHasNoLabel) {
    const Graph graph = Loaded(R"({"vertices":[{"id":1},{"id":2}],"edges":[{"from":1,"to":2}]})");
    EXPECT_EQ(Drawn(graph),
              "digraph G {\n"
              "0[label=\"Node Id: 1\ndata [node]\n\"];\n"
              "1[label=\"Node Id: 2\ndata [node]\n\"];\n"
              "0->1 ;\n"
              "}\n");
}

TEST(GraphDotTest, SaveInToDot_EscapesWhatWouldEndALabel) {
    EXPECT_EQ(DrawnNode(Property("a\"b", "c\\")), "0[label=\"Node Id: 1\na\\\"b [string]: c\\\\\n\"];\n");
    EXPECT_EQ(DrawnNode(Property("\\", "\\\"")), "0[label=\"Node Id: 1\n\\\\ [string]: \\\\\\\"\n\"];\n");
    EXPECT_EQ(DrawnLink(Property("\"", "\"];}")), "0->0 [label=\"\\\" [string]: \\\"];}\n\"];\n");
}

TEST(GraphDotTest, SaveInToDot_EscapesControlCharactersAndBytesThatAreNoUtf8) {
    EXPECT_EQ(DrawnNode(Property("a\nb", "\r\t\x01\x7F\0"s)),
              "0[label=\"Node Id: 1\na\\nb [string]: \\r\\t\\001\\177\\000\n\"];\n");
    EXPECT_EQ(DrawnNode(Property("\xC3\xA4", "\xFF\xC3")),
              "0[label=\"Node Id: 1\n\xC3\xA4 [string]: \\377\\303\n\"];\n");
}

TEST(GraphDotTest, SaveInToDot_HandsTheTextOverInOneWriteAndLetsGoOfTheOutput) {
    class Writes : public RefCounted<Core::IDataOutput> {
    public:
        void Write(const void* /*bytes*/, std::size_t size) override { sizes.push_back(size); }
        std::vector<std::size_t> sizes;
    };
    const Graph graph = MakeGraph(3, {{1, 2}, {2, 3}});
    const SP<Writes> output(new Writes());
    graph->SaveInToDot(output);
    EXPECT_EQ(output->sizes, std::vector<std::size_t>{Drawn(graph).size()});
    EXPECT_EQ(output->GetRefCount(), 1);
}

TEST(GraphDotTest, SaveInToDot_LetsTheFailureOfTheOutputThrough) {
    class Full : public RefCounted<Core::IDataOutput> {
    public:
        void Write(const void* /*bytes*/, std::size_t /*size*/) override { throw std::length_error("full"); }
    };
    const Graph graph = MakeGraph(2, {{1, 2}});
    EXPECT_THROW(graph->SaveInToDot(SP<Full>(new Full())), std::length_error);
    EXPECT_EQ(EndsOf(graph), (std::vector<Pair>{{1, 2}}));
}

TEST(GraphDotTest, SaveInToDot_OfADeepTreeNeedsNoDeepStack) {
    // Deeper than a document may be; the picture has no such limit.
    Property tree("n");
    for (int i = 0; i < 3000; ++i) {
        Property parent("n");
        parent.Add(std::move(tree));
        tree = std::move(parent);
    }
    const std::string text = DrawnNode(tree);
    EXPECT_NE(text.find("\n" + std::string(6000, ' ') + "n [node]\n\"];\n"), std::string::npos);
}

}  // namespace
}  // namespace Quenzo::Conf::Testing
