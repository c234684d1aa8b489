// Covers adding nodes and links and asking for them: ids, copies, the order of results, failures and their tags.
// Removing nodes is covered in GraphRemoveNodeTest.cpp.

#include <tests/Conf/GraphSupport.h>

#include <gtest/gtest.h>
#include <boost/rational.hpp>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <numeric>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace Quenzo::Conf::Testing {
namespace {

constexpr long long kLargestId = std::numeric_limits<long long>::max();
constexpr long long kSmallestId = std::numeric_limits<long long>::min();

// A failure changes nothing: neither what is stored nor the ids that come next.
template <typename Action>
void ExpectUnchanged(const Graph& graph, long long nextNode, long long nextLink, const Action& action) {
    const std::string before = Saved(graph);
    action();
    EXPECT_EQ(Saved(graph), before);
    EXPECT_EQ(graph->GetNodesCount(), nextNode - 1);
    EXPECT_EQ(graph->AddNode(Core::Property("next")), nextNode);
    EXPECT_EQ(graph->AddLink(nextNode, nextNode, Core::Property("next")), nextLink);
}

TEST(GraphEditingTest, Create_GivesAnEmptyGraph) {
    const Graph graph = ITranscodingMetaGraph::Create();
    EXPECT_EQ(graph->GetNodesCount(), 0);
    EXPECT_EQ(NodesOf(graph), std::vector<Node>());
    EXPECT_EQ(LinksOf(graph), std::vector<Link>());
    EXPECT_EQ(InputsOf(graph), Ids());
    EXPECT_EQ(OutputsOf(graph), Ids());
}

TEST(GraphEditingTest, AddNode_HandsOutIdsFromOne) {
    const Graph graph = ITranscodingMetaGraph::Create();
    EXPECT_EQ(graph->AddNode(Core::Property("a")), 1);
    EXPECT_EQ(graph->AddNode(Core::Property("b")), 2);
    EXPECT_EQ(graph->AddNode(Core::Property("c")), 3);
    EXPECT_EQ(graph->GetNodesCount(), 3);
}

TEST(GraphEditingTest, AddLink_HandsOutIdsFromOneBesideThoseOfNodes) {
    const Graph graph = MakeGraph(3, {});
    EXPECT_EQ(graph->AddLink(1, 3, Core::Property("a")), 1);
    EXPECT_EQ(graph->AddLink(2, 3, Core::Property("b")), 2);
    EXPECT_EQ(graph->GetNodesCount(), 3);
}

TEST(GraphEditingTest, AddNode_KeepsACopyOfTheTree) {
    const Graph graph = ITranscodingMetaGraph::Create();
    Core::Property tree("root");
    tree.SetChildT<std::string>("key", "before");
    graph->AddNode(tree);
    tree.SetChildT<std::string>("key", "after");
    EXPECT_EQ((*graph)[1]["key"].GetString(), "before");
}

TEST(GraphEditingTest, AddLink_KeepsACopyOfTheTree) {
    const Graph graph = MakeGraph(2, {});
    Core::Property tree("root");
    tree.SetChildT<long long>("key", 1);
    graph->AddLink(1, 2, tree);
    tree.SetChildT<long long>("key", 2);
    EXPECT_EQ(graph->GetLink(1, 2)["key"].GetInt64(), 1);
}

TEST(GraphEditingTest, Queries_ReturnCopies) {
    const Graph graph = MakeGraph(2, {{1, 2}});
    Core::Property node = (*graph)[1];
    Core::Property link = graph->GetLink(1, 2);
    node = 7;
    link = "changed";
    EXPECT_EQ((*graph)[1], Core::Property("node", 1));
    EXPECT_EQ(graph->GetLink(1, 2), Core::Property("link", "1>2"));
}

TEST(GraphEditingTest, Trees_MayHoldAnyKindOfValue) {
    const std::vector<Core::Property> trees = {
        Core::Property(),
        Core::Property(""),
        Core::Property("flag", true),
        Core::Property("number", kSmallestId),
        Core::Property("rate", boost::rational<long long>(30000, 1001)),
        Core::Property("text", "\"quoted\"\n"),
        Core::Property("node"),
    };
    const Graph graph = ITranscodingMetaGraph::Create();
    for (const Core::Property& tree : trees) {
        const long long node = graph->AddNode(tree);
        graph->AddLink(node, 1, tree);
        EXPECT_EQ((*graph)[node], tree);
        EXPECT_EQ(graph->GetLink(node, 1), tree);
    }
}

TEST(GraphEditingTest, AddLink_TwiceThrowsLinkExistsAndChangesNothing) {
    const Graph graph = MakeGraph(2, {{1, 2}});
    ExpectUnchanged(graph, 3, 2,
                    [&] { ExpectLinkExists([&] { graph->AddLink(1, 2, Core::Property("again")); }, 1, 2); });
}

TEST(GraphEditingTest, AddLink_BackwardsIsAnotherLink) {
    const Graph graph = MakeGraph(2, {{1, 2}});
    EXPECT_EQ(graph->AddLink(2, 1, LinkTree(2, 1)), 2);
    EXPECT_EQ(graph->GetLink(1, 2), Core::Property("link", "1>2"));
    EXPECT_EQ(graph->GetLink(2, 1), Core::Property("link", "2>1"));
    ExpectLinkExists([&] { graph->AddLink(2, 1, Core::Property("again")); }, 2, 1);
}

TEST(GraphEditingTest, AddLink_ToItselfIsTakenOnce) {
    const Graph graph = MakeGraph(2, {});
    EXPECT_EQ(graph->AddLink(1, 1, LinkTree(1, 1)), 1);
    EXPECT_EQ(InputsOf(graph, 1), (Ids{1}));
    EXPECT_EQ(OutputsOf(graph, 1), (Ids{1}));
    ExpectUnchanged(graph, 3, 2,
                    [&] { ExpectLinkExists([&] { graph->AddLink(1, 1, Core::Property("again")); }, 1, 1); });
}

TEST(GraphEditingTest, AddLink_FromAHubFindsTheLinkThatIsThere) {
    // A hub with many outputs and targets with one input each, and the other way round.
    Graph graph = MakeGraph(5, {{1, 2}, {1, 3}, {1, 4}, {1, 5}, {3, 2}, {4, 2}, {5, 2}});
    for (const auto& [from, to] : EndsOf(graph)) {
        ExpectLinkExists([&, from = from, to = to] { graph->AddLink(from, to, Core::Property("again")); }, from, to);
        EXPECT_EQ(graph->GetLink(from, to), LinkTree(from, to));
    }
    ExpectLinkNotFound([&] { graph->GetLink(2, 1); }, 2, 1);
    EXPECT_EQ(graph->AddLink(2, 1, Core::Property("back")), 8);
}

TEST(GraphEditingTest, RemoveLink_TakesTheLinkFromBothEnds) {
    const Graph graph = MakeGraph(3, {{1, 2}, {1, 3}, {2, 3}});
    graph->RemoveLink(1, 3);
    EXPECT_EQ(OutputsOf(graph, 1), (Ids{2}));
    EXPECT_EQ(InputsOf(graph, 3), (Ids{2}));
    EXPECT_EQ(EndsOf(graph), (std::vector<Pair>{{1, 2}, {2, 3}}));
    ExpectLinkNotFound([&] { graph->GetLink(1, 3); }, 1, 3);
}

TEST(GraphEditingTest, RemoveLink_OfASelfLinkFreesTheNode) {
    const Graph graph = MakeGraph(1, {{1, 1}});
    graph->RemoveLink(1, 1);
    EXPECT_EQ(InputsOf(graph, 1), Ids());
    EXPECT_EQ(OutputsOf(graph, 1), Ids());
    EXPECT_EQ(graph->AddLink(1, 1, Core::Property("again")), 2);
}

TEST(GraphEditingTest, RemoveLink_OnlyInThatDirection) {
    const Graph graph = MakeGraph(2, {{1, 2}, {2, 1}});
    graph->RemoveLink(2, 1);
    EXPECT_EQ(EndsOf(graph), (std::vector<Pair>{{1, 2}}));
    EXPECT_EQ(InputsOf(graph, 2), (Ids{1}));
    EXPECT_EQ(InputsOf(graph, 1), Ids());
}

TEST(GraphEditingTest, AddLink_AfterRemoveLinkGetsANewIdAndTheLastPlace) {
    const Graph graph = MakeGraph(3, {{1, 2}, {1, 3}});
    graph->RemoveLink(1, 2);
    EXPECT_EQ(graph->AddLink(1, 2, Core::Property("anew")), 3);
    EXPECT_EQ(OutputsOf(graph, 1), (Ids{3, 2}));
    EXPECT_EQ(LinksOf(graph), (std::vector<Link>{{2, 1, 3, LinkTree(1, 3)}, {3, 1, 2, Core::Property("anew")}}));
}

TEST(GraphEditingTest, GetLinkAndRemoveLink_WithoutALinkThrowLinkNotFoundAndChangeNothing) {
    const Graph graph = MakeGraph(3, {{1, 2}});
    ExpectUnchanged(graph, 4, 2, [&] {
        ExpectLinkNotFound([&] { graph->GetLink(2, 1); }, 2, 1);
        ExpectLinkNotFound([&] { graph->GetLink(1, 1); }, 1, 1);
        ExpectLinkNotFound([&] { graph->GetLink(3, 1); }, 3, 1);
        ExpectLinkNotFound([&] { graph->RemoveLink(2, 1); }, 2, 1);
        ExpectLinkNotFound([&] { graph->RemoveLink(3, 3); }, 3, 3);
    });
}

TEST(GraphEditingTest, AnyOperation_OnAnUnknownNodeThrowsNodeNotFound) {
    for (const long long unknown : {0LL, 4LL, -1LL, 1000000LL, kLargestId, kSmallestId}) {
        const Graph graph = MakeGraph(3, {{1, 2}});
        Ids ids = {42};
        ExpectUnchanged(graph, 4, 2, [&] {
            ExpectNodeNotFound([&] { (*graph)[unknown]; }, unknown);
            ExpectNodeNotFound([&] { graph->RemoveNode(unknown); }, unknown);
            ExpectNodeNotFound([&] { graph->AddLink(unknown, 1, Core::Property("link")); }, unknown);
            ExpectNodeNotFound([&] { graph->AddLink(1, unknown, Core::Property("link")); }, unknown);
            ExpectNodeNotFound([&] { graph->RemoveLink(unknown, 1); }, unknown);
            ExpectNodeNotFound([&] { graph->RemoveLink(1, unknown); }, unknown);
            ExpectNodeNotFound([&] { graph->GetLink(unknown, 1); }, unknown);
            ExpectNodeNotFound([&] { graph->GetLink(1, unknown); }, unknown);
            ExpectNodeNotFound([&] { graph->Inputs(unknown, ids); }, unknown);
            ExpectNodeNotFound([&] { graph->Outputs(unknown, ids); }, unknown);
        });
        EXPECT_EQ(ids, (Ids{42}));
    }
}

TEST(GraphEditingTest, AnyOperation_OnAnEmptyGraphThrowsNodeNotFound) {
    const Graph graph = ITranscodingMetaGraph::Create();
    ExpectNodeNotFound([&] { (*graph)[1]; }, 1);
    ExpectNodeNotFound([&] { graph->RemoveNode(1); }, 1);
}

TEST(GraphEditingTest, LinkOperations_LookTheSourceUpFirst) {
    const Graph graph = MakeGraph(1, {});
    ExpectNodeNotFound([&] { graph->AddLink(8, 9, Core::Property("link")); }, 8);
    ExpectNodeNotFound([&] { graph->RemoveLink(8, 9); }, 8);
    ExpectNodeNotFound([&] { graph->GetLink(9, 8); }, 9);
}

TEST(GraphEditingTest, InputsAndOutputs_FollowTheOrderInWhichLinksWereMade) {
    const Graph graph = MakeGraph(4, {{3, 1}, {2, 1}, {4, 1}, {1, 4}, {1, 2}, {1, 3}});
    EXPECT_EQ(InputsOf(graph, 1), (Ids{3, 2, 4}));
    EXPECT_EQ(OutputsOf(graph, 1), (Ids{4, 2, 3}));
}

TEST(GraphEditingTest, ListQueries_AppendToWhatIsThere) {
    const Graph graph = MakeGraph(3, {{1, 2}});
    Ids ids = {-7};
    graph->Outputs(1, ids);
    EXPECT_EQ(ids, (Ids{-7, 2}));
    graph->Inputs(2, ids);
    EXPECT_EQ(ids, (Ids{-7, 2, 1}));
    graph->Inputs(ids);
    EXPECT_EQ(ids, (Ids{-7, 2, 1, 1, 3}));
    graph->Outputs(ids);
    EXPECT_EQ(ids, (Ids{-7, 2, 1, 1, 3, 2, 3}));
}

TEST(GraphEditingTest, WholeGraphQueries_ListNodesThatNoLinkEntersOrLeaves) {
    const Graph graph = MakeGraph(5, {{2, 3}, {3, 4}, {1, 4}});
    EXPECT_EQ(InputsOf(graph), (Ids{1, 2, 5}));
    EXPECT_EQ(OutputsOf(graph), (Ids{4, 5}));
}

TEST(GraphEditingTest, WholeGraphQueries_ListAnIsolatedNodeTwiceAndASelfLinkedOneNever) {
    const Graph graph = MakeGraph(2, {{2, 2}});
    EXPECT_EQ(InputsOf(graph), (Ids{1}));
    EXPECT_EQ(OutputsOf(graph), (Ids{1}));
}

TEST(GraphEditingTest, VisitNodes_ShowsIdsAndTreesInOrder) {
    const Graph graph = MakeGraph(4, {});
    graph->RemoveNode(2);
    EXPECT_EQ(NodesOf(graph), (std::vector<Node>{{1, NodeTree(1)}, {3, NodeTree(3)}, {4, NodeTree(4)}}));
}

TEST(GraphEditingTest, VisitLinks_ShowsLinksInTheOrderInWhichTheyWereMade) {
    const Graph graph = MakeGraph(3, {{3, 1}, {2, 3}, {1, 2}});
    EXPECT_EQ(LinksOf(graph),
              (std::vector<Link>{{1, 3, 1, LinkTree(3, 1)}, {2, 2, 3, LinkTree(2, 3)}, {3, 1, 2, LinkTree(1, 2)}}));
}

TEST(GraphEditingTest, Visits_LetTheCallersFailureThroughAndStop) {
    const Graph graph = MakeGraph(3, {{1, 2}, {2, 3}});
    Ids visited;
    const auto stop = [&visited](long long id) {
        visited.push_back(id);
        throw std::length_error("enough");
    };
    EXPECT_THROW(graph->VisitNodes([&](long long node, const Core::Property&) { stop(node); }), std::length_error);
    EXPECT_THROW(
        graph->VisitLinks([&](long long link, long long, long long, const Core::Property&) { stop(10 * link); }),
        std::length_error);
    EXPECT_EQ(visited, (Ids{1, 10}));
}

// The numbers 2^63 - 2 and 2^63 - 1 stand at the end of what a counter can hold.
TEST(GraphEditingTest, AddNode_WhenTheIdsAreUsedUpThrowsAndChangesNothing) {
    const Graph graph = Loaded(R"({"vertices":[{"id":9223372036854775806},{"id":5}],"edges":[]})");
    EXPECT_EQ(graph->AddNode(Core::Property("last")), kLargestId);
    EXPECT_EQ((*graph)[kLargestId], Core::Property("last"));
    const std::string before = Saved(graph);
    for (int i = 0; i < 2; ++i) {
        ExpectText<ProfileException>([&] { graph->AddNode(Core::Property("more")); },
                                     "the node ids of the graph are used up");
        EXPECT_EQ(graph->GetNodesCount(), kLargestId);
        EXPECT_EQ(Saved(graph), before);
    }
    EXPECT_EQ(graph->AddLink(kLargestId, 5, Core::Property("link")), 1);
}

TEST(GraphEditingTest, AddNode_AfterALoadedNodeWithTheLargestIdThrows) {
    const Graph graph = Loaded(R"({"vertices":[{"id":9223372036854775807}],"edges":[]})");
    EXPECT_EQ(graph->GetNodesCount(), kLargestId);
    ExpectText<ProfileException>([&] { graph->AddNode(Core::Property("more")); },
                                 "the node ids of the graph are used up");
}

TEST(GraphEditingTest, AddLink_WhenTheIdsAreUsedUpThrowsAndChangesNothing) {
    const Graph graph =
        Loaded(R"({"vertices":[{"id":1},{"id":2},{"id":3}],"edges":[{"id":9223372036854775806,"from":1,"to":2}]})");
    EXPECT_EQ(LinksOf(graph), (std::vector<Link>{{kLargestId, 1, 2, Core::Property("data")}}));
    const std::string before = Saved(graph);
    ExpectText<ProfileException>([&] { graph->AddLink(2, 3, Core::Property("more")); },
                                 "the link ids of the graph are used up");
    EXPECT_EQ(Saved(graph), before);
    EXPECT_EQ(InputsOf(graph, 3), Ids());
    // What is wrong with the call itself is reported before.
    ExpectLinkExists([&] { graph->AddLink(1, 2, Core::Property("again")); }, 1, 2);
    ExpectNodeNotFound([&] { graph->AddLink(1, 4, Core::Property("link")); }, 4);
    EXPECT_EQ(graph->AddNode(Core::Property("node")), 4);
}

TEST(GraphEditingTest, Lookups_WithLoadedIdsInAnyOrderTakeTheFirstNodeOfAnId) {
    const Graph graph = Loaded(
        R"({"vertices":[{"id":5,"data":{"a":1}},{"id":-3,"data":{"b":2}},{"id":5,"data":{"c":3}},{"id":0}],"edges":[]})");
    EXPECT_EQ((*graph)[5], Core::Property("a", 1));
    EXPECT_EQ((*graph)[-3], Core::Property("b", 2));
    EXPECT_EQ((*graph)[0], Core::Property("data"));
    EXPECT_EQ(graph->AddNode(Core::Property("next")), 6);
    EXPECT_EQ((*graph)[6], Core::Property("next"));
    ExpectNodeNotFound([&] { (*graph)[1]; }, 1);
    graph->RemoveNode(5);
    EXPECT_EQ((*graph)[5], Core::Property("c", 3));
    graph->AddLink(5, -3, Core::Property("link"));
    EXPECT_EQ(InputsOf(graph, -3), Ids({5}));
    graph->RemoveLink(5, -3);
    graph->RemoveNode(5);
    ExpectNodeNotFound([&] { (*graph)[5]; }, 5);
    EXPECT_EQ((*graph)[-3], Core::Property("b", 2));
    EXPECT_EQ((*graph)[0], Core::Property("data"));
    EXPECT_EQ((*graph)[6], Core::Property("next"));
}

TEST(GraphEditingTest, Lookups_WithLoadedIdsInAnyOrderFindEachOfManyNodes) {
    std::vector<long long> ids(5000);
    std::iota(ids.begin(), ids.end(), -2500);
    std::shuffle(ids.begin(), ids.end(), std::mt19937(1));
    std::string nodes;
    for (const long long id : ids) {
        nodes += (nodes.empty() ? R"({"id":)" : R"(,{"id":)") + std::to_string(id) + R"(,"data":{"self":)" +
                 std::to_string(id) + "}}";
    }
    const Graph graph = Loaded(R"({"vertices":[)" + nodes + R"(],"edges":[]})");
    for (std::size_t i = 0; i < ids.size(); i += 2) {
        graph->RemoveNode(ids[i]);
    }
    for (std::size_t i = 0; i < ids.size(); ++i) {
        if (i % 2 == 0) {
            ExpectNodeNotFound([&] { (*graph)[ids[i]]; }, ids[i]);
        } else {
            EXPECT_EQ((*graph)[ids[i]], Core::Property("self", ids[i]));
        }
    }
}

TEST(GraphEditingTest, Lookups_AfterAGraphOfIdsInAnyOrderBecameEmpty) {
    const Graph graph = Loaded(R"({"vertices":[{"id":3,"data":{}},{"id":1,"data":{}},{"id":3,"data":{}}],"edges":[]})");
    for (const long long id : {3, 1, 3}) {
        graph->RemoveNode(id);
    }
    EXPECT_EQ(graph->AddNode(Core::Property("fourth", 4)), 4);
    EXPECT_EQ(graph->AddNode(Core::Property("fifth", 5)), 5);
    ExpectNodeNotFound([&] { (*graph)[3]; }, 3);
    EXPECT_EQ((*graph)[4], Core::Property("fourth", 4));
    // And with ids in any order once more.
    LoadText(graph, R"({"vertices":[{"id":2,"data":{"second":2}},{"id":4,"data":{}}],"edges":[]})");
    EXPECT_EQ((*graph)[2], Core::Property("second", 2));
    EXPECT_EQ((*graph)[4], Core::Property("fourth", 4));
    EXPECT_EQ((*graph)[5], Core::Property("fifth", 5));
    ExpectNodeNotFound([&] { (*graph)[3]; }, 3);
}

TEST(GraphEditingTest, Lookups_WithGapsFindEveryNodeAndNoOther) {
    const Graph graph = MakeGraph(40, {});
    for (long long id = 1; id <= 40; ++id) {
        if (id % 3 != 1) {
            graph->RemoveNode(id);
        }
    }
    for (long long id = -1; id <= 42; ++id) {
        if (id >= 1 && id <= 40 && id % 3 == 1) {
            EXPECT_EQ((*graph)[id], NodeTree(id));
        } else {
            ExpectNodeNotFound([&] { (*graph)[id]; }, id);
        }
    }
}

}  // namespace
}  // namespace Quenzo::Conf::Testing
