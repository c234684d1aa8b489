// Covers writing a graph as a job document: the exact text, what is left out of it, and failures. Reading is covered in
// GraphLoadTest.cpp, laws over both in GraphDocumentLawTest.cpp.

#include <tests/Conf/GraphSupport.h>

#include <gtest/gtest.h>
#include <boost/rational.hpp>

#include <cstddef>
#include <stdexcept>
#include <string>

namespace Quenzo::Conf::Testing {
namespace {

using Core::Property;

// The document of one node with that tree.
std::string SavedTree(const Property& tree) {
    const Graph graph = ITranscodingMetaGraph::Create();
    graph->AddNode(tree);
    return Saved(graph);
}

std::string DocumentOf(const std::string& data) {
    return R"({"vertices":[{"id":1,"data":)" + data + R"(}],"edges":[]})";
}

Property NodeWith(const std::string& name, Property child) {
    Property node(name);
    node.Add(std::move(child));
    return node;
}

// A chain of so many nodes, one in the other, the innermost without children.
Property Chain(int nodes) {
    Property tree("n");
    for (int i = 1; i < nodes; ++i) {
        tree = NodeWith("n", std::move(tree));
    }
    return tree;
}

class FailingOutput : public RefCounted<Core::IDataOutput> {
public:
    explicit FailingOutput(std::size_t capacity) : capacity_(capacity) {}

    void Write(const void* /*bytes*/, std::size_t size) override {
        if (written_ + size > capacity_) {
            throw std::length_error("full");
        }
        written_ += size;
        longest_ = std::max(longest_, size);
    }

    std::size_t Written() const { return written_; }
    std::size_t Longest() const { return longest_; }

private:
    std::size_t capacity_;
    std::size_t written_ = 0;
    std::size_t longest_ = 0;
};

TEST(GraphSaveTest, Save_IntoNoOutputThrows) {
    ExpectText<std::invalid_argument>([] { MakeGraph(1, {})->Save(nullptr); }, "output is null");
}

TEST(GraphSaveTest, Save_OfAnEmptyGraphWritesTwoEmptyArrays) {
    EXPECT_EQ(Saved(ITranscodingMetaGraph::Create()), R"({"vertices":[],"edges":[]})");
}

TEST(GraphSaveTest, Save_WritesNodesAndLinksInOrder) {
    const Graph graph = ITranscodingMetaGraph::Create();
    graph->AddNode(ITranscodingMetaGraph::MakeInFileDescription(ioPath("clip.mov")));
    graph->AddNode(ITranscodingMetaGraph::MakeRawStreamDescription(0));
    graph->AddLink(1, 2, Property());
    EXPECT_EQ(Saved(graph), R"({"vertices":[)"
                            R"({"id":1,"data":{"source":{"$$TYPE_ID$$":"sourceFile","filePath":"clip.mov"}}},)"
                            R"({"id":2,"data":{"streamRaw":{"id":0}}}],)"
                            R"("edges":[{"id":1,"from":1,"to":2}]})");
}

TEST(GraphSaveTest, Save_WritesTheTreesOfLinksLikeThoseOfNodes) {
    const Graph graph = MakeGraph(2, {});
    graph->AddLink(2, 1, NodeWith("how", Property("fast", true)));
    graph->AddLink(1, 1, Property("text", "x"));
    EXPECT_EQ(Saved(graph), R"({"vertices":[{"id":1,"data":{"node":1}},{"id":2,"data":{"node":2}}],)"
                            R"("edges":[{"id":1,"from":2,"to":1,"data":{"how":{"fast":true}}},)"
                            R"({"id":2,"from":1,"to":1,"data":{"text":"x"}}]})");
}

TEST(GraphSaveTest, Save_AfterRemovalsWritesWhatIsLeftUnderItsIds) {
    const Graph graph = MakeGraph(4, {{1, 2}, {3, 4}, {4, 3}});
    graph->RemoveLink(1, 2);
    graph->RemoveNode(2);
    EXPECT_EQ(Saved(graph),
              R"({"vertices":[{"id":1,"data":{"node":1}},{"id":3,"data":{"node":3}},{"id":4,"data":{"node":4}}],)"
              R"("edges":[{"id":2,"from":3,"to":4,"data":{"link":"3>4"}},)"
              R"({"id":3,"from":4,"to":3,"data":{"link":"4>3"}}]})");
}

TEST(GraphSaveTest, Save_WritesEveryKindOfValue) {
    EXPECT_EQ(SavedTree(Property("t", true)), DocumentOf(R"({"t":true})"));
    EXPECT_EQ(SavedTree(Property("t", -9223372036854775807LL - 1)), DocumentOf(R"({"t":-9223372036854775808})"));
    EXPECT_EQ(SavedTree(Property("t", boost::rational<long long>(30000, 1001))), DocumentOf(R"({"t":[30000,1001]})"));
    EXPECT_EQ(SavedTree(Property("t", "")), DocumentOf(R"({"t":""})"));
    EXPECT_EQ(SavedTree(Property("t")), DocumentOf(R"({"t":{}})"));
    EXPECT_EQ(SavedTree(NodeWith("t", NodeWith("a", Property("b")))), DocumentOf(R"({"t":{"a":{"b":{}}}})"));
}

TEST(GraphSaveTest, Save_WritesIdsOfBothSignsToTheLastDigit) {
    const std::string vertices = R"({"vertices":[{"id":-9223372036854775808,"data":{"a":{}}},)"
                                 R"({"id":9223372036854775807,"data":{"b":{}}}],"edges":)";
    const std::string ends = R"("from":-9223372036854775808,"to":9223372036854775807)";
    EXPECT_EQ(Saved(Loaded(vertices + R"([{"id":9223372036854775806,)" + ends + "}]}")),
              vertices + R"([{"id":9223372036854775807,)" + ends + R"(,"data":{"data":{}}}]})");
}

TEST(GraphSaveTest, Save_LeavesTheDataOfAnEmptyTreeOut) {
    const std::string withoutData = R"({"vertices":[{"id":1}],"edges":[]})";
    EXPECT_EQ(SavedTree(Property()), withoutData);
    EXPECT_EQ(SavedTree(Property("")), withoutData);
    Property named("parent");
    const Property none = named.SetChild("none", Property());
    ASSERT_EQ(none.GetType(), PropertyTypes::None);
    ASSERT_EQ(none.GetName(), "none");
    EXPECT_EQ(SavedTree(none), withoutData);
}

TEST(GraphSaveTest, Save_KeepsTheDataOfTreesThatAreAlmostEmpty) {
    EXPECT_EQ(SavedTree(Property("data")), DocumentOf(R"({"data":{}})"));
    EXPECT_EQ(SavedTree(Property("", "")), DocumentOf(R"({"":""})"));
    EXPECT_EQ(SavedTree(Property("", 0)), DocumentOf(R"({"":0})"));
    EXPECT_EQ(SavedTree(Property("", false)), DocumentOf(R"({"":false})"));
    EXPECT_EQ(SavedTree(NodeWith("", Property(""))), DocumentOf(R"({"":{"":{}}})"));
    EXPECT_EQ(SavedTree(NodeWith("", Property())), DocumentOf(R"({"":{"":null}})"));
}

TEST(GraphSaveTest, Save_WritesChildrenOfOneNameAsAList) {
    Property tree("t");
    tree.CreateChildT<long long>("a", 1);
    tree.CreateChildT<long long>("a", 2);
    EXPECT_EQ(SavedTree(tree), DocumentOf(R"({"t":[{"a":1},{"a":2}]})"));
}

TEST(GraphSaveTest, Save_EscapesOnlyWhatJsonRequires) {
    using namespace std::string_literals;
    EXPECT_EQ(SavedTree(Property("\"\\", "/\b\f\n\r\t\x01\x1F\x7F")), DocumentOf(R"({"\"\\":"/\b\f\n\r\t\u0001\u001F)"
                                                                                 "\x7F\"}"));
    EXPECT_EQ(SavedTree(Property("a\0b"s, "\0"s)), DocumentOf(R"({"a\u0000b":"\u0000"})"));
    EXPECT_EQ(SavedTree(Property("\xC3\xA4", "\xF0\x9F\x8E\xAC")), DocumentOf("{\"\xC3\xA4\":\"\xF0\x9F\x8E\xAC\"}"));
    EXPECT_EQ(SavedTree(Property("\xFF", "\xC3(\xED\xA0\x80")), DocumentOf("{\"\xFF\":\"\xC3(\xED\xA0\x80\"}"));
}

// The innermost node of a chain of 996 stands on level 1000: the root, an array, an element and "data" are above it.
TEST(GraphSaveTest, Save_OfATreeAsDeepAsADocumentMayBeLoadsAgain) {
    const Graph graph = ITranscodingMetaGraph::Create();
    graph->AddNode(Chain(996));
    graph->AddLink(1, 1, Chain(996));
    const Graph copy = Loaded(Saved(graph));
    EXPECT_EQ((*copy)[1], Chain(996));
    EXPECT_EQ(copy->GetLink(1, 1), Chain(996));
}

TEST(GraphSaveTest, Save_OfADeeperTreeThrowsBeforeAnythingIsWritten) {
    const Graph nodeTooDeep = MakeGraph(1, {});
    nodeTooDeep->AddNode(Chain(997));
    const Graph linkTooDeep = MakeGraph(1, {});
    linkTooDeep->AddLink(1, 1, Chain(997));
    for (const Graph& graph : {nodeTooDeep, linkTooDeep}) {
        const SP<Core::MemoryOutput> output = Core::MemoryOutput::Create();
        ExpectText<Core::PropertyException>([&] { graph->Save(output); },
                                            "\"n\" cannot be saved: it is nested deeper than 1000 levels");
        EXPECT_EQ(output->GetBytes(), "");
    }
}

TEST(GraphSaveTest, Save_OfARationalOneLevelTooDeepThrows) {
    Property deep("r", boost::rational<long long>(1, 2));
    for (int i = 0; i < 996; ++i) {
        deep = NodeWith("n", std::move(deep));
    }
    const Graph graph = ITranscodingMetaGraph::Create();
    graph->AddNode(deep);
    EXPECT_THROW(Saved(graph), Core::PropertyException);
    graph->RemoveNode(1);
    graph->AddNode(deep[0U]);
    EXPECT_EQ((*Loaded(Saved(graph)))[2], deep[0U]);
}

TEST(GraphSaveTest, Save_LetsTheFailureOfTheOutputThrough) {
    const Graph graph = MakeGraph(2, {{1, 2}});
    const SP<FailingOutput> output(new FailingOutput(10));
    EXPECT_THROW(graph->Save(output), std::length_error);
    EXPECT_EQ(output->Written(), 10U);
    EXPECT_EQ(output->GetRefCount(), 1);
    EXPECT_EQ(EndsOf(graph), (std::vector<Pair>{{1, 2}}));
}

TEST(GraphSaveTest, Save_WritesOneByteAtATimeAndLetsGoOfTheOutput) {
    const Graph graph = MakeGraph(2, {{1, 2}});
    const SP<FailingOutput> output(new FailingOutput(1000));
    graph->Save(output);
    EXPECT_EQ(output->Written(), Saved(graph).size());
    EXPECT_EQ(output->Longest(), 1U);
    EXPECT_EQ(output->GetRefCount(), 1);
}

TEST(GraphSaveTest, Save_TwiceAppendsToTheOutput) {
    const SP<Core::MemoryOutput> output = Core::MemoryOutput::Create();
    const Graph graph = ITranscodingMetaGraph::Create();
    graph->Save(output);
    graph->Save(output);
    EXPECT_EQ(output->GetBytes(), R"({"vertices":[],"edges":[]}{"vertices":[],"edges":[]})");
}

}  // namespace
}  // namespace Quenzo::Conf::Testing
