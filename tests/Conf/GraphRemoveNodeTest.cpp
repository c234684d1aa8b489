// Covers the removal of nodes: ids and positions afterwards, the links that still touched a removed node, and the
// refusal to remove the last node while a link touches it.

#include <tests/Conf/GraphSupport.h>

#include <gtest/gtest.h>

#include <string>

namespace Quenzo::Conf::Testing {
namespace {

Ids IdsOf(const Graph& graph) {
    Ids ids;
    graph->VisitNodes([&ids](long long id, const Core::Property&) { ids.push_back(id); });
    return ids;
}

// The refusal names the first link that touches the node, and changes nothing.
void ExpectRefused(const Graph& graph, long long node, Pair link) {
    const std::string before = Saved(graph);
    const long long count = graph->GetNodesCount();
    ExpectLinkExists([&] { graph->RemoveNode(node); }, link.first, link.second);
    EXPECT_EQ(Saved(graph), before);
    EXPECT_EQ(graph->GetNodesCount(), count);
}

TEST(GraphRemoveNodeTest, RemoveNode_NeverFreesItsId) {
    const Graph graph = MakeGraph(3, {});
    graph->RemoveNode(2);
    EXPECT_EQ(graph->GetNodesCount(), 3);
    EXPECT_EQ(IdsOf(graph), (Ids{1, 3}));
    EXPECT_EQ(graph->AddNode(Core::Property("next")), 4);
    EXPECT_EQ(graph->GetNodesCount(), 4);
    EXPECT_EQ(IdsOf(graph), (Ids{1, 3, 4}));
    ExpectNodeNotFound([&] { graph->RemoveNode(2); }, 2);
}

TEST(GraphRemoveNodeTest, RemoveNode_OfTheLastNodeNeverFreesItsId) {
    const Graph graph = MakeGraph(3, {});
    graph->RemoveNode(3);
    EXPECT_EQ(graph->GetNodesCount(), 3);
    EXPECT_EQ(graph->AddNode(Core::Property("next")), 4);
    EXPECT_EQ(IdsOf(graph), (Ids{1, 2, 4}));
}

TEST(GraphRemoveNodeTest, RemoveNode_OfAllNodesLeavesAnEmptyGraphThatGoesOnCounting) {
    const Graph graph = MakeGraph(3, {{1, 2}});
    graph->RemoveLink(1, 2);
    for (const long long id : {1, 3, 2}) {
        graph->RemoveNode(id);
    }
    EXPECT_EQ(IdsOf(graph), Ids());
    EXPECT_EQ(Saved(graph), R"({"vertices":[],"edges":[]})");
    EXPECT_EQ(graph->AddNode(NodeTree(4)), 4);
    EXPECT_EQ((*graph)[4], Core::Property("node", 4));
    EXPECT_EQ(graph->AddLink(4, 4, Core::Property("link")), 2);
}

TEST(GraphRemoveNodeTest, RemoveNode_WithoutLinksLeavesTheOtherLinksAsTheyWere) {
    const Graph graph = MakeGraph(3, {{1, 3}});
    graph->RemoveNode(2);
    EXPECT_EQ(graph->GetLink(1, 3), Core::Property("link", "1>3"));
    EXPECT_EQ(OutputsOf(graph, 1), (Ids{3}));
    EXPECT_EQ(InputsOf(graph, 3), (Ids{1}));
    EXPECT_EQ(InputsOf(graph), (Ids{1}));
    EXPECT_EQ(OutputsOf(graph), (Ids{3}));
}

TEST(GraphRemoveNodeTest, RemoveNode_AfterItsLinksWereRemovedLeavesNothingBehind) {
    const Graph graph = MakeGraph(3, {{1, 3}});
    graph->RemoveLink(1, 3);
    graph->RemoveNode(2);
    EXPECT_EQ(OutputsOf(graph, 1), Ids());
    EXPECT_EQ(InputsOf(graph, 3), Ids());
    EXPECT_EQ(EndsOf(graph), std::vector<Pair>());
    // Node 3 is at position 1 now.
    EXPECT_EQ(Drawn(graph),
              "digraph G {\n"
              "0[label=\"Node Id: 1\nnode [int64]: 1\n\"];\n"
              "1[label=\"Node Id: 3\nnode [int64]: 3\n\"];\n"
              "}\n");
}

TEST(GraphRemoveNodeTest, RemoveNode_OfATargetHandsTheLinkToTheNextNodeButNotItsInput) {
    const Graph graph = MakeGraph(3, {{1, 2}});
    graph->RemoveNode(2);
    EXPECT_EQ(graph->GetLink(1, 3), Core::Property("link", "1>2"));
    EXPECT_EQ(OutputsOf(graph, 1), (Ids{3}));
    EXPECT_EQ(InputsOf(graph, 3), Ids());
    EXPECT_EQ(LinksOf(graph), (std::vector<Link>{{1, 1, 3, LinkTree(1, 2)}}));
    EXPECT_EQ(InputsOf(graph), (Ids{1, 3}));
    EXPECT_EQ(OutputsOf(graph), (Ids{3}));
    ExpectLinkExists([&] { graph->AddLink(1, 3, Core::Property("again")); }, 1, 3);
    EXPECT_EQ(Saved(graph), R"({"vertices":[{"id":1,"data":{"node":1}},{"id":3,"data":{"node":3}}],)"
                            R"("edges":[{"id":1,"from":1,"to":3,"data":{"link":"1>2"}}]})");
    graph->RemoveLink(1, 3);
    EXPECT_EQ(LinksOf(graph), std::vector<Link>());
    EXPECT_EQ(OutputsOf(graph, 1), Ids());
}

TEST(GraphRemoveNodeTest, RemoveNode_OfASourceHandsTheLinkToTheNextNodeButNotItsOutput) {
    const Graph graph = MakeGraph(3, {{2, 1}});
    graph->RemoveNode(2);
    EXPECT_EQ(LinksOf(graph), (std::vector<Link>{{1, 3, 1, LinkTree(2, 1)}}));
    EXPECT_EQ(InputsOf(graph, 1), (Ids{3}));
    EXPECT_EQ(OutputsOf(graph, 3), Ids());
    ExpectLinkNotFound([&] { graph->GetLink(3, 1); }, 3, 1);
    ExpectLinkNotFound([&] { graph->RemoveLink(3, 1); }, 3, 1);
    // The outputs of node 3 do not show a link to node 1, so there can be one.
    EXPECT_EQ(graph->AddLink(3, 1, LinkTree(3, 1)), 2);
    EXPECT_EQ(InputsOf(graph, 1), (Ids{3, 3}));
    EXPECT_EQ(EndsOf(graph), (std::vector<Pair>{{3, 1}, {3, 1}}));
    // All entries of that source leave the inputs, but only one link goes.
    graph->RemoveLink(3, 1);
    EXPECT_EQ(InputsOf(graph, 1), Ids());
    EXPECT_EQ(LinksOf(graph), (std::vector<Link>{{1, 3, 1, LinkTree(2, 1)}}));
}

TEST(GraphRemoveNodeTest, RemoveNode_WithALinkToTheNextMakesASelfLinkOfIt) {
    const Graph graph = MakeGraph(3, {{2, 3}});
    graph->RemoveNode(2);
    EXPECT_EQ(EndsOf(graph), (std::vector<Pair>{{3, 3}}));
    EXPECT_EQ(InputsOf(graph, 3), (Ids{3}));
    EXPECT_EQ(OutputsOf(graph, 3), Ids());
    ExpectLinkNotFound([&] { graph->GetLink(3, 3); }, 3, 3);
    ExpectRefused(graph, 3, {3, 3});
}

TEST(GraphRemoveNodeTest, RemoveNode_WithASelfLinkHandsOnlyTheLinkOn) {
    const Graph graph = MakeGraph(3, {{2, 2}});
    graph->RemoveNode(2);
    EXPECT_EQ(EndsOf(graph), (std::vector<Pair>{{3, 3}}));
    EXPECT_EQ(InputsOf(graph, 3), Ids());
    EXPECT_EQ(OutputsOf(graph, 3), Ids());
    ExpectRefused(graph, 3, {3, 3});
}

TEST(GraphRemoveNodeTest, RemoveNode_BetweenTwoTargetsMakesTwoLinksOfOnePair) {
    const Graph graph = MakeGraph(3, {{1, 2}, {1, 3}});
    graph->RemoveNode(2);
    EXPECT_EQ(OutputsOf(graph, 1), (Ids{3, 3}));
    EXPECT_EQ(InputsOf(graph, 3), (Ids{1}));
    EXPECT_EQ(graph->GetLink(1, 3), Core::Property("link", "1>2"));
    graph->RemoveLink(1, 3);
    EXPECT_EQ(graph->GetLink(1, 3), Core::Property("link", "1>3"));
    EXPECT_EQ(InputsOf(graph, 3), Ids());
    graph->RemoveLink(1, 3);
    ExpectLinkNotFound([&] { graph->RemoveLink(1, 3); }, 1, 3);
    EXPECT_EQ(LinksOf(graph), std::vector<Link>());
}

TEST(GraphRemoveNodeTest, RemoveNode_HandsLinksOnFromNodeToNode) {
    const Graph graph = MakeGraph(3, {{1, 2}});
    graph->RemoveNode(2);
    graph->AddNode(NodeTree(4));
    graph->RemoveNode(3);
    EXPECT_EQ(EndsOf(graph), (std::vector<Pair>{{1, 4}}));
    EXPECT_EQ(graph->GetLink(1, 4), Core::Property("link", "1>2"));
    graph->RemoveNode(1);
    EXPECT_EQ(EndsOf(graph), (std::vector<Pair>{{4, 4}}));
    EXPECT_EQ(OutputsOf(graph, 4), Ids());
    ExpectRefused(graph, 4, {4, 4});
}

TEST(GraphRemoveNodeTest, RemoveNode_OfTheLastNodeIsRefusedWhileALinkEntersIt) {
    const Graph graph = MakeGraph(3, {{1, 3}});
    ExpectRefused(graph, 3, {1, 3});
    graph->RemoveLink(1, 3);
    graph->RemoveNode(3);
    EXPECT_EQ(IdsOf(graph), (Ids{1, 2}));
}

TEST(GraphRemoveNodeTest, RemoveNode_OfTheLastNodeIsRefusedWhileALinkLeavesIt) {
    ExpectRefused(MakeGraph(3, {{3, 2}}), 3, {3, 2});
}

TEST(GraphRemoveNodeTest, RemoveNode_OfTheLastNodeIsRefusedWhileItIsLinkedToItself) {
    ExpectRefused(MakeGraph(1, {{1, 1}}), 1, {1, 1});
}

TEST(GraphRemoveNodeTest, RemoveNode_RefusedNamesTheFirstLinkThatTouchesTheNode) {
    ExpectRefused(MakeGraph(3, {{1, 2}, {3, 1}, {2, 3}}), 3, {3, 1});
    ExpectRefused(MakeGraph(3, {{2, 1}, {2, 3}, {3, 1}}), 3, {2, 3});
}

TEST(GraphRemoveNodeTest, RemoveNode_OfTheLastNodeIsRefusedForALinkThatWasHandedToIt) {
    // The inputs and outputs of node 3 are empty, yet the link ends there.
    const Graph graph = MakeGraph(3, {{1, 2}});
    graph->RemoveNode(2);
    ExpectRefused(graph, 3, {1, 3});
    // It becomes an inner node when another one follows.
    graph->AddNode(NodeTree(4));
    graph->RemoveNode(3);
    EXPECT_EQ(EndsOf(graph), (std::vector<Pair>{{1, 4}}));
}

TEST(GraphRemoveNodeTest, RemoveNode_OfTheFirstNodeKeepsLinksAmongTheOthers) {
    const Graph graph = MakeGraph(4, {{2, 3}, {4, 2}, {3, 3}});
    graph->RemoveNode(1);
    EXPECT_EQ(EndsOf(graph), (std::vector<Pair>{{2, 3}, {4, 2}, {3, 3}}));
    EXPECT_EQ(InputsOf(graph, 3), (Ids{2, 3}));
    EXPECT_EQ(OutputsOf(graph, 4), (Ids{2}));
    EXPECT_EQ(graph->GetLink(3, 3), Core::Property("link", "3>3"));
}

}  // namespace
}  // namespace Quenzo::Conf::Testing
