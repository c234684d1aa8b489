// Covers reading a job document into a graph: which texts are documents, the ids and trees of nodes and links, and what
// stays when a part cannot be read. Documents made to do harm are covered in GraphHostileDocumentTest.cpp.

#include <tests/Conf/GraphSupport.h>

#include <gtest/gtest.h>
#include <boost/rational.hpp>

#include <cstddef>
#include <limits>
#include <stdexcept>
#include <string>

namespace Quenzo::Conf::Testing {
namespace {

using Core::Property;

constexpr long long kLargestId = std::numeric_limits<long long>::max();
constexpr long long kSmallestId = std::numeric_limits<long long>::min();

std::string Vertices(const std::string& vertices) { return R"({"vertices":[)" + vertices + R"(],"edges":[]})"; }

// Three nodes with the ids 0, 1 and 2, and the links given.
std::string Edges(const std::string& edges) {
    return R"({"vertices":[{"id":0},{"id":1},{"id":2}],"edges":[)" + edges + "]}";
}

// The tree of the only node, of which the element's "data" is given.
Property TreeOf(const std::string& data) {
    const Graph graph = Loaded(Vertices(R"({"id":1,"data":)" + data + "}"));
    return (*graph)[1];
}

long long IdOf(const std::string& id) { return NodesOf(Loaded(Vertices(R"({"id":)" + id + "}"))).front().id; }

Property NodeWith(const std::string& name, Property child) {
    Property node(name);
    node.Add(std::move(child));
    return node;
}

void ExpectPropertyException(const std::string& data, const std::string& message) {
    ExpectText<Core::PropertyException>([&] { TreeOf(data); }, message);
}

TEST(GraphLoadTest, Load_OfAnEmptyGraph) {
    const Graph graph = Loaded(R"({"vertices":[],"edges":[]})");
    EXPECT_EQ(NodesOf(graph), std::vector<Node>());
    EXPECT_EQ(LinksOf(graph), std::vector<Link>());
    EXPECT_EQ(graph->GetNodesCount(), 0);
    EXPECT_EQ(graph->AddNode(Property("first")), 1);
}

TEST(GraphLoadTest, Load_OfAJob) {
    const Graph graph =
        Loaded(R"({"vertices":[{"id":1,"data":{"source":{"$$TYPE_ID$$":"sourceFile","filePath":"clip.mov"}}},)"
               R"({"id":2,"data":{"streamRaw":{"id":0}}}],"edges":[{"id":1,"from":1,"to":2}]})");
    EXPECT_EQ((*graph)[1], ITranscodingMetaGraph::MakeInFileDescription(ioPath("clip.mov")));
    EXPECT_EQ((*graph)[2], ITranscodingMetaGraph::MakeRawStreamDescription(0));
    EXPECT_EQ(LinksOf(graph), (std::vector<Link>{{2, 1, 2, Property("data")}}));
}

TEST(GraphLoadTest, Load_OfATextThatIsNoJsonThrowsBadJson) {
    for (const char* text :
         {"", " ", "nonsense", "{", "{]", R"({"vertices":[],"edges":[]}x)", R"({"vertices":[],"edges":[],})",
          R"({"vertices":[{"id":1},],"edges":[]})", R"({"vertices":[{"id":1,}],"edges":[]})",
          R"({"vertices":[] "edges":[]})", "{'vertices':[]}", R"(/**/{"vertices":[],"edges":[]})",
          R"({"vertices":[NaN],"edges":[]})", "\xEF\xBB\xBF", "\xEF\xBB\xBF{\"vertices\":[],\"edges\":[]}",
          R"({"vertices":[1e999],"edges":[]})", R"({"vertices":["\x"],"edges":[]})",
          R"({"vertices":["\uD800"],"edges":[]})", R"({"vertices":[01],"edges":[]})"}) {
        ExpectBadJson(text, kRootMessage);
    }
}

TEST(GraphLoadTest, Load_OfARootThatIsNoObjectThrowsBadJson) {
    for (const char* text : {"[]", R"(["vertices","edges"])", R"("text")", "1", "1.5", "true", "null",
                             R"([{"vertices":[],"edges":[]}])"}) {
        ExpectBadJson(text, kRootMessage);
    }
}

TEST(GraphLoadTest, Load_WithoutBothArraysThrowsBadJson) {
    for (const char* text :
         {"{}", R"({"vertices":[]})", R"({"edges":[]})", R"({"vertices":{},"edges":[]})",
          R"({"vertices":[],"edges":{}})", R"({"vertices":null,"edges":[]})", R"({"vertices":[],"edges":"[]"})",
          R"({"vertices":[{"id":1}],"edges":1})", R"({"Vertices":[],"edges":[]})",
          R"({"vertices":[],"edges\u0000":[]})", R"({"graph":{"vertices":[],"edges":[]}})"}) {
        ExpectBadJson(text, kArraysMessage);
    }
}

TEST(GraphLoadTest, Load_TakesTheFirstOfMembersOfOneName) {
    ExpectBadJson(R"({"vertices":1,"vertices":[],"edges":[]})", kArraysMessage);
    const Graph graph = Loaded(R"({"vertices":[{"id":1,"id":5}],"vertices":[{"id":2}],"edges":[],"edges":1})");
    EXPECT_EQ(NodesOf(graph), (std::vector<Node>{{1, Property("data")}}));
}

TEST(GraphLoadTest, Load_TakesTheFirstOfSeveralMembersOfAnElement) {
    EXPECT_EQ(TreeOf(R"({"a":1},"data":{"b":2})"), Property("a", 1));
    EXPECT_EQ(TreeOf(R"(null,"data":{"b":2})"), Property("data"));
    EXPECT_EQ(TreeOf(R"({"a":1},"data":1.5)"), Property("a", 1));
    const Graph graph = Loaded(Edges(R"({"id":"x","id":7,"from":1,"from":2,"to":2,"to":[]})"));
    EXPECT_EQ(LinksOf(graph), (std::vector<Link>{{1, 1, 2, Property("data")}}));
}

TEST(GraphLoadTest, Load_TakesNoIdFromInsideAValue) {
    for (const char* vertex : {R"({"id":{"id":5}})", R"({"id":[5]})", R"({"id":[5,6],"x":{"id":7}})",
                               R"({"x":[{"id":7,"data":{"a":1}}]})", R"([{"id":7,"data":{"a":1}},{"id":8}])"}) {
        EXPECT_EQ(NodesOf(Loaded(Vertices(vertex))), (std::vector<Node>{{0, Property("data")}})) << vertex;
    }
    EXPECT_EQ(NodesOf(Loaded(Vertices(R"({"data":{"a":{"id":7,"data":8}},"id":9})"))).front().id, 9);
}

TEST(GraphLoadTest, Load_DoesNotCareForBlanksOrderOrOtherMembers) {
    const Graph graph = Loaded(
        "\t{ \"edges\" : [ { \"data\" : { \"l\" : 1 } , \"to\" : 2 , \"note\" : [ [ ] ] , \"from\" : 1 , \"id\" : 4 } "
        "] "
        ",\r\n \"comment\" : { \"vertices\" : 1 } , \"vertices\" : [ { \"data\" : { \"a\" : true } , \"id\" : 1 } , "
        "{ \"kind\" : \"x\" , \"id\" : 2 } ] } \n");
    EXPECT_EQ(NodesOf(graph), (std::vector<Node>{{1, Property("a", true)}, {2, Property("data")}}));
    EXPECT_EQ(LinksOf(graph), (std::vector<Link>{{5, 1, 2, Property("l", 1)}}));
}

TEST(GraphLoadTest, Load_KeepsTheIdsOfNodesAndGoesOnAfterTheLargest) {
    const Graph graph = Loaded(Vertices(R"({"id":7},{"id":3})"));
    EXPECT_EQ(NodesOf(graph), (std::vector<Node>{{7, Property("data")}, {3, Property("data")}}));
    EXPECT_EQ(graph->GetNodesCount(), 7);
    EXPECT_EQ(graph->AddNode(Property("next")), 8);
}

TEST(GraphLoadTest, Load_GivesANodeWithoutAnIdTheIdZero) {
    const Graph graph = Loaded(Vertices(R"({"data":{"a":1}})"));
    EXPECT_EQ((*graph)[0], Property("a", 1));
    EXPECT_EQ(graph->GetNodesCount(), 0);
    EXPECT_EQ(graph->AddNode(Property("next")), 1);
}

TEST(GraphLoadTest, Load_TakesNegativeAndExtremeIds) {
    const Graph graph = Loaded(Vertices(R"({"id":-5},{"id":-9223372036854775808},{"id":9223372036854775807})"));
    EXPECT_EQ((*graph)[-5], Property("data"));
    EXPECT_EQ((*graph)[kSmallestId], Property("data"));
    EXPECT_EQ((*graph)[kLargestId], Property("data"));
    EXPECT_EQ(graph->GetNodesCount(), kLargestId);
    EXPECT_EQ(Loaded(Vertices(R"({"id":-5})"))->GetNodesCount(), 0);
}

TEST(GraphLoadTest, Load_TakesNodesOfOneIdAndLinksTheFirst) {
    const Graph graph =
        Loaded(R"({"vertices":[{"id":1,"data":{"a":1}},{"id":1,"data":{"b":2}}],"edges":[{"from":1,"to":1}]})");
    EXPECT_EQ(NodesOf(graph), (std::vector<Node>{{1, Property("a", 1)}, {1, Property("b", 2)}}));
    EXPECT_EQ((*graph)[1], Property("a", 1));
    EXPECT_EQ(InputsOf(graph), (Ids{1}));
    graph->RemoveLink(1, 1);
    graph->RemoveNode(1);
    EXPECT_EQ((*graph)[1], Property("b", 2));
}

TEST(GraphLoadTest, Load_TakesAWholeNumberAsIdHoweverItIsWritten) {
    EXPECT_EQ(IdOf("3"), 3);
    EXPECT_EQ(IdOf("3.0"), 3);
    EXPECT_EQ(IdOf("1e2"), 100);
    EXPECT_EQ(IdOf("12.5E1"), 125);
    EXPECT_EQ(IdOf("-2.0"), -2);
    EXPECT_EQ(IdOf("-0.0"), 0);
    EXPECT_EQ(IdOf("-0"), 0);
    EXPECT_EQ(IdOf("4294967296"), 4294967296);
    EXPECT_EQ(IdOf("4.611686018427387904e18"), 4611686018427387904);
    EXPECT_EQ(IdOf("9223372036854774784.0"), 9223372036854774784);
}

TEST(GraphLoadTest, Load_TakesAnyOtherIdForZero) {
    for (const char* id : {"1.5", "-0.5", "1e-3", R"("7")", R"("")", "null", "true", "false", "[7]", R"({"id":7})"}) {
        EXPECT_EQ(IdOf(id), 0) << id;
    }
}

TEST(GraphLoadTest, Load_ReadsTheEndsOfALinkLikeIds) {
    EXPECT_EQ(EndsOf(Loaded(Edges(R"({"from":1.0,"to":0.2e1})"))), (std::vector<Pair>{{1, 2}}));
    EXPECT_EQ(EndsOf(Loaded(Edges(R"({"from":"1","to":1.5})"))), (std::vector<Pair>{{0, 0}}));
    EXPECT_EQ(EndsOf(Loaded(Edges(R"({"from":null,"to":true})"))), (std::vector<Pair>{{0, 0}}));
    EXPECT_EQ(EndsOf(Loaded(Edges(R"({"to":2})"))), (std::vector<Pair>{{0, 2}}));
    EXPECT_EQ(EndsOf(Loaded(Edges(R"({"from":2})"))), (std::vector<Pair>{{2, 0}}));
    EXPECT_EQ(EndsOf(Loaded(Edges(R"({"id":[],"from":1,"to":2})"))), (std::vector<Pair>{{1, 2}}));
}

TEST(GraphLoadTest, Load_WithoutTheSourceNodeThrowsNodeNotFound) {
    const auto load = [](const char* edge) {
        return [edge] { Loaded(R"({"vertices":[{"id":1}],"edges":[)" + std::string(edge) + "]}"); };
    };
    ExpectNodeNotFound(load(R"({"to":1})"), 0);
    ExpectNodeNotFound(load(R"({"from":1})"), 0);
    ExpectNodeNotFound(load(R"({"from":7,"to":8})"), 7);
    ExpectNodeNotFound(load(R"({"from":1,"to":-8})"), -8);
    ExpectNodeNotFound(load("{}"), 0);
}

TEST(GraphLoadTest, Load_GivesLinksNewIds) {
    const auto ids = [](const std::string& edges) {
        Ids result;
        for (const Link& link : LinksOf(Loaded(Edges(edges)))) {
            result.push_back(link.id);
        }
        return result;
    };
    EXPECT_EQ(ids(R"({"id":1,"to":1},{"id":2,"to":2})"), (Ids{2, 3}));
    EXPECT_EQ(ids(R"({"id":2,"to":1},{"id":1,"to":2})"), (Ids{3, 4}));
    EXPECT_EQ(ids(R"({"id":10,"to":1},{"id":20,"to":2})"), (Ids{11, 21}));
    EXPECT_EQ(ids(R"({"to":1},{"to":2})"), (Ids{1, 2}));
    EXPECT_EQ(ids(R"({"id":-7,"to":1},{"id":0,"to":2})"), (Ids{1, 2}));
    EXPECT_EQ(ids(R"({"id":1.5,"to":1},{"id":"9","to":2})"), (Ids{1, 2}));
}

TEST(GraphLoadTest, AddLink_AfterLoadGoesOnCounting) {
    const Graph graph = Loaded(Edges(R"({"id":10,"from":0,"to":1})"));
    EXPECT_EQ(graph->AddLink(1, 2, Property("next")), 12);
}

TEST(GraphLoadTest, Load_OfALinkWithTheLargestIdThrows) {
    ExpectText<ProfileException>([] { Loaded(Edges(R"({"id":9223372036854775807,"to":1})")); },
                                 "the link ids of the graph are used up");
}

TEST(GraphLoadTest, Load_OfARepeatedLinkThrowsLinkExistsAndKeepsTheFirst) {
    const Graph graph = ITranscodingMetaGraph::Create();
    ExpectLinkExists(
        [&] { LoadText(graph, Edges(R"({"id":4,"from":1,"to":2},{"id":6,"from":1,"to":2},{"from":2,"to":1})")); }, 1,
        2);
    EXPECT_EQ(EndsOf(graph), (std::vector<Pair>{{1, 2}}));
    // The counter has seen the id of the link that was refused.
    EXPECT_EQ(graph->AddLink(2, 1, Property("next")), 7);
}

TEST(GraphLoadTest, Load_TakesAnElementThatIsNoObjectForOneWithoutMembers) {
    for (const char* element : {"null", "true", "7", "1.5", R"("id")", "[]", R"([{"id":7}])"}) {
        EXPECT_EQ(NodesOf(Loaded(Vertices(element))), (std::vector<Node>{{0, Property("data")}})) << element;
        EXPECT_EQ(LinksOf(Loaded(Edges(element))), (std::vector<Link>{{1, 0, 0, Property("data")}})) << element;
    }
}

TEST(GraphLoadTest, Load_UnwrapsTheTreeOfItsObject) {
    EXPECT_EQ(TreeOf(R"({"a":1})"), Property("a", 1));
    EXPECT_EQ(TreeOf(R"({"":""})"), Property("", ""));
    EXPECT_EQ(TreeOf(R"({"data":{}})"), Property("data"));
    EXPECT_EQ(TreeOf(R"({"a":{"b":false}})"), NodeWith("a", Property("b", false)));
    EXPECT_EQ(TreeOf(R"({"a":[30000,1001]})"), Property("a", boost::rational<long long>(30000, 1001)));
    EXPECT_EQ(TreeOf(R"({"a":{"b":null}})"), NodeWith("a", NodeWith("p", Property()).SetChild("b", Property())));
}

TEST(GraphLoadTest, Load_OfATreeThatIsNotThereMakesAnEmptyNode) {
    EXPECT_EQ(NodesOf(Loaded(Vertices("{}"))), (std::vector<Node>{{0, Property("data")}}));
    EXPECT_EQ(TreeOf("null"), Property("data"));
    EXPECT_EQ(TreeOf("{}"), Property("data"));
}

TEST(GraphLoadTest, Load_TakesTheFirstOfSeveralTrees) {
    EXPECT_EQ(TreeOf(R"({"a":1,"b":2})"), Property("a", 1));
    EXPECT_EQ(TreeOf(R"([{"a":1},{"a":2}])"), Property("a", 1));
}

TEST(GraphLoadTest, Load_KeepsALeafThatNoObjectNames) {
    EXPECT_EQ(TreeOf("5"), Property("data", 5));
    EXPECT_EQ(TreeOf(R"("text")"), Property("data", "text"));
    EXPECT_EQ(TreeOf("true"), Property("data", true));
    EXPECT_EQ(TreeOf("[2,4]"), Property("data", boost::rational<long long>(1, 2)));
}

TEST(GraphLoadTest, Load_TellsATreeCalledDataFromNoTree) {
    const Property tree = TreeOf(R"({"data":null})");
    EXPECT_EQ(tree.GetName(), "data");
    EXPECT_EQ(tree.GetType(), PropertyTypes::None);
}

TEST(GraphLoadTest, Load_OfATreeWhoseNameIsNullKeepsItsName) {
    const Property tree = TreeOf(R"({"a":null})");
    EXPECT_EQ(tree.GetName(), "a");
    EXPECT_EQ(tree.GetType(), PropertyTypes::None);
}

TEST(GraphLoadTest, Load_OfATreeThatCannotBeReadThrowsPropertyException) {
    ExpectPropertyException("1.5", "\"data\" holds 1.5, which is no signed 64-bit integer");
    ExpectPropertyException(R"({"a":{"b":9223372036854775808}})",
                            "\"b\" holds 9223372036854775808, which is no signed 64-bit integer");
    ExpectPropertyException(R"({"a":[1,0]})", "\"a\" holds [1,0], which is no rational of signed 64-bit integers");
    ExpectPropertyException(R"({"a":[1,2,3]})",
                            "\"a\" holds an array that is neither a rational [numerator,denominator] nor a list of "
                            "one-member objects");
    ExpectPropertyException(R"({"a":[1,2,null]})",
                            "\"a\" holds an array that is neither a rational [numerator,denominator] nor a list of "
                            "one-member objects");
    ExpectPropertyException("[]",
                            "\"data\" holds an array that is neither a rational [numerator,denominator] nor a list of "
                            "one-member objects");
}

TEST(GraphLoadTest, Load_ThatFailsKeepsWhatCameBefore) {
    const Graph graph = ITranscodingMetaGraph::Create();
    EXPECT_THROW(LoadText(graph, R"({"vertices":[{"id":4,"data":{"a":1}},{"id":9,"data":1.5},{"id":5}],"edges":[]})"),
                 Core::PropertyException);
    EXPECT_EQ(NodesOf(graph), (std::vector<Node>{{4, Property("a", 1)}}));
    EXPECT_EQ(graph->GetNodesCount(), 4);
    ExpectUsable(graph);
}

// Wherever the fault of a tree stands: the text comes first, then what every document must have, then the nodes, then
// the links.
TEST(GraphLoadTest, Load_ReportsTheDocumentBeforeItsTreesAndNodesBeforeLinks) {
    ExpectBadJson(R"({"vertices":[{"data":1.5}],"edges":[})", kRootMessage);
    ExpectBadJson(R"({"vertices":[{"data":1.5}]})", kArraysMessage);
    const Graph graph = ITranscodingMetaGraph::Create();
    try {
        LoadText(graph,
                 R"({"edges":[{"data":2.5},{"from":1,"to":1}],"vertices":[{"id":1},{"data":1.5},{"data":3.5}]})");
        FAIL() << "nothing was thrown";
    } catch (const Core::PropertyException& failure) {
        EXPECT_STREQ(failure.what(), "\"data\" holds 1.5, which is no signed 64-bit integer");
    }
    EXPECT_EQ(NodesOf(graph), (std::vector<Node>{{1, Property("data")}}));
    EXPECT_EQ(LinksOf(graph), std::vector<Link>());
}

TEST(GraphLoadTest, Load_ThatFailsAtTheTreeOfALinkKeepsTheLinksBefore) {
    const Graph graph = ITranscodingMetaGraph::Create();
    EXPECT_THROW(LoadText(graph, Edges(R"({"id":3,"to":1},{"id":8,"to":2,"data":[]},{"from":2,"to":1})")),
                 Core::PropertyException);
    EXPECT_EQ(LinksOf(graph), (std::vector<Link>{{4, 0, 1, Property("data")}}));
    EXPECT_EQ(graph->AddLink(0, 2, Property("next")), 5);
}

TEST(GraphLoadTest, Load_ThatFailsAtALinkKeepsAllNodesAndTheLinksBefore) {
    const Graph graph = ITranscodingMetaGraph::Create();
    ExpectNodeNotFound([&] { LoadText(graph, Edges(R"({"id":3,"to":1},{"id":8,"to":9},{"to":2})")); }, 9);
    EXPECT_EQ(NodesOf(graph).size(), 3U);
    EXPECT_EQ(LinksOf(graph), (std::vector<Link>{{4, 0, 1, Property("data")}}));
    EXPECT_EQ(graph->AddLink(0, 2, Property("next")), 9);
}

// The tree of a link is read before its ids are, and the ids before the nodes are looked up.
TEST(GraphLoadTest, Load_OfALinkReportsItsTreeThenItsIdsThenItsNodes) {
    EXPECT_THROW(Loaded(Edges(R"({"data":1.5,"id":9223372036854775808,"from":9})")), Core::PropertyException);
    EXPECT_THROW(Loaded(Edges(R"({"from":9,"to":9223372036854775808})")), BadJson);
    EXPECT_THROW(Loaded(Edges(R"({"id":9223372036854775807,"from":9})")), NodeNotFound);
}

TEST(GraphLoadTest, Load_IntoAGraphThatHasNodesAppendsAndTakesTheCountersOver) {
    const Graph graph = MakeGraph(5, {{1, 2}, {2, 3}});
    LoadText(graph, R"({"vertices":[{"id":2,"data":{"b":2}},{"id":7}],"edges":[{"id":1,"from":7,"to":2}]})");
    EXPECT_EQ(graph->GetNodesCount(), 7);
    EXPECT_EQ((*graph)[2], NodeTree(2));
    EXPECT_EQ(LinksOf(graph),
              (std::vector<Link>{{1, 1, 2, LinkTree(1, 2)}, {2, 2, 3, LinkTree(2, 3)}, {2, 7, 2, Property("data")}}));
    EXPECT_EQ(InputsOf(graph, 2), (Ids{1, 7}));
    EXPECT_EQ(graph->AddNode(Property("next")), 8);
    EXPECT_EQ(graph->AddLink(8, 1, Property("next")), 3);
}

TEST(GraphLoadTest, Load_OfAnEmptyDocumentStartsTheCountersAnew) {
    const Graph graph = MakeGraph(3, {{1, 2}});
    LoadText(graph, R"({"vertices":[],"edges":[]})");
    EXPECT_EQ(NodesOf(graph).size(), 3U);
    EXPECT_EQ(graph->GetNodesCount(), 0);
    // The new node has an id that an older one has already, which is found first.
    EXPECT_EQ(graph->AddNode(Property("second")), 1);
    EXPECT_EQ((*graph)[1], NodeTree(1));
    EXPECT_EQ(graph->AddLink(2, 3, Property("link")), 1);
    EXPECT_EQ(graph->AddNode(Property("third")), 2);
}

TEST(GraphLoadTest, Load_ThatIsRefusedResetsOnlyTheCounters) {
    for (const char* text : {"", "[]", "{}", R"({"vertices":[]})"}) {
        const Graph graph = MakeGraph(3, {{1, 2}});
        const std::string before = Saved(graph);
        EXPECT_THROW(LoadText(graph, text), BadJson);
        EXPECT_EQ(Saved(graph), before);
        EXPECT_EQ(graph->GetNodesCount(), 0);
    }
}

TEST(GraphLoadTest, Load_OfNoInputChangesNothing) {
    const Graph graph = MakeGraph(3, {{1, 2}});
    const std::string before = Saved(graph);
    ExpectText<std::invalid_argument>([&] { graph->Load(nullptr); }, "input is null");
    EXPECT_EQ(Saved(graph), before);
    EXPECT_EQ(graph->GetNodesCount(), 3);
}

TEST(GraphLoadTest, Load_AfterRemovalsFindsNodesOldAndNew) {
    const Graph graph = MakeGraph(4, {{1, 2}});
    graph->RemoveNode(2);
    LoadText(graph, R"({"vertices":[{"id":10}],"edges":[{"from":10,"to":4},{"from":3,"to":10}]})");
    EXPECT_EQ(EndsOf(graph), (std::vector<Pair>{{1, 3}, {10, 4}, {3, 10}}));
    // The link that node 1 was left with counts as a link from 1 to 3.
    ExpectLinkExists([&] { LoadText(graph, R"({"vertices":[],"edges":[{"from":1,"to":3}]})"); }, 1, 3);
}

class BrokenInput : public RefCounted<Core::IDataInput> {
public:
    explicit BrokenInput(std::string bytes, std::uint64_t size) : bytes_(std::move(bytes)), size_(size) {}

    std::uint64_t GetSize() override { return size_; }

    std::size_t Read(void* buffer, std::size_t size) override {
        EXPECT_EQ(size, 1U);
        if (next_ == bytes_.size()) {
            throw std::length_error("broken");
        }
        *static_cast<char*>(buffer) = bytes_[next_++];
        return 1;
    }

private:
    std::string bytes_;
    std::uint64_t size_;
    std::size_t next_ = 0;
};

TEST(GraphLoadTest, Load_LetsTheFailureOfTheInputThrough) {
    const SP<BrokenInput> input(new BrokenInput(R"({"vertices":[{"id":1}],)", 1000));
    const Graph graph = ITranscodingMetaGraph::Create();
    EXPECT_THROW(graph->Load(input), std::length_error);
    EXPECT_EQ(input->GetRefCount(), 1);
    EXPECT_EQ(NodesOf(graph), std::vector<Node>());
    ExpectUsable(graph);
}

TEST(GraphLoadTest, Load_NeverReadsPastTheStatedSize) {
    const std::string document = R"({"vertices":[{"id":3}],"edges":[]})";
    const SP<BrokenInput> input(new BrokenInput(document, document.size()));
    const Graph graph = ITranscodingMetaGraph::Create();
    graph->Load(input);
    EXPECT_EQ(NodesOf(graph).size(), 1U);
    EXPECT_EQ(input->GetRefCount(), 1);
}

TEST(GraphLoadTest, Load_OfAnInputThatEndsBeforeItsStatedSizeThrowsBadJson) {
    class ShortInput : public BrokenInput {
    public:
        using BrokenInput::BrokenInput;
        std::size_t Read(void* /*buffer*/, std::size_t /*size*/) override { return 0; }
    };
    const Graph graph = ITranscodingMetaGraph::Create();
    ExpectTag<BadJson, ProfileException::TagJsonBadStructure>(
        [&] { graph->Load(SP<ShortInput>(new ShortInput("", kLargestId))); }, kRootMessage);
}

}  // namespace
}  // namespace Quenzo::Conf::Testing
