// Covers the search for a way from node to node: whether there is one, which one is named, and that wide and long
// graphs are searched at once.

#include <Conf/Interfaces/GraphAlgorithms.h>
#include <tests/Conf/GraphSupport.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <limits>
#include <stdexcept>

namespace Quenzo::Conf::Testing {
namespace {

constexpr long long kLargestId = std::numeric_limits<long long>::max();

TEST(GraphAlgorithmsTest, PathExistInGraph_FollowsLinksForwardsOnly) {
    const Graph graph = MakeGraph(2, {{1, 2}});
    EXPECT_TRUE(PathExistInGraph(graph, 1, 2));
    EXPECT_FALSE(PathExistInGraph(graph, 2, 1));
}

TEST(GraphAlgorithmsTest, PathExistInGraph_FollowsManyLinks) {
    const Graph graph = MakeGraph(6, {{4, 2}, {2, 6}, {6, 1}, {3, 5}});
    EXPECT_TRUE(PathExistInGraph(graph, 4, 1));
    EXPECT_TRUE(PathExistInGraph(graph, 2, 1));
    EXPECT_FALSE(PathExistInGraph(graph, 1, 4));
    EXPECT_FALSE(PathExistInGraph(graph, 4, 5));
    EXPECT_FALSE(PathExistInGraph(graph, 3, 1));
}

TEST(GraphAlgorithmsTest, PathExistInGraph_FromAnyIdToItselfIsTrue) {
    const Graph graph = MakeGraph(2, {{1, 2}});
    for (const long long id : {1LL, 2LL, 0LL, 7LL, -1LL, kLargestId}) {
        EXPECT_TRUE(PathExistInGraph(graph, id, id)) << id;
        EXPECT_TRUE(PathExistInGraph(ITranscodingMetaGraph::Create(), id, id)) << id;
    }
}

TEST(GraphAlgorithmsTest, PathExistInGraph_FromAnUnknownNodeThrowsNodeNotFound) {
    const Graph graph = MakeGraph(2, {{1, 2}});
    ExpectNodeNotFound([&] { PathExistInGraph(graph, 7, 1); }, 7);
    ExpectNodeNotFound([&] { PathExistInGraph(graph, 7, 8); }, 7);
    ExpectNodeNotFound([&] { PathExistInGraph(ITranscodingMetaGraph::Create(), 1, 2); }, 1);
}

TEST(GraphAlgorithmsTest, PathExistInGraph_ToAnUnknownNodeIsFalse) {
    const Graph graph = MakeGraph(2, {{1, 2}, {2, 1}});
    EXPECT_FALSE(PathExistInGraph(graph, 1, 7));
    EXPECT_FALSE(PathExistInGraph(graph, 1, -7));
}

TEST(GraphAlgorithmsTest, PathExistInGraph_EndsInACycle) {
    const Graph graph = MakeGraph(4, {{1, 2}, {2, 3}, {3, 1}, {3, 3}});
    EXPECT_TRUE(PathExistInGraph(graph, 2, 1));
    EXPECT_FALSE(PathExistInGraph(graph, 1, 4));
}

TEST(GraphAlgorithmsTest, PathExistInGraph_WithoutAGraphThrows) {
    ExpectText<std::invalid_argument>([] { PathExistInGraph(nullptr, 1, 2); }, "graph is NULL");
}

TEST(GraphAlgorithmsTest, PathExistInGraph_WithoutAGraphFromAnIdToItselfIsTrue) {
    EXPECT_TRUE(PathExistInGraph(nullptr, 1, 1));
}

TEST(GraphAlgorithmsTest, PathExistInGraph_TakesAGraphThatCannotBeChanged) {
    const SP<const ITranscodingMetaGraph> graph = MakeGraph(2, {{1, 2}});
    EXPECT_TRUE(PathExistInGraph(graph, 1, 2));
    EXPECT_EQ(graph->GetRefCount(), 1);
}

// A search by id goes on from the first node of that id, as every look-up does, wherever the link led.
TEST(GraphAlgorithmsTest, PathExistInGraph_WithNodesOfOneIdGoesOnFromTheFirst) {
    const Graph graph = Loaded(
        R"({"vertices":[{"id":1},{"id":5},{"id":2},{"id":5},{"id":9}],"edges":[{"from":1,"to":2},{"from":5,"to":9}]})");
    EXPECT_FALSE(PathExistInGraph(graph, 1, 9));
    // The link from 1 to 2 leads to the second node 5 now; the first one is linked to 9.
    graph->RemoveNode(2);
    EXPECT_EQ(OutputsOf(graph, 1), (Ids{5}));
    EXPECT_TRUE(PathExistInGraph(graph, 1, 9));
    EXPECT_EQ(graph->FindPath(1, 9), (Ids{1, 5, 9}));
}

TEST(GraphAlgorithmsTest, PathExistInGraph_TakesALinkHandedOnToTheNextNode) {
    const Graph graph = MakeGraph(4, {{1, 2}, {3, 4}});
    graph->RemoveNode(2);
    EXPECT_TRUE(PathExistInGraph(graph, 1, 4));
    EXPECT_EQ(graph->FindPath(1, 4), (Ids{1, 3, 4}));
}

TEST(GraphAlgorithmsTest, FindPath_NamesBothEnds) {
    const Graph graph = MakeGraph(3, {{1, 2}, {2, 3}});
    EXPECT_EQ(graph->FindPath(1, 2), (Ids{1, 2}));
    EXPECT_EQ(graph->FindPath(1, 3), (Ids{1, 2, 3}));
    EXPECT_EQ(graph->FindPath(3, 1), Ids());
}

TEST(GraphAlgorithmsTest, FindPath_ToItselfIsThatIdAlone) {
    const Graph graph = MakeGraph(1, {{1, 1}});
    EXPECT_EQ(graph->FindPath(1, 1), (Ids{1}));
    EXPECT_EQ(graph->FindPath(8, 8), (Ids{8}));
}

TEST(GraphAlgorithmsTest, FindPath_TakesAShortestWayAndOfThoseTheOneMadeFirst) {
    const Graph graph = MakeGraph(6, {{1, 2}, {2, 3}, {3, 6}, {1, 5}, {1, 4}, {4, 6}, {5, 6}});
    EXPECT_EQ(graph->FindPath(1, 6), (Ids{1, 5, 6}));
}

TEST(GraphAlgorithmsTest, FindPath_FailsLikePathExistInGraph) {
    const Graph graph = MakeGraph(1, {});
    ExpectNodeNotFound([&] { graph->FindPath(7, 1); }, 7);
    EXPECT_EQ(graph->FindPath(1, 7), Ids());
}

// Each diamond doubles the number of ways: a search that tries them all would not end.
TEST(GraphAlgorithmsTest, PathExistInGraph_ThroughManyDiamondsAnswersAtOnce) {
    constexpr long long diamonds = 64;
    const Graph graph = MakeGraph(3 * diamonds + 2, {});
    for (long long i = 0; i < diamonds; ++i) {
        const long long top = 3 * i + 1;
        for (const auto& [from, to] : {Pair{top, top + 1}, {top, top + 2}, {top + 1, top + 3}, {top + 2, top + 3}}) {
            graph->AddLink(from, to, Core::Property());
        }
    }
    EXPECT_TRUE(PathExistInGraph(graph, 1, 3 * diamonds + 1));
    EXPECT_FALSE(PathExistInGraph(graph, 1, 3 * diamonds + 2));
    EXPECT_EQ(graph->FindPath(1, 3 * diamonds + 1).size(), 2U * diamonds + 1);
}

TEST(GraphAlgorithmsTest, PathExistInGraph_AlongALongChainAnswersAtOnce) {
    constexpr long long count = 100000;
    const Graph graph = MakeGraph(count, {});
    for (long long id = 1; id < count; ++id) {
        graph->AddLink(id, id + 1, Core::Property());
    }
    EXPECT_TRUE(PathExistInGraph(graph, 1, count));
    EXPECT_FALSE(PathExistInGraph(graph, 2, 1));
    const Ids path = graph->FindPath(1, count);
    ASSERT_EQ(path.size(), static_cast<std::size_t>(count));
    EXPECT_EQ(path[1], 2);
    EXPECT_EQ(path[99998], 99999);
}

// The one output that matters stands behind 100 000 others.
TEST(GraphAlgorithmsTest, PathExistInGraph_FromAHubOfManyLinksAnswersAtOnce) {
    constexpr long long count = 100000;
    const Graph graph = MakeGraph(count + 1, {});
    for (long long id = 2; id <= count; ++id) {
        graph->AddLink(1, id, Core::Property());
        graph->AddLink(id, 1, Core::Property());
    }
    graph->AddLink(count, count + 1, Core::Property());
    EXPECT_EQ(graph->FindPath(2, count + 1), (Ids{2, 1, count, count + 1}));
}

}  // namespace
}  // namespace Quenzo::Conf::Testing
